#include "frame/hierarchy.h"

#include <cstring>

namespace hk {
namespace {

constexpr WrappedClass kClasses[] = {
    {"hcType", nullptr},
    {"hList", nullptr},
    {"hVector", nullptr},
    {"hMatrix", nullptr},
    {"hcObserver", nullptr},
    {"hcSubject", nullptr},
    {"hcRefObject", nullptr},
    {"hcObject", "hcSubject"},
    {"hcNode", "hcObject"},
    {"hcSegment", "hcNode"},
    {"hcJoint", "hcNode"},
    {"hcFigure", "hcNode"},
    {"hcSite", "hcNode"},
    {"hcGlyph", "hcNode"},
    {"hcViewConeGlyph", "hcGlyph"},
    {"hcSiteGlyph", "hcGlyph"},
    {"hcSegmentTraceGlyph", "hcGlyph"},
    {"hcGhostGlyph", "hcGlyph"},
    {"hcProjectionGlyph", "hcGlyph"},
    {"hcConstrHistory", nullptr},
    {"hcConstraint", "hcObject"},
    {"hcScene", "hcObject"},
    {"hcAnthroScale", nullptr},
    {"hcGlobal", nullptr},
    {"hcHuman", nullptr},
    {"hcPosture", "hcRefObject"},
    {"hcValue", nullptr},
    {"hcPy", nullptr},
    {"hcChannel", "hcObject"},
    {"hcJointChannel", "hcChannel"},
    {"hcFigureChannel", "hcChannel"},
    {"hcRealtimeChannel", "hcChannel"},
    {"VisibilityChannel", "hcChannel"},
    {"VisibilityChannelObserver", "hcObserver"},
    {"hcChannelSet", nullptr},
    {"hcChannelBinding", nullptr},
    {"hcBoundChannelSet", nullptr},
    {"hcMotion", "hcObject"},
    {"hcGroupMotion", "hcMotion"},
    {"hcDummyMotion", "hcMotion"},
    {"hcFigureMotion", "hcMotion"},
    {"hcScaleMotion", "hcMotion"},
    {"hcScaleSegMotion", "hcMotion"},
    {"hcPathMotion", "hcMotion"},
    {"hcFigurePathMotion", "hcPathMotion"},
    {"hcJointMotion", "hcMotion"},
    {"hcTimedAttach", "hcMotion"},
    {"hcTimedConstraint", "hcMotion"},
    {"hcColorMotion", "hcMotion"},
    {"hcScriptMotion", "hcMotion"},
    {"hcChannelSetMotion", "hcMotion"},
    {"hcTimeline", "hcSubject"},
    {"hcMaterial", "hcObject"},
    {"hcSim", nullptr},
    {"hcKit", nullptr},
    {"hcGeometry", "hcObject"},
    {"hcPropertyList", nullptr},
    {"hcTypeTable", nullptr},
    {"hcBone", nullptr},
    {"hcSegmentBone", "hcBone"},
    {"hcTwistBone", "hcBone"},
    {"hcTwistLink", nullptr},
    {"hcLandmark", "hcObject"},
    {"hcLandmarkImpl", "hcLandmark"},
    {"hcDisplayFlags", nullptr},
    {"hcMeshGeometry", "hcGeometry"},
    {"hcMeshInternals", nullptr},
    {"hcSmoothSkin", nullptr},
};
static_assert(sizeof kClasses / sizeof kClasses[0] == kWrappedClasses);

}  // namespace

std::span<const WrappedClass> WrappedClasses() { return kClasses; }

const char *BaseOf(const char *name) {
  for (const auto &c : kClasses)
    if (std::strcmp(c.name, name) == 0) return c.base;
  return nullptr;
}

}  // namespace hk
