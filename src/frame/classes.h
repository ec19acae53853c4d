// The class blocks of the module, in registration order.
#pragma once

#include <span>

#include "frame/class_def.h"

namespace hk {

// Every class block the module registers, in the fixed order of the entry.
std::span<ClassDef *const> ClassBlocks();

}  // namespace hk

extern hk::ClassDef hcType_class;
extern hk::ClassDef hList_class;
extern hk::ClassDef hVector_class;
extern hk::ClassDef hMatrix_class;
extern hk::ClassDef hcObserver_class;
extern hk::ClassDef hcSubject_class;
extern hk::ClassDef hcRefObject_class;
extern hk::ClassDef hcObject_class;
extern hk::ClassDef hcNode_class;
extern hk::ClassDef hcSegment_class;
extern hk::ClassDef hcJoint_class;
extern hk::ClassDef hcFigure_class;
extern hk::ClassDef hcSite_class;
extern hk::ClassDef hcConstrHistory_class;
extern hk::ClassDef hcConstraint_class;
extern hk::ClassDef hcScene_class;
extern hk::ClassDef hcHuman_class;
extern hk::ClassDef hcValue_class;
extern hk::ClassDef hcPropertyList_class;
extern hk::ClassDef hcTypeTable_class;
extern hk::ClassDef hcGlobal_class;
extern hk::ClassDef hcSim_class;
extern hk::ClassDef hcKit_class;
extern hk::ClassDef hcGlyph_class;
extern hk::ClassDef hcViewConeGlyph_class;
extern hk::ClassDef hcSiteGlyph_class;
extern hk::ClassDef hcSegmentTraceGlyph_class;
extern hk::ClassDef hcGhostGlyph_class;
extern hk::ClassDef hcProjectionGlyph_class;
extern hk::ClassDef hcMaterial_class;
extern hk::ClassDef hcLandmark_class;
extern hk::ClassDef hcLandmarkImpl_class;
extern hk::ClassDef hcDisplayFlags_class;
extern hk::ClassDef hcGeometry_class;
extern hk::ClassDef hcMeshGeometry_class;
extern hk::ClassDef hcMeshInternals_class;
extern hk::ClassDef hcSmoothSkin_class;
extern hk::ClassDef hcAnthroScale_class;
extern hk::ClassDef hcPosture_class;
extern hk::ClassDef hcPy_class;
extern hk::ClassDef hcBone_class;
extern hk::ClassDef hcSegmentBone_class;
extern hk::ClassDef hcTwistBone_class;
extern hk::ClassDef hcTwistLink_class;
extern hk::ClassDef hcMotion_class;
extern hk::ClassDef hcGroupMotion_class;
extern hk::ClassDef hcDummyMotion_class;
extern hk::ClassDef hcFigureMotion_class;
extern hk::ClassDef hcScaleMotion_class;
extern hk::ClassDef hcScaleSegMotion_class;
extern hk::ClassDef hcPathMotion_class;
extern hk::ClassDef hcFigurePathMotion_class;
extern hk::ClassDef hcJointMotion_class;
extern hk::ClassDef hcTimedAttach_class;
extern hk::ClassDef hcTimedConstraint_class;
extern hk::ClassDef hcColorMotion_class;
extern hk::ClassDef hcScriptMotion_class;
extern hk::ClassDef hcChannelSetMotion_class;
extern hk::ClassDef hcTimeline_class;
extern hk::ClassDef hcChannel_class;
extern hk::ClassDef hcJointChannel_class;
extern hk::ClassDef hcFigureChannel_class;
extern hk::ClassDef hcRealtimeChannel_class;
extern hk::ClassDef VisibilityChannel_class;
extern hk::ClassDef VisibilityChannelObserver_class;
extern hk::ClassDef hcChannelSet_class;
extern hk::ClassDef hcChannelBinding_class;
extern hk::ClassDef hcBoundChannelSet_class;
