// The thirteen motion kinds.  Each re-registers the hcMotion commands it
// does not define itself (hcFigurePathMotion also hcPathMotion's) and links
// the motion constants again under its own prefix.  hcGroupMotion and
// hcDummyMotion have no destructor command: delete_hcMotion releases them,
// and their class commands never destroy what they construct.
#include "frame/classes.h"

// The angles of the motion's joint n: one per DOF of that joint.
struct NthJointDofs {
  static long count(std::size_t, hcJointMotion &m, int n, float *) {
    hcJoint *j = m.getNthJoint(n);
    return j ? j->getNDOFs() : 0;
  }
};
template <> struct hk::ArrayUse<&hcJointMotion::setNthAngle> : NthJointDofs {};
template <> struct hk::ArrayUse<&hcJointMotion::getNthStartAngles> : NthJointDofs {};
template <> struct hk::ArrayUse<&hcJointMotion::getNthEndAngles> : NthJointDofs {};

namespace {
using namespace hk;

const Row kGroupRows[] = {
    ctor<"new_hcGroupMotion", "grp ", hcGroupMotion, void(hcMotionGroup *)>,
    fn<"hcGroupMotion_init", "{ hcGroupMotion * } ", &hcGroupMotion::init>,
    fn<"hcGroupMotion_updatetime", "{ hcGroupMotion * } ", &hcGroupMotion::updatetime>,
};

const Row kDummyRows[] = {
    ctor<"new_hcDummyMotion", "?n? ", hcDummyMotion, void(const char *), nullptr>,
    fn<"hcDummyMotion_preaction", "{ hcDummyMotion * } ", &hcDummyMotion::preaction>,
    fn<"hcDummyMotion_apply", "{ hcDummyMotion * } t ", &hcDummyMotion::apply>,
    fn<"hcDummyMotion_init", "{ hcDummyMotion * } ", &hcDummyMotion::init>,
    fn<"hcDummyMotion_sprint", "{ hcDummyMotion * } buf ", &hcDummyMotion::sprint>,
    fn<"hcDummyMotion_scan", "{ hcDummyMotion * } buf ", &hcDummyMotion::scan>,
};

const Row kFigureRows[] = {
    ctor<"new_hcFigureMotion", "name figure ", hcFigureMotion, void(const char *, hcFigure *)>,
    dtor<"delete_hcFigureMotion", "{ hcFigureMotion * } ", hcFigureMotion>,
    fn<"hcFigureMotion_preaction", "{ hcFigureMotion * } ", &hcFigureMotion::preaction>,
    fn<"hcFigureMotion_apply", "{ hcFigureMotion * } t ", &hcFigureMotion::apply>,
    fn<"hcFigureMotion_scan", "{ hcFigureMotion * } vector ", &hcFigureMotion::scan>,
    fn<"hcFigureMotion_init", "{ hcFigureMotion * } ", &hcFigureMotion::init>,
    fn<"hcFigureMotion_sprint", "{ hcFigureMotion * } buf ", &hcFigureMotion::sprint>,
    fn<"hcFigureMotion_setParams", "{ hcFigureMotion * } goal ", &hcFigureMotion::setParams>,
    fn<"hcFigureMotion_getEndLocation", "{ hcFigureMotion * } _end ", &hcFigureMotion::getEndLocation>,
    fn<"hcFigureMotion_getStartLocation", "{ hcFigureMotion * } _start ", &hcFigureMotion::getStartLocation>,
};

const Row kScaleRows[] = {
    ctor<"new_hcScaleMotion", "?name? ?figure? ", hcScaleMotion, void(const char *, hcFigure *), nullptr,
         nullptr>,
    dtor<"delete_hcScaleMotion", "{ hcScaleMotion * } ", hcScaleMotion>,
    fn<"hcScaleMotion_preaction", "{ hcScaleMotion * } ", &hcScaleMotion::preaction>,
    fn<"hcScaleMotion_apply", "{ hcScaleMotion * } t ", &hcScaleMotion::apply>,
    fn<"hcScaleMotion_init", "{ hcScaleMotion * } ", &hcScaleMotion::init>,
    fn<"hcScaleMotion_sprint", "{ hcScaleMotion * } buf ", &hcScaleMotion::sprint>,
    fn<"hcScaleMotion_scan", "{ hcScaleMotion * } buf ", &hcScaleMotion::scan>,
    fn<"hcScaleMotion_setParams", "{ hcScaleMotion * } scale ", &hcScaleMotion::setParams>,
    fn<"hcScaleMotion_getStart", "{ hcScaleMotion * } vec ", &hcScaleMotion::getStart>,
    fn<"hcScaleMotion_getEnd", "{ hcScaleMotion * } vec ", &hcScaleMotion::getEnd>,
    fn<"hcScaleMotion_getChannel", "{ hcScaleMotion * } ", &hcScaleMotion::getChannel>,
};

const Row kScaleSegRows[] = {
    ctor<"new_hcScaleSegMotion", "?name? ?_segment? ", hcScaleSegMotion, void(const char *, hcSegment *),
         nullptr, nullptr>,
    dtor<"delete_hcScaleSegMotion", "{ hcScaleSegMotion * } ", hcScaleSegMotion>,
    fn<"hcScaleSegMotion_preaction", "{ hcScaleSegMotion * } ", &hcScaleSegMotion::preaction>,
    fn<"hcScaleSegMotion_apply", "{ hcScaleSegMotion * } t ", &hcScaleSegMotion::apply>,
    fn<"hcScaleSegMotion_init", "{ hcScaleSegMotion * } ", &hcScaleSegMotion::init>,
    fn<"hcScaleSegMotion_sprint", "{ hcScaleSegMotion * } buf ", &hcScaleSegMotion::sprint>,
    fn<"hcScaleSegMotion_scan", "{ hcScaleSegMotion * } buf ", &hcScaleSegMotion::scan>,
    fn<"hcScaleSegMotion_setParams", "{ hcScaleSegMotion * } scale ", &hcScaleSegMotion::setParams>,
    fn<"hcScaleSegMotion_getStart", "{ hcScaleSegMotion * } v ", &hcScaleSegMotion::getStart>,
    fn<"hcScaleSegMotion_getEnd", "{ hcScaleSegMotion * } v ", &hcScaleSegMotion::getEnd>,
    fn<"hcScaleSegMotion_getChannel", "{ hcScaleSegMotion * } ", &hcScaleSegMotion::getChannel>,
    fn<"hcScaleSegMotion_getSegment", "{ hcScaleSegMotion * } ", &hcScaleSegMotion::getSegment>,
};

const Row kPathRows[] = {
    ctor<"new_hcPathMotion", "?name? ?segment? ", hcPathMotion, void(const char *, hcSegment *), nullptr,
         nullptr>,
    dtor<"delete_hcPathMotion", "{ hcPathMotion * } ", hcPathMotion>,
    fn<"hcPathMotion_preaction", "{ hcPathMotion * } ", &hcPathMotion::preaction>,
    fn<"hcPathMotion_apply", "{ hcPathMotion * } t ", &hcPathMotion::apply>,
    fn<"hcPathMotion_postaction", "{ hcPathMotion * } ", &hcPathMotion::postaction>,
    fn<"hcPathMotion_sprint", "{ hcPathMotion * } buf ", &hcPathMotion::sprint>,
    fn<"hcPathMotion_scan", "{ hcPathMotion * } val ", &hcPathMotion::scan>,
    fn<"hcPathMotion_init", "{ hcPathMotion * } ", &hcPathMotion::init>,
    fn<"hcPathMotion_updatetime", "{ hcPathMotion * } ", &hcPathMotion::updatetime>,
    fn<"hcPathMotion_setParams", "{ hcPathMotion * } direction ", &hcPathMotion::setParams>,
    fn<"hcPathMotion_getSegment", "{ hcPathMotion * } ", &hcPathMotion::getSegment>,
    fn<"hcPathMotion_getPath", "{ hcPathMotion * } ", &hcPathMotion::getPath>,
    fn<"hcPathMotion_getChannel", "{ hcPathMotion * } ", &hcPathMotion::getChannel>,
    fn<"hcPathMotion_getDirection", "{ hcPathMotion * } ", &hcPathMotion::getDirection>,
    fn<"hcPathMotion_getDirectionTypes", "", &hcPathMotion::getDirectionTypes>,
};

const Row kFigurePathRows[] = {
    ctor<"new_hcFigurePathMotion", "?name? ?segment? ?figure? ", hcFigurePathMotion,
         void(const char *, hcSegment *, hcFigure *), nullptr, nullptr, nullptr>,
    dtor<"delete_hcFigurePathMotion", "{ hcFigurePathMotion * } ", hcFigurePathMotion>,
    fn<"hcFigurePathMotion_apply", "{ hcFigurePathMotion * } t ", &hcFigurePathMotion::apply>,
    fn<"hcFigurePathMotion_sprint", "{ hcFigurePathMotion * } buf ", &hcFigurePathMotion::sprint>,
    fn<"hcFigurePathMotion_scan", "{ hcFigurePathMotion * } val ", &hcFigurePathMotion::scan>,
    fn<"hcFigurePathMotion_getPathFigure", "{ hcFigurePathMotion * } ", &hcFigurePathMotion::getPathFigure>,
};

const Row kJointRows[] = {
    ctor<"new_hcJointMotion", "name ", hcJointMotion, void(const char *)>,
    dtor<"delete_hcJointMotion", "{ hcJointMotion * } ", hcJointMotion>,
    fn<"hcJointMotion_preaction", "{ hcJointMotion * } ", &hcJointMotion::preaction>,
    fn<"hcJointMotion_apply", "{ hcJointMotion * } t ", &hcJointMotion::apply>,
    fn<"hcJointMotion_sprint", "{ hcJointMotion * } buf ", &hcJointMotion::sprint>,
    fn<"hcJointMotion_scan", "{ hcJointMotion * } buf ", &hcJointMotion::scan>,
    fn<"hcJointMotion_init", "{ hcJointMotion * } ", &hcJointMotion::init>,
    fn<"hcJointMotion_addJoint", "{ hcJointMotion * } j ", &hcJointMotion::addJoint>,
    fn<"hcJointMotion_setNthAngle", "{ hcJointMotion * } n angles ", &hcJointMotion::setNthAngle>,
    fn<"hcJointMotion_addFigureJoints", "{ hcJointMotion * } fig ?grabAngles? ", &hcJointMotion::addFigureJoints,
       0>,
    fn<"hcJointMotion_setParams", "{ hcJointMotion * } ", &hcJointMotion::setParams>,
    fn<"hcJointMotion_getNthJoint", "{ hcJointMotion * } n ", &hcJointMotion::getNthJoint>,
    fn<"hcJointMotion_getNumberOfJoints", "{ hcJointMotion * } ", &hcJointMotion::getNumberOfJoints>,
    fn<"hcJointMotion_getNthStartAngles", "{ hcJointMotion * } n angles ", &hcJointMotion::getNthStartAngles>,
    fn<"hcJointMotion_getNthEndAngles", "{ hcJointMotion * } n angles ", &hcJointMotion::getNthEndAngles>,
};

const Row kTimedAttachRows[] = {
    ctor<"new_hcTimedAttach", "?name? ?figure? ", hcTimedAttach, void(const char *, hcFigure *), nullptr,
         nullptr>,
    dtor<"delete_hcTimedAttach", "{ hcTimedAttach * } ", hcTimedAttach>,
    fn<"hcTimedAttach_preaction", "{ hcTimedAttach * } ", &hcTimedAttach::preaction>,
    fn<"hcTimedAttach_postaction", "{ hcTimedAttach * } ", &hcTimedAttach::postaction>,
    fn<"hcTimedAttach_sprint", "{ hcTimedAttach * } buf ", &hcTimedAttach::sprint>,
    fn<"hcTimedAttach_scan", "{ hcTimedAttach * } val ", &hcTimedAttach::scan>,
    fn<"hcTimedAttach_init", "{ hcTimedAttach * } ", &hcTimedAttach::init>,
    fn<"hcTimedAttach_setParams", "{ hcTimedAttach * } s ", &hcTimedAttach::setParams>,
    fn<"hcTimedAttach_getSite", "{ hcTimedAttach * } ", &hcTimedAttach::getSite>,
};

const Row kTimedConstraintRows[] = {
    ctor<"new_hcTimedConstraint", "name ", hcTimedConstraint, void(const char *)>,
    dtor<"delete_hcTimedConstraint", "{ hcTimedConstraint * } ", hcTimedConstraint>,
    fn<"hcTimedConstraint_preaction", "{ hcTimedConstraint * } ", &hcTimedConstraint::preaction>,
    fn<"hcTimedConstraint_apply", "{ hcTimedConstraint * } t ", &hcTimedConstraint::apply>,
    fn<"hcTimedConstraint_postaction", "{ hcTimedConstraint * } ", &hcTimedConstraint::postaction>,
    fn<"hcTimedConstraint_presprint", "{ hcTimedConstraint * } buf ", &hcTimedConstraint::presprint>,
    fn<"hcTimedConstraint_sprint", "{ hcTimedConstraint * } buf ", &hcTimedConstraint::sprint>,
    fn<"hcTimedConstraint_scan", "{ hcTimedConstraint * } val ", &hcTimedConstraint::scan>,
    fn<"hcTimedConstraint_init", "{ hcTimedConstraint * } ", &hcTimedConstraint::init>,
    fn<"hcTimedConstraint_setParams", "{ hcTimedConstraint * } ", &hcTimedConstraint::setParams>,
    fn<"hcTimedConstraint_getConstraint", "{ hcTimedConstraint * } ", &hcTimedConstraint::getConstraint>,
    fn<"hcTimedConstraint_getWeight", "{ hcTimedConstraint * } ", &hcTimedConstraint::getWeight>,
};

const Row kColorRows[] = {
    ctor<"new_hcColorMotion", "?name? ?material? ", hcColorMotion, void(const char *, hcMaterial *), nullptr,
         nullptr>,
    dtor<"delete_hcColorMotion", "{ hcColorMotion * } ", hcColorMotion>,
    fn<"hcColorMotion_preaction", "{ hcColorMotion * } ", &hcColorMotion::preaction>,
    fn<"hcColorMotion_apply", "{ hcColorMotion * } t ", &hcColorMotion::apply>,
    fn<"hcColorMotion_init", "{ hcColorMotion * } ", &hcColorMotion::init>,
    fn<"hcColorMotion_sprint", "{ hcColorMotion * } buf ", &hcColorMotion::sprint>,
    fn<"hcColorMotion_scan", "{ hcColorMotion * } buf ", &hcColorMotion::scan>,
    fn<"hcColorMotion_setParams", "{ hcColorMotion * } color ", &hcColorMotion::setParams>,
    fn<"hcColorMotion_getStartColor", "{ hcColorMotion * } v ", &hcColorMotion::getStartColor>,
    fn<"hcColorMotion_getEndColor", "{ hcColorMotion * } v ", &hcColorMotion::getEndColor>,
    fn<"hcColorMotion_getChannel", "{ hcColorMotion * } ", &hcColorMotion::getChannel>,
    fn<"hcColorMotion_getMaterial", "{ hcColorMotion * } ", &hcColorMotion::getMaterial>,
};

const Row kScriptRows[] = {
    ctor<"new_hcScriptMotion", "name ", hcScriptMotion, void(const char *)>,
    dtor<"delete_hcScriptMotion", "{ hcScriptMotion * } ", hcScriptMotion>,
    fn<"hcScriptMotion_preaction", "{ hcScriptMotion * } ", &hcScriptMotion::preaction>,
    fn<"hcScriptMotion_apply", "{ hcScriptMotion * } t ", &hcScriptMotion::apply>,
    fn<"hcScriptMotion_postaction", "{ hcScriptMotion * } ", &hcScriptMotion::postaction>,
    fn<"hcScriptMotion_presprint", "{ hcScriptMotion * } buf ", &hcScriptMotion::presprint>,
    fn<"hcScriptMotion_scan", "{ hcScriptMotion * } vector ", &hcScriptMotion::scan>,
    fn<"hcScriptMotion_sprint", "{ hcScriptMotion * } buf ", &hcScriptMotion::sprint>,
    fn<"hcScriptMotion_init", "{ hcScriptMotion * } ", &hcScriptMotion::init>,
    fn<"hcScriptMotion_setClass", "{ hcScriptMotion * } classname ", &hcScriptMotion::setClass>,
    fn<"hcScriptMotion_callMethod", "{ hcScriptMotion * } methodname ?argstr? ", &hcScriptMotion::callMethod,
       nullptr>,
};

const Row kChannelSetRows[] = {
    ctor<"new_hcChannelSetMotion", "n b ", hcChannelSetMotion, void(const char *, hcBoundChannelSet *)>,
    dtor<"delete_hcChannelSetMotion", "{ hcChannelSetMotion * } ", hcChannelSetMotion>,
    fn<"hcChannelSetMotion_create", "n b ", &hcChannelSetMotion::create>,
    fn<"hcChannelSetMotion_setParams", "{ hcChannelSetMotion * } direction ", &hcChannelSetMotion::setParams>,
    fn<"hcChannelSetMotion_getBoundChannelSet", "{ hcChannelSetMotion * } ",
       &hcChannelSetMotion::getBoundChannelSet>,
    fn<"hcChannelSetMotion_getDirectionsTable", "{ hcChannelSetMotion * } ",
       &hcChannelSetMotion::getDirectionsTable>,
    fn<"hcChannelSetMotion_getDirection", "{ hcChannelSetMotion * } ", &hcChannelSetMotion::getDirection>,
};

}  // namespace

