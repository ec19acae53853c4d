// hcSmoothSkin: the meshes covering a human.  The interface commands wrap
// hcSmoothSkin; the extension commands reach the implementation class
// through a checked cast and work on its meshes' rigging.
#include <list>
#include <type_traits>
#include <utility>

#include "frame/classes.h"
#include "host/skin.h"

namespace {
using namespace hk;
using S = hcSmoothSkin;

// ---------------------------------------------------------------------------
// Extension operations: each takes the skin and the converted words.

// The implementation behind a skin; every skin this host builds is one.
hcSmoothSkinImpl *Impl(S &skin) { return dynamic_cast<hcSmoothSkinImpl *>(&skin); }

using Sk = hcSmoothSkinImpl;

// Runs an operation of the implementation: its answer, or the empty answer
// (null, 0, nothing) for a skin of another class.
template <auto Op, class... A>
auto OnImpl(S &skin, A... a) {
  using R = decltype((std::declval<Sk &>().*Op)(a...));
  hcSmoothSkinImpl *impl = Impl(skin);
  if constexpr (std::is_void_v<R>) {
    if (impl) (impl->*Op)(a...);
  } else {
    return impl ? (impl->*Op)(a...) : R{};
  }
}

constexpr auto kImplMeshByName = static_cast<hcMeshGeometry *(Sk::*)(const char *)>(&Sk::getMeshGeometry);
constexpr auto kImplMeshByNum = static_cast<hcMeshGeometry *(Sk::*)(int)>(&Sk::getMeshGeometry);
constexpr auto MeshByName = &OnImpl<kImplMeshByName, const char *>;
constexpr auto MeshByNum = &OnImpl<kImplMeshByNum, int>;

// The rigging of mesh number meshID; null when there is no such mesh.
hcMeshInternals *Rig(S &skin, int meshID) {
  hcMeshGeometry *mesh = MeshByNum(skin, meshID);
  return mesh ? mesh->getMeshInternals() : nullptr;
}

void VertexBones(S &skin, int meshID, int vert, int *bones, float *weights) {
  if (hcMeshInternals *in = Rig(skin, meshID)) {
    in->getVertexBones(vert, bones);
    in->getVertexWeights(vert, weights);
  }
}
void VertexOffsets(S &skin, int meshID, int vert, hVector &v0, hVector &v1, hVector &v2, hVector &v3) {
  if (hcMeshInternals *in = Rig(skin, meshID)) in->getVertexOffsets(vert, v0, v1, v2, v3);
}
void VertexFrames(S &skin, int meshID, int vert, hMatrix &v0, hMatrix &v1, hMatrix &v2, hMatrix &v3) {
  if (hcMeshInternals *in = Rig(skin, meshID)) in->getVertexFrames(vert, v0, v1, v2, v3);
}
void VertexRestNormal(S &skin, int meshID, int vert, hVector &v0) {
  if (hcMeshInternals *in = Rig(skin, meshID)) in->getVertexRestNormal(vert, v0);
}

// The vertices a mesh shares with its neighbour neighborID, in a new list:
// this mesh's, or with Neighbour the neighbour's (the host fills the lists
// in the order given, so they are passed swapped).  The module never frees
// the list.
template <bool Neighbour>
std::list<int> *SharedVertices(S &skin, const char *meshName, int neighborID) {
  hcMeshInternals::intList first, second;
  hcMeshGeometry *mesh = MeshByName(skin, meshName);
  if (hcMeshInternals *in = mesh ? mesh->getMeshInternals() : nullptr) {
    if (Neighbour) in->getSharedVertices(neighborID, second, first);
    else in->getSharedVertices(neighborID, first, second);
  }
  // The list passed in the second place holds the neighbour's vertices.
  return new std::list<int>(first.begin(), first.end());
}

// A landmark of the implementation, cast once more to its implementation
// class (null for a landmark of another class).
template <class Key>
hcLandmarkImpl *Landmark(S &skin, Key key) {
  constexpr auto op = static_cast<hcLandmark *(Sk::*)(Key)>(&Sk::getLandmark);
  return dynamic_cast<hcLandmarkImpl *>(OnImpl<op, Key>(skin, key));
}

hcPsurf *PsurfRep(S &skin, int i, hcSegment *seg) {
  float scratch[4] = {};  // filled by the host and not reported
  return OnImpl<&Sk::getPsurfRep, int, hcSegment *, float *, int>(skin, i, seg, scratch, 0);
}

float SetSeamEpsilon(float value) { return S::s_seamVertexEpsilon = value; }
float GetSeamEpsilon() { return S::s_seamVertexEpsilon; }

}  // namespace

// The vertex commands read and write four influences.
template <>
struct hk::ArrayUse<&VertexBones> {
  static long count(std::size_t, const auto &...) { return hcMeshInternals::kInfluences; }
};

