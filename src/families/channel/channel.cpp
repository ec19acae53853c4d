// hcChannel: the channel base class, whose commands every channel kind
// re-registers.
#include "frame/classes.h"

namespace {
using namespace hk;

hcChannel *NewChannel(int t, int start, int durate, AnyPointer param, unsigned int ds, const char *name) {
  return new hcChannel(t, start, durate, param.address, ds, name);
}

hcChannel *FindChannel(const char *name, AnyPointer param) { return hcChannel::findChannel(name, param.address); }


const Row kRows[] = {
    Row{RowKind::Ctor, "new_hcChannel", &Command<"new_hcChannel", "t start durate param ds name ", &NewChannel>::Proc,
        nullptr},
    dtor<"delete_hcChannel", "{ hcChannel * } ", hcChannel>,
    fn<"hcChannel_activate", "{ hcChannel * } on ", &hcChannel::activate>,
    fn<"hcChannel_activep", "{ hcChannel * } ", &hcChannel::activep>,
    fn<"hcChannel_at", "{ hcChannel * } t ", &hcChannel::at>,
    fn<"hcChannel_getList", "", &hcChannel::getList>,
    fn<"hcChannel_findChannel", "name ?param? ", &FindChannel, nullptr>,
    fn<"hcChannel_getChannelType", "{ hcChannel * } ", &hcChannel::getChannelType>,
    fn<"hcChannel_getSize", "{ hcChannel * } ", &hcChannel::getSize>,
    fn<"hcChannel_getPrototype", "{ hcChannel * } ", &hcChannel::getPrototype>,
    fn<"hcChannel_findByType", "chlist type ", &hcChannel::findByType>,
    fn<"hcChannel_resolve", "l ", &hcChannel::resolve>,
    fn<"hcChannel_printAll", "?all? ?show? ", &hcChannel::printAll, 0, 1>,
    fn<"hcChannel_printList", "channels name ?all? ?show? ", &hcChannel::printList, 0, 1>,
    fn<"hcChannel_printChannel", "name ?all? ", &hcChannel::printChannel, 0>,
    fn<"hcChannel_printinfo", "{ hcChannel * } ?all? ?show? ", &hcChannel::printinfo, 0, 1>,
};

}  // namespace

HK_CLASS(hcChannel, &hcObject_class, kRows, kNoConstants);
