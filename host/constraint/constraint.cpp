// hcConstraint: registry, goals, end effectors, objective settings and the
// type tables.  The potential and the solver are in constraint_solver.cpp.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <iterator>

#include "host/constraint.h"
#include "figure/figure_detail.h"

using namespace hcfigure_detail;

namespace {

bool emptyText(const char *s) { return !s || !*s; }

// Every live constraint, oldest first, and the solver's list.  Never freed,
// so that they outlive every constraint whatever the order of static
// destruction.
std::vector<hcConstraint *> &registry() {
  static auto *all = new std::vector<hcConstraint *>;
  return *all;
}
std::vector<hcConstraint *> &solverQueue() {
  static auto *queue = new std::vector<hcConstraint *>;
  return *queue;
}

struct TableRow {
  const char *name;
  int token;
};

const TableRow kGoalTypes[] = {
    {"site", hcValue::V_SITE},       {"node", hcValue::V_NODE},
    {"face", hcValue::V_FACE},       {"segment", hcValue::V_SEGMENT},
    {"transform", hcValue::V_MATRIX}, {"jointangle", hcValue::V_JOINTANGLE},
};
const TableRow kEffectorTypes[] = {
    {"site", hcValue::V_SITE},
    {"node", hcValue::V_NODE},
};
const TableRow kOrientationTypes[] = {
    {"undef", hcConstraint::C_UNDEF}, {"none", hcConstraint::C_NONE},
    {"frame", hcConstraint::C_FRAME}, {"aim", hcConstraint::C_AIM},
    {"dir", hcConstraint::C_DIR},     {"view", hcConstraint::C_VIEW},
    {"planedir", hcConstraint::C_PLANEDIR},
};
const TableRow kPositionTypes[] = {
    {"undef", hcConstraint::C_UNDEF},           {"none", hcConstraint::C_NONE},
    {"pos", hcConstraint::C_POS},               {"line", hcConstraint::C_LINE},
    {"plane", hcConstraint::C_PLANE},           {"edge", hcConstraint::C_EDGE},
    {"face", hcConstraint::C_FACE},             {"restangle", hcConstraint::C_RESTANGLE},
    {"jointlimit", hcConstraint::C_JOINTLIMIT}, {"selfavoid", hcConstraint::C_SELFAVOID},
    {"halfspace", hcConstraint::C_HALFSPACE},
};

template <std::size_t N>
bool listed(const TableRow (&rows)[N], int token) {
  return std::any_of(std::begin(rows), std::end(rows),
                     [token](const TableRow &r) { return r.token == token; });
}

// The table named name, made (again, should a script have deleted it) from
// rows.
template <std::size_t N>
hcTypeTable *table(const char *name, const TableRow (&rows)[N]) {
  hccore::Quiet quiet;
  hcTypeTable *t = hcTypeTable::findTable(name);
  if (!t) {
    t = hcTypeTable::create(name);
    for (const TableRow &r : rows) t->addEntry(r.name, r.token);
  }
  return t;
}

// A unit copy of v, or false for a zero or non-finite vector.
bool unit(const hVector &v, hVector &out) {
  double len = std::sqrt(double(v.v[0]) * v.v[0] + double(v.v[1]) * v.v[1] +
                         double(v.v[2]) * v.v[2]);
  if (!std::isfinite(len) || len < 1e-12) return false;
  out = hVector(float(v.v[0] / len), float(v.v[1] / len), float(v.v[2] / len));
  return true;
}

}  // namespace

// ===========================================================================
// hcConstrHistory

namespace {
int gHistorySize = 10;
float gHistoryDelta = 0.001f;
int gThrottleOn = 0;
constexpr int kMinHistory = 2;
constexpr int kMaxHistory = 1000;
}  // namespace

int hcConstrHistory::getMinHistorySize() {
  hccore::call("hcConstrHistory::getMinHistorySize");
  return kMinHistory;
}

int hcConstrHistory::getMaxHistorySize() {
  hccore::call("hcConstrHistory::getMaxHistorySize");
  return kMaxHistory;
}

int hcConstrHistory::setHistorySize(int size) {
  hccore::call("hcConstrHistory::setHistorySize", size);
  if (size < kMinHistory || size > kMaxHistory) return 0;
  gHistorySize = size;
  return 1;
}

