// Test-only extension: exposes the stand-in host's journal to scripts.
// Loading it turns the journal on.
//   hktest_last ?back?   the journal entry back calls ago (0 = latest)
//   hktest_clear         empties the journal
//   hktest_journal on    turns the journal on (1) or off (0)
//   hktest_noop ...      does nothing; the benchmark's baseline command
#include <tcl.h>

#include <cstdlib>

#include "core/journal.h"

namespace {
int LastCmd(ClientData, Tcl_Interp *interp, int argc, const char **argv) {
  int back = argc > 1 ? std::atoi(argv[1]) : 0;
  std::string entry = hcjournal::last(back);
  Tcl_SetResult(interp, const_cast<char *>(entry.c_str()), TCL_VOLATILE);
  return TCL_OK;
}
int ClearCmd(ClientData, Tcl_Interp *, int, const char **) {
  hcjournal::clear();
  return TCL_OK;
}
int NoopCmd(ClientData, Tcl_Interp *, int, const char **) { return TCL_OK; }
int JournalCmd(ClientData, Tcl_Interp *, int argc, const char **argv) {
  if (argc > 1) hcjournal::setEnabled(std::atoi(argv[1]) != 0);
  return TCL_OK;
}
}  // namespace

extern "C" int Hktest_Init(Tcl_Interp *interp) {
  Tcl_CreateCommand(interp, "hktest_last", LastCmd, nullptr, nullptr);
  Tcl_CreateCommand(interp, "hktest_clear", ClearCmd, nullptr, nullptr);
  Tcl_CreateCommand(interp, "hktest_noop", NoopCmd, nullptr, nullptr);
  Tcl_CreateCommand(interp, "hktest_journal", JournalCmd, nullptr, nullptr);
  hcjournal::setEnabled(true);
  return TCL_OK;
}
