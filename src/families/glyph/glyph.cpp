// Display glyphs: the common base with the host's glyph registry, and the
// view cone, site, segment trace, ghost and projection glyphs.
#include "convert/object_lists.h"
#include "frame/classes.h"

namespace {
using namespace hk;

const Row kGlyphRows[] = {
    fn<"hcGlyph_getClassType", "", &hcGlyph::getClassType>,
    fn<"hcGlyph_find", "name ", &hcGlyph::find>,
    custom(RowKind::Static, "hcGlyph_getGlyphList", &GlyphListToTclList),
};

// create takes the length before the angle, setParams the angle before the
// length.
const Row kViewConeRows[] = {
    fn<"hcViewConeGlyph_getClassType", "", &hcViewConeGlyph::getClassType>,
    fn<"hcViewConeGlyph_create", "h eye ?length? ?angle? ", &hcViewConeGlyph::create, 200.0f, 40.0f>,
    fn<"hcViewConeGlyph_destroy", "{ hcViewConeGlyph * } ", &hcViewConeGlyph::destroy>,
    fn<"hcViewConeGlyph_setParams", "{ hcViewConeGlyph * } angle length ", &hcViewConeGlyph::setParams>,
    fn<"hcViewConeGlyph_getAngle", "{ hcViewConeGlyph * } ", &hcViewConeGlyph::getAngle>,
    fn<"hcViewConeGlyph_getLength", "{ hcViewConeGlyph * } ", &hcViewConeGlyph::getLength>,
    fn<"hcViewConeGlyph_getHuman", "{ hcViewConeGlyph * } ", &hcViewConeGlyph::getHuman>,
    fn<"hcViewConeGlyph_getEyeSite", "{ hcViewConeGlyph * } ", &hcViewConeGlyph::getEyeSite>,
    fn<"hcViewConeGlyph_getScale", "{ hcViewConeGlyph * } { hVector * } ", &hcViewConeGlyph::getScale>,
    fn<"hcViewConeGlyph_getGeometry", "{ hcViewConeGlyph * } ", &hcViewConeGlyph::getGeometry>,
    fn<"hcViewConeGlyph_getDisplay", "{ hcViewConeGlyph * } ", &hcViewConeGlyph::getDisplay>,
    fn<"hcViewConeGlyph_setDisplay", "{ hcViewConeGlyph * } on ", &hcViewConeGlyph::setDisplay>,
};
const ConstantDef kViewConeConstants[] = {
    {"leftEye", hcViewConeGlyph::leftEye},
    {"rightEye", hcViewConeGlyph::rightEye},
};

const Row kSiteRows[] = {
    fn<"hcSiteGlyph_getClassType", "", &hcSiteGlyph::getClassType>,
    fn<"hcSiteGlyph_create", "{ hcSite * } ", &hcSiteGlyph::create>,
    fn<"hcSiteGlyph_destroy", "{ hcSiteGlyph * } ", &hcSiteGlyph::destroy>,
    fn<"hcSiteGlyph_getSite", "{ hcSiteGlyph * } ", &hcSiteGlyph::getSite>,
    fn<"hcSiteGlyph_getDisplay", "{ hcSiteGlyph * } ", &hcSiteGlyph::getDisplay>,
    fn<"hcSiteGlyph_setDisplay", "{ hcSiteGlyph * } on ", &hcSiteGlyph::setDisplay>,
};

const Row kTraceRows[] = {
    fn<"hcSegmentTraceGlyph_getClassType", "", &hcSegmentTraceGlyph::getClassType>,
    fn<"hcSegmentTraceGlyph_create", "{ hcSegment * } ", &hcSegmentTraceGlyph::create>,
    fn<"hcSegmentTraceGlyph_destroy", "{ hcSegmentTraceGlyph * } ", &hcSegmentTraceGlyph::destroy>,
    fn<"hcSegmentTraceGlyph_getSegment", "{ hcSegmentTraceGlyph * } ", &hcSegmentTraceGlyph::getSegment>,
    fn<"hcSegmentTraceGlyph_getDisplay", "{ hcSegmentTraceGlyph * } ", &hcSegmentTraceGlyph::getDisplay>,
    fn<"hcSegmentTraceGlyph_setDisplay", "{ hcSegmentTraceGlyph * } on ", &hcSegmentTraceGlyph::setDisplay>,
    fn<"hcSegmentTraceGlyph_setActive", "{ hcSegmentTraceGlyph * } active ", &hcSegmentTraceGlyph::setActive>,
    fn<"hcSegmentTraceGlyph_isActive", "{ hcSegmentTraceGlyph * } ", &hcSegmentTraceGlyph::isActive>,
};

const Row kGhostRows[] = {
    fn<"hcGhostGlyph_getClassType", "", &hcGhostGlyph::getClassType>,
    fn<"hcGhostGlyph_create", "{ hcFigure * } ", &hcGhostGlyph::create>,
    fn<"hcGhostGlyph_destroy", "{ hcGhostGlyph * } ", &hcGhostGlyph::destroy>,
    fn<"hcGhostGlyph_getFigure", "{ hcGhostGlyph * } ", &hcGhostGlyph::getFigure>,
    fn<"hcGhostGlyph_getDisplay", "{ hcGhostGlyph * } ", &hcGhostGlyph::getDisplay>,
    fn<"hcGhostGlyph_setDisplay", "{ hcGhostGlyph * } on ", &hcGhostGlyph::setDisplay>,
    fn<"hcGhostGlyph_createGhost", "{ hcGhostGlyph * } ", &hcGhostGlyph::createGhost>,
};

const Row kProjectionRows[] = {
    fn<"hcProjectionGlyph_getClassType", "", &hcProjectionGlyph::getClassType>,
    fn<"hcProjectionGlyph_create", "{ hcFigure * } ", &hcProjectionGlyph::create>,
    fn<"hcProjectionGlyph_destroy", "{ hcProjectionGlyph * } ", &hcProjectionGlyph::destroy>,
    fn<"hcProjectionGlyph_getFigure", "{ hcProjectionGlyph * } ", &hcProjectionGlyph::getFigure>,
    fn<"hcProjectionGlyph_getDisplay", "{ hcProjectionGlyph * } ", &hcProjectionGlyph::getDisplay>,
    fn<"hcProjectionGlyph_setDisplay", "{ hcProjectionGlyph * } on ", &hcProjectionGlyph::setDisplay>,
    fn<"hcProjectionGlyph_getMode", "{ hcProjectionGlyph * } { hcProjectionGlyph::axisType  } ",
       &hcProjectionGlyph::getMode>,
    fn<"hcProjectionGlyph_setMode",
       "{ hcProjectionGlyph * } { hcProjectionGlyph::figureMode  } { hcProjectionGlyph::axisType  } ",
       &hcProjectionGlyph::setMode>,
    fn<"hcProjectionGlyph_setSegmentMode", "{ hcProjectionGlyph * } { hcSegment * } { hcProjectionGlyph::axisType  } ",
       &hcProjectionGlyph::setSegmentMode>,
    fn<"hcProjectionGlyph_getSegmentMode", "{ hcProjectionGlyph * } { hcSegment * } ",
       &hcProjectionGlyph::getSegmentMode>,
};
const ConstantDef kProjectionConstants[] = {
    {"off", hcProjectionGlyph::off},     {"on", hcProjectionGlyph::on},       {"mixed", hcProjectionGlyph::mixed},
    {"none", hcProjectionGlyph::none},   {"axisX", hcProjectionGlyph::axisX}, {"axisY", hcProjectionGlyph::axisY},
    {"axisZ", hcProjectionGlyph::axisZ},
};

}  // namespace

HK_CLASS(hcGlyph, &hcNode_class, kGlyphRows, kNoConstants);
HK_CLASS(hcViewConeGlyph, &hcGlyph_class, kViewConeRows, kViewConeConstants);
HK_CLASS(hcSiteGlyph, &hcGlyph_class, kSiteRows, kNoConstants);
HK_CLASS(hcSegmentTraceGlyph, &hcGlyph_class, kTraceRows, kNoConstants);
HK_CLASS(hcGhostGlyph, &hcGlyph_class, kGhostRows, kNoConstants);
HK_CLASS(hcProjectionGlyph, &hcGlyph_class, kProjectionRows, kProjectionConstants);
