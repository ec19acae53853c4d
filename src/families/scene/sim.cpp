// hcSim: the static controls of the simulation loop.
#include "convert/script_bridge.h"
#include "frame/class_def.h"

namespace {
using namespace hk;

void ExecCallbacks(const char *where, AnyPointer localData) { hcSim::execCallbacks(where, localData.address); }

hcCallback *FindCallback(const char *where, const char *name, AnyPointer data) {
  return hcSim::findCallback(where, name, data.address);
}

const Row kRows[] = {
    fn<"hcSim_advance", "", &hcSim::advance>,
    fn<"hcSim_updateHost", "?type? ", &hcSim::updateHost, hcSim::basic>,
    fn<"hcSim_getTimeLimit", "", &hcSim::getTimeLimit>,
    fn<"hcSim_setTimeLimit", "limit ", &hcSim::setTimeLimit>,
    fn<"hcSim_getStepFactor", "", &hcSim::getStepFactor>,
    fn<"hcSim_setStepFactor", "factor ", &hcSim::setStepFactor>,
    fn<"hcSim_execCallbacks", "where ?localData? ", &ExecCallbacks, nullptr>,
    fn<"hcSim_findCallback", "where name args ", &FindCallback>,
    fn<"hcSim_getCurrentTime", "", &hcSim::getCurrentTime>,
    fn<"hcSim_getSimulationMode", "", &hcSim::getSimulationMode>,
    fn<"hcSim_setSimulationMode", "newmode ", &hcSim::setSimulationMode>,
    fn<"hcSim_getMaxIters", "", &hcSim::getMaxIters>,
    fn<"hcSim_setMaxIters", "{ int  } ", &hcSim::setMaxIters>,
    fn<"hcSim_getTimePerIter", "", &hcSim::getTimePerIter>,
    fn<"hcSim_setTimePerIter", "{ int  } ", &hcSim::setTimePerIter>,
    fn<"hcSim_getUseLimitsDuringAnim", "", &hcSim::getUseLimitsDuringAnim>,
    fn<"hcSim_setUseLimitsDuringAnim", "{ int  } ", &hcSim::setUseLimitsDuringAnim>,
    fn<"hcSim_debugConstraints", "activeonly ", &hcSim::debugConstraints>,
    fn<"hcSim_debugMotions", "activeonly ", &hcSim::debugMotions>,
    fn<"hcSim_setConstraintSolver", "on ", &hcSim::setConstraintSolver>,
    fn<"hcSim_getConstraintSolver", "", &hcSim::getConstraintSolver>,
    fn<"hcSim_setHumanBehaviors", "on ", &hcSim::setHumanBehaviors>,
    fn<"hcSim_getHumanBehaviors", "", &hcSim::getHumanBehaviors>,
    fn<"hcSim_setOptimizeSetRoot", "on ", &hcSim::setOptimizeSetRoot>,
    fn<"hcSim_getOptimizeSetRoot", "", &hcSim::getOptimizeSetRoot>,
    fn<"hcSim_setOptimizeTesselSearch", "level ", &hcSim::setOptimizeTesselSearch>,
    fn<"hcSim_getOptimizeTesselSearch", "", &hcSim::getOptimizeTesselSearch>,
    fn<"hcSim_isParserFigureOpt", "{ hcFigure * } ", &hcSim::isParserFigureOpt>,
    fn<"hcSim_setFigureCOMEpsilon", "e ", &hcSim::setFigureCOMEpsilon>,
    fn<"hcSim_getFigureCOMEpsilon", "", &hcSim::getFigureCOMEpsilon>,
    custom(RowKind::Static, "hcSim_bindCallback", &SimBindCallback),
    fn<"hcSim_unbindCallback", "cb ", &hcSim::unbindCallback>,
};

const ConstantDef kConstants[] = {
    {"noSearchOpt", hcSim::noSearchOpt}, {"inParser", hcSim::inParser}, {"runTime", hcSim::runTime},
    {"all", hcSim::all},                 {"basic", hcSim::basic},       {"override", hcSim::override},
    {"rebuild", hcSim::rebuild},
};

}  // namespace

HK_CLASS(hcSim, nullptr, kRows, kConstants);
