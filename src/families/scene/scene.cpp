// hcScene: the scene (lists, loading and saving, finding, adding and
// removing, settings) and the module-level command hcscene_get, which hands
// out the host's current scene.
#include "frame/classes.h"
#include "frame/registry.h"

namespace {
using namespace hk;

constexpr char kWrite[] = "w";

// Read at every call, so that the command follows the host when it replaces
// its current scene.
hcScene *CurrentScene() { return hcscene; }

const Row kRows[] = {
    fn<"hcScene_getClassType", "", &hcScene::getClassType>,
    fn<"hcScene_getFigures", "{ hcScene * } ", &hcScene::getFigures>,
    fn<"hcScene_getHumans", "{ hcScene * } ", &hcScene::getHumans>,
    fn<"hcScene_getJoints", "{ hcScene * } ", &hcScene::getJoints>,
    fn<"hcScene_getSegments", "{ hcScene * } ", &hcScene::getSegments>,
    fn<"hcScene_getSites", "{ hcScene * } ", &hcScene::getSites>,
    fn<"hcScene_getMaterials", "{ hcScene * } ", &hcScene::getMaterials>,
    fn<"hcScene_getConstraints", "{ hcScene * } ", &hcScene::getConstraints>,
    fn<"hcScene_getChannelSets", "{ hcScene * } ", &hcScene::getChannelSets>,
    fn<"hcScene_getASDXMLObjects", "{ hcScene * } ", &hcScene::getASDXMLObjects>,
    fn<"hcScene_load", "{ hcScene * } filename ", &hcScene::load>,
    fn<"hcScene_clear", "{ hcScene * } ", &hcScene::clear>,
    fn<"hcScene_save", "{ hcScene * } filename ?withPostures? ", &hcScene::save, 0>,
    fn<"hcScene_saveToPsurf", "{ hcScene * } filename ", &hcScene::saveToPsurf>,
    fn<"hcScene_savePositions", "{ hcScene * } filename docamera ?allAttachments? ", &hcScene::savePositions, 0>,
    fn<"hcScene_saveMotions", "{ hcScene * } filename ?mode? ?timeline? ?title? ", &hcScene::saveMotions,
       kWrite, 1, 1>,
    fn<"hcScene_saveFigureState", "{ hcScene * } filename figure ", &hcScene::saveFigureState>,
    fn<"hcScene_saveToArchive", "{ hcScene * } filename ?flag? ", &hcScene::saveToArchive,
       hcScene::archDefault>,
    fn<"hcScene_findFigure", "{ hcScene * } name ", &hcScene::findFigure>,
    fn<"hcScene_findHuman", "{ hcScene * } name ", &hcScene::findHuman>,
    fn<"hcScene_findSegment", "{ hcScene * } name ", &hcScene::findSegment>,
    fn<"hcScene_findSite", "{ hcScene * } name ", &hcScene::findSite>,
    fn<"hcScene_findJoint", "{ hcScene * } name ", &hcScene::findJoint>,
    fn<"hcScene_findConstraint", "{ hcScene * } name ", &hcScene::findConstraint>,
    fn<"hcScene_findASDXMLObject", "{ hcScene * } name ", &hcScene::findASDXMLObject>,
    fn<"hcScene_getWorld", "{ hcScene * } ", &hcScene::getWorld>,
    fn<"hcScene_destroyAllForceTreesID", "{ hcScene * } ", &hcScene::destroyAllForceTreesID>,
    fn<"hcScene_addForceTreeID", "{ hcScene * } { InvDynamics * } ", &hcScene::addForceTreeID>,
    fn<"hcScene_delForceTreeID", "{ hcScene * } { InvDynamics * } ", &hcScene::delForceTreeID>,
    fn<"hcScene_getForceTreesID", "{ hcScene * } ", &hcScene::getForceTreesID>,
    fn<"hcScene_addJoint", "{ hcScene * } { hcJoint * } ", &hcScene::addJoint>,
    fn<"hcScene_addFigure", "{ hcScene * } { hcFigure * } ", &hcScene::addFigure>,
    fn<"hcScene_addSegment", "{ hcScene * } { hcSegment * } ", &hcScene::addSegment>,
    fn<"hcScene_addSite", "{ hcScene * } { hcSite * } ", &hcScene::addSite>,
    fn<"hcScene_addASDXMLObject", "{ hcScene * } { hcASDXMLObject * } ", &hcScene::addASDXMLObject>,
    fn<"hcScene_delFigure", "{ hcScene * } { hcFigure * } ", &hcScene::delFigure>,
    fn<"hcScene_delJoint", "{ hcScene * } { hcJoint * } ", &hcScene::delJoint>,
    fn<"hcScene_delSegment", "{ hcScene * } { hcSegment * } ", &hcScene::delSegment>,
    fn<"hcScene_delSite", "{ hcScene * } { hcSite * } ", &hcScene::delSite>,
    fn<"hcScene_delASDXMLObject", "{ hcScene * } { hcASDXMLObject * } ", &hcScene::delASDXMLObject>,
    fn<"hcScene_getRootSite", "{ hcScene * } ", &hcScene::getRootSite>,
    fn<"hcScene_setCleanTree", "{ hcScene * } value ", &hcScene::setCleanTree>,
    fn<"hcScene_isCleanTree", "{ hcScene * } ", &hcScene::isCleanTree>,
    fn<"hcScene_setModified", "{ hcScene * } value ", &hcScene::setModified>,
    fn<"hcScene_getGravity", "{ hcScene * } ", &hcScene::getGravity>,
    fn<"hcScene_setGravity", "{ hcScene * } newGravity ", &hcScene::setGravity>,
    fn<"hcScene_setDistanceUnits", "{ hcScene * } str ", &hcScene::setDistanceUnits>,
    fn<"hcScene_setAngleUnits", "{ hcScene * } str ", &hcScene::setAngleUnits>,
    fn<"hcScene_setMassUnits", "{ hcScene * } str ", &hcScene::setMassUnits>,
    fn<"hcScene_getInParser", "{ hcScene * } ", &hcScene::getInParser>,
};

// Archive flags of saveToArchive.
const ConstantDef kConstants[] = {
    {"archInstalled", hcScene::archInstalled}, {"archSubdirs", hcScene::archSubdirs},
    {"archMotions", hcScene::archMotions},     {"archMotionQS", hcScene::archMotionQS},
    {"archToFile", hcScene::archToFile},       {"archToDir", hcScene::archToDir},
    {"archDefault", hcScene::archDefault},     {"archAll", hcScene::archAll},
};

}  // namespace

HK_CLASS(hcScene, &hcObject_class, kRows, kConstants);

namespace hk {

Tcl_CmdProc *SceneGetCommand() { return &Command<"hcscene_get", "", &CurrentScene>::Proc; }

}  // namespace hk
