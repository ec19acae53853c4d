// Host library: the simulation loop and its callbacks.
#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "host/kit.h"
#include "host/constraint.h"
#include "host/motion.h"
#include "host/timeline.h"
#include "core/messages.h"
#include "core/journal.h"

namespace {

struct SimState {
  int currentTime = 0;
  int timeLimit = 0;
  float stepFactor = 1.0f;
  int simulationMode = 0;
  int maxIters = 100;
  int timePerIter = 1;
  int useLimitsDuringAnim = 0;
  int constraintSolver = 1;
  int humanBehaviors = 1;
  int optimizeSetRoot = 0;
  hcSim::searchLevel tesselSearch = hcSim::noSearchOpt;
  float figureCOMEpsilon = 0.001f;
  int updates = 0;
  // Bound records per place, in binding order.
  std::map<std::string, std::vector<hcCallback *>> places;
  int running = 0;                   // nesting of execCallbacks
  std::vector<hcCallback *> retired; // unbound during a run; freed after it
};

SimState &sim() {
  static auto *state = new SimState;
  return *state;
}

char *copyText(const char *s) { return s ? strdup(s) : nullptr; }

void release(hcCallback *cb) {
  std::free(cb->where);
  std::free(cb->name);
  delete cb;
}

bool sameText(const char *a, const char *b) {
  if (!a || !b) return a == b;
  return std::strcmp(a, b) == 0;
}

void runCallbacks(const char *where, void *localData) {
  SimState &s = sim();
  if (!where || s.running >= hcKit::kMaxNesting) return;
  auto place = s.places.find(where);
  if (place == s.places.end()) return;
  // A callback may bind or unbind records, its own included: run over a
  // copy and skip records that have been unbound meanwhile.  They are not
  // freed before the outermost run ends.
  std::vector<hcCallback *> due = place->second;
  ++s.running;
  for (hcCallback *cb : due) {
    if (!cb->live) continue;
    void *saved = cb->localData;
    cb->localData = localData;
    cb->function(cb->data, cb);
    cb->localData = saved;
  }
  if (--s.running == 0) {
    for (hcCallback *cb : s.retired) release(cb);
    s.retired.clear();
  }
}

}  // namespace

int hcSim::advance() {
  hccore::call("hcSim::advance");
  SimState &s = sim();
  if (s.timeLimit > 0 && s.currentTime >= s.timeLimit) return 0;
  runCallbacks("preStep", nullptr);
  // The time saturates instead of wrapping round.
  long long next = static_cast<long long>(s.currentTime) + s.timePerIter;
  s.currentTime = static_cast<int>(std::clamp<long long>(next, INT_MIN, INT_MAX));
  runCallbacks("postStep", nullptr);
  runCallbacks("postAdvance", nullptr);
  return 1;
}

int hcSim::updateHost(updateHostTypes type) {
  hccore::call("hcSim::updateHost", static_cast<int>(type));
  if (type != basic && type != override && type != rebuild) return 0;
  ++sim().updates;
  return 1;
}

int hcSim::getTimeLimit() {
  hccore::call("hcSim::getTimeLimit");
  return sim().timeLimit;
}

void hcSim::setTimeLimit(int limit) {
  hccore::call("hcSim::setTimeLimit", limit);
  sim().timeLimit = limit;
}

float hcSim::getStepFactor() {
  hccore::call("hcSim::getStepFactor");
  return sim().stepFactor;
}

void hcSim::setStepFactor(float factor) {
  hccore::call("hcSim::setStepFactor", factor);
  sim().stepFactor = factor;
}

void hcSim::execCallbacks(const char *where, void *localData) {
  hccore::call("hcSim::execCallbacks", where, localData);
  runCallbacks(where, localData);
}


hcCallback *hcSim::findCallback(const char *where, const char *name, void *data) {
  hccore::call("hcSim::findCallback", where, name, data);
  if (!where) return nullptr;
  auto place = sim().places.find(where);
  if (place == sim().places.end()) return nullptr;
  for (hcCallback *cb : place->second)
    if (sameText(cb->name, name) && (!data || cb->data == data)) return cb;
  return nullptr;
}

int hcSim::getCurrentTime() {
  hccore::call("hcSim::getCurrentTime");
  return sim().currentTime;
}

int hcSim::getSimulationMode() {
  hccore::call("hcSim::getSimulationMode");
  return sim().simulationMode;
}

void hcSim::setSimulationMode(int newmode) {
  hccore::call("hcSim::setSimulationMode", newmode);
  sim().simulationMode = newmode;
}

int hcSim::getMaxIters() {
  hccore::call("hcSim::getMaxIters");
  return sim().maxIters;
}

void hcSim::setMaxIters(int iters) {
  hccore::call("hcSim::setMaxIters", iters);
  sim().maxIters = iters;
}

int hcSim::getTimePerIter() {
  hccore::call("hcSim::getTimePerIter");
  return sim().timePerIter;
}

