// hcTimeline: the motions of a scene played by frames or in real time.
// Timelines come from the host (hcMotion_getTimeline, hcGlobal_getTimeline);
// the class command only binds existing ones with -this.
#include "frame/classes.h"

namespace {
using namespace hk;

const Row kRows[] = {
    fn<"hcTimeline_add", "{ hcTimeline * } m ", &hcTimeline::add>,
    fn<"hcTimeline_remove", "{ hcTimeline * } m ", &hcTimeline::remove>,
    fn<"hcTimeline_numMotions", "{ hcTimeline * } ", &hcTimeline::numMotions>,
    fn<"hcTimeline_findMotion", "{ hcTimeline * } name ", &hcTimeline::findMotion>,
    fn<"hcTimeline_getMotions", "{ hcTimeline * } ", &hcTimeline::getMotions>,
    fn<"hcTimeline_getMotionList", "{ hcTimeline * } ", &hcTimeline::getMotionList>,
    fn<"hcTimeline_sort", "{ hcTimeline * } ", &hcTimeline::sort>,
    fn<"hcTimeline_playback", "{ hcTimeline * } on how ?start? ?end? ", &hcTimeline::playback, 0, -1>,
    fn<"hcTimeline_setPlaybackMode", "{ hcTimeline * } ?mode? ", &hcTimeline::setPlaybackMode,
       hcTimeline::frames>,
    fn<"hcTimeline_getPlaybackMode", "{ hcTimeline * } ", &hcTimeline::getPlaybackMode>,
    fn<"hcTimeline_setRealtimeFactor", "{ hcTimeline * } factor ", &hcTimeline::setRealtimeFactor>,
    fn<"hcTimeline_getRealtimeFactor", "{ hcTimeline * } ", &hcTimeline::getRealtimeFactor>,
    fn<"hcTimeline_setInterpolate", "{ hcTimeline * } intp ", &hcTimeline::setInterpolate>,
    fn<"hcTimeline_getInterpolate", "{ hcTimeline * } ", &hcTimeline::getInterpolate>,
    fn<"hcTimeline_startTime", "{ hcTimeline * } ?save? ", &hcTimeline::startTime, 1>,
    fn<"hcTimeline_stopTime", "{ hcTimeline * } ", &hcTimeline::stopTime>,
    fn<"hcTimeline_getTime", "{ hcTimeline * } ", &hcTimeline::getTime>,
    fn<"hcTimeline_setFrame", "{ hcTimeline * } f ", &hcTimeline::setFrame>,
    fn<"hcTimeline_getDuration", "{ hcTimeline * } ?ignoreoff? ", &hcTimeline::getDuration, 0>,
    fn<"hcTimeline_execute", "{ hcTimeline * } ?save? ", &hcTimeline::execute, 1>,
    fn<"hcTimeline_setTime", "{ hcTimeline * } t ?constraints? ", &hcTimeline::setTime, 1>,
    fn<"hcTimeline_setRealtime", "{ hcTimeline * } rt ?interp? ?constraints? ", &hcTimeline::setRealtime, 1, 1>,
    fn<"hcTimeline_insertTime", "{ hcTimeline * } t amt ", &hcTimeline::insertTime>,
    fn<"hcTimeline_deleteTime", "{ hcTimeline * } t amt ", &hcTimeline::deleteTime>,
    fn<"hcTimeline_step", "{ hcTimeline * } n ", &hcTimeline::step>,
};

// Playback modes.
const ConstantDef kConstants[] = {
    {"frames", hcTimeline::frames},
    {"realtime", hcTimeline::realtime},
};

}  // namespace

HK_CLASS(hcTimeline, &hcSubject_class, kRows, kConstants);
