// hcJoint: connections between two sites that carry a figure's degrees of
// freedom (kinds and axes, values, limits, displacements, physical values).
#include "frame/classes.h"

// Every float array of a joint holds one value per DOF.
struct PerDof {
  static long count(std::size_t, hcJoint &joint, auto...) { return joint.getNDOFs(); }
};
template <> struct hk::ArrayUse<&hcJoint::getAngles> : PerDof {};
template <> struct hk::ArrayUse<&hcJoint::setAngles> : PerDof {};
template <> struct hk::ArrayUse<&hcJoint::getLowerLimits> : PerDof {};
template <> struct hk::ArrayUse<&hcJoint::getUpperLimits> : PerDof {};
template <> struct hk::ArrayUse<&hcJoint::setLowerLimits> : PerDof {};
template <> struct hk::ArrayUse<&hcJoint::setUpperLimits> : PerDof {};
template <> struct hk::ArrayUse<&hcJoint::getTolerance> : PerDof {};
template <> struct hk::ArrayUse<&hcJoint::setTolerance> : PerDof {};
template <> struct hk::ArrayUse<&hcJoint::getRest> : PerDof {};
template <> struct hk::ArrayUse<&hcJoint::setRest> : PerDof {};
template <> struct hk::ArrayUse<&hcJoint::getStiffness> : PerDof {};
template <> struct hk::ArrayUse<&hcJoint::setStiffness> : PerDof {};
template <> struct hk::ArrayUse<&hcJoint::getDamp> : PerDof {};
template <> struct hk::ArrayUse<&hcJoint::setDamp> : PerDof {};

namespace {
using namespace hk;

const Row kRows[] = {
    fn<"hcJoint_createBetweenSites", "site1 site2 ", &hcJoint::createBetweenSites>,
    fn<"hcJoint_destroy", "joint ", &hcJoint::destroy>,
    fn<"hcJoint_assignConnectivity", "{ hcJoint * } site1 site2 ", &hcJoint::assignConnectivity>,
    fn<"hcJoint_getAngles", "{ hcJoint * } angles internal ", &hcJoint::getAngles>,
    fn<"hcJoint_getDOFAxis", "{ hcJoint * } dofNum axis ", &hcJoint::getDOFAxis>,
    fn<"hcJoint_getDOFType", "{ hcJoint * } dofNum ", &hcJoint::getDOFType>,
    fn<"hcJoint_clearDOFs", "{ hcJoint * } ", &hcJoint::clearDOFs>,
    fn<"hcJoint_appendDOF", "{ hcJoint * } type axis ", &hcJoint::appendDOF>,
    fn<"hcJoint_getFigure", "{ hcJoint * } ", &hcJoint::getFigure>,
    fn<"hcJoint_getFromSite", "{ hcJoint * } ", &hcJoint::getFromSite>,
    fn<"hcJoint_getFrozen", "{ hcJoint * } ", &hcJoint::getFrozen>,
    fn<"hcJoint_getLowerLimits", "{ hcJoint * } lower internal ", &hcJoint::getLowerLimits>,
    fn<"hcJoint_getNDOFs", "{ hcJoint * } ", &hcJoint::getNDOFs>,
    fn<"hcJoint_getUpperLimits", "{ hcJoint * } upper internal ", &hcJoint::getUpperLimits>,
    fn<"hcJoint_isReverse", "{ hcJoint * } ", &hcJoint::isReverse>,
    fn<"hcJoint_getOtherSite", "{ hcJoint * } site ", &hcJoint::getOtherSite>,
    fn<"hcJoint_getRootSite", "{ hcJoint * } ", &hcJoint::getRootSite>,
    fn<"hcJoint_setAngles", "{ hcJoint * } angles internal ", &hcJoint::setAngles>,
    fn<"hcJoint_clampToLimits", "{ hcJoint * } ", &hcJoint::clampToLimits>,
    fn<"hcJoint_setFrozen", "{ hcJoint * } temp ", &hcJoint::setFrozen>,
    fn<"hcJoint_setLowerLimits", "{ hcJoint * } lower ", &hcJoint::setLowerLimits>,
    fn<"hcJoint_setName", "{ hcJoint * } newName ", &hcJoint::setName>,
    fn<"hcJoint_setUpperLimits", "{ hcJoint * } upper ", &hcJoint::setUpperLimits>,
    fn<"hcJoint_getToSite", "{ hcJoint * } ", &hcJoint::getToSite>,
    fn<"hcJoint_editRemove", "joint ", &hcJoint::editRemove>,
    // The name arrives through a text pointer (_char_pp), which the host
    // reads.
    fn<"hcJoint_find", "fig bufp ", &hcJoint::find>,
    fn<"hcJoint_site", "{ hcJoint * } oneOrTwo ", &hcJoint::site>,
    fn<"hcJoint_getDisplacement", "{ hcJoint * } D I ", &hcJoint::getDisplacement>,
    fn<"hcJoint_setDisplacement", "{ hcJoint * } D I ", &hcJoint::setDisplacement>,
    fn<"hcJoint_getSG", "{ hcJoint * } ", &hcJoint::getSG>,
    fn<"hcJoint_searchProperty", "{ hcJoint * } property v ", &hcJoint::searchProperty>,
    fn<"hcJoint_setTolerance", "{ hcJoint * } value ", &hcJoint::setTolerance>,
    fn<"hcJoint_getTolerance", "{ hcJoint * } value ", &hcJoint::getTolerance>,
    fn<"hcJoint_setRest", "{ hcJoint * } value ", &hcJoint::setRest>,
    fn<"hcJoint_getRest", "{ hcJoint * } value ", &hcJoint::getRest>,
    fn<"hcJoint_setStiffness", "{ hcJoint * } value ", &hcJoint::setStiffness>,
    fn<"hcJoint_getStiffness", "{ hcJoint * } value ", &hcJoint::getStiffness>,
    fn<"hcJoint_setDamp", "{ hcJoint * } value ", &hcJoint::setDamp>,
    fn<"hcJoint_getDamp", "{ hcJoint * } value ", &hcJoint::getDamp>,
    fn<"hcJoint_getPhysical", "{ hcJoint * } ", &hcJoint::getPhysical>,
    fn<"hcJoint_resolve", "l ", &hcJoint::resolve>,
    fn<"hcJoint_createInMemory", "figure name ", &hcJoint::createInMemory>,
};

// DOF kinds of appendDOF and getDOFType.
const ConstantDef kConstants[] = {
    {"NONE", hcJoint::NONE},
    {"ROT", hcJoint::ROT},
    {"TRANS", hcJoint::TRANS},
};

}  // namespace

HK_CLASS(hcJoint, &hcNode_class, kRows, kConstants);
