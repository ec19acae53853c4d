// hcMeshGeometry (the skinned-mesh geometry) and hcMeshInternals (the
// rigging behind one mesh).
#include "frame/classes.h"

// Boxes are 3 floats each; a vertex has at most 4 influences, and the
// caller's array holds 4.
template <> struct hk::ArrayUse<static_cast<int (hcMeshGeometry::*)(int, hMatrix, float *, float *, int)>(
    &hcMeshGeometry::bbox)> {
  static long count(std::size_t, hcMeshGeometry &, int, hMatrix, float *, float *, int) { return 3; }
};
struct FourInfluences {
  static long count(std::size_t, auto &, int, auto *) { return hcMeshInternals::kInfluences; }
};
template <> struct hk::ArrayUse<&hcMeshGeometry::getVertexBones> : FourInfluences {};
template <> struct hk::ArrayUse<&hcMeshGeometry::getVertexWeights> : FourInfluences {};
template <> struct hk::ArrayUse<&hcMeshInternals::getVertexBones> : FourInfluences {};
template <> struct hk::ArrayUse<&hcMeshInternals::getVertexWeights> : FourInfluences {};
template <> struct hk::ArrayUse<hk::on<hcMeshGeometry, &hcGeometry::getFaceTexCoords>> {
  static long count(std::size_t, hcMeshGeometry &, int, int, float *, float *) { return 1; }
};

