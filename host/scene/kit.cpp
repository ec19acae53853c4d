// Host library: kit start-up, identity, messages, selections and the global
// settings.
//
// The state is one heap object per class that is never freed, so that
// message handlers and stored texts stay valid whatever the order of static
// destruction.
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <list>
#include <set>
#include <sstream>
#include <string>

#include "host/kit.h"
#include "core/messages.h"
#include "host/scene.h"
#include "core/journal.h"

namespace {

struct KitState {
  bool inited = false;
  std::string dataPath;
  bool hasDataPath = false;
  std::string installPath;
  bool hasInstallPath = false;
  sgFactory *factory = nullptr;
  int fromPython = 0;
  std::string hostName;
  bool hasHostName = false;
  hcKit::msgHandlerType handlers[hcKit::kMsgTypes] = {};
  hcKit::selectorType selectors[hcKit::kSelectTypes] = {};
  hcSubject *conditions[hcKit::kConditions] = {};
  std::set<std::string> debugFlags;
  std::list<std::string> environment;  // texts handed to the environment
  int sending = 0;                     // nesting of sendMsg
};

KitState &kit() {
  static auto *state = new KitState;
  return *state;
}

struct GlobalState {
  int timestamp = 0;
  hcTimeline *timeline = nullptr;
  // Stable storage: the texts handed out stay put while others come and go.
  std::list<std::string> installed{"hc.cfg", "hc_materials.dat", "hc_anthro.dat"};
};

GlobalState &global() {
  static auto *state = new GlobalState;
  return *state;
}

bool validType(int type, int count) { return type >= 0 && type < count; }

const void *address(hcKit::msgHandlerType f) { return reinterpret_cast<const void *>(f); }
const void *address(hcKit::selectorType f) { return reinterpret_cast<const void *>(f); }

}  // namespace

// ---------------------------------------------------------------------------
// hcKit

int hcKit::Init(const char *dataPath, sgFactory *factory, const char *installPath, int fromPython) {
  hccore::call("hcKit::Init", dataPath, static_cast<const void *>(factory), installPath, fromPython);
  if (!dataPath) return 0;
  struct stat st;
  if (::stat(dataPath, &st) != 0 || !S_ISDIR(st.st_mode))
    hcmsg::error(std::string("data path ") + dataPath + " is not a directory");
  KitState &k = kit();
  k.dataPath = dataPath;
  k.hasDataPath = true;
  k.hasInstallPath = installPath != nullptr;
  k.installPath = installPath ? installPath : "";
  k.factory = factory;
  k.fromPython = fromPython;
  k.inited = true;
  return 1;
}

int hcKit::isInited() {
  hccore::call("hcKit::isInited");
  return kit().inited ? 1 : 0;
}

void hcKit::setHostName(const char *name) {
  hccore::call("hcKit::setHostName", name);
  kit().hasHostName = name != nullptr;
  kit().hostName = name ? name : "";
}

const char *hcKit::getHostName() {
  hccore::call("hcKit::getHostName");
  return kit().hasHostName ? kit().hostName.c_str() : nullptr;
}

int hcKit::setMsgHandler(msgHandlerType handler, int type) {
  hccore::call("hcKit::setMsgHandler", address(handler), type);
  if (!validType(type, kMsgTypes)) return 0;
  kit().handlers[type] = handler;
  return 1;
}

hcKit::msgHandlerType hcKit::getMsgHandler(int type) {
  hccore::call("hcKit::getMsgHandler", type);
  return validType(type, kMsgTypes) ? kit().handlers[type] : nullptr;
}

void hcKit::changeCWD() {
  hccore::call("hcKit::changeCWD");
  if (kit().hasDataPath && !kit().dataPath.empty()) (void)::chdir(kit().dataPath.c_str());
}

const char *hcKit::getVersion() {
  hccore::call("hcKit::getVersion");
  return "8.3";
}

const char *hcKit::getPatchlevel() {
  hccore::call("hcKit::getPatchlevel");
  return "8.3.0";
}

const char *hcKit::getCopyright() {
  hccore::call("hcKit::getCopyright");
  return "Copyright (c) the hc library authors. All rights reserved.";
}

const char *hcKit::getBuildInfo() {
  hccore::call("hcKit::getBuildInfo");
  return "hc 8.3.0 stand-in";
}

