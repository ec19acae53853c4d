// hcGeometry: the host's geometry interface (nodes, edges, faces, materials,
// boxes, edits, files).  Every operation is virtual, so a mesh answers these
// commands with its own implementation.
#include "frame/classes.h"

// Boxes are 3 floats each.
template <> struct hk::ArrayUse<static_cast<int (hcGeometry::*)(hMatrix, float *, float *, int)>(&hcGeometry::bbox)> {
  static long count(std::size_t, hcGeometry &, hMatrix, float *, float *, int) { return 3; }
};

namespace {
using namespace hk;

constexpr auto kBox = static_cast<int (hcGeometry::*)(hMatrix, float *, float *, int)>(&hcGeometry::bbox);

const Row kRows[] = {
    fn<"hcGeometry_hasAttribute", "{ hcGeometry * } { hcGeometry::hasFlag  } ", &hcGeometry::hasAttribute>,
    fn<"hcGeometry_removeAttribute", "{ hcGeometry * } { hcGeometry::hasFlag  } ", &hcGeometry::removeAttribute>,
    fn<"hcGeometry_getScaleVector", "{ hcGeometry * } scale ", &hcGeometry::getScaleVector>,
    fn<"hcGeometry_getNumNodes", "{ hcGeometry * } ", &hcGeometry::getNumNodes>,
    fn<"hcGeometry_getNodeCoords", "{ hcGeometry * } nodeIndex nodeCoords ", &hcGeometry::getNodeCoords>,
    fn<"hcGeometry_getNodeNormal", "{ hcGeometry * } nodeIndex nodeNormal ", &hcGeometry::getNodeNormal>,
    fn<"hcGeometry_getNodeColor", "{ hcGeometry * } nodeIndex nodeColor ", &hcGeometry::getNodeColor>,
    fn<"hcGeometry_getNumFaces", "{ hcGeometry * } ", &hcGeometry::getNumFaces>,
    fn<"hcGeometry_getFaceNormal", "{ hcGeometry * } faceIndex faceNormal ", &hcGeometry::getFaceNormal>,
    fn<"hcGeometry_getNumFaceVertices", "{ hcGeometry * } faceIndex ", &hcGeometry::getNumFaceVertices>,
    fn<"hcGeometry_getNumEdges", "{ hcGeometry * } ", &hcGeometry::getNumEdges>,
    fn<"hcGeometry_getNumFaceEdges", "{ hcGeometry * } faceIndex ", &hcGeometry::getNumFaceEdges>,
    fn<"hcGeometry_getFaceEdge", "{ hcGeometry * } faceIndex faceEdge ", &hcGeometry::getFaceEdge>,
    fn<"hcGeometry_getFaceNode", "{ hcGeometry * } faceIndex faceVertex ", &hcGeometry::getFaceNode>,
    fn<"hcGeometry_getFaceTexCoords", "{ hcGeometry * } faceIndex faceVertex u v ", &hcGeometry::getFaceTexCoords>,
    fn<"hcGeometry_getFaceSmoothShade", "{ hcGeometry * } faceIndex ", &hcGeometry::getFaceSmoothShade>,
    fn<"hcGeometry_getNumMaterials", "{ hcGeometry * } ", &hcGeometry::getNumMaterials>,
    fn<"hcGeometry_getMaterial", "{ hcGeometry * } i ", &hcGeometry::getMaterial>,
    fn<"hcGeometry_getFaceMaterial", "{ hcGeometry * } faceIndex ", &hcGeometry::getFaceMaterial>,
    fn<"hcGeometry_getFaceCenter", "{ hcGeometry * } face v ", &hcGeometry::getFaceCenter>,
    fn<"hcGeometry_updateAllFields", "{ hcGeometry * } ", &hcGeometry::updateAllFields>,
    fn<"hcGeometry_loadMaterials", "{ hcGeometry * } ", &hcGeometry::loadMaterials>,
    fn<"hcGeometry_getFileName", "{ hcGeometry * } ", &hcGeometry::getFileName>,
    fn<"hcGeometry_getEdgeHead", "{ hcGeometry * } edge ", &hcGeometry::getEdgeHead>,
    fn<"hcGeometry_getEdgeTail", "{ hcGeometry * } edge ", &hcGeometry::getEdgeTail>,
    fn<"hcGeometry_getEdgeLeft", "{ hcGeometry * } edge ", &hcGeometry::getEdgeLeft>,
    fn<"hcGeometry_getEdgeRight", "{ hcGeometry * } edge ", &hcGeometry::getEdgeRight>,
    fn<"hcGeometry_bbox", "{ hcGeometry * } model min max ?extend? ", kBox, 0>,
    fn<"hcGeometry_setNodeLocation", "{ hcGeometry * } node vec ", &hcGeometry::setNodeLocation>,
    fn<"hcGeometry_deleteNode", "{ hcGeometry * } n deletefaces ", &hcGeometry::deleteNode>,
    fn<"hcGeometry_deleteEdge", "{ hcGeometry * } e ", &hcGeometry::deleteEdge>,
    fn<"hcGeometry_deleteFace", "{ hcGeometry * } f ", &hcGeometry::deleteFace>,
    fn<"hcGeometry_createNode", "{ hcGeometry * } ", &hcGeometry::createNode>,
    fn<"hcGeometry_createFace", "{ hcGeometry * } nodeList ", &hcGeometry::createFace>,
    fn<"hcGeometry_reverseFace", "{ hcGeometry * } f ", &hcGeometry::reverseFace>,
    fn<"hcGeometry_saveToArchive", "{ hcGeometry * } saveID archiveID ?flags? ", &hcGeometry::saveToArchive, 0>,
    fn<"hcGeometry_readFromFile", "fileName newName ", &hcGeometry::readFromFile>,
    fn<"hcGeometry_read", "fileName ?scale? ", &hcGeometry::read, nullptr>,
    dtor<"delete_hcGeometry", "{ hcGeometry * } ", hcGeometry>,
};

}  // namespace

namespace hk {

// The attribute flags, linked again under hcMeshGeometry_ by derivation.
const ConstantDef kGeometryFlags[] = {
    {"nodeCoords", hcGeometry::nodeCoords},         {"nodeNormals", hcGeometry::nodeNormals},
    {"nodeColors", hcGeometry::nodeColors},         {"nodeFaces", hcGeometry::nodeFaces},
    {"nodeEdges", hcGeometry::nodeEdges},           {"edgeHeads", hcGeometry::edgeHeads},
    {"edgeTails", hcGeometry::edgeTails},           {"edgeLefts", hcGeometry::edgeLefts},
    {"edgeRights", hcGeometry::edgeRights},         {"edgeDisplay", hcGeometry::edgeDisplay},
    {"faceVertices", hcGeometry::faceVertices},     {"faceAttributes", hcGeometry::faceAttributes},
    {"faceNormals", hcGeometry::faceNormals},       {"faceColors", hcGeometry::faceColors},
    {"faceCenters", hcGeometry::faceCenters},       {"faceEdges", hcGeometry::faceEdges},
    {"faceTextures", hcGeometry::faceTextures},     {"faceDisplay", hcGeometry::faceDisplay},
    {"psurfDimensions", hcGeometry::psurfDimensions}, {"faceEqns", hcGeometry::faceEqns},
};

}  // namespace hk

HK_CLASS(hcGeometry, &hcObject_class, kRows, hk::kGeometryFlags);
