// hcConstrHistory: the process-wide settings of the solver's history of
// potentials, and the throttle query of one constraint's history.
#include "frame/classes.h"

namespace {
using namespace hk;

const Row kRows[] = {
    fn<"hcConstrHistory_getMinHistorySize", "", &hcConstrHistory::getMinHistorySize>,
    fn<"hcConstrHistory_getMaxHistorySize", "", &hcConstrHistory::getMaxHistorySize>,
    fn<"hcConstrHistory_setHistorySize", "size ", &hcConstrHistory::setHistorySize>,
    fn<"hcConstrHistory_getHistorySize", "", &hcConstrHistory::getHistorySize>,
    fn<"hcConstrHistory_setHistoryDelta", "delta ", &hcConstrHistory::setHistoryDelta>,
    fn<"hcConstrHistory_getHistoryDelta", "", &hcConstrHistory::getHistoryDelta>,
    fn<"hcConstrHistory_getThrottleOn", "", &hcConstrHistory::getThrottleOn>,
    fn<"hcConstrHistory_setThrottleOn", "on ", &hcConstrHistory::setThrottleOn>,
    fn<"hcConstrHistory_isThrottled", "{ hcConstrHistory * } ", &hcConstrHistory::isThrottled>,
};

}  // namespace

HK_CLASS(hcConstrHistory, nullptr, kRows, kNoConstants);