int hcConstrHistory::getHistorySize() {
  hccore::call("hcConstrHistory::getHistorySize");
  return gHistorySize;
}

int hcConstrHistory::setHistoryDelta(float delta) {
  hccore::call("hcConstrHistory::setHistoryDelta", delta);
  if (!std::isfinite(delta) || delta < 0) return 0;
  gHistoryDelta = delta;
  return 1;
}

float hcConstrHistory::getHistoryDelta() {
  hccore::call("hcConstrHistory::getHistoryDelta");
  return gHistoryDelta;
}

int hcConstrHistory::getThrottleOn() {
  hccore::call("hcConstrHistory::getThrottleOn");
  return gThrottleOn;
}

int hcConstrHistory::setThrottleOn(int on) {
  hccore::call("hcConstrHistory::setThrottleOn", on);
  gThrottleOn = on ? 1 : 0;
  return 1;
}

int hcConstrHistory::isThrottled() {
  hccore::call("hcConstrHistory::isThrottled");
  return throttled() ? 1 : 0;
}

bool hcConstrHistory::throttled() const {
  const std::size_t n = static_cast<std::size_t>(gHistorySize);
  if (!gThrottleOn || potentials_.size() < n) return false;
  float oldest = potentials_[potentials_.size() - n];
  return oldest - potentials_.back() < gHistoryDelta;
}

void hcConstrHistory::record(float potential) {
  potentials_.push_back(potential);
  while (potentials_.size() > static_cast<std::size_t>(gHistorySize)) potentials_.pop_front();
}

void hcConstrHistory::clear() { potentials_.clear(); }

// ===========================================================================
// hcConstraint: life cycle and registry

hcType *hcConstraint::getClassType() {
  hccore::call("hcConstraint::getClassType");
  return hccore::typeNamed("hcConstraint");
}

hcConstraint::hcConstraint(const char *name) {
  hccore::call("hcConstraint::hcConstraint", name);
  hccore::Quiet quiet;
  setFullName("", name ? name : "");
  registry().push_back(this);
}

hcConstraint::~hcConstraint() {
  hccore::destroying(this, "hcConstraint::~hcConstraint");
  std::erase(registry(), this);
  std::erase(solverQueue(), this);
}

hcConstraint *hcConstraint::create(const char *newName) {
  OpRecord rec("hcConstraint::create", newName);
  if (emptyText(newName)) return nullptr;
  return new hcConstraint(newName);
}

int hcConstraint::destroy(hcConstraint *c) {
  OpRecord rec("hcConstraint::destroy", c);
  if (!isRegistered(c)) return 0;
  delete c;
  return 1;
}

hcConstraint *hcConstraint::find(const char *name) {
  OpRecord rec("hcConstraint::find", name);
  if (!name) return nullptr;
  for (hcConstraint *c : registry())
    if (sameName(c, name)) return c;
  return nullptr;
}

bool hcConstraint::isRegistered(const hcConstraint *c) {
  auto &all = registry();
  return c && std::find(all.begin(), all.end(), c) != all.end();
}

const std::vector<hcConstraint *> &hcConstraint::solverList() { return solverQueue(); }

void hcConstraint::addToList() {
  OpRecord rec("hcConstraint::addToList");
  auto &queue = solverQueue();
  if (std::find(queue.begin(), queue.end(), this) == queue.end()) queue.push_back(this);
}

hcConstraint *hcConstraint::resolve(hList *l) {
  OpRecord rec("hcConstraint::resolve", l);
  // The list's first element, when it is a constraint (the list may hold
  // anything, so it is compared before use).
  void *first = l ? l->getData() : nullptr;
  auto it = std::find(registry().begin(), registry().end(), first);
  return it == registry().end() ? nullptr : *it;
}

int hcConstraint::setName(const char *newName) {
  OpRecord rec("hcConstraint::setName", newName);
  if (emptyText(newName)) return 0;
  return hcObject::setName(newName);
}

// ---------------------------------------------------------------------------
// Description.

std::string hcConstraint::describe(int level) {
  std::string text = std::string("hcConstraint ") + (name ? name : "");
  if (level <= 0) return text;
  static const char *const kGoals[] = {"none", "site", "node", "face", "transform", "segment", "joint"};
  static const char *const kEffectors[] = {"none", "site", "node"};
  char buf[256];
  std::snprintf(buf, sizeof buf,
                " active %d weight %g priority %d orientation %d position %d goal %s effector %s "
                "joints %d potential %g",
                active_, double(weight_), priority_, orientationType_, positionType_,
                kGoals[static_cast<int>(goal_)], kEffectors[static_cast<int>(effector_)],
                static_cast<int>(chain(startJoint_).size()), double(potential()));
  return text + buf;
}

