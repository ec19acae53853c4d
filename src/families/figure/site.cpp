// hcSite: named frames on segments (local and global placement, display,
// the joints that meet there).
#include "frame/classes.h"

namespace {
using namespace hk;

// Matrices and vectors of the set operations travel by value: the host gets
// a copy of the script's object.
const Row kRows[] = {
    fn<"hcSite_getFigure", "{ hcSite * } ", &hcSite::getFigure>,
    fn<"hcSite_getGlobal", "{ hcSite * } M ", &hcSite::getGlobal>,
    fn<"hcSite_setGlobal", "{ hcSite * } M ", &hcSite::setGlobal>,
    fn<"hcSite_getLocation", "{ hcSite * } M ", &hcSite::getLocation>,
    fn<"hcSite_setLocation", "{ hcSite * } M ", &hcSite::setLocation>,
    fn<"hcSite_setName", "{ hcSite * } name ", &hcSite::setName>,
    fn<"hcSite_setDisplay", "{ hcSite * } on ?transient? ", &hcSite::setDisplay, 1>,
    fn<"hcSite_getDisplay", "{ hcSite * } ", &hcSite::getDisplay>,
    fn<"hcSite_getSG", "{ hcSite * } ", &hcSite::getSG>,
    fn<"hcSite_getNumJoints", "{ hcSite * } ", &hcSite::getNumJoints>,
    fn<"hcSite_getSegment", "{ hcSite * } ", &hcSite::getSegment>,
    fn<"hcSite_getRootJoint", "{ hcSite * } ", &hcSite::getRootJoint>,
    fn<"hcSite_getPhysical", "{ hcSite * } ", &hcSite::getPhysical>,
    fn<"hcSite_setPosition", "{ hcSite * } p ", &hcSite::setPosition>,
    fn<"hcSite_getPosition", "{ hcSite * } p ", &hcSite::getPosition>,
    fn<"hcSite_setOrientation", "{ hcSite * } angles ", &hcSite::setOrientation>,
    fn<"hcSite_getOrientation", "{ hcSite * } angles ", &hcSite::getOrientation>,
    fn<"hcSite_setGlobalPosition", "{ hcSite * } p ", &hcSite::setGlobalPosition>,
    fn<"hcSite_getGlobalPosition", "{ hcSite * } p ", &hcSite::getGlobalPosition>,
    fn<"hcSite_setGlobalOrientation", "{ hcSite * } angles ", &hcSite::setGlobalOrientation>,
    fn<"hcSite_getGlobalOrientation", "{ hcSite * } angles ", &hcSite::getGlobalOrientation>,
    fn<"hcSite_searchProperty", "{ hcSite * } property v ", &hcSite::searchProperty>,
    fn<"hcSite_getJoints", "{ hcSite * } ", &hcSite::getJoints>,
    fn<"hcSite_resolve", "l ", &hcSite::resolve>,
    fn<"hcSite_create", "{ char * } { hcSegment * } ", &hcSite::create>,
    fn<"hcSite_find", "segment bufp ", &hcSite::find>,
};

}  // namespace

HK_CLASS(hcSite, &hcNode_class, kRows, kNoConstants);
