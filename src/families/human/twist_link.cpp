// hcTwistLink: spreads the twist of a joint over a chain of twist bones.  Its
// tuning is process-wide (static commands).
#include "frame/classes.h"
#include "host/posture.h"

namespace {
using namespace hk;
using L = hcTwistLink;

const Row kRows[] = {
    fn<"hcTwistLink_construct", "left top h ", &L::construct>,
    ctor<"new_hcTwistLink",
         "j twistDOF site toSite refSiteTwistAxis twistMesh fromNeighbor toNeighbor fromGapWeighting fromSegment "
         "toGapWeighting toSegment outgoing angleComputation s1 a1 s2 a2 s3 a3 s4 a4 nBones offsets scaleFactors ",
         L,
         void(hcJoint *, int, hcSite *, hcSite *, int, hcMeshGeometry *, hcMeshGeometry *, hcMeshGeometry *, int,
              hcSegment *, int, hcSegment *, int, int, hcSite *, int, hcSite *, int, hcSite *, int, hcSite *, int,
              int, float *, float *)>,
    dtor<"delete_hcTwistLink", "{ hcTwistLink * } ", L>,
    fn<"hcTwistLink_enableVertexWeighting", "on ", &L::enableVertexWeighting>,
    fn<"hcTwistLink_setUpperArmScaleFactors", "s1 s2 s3 s4 ", &L::setUpperArmScaleFactors>,
    fn<"hcTwistLink_setLowerArmScaleFactors", "s1 s2 s3 s4 ", &L::setLowerArmScaleFactors>,
    fn<"hcTwistLink_setShoulderGapWeighting", "proximalGap distalGap ", &L::setShoulderGapWeighting>,
    fn<"hcTwistLink_setWristGapWeighting", "proximalGap distalGap ", &L::setWristGapWeighting>,
    fn<"hcTwistLink_printParams", "", &L::printParams>,
    fn<"hcTwistLink_setWeightThreshold", "threshold ", &L::setWeightThreshold>,
    fn<"hcTwistLink_update", "{ hcTwistLink * } ", &L::update>,
    fn<"hcTwistLink_resetVertexWeights", "{ hcTwistLink * } boneArray ", &L::resetVertexWeights>,
    fn<"hcTwistLink_setOriginalWeights", "{ hcTwistLink * } boneArray ", &L::setOriginalWeights>,
    fn<"hcTwistLink_getTwistMesh", "{ hcTwistLink * } ", &L::getTwistMesh>,
    fn<"hcTwistLink_getToMesh", "{ hcTwistLink * } ", &L::getToMesh>,
    fn<"hcTwistLink_getFromMesh", "{ hcTwistLink * } ", &L::getFromMesh>,
    fn<"hcTwistLink_getBones", "{ hcTwistLink * } boneList ", &L::getBones>,
    fn<"hcTwistLink_setBoneIndex", "{ hcTwistLink * } bone index ", &L::setBoneIndex>,
    fn<"hcTwistLink_getNBones", "{ hcTwistLink * } ", &L::getNBones>,
    fn<"hcTwistLink_getBone", "{ hcTwistLink * } ID ", &L::getBone>,
    fn<"hcTwistLink_getJoint", "{ hcTwistLink * } ", &L::getJoint>,
    fn<"hcTwistLink_getLinkLength", "{ hcTwistLink * } ", &L::getLinkLength>,
    fn<"hcTwistLink_getFromSite", "{ hcTwistLink * } ", &L::getFromSite>,
    fn<"hcTwistLink_getToSite", "{ hcTwistLink * } ", &L::getToSite>,
    fn<"hcTwistLink_getFromSiteAxisID", "{ hcTwistLink * } ", &L::getFromSiteAxisID>,
    fn<"hcTwistLink_initialize", "{ hcTwistLink * } boneArray nSegBones meshArray nMeshes ", &L::initialize>,
    fn<"hcTwistLink_getVertexList", "{ hcTwistLink * } { hcMeshGeometry * } vlist ", &L::getVertexList>,
    fn<"hcTwistLink_getComputedAngleInfo", "{ hcTwistLink * } angle planeNormal vec1 vec2 ",
       &L::getComputedAngleInfo>,
    fn<"hcTwistLink_setManualComputation", "{ hcTwistLink * } on ", &L::setManualComputation>,
};

const ConstantDef kConstants[] = {
    {"NOTHING", L::NOTHING},
    {"REPLACE", L::REPLACE},
    {"REWEIGHT", L::REWEIGHT},
};

}  // namespace

HK_CLASS(hcTwistLink, nullptr, kRows, kConstants);
