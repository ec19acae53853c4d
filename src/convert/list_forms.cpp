#include "convert/list_forms.h"

#include <cstdio>

#include "frame/command.h"
#include "frame/format.h"

namespace hk {
namespace {

// The elements are numbers, which never need list quoting, so the list is
// built in one buffer and appended at once; to the empty result a command
// starts with, that is setting it.
void AppendNumbers(Tcl_Interp *interp, const float *values, int n) {
  char text[16 * kNumberSpace];
  std::size_t used = 0;
  for (int i = 0; i < n; ++i) {
    if (i) text[used++] = ' ';
    used += static_cast<std::size_t>(FormatG(static_cast<double>(values[i]), text + used));
  }
  text[used] = '\0';
  const Tcl_Obj *result = Tcl_GetObjResult(interp);
  if (result->bytes && result->length == 0)
    SetText(interp, text, static_cast<int>(used));
  else
    Tcl_AppendResult(interp, text, nullptr);
}

// Stores the numbers of list into values[0..n-1].  A bad element stores the
// previous element's value (0 for the first) and leaves Tcl's message as the
// result; elements beyond n are read but not stored.
void ReadNumbers(Tcl_Interp *interp, const char *list, float *values, int n, const char *countMessage) {
  int count = 0;
  const char **elements = nullptr;
  if (Tcl_SplitList(interp, list, &count, &elements) != TCL_OK) {
    Tcl_AppendResult(interp, "error: cannot parse list\n", nullptr);
    count = 0;
    elements = nullptr;
  }
  if (count != n) Tcl_AppendResult(interp, countMessage, nullptr);
  double value = 0;
  for (int i = 0; i < count; ++i) {
    double converted;
    if (Tcl_GetDouble(interp, elements[i], &converted) == TCL_OK) value = converted;
    if (i < n) values[i] = static_cast<float>(value);
  }
  if (elements) Tcl_Free(reinterpret_cast<char *>(elements));
}

template <class T, Text Name, Text Tail>
bool Begin(Tcl_Interp *interp, int argc, const char *argv[], int words, T *&obj) {
  if (argc != words) {
    UsageError(interp, UsageText<Name, Tail>());
    return false;
  }
  return TakeObject<T>(interp, Name.value, argv[1], obj);
}

}  // namespace

int VectorGetList(ClientData, Tcl_Interp *interp, int argc, const char *argv[]) {
  hVector *v;
  if (!Begin<hVector, "hVector_getList", "{ hVector * } ">(interp, argc, argv, 2, v)) return TCL_ERROR;
  AppendNumbers(interp, v->v, 3);
  return TCL_OK;
}

int VectorSetList(ClientData, Tcl_Interp *interp, int argc, const char *argv[]) {
  hVector *v;
  if (!Begin<hVector, "hVector_setList", "{ hVector * } thelist ">(interp, argc, argv, 3, v)) return TCL_ERROR;
  ReadNumbers(interp, argv[2], v->v, 3, "error: must have 3 items\n");
  return TCL_OK;
}

int MatrixGetList(ClientData, Tcl_Interp *interp, int argc, const char *argv[]) {
  hMatrix *m;
  if (!Begin<hMatrix, "hMatrix_getList", "{ hMatrix * } ">(interp, argc, argv, 2, m)) return TCL_ERROR;
  AppendNumbers(interp, &m->m[0][0], 16);
  return TCL_OK;
}

int MatrixSetList(ClientData, Tcl_Interp *interp, int argc, const char *argv[]) {
  hMatrix *m;
  if (!Begin<hMatrix, "hMatrix_setList", "{ hMatrix * } thelist ">(interp, argc, argv, 3, m)) return TCL_ERROR;
  ReadNumbers(interp, argv[2], &m->m[0][0], 16, "error: must have 16 items\n");
  return TCL_OK;
}

}  // namespace hk
