// hcMotion: timing, interpolation settings, the three stages, references,
// texts and the host's motion registry.  Every motion kind re-registers
// these commands and the fifteen interpolation, velocity and weight
// constants.
#include "frame/classes.h"

namespace {
using namespace hk;

// The host writes its description into a buffer of the size it needs.  The
// script's word stays as it is: the interpreter owns its characters, and the
// command answers the host's count, not the text.
int Tessprint(hcMotion &m, const char *buf, int level) {
  static char description[hcMotion::kDescriptionSize];
  (void)buf;
  description[0] = '\0';
  return m.tessprint(description, level);
}

const Row kRows[] = {
    fn<"hcMotion_getClassType", "", &hcMotion::getClassType>,
    setter<"hcMotion_group_set", "{ hcMotion * } { hcMotionGroup * } ", &hcMotion::group>,
    getter<"hcMotion_group_get", "{ hcMotion * } ", &hcMotion::group>,
    setter<"hcMotion_describe_set", "{ hcMotion * } { char * } ", &hcMotion::describe>,
    getter<"hcMotion_describe_get", "{ hcMotion * } ", &hcMotion::describe>,
    fn<"hcMotion_setName", "{ hcMotion * } newName ", &hcMotion::setName>,
    fn<"hcMotion_getDescription", "{ hcMotion * } ", &hcMotion::getDescription>,
    fn<"hcMotion_getMotionType", "{ hcMotion * } ", &hcMotion::getMotionType>,
    fn<"hcMotion_getEndTime", "{ hcMotion * } ", &hcMotion::getEndTime>,
    fn<"hcMotion_setStartFrame", "{ hcMotion * } start ", &hcMotion::setStartFrame>,
    fn<"hcMotion_setEndFrame", "{ hcMotion * } end ", &hcMotion::setEndFrame>,
    fn<"hcMotion_getStartTime", "{ hcMotion * } ", &hcMotion::getStartTime>,
    fn<"hcMotion_setStartTime", "{ hcMotion * } start ", &hcMotion::setStartTime>,
    fn<"hcMotion_getDuration", "{ hcMotion * } ", &hcMotion::getDuration>,
    fn<"hcMotion_setDuration", "{ hcMotion * } dur ", &hcMotion::setDuration>,
    fn<"hcMotion_getWeightFunction", "{ hcMotion * } ", &hcMotion::getWeightFunction>,
    fn<"hcMotion_setWeightFunction", "{ hcMotion * } weight ", &hcMotion::setWeightFunction>,
    fn<"hcMotion_getVelocityControl", "{ hcMotion * } ", &hcMotion::getVelocityControl>,
    fn<"hcMotion_setVelocityControl", "{ hcMotion * } vc ", &hcMotion::setVelocityControl>,
    fn<"hcMotion_getInterpType", "{ hcMotion * } ", &hcMotion::getInterpType>,
    fn<"hcMotion_setInterpType", "{ hcMotion * } i ", &hcMotion::setInterpType>,
    fn<"hcMotion_getOrder", "{ hcMotion * } ", &hcMotion::getOrder>,
    fn<"hcMotion_timeFraction", "{ hcMotion * } t ", &hcMotion::timeFraction>,
    fn<"hcMotion_velocityControl", "{ hcMotion * } f ", &hcMotion::velocityControl>,
    ctor<"new_hcMotion", "?n? ?type? ", hcMotion, void(const char *, int), nullptr, 0>,
    dtor<"delete_hcMotion", "{ hcMotion * } ", hcMotion>,
    fn<"hcMotion_activeq", "{ hcMotion * } t ", &hcMotion::activeq>,
    fn<"hcMotion_preaction", "{ hcMotion * } ", &hcMotion::preaction>,
    fn<"hcMotion_apply", "{ hcMotion * } t ", &hcMotion::apply>,
    fn<"hcMotion_postaction", "{ hcMotion * } ", &hcMotion::postaction>,
    fn<"hcMotion_getStartFrame", "{ hcMotion * } ", &hcMotion::getStartFrame>,
    fn<"hcMotion_getEndFrame", "{ hcMotion * } ", &hcMotion::getEndFrame>,
    fn<"hcMotion_setTimeline", "{ hcMotion * } timeline ", &hcMotion::setTimeline>,
    fn<"hcMotion_getTimeline", "{ hcMotion * } ", &hcMotion::getTimeline>,
    fn<"hcMotion_getFigure", "{ hcMotion * } ", &hcMotion::getFigure>,
    fn<"hcMotion_setFigure", "{ hcMotion * } figure ", &hcMotion::setFigure>,
    fn<"hcMotion_setSegment", "{ hcMotion * } segment ", &hcMotion::setSegment>,
    fn<"hcMotion_observeFigure", "{ hcMotion * } fig ", &hcMotion::observeFigure>,
    fn<"hcMotion_observeConstraint", "{ hcMotion * } constr ", &hcMotion::observeConstraint>,
    fn<"hcMotion_observeObject", "{ hcMotion * } object ", &hcMotion::observeObject>,
    fn<"hcMotion_observeMaterial", "{ hcMotion * } material ", &hcMotion::observeMaterial>,
    fn<"hcMotion_getMotionGroup", "{ hcMotion * } ", &hcMotion::getMotionGroup>,
    fn<"hcMotion_activate", "{ hcMotion * } on ", &hcMotion::activate>,
    fn<"hcMotion_isActive", "{ hcMotion * } ", &hcMotion::isActive>,
    fn<"hcMotion_getMotionTypeTable", "", &hcMotion::getMotionTypeTable>,
    fn<"hcMotion_serialize", "{ hcMotion * } ", &hcMotion::serialize>,
    fn<"hcMotion_parse", "{ hcMotion * } buf ", &hcMotion::parse>,
    fn<"hcMotion_Init", "", &hcMotion::Init>,
    fn<"hcMotion_create", "type name figure ", &hcMotion::create>,
    method<"hcMotion_tessprint", "{ hcMotion * } buf level ", &Tessprint>,
    fn<"hcMotion_destroy", "m ", &hcMotion::destroy>,
    fn<"hcMotion_destroyAll", "", &hcMotion::destroyAll>,
};

// Interpolation types, velocity controls and weight functions.
const ConstantDef kConstants[] = {
    {"I_LINEAR", hcMotion::I_LINEAR},
    {"I_BSPLINE", hcMotion::I_BSPLINE},
    {"I_CSPLINE", hcMotion::I_CSPLINE},
    {"I_SCALED", hcMotion::I_SCALED},
    {"I_NONE", hcMotion::I_NONE},
    {"VC_CONSTANT", hcMotion::VC_CONSTANT},
    {"VC_ACCELERATE", hcMotion::VC_ACCELERATE},
    {"VC_DECELERATE", hcMotion::VC_DECELERATE},
    {"VC_EASEIN_EASEOUT", hcMotion::VC_EASEIN_EASEOUT},
    {"VC_NONE", hcMotion::VC_NONE},
    {"WF_CONSTANT", hcMotion::WF_CONSTANT},
    {"WF_DECAY", hcMotion::WF_DECAY},
    {"WF_EASEIN_EASEOUT", hcMotion::WF_EASEIN_EASEOUT},
    {"WF_NONE", hcMotion::WF_NONE},
    {"WF_INCREASE", hcMotion::WF_INCREASE},
};

}  // namespace

HK_CLASS(hcMotion, &hcObject_class, kRows, kConstants);