int hcConstraint::tessprint(char *buffer, int level) {
  OpRecord rec("hcConstraint::tessprint", level);
  if (!buffer) return 0;
  std::string text = describe(level);
  std::size_t n = std::min(text.size(), kDescriptionSize - 1);
  std::memcpy(buffer, text.data(), n);
  buffer[n] = '\0';
  return static_cast<int>(n);
}

void hcConstraint::tessprint(char *buffer, int level, std::size_t size) {
  OpRecord rec("hcConstraint::tessprint", level, static_cast<long>(size));
  if (!buffer || size == 0) return;
  std::snprintf(buffer, size, "%s", describe(level).c_str());
}

// ---------------------------------------------------------------------------
// Simple settings.

int hcConstraint::setActive(int on) {
  OpRecord rec("hcConstraint::setActive", on);
  active_ = on ? 1 : 0;
  return 1;
}

int hcConstraint::isActive() {
  OpRecord rec("hcConstraint::isActive");
  return active_;
}

int hcConstraint::isBehavior() {
  OpRecord rec("hcConstraint::isBehavior");
  return 0;
}

int hcConstraint::isMotion() {
  OpRecord rec("hcConstraint::isMotion");
  return 0;
}

float hcConstraint::getWeight() {
  OpRecord rec("hcConstraint::getWeight");
  return weight_;
}

void hcConstraint::setWeight(float weight) {
  OpRecord rec("hcConstraint::setWeight", weight);
  weight_ = weight;
}

void hcConstraint::setPriority(int p) {
  OpRecord rec("hcConstraint::setPriority", p);
  priority_ = p;
}

int hcConstraint::getPriority() {
  OpRecord rec("hcConstraint::getPriority");
  return priority_;
}

hcConstrHistory *hcConstraint::getHistory() {
  OpRecord rec("hcConstraint::getHistory");
  return &history_;
}

int hcConstraint::setObjectiveTypes(int orientation, int position) {
  OpRecord rec("hcConstraint::setObjectiveTypes", orientation, position);
  if (!listed(kOrientationTypes, orientation) || !listed(kPositionTypes, position)) return 0;
  orientationType_ = orientation;
  positionType_ = position;
  goalChanged();
  return 1;
}

int hcConstraint::getOrientationType() {
  OpRecord rec("hcConstraint::getOrientationType");
  return orientationType_;
}

int hcConstraint::getPositionType() {
  OpRecord rec("hcConstraint::getPositionType");
  return positionType_;
}

int hcConstraint::setPOWeight(float poweight) {
  OpRecord rec("hcConstraint::setPOWeight", poweight);
  if (!std::isfinite(poweight) || poweight < 0) return 0;
  poWeight_ = poweight;
  goalChanged();
  return 1;
}

float hcConstraint::getPOWeight() {
  OpRecord rec("hcConstraint::getPOWeight");
  return poWeight_;
}

// ---------------------------------------------------------------------------
// Direction vectors.

int hcConstraint::setLineVector(hVector &vector) {
  OpRecord rec("hcConstraint::setLineVector", addr(&vector));
  return unit(vector, lineVector_) ? 1 : 0;
}

int hcConstraint::getLineVector(hVector &vector) {
  OpRecord rec("hcConstraint::getLineVector", addr(&vector));
  vector = lineVector_;
  return 1;
}

int hcConstraint::setPlaneNormal(hVector &vector) {
  OpRecord rec("hcConstraint::setPlaneNormal", addr(&vector));
  return unit(vector, planeNormal_) ? 1 : 0;
}

int hcConstraint::getPlaneNormal(hVector &vector) {
  OpRecord rec("hcConstraint::getPlaneNormal", addr(&vector));
  vector = planeNormal_;
  return 1;
}

int hcConstraint::setAimDirection(hVector &vector) {
  OpRecord rec("hcConstraint::setAimDirection", addr(&vector));
  return unit(vector, aimDirection_) ? 1 : 0;
}

