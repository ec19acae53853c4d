// Conversions between host collections and Tcl lists.
#pragma once

#include <tcl.h>

#include "frame/typed_pointer.h"
#include "host/core.h"

namespace hk {

// hList_tcllist list type: the data pointers of an hList as typed pointer
// strings of type "_" + type + "_p".  A null list is the empty list.
int ListToTclList(ClientData, Tcl_Interp *interp, int argc, const char *argv[]);

// Appends one typed pointer string of type per element of a container of
// object pointers, front to back.  A null container appends nothing.
template <class Container>
void AppendPointers(Tcl_Interp *interp, const Container *items, const char *type) {
  if (!items) return;
  for (const auto *item : *items) Tcl_AppendElement(interp, MakePointerString(item, type).c_str());
}

// Appends resolve(node) for every node of an hList (a host registry or a
// member list), stepping with hList::iterator, as typed pointer strings of
// type.
template <class T>
void AppendResolved(Tcl_Interp *interp, hList *list, T *(*resolve)(hList *), const char *type) {
  for (hList *node = hList::iterator(list, nullptr); node; node = hList::iterator(list, node))
    Tcl_AppendElement(interp, MakePointerString(resolve(node), type).c_str());
}

// Appends the texts of a list of texts, consuming it: the head's text is
// appended and the head node freed until the list is empty.  The texts
// themselves stay the host's.
void AppendConsumedTexts(Tcl_Interp *interp, hList *&list);

// A host list made from a Tcl list for one host call; its nodes (not the
// objects they hold) are freed with it.
class TempList {
 public:
  TempList() = default;
  ~TempList();
  TempList(const TempList &) = delete;
  TempList &operator=(const TempList &) = delete;
  hList *head = nullptr;
};

// Lenient list input: every element of word becomes one node, the object
// named by an element that is a typed pointer string of type (or of a type
// the map accepts for it), or null for any other element.  A word that is
// not a list appends "error: cannot parse list\n" to the result and gives
// the empty list.
void LenientObjectList(Tcl_Interp *interp, const char *word, const char *type, TempList &out);

// Strict list input: as above, but a word that is not a list appends
// "error: cannot parse list\n", and the first element that is not a typed
// pointer string of type appends "error: invalid object in list\n"; both
// answer false and leave out empty.  "NULL" elements are null entries.
bool StrictObjectList(Tcl_Interp *interp, const char *word, const char *type, TempList &out);

// hcGlyph_getGlyphList: every glyph of the host as a _hcGlyph_p string, in
// the host's order, whatever the glyph's own class; empty when the host has
// no glyph list.
int GlyphListToTclList(ClientData, Tcl_Interp *interp, int argc, const char *argv[]);

}  // namespace hk
