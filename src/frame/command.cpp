#include "frame/command.h"

#include "frame/format.h"

#include <cstdio>
#include <cstring>
#include <limits>

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

void SetText(Tcl_Interp *interp, const char *text, int length) {
  // The interpreter's result object, when nothing else holds it, takes the
  // text in place, without a new object or the legacy result's copies.
  Tcl_Obj *result = Tcl_GetObjResult(interp);
  if (Tcl_IsShared(result))
    Tcl_SetObjResult(interp, Tcl_NewStringObj(text, length));
  else
    Tcl_SetStringObj(result, text, length);
}

// An integer result is the interpreter's own integer object, whose text,
// made when first read, is the decimal text written at once would be; a
// script using it as a number reads no text at all.
void SetLong(Tcl_Interp *interp, long value) {
  Tcl_Obj *result = Tcl_GetObjResult(interp);
  if (Tcl_IsShared(result))
    Tcl_SetObjResult(interp, Tcl_NewLongObj(value));
  else
    Tcl_SetLongObj(result, value);
}

void SetUnsigned(Tcl_Interp *interp, unsigned long value) {
  if (value <= static_cast<unsigned long>(std::numeric_limits<long>::max())) {
    SetLong(interp, static_cast<long>(value));
    return;
  }
  char buf[kNumberSpace];
  SetText(interp, buf, FormatUnsigned(value, buf));
}

namespace {

// A double result whose text is written when something first reads it,
// exactly as it would have been written when the result was set: values
// whose text could change with the precision in between are written at
// once instead.  A result that is passed on or dropped unread costs no
// formatting; one that is read costs what writing it at once would.
void WriteLaterDouble(Tcl_Obj *obj) {
  char buf[kNumberSpace];
  const int length = FormatShortest(obj->internalRep.doubleValue, buf);
  obj->bytes = Tcl_Alloc(static_cast<unsigned>(length) + 1);
  std::memcpy(obj->bytes, buf, static_cast<std::size_t>(length) + 1);
  obj->length = length;
}

// No internal storage to free; copies share the value; never converted to.
Tcl_ObjType laterDoubleType = {"hktcl double", nullptr, nullptr, WriteLaterDouble, nullptr};

}  // namespace

void SetDouble(Tcl_Interp *interp, double value) {
  if (!CanFormatLater(value)) {
    char buf[kNumberSpace];
    SetText(interp, buf, FormatDouble(value, buf));
    return;
  }
  Tcl_Obj *result = Tcl_GetObjResult(interp);
  if (Tcl_IsShared(result) || result->typePtr) {
    // Only an unshared object without an internal form can take a new one
    // here (the interface has no call that frees another type's form).
    result = Tcl_NewObj();
    Tcl_SetObjResult(interp, result);
  }
  Tcl_InvalidateStringRep(result);
  result->internalRep.doubleValue = value;
  result->typePtr = &laterDoubleType;
}

void SetString(Tcl_Interp *interp, const char *text) {
  if (text)
    SetText(interp, text, static_cast<int>(std::strlen(text)));
  else
    Tcl_ResetResult(interp);
}

void SetPointer(Tcl_Interp *interp, const void *addr, const char *type) {
  if (std::strlen(type) < kMaxPointerString - 2 * sizeof(void *) - 2) {
    char buf[kMaxPointerString];
    SetText(interp, buf, MakePointer(buf, addr, type));
  } else {
    // Type names typed by scripts can be of any length.
    std::string text = MakePointerString(addr, type);
    SetText(interp, text.data(), static_cast<int>(text.size()));
  }
}

}  // namespace hk
