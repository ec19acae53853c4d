// VisibilityChannel and VisibilityChannelObserver: the visibility of one
// segment per frame, and the observer that watches the segment for its
// channel.
#include "families/channel/frame_text.h"
#include "frame/classes.h"

namespace {
using namespace hk;

const Row kChannelRows[] = {
    ctor<"new_VisibilityChannel", "seg start durate ?name? ?forHarlChannels? ", VisibilityChannel,
         void(hcSegment *, int, int, const char *, int), nullptr, 0>,
    dtor<"delete_VisibilityChannel", "{ VisibilityChannel * } ", VisibilityChannel>,
    fn<"VisibilityChannel_bind", "{ VisibilityChannel * } cb fig ", &VisibilityChannel::bind>,
    fn<"VisibilityChannel_rebind", "{ VisibilityChannel * } cb ", &VisibilityChannel::rebind>,
    fn<"VisibilityChannel_grab", "{ VisibilityChannel * } t ", &VisibilityChannel::grab>,
    fn<"VisibilityChannel_stuff", "{ VisibilityChannel * } t ?fraction? ", &VisibilityChannel::stuff, 0.0>,
    method<"VisibilityChannel_sprintat", "{ VisibilityChannel * } t buf ", &SprintAt<VisibilityChannel>>,
    fn<"VisibilityChannel_scan", "{ VisibilityChannel * } t val ", &VisibilityChannel::scan>,
    fn<"VisibilityChannel_drawtessel", "{ VisibilityChannel * } mode ", &VisibilityChannel::drawtessel>,
    fn<"VisibilityChannel_enable", "seg ", &VisibilityChannel::enable>,
};

const Row kObserverRows[] = {
    setter<"VisibilityChannelObserver_vChannel_set", "{ VisibilityChannelObserver * } { VisibilityChannel * } ",
           &VisibilityChannelObserver::vChannel>,
    getter<"VisibilityChannelObserver_vChannel_get", "{ VisibilityChannelObserver * } ",
           &VisibilityChannelObserver::vChannel>,
    ctor<"new_VisibilityChannelObserver", "vc s ", VisibilityChannelObserver,
         void(VisibilityChannel *, hcSegment *)>,
    fn<"VisibilityChannelObserver_rebind", "{ VisibilityChannelObserver * } segment ",
       &VisibilityChannelObserver::rebind>,
    fn<"VisibilityChannelObserver_update", "{ VisibilityChannelObserver * } p ", &VisibilityChannelObserver::update>,
    fn<"VisibilityChannelObserver_destroy", "{ VisibilityChannelObserver * } ", &VisibilityChannelObserver::destroy>,
};

}  // namespace

HK_CLASS(VisibilityChannel, &hcChannel_class, kChannelRows, kNoConstants);
// The update protocol constants are hcObserver's, linked again by derivation.
HK_CLASS(VisibilityChannelObserver, &hcObserver_class, kObserverRows, kNoConstants);
