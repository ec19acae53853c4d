// hcGlobal: the current scene and timeline, the global timestamp and the
// installed-file list.
#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "frame/class_def.h"

namespace {
using namespace hk;

// hcGlobal_getInstalledFiles ?max?: the host fills an array of max text
// pointers; its entries become the elements of the result.  max defaults to
// 1000 and is narrowed to int like any integer word; a negative max is
// taken as 0, so the host is asked for nothing and the list is empty.  An
// array that cannot be allocated also gives an empty list.
int GetInstalledFiles(ClientData, Tcl_Interp *interp, int argc, const char *argv[]) {
  if (argc > 2) return UsageError(interp, UsageText<"hcGlobal_getInstalledFiles", "?max? ">());
  int max = argc > 1 ? static_cast<int>(std::atol(argv[1])) : 1000;
  max = std::max(max, 0);
  char **array = nullptr;
  if (max > 0) {
    array = static_cast<char **>(std::malloc(sizeof(char *) * static_cast<std::size_t>(max)));
    if (!array) return TCL_OK;
  }
  // The host answers how many entries it wrote; nothing beyond max is read.
  int n = std::clamp(hcGlobal::getInstalledFiles(array, max), 0, max);
  for (int i = 0; i < n; ++i) Tcl_AppendElement(interp, array[i] ? array[i] : "");
  std::free(array);  // the texts stay the host's
  return TCL_OK;
}

// hcGlobal_getBuildDate: the date this file was compiled, as one list
// element ("Aug 24 2015" reads as {Aug 24 2015}).
int GetBuildDate(ClientData, Tcl_Interp *interp, int argc, const char *argv[]) {
  if (argc != 1) return UsageError(interp, UsageText<"hcGlobal_getBuildDate", "">());
  (void)argv;
  char text[32];
  std::snprintf(text, sizeof text, "%s", __DATE__);
  Tcl_AppendElement(interp, text);
  return TCL_OK;
}

const Row kRows[] = {
    fn<"hcGlobal_setTimestamp", "", &hcGlobal::setTimestamp>,
    fn<"hcGlobal_getTimeline", "", &hcGlobal::getTimeline>,
    fn<"hcGlobal_getScene", "", &hcGlobal::getScene>,
    fn<"hcGlobal_getTimestamp", "", &hcGlobal::getTimestamp>,
    fn<"hcGlobal_changeCWD", "", &hcGlobal::changeCWD>,
    fn<"hcGlobal_addInstalledFile", "fileName ", &hcGlobal::addInstalledFile>,
    fn<"hcGlobal_removeInstalledFile", "fileName ", &hcGlobal::removeInstalledFile>,
    custom(RowKind::Static, "hcGlobal_getInstalledFiles", &GetInstalledFiles),
    custom(RowKind::Static, "hcGlobal_getBuildDate", &GetBuildDate),
};

}  // namespace

HK_CLASS(hcGlobal, nullptr, kRows, kNoConstants);