void hcSim::setTimePerIter(int time) {
  hccore::call("hcSim::setTimePerIter", time);
  sim().timePerIter = time;
}

int hcSim::getUseLimitsDuringAnim() {
  hccore::call("hcSim::getUseLimitsDuringAnim");
  return sim().useLimitsDuringAnim;
}

void hcSim::setUseLimitsDuringAnim(int use) {
  hccore::call("hcSim::setUseLimitsDuringAnim", use);
  sim().useLimitsDuringAnim = use;
}

namespace {

// An information message: a header "N <what>", then one line per item.
template <class T>
void report(const std::vector<T *> &all, int activeonly, const char *what) {
  std::vector<std::string> lines;
  for (T *item : all) {
    if (activeonly && !item->isActive()) continue;
    const char *name = item->getName();
    lines.push_back(std::string(name && *name ? name : "-") + (item->isActive() ? " active" : " inactive"));
  }
  std::string text = std::to_string(lines.size()) + " " + what;
  for (const std::string &line : lines) text += "\n" + line;
  hcmsg::info(text);
}

}  // namespace

void hcSim::debugConstraints(int activeonly) {
  hccore::call("hcSim::debugConstraints", activeonly);
  hccore::Quiet quiet;
  report(hcConstraint::solverList(), activeonly, "constraints");
}

void hcSim::debugMotions(int activeonly) {
  hccore::call("hcSim::debugMotions", activeonly);
  hccore::Quiet quiet;
  std::vector<hcMotion *> motions;
  if (hcTimeline *timeline = hcGlobal::getTimeline())
    for (hList *n = hList::iterator(timeline->getMotionList(), nullptr); n;
         n = hList::iterator(timeline->getMotionList(), n))
      motions.push_back(static_cast<hcMotion *>(n->getData()));
  report(motions, activeonly, "motions");
}

void hcSim::setConstraintSolver(int on) {
  hccore::call("hcSim::setConstraintSolver", on);
  sim().constraintSolver = on;
}

int hcSim::getConstraintSolver() {
  hccore::call("hcSim::getConstraintSolver");
  return sim().constraintSolver;
}

void hcSim::setHumanBehaviors(int on) {
  hccore::call("hcSim::setHumanBehaviors", on);
  sim().humanBehaviors = on;
}

int hcSim::getHumanBehaviors() {
  hccore::call("hcSim::getHumanBehaviors");
  return sim().humanBehaviors;
}

void hcSim::setOptimizeSetRoot(int on) {
  hccore::call("hcSim::setOptimizeSetRoot", on);
  sim().optimizeSetRoot = on;
}

int hcSim::getOptimizeSetRoot() {
  hccore::call("hcSim::getOptimizeSetRoot");
  return sim().optimizeSetRoot;
}

void hcSim::setOptimizeTesselSearch(searchLevel level) {
  hccore::call("hcSim::setOptimizeTesselSearch", static_cast<int>(level));
  sim().tesselSearch = level;
}

hcSim::searchLevel hcSim::getOptimizeTesselSearch() {
  hccore::call("hcSim::getOptimizeTesselSearch");
  return sim().tesselSearch;
}

int hcSim::isParserFigureOpt(hcFigure &figure) {
  hccore::call("hcSim::isParserFigureOpt", static_cast<const void *>(&figure));
  searchLevel level = sim().tesselSearch;
  return level == inParser || level == all ? 1 : 0;
}

void hcSim::setFigureCOMEpsilon(float e) {
  hccore::call("hcSim::setFigureCOMEpsilon", e);
  sim().figureCOMEpsilon = e;
}

float hcSim::getFigureCOMEpsilon() {
  hccore::call("hcSim::getFigureCOMEpsilon");
  return sim().figureCOMEpsilon;
}

hcCallback *hcSim::bindCallback(const char *where, const char *name, hcCallback::Function function, void *data) {
  hccore::call("hcSim::bindCallback", where, name, reinterpret_cast<const void *>(function), data);
  if (!where || !function) return nullptr;
  auto *cb = new hcCallback{copyText(where), function, data, copyText(name), nullptr, 1};
  sim().places[where].push_back(cb);
  return cb;
}

int hcSim::unbindCallback(hcCallback *cb) {
  hccore::call("hcSim::unbindCallback", static_cast<const void *>(cb));
  if (!cb) return 0;
  // Only records found in the lists are touched: a stale pointer answers 0.
  SimState &s = sim();
  for (auto &[where, records] : s.places) {
    for (auto i = records.begin(); i != records.end(); ++i) {
      if (*i != cb) continue;
      records.erase(i);
      cb->live = 0;
      if (s.running)
        s.retired.push_back(cb);
      else
        release(cb);
      return 1;
    }
  }
  return 0;
}

int hcSim::countCallbacks() {
  int n = 0;
  for (const auto &[where, records] : sim().places) n += static_cast<int>(records.size());
  return n;
}
