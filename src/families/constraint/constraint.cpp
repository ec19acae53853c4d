// hcConstraint: goals, end effectors, objectives and the solver.
#include <cstring>

#include "frame/classes.h"

namespace {
using namespace hk;

// The host writes its description into a buffer of the size it needs.  The
// script's word stays as it is: the interpreter owns its characters, and
// the command answers the host's count, not the text.
int Tessprint(hcConstraint &c, const char *buf, int level) {
  static char description[hcConstraint::kDescriptionSize];
  (void)buf;
  description[0] = '\0';
  return c.tessprint(description, level);
}

const Row kRows[] = {
    fn<"hcConstraint_getClassType", "", &hcConstraint::getClassType>,
    ctor<"new_hcConstraint", "name ", hcConstraint, void(const char *)>,
    dtor<"delete_hcConstraint", "{ hcConstraint * } ", hcConstraint>,
    fn<"hcConstraint_create", "newName ", &hcConstraint::create>,
    fn<"hcConstraint_destroy", "{ hcConstraint * } ", &hcConstraint::destroy>,
    fn<"hcConstraint_evaluate", "c ?timelimit? ?stepfactor? ", &hcConstraint::evaluate, 0.0f, 0.1f>,
    fn<"hcConstraint_setName", "{ hcConstraint * } newName ", &hcConstraint::setName>,
    fn<"hcConstraint_getEndEffectorSegment", "{ hcConstraint * } ", &hcConstraint::getEndEffectorSegment>,
    fn<"hcConstraint_getEndEffectorTransform", "{ hcConstraint * } E ", &hcConstraint::getEndEffectorTransform>,
    fn<"hcConstraint_getGoalSegment", "{ hcConstraint * } ", &hcConstraint::getGoalSegment>,
    method<"hcConstraint_tessprint", "{ hcConstraint * } buf ?level? ", &Tessprint, 0>,
    fn<"hcConstraint_setActive", "{ hcConstraint * } on ", &hcConstraint::setActive>,
    fn<"hcConstraint_isActive", "{ hcConstraint * } ", &hcConstraint::isActive>,
    fn<"hcConstraint_isBehavior", "{ hcConstraint * } ", &hcConstraint::isBehavior>,
    fn<"hcConstraint_isMotion", "{ hcConstraint * } ", &hcConstraint::isMotion>,
    fn<"hcConstraint_getGoalPoint", "{ hcConstraint * } point ", &hcConstraint::getGoalPoint>,
    fn<"hcConstraint_getGoalTransform", "{ hcConstraint * } G ", &hcConstraint::getGoalTransform>,
    fn<"hcConstraint_getGoal", "{ hcConstraint * } T ", &hcConstraint::getGoal>,
    fn<"hcConstraint_getPotential", "{ hcConstraint * } ", &hcConstraint::getPotential>,
    fn<"hcConstraint_getWeight", "{ hcConstraint * } ", &hcConstraint::getWeight>,
    fn<"hcConstraint_getJoints", "{ hcConstraint * } ", &hcConstraint::getJoints>,
    fn<"hcConstraint_getGoalTypeTable", "", &hcConstraint::getGoalTypeTable>,
    fn<"hcConstraint_getEndEffectorTypeTable", "", &hcConstraint::getEndEffectorTypeTable>,
    fn<"hcConstraint_getOrientationTypeTable", "", &hcConstraint::getOrientationTypeTable>,
    fn<"hcConstraint_getPositionTypeTable", "", &hcConstraint::getPositionTypeTable>,
    fn<"hcConstraint_setGoalSite", "{ hcConstraint * } site ", &hcConstraint::setGoalSite>,
    fn<"hcConstraint_getGoalSite", "{ hcConstraint * } ", &hcConstraint::getGoalSite>,
    fn<"hcConstraint_setGoalNode", "{ hcConstraint * } segment node ", &hcConstraint::setGoalNode>,
    fn<"hcConstraint_getGoalNode", "{ hcConstraint * } ", &hcConstraint::getGoalNode>,
    fn<"hcConstraint_setGoalFace", "{ hcConstraint * } segment face ", &hcConstraint::setGoalFace>,
    fn<"hcConstraint_getGoalFace", "{ hcConstraint * } ", &hcConstraint::getGoalFace>,
    fn<"hcConstraint_setGoalRelativeSegment", "{ hcConstraint * } segment matrix ",
       &hcConstraint::setGoalRelativeSegment>,
    fn<"hcConstraint_setGoalTransform", "{ hcConstraint * } matrix ", &hcConstraint::setGoalTransform>,
    fn<"hcConstraint_getGoalDisplacement", "{ hcConstraint * } matrix ", &hcConstraint::getGoalDisplacement>,
    fn<"hcConstraint_useDisplacement", "{ hcConstraint * } ", &hcConstraint::useDisplacement>,
    fn<"hcConstraint_getGoalType", "{ hcConstraint * } ", &hcConstraint::getGoalType>,
    fn<"hcConstraint_setEndEffectorSite", "{ hcConstraint * } site ", &hcConstraint::setEndEffectorSite>,
    fn<"hcConstraint_getEndEffectorSite", "{ hcConstraint * } ", &hcConstraint::getEndEffectorSite>,
    fn<"hcConstraint_setEndEffectorNode", "{ hcConstraint * } segment node ", &hcConstraint::setEndEffectorNode>,
    fn<"hcConstraint_getEndEffectorNode", "{ hcConstraint * } ", &hcConstraint::getEndEffectorNode>,
    fn<"hcConstraint_getEndEffectorType", "{ hcConstraint * } ", &hcConstraint::getEndEffectorType>,
    fn<"hcConstraint_setObjectiveTypes", "{ hcConstraint * } orienation position ",
       &hcConstraint::setObjectiveTypes>,
    fn<"hcConstraint_getOrientationType", "{ hcConstraint * } ", &hcConstraint::getOrientationType>,
    fn<"hcConstraint_getPositionType", "{ hcConstraint * } ", &hcConstraint::getPositionType>,
    fn<"hcConstraint_setPOWeight", "{ hcConstraint * } poweight ", &hcConstraint::setPOWeight>,
    fn<"hcConstraint_getPOWeight", "{ hcConstraint * } ", &hcConstraint::getPOWeight>,
    fn<"hcConstraint_setLineVector", "{ hcConstraint * } vector ", &hcConstraint::setLineVector>,
    fn<"hcConstraint_getLineVector", "{ hcConstraint * } vector ", &hcConstraint::getLineVector>,
    fn<"hcConstraint_setPlaneNormal", "{ hcConstraint * } vector ", &hcConstraint::setPlaneNormal>,
    fn<"hcConstraint_getPlaneNormal", "{ hcConstraint * } vector ", &hcConstraint::getPlaneNormal>,
    fn<"hcConstraint_setAimDirection", "{ hcConstraint * } vector ", &hcConstraint::setAimDirection>,
    fn<"hcConstraint_getAimDirection", "{ hcConstraint * } vector ", &hcConstraint::getAimDirection>,
    fn<"hcConstraint_setDirectionVectors", "{ hcConstraint * } endEffectorVector goalVector ",
       &hcConstraint::setDirectionVectors>,
    fn<"hcConstraint_getDirectionVectors", "{ hcConstraint * } endEffectorVector goalVector ",
       &hcConstraint::getDirectionVectors>,
    fn<"hcConstraint_setPlaneNormalVectors", "{ hcConstraint * } endEffectorVector goalVector ",
       &hcConstraint::setPlaneNormalVectors>,
    fn<"hcConstraint_getPlaneNormalVectors", "{ hcConstraint * } endEffectorVector goalVector ",
       &hcConstraint::getPlaneNormalVectors>,
    fn<"hcConstraint_setStartJoint", "{ hcConstraint * } ?joint? ", &hcConstraint::setStartJoint, nullptr>,
    fn<"hcConstraint_getStartJoint", "{ hcConstraint * } ", &hcConstraint::getStartJoint>,
    fn<"hcConstraint_initializeGoal", "{ hcConstraint * } ", &hcConstraint::initializeGoal>,
    fn<"hcConstraint_setWeight", "{ hcConstraint * } weight ", &hcConstraint::setWeight>,
    fn<"hcConstraint_addToList", "{ hcConstraint * } ", &hcConstraint::addToList>,
    fn<"hcConstraint_useOffset", "{ hcConstraint * } useOriOffset usePosOffset ", &hcConstraint::useOffset>,
    fn<"hcConstraint_updateGoalTransform", "{ hcConstraint * } trans ", &hcConstraint::updateGoalTransform>,
    fn<"hcConstraint_setPreferredAngle", "joint ", &hcConstraint::setPreferredAngle>,
    fn<"hcConstraint_setJointLimitSpring", "joint minAngle ", &hcConstraint::setJointLimitSpring>,
    fn<"hcConstraint_setPriority", "{ hcConstraint * } p ", &hcConstraint::setPriority>,
    fn<"hcConstraint_getPriority", "{ hcConstraint * } ", &hcConstraint::getPriority>,
    fn<"hcConstraint_getHistory", "{ hcConstraint * } ", &hcConstraint::getHistory>,
    fn<"hcConstraint_resolve", "{ hList * } ", &hcConstraint::resolve>,
    fn<"hcConstraint_getEndEffectorFigure", "{ hcConstraint * } ", &hcConstraint::getEndEffectorFigure>,
};

// Objective types, in the order of hcConstraint::ObjectiveType.
const ConstantDef kConstants[] = {
    {"C_UNDEF", hcConstraint::C_UNDEF},         {"C_NONE", hcConstraint::C_NONE},
    {"C_POS", hcConstraint::C_POS},             {"C_LINE", hcConstraint::C_LINE},
    {"C_PLANE", hcConstraint::C_PLANE},         {"C_EDGE", hcConstraint::C_EDGE},
    {"C_FACE", hcConstraint::C_FACE},           {"C_FRAME", hcConstraint::C_FRAME},
    {"C_AIM", hcConstraint::C_AIM},             {"C_DIR", hcConstraint::C_DIR},
    {"C_VIEW", hcConstraint::C_VIEW},           {"C_RESTANGLE", hcConstraint::C_RESTANGLE},
    {"C_JOINTLIMIT", hcConstraint::C_JOINTLIMIT}, {"C_PLANEDIR", hcConstraint::C_PLANEDIR},
    {"C_SELFAVOID", hcConstraint::C_SELFAVOID}, {"C_HALFSPACE", hcConstraint::C_HALFSPACE},
};

}  // namespace

HK_CLASS(hcConstraint, &hcObject_class, kRows, kConstants);
