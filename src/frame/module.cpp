// Module entry: links the constants and creates every command in one pass.
#include <tcl.h>

#include "frame/classes.h"
#include "frame/format.h"
#include "frame/registry.h"
#include "frame/typed_pointer.h"

namespace hk {
namespace {

// Module-level constants.  Each has its own storage, read by the interpreter
// on every access; scripts cannot write them.
int P_1 = 0, P_5 = 1, P_50 = 2, P_95 = 3, P_99 = 4;
int ANSUR = 0, NHANES = 1, NA_AUTO = 2, CDN_LF_97 = 3;
int MAX_JOINTS = 128;
char *HK_MAJOR_VERSION = const_cast<char *>("8");
char *HK_MINOR_VERSION = const_cast<char *>("3");

void LinkInt(Tcl_Interp *interp, const char *name, int *storage) {
  Tcl_LinkVar(interp, name, reinterpret_cast<char *>(storage), TCL_LINK_INT | TCL_LINK_READ_ONLY);
}

void LinkString(Tcl_Interp *interp, const char *name, char **storage) {
  Tcl_LinkVar(interp, name, reinterpret_cast<char *>(storage), TCL_LINK_STRING | TCL_LINK_READ_ONLY);
}

void RegisterModuleLevel(Tcl_Interp *interp) {
  LinkInt(interp, "P_1", &P_1);
  LinkInt(interp, "P_5", &P_5);
  LinkInt(interp, "P_50", &P_50);
  LinkInt(interp, "P_95", &P_95);
  LinkInt(interp, "P_99", &P_99);
  LinkInt(interp, "ANSUR", &ANSUR);
  LinkInt(interp, "NHANES", &NHANES);
  LinkInt(interp, "NA_AUTO", &NA_AUTO);
  LinkInt(interp, "CDN_LF_97", &CDN_LF_97);
  for (const CommandEntry &c : AnthroDatabaseCommands()) Tcl_CreateCommand(interp, c.name, c.proc, nullptr, nullptr);
  LinkInt(interp, "MAX_JOINTS", &MAX_JOINTS);
  LinkString(interp, "HK_MAJOR_VERSION", &HK_MAJOR_VERSION);
  LinkString(interp, "HK_MINOR_VERSION", &HK_MINOR_VERSION);
  Tcl_CreateCommand(interp, "hcscene_get", SceneGetCommand(), nullptr, nullptr);
  for (const CommandEntry &c : PointerLibraryCommands()) Tcl_CreateCommand(interp, c.name, c.proc, nullptr, nullptr);
}

}  // namespace
}  // namespace hk

extern "C" __attribute__((visibility("default"))) int Hktcl_Init(Tcl_Interp *interp) {
  if (!interp) return TCL_ERROR;
  hk::WatchPrecision(interp);
  hk::RegisterModuleLevel(interp);
  for (hk::ClassDef *block : hk::ClassBlocks()) hk::RegisterClass(interp, *block);
  hk::RegisterBuiltinTypes();
  return TCL_OK;
}