int hcConstraint::getAimDirection(hVector &vector) {
  OpRecord rec("hcConstraint::getAimDirection", addr(&vector));
  vector = aimDirection_;
  return 1;
}

int hcConstraint::setDirectionVectors(hVector &endEffectorVector, hVector &goalVector) {
  OpRecord rec("hcConstraint::setDirectionVectors", addr(&endEffectorVector), addr(&goalVector));
  hVector e, g;
  if (!unit(endEffectorVector, e) || !unit(goalVector, g)) return 0;
  dirEffector_ = e;
  dirGoal_ = g;
  return 1;
}

int hcConstraint::getDirectionVectors(hVector &endEffectorVector, hVector &goalVector) {
  OpRecord rec("hcConstraint::getDirectionVectors", addr(&endEffectorVector), addr(&goalVector));
  endEffectorVector = dirEffector_;
  goalVector = dirGoal_;
  return 1;
}

int hcConstraint::setPlaneNormalVectors(hVector &endEffectorVector, hVector &goalVector) {
  OpRecord rec("hcConstraint::setPlaneNormalVectors", addr(&endEffectorVector), addr(&goalVector));
  hVector e, g;
  if (!unit(endEffectorVector, e) || !unit(goalVector, g)) return 0;
  normalEffector_ = e;
  normalGoal_ = g;
  return 1;
}

int hcConstraint::getPlaneNormalVectors(hVector &endEffectorVector, hVector &goalVector) {
  OpRecord rec("hcConstraint::getPlaneNormalVectors", addr(&endEffectorVector), addr(&goalVector));
  endEffectorVector = normalEffector_;
  goalVector = normalGoal_;
  return 1;
}

// ---------------------------------------------------------------------------
// Goals.

void hcConstraint::goalChanged() { history_.clear(); }

void hcConstraint::setGoalSite(hcSite *site) {
  OpRecord rec("hcConstraint::setGoalSite", site);
  goal_ = site ? Goal::Site : Goal::None;
  goalSite_ = site;
  goalSegment_ = nullptr;
  goalIndex_ = -1;
  goalChanged();
}

hcSite *hcConstraint::getGoalSite() {
  OpRecord rec("hcConstraint::getGoalSite");
  return goal_ == Goal::Site ? goalSite_ : nullptr;
}

void hcConstraint::setGoalNode(hcSegment *segment, int node) {
  OpRecord rec("hcConstraint::setGoalNode", segment, node);
  if (segment && (node < 0 || node >= hcSegment::kNodes)) return;
  goal_ = segment ? Goal::Node : Goal::None;
  goalSite_ = nullptr;
  goalSegment_ = segment;
  goalIndex_ = segment ? node : -1;
  goalChanged();
}

int hcConstraint::getGoalNode() {
  OpRecord rec("hcConstraint::getGoalNode");
  return goal_ == Goal::Node ? goalIndex_ : -1;
}

void hcConstraint::setGoalFace(hcSegment *segment, int face) {
  OpRecord rec("hcConstraint::setGoalFace", segment, face);
  if (segment && (face < 0 || face >= hcSegment::kFaces)) return;
  goal_ = segment ? Goal::Face : Goal::None;
  goalSite_ = nullptr;
  goalSegment_ = segment;
  goalIndex_ = segment ? face : -1;
  goalChanged();
}

int hcConstraint::getGoalFace() {
  OpRecord rec("hcConstraint::getGoalFace");
  return goal_ == Goal::Face ? goalIndex_ : -1;
}

void hcConstraint::setGoalRelativeSegment(hcSegment *segment, hMatrix &matrix) {
  OpRecord rec("hcConstraint::setGoalRelativeSegment", segment, addr(&matrix));
  goal_ = segment ? Goal::Relative : Goal::None;
  goalSite_ = nullptr;
  goalSegment_ = segment;
  goalIndex_ = -1;
  goalMatrix_ = segment ? matrix : hMatrix();
  goalChanged();
}

void hcConstraint::setGoalTransform(hMatrix &matrix) {
  OpRecord rec("hcConstraint::setGoalTransform", addr(&matrix));
  goal_ = Goal::Transform;
  goalSite_ = nullptr;
  goalSegment_ = nullptr;
  goalIndex_ = -1;
  goalMatrix_ = matrix;
  goalChanged();
}

