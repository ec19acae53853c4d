// hcKit: kit start-up, identity, messages and selections.
#include "convert/script_bridge.h"
#include "frame/class_def.h"

namespace {

// A selection function of the embedding application.  Its type string is
// "_hcKit::selectorType": the type is a function-pointer type itself, so no
// "_p" follows it.
struct SelectorWord {
  hcKit::selectorType function;
};

}  // namespace

namespace hk {
template <>
struct Arg<SelectorWord> {
  using Stored = hcKit::selectorType;
  static const char *type() { return "_hcKit::selectorType"; }
  static bool parse(const char *w, Stored &s) {
    void *addr = nullptr;
    if (CheckPointer(w, &addr, type())) return false;
    s = reinterpret_cast<Stored>(addr);
    return true;
  }
  static SelectorWord get(Stored s) { return {s}; }
};
}  // namespace hk

namespace {
using namespace hk;

int SetSelector(SelectorWord handler, int type) { return hcKit::setSelector(handler.function, type); }

const Row kRows[] = {
    fn<"hcKit_Init", "dataPath factory ?installPath? ?fromPython? ", &hcKit::Init, nullptr, 0>,
    fn<"hcKit_isInited", "", &hcKit::isInited>,
    fn<"hcKit_setHostName", "name ", &hcKit::setHostName>,
    fn<"hcKit_getHostName", "", &hcKit::getHostName>,
    custom(RowKind::Static, "hcKit_setMsgHandler", &KitSetMsgHandler),
    custom(RowKind::Static, "hcKit_getMsgHandler", &KitGetMsgHandler),
    fn<"hcKit_changeCWD", "", &hcKit::changeCWD>,
    fn<"hcKit_getVersion", "", &hcKit::getVersion>,
    fn<"hcKit_getPatchlevel", "", &hcKit::getPatchlevel>,
    fn<"hcKit_getCopyright", "", &hcKit::getCopyright>,
    fn<"hcKit_getBuildInfo", "", &hcKit::getBuildInfo>,
    fn<"hcKit_toggleDebug", "options ", &hcKit::toggleDebug>,
    fn<"hcKit_setSelector", "handler type ", &SetSelector>,
    fn<"hcKit_selectEntity", "type ", &hcKit::selectEntity>,
    fn<"hcKit_getConditionSubject", "e ", &hcKit::getConditionSubject>,
    fn<"hcKit_putenv", "envString ", &hcKit::putenv>,
    fn<"hcKit_sendMsg", "message type ", &hcKit::sendMsg>,
};

const ConstantDef kConstants[] = {
    {"ERR", hcKit::ERR},
    {"WARN", hcKit::WARN},
    {"INFO", hcKit::INFO},
    {"FILE", hcKit::FILE},
    {"FIGURE", hcKit::FIGURE},
    {"SEGMENT", hcKit::SEGMENT},
    {"JOINT", hcKit::JOINT},
    {"SITE", hcKit::SITE},
    {"SCENE_FIGURE_NUMBER", hcKit::SCENE_FIGURE_NUMBER},
    {"SCENE_FIGURE_CREATE", hcKit::SCENE_FIGURE_CREATE},
    {"SCENE_FIGURE_DELETE", hcKit::SCENE_FIGURE_DELETE},
    {"SCENE_SEGMENT_NUMBER", hcKit::SCENE_SEGMENT_NUMBER},
    {"SCENE_SEGMENT_CREATE", hcKit::SCENE_SEGMENT_CREATE},
    {"SCENE_SEGMENT_DELETE", hcKit::SCENE_SEGMENT_DELETE},
    {"SCENE_SITE_NUMBER", hcKit::SCENE_SITE_NUMBER},
    {"SCENE_SITE_CREATE", hcKit::SCENE_SITE_CREATE},
    {"SCENE_SITE_DELETE", hcKit::SCENE_SITE_DELETE},
};

}  // namespace

HK_CLASS(hcKit, nullptr, kRows, kConstants);
