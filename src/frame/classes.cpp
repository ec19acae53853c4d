#include "frame/classes.h"

namespace hk {

std::span<ClassDef *const> ClassBlocks() {
  static ClassDef *const blocks[] = {
      &hcType_class,
      &hList_class,
      &hVector_class,
      &hMatrix_class,
      &hcObserver_class,
      &hcSubject_class,
      &hcRefObject_class,
      &hcObject_class,
      &hcNode_class,
      &hcSegment_class,
      &hcJoint_class,
      &hcFigure_class,
      &hcSite_class,
      &hcGlyph_class,
      &hcViewConeGlyph_class,
      &hcSiteGlyph_class,
      &hcSegmentTraceGlyph_class,
      &hcGhostGlyph_class,
      &hcProjectionGlyph_class,
      &hcConstrHistory_class,
      &hcConstraint_class,
      &hcScene_class,
      &hcAnthroScale_class,
      &hcGlobal_class,
      &hcHuman_class,
      &hcPosture_class,
      &hcValue_class,
      &hcPy_class,
      &hcMaterial_class,
      &hcSim_class,
      &hcKit_class,
      &hcPropertyList_class,
      &hcTypeTable_class,
      &hcBone_class,
      &hcSegmentBone_class,
      &hcTwistBone_class,
      &hcTwistLink_class,
      &hcLandmark_class,
      &hcLandmarkImpl_class,
      &hcDisplayFlags_class,
  };
  return blocks;
}

}  // namespace hk
