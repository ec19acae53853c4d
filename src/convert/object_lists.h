// Conversions between host collections and Tcl lists.
#pragma once

#include <tcl.h>

namespace hk {

// hList_tcllist list type: the data pointers of an hList as typed pointer
// strings of type "_" + type + "_p".  A null list is the empty list.
int ListToTclList(ClientData, Tcl_Interp *interp, int argc, const char *argv[]);

}  // namespace hk