void hcConstraint::updateGoalTransform(hMatrix &trans) {
  OpRecord rec("hcConstraint::updateGoalTransform", addr(&trans));
  if (goal_ != Goal::Transform && goal_ != Goal::Relative) return;
  goalMatrix_ = trans;
  goalChanged();
}

hcSegment *hcConstraint::getGoalSegment() {
  OpRecord rec("hcConstraint::getGoalSegment");
  switch (goal_) {
    case Goal::Site: return goalSite_->getSegment();
    case Goal::Node:
    case Goal::Face:
    case Goal::Relative: return goalSegment_;
    default: return nullptr;
  }
}

int hcConstraint::getGoalType() {
  OpRecord rec("hcConstraint::getGoalType");
  switch (goal_) {
    case Goal::Site: return hcValue::V_SITE;
    case Goal::Node: return hcValue::V_NODE;
    case Goal::Face: return hcValue::V_FACE;
    case Goal::Transform: return hcValue::V_MATRIX;
    case Goal::Relative: return hcValue::V_SEGMENT;
    case Goal::Joint: return hcValue::V_JOINTANGLE;
    default: return hcValue::V_UNDEF;
  }
}

int hcConstraint::getGoalTransform(hMatrix &G) {
  OpRecord rec("hcConstraint::getGoalTransform", addr(&G));
  hMatrix frame;
  if (!goalFrame(frame)) return 0;
  G = frame;
  return 1;
}

int hcConstraint::getGoal(hMatrix &T) {
  OpRecord rec("hcConstraint::getGoal", addr(&T));
  hMatrix frame;
  if (!aimFrame(frame)) return 0;
  T = frame;
  return 1;
}

int hcConstraint::getGoalPoint(hVector &point) {
  OpRecord rec("hcConstraint::getGoalPoint", addr(&point));
  hMatrix frame;
  if (!aimFrame(frame)) return 0;
  point = origin(frame);
  return 1;
}

int hcConstraint::initializeGoal() {
  OpRecord rec("hcConstraint::initializeGoal");
  hMatrix E;
  if (!effectorFrame(E)) return 0;
  goal_ = Goal::Transform;
  goalSite_ = nullptr;
  goalSegment_ = nullptr;
  goalIndex_ = -1;
  goalMatrix_ = E;
  useOriOffset_ = usePosOffset_ = 0;
  offset_ = hMatrix();
  goalChanged();
  return 1;
}

void hcConstraint::useOffset(int useOriOffset, int usePosOffset) {
  OpRecord rec("hcConstraint::useOffset", useOriOffset, usePosOffset);
  if (!useOriOffset && !usePosOffset) {
    useOriOffset_ = usePosOffset_ = 0;
    offset_ = hMatrix();
    goalChanged();
    return;
  }
  hMatrix E, G;
  if (!effectorFrame(E) || !goalFrame(G)) return;
  offset_ = mul(inverse(G), E);
  useOriOffset_ = useOriOffset ? 1 : 0;
  usePosOffset_ = usePosOffset ? 1 : 0;
  goalChanged();
}

int hcConstraint::useDisplacement() {
  OpRecord rec("hcConstraint::useDisplacement");
  return useOriOffset_ || usePosOffset_ ? 1 : 0;
}

int hcConstraint::getGoalDisplacement(hMatrix &matrix) {
  OpRecord rec("hcConstraint::getGoalDisplacement", addr(&matrix));
  bool used = useOriOffset_ || usePosOffset_;
  matrix = used ? offset_ : hMatrix();
  return used ? 1 : 0;
}

// ---------------------------------------------------------------------------
// End effectors and the chain.

void hcConstraint::setEndEffectorSite(hcSite *site) {
  OpRecord rec("hcConstraint::setEndEffectorSite", site);
  effector_ = site ? Effector::Site : Effector::None;
  effectorSite_ = site;
  effectorSegment_ = nullptr;
  effectorNode_ = -1;
  goalChanged();
}

hcSite *hcConstraint::getEndEffectorSite() {
  OpRecord rec("hcConstraint::getEndEffectorSite");
  return effector_ == Effector::Site ? effectorSite_ : nullptr;
}

void hcConstraint::setEndEffectorNode(hcSegment *segment, int node) {
  OpRecord rec("hcConstraint::setEndEffectorNode", segment, node);
  if (segment && (node < 0 || node >= hcSegment::kNodes)) return;
  effector_ = segment ? Effector::Node : Effector::None;
  effectorSite_ = nullptr;
  effectorSegment_ = segment;
  effectorNode_ = segment ? node : -1;
  goalChanged();
}

