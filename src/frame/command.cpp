#include "frame/command.h"

#include "frame/format.h"

#include <cstdio>
#include <cstring>

namespace hk {

int UsageError(Tcl_Interp *interp, const std::string &usage) {
  Tcl_SetResult(interp, const_cast<char *>(usage.c_str()), TCL_STATIC);
  return TCL_ERROR;
}

int WrongArgs(Tcl_Interp *interp, const char *cmd, const char *tail) {
  Tcl_ResetResult(interp);
  Tcl_AppendResult(interp, "Wrong # args. ", cmd, " ", tail, static_cast<char *>(nullptr));
  return TCL_ERROR;
}

int TypeError(Tcl_Interp *interp, int index, const char *cmd, const char *type, const char *word) {
  std::string text = "Type error in argument " + std::to_string(index) + " of " + cmd + ". Expected " +
                     (type ? type : "") + ", received " + word;
  Tcl_SetResult(interp, const_cast<char *>(text.c_str()), TCL_VOLATILE);
  return TCL_ERROR;
}

int ArrayTooShort(Tcl_Interp *interp, const char *cmd, int index, long holds, long uses) {
  std::string text = std::string(cmd) + ": argument " + std::to_string(index) + " holds " + std::to_string(holds) +
                     (holds == 1 ? " element" : " elements") + ", the operation uses " + std::to_string(uses);
  Tcl_SetResult(interp, const_cast<char *>(text.c_str()), TCL_VOLATILE);
  return TCL_ERROR;
}

void SetLong(Tcl_Interp *interp, long value) {
  char buf[kNumberSpace];
  FormatLong(value, buf);
  Tcl_SetResult(interp, buf, TCL_VOLATILE);
}

void SetUnsigned(Tcl_Interp *interp, unsigned long value) {
  char buf[kNumberSpace];
  FormatUnsigned(value, buf);
  Tcl_SetResult(interp, buf, TCL_VOLATILE);
}

void SetDouble(Tcl_Interp *interp, double value) {
  char buf[kNumberSpace];
  FormatDouble(value, buf);
  Tcl_SetResult(interp, buf, TCL_VOLATILE);
}

void SetString(Tcl_Interp *interp, const char *text) {
  if (text)
    Tcl_SetResult(interp, const_cast<char *>(text), TCL_VOLATILE);
  else
    Tcl_ResetResult(interp);
}

void SetPointer(Tcl_Interp *interp, const void *addr, const char *type) {
  if (std::strlen(type) < kMaxPointerString - 2 * sizeof(void *) - 2) {
    char buf[kMaxPointerString];
    MakePointer(buf, addr, type);
    Tcl_SetResult(interp, buf, TCL_VOLATILE);
  } else {
    // Type names typed by scripts can be of any length.
    std::string text = MakePointerString(addr, type);
    Tcl_SetResult(interp, const_cast<char *>(text.c_str()), TCL_VOLATILE);
  }
}

}  // namespace hk
