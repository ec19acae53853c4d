// Tcl list forms of vectors and matrices.
//
// A vector reads and writes as a list of three numbers, a matrix as sixteen
// numbers in storage order (row by row, m[k / 4][k % 4]).  Numbers are written
// with "%g".  Reading a list never fails the command: problems are appended
// to the result as text and the command still answers TCL_OK.
#pragma once

#include <tcl.h>

namespace hk {

int VectorGetList(ClientData, Tcl_Interp *interp, int argc, const char *argv[]);
int VectorSetList(ClientData, Tcl_Interp *interp, int argc, const char *argv[]);
int MatrixGetList(ClientData, Tcl_Interp *interp, int argc, const char *argv[]);
int MatrixSetList(ClientData, Tcl_Interp *interp, int argc, const char *argv[]);

}  // namespace hk
