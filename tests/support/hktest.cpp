// Test-only extension: exposes the stand-in host's journal to scripts.
// Loading it turns the journal on.
//   hktest_last ?back?   the journal entry back calls ago (0 = latest)
//   hktest_clear         empties the journal
//   hktest_journal on    turns the journal on (1) or off (0)
//   hktest_noop ...      does nothing; the benchmark's baseline command
//   hktest_vget v index  a minimal hand-written getter of an hVector
//                        component: the benchmark's reference
//   hktest_intlist p ?free?  the integers of a _std_ListInt_p list, as a Tcl
//                        list; with free, the list is deleted as well
#include <tcl.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <list>
#include <string>

#include "core/journal.h"
#include "host/core.h"

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
// Parses the pointer word with strtoul and prints the component with
// Tcl_PrintDouble: the least a hand-written command would do.
int VGetCmd(ClientData, Tcl_Interp *interp, int argc, const char **argv) {
  char *end = nullptr;
  const unsigned long address = argc == 3 && argv[1][0] == '_' ? std::strtoul(argv[1] + 1, &end, 16) : 0;
  if (!address || std::strcmp(end, "_hVector_p") != 0) {
    Tcl_SetResult(interp, const_cast<char *>("usage: hktest_vget _hVector_p index"), TCL_STATIC);
    return TCL_ERROR;
  }
  const long index = std::strtol(argv[2], nullptr, 10);
  char buf[TCL_DOUBLE_SPACE];
  Tcl_PrintDouble(interp, reinterpret_cast<hVector *>(address)->v[index >= 0 && index < 3 ? index : 0], buf);
  Tcl_SetResult(interp, buf, TCL_VOLATILE);
  return TCL_OK;
}

int IntListCmd(ClientData, Tcl_Interp *interp, int argc, const char **argv) {
  static const char kType[] = "_std_ListInt_p";
  const char *word = argc > 1 ? argv[1] : "";
  char *end = nullptr;
  const unsigned long long address = word[0] == '_' ? std::strtoull(word + 1, &end, 16) : 0;
  if (argc < 2 || argc > 3 || !end || std::strcmp(end, kType) != 0 || address == 0) {
    Tcl_SetResult(interp, const_cast<char *>("usage: hktest_intlist _std_ListInt_p ?free?"), TCL_STATIC);
    return TCL_ERROR;
  }
  auto *list = reinterpret_cast<std::list<int> *>(static_cast<std::uintptr_t>(address));
  std::string text;
  for (int x : *list) text += (text.empty() ? "" : " ") + std::to_string(x);
  if (argc == 3) delete list;
  Tcl_SetResult(interp, const_cast<char *>(text.c_str()), TCL_VOLATILE);
  return TCL_OK;
}
}  // namespace

extern "C" int Hktest_Init(Tcl_Interp *interp) {
  Tcl_CreateCommand(interp, "hktest_last", LastCmd, nullptr, nullptr);
  Tcl_CreateCommand(interp, "hktest_clear", ClearCmd, nullptr, nullptr);
  Tcl_CreateCommand(interp, "hktest_noop", NoopCmd, nullptr, nullptr);
  Tcl_CreateCommand(interp, "hktest_journal", JournalCmd, nullptr, nullptr);
  Tcl_CreateCommand(interp, "hktest_intlist", IntListCmd, nullptr, nullptr);
  Tcl_CreateCommand(interp, "hktest_vget", VGetCmd, nullptr, nullptr);
  hcjournal::setEnabled(true);
  return TCL_OK;
}