namespace {
using namespace hk;

constexpr auto kMeshByNumber = static_cast<hcMeshGeometry *(S::*)(int)>(&S::getMeshGeometry);
constexpr auto kLandmarkByNumber = static_cast<hcLandmark *(S::*)(int)>(&S::getLandmark);
constexpr auto kSectionByNumber = static_cast<hcBodySection *(S::*)(int)>(&S::getBodySection);

const Row kRows[] = {
    fn<"hcSmoothSkin_getNumMeshes", "{ hcSmoothSkin * } ", &S::getNumMeshes>,
    fn<"hcSmoothSkin_getMeshGeometry", "{ hcSmoothSkin * } meshID ", kMeshByNumber>,
    fn<"hcSmoothSkin_getNumLandmarks", "{ hcSmoothSkin * } ", &S::getNumLandmarks>,
    fn<"hcSmoothSkin_getLandmark", "{ hcSmoothSkin * } n ", kLandmarkByNumber>,
    fn<"hcSmoothSkin_getBoundingBox", "{ hcSmoothSkin * } bmin bmax ?global? ", &S::getBoundingBox, 1>,
    fn<"hcSmoothSkin_getNumBodySections", "{ hcSmoothSkin * } ", &S::getNumBodySections>,
    fn<"hcSmoothSkin_getBodySection", "{ hcSmoothSkin * } sectionID ", kSectionByNumber>,
    fn<"hcSmoothSkin_updateAll", "", &S::updateAll>,
    fn<"hcSmoothSkin_initializeToMeshState", "{ hcSmoothSkin * } ?forceUpdates? ?useTPose? ",
       &S::initializeToMeshState, 1, 1>,
    fn<"hcSmoothSkin_outputToPsurfs",
       "{ hcSmoothSkin * } path ?discardTolerance? ?splitTriangles? ?nodeOffset? ?useBodySections? "
       "?initToMeshState? ",
       &S::outputToPsurfs, 0.00005f, 1, 1, 1, 1>,
    fn<"hcSmoothSkin_getSegmentFromBoneID", "{ hcSmoothSkin * } boneID ", &S::getSegmentFromBoneID>,
    fn<"hcSmoothSkin_useAllVerticesForSegmentBBoxes", "on ", &S::useAllVerticesForSegmentBBoxes>,
    fn<"hcSmoothSkin_getUseAllVerticesForSegmentBBoxes", "", &S::getUseAllVerticesForSegmentBBoxes>,
    fn<"hcSmoothSkin_setSkinFrame", "etype ", &S::setSkinFrame>,
    fn<"hcSmoothSkin_getSkinFrame", "", &S::getSkinFrame>,
    fn<"hcSmoothSkin_useExtEngine", "yes ", &S::useExtEngine>,
    fn<"hcSmoothSkin_isExtEngine", "", &S::isExtEngine>,
    fn<"hcSmoothSkin_useReverseSG", "yes ", &S::useReverseSG>,
    fn<"hcSmoothSkin_isReverseSG", "", &S::isReverseSG>,
    fn<"hcSmoothSkin_computeBBoxes", "on ", &S::computeBBoxes>,
    fn<"hcSmoothSkin_bboxesComputed", "", &S::bboxesComputed>,
    fn<"hcSmoothSkin_disableRigidMeshSkinning", "on ", &S::disableRigidMeshSkinning>,
    fn<"hcSmoothSkin_rigidMeshSkinningDisabled", "", &S::rigidMeshSkinningDisabled>,
    fn<"hcSmoothSkin_getRigRoot", "{ hcSmoothSkin * } mat ", &S::getRigRoot>,
    fn<"hcSmoothSkin_s_seamVertexEpsilon_set", "{ float  } ", &SetSeamEpsilon>,
    fn<"hcSmoothSkin_s_seamVertexEpsilon_get", "", &GetSeamEpsilon>,

    method<"hcSmoothSkin_getMeshGeometryByName", "{ hcSmoothSkin * } name ", MeshByName>,
    method<"hcSmoothSkin_getMeshGeometryByNum", "{ hcSmoothSkin * } num ", MeshByNum>,
    method<"hcSmoothSkin_getVertexBones", "{ hcSmoothSkin * } meshID vert bones weights ", &VertexBones>,
    method<"hcSmoothSkin_getVertexOffsets", "{ hcSmoothSkin * } meshID vert v0 v1 v2 v3 ", &VertexOffsets>,
    method<"hcSmoothSkin_getVertexFrames", "{ hcSmoothSkin * } meshID vert v0 v1 v2 v3 ", &VertexFrames>,
    method<"hcSmoothSkin_getVertexRestNormal", "{ hcSmoothSkin * } meshID vert v0 ", &VertexRestNormal>,
    method<"hcSmoothSkin_buildSceneGraph", "{ hcSmoothSkin * } ", &OnImpl<&Sk::buildSceneGraph>>,
    method<"hcSmoothSkin_unBuildSceneGraph", "{ hcSmoothSkin * } ", &OnImpl<&Sk::unBuildSceneGraph>>,
    method<"hcSmoothSkin_notifyEditsOn", "{ hcSmoothSkin * } useTPose ", &OnImpl<&Sk::notifyEditsOn, int>>,
    method<"hcSmoothSkin_notifyEditsComplete", "{ hcSmoothSkin * } ", &OnImpl<&Sk::notifyEditsComplete>>,
    method<"hcSmoothSkin_disableMeshUpdates", "{ hcSmoothSkin * } on ", &OnImpl<&Sk::disableMeshUpdates, int>>,
    method<"hcSmoothSkin_getThisSharedVertices", "{ hcSmoothSkin * } meshName neighborID ", &SharedVertices<false>>,
    method<"hcSmoothSkin_getNeighborSharedVertices", "{ hcSmoothSkin * } meshName neighborID ",
           &SharedVertices<true>>,
    method<"hcSmoothSkin_getLandmarkByName", "{ hcSmoothSkin * } name ", &Landmark<const char *>>,
    method<"hcSmoothSkin_getLandmarkByNum", "{ hcSmoothSkin * } n ", &Landmark<int>>,
    method<"hcSmoothSkin_getSegmentBone", "{ hcSmoothSkin * } s ", &OnImpl<&Sk::getBone, hcSegment *>>,
    method<"hcSmoothSkin_setDisplay", "{ hcSmoothSkin * } type value ",
           &OnImpl<&Sk::setDisplay, hcSegment::segDisplayType, int>>,
    method<"hcSmoothSkin_getTwistLink", "{ hcSmoothSkin * } j ", &OnImpl<&Sk::getTwistLink, hcJoint *>>,
    method<"hcSmoothSkin_getNPsurfReps", "{ hcSmoothSkin * } seg ", &OnImpl<&Sk::getNPsurfReps, hcSegment *>>,
    method<"hcSmoothSkin_getPsurfRep", "{ hcSmoothSkin * } i seg ", &PsurfRep>,
    method<"hcSmoothSkin_printPsurfRep", "{ hcSmoothSkin * } seg outdir filename global ",
           &OnImpl<&Sk::printPsurfRep, hcSegment *, const char *, const char *, int>>,
    fn<"hcSmoothSkin_enableTwistBones", "on ", &hcTwistLink::enableVertexWeighting>,
    fn<"hcSmoothSkin_setWeightThreshold", "threshold ", &hcTwistLink::setWeightThreshold>,
    fn<"hcSmoothSkin_setUpperArmScaleFactors", "s1 s2 s3 s4 ", &hcTwistLink::setUpperArmScaleFactors>,
    fn<"hcSmoothSkin_setLowerArmScaleFactors", "s1 s2 s3 s4 ", &hcTwistLink::setLowerArmScaleFactors>,
    fn<"hcSmoothSkin_setShoulderGapWeighting", "proximalGap distalGap ", &hcTwistLink::setShoulderGapWeighting>,
    fn<"hcSmoothSkin_setWristGapWeighting", "proximalGap distalGap ", &hcTwistLink::setWristGapWeighting>,
    fn<"hcSmoothSkin_printTwistParams", "", &hcTwistLink::printParams>,
};

const ConstantDef kConstants[] = {
    {"HC_SKIN_GLOBAL", S::HC_SKIN_GLOBAL},
    {"HC_SKIN_RELATIVE_FIGURE", S::HC_SKIN_RELATIVE_FIGURE},
};

// The object command lists every name the interface declares more than
// once each time; the second initializeToMeshState is the extension's.
const char *const kMethodOrder[] = {
    "getNumMeshes", "getMeshGeometry", "getMeshGeometry", "getNumLandmarks", "getLandmark", "getLandmark",
    "getBoundingBox", "getNumBodySections", "getBodySection", "getBodySection", "initializeToMeshState",
    "outputToPsurfs", "getSegmentFromBoneID", "getRigRoot", "getMeshGeometryByName", "getMeshGeometryByNum",
    "getVertexBones", "getVertexOffsets", "getVertexFrames", "getVertexRestNormal", "buildSceneGraph",
    "unBuildSceneGraph", "notifyEditsOn", "notifyEditsComplete", "initializeToMeshState", "disableMeshUpdates",
    "getThisSharedVertices", "getNeighborSharedVertices", "getLandmarkByName", "getLandmarkByNum",
    "getSegmentBone", "setDisplay", "getTwistLink", "getNPsurfReps", "getPsurfRep", "printPsurfRep",
};

}  // namespace

HK_CLASS(hcSmoothSkin, nullptr, kRows, kConstants, kMethodOrder);
