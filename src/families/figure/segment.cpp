// hcSegment: the rigid bodies of a figure (frames, scaling, display,
// physical properties, materials, geometry editing, distances).
#include "frame/classes.h"

// A 3 x 3 inertia tensor; a distance and a direction.
template <> struct hk::ArrayUse<&hcSegment::getInertiaMatrix> {
  static long count(std::size_t, hcSegment &, float *) { return 9; }
};
template <> struct hk::ArrayUse<&hcSegment::getMinDistance> {
  static long count(std::size_t param, hcSegment &, hcSegment *, float *, float *, float) { return param == 3 ? 3 : 1; }
};

// setMaterials reads newNMaterials material pointers.
template <> struct hk::ArrayUse<&hcSegment::setMaterials> {
  static long count(std::size_t, hcSegment &, hcMaterial **, int n) { return n; }
};

namespace {
using namespace hk;

const Row kRows[] = {
    fn<"hcSegment_getFigure", "{ hcSegment * } ", &hcSegment::getFigure>,
    fn<"hcSegment_getModified", "{ hcSegment * } ", &hcSegment::getModified>,
    fn<"hcSegment_setModified", "{ hcSegment * } { int  } ", &hcSegment::setModified>,
    fn<"hcSegment_getGlobal", "{ hcSegment * } G ", &hcSegment::getGlobal>,
    fn<"hcSegment_getNJoints", "{ hcSegment * } ", &hcSegment::getNJoints>,
    fn<"hcSegment_getJoints", "{ hcSegment * } ", &hcSegment::getJoints>,
    fn<"hcSegment_getNSites", "{ hcSegment * } ", &hcSegment::getNSites>,
    fn<"hcSegment_getSites", "{ hcSegment * } ", &hcSegment::getSites>,
    fn<"hcSegment_setGlobal", "{ hcSegment * } G ", &hcSegment::setGlobal>,
    fn<"hcSegment_setCoordGlobal", "{ hcSegment * } p trans ", &hcSegment::setCoordGlobal>,
    fn<"hcSegment_loadMaterials", "{ hcSegment * } ", &hcSegment::loadMaterials>,
    fn<"hcSegment_setName", "{ hcSegment * } newName ", &hcSegment::setName>,
    fn<"hcSegment_applyScale", "{ hcSegment * } scale ?fast? ", &hcSegment::applyScale, 0>,
    fn<"hcSegment_scaleGeometry", "{ hcSegment * } scale ", &hcSegment::scaleGeometry>,
    fn<"hcSegment_scaleFast", "{ hcSegment * } scale ", &hcSegment::scaleFast>,
    fn<"hcSegment_getAbsoluteScale", "{ hcSegment * } vec ", &hcSegment::getAbsoluteScale>,
    fn<"hcSegment_setDisplay", "{ hcSegment * } type value ?subtree? ", &hcSegment::setDisplay, 0>,
    fn<"hcSegment_getDisplay", "{ hcSegment * } which ", &hcSegment::getDisplay>,
    fn<"hcSegment_getDisplayFlags", "{ hcSegment * } ", &hcSegment::getDisplayFlags>,
    fn<"hcSegment_getPhysical", "{ hcSegment * } ", &hcSegment::getPhysical>,
    fn<"hcSegment_newSegPhys", "{ hcSegment * } ", &hcSegment::newSegPhys>,
    fn<"hcSegment_updateMassDensityVolume", "{ hcSegment * } ", &hcSegment::updateMassDensityVolume>,
    fn<"hcSegment_updatePhysical", "{ hcSegment * } ?override? ", &hcSegment::updatePhysical, 0>,
    fn<"hcSegment_getMass", "{ hcSegment * } ", &hcSegment::getMass>,
    fn<"hcSegment_getDensity", "{ hcSegment * } ", &hcSegment::getDensity>,
    fn<"hcSegment_getVolume", "{ hcSegment * } ", &hcSegment::getVolume>,
    fn<"hcSegment_getCenterOfMass", "{ hcSegment * } vec ", &hcSegment::getCenterOfMass>,
    fn<"hcSegment_getInertiaMatrix", "{ hcSegment * } mat ", &hcSegment::getInertiaMatrix>,
    fn<"hcSegment_getHascom", "{ hcSegment * } ", &hcSegment::getHascom>,
    fn<"hcSegment_getMassFlag", "{ hcSegment * } ", &hcSegment::getMassFlag>,
    fn<"hcSegment_getDensityFlag", "{ hcSegment * } ", &hcSegment::getDensityFlag>,
    fn<"hcSegment_setMass", "{ hcSegment * } newMass ", &hcSegment::setMass>,
    fn<"hcSegment_setDensity", "{ hcSegment * } newDensity ", &hcSegment::setDensity>,
    fn<"hcSegment_setMaterials", "{ hcSegment * } newMaterials newNMaterials ", &hcSegment::setMaterials>,
    fn<"hcSegment_setMaterial", "{ hcSegment * } newMaterial ", &hcSegment::setMaterial>,
    fn<"hcSegment_setFaceMaterial", "{ hcSegment * } face material ", &hcSegment::setFaceMaterial>,
    fn<"hcSegment_replaceMaterial", "{ hcSegment * } replMat withMat ", &hcSegment::replaceMaterial>,
    fn<"hcSegment_getRootSite", "{ hcSegment * } ", &hcSegment::getRootSite>,
    fn<"hcSegment_editRemove", "segment ", &hcSegment::editRemove>,
    fn<"hcSegment_find", "objs fname ", &hcSegment::find>,
    fn<"hcSegment_editMerge", "segment1 segment2 ", &hcSegment::editMerge>,
    fn<"hcSegment_editSplit", "segment tmpdir ?sType? ", &hcSegment::editSplit, 0>,
    fn<"hcSegment_addSite", "{ hcSegment * } site ", &hcSegment::addSite>,
    fn<"hcSegment_delSite", "{ hcSegment * } site ", &hcSegment::delSite>,
    fn<"hcSegment_getGeometry", "{ hcSegment * } ", &hcSegment::getGeometry>,
    fn<"hcSegment_getSG", "{ hcSegment * } ", &hcSegment::getSG>,
    fn<"hcSegment_searchProperty", "{ hcSegment * } property v ", &hcSegment::searchProperty>,
    fn<"hcSegment_genTexCoordsFace", "{ hcSegment * } camera face texSegment tex_face ",
       &hcSegment::genTexCoordsFace>,
    fn<"hcSegment_transformGeometry", "{ hcSegment * } M ", &hcSegment::transformGeometry>,
    fn<"hcSegment_getClosestNode", "{ hcSegment * } vector ", &hcSegment::getClosestNode>,
    fn<"hcSegment_getNodeGlobal", "{ hcSegment * } node matrix ", &hcSegment::getNodeGlobal>,
    fn<"hcSegment_saveGeometryToFile", "{ hcSegment * } fileName ?global? ", &hcSegment::saveGeometryToFile, 1>,
    fn<"hcSegment_setGeometry", "{ hcSegment * } geom ", &hcSegment::setGeometry>,
    fn<"hcSegment_resolve", "l ", &hcSegment::resolve>,
    fn<"hcSegment_getMinDistance", "{ hcSegment * } toSegment dist dir ?eps? ", &hcSegment::getMinDistance,
       2e-7f>,
    fn<"hcSegment_setNodeLocation", "{ hcSegment * } node vec ", &hcSegment::setNodeLocation>,
    // The reference frame word is read only when present; absent, the host
    // gets a null frame.
    fn<"hcSegment_getBoundingBox", "{ hcSegment * } bmin bmax ?global? ?extend? ?ref? ",
       &hcSegment::getBoundingBox, 1, 0, nullptr>,
    fn<"hcSegment_getCentroid", "{ hcSegment * } c global ", &hcSegment::getCentroid>,
    fn<"hcSegment_createInMemory", "figure name ", &hcSegment::createInMemory>,
    fn<"hcSegment_setPsurfScaleSaved", "{ hcSegment * } ", &hcSegment::setPsurfScaleSaved>,
};

// segDisplayType, the lower-case display modes (from 1), segSplitType.
const ConstantDef kConstants[] = {
    {"ON", hcSegment::ON},
    {"NODES", hcSegment::NODES},
    {"FACES", hcSegment::FACES},
    {"EDGES", hcSegment::EDGES},
    {"MODE", hcSegment::MODE},
    {"HIGHLIGHT", hcSegment::HIGHLIGHT},
    {"FACE_ENUM", hcSegment::FACE_ENUM},
    {"NODE_ENUM", hcSegment::NODE_ENUM},
    {"FACE_NORMS", hcSegment::FACE_NORMS},
    {"PROJS", hcSegment::PROJS},
    {"CURVES", hcSegment::CURVES},
    {"PATCHES", hcSegment::PATCHES},
    {"NODL", hcSegment::NODL},
    {"wireframe", hcSegment::wireframe},
    {"shaded", hcSegment::shaded},
    {"transparent_shaded", hcSegment::transparent_shaded},
    {"transparent_wireframe", hcSegment::transparent_wireframe},
    {"DISCONNECTED_REGIONS", hcSegment::DISCONNECTED_REGIONS},
    {"PREDEFINED_CSURFS", hcSegment::PREDEFINED_CSURFS},
};

}  // namespace

HK_CLASS(hcSegment, &hcNode_class, kRows, kConstants);
