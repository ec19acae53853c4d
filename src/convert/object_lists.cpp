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

}  // namespace hk