namespace {
using namespace hk;

using M = hcMeshGeometry;
using G = hcGeometry;
constexpr auto kMeshBox = static_cast<int (M::*)(int, hMatrix, float *, float *, int)>(&M::bbox);

// The mesh's own operations, then the geometry interface wrapped again so
// that the object word is checked as a mesh.
const Row kMeshRows[] = {
    ctor<"new_hcMeshGeometry", "nVertices nFaces hasTexCoords parent ", M, void(int, int, int, hcFigure *)>,
    dtor<"delete_hcMeshGeometry", "{ hcMeshGeometry * } ", M>,
    setter<"hcMeshGeometry_m_meshInternals_set", "{ hcMeshGeometry * } { hcMeshInternals * } ", &M::m_meshInternals>,
    getter<"hcMeshGeometry_m_meshInternals_get", "{ hcMeshGeometry * } ", &M::m_meshInternals>,
    fn<"hcMeshGeometry_writeToPsurf", "{ hcMeshGeometry * } filename ?nodeOffset? ?discardTolerance? ",
       &M::writeToPsurf, 1, 0.00005f>,
    fn<"hcMeshGeometry_getRigidSegment", "{ hcMeshGeometry * } ", &M::getRigidSegment>,
    fn<"hcMeshGeometry_getInitialState", "{ hcMeshGeometry * } m ", &M::getInitialState>,
    fn<"hcMeshGeometry_getDeformedNodeCoords", "{ hcMeshGeometry * } index aVector_coords aVector_normals ",
       &M::getDeformedNodeCoords>,
    fn<"hcMeshGeometry_getDeformedCoords", "{ hcMeshGeometry * } aVector_coords aVector_normals ",
       &M::getDeformedCoords>,
    fn<"hcMeshGeometry_getMeshInternals", "{ hcMeshGeometry * } ", &M::getMeshInternals>,
    fn<"hcMeshGeometry_getSG", "{ hcMeshGeometry * } ", &M::getSG>,
    fn<"hcMeshGeometry_getNumLandmarks", "{ hcMeshGeometry * } ", &M::getNumLandmarks>,
    fn<"hcMeshGeometry_getLandmark", "{ hcMeshGeometry * } i ", &M::getLandmark>,
    fn<"hcMeshGeometry_getFigure", "{ hcMeshGeometry * } ", &M::getFigure>,
    fn<"hcMeshGeometry_constructExtInfo", "{ hcMeshGeometry * } figRoot boneArray ", &M::constructExtInfo>,
    fn<"hcMeshGeometry_getNBones", "{ hcMeshGeometry * } ", &M::getNBones>,
    fn<"hcMeshGeometry_convertBoneIndex", "{ hcMeshGeometry * } globalIndex ", &M::convertBoneIndex>,
    fn<"hcMeshGeometry_getVertexBones", "{ hcMeshGeometry * } i bones ", &M::getVertexBones>,
    fn<"hcMeshGeometry_getVertexWeights", "{ hcMeshGeometry * } i bones ", &M::getVertexWeights>,
    fn<"hcMeshGeometry_setNodeNormal", "{ hcMeshGeometry * } node vec ", &M::setNodeNormal>,
    fn<"hcMeshGeometry_setVisibility", "{ hcMeshGeometry * } on ", &M::setVisibility>,
    method<"hcMeshGeometry_getNumNodes", "{ hcMeshGeometry * } ", on<M, &G::getNumNodes>>,
    method<"hcMeshGeometry_getNodeCoords", "{ hcMeshGeometry * } nodeIndex nodeCoords ", on<M, &G::getNodeCoords>>,
    fn<"hcMeshGeometry_getUndeformedNodeCoords", "{ hcMeshGeometry * } nodeIndex nodeCoords ",
       &M::getUndeformedNodeCoords>,
    method<"hcMeshGeometry_getNodeNormal", "{ hcMeshGeometry * } nodeIndex nodeNormal ", on<M, &G::getNodeNormal>>,
    method<"hcMeshGeometry_getNumFaces", "{ hcMeshGeometry * } ", on<M, &G::getNumFaces>>,
    method<"hcMeshGeometry_getFaceNode", "{ hcMeshGeometry * } faceIndex faceVertex ", on<M, &G::getFaceNode>>,
    method<"hcMeshGeometry_getFaceTexCoords", "{ hcMeshGeometry * } faceIndex faceVertex u v ",
           on<M, &G::getFaceTexCoords>>,
    fn<"hcMeshGeometry_getMaterial", "{ hcMeshGeometry * } ?i? ", &M::getMaterial, 0>,
    fn<"hcMeshGeometry_bbox", "{ hcMeshGeometry * } global model min max ?extend? ", kMeshBox, 0>,
    method<"hcMeshGeometry_hasAttribute", "{ hcMeshGeometry * } { hcGeometry::hasFlag  } ",
           on<M, &G::hasAttribute>>,
    method<"hcMeshGeometry_saveToArchive", "{ hcMeshGeometry * } saveID archiveID ?flags? ",
           on<M, &G::saveToArchive>, 0>,
    method<"hcMeshGeometry_removeAttribute", "{ hcMeshGeometry * } { hcGeometry::hasFlag  } ",
           on<M, &G::removeAttribute>>,
    method<"hcMeshGeometry_getNumFaceVertices", "{ hcMeshGeometry * } faceIndex ", on<M, &G::getNumFaceVertices>>,
    method<"hcMeshGeometry_getNumFaceEdges", "{ hcMeshGeometry * } faceIndex ", on<M, &G::getNumFaceEdges>>,
    method<"hcMeshGeometry_getNumMaterials", "{ hcMeshGeometry * } ", on<M, &G::getNumMaterials>>,
    method<"hcMeshGeometry_getFaceMaterial", "{ hcMeshGeometry * } faceIndex ", on<M, &G::getFaceMaterial>>,
    method<"hcMeshGeometry_getFaceSmoothShade", "{ hcMeshGeometry * } faceIndex ", on<M, &G::getFaceSmoothShade>>,
    method<"hcMeshGeometry_setNodeLocation", "{ hcMeshGeometry * } node vec ", on<M, &G::setNodeLocation>>,
    method<"hcMeshGeometry_getNodeColor", "{ hcMeshGeometry * } nodeIndex nodeColor ", on<M, &G::getNodeColor>>,
    method<"hcMeshGeometry_getScaleVector", "{ hcMeshGeometry * } scale ", on<M, &G::getScaleVector>>,
    method<"hcMeshGeometry_deleteNode", "{ hcMeshGeometry * } n deletefaces ", on<M, &G::deleteNode>>,
    method<"hcMeshGeometry_deleteEdge", "{ hcMeshGeometry * } e ", on<M, &G::deleteEdge>>,
    method<"hcMeshGeometry_deleteFace", "{ hcMeshGeometry * } f ", on<M, &G::deleteFace>>,
    method<"hcMeshGeometry_createNode", "{ hcMeshGeometry * } ", on<M, &G::createNode>>,
    method<"hcMeshGeometry_createFace", "{ hcMeshGeometry * } nodeList ", on<M, &G::createFace>>,
    method<"hcMeshGeometry_reverseFace", "{ hcMeshGeometry * } f ", on<M, &G::reverseFace>>,
    method<"hcMeshGeometry_getFaceNormal", "{ hcMeshGeometry * } faceIndex faceNormal ", on<M, &G::getFaceNormal>>,
    method<"hcMeshGeometry_getNumEdges", "{ hcMeshGeometry * } ", on<M, &G::getNumEdges>>,
    method<"hcMeshGeometry_getFaceEdge", "{ hcMeshGeometry * } faceIndex faceEdge ", on<M, &G::getFaceEdge>>,
    method<"hcMeshGeometry_getFaceCenter", "{ hcMeshGeometry * } face v ", on<M, &G::getFaceCenter>>,
    method<"hcMeshGeometry_updateAllFields", "{ hcMeshGeometry * } ", on<M, &G::updateAllFields>>,
    method<"hcMeshGeometry_loadMaterials", "{ hcMeshGeometry * } ", on<M, &G::loadMaterials>>,
    method<"hcMeshGeometry_getFileName", "{ hcMeshGeometry * } ", on<M, &G::getFileName>>,
    method<"hcMeshGeometry_getEdgeHead", "{ hcMeshGeometry * } edge ", on<M, &G::getEdgeHead>>,
    method<"hcMeshGeometry_getEdgeTail", "{ hcMeshGeometry * } edge ", on<M, &G::getEdgeTail>>,
    method<"hcMeshGeometry_getEdgeLeft", "{ hcMeshGeometry * } edge ", on<M, &G::getEdgeLeft>>,
    method<"hcMeshGeometry_getEdgeRight", "{ hcMeshGeometry * } edge ", on<M, &G::getEdgeRight>>,
    again<"hcMeshGeometry_readFromFile", "hcGeometry_readFromFile", "fileName newName ", &G::readFromFile>,
    again<"hcMeshGeometry_read", "hcGeometry_read", "fileName ?scale? ", &G::read, nullptr>,
};

// The method list names bbox twice: the mesh's own box and the interface's
// both reach hcMeshGeometry_bbox.
const char *const kMeshOrder[] = {
    "writeToPsurf", "getRigidSegment", "getInitialState", "getDeformedNodeCoords", "getDeformedCoords",
    "getMeshInternals", "getSG", "getNumLandmarks", "getLandmark", "getFigure", "constructExtInfo", "getNBones",
    "convertBoneIndex", "getVertexBones", "getVertexWeights", "setNodeNormal", "setVisibility", "getNumNodes",
    "getNodeCoords", "getUndeformedNodeCoords", "getNodeNormal", "getNumFaces", "getFaceNode", "getFaceTexCoords",
    "getMaterial", "bbox", "bbox", "hasAttribute", "saveToArchive", "removeAttribute", "getNumFaceVertices",
    "getNumFaceEdges", "getNumMaterials", "getFaceMaterial", "getFaceSmoothShade", "setNodeLocation",
    "getNodeColor", "getScaleVector", "deleteNode", "deleteEdge", "deleteFace", "createNode", "createFace",
    "reverseFace", "getFaceNormal", "getNumEdges", "getFaceEdge", "getFaceCenter", "updateAllFields",
    "loadMaterials", "getFileName", "getEdgeHead", "getEdgeTail", "getEdgeLeft", "getEdgeRight", "getName",
    "getFullName", "setFullName", "setName", "getTimestamp", "setTimestamp", "getType", "sprint", "getProperty",
    "searchProperty", "setProperty", "removeProperty", "getPropertyList", "setScriptObject", "getScriptObject",
    "tessprint", "attach", "detach", "notify", "invalid", "getObservers",
};

using I = hcMeshInternals;

// Lists given by value reach the host as its own copy.
const Row kInternalsRows[] = {
    ctor<"new_hcMeshInternals", "m ", I, void(hcMeshGeometry *)>,
    dtor<"delete_hcMeshInternals", "{ hcMeshInternals * } ", I>,
    fn<"hcMeshInternals_getDisplayFlags", "{ hcMeshInternals * } ", &I::getDisplayFlags>,
    fn<"hcMeshInternals_setNeighbors", "{ hcMeshInternals * } neighbors ", &I::setNeighbors>,
    fn<"hcMeshInternals_getNNeighbors", "{ hcMeshInternals * } ", &I::getNNeighbors>,
    fn<"hcMeshInternals_getNeighbor", "{ hcMeshInternals * } i ", &I::getNeighbor>,
    fn<"hcMeshInternals_getSharedVertices", "{ hcMeshInternals * } neighborID thisMesh neighborMesh ",
       &I::getSharedVertices>,
    fn<"hcMeshInternals_synchroniseBoundaries", "{ hcMeshInternals * } ", &I::synchroniseBoundaries>,
    fn<"hcMeshInternals_validateSharedVertices", "{ hcMeshInternals * } ", &I::validateSharedVertices>,
    fn<"hcMeshInternals_setLandmarkRefs", "{ hcMeshInternals * } l ", &I::setLandmarkRefs>,
    fn<"hcMeshInternals_getLandmark", "{ hcMeshInternals * } i ", &I::getLandmark>,
    fn<"hcMeshInternals_getNumLandmarks", "{ hcMeshInternals * } ", &I::getNumLandmarks>,
    fn<"hcMeshInternals_getVertexBones", "{ hcMeshInternals * } i bones ", &I::getVertexBones>,
    fn<"hcMeshInternals_getVertexWeights", "{ hcMeshInternals * } i bones ", &I::getVertexWeights>,
    fn<"hcMeshInternals_getVertexOffsets", "{ hcMeshInternals * } i v0 v1 v2 v3 ", &I::getVertexOffsets>,
    fn<"hcMeshInternals_getVertexFrames", "{ hcMeshInternals * } i m0 m1 m2 m3 ", &I::getVertexFrames>,
    fn<"hcMeshInternals_getVertexRestNormal", "{ hcMeshInternals * } i m ", &I::getVertexRestNormal>,
    fn<"hcMeshInternals_resetRigInfo", "{ hcMeshInternals * } vertID ", &I::resetRigInfo>,
    fn<"hcMeshInternals_setRigInfo",
       "{ hcMeshInternals * } vertID influenceID boneIndex weight boneGlobal restNormal restOffset ",
       &I::setRigInfo>,
    fn<"hcMeshInternals_copyRigInfo", "m_target v_target m_source v_source ", &I::copyRigInfo>,
    fn<"hcMeshInternals_copyWeightInfo", "m_target v_target m_source v_source ", &I::copyWeightInfo>,
    fn<"hcMeshInternals_setWeights", "pMesh vertexID b0 b1 b2 b3 f0 f1 f2 f3 ", &I::setWeights>,
    fn<"hcMeshInternals_recomputeNormals", "{ hcMeshInternals * } ", &I::recomputeNormals>,
    fn<"hcMeshInternals_freeVertex2Faces", "{ hcMeshInternals * } ", &I::freeVertex2Faces>,
    fn<"hcMeshInternals_getNVertex2Faces", "{ hcMeshInternals * } vertexID ", &I::getNVertex2Faces>,
    fn<"hcMeshInternals_getVertex2Faces", "{ hcMeshInternals * } vertexID faceList ", &I::getVertex2Faces>,
    fn<"hcMeshInternals_getNSegments", "{ hcMeshInternals * } ", &I::getNSegments>,
    fn<"hcMeshInternals_getSegment", "{ hcMeshInternals * } i ", &I::getSegment>,
};

}  // namespace

HK_CLASS(hcMeshGeometry, &hcGeometry_class, kMeshRows, kNoConstants, kMeshOrder);
HK_CLASS(hcMeshInternals, nullptr, kInternalsRows, kNoConstants);
