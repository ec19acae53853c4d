#include "convert/script_bridge.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "frame/command.h"

namespace hk {
namespace {

// The module-wide handler record.  It is zero-initialised with the rest of
// the module's static data, before Hktcl_Init runs; the strings are strdup
// copies released with free.  Bound scripts stay bound until their type is
// bound again; they are reachable from here until the process ends.
struct HandlerRecord {
  char *errorScript;    // type 0
  char *infoScript;     // type 2
  char *warningScript;  // type 1
  char *fileScript;     // type 3
  char *lastHandler;    // the handler word of the latest binding
  Tcl_Interp *interp;   // where every trampoline evaluates; set once
};
HandlerRecord handlers;

// Set when the remembered interpreter has been deleted: the trampolines then
// evaluate nothing, and no other interpreter takes its place.
bool rememberedGone;

char **ScriptSlot(int type) {
  switch (type) {
    case hcKit::ERR: return &handlers.errorScript;
    case hcKit::WARN: return &handlers.warningScript;
    case hcKit::INFO: return &handlers.infoScript;
    case hcKit::FILE: return &handlers.fileScript;
    default: return nullptr;
  }
}

// ---------------------------------------------------------------------------
// Interpreters the bridges may evaluate in: those that bound something and
// have not been deleted since.  Kept on the heap for the life of the process.

std::vector<Tcl_Interp *> &LiveInterps() {
  static auto *live = new std::vector<Tcl_Interp *>;
  return *live;
}

bool IsLive(Tcl_Interp *interp) {
  for (Tcl_Interp *i : LiveInterps())
    if (i == interp) return true;
  return false;
}

void Forget(ClientData, Tcl_Interp *interp) {
  auto &live = LiveInterps();
  for (auto i = live.begin(); i != live.end(); ++i) {
    if (*i == interp) {
      live.erase(i);
      break;
    }
  }
  if (interp == handlers.interp) rememberedGone = true;
}

void Watch(Tcl_Interp *interp) {
  if (IsLive(interp)) return;
  LiveInterps().push_back(interp);
  Tcl_SetAssocData(interp, "hktcl script bridge", Forget, nullptr);
}

// ---------------------------------------------------------------------------
// Message trampolines.

template <int Type>
int TrampolineFor(char *message) {
  const char *script = *ScriptSlot(Type);
  if (!message || !script) return 1;
  if (rememberedGone || !handlers.interp) return 1;
  // Only the error form puts a blank after the opening brace.
  const char *open = Type == hcKit::ERR ? " { " : " {";
  std::size_t size = std::strlen(message) + std::strlen(script) + 5;
  char *command = new char[size];
  std::snprintf(command, size, "%s%s%s}", script, open, message);
  Tcl_Eval(handlers.interp, command);  // the outcome is not reported
  delete[] command;
  return 1;
}

// The host knows a callback record only by its fixed layout: the script is
// the text held in the record's fourth pointer-sized slot.
const char *ScriptOf(const hcCallback *record) {
  const char *script;
  std::memcpy(&script, reinterpret_cast<const unsigned char *>(record) + 3 * sizeof(void *), sizeof script);
  return script;
}

// The byte length of the first (at most) n characters of text.
std::size_t LeadingChars(const char *text, int n) {
  const char *end = text;
  for (int i = 0; i < n && *end; ++i) end = Tcl_UtfNext(end);
  return static_cast<std::size_t>(end - text);
}

}  // namespace

hcKit::msgHandlerType Trampoline(int type) {
  switch (type) {
    case hcKit::ERR: return &TrampolineFor<hcKit::ERR>;
    case hcKit::WARN: return &TrampolineFor<hcKit::WARN>;
    case hcKit::INFO: return &TrampolineFor<hcKit::INFO>;
    case hcKit::FILE: return &TrampolineFor<hcKit::FILE>;
    default: return nullptr;
  }
}

int KitSetMsgHandler(ClientData, Tcl_Interp *interp, int argc, const char *argv[]) {
  if (argc != 3) return UsageError(interp, UsageText<"hcKit_setMsgHandler", "handler type ">());
  std::free(handlers.lastHandler);
  handlers.lastHandler = strdup(argv[1]);
  if (!handlers.interp) {
    handlers.interp = interp;
    Watch(interp);
  }
  int type = std::atoi(argv[2]);
  hcKit::msgHandlerType handler = nullptr;
  if (char **slot = ScriptSlot(type)) {
    std::free(*slot);
    *slot = handlers.lastHandler ? strdup(handlers.lastHandler) : nullptr;
    handler = Trampoline(type);
  }
  SetLong(interp, hcKit::setMsgHandler(handler, type));
  return TCL_OK;
}

int KitGetMsgHandler(ClientData, Tcl_Interp *interp, int argc, const char *argv[]) {
  if (argc != 2) return UsageError(interp, UsageText<"hcKit_getMsgHandler", "type ">());
  hcKit::msgHandlerType handler = hcKit::getMsgHandler(static_cast<int>(std::atol(argv[1])));
  // A function-pointer type is its own pointer type: no "_p" is appended.
  std::string text = MakePointerString(reinterpret_cast<const void *>(handler), "_hcKit::msgHandlerType");
  Tcl_SetResult(interp, const_cast<char *>(text.c_str()), TCL_VOLATILE);
  return TCL_OK;
}

int SimBindCallback(ClientData, Tcl_Interp *interp, int argc, const char *argv[]) {
  if (argc != 4) return UsageError(interp, UsageText<"hcSim_bindCallback", "where name tclproc ">());
  Watch(interp);
  // The name word is not passed on: the script itself names the binding.
  hcCallback *record = hcSim::bindCallback(argv[1], argv[3], &EvaluateCallback, interp);
  SetPointer(interp, record, TypeString<hcCallback *>());
  return TCL_OK;
}

int EvaluateCallback(void *data, hcCallback *record) {
  auto *interp = static_cast<Tcl_Interp *>(data);
  if (!interp || !record || !IsLive(interp)) return 0;
  const char *text = ScriptOf(record);
  if (!text) return 0;
  // The script may unbind its own record, so it works on a copy.
  std::string script = text;
  if (Tcl_Eval(interp, script.c_str()) == TCL_OK) return 0;

  // The excerpt goes between double quotes unescaped: substitutions in it
  // happen when bgerror is evaluated.
  char command[256];
  std::snprintf(command, sizeof command, "bgerror \"during eval of {%.*s...}\"",
                static_cast<int>(LeadingChars(script.c_str(), 20)), script.c_str());
  Tcl_Eval(interp, command);
  std::printf("error in {%s}\n\t--->\n{%s}\n", script.c_str(), Tcl_GetStringResult(interp));
  std::fflush(stdout);
  return 0;
}

}  // namespace hk
