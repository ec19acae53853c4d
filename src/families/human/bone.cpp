// Bones: the drivers to which skin vertices are bound.  hcSegmentBone follows
// a segment, hcTwistBone a twist link; both re-register the landmark and
// mesh queries of hcBone.
#include "frame/classes.h"
#include "host/posture.h"

namespace {
using namespace hk;

// The transforms are written into the script's matrix; setGlobalLocation
// takes a copy.
const Row kBoneRows[] = {
    ctor<"new_hcBone", "", hcBone>,
    dtor<"delete_hcBone", "{ hcBone * } ", hcBone>,
    fn<"hcBone_getGlobal", "{ hcBone * } global ", &hcBone::getGlobal>,
    fn<"hcBone_upToDate", "{ hcBone * } ", &hcBone::upToDate>,
    fn<"hcBone_getLandmark", "{ hcBone * } i ", &hcBone::getLandmark>,
    fn<"hcBone_getMesh", "{ hcBone * } i ", &hcBone::getMesh>,
    fn<"hcBone_getNLandmarks", "{ hcBone * } ", &hcBone::getNLandmarks>,
    fn<"hcBone_getNMeshes", "{ hcBone * } ", &hcBone::getNMeshes>,
};

const Row kSegmentBoneRows[] = {
    ctor<"new_hcSegmentBone", "s ", hcSegmentBone, void(hcSegment *)>,
    dtor<"delete_hcSegmentBone", "{ hcSegmentBone * } ", hcSegmentBone>,
    fn<"hcSegmentBone_getGlobal", "{ hcSegmentBone * } global ", &hcSegmentBone::getGlobal>,
    fn<"hcSegmentBone_upToDate", "{ hcSegmentBone * } ", &hcSegmentBone::upToDate>,
    fn<"hcSegmentBone_getSegment", "{ hcSegmentBone * } ", &hcSegmentBone::getSegment>,
};

const Row kTwistBoneRows[] = {
    ctor<"new_hcTwistBone", "t offset twistScale ", hcTwistBone, void(hcTwistLink *, float, float)>,
    dtor<"delete_hcTwistBone", "{ hcTwistBone * } ", hcTwistBone>,
    fn<"hcTwistBone_getGlobal", "{ hcTwistBone * } global ", &hcTwistBone::getGlobal>,
    fn<"hcTwistBone_upToDate", "{ hcTwistBone * } ", &hcTwistBone::upToDate>,
    fn<"hcTwistBone_getLink", "{ hcTwistBone * } ", &hcTwistBone::getLink>,
    fn<"hcTwistBone_getOffset", "{ hcTwistBone * } local offset ", &hcTwistBone::getOffset>,
    fn<"hcTwistBone_getScale", "{ hcTwistBone * } ", &hcTwistBone::getScale>,
    fn<"hcTwistBone_getRelativeOffset", "{ hcTwistBone * } ", &hcTwistBone::getRelativeOffset>,
    fn<"hcTwistBone_initialize", "{ hcTwistBone * } ", &hcTwistBone::initialize>,
    fn<"hcTwistBone_setGlobalLocation", "{ hcTwistBone * } m ", &hcTwistBone::setGlobalLocation>,
};

}  // namespace

HK_CLASS(hcBone, nullptr, kBoneRows, kNoConstants);
HK_CLASS(hcSegmentBone, &hcBone_class, kSegmentBoneRows, kNoConstants);
HK_CLASS(hcTwistBone, &hcBone_class, kTwistBoneRows, kNoConstants);
