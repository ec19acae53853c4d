// Script bridges: Tcl scripts standing in for the host's message handlers
// and simulation callbacks.
//
// Message handlers.  hcKit_setMsgHandler stores a copy of a script for one
// message type and installs that type's trampoline as the host's handler.
// When the host raises a message the trampoline evaluates
//     script + " { " + message + "}"    for errors (type 0),
//     script + " {" + message + "}"     for the other types,
// so only an error handler receives its message with a leading blank.  The
// message is placed between the braces unquoted.  Every evaluation happens
// in one interpreter, the one that called hcKit_setMsgHandler first; the
// trampoline always answers 1 to the host and ignores the script's outcome.
//
// Callbacks.  hcSim_bindCallback binds the callback evaluator at a place of
// the simulation loop, with the calling interpreter as the callback's data
// and the script as the record's name.  When the host runs the callback the
// evaluator evaluates the script; on failure it evaluates
//     bgerror "during eval of {<first 20 characters>...}"
// and prints "error in {<script>}\n\t--->\n{<result>}\n" to standard output,
// where <result> is what the bgerror evaluation left.  It answers 0 in every
// case.
//
// The bridges evaluate nothing in an interpreter that has been deleted: the
// remembered interpreter and the interpreters given as callback data are
// watched, and a deleted one is skipped (the remembered interpreter is
// still never replaced).
#pragma once

#include <tcl.h>

#include "host/kit.h"

namespace hk {

int KitSetMsgHandler(ClientData, Tcl_Interp *interp, int argc, const char *argv[]);
int KitGetMsgHandler(ClientData, Tcl_Interp *interp, int argc, const char *argv[]);
int SimBindCallback(ClientData, Tcl_Interp *interp, int argc, const char *argv[]);

// The function that hcSim_bindCallback hands to the host.
int EvaluateCallback(void *data, hcCallback *record);

// The trampoline installed for a message type (0..3); null for other types.
hcKit::msgHandlerType Trampoline(int type);

}  // namespace hk