HK_CLASS(hcGroupMotion, &hcMotion_class, kGroupRows, kNoConstants);
HK_CLASS(hcDummyMotion, &hcMotion_class, kDummyRows, kNoConstants);
HK_CLASS(hcFigureMotion, &hcMotion_class, kFigureRows, kNoConstants);
HK_CLASS(hcScaleMotion, &hcMotion_class, kScaleRows, kNoConstants);
HK_CLASS(hcScaleSegMotion, &hcMotion_class, kScaleSegRows, kNoConstants);
HK_CLASS(hcPathMotion, &hcMotion_class, kPathRows, kNoConstants);
HK_CLASS(hcFigurePathMotion, &hcPathMotion_class, kFigurePathRows, kNoConstants);
HK_CLASS(hcJointMotion, &hcMotion_class, kJointRows, kNoConstants);
HK_CLASS(hcTimedAttach, &hcMotion_class, kTimedAttachRows, kNoConstants);
HK_CLASS(hcTimedConstraint, &hcMotion_class, kTimedConstraintRows, kNoConstants);
HK_CLASS(hcColorMotion, &hcMotion_class, kColorRows, kNoConstants);
HK_CLASS(hcScriptMotion, &hcMotion_class, kScriptRows, kNoConstants);
HK_CLASS(hcChannelSetMotion, &hcMotion_class, kChannelSetRows, kNoConstants);