int hcKit::toggleDebug(const char *options) {
  hccore::call("hcKit::toggleDebug", options);
  if (!options) return 0;
  auto &flags = kit().debugFlags;
  std::istringstream words(options);
  std::string flag;
  while (words >> flag) {
    if (!flags.erase(flag)) flags.insert(flag);
  }
  std::string on;
  for (const std::string &f : flags) on += " " + f;
  hcmsg::info("debugging" + (on.empty() ? std::string(" off") : on));
  return static_cast<int>(flags.size());
}

int hcKit::setSelector(selectorType selector, int type) {
  hccore::call("hcKit::setSelector", address(selector), type);
  if (!validType(type, kSelectTypes)) return 0;
  kit().selectors[type] = selector;
  return 1;
}

const char *hcKit::selectEntity(int type) {
  hccore::call("hcKit::selectEntity", type);
  if (!validType(type, kSelectTypes) || !kit().selectors[type]) return nullptr;
  return kit().selectors[type]();
}

hcSubject *hcKit::getConditionSubject(int e) {
  hccore::call("hcKit::getConditionSubject", e);
  if (!validType(e, kConditions)) return nullptr;
  hcSubject *&subject = kit().conditions[e];
  if (!subject) {
    hccore::Quiet quiet;
    subject = new hcSubject;  // kept for the life of the process
  }
  return subject;
}

int hcKit::putenv(const char *envString) {
  hccore::call("hcKit::putenv", envString);
  if (!envString) return -1;
  const char *equals = std::strchr(envString, '=');
  if (!equals || equals == envString) return -1;
  // The environment keeps the text itself, so the host keeps a copy alive.
  auto &texts = kit().environment;
  texts.emplace_back(envString);
  return ::putenv(texts.back().data()) == 0 ? 0 : -1;
}

int hcKit::sendMsg(const char *message, int type) {
  hccore::call("hcKit::sendMsg", message, type);
  if (!message || !validType(type, kMsgTypes)) return 0;
  KitState &k = kit();
  msgHandlerType handler = k.handlers[type];
  if (!handler || k.sending >= kMaxNesting) return 0;
  std::string text = message;  // the handler may modify its copy
  ++k.sending;
  int answer = handler(text.data());
  --k.sending;
  return answer;
}

const char *hcKit::getDataPath() { return kit().hasDataPath ? kit().dataPath.c_str() : nullptr; }
const char *hcKit::getInstallPath() { return kit().hasInstallPath ? kit().installPath.c_str() : nullptr; }
sgFactory *hcKit::getFactory() { return kit().factory; }
int hcKit::getFromPython() { return kit().fromPython; }

// ---------------------------------------------------------------------------
// hcGlobal

int hcGlobal::setTimestamp() {
  hccore::call("hcGlobal::setTimestamp");
  return ++global().timestamp;
}

int hcGlobal::getTimestamp() {
  hccore::call("hcGlobal::getTimestamp");
  return global().timestamp;
}

hcTimeline *hcGlobal::getTimeline() {
  hccore::call("hcGlobal::getTimeline");
  return global().timeline;
}

hcScene *hcGlobal::getScene() {
  hccore::call("hcGlobal::getScene");
  return hcscene;
}

void hcGlobal::changeCWD() {
  hccore::call("hcGlobal::changeCWD");
  if (kit().hasInstallPath && !kit().installPath.empty()) (void)::chdir(kit().installPath.c_str());
}

int hcGlobal::addInstalledFile(const char *fileName) {
  hccore::call("hcGlobal::addInstalledFile", fileName);
  if (!fileName) return 0;
  auto &files = global().installed;
  for (const auto &f : files)
    if (f == fileName) return 0;
  files.emplace_back(fileName);
  return 1;
}

int hcGlobal::removeInstalledFile(const char *fileName) {
  hccore::call("hcGlobal::removeInstalledFile", fileName);
  if (!fileName) return 0;
  auto &files = global().installed;
  for (auto i = files.begin(); i != files.end(); ++i) {
    if (*i == fileName) {
      files.erase(i);
      return 1;
    }
  }
  return 0;
}

int hcGlobal::getInstalledFiles(char **array, int max) {
  hccore::call("hcGlobal::getInstalledFiles", static_cast<const void *>(array), max);
  if (!array || max < 1) return 0;
  int n = 0;
  for (auto &f : global().installed) {
    if (n == max) break;
    array[n++] = f.data();
  }
  return n;
}

void hcGlobal::setTimeline(hcTimeline *timeline) { global().timeline = timeline; }
