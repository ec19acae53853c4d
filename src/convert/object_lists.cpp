#include "convert/object_lists.h"

#include <string>

#include "frame/command.h"

namespace hk {

int ListToTclList(ClientData, Tcl_Interp *interp, int argc, const char *argv[]) {
  if (argc != 3) return UsageError(interp, UsageText<"hList_tcllist", "{ hList * } type ">());
  hList *list = nullptr;
  if (!Arg<hList *>::parse(argv[1], list)) return TypeError(interp, 1, "hList_tcllist", "_hList_p", argv[1]);
  // The type word is used as given, whatever its length.
  std::string type = std::string("_") + argv[2] + "_p";
  for (hList *node = circlistiterator(list, nullptr); node; node = circlistiterator(list, node))
    Tcl_AppendElement(interp, MakePointerString(node->getData(), type.c_str()).c_str());
  return TCL_OK;
}

void AppendConsumedTexts(Tcl_Interp *interp, hList *&list) {
  while (list) {
    hList *head = list;
    const char *text = static_cast<const char *>(head->getData());
    Tcl_AppendElement(interp, text ? text : "");
    hList::deleteNode(&list, head, nullptr);
    // A host that refused to unlink the head would keep it at the front.
    if (list == head) break;
  }
}

TempList::~TempList() {
  if (head) hList::destroy(&head, nullptr);
}

namespace {

// Splits word; false (with the message appended) when it is not a list.
bool Split(Tcl_Interp *interp, const char *word, int &count, const char **&elements) {
  count = 0;
  elements = nullptr;
  if (Tcl_SplitList(interp, word, &count, &elements) == TCL_OK) return true;
  // Tcl_SplitList left its own message; ours replaces it.
  Tcl_ResetResult(interp);
  Tcl_AppendResult(interp, "error: cannot parse list\n", nullptr);
  count = 0;
  return false;
}

}  // namespace

void LenientObjectList(Tcl_Interp *interp, const char *word, const char *type, TempList &out) {
  int count;
  const char **elements;
  if (!Split(interp, word, count, elements)) return;
  for (int i = 0; i < count; ++i) {
    void *object = nullptr;
    if (CheckPointer(elements[i], &object, type)) object = nullptr;
    hList::append(&out.head, object);
  }
  Tcl_Free(reinterpret_cast<char *>(elements));
}

bool StrictObjectList(Tcl_Interp *interp, const char *word, const char *type, TempList &out) {
  int count;
  const char **elements;
  if (!Split(interp, word, count, elements)) return false;
  bool ok = true;
  for (int i = 0; i < count && ok; ++i) {
    void *object = nullptr;
    if (CheckPointer(elements[i], &object, type)) {
      Tcl_AppendResult(interp, "error: invalid object in list\n", nullptr);
      ok = false;
    } else {
      hList::append(&out.head, object);
    }
  }
  Tcl_Free(reinterpret_cast<char *>(elements));
  if (!ok && out.head) hList::destroy(&out.head, nullptr);
  return ok;
}

int GlyphListToTclList(ClientData, Tcl_Interp *interp, int argc, const char *[]) {
  if (argc != 1) return UsageError(interp, UsageText<"hcGlyph_getGlyphList", "">());
  AppendPointers(interp, hcGlyph::getGlyphList(), TypeString<hcGlyph *>());
  return TCL_OK;
}

}  // namespace hk