int hcConstraint::getEndEffectorNode() {
  OpRecord rec("hcConstraint::getEndEffectorNode");
  return effector_ == Effector::Node ? effectorNode_ : -1;
}

int hcConstraint::getEndEffectorType() {
  OpRecord rec("hcConstraint::getEndEffectorType");
  switch (effector_) {
    case Effector::Site: return hcValue::V_SITE;
    case Effector::Node: return hcValue::V_NODE;
    default: return hcValue::V_UNDEF;
  }
}

hcSegment *hcConstraint::getEndEffectorSegment() {
  OpRecord rec("hcConstraint::getEndEffectorSegment");
  switch (effector_) {
    case Effector::Site: return effectorSite_->getSegment();
    case Effector::Node: return effectorSegment_;
    default: return nullptr;
  }
}

hcFigure *hcConstraint::getEndEffectorFigure() {
  OpRecord rec("hcConstraint::getEndEffectorFigure");
  hcSegment *seg = getEndEffectorSegment();
  return seg ? seg->getFigure() : nullptr;
}

int hcConstraint::getEndEffectorTransform(hMatrix &E) {
  OpRecord rec("hcConstraint::getEndEffectorTransform", addr(&E));
  hMatrix frame;
  if (!effectorFrame(frame)) return 0;
  E = frame;
  return 1;
}

int hcConstraint::setStartJoint(hcJoint *joint) {
  OpRecord rec("hcConstraint::setStartJoint", joint);
  if (joint && effector_ != Effector::None) {
    std::vector<hcJoint *> path = chain(nullptr);
    if (std::find(path.begin(), path.end(), joint) == path.end()) return 0;
  }
  startJoint_ = joint;
  goalChanged();
  return 1;
}

hcJoint *hcConstraint::getStartJoint() {
  OpRecord rec("hcConstraint::getStartJoint");
  return startJoint_;
}

hList *hcConstraint::getJoints() {
  OpRecord rec("hcConstraint::getJoints");
  const auto joints = chain(startJoint_);
  return jointList_.answer(std::vector<void *>(joints.begin(), joints.end()));
}

// ---------------------------------------------------------------------------
// Joint constraints.

hcConstraint *hcConstraint::setPreferredAngle(hcJoint *joint) {
  OpRecord rec("hcConstraint::setPreferredAngle", joint);
  if (!joint) return nullptr;
  auto *c = new hcConstraint((std::string(joint->getName()) + "_preferred").c_str());
  c->joint_ = joint;
  c->goal_ = Goal::Joint;
  c->orientationType_ = C_NONE;
  c->positionType_ = C_RESTANGLE;
  return c;
}

hcConstraint *hcConstraint::setJointLimitSpring(hcJoint *joint, float *minAngle) {
  OpRecord rec("hcConstraint::setJointLimitSpring", joint, minAngle);
  if (!joint || !minAngle) return nullptr;
  auto *c = new hcConstraint((std::string(joint->getName()) + "_limit").c_str());
  c->joint_ = joint;
  c->goal_ = Goal::Joint;
  c->orientationType_ = C_NONE;
  c->positionType_ = C_JOINTLIMIT;
  c->bound_.assign(minAngle, minAngle + std::max(0, joint->getNDOFs()));
  return c;
}

// ---------------------------------------------------------------------------
// Type tables.

hcTypeTable *hcConstraint::getGoalTypeTable() {
  OpRecord rec("hcConstraint::getGoalTypeTable");
  return table("constraintGoalTypes", kGoalTypes);
}

hcTypeTable *hcConstraint::getEndEffectorTypeTable() {
  OpRecord rec("hcConstraint::getEndEffectorTypeTable");
  return table("constraintEndEffectorTypes", kEffectorTypes);
}

hcTypeTable *hcConstraint::getOrientationTypeTable() {
  OpRecord rec("hcConstraint::getOrientationTypeTable");
  return table("constraintOrientationTypes", kOrientationTypes);
}

hcTypeTable *hcConstraint::getPositionTypeTable() {
  OpRecord rec("hcConstraint::getPositionTypeTable");
  return table("constraintPositionTypes", kPositionTypes);
}
