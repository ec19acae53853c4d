// hcPosture: named joint values of a figure.  A posture is a reference
// object, so it also answers the hcRefObject member accessors and list
// operations.
#include "frame/classes.h"
#include "host/posture.h"

namespace {
using namespace hk;

const Row kRows[] = {
    fn<"hcPosture_apply", "{ hcPosture * } ", &hcPosture::apply>,
    fn<"hcPosture_save", "{ hcPosture * } filename ", &hcPosture::save>,
    fn<"hcPosture_saveToBuffer", "{ hcPosture * } ", &hcPosture::saveToBuffer>,
    fn<"hcPosture_cacheInBuffer", "{ hcPosture * } ", &hcPosture::cacheInBuffer>,
    fn<"hcPosture_getName", "{ hcPosture * } ", &hcPosture::getName>,
    fn<"hcPosture_getFullName", "{ hcPosture * } ", &hcPosture::getFullName>,
    fn<"hcPosture_find", "figure name ", &hcPosture::find>,
    fn<"hcPosture_create", "figure name ", &hcPosture::create>,
    fn<"hcPosture_add", "figure newName fileName ", &hcPosture::add>,
    fn<"hcPosture_remove", "posture ", &hcPosture::remove>,
    fn<"hcPosture_resolve", "l ", &hcPosture::resolve>,
};

}  // namespace

HK_CLASS(hcPosture, &hcRefObject_class, kRows, kNoConstants);
