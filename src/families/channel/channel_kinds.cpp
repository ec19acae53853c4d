// hcJointChannel, hcFigureChannel and hcRealtimeChannel: the channel kinds
// with their frame operations (bind, rebind, grab, stuff, sprintat, scan,
// drawtessel) and their own data.
#include "families/channel/frame_text.h"
#include "frame/classes.h"

namespace {
using namespace hk;

const Row kJointRows[] = {
    ctor<"new_hcJointChannel", "join start durate ?name? ", hcJointChannel,
         void(hcJoint *, int, int, const char *), nullptr>,
    fn<"hcJointChannel_bind", "{ hcJointChannel * } cb fig ", &hcJointChannel::bind>,
    fn<"hcJointChannel_rebind", "{ hcJointChannel * } cb ", &hcJointChannel::rebind>,
    fn<"hcJointChannel_grab", "{ hcJointChannel * } t ", &hcJointChannel::grab>,
    fn<"hcJointChannel_stuff", "{ hcJointChannel * } t ?fraction? ", &hcJointChannel::stuff, 0.0>,
    method<"hcJointChannel_sprintat", "{ hcJointChannel * } t buf ", &SprintAt<hcJointChannel>>,
    fn<"hcJointChannel_scan", "{ hcJointChannel * } t val ", &hcJointChannel::scan>,
    fn<"hcJointChannel_getJoint", "{ hcJointChannel * } ", &hcJointChannel::getJoint>,
    fn<"hcJointChannel_getNDOFs", "{ hcJointChannel * } ", &hcJointChannel::getNDOFs>,
    fn<"hcJointChannel_getAngle", "{ hcJointChannel * } t ?dof? ", &hcJointChannel::getAngle, 0>,
    fn<"hcJointChannel_getDisplacement", "{ hcJointChannel * } t displ ", &hcJointChannel::getDisplacement>,
    fn<"hcJointChannel_getData", "{ hcJointChannel * } t ", &hcJointChannel::getData>,
};

const Row kFigureRows[] = {
    ctor<"new_hcFigureChannel", "fig start durate ?name? ", hcFigureChannel,
         void(hcFigure *, int, int, const char *), nullptr>,
    dtor<"delete_hcFigureChannel", "{ hcFigureChannel * } ", hcFigureChannel>,
    fn<"hcFigureChannel_bind", "{ hcFigureChannel * } cb fig ", &hcFigureChannel::bind>,
    fn<"hcFigureChannel_rebind", "{ hcFigureChannel * } cb ", &hcFigureChannel::rebind>,
    fn<"hcFigureChannel_grab", "{ hcFigureChannel * } t ", &hcFigureChannel::grab>,
    fn<"hcFigureChannel_stuff", "{ hcFigureChannel * } t ?fraction? ", &hcFigureChannel::stuff, 0.0>,
    method<"hcFigureChannel_sprintat", "{ hcFigureChannel * } t buf ", &SprintAt<hcFigureChannel>>,
    fn<"hcFigureChannel_scan", "{ hcFigureChannel * } t val ", &hcFigureChannel::scan>,
    fn<"hcFigureChannel_drawtessel", "{ hcFigureChannel * } mode ", &hcFigureChannel::drawtessel>,
    fn<"hcFigureChannel_getFigure", "{ hcFigureChannel * } ", &hcFigureChannel::getFigure>,
    fn<"hcFigureChannel_getLocation", "{ hcFigureChannel * } t ", &hcFigureChannel::getLocation>,
    fn<"hcFigureChannel_getData", "{ hcFigureChannel * } t ", &hcFigureChannel::getData>,
};

const Row kRealtimeRows[] = {
    ctor<"new_hcRealtimeChannel", "start durate ?name? ", hcRealtimeChannel, void(int, int, const char *), nullptr>,
    setter<"hcRealtimeChannel_mfps_set", "{ hcRealtimeChannel * } { int  } ", &hcRealtimeChannel::mfps>,
    getter<"hcRealtimeChannel_mfps_get", "{ hcRealtimeChannel * } ", &hcRealtimeChannel::mfps>,
    setter<"hcRealtimeChannel_startreal_set", "{ hcRealtimeChannel * } { double  } ", &hcRealtimeChannel::startreal>,
    getter<"hcRealtimeChannel_startreal_get", "{ hcRealtimeChannel * } ", &hcRealtimeChannel::startreal>,
    fn<"hcRealtimeChannel_grab", "{ hcRealtimeChannel * } t ", &hcRealtimeChannel::grab>,
    fn<"hcRealtimeChannel_stuff", "{ hcRealtimeChannel * } t ?fraction? ", &hcRealtimeChannel::stuff, 0.0>,
    method<"hcRealtimeChannel_sprintat", "{ hcRealtimeChannel * } t buf ", &SprintAt<hcRealtimeChannel>>,
    fn<"hcRealtimeChannel_scan", "{ hcRealtimeChannel * } t val ", &hcRealtimeChannel::scan>,
    fn<"hcRealtimeChannel_drawtessel", "{ hcRealtimeChannel * } mode ", &hcRealtimeChannel::drawtessel>,
    fn<"hcRealtimeChannel_getData", "{ hcRealtimeChannel * } t ", &hcRealtimeChannel::getData>,
    fn<"hcRealtimeChannel_getRealtime", "{ hcRealtimeChannel * } t ", &hcRealtimeChannel::getRealtime>,
    fn<"hcRealtimeChannel_getFrame", "{ hcRealtimeChannel * } rt fraction ", &hcRealtimeChannel::getFrame>,
    fn<"hcRealtimeChannel_getMethod", "{ hcRealtimeChannel * } ", &hcRealtimeChannel::getMethod>,
    fn<"hcRealtimeChannel_setMethod", "{ hcRealtimeChannel * } fps ", &hcRealtimeChannel::setMethod>,
    fn<"hcRealtimeChannel_shift", "{ hcRealtimeChannel * } add ", &hcRealtimeChannel::shift>,
};

}  // namespace

HK_CLASS(hcJointChannel, &hcChannel_class, kJointRows, kNoConstants);
HK_CLASS(hcFigureChannel, &hcChannel_class, kFigureRows, kNoConstants);
HK_CLASS(hcRealtimeChannel, &hcChannel_class, kRealtimeRows, kNoConstants);
