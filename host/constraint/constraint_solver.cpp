// hcConstraint: frames of the end effector and the goal, the potential, the
// joint chain and the pattern-search solver behind evaluate.
#include <algorithm>
#include <chrono>
#include <cmath>

#include "host/constraint.h"
#include "figure/figure_detail.h"

using namespace hcfigure_detail;

namespace {

// Column ax of the rotation part.
hVector axisOf(const hMatrix &m, int ax) { return hVector(m.m[0][ax], m.m[1][ax], m.m[2][ax]); }

// The rotation part of m applied to a direction.
hVector rotate(const hMatrix &m, const hVector &d) {
  hVector r;
  for (int i = 0; i < 3; ++i) r.v[i] = m.m[i][0] * d.v[0] + m.m[i][1] * d.v[1] + m.m[i][2] * d.v[2];
  return r;
}

double dot(const hVector &a, const hVector &b) {
  return double(a.v[0]) * b.v[0] + double(a.v[1]) * b.v[1] + double(a.v[2]) * b.v[2];
}

hVector minus(const hVector &a, const hVector &b) {
  return hVector(a.v[0] - b.v[0], a.v[1] - b.v[1], a.v[2] - b.v[2]);
}

double squared(const hVector &a) { return dot(a, a); }

// Values of a joint's DOFs in internal units.
std::vector<float> values(hcJoint *j) {
  std::vector<float> v(static_cast<std::size_t>(std::max(0, j->getNDOFs())));
  if (!v.empty()) j->getAngles(v.data(), 1);
  return v;
}

}  // namespace

// ---------------------------------------------------------------------------
// Frames.

bool hcConstraint::effectorFrame(hMatrix &E) {
  switch (effector_) {
    case Effector::Site:
      effectorSite_->getGlobal(E);
      return true;
    case Effector::Node:
      return effectorSegment_->getNodeGlobal(effectorNode_, E) != 0;
    default:
      return false;
  }
}

bool hcConstraint::goalFrame(hMatrix &G) {
  switch (goal_) {
    case Goal::Site:
      goalSite_->getGlobal(G);
      return true;
    case Goal::Node:
      return goalSegment_->getNodeGlobal(goalIndex_, G) != 0;
    case Goal::Face: {
      // The nodes on the low or high side of one axis of the box.
      const int axis = 2 - goalIndex_ / 2, side = goalIndex_ % 2;
      goalSegment_->getGlobal(G);
      hVector centre;
      for (int n = 0; n < hcSegment::kNodes; ++n) {
        if (((n >> axis) & 1) != side) continue;
        hMatrix node;
        goalSegment_->getNodeGlobal(n, node);
        for (int i = 0; i < 3; ++i) centre.v[i] += node.m[i][3] / 4;
      }
      for (int i = 0; i < 3; ++i) G.m[i][3] = centre.v[i];
      return true;
    }
    case Goal::Transform:
      G = goalMatrix_;
      return true;
    case Goal::Relative: {
      hMatrix S;
      goalSegment_->getGlobal(S);
      G = mul(S, goalMatrix_);
      return true;
    }
    default:
      return false;
  }
}

bool hcConstraint::aimFrame(hMatrix &T) {
  hMatrix G;
  if (!goalFrame(G)) return false;
  if (!useOriOffset_ && !usePosOffset_) {
    T = G;
    return true;
  }
  hMatrix part;  // the selected parts of the recorded offset
  for (int i = 0; i < 3; ++i) {
    if (useOriOffset_)
      for (int k = 0; k < 3; ++k) part.m[i][k] = offset_.m[i][k];
    if (usePosOffset_) part.m[i][3] = offset_.m[i][3];
  }
  T = mul(G, part);
  return true;
}

// ---------------------------------------------------------------------------
// Objectives and the potential.

bool hcConstraint::needsGoal() const {
  switch (positionType_) {
    case C_POS: case C_LINE: case C_PLANE: case C_HALFSPACE: return true;
    default: break;
  }
  switch (orientationType_) {
    case C_FRAME: case C_AIM: case C_DIR: return true;
    default: return false;
  }
}

bool hcConstraint::modelled() const {
  switch (orientationType_) {
    case C_NONE: case C_FRAME: case C_AIM: case C_DIR: break;
    default: return false;
  }
  switch (positionType_) {
    case C_NONE: case C_POS: case C_LINE: case C_PLANE: case C_HALFSPACE: case C_RESTANGLE:
      return true;
    case C_JOINTLIMIT:
      return joint_ != nullptr;
    default:
      return false;
  }
}

float hcConstraint::positionTerm(const hMatrix &E, const hMatrix &T) {
  const hVector d = minus(origin(E), origin(T));
  switch (positionType_) {
    case C_POS:
      return float(squared(d));
    case C_LINE: {
      const hVector u = rotate(T, lineVector_);
      const double along = dot(d, u);
      return float(std::max(0.0, squared(d) - along * along));
    }
    case C_PLANE: {
      const double off = dot(d, rotate(T, planeNormal_));
      return float(off * off);
    }
    case C_HALFSPACE: {
      const double off = dot(d, rotate(T, planeNormal_));
      return off < 0 ? float(off * off) : 0.0f;
    }
    default:
      return 0;
  }
}

float hcConstraint::orientationTerm(const hMatrix &E, const hMatrix &T) {
  switch (orientationType_) {
    case C_FRAME: {
      double sum = 0;
      for (int ax = 0; ax < 3; ++ax) sum += squared(minus(axisOf(E, ax), axisOf(T, ax)));
      return float(sum);
    }
    case C_AIM: {
      const hVector toGoal = minus(origin(T), origin(E));
      const double len = std::sqrt(squared(toGoal));
      if (len < 1e-12) return 0;
      const hVector w(float(toGoal.v[0] / len), float(toGoal.v[1] / len), float(toGoal.v[2] / len));
      return float(squared(minus(rotate(E, aimDirection_), w)));
    }
    case C_DIR:
      return float(squared(minus(rotate(E, dirEffector_), rotate(T, dirGoal_))));
    default:
      return 0;
  }
}

float hcConstraint::jointTerm() {
  double sum = 0;
  if (positionType_ == C_RESTANGLE) {
    for (hcJoint *j : chain(startJoint_)) {
      std::vector<float> v = values(j), rest(v.size());
      if (!v.empty()) j->getRest(rest.data());
      for (std::size_t k = 0; k < v.size(); ++k) sum += double(v[k] - rest[k]) * (v[k] - rest[k]);
    }
  } else if (positionType_ == C_JOINTLIMIT && joint_) {
    std::vector<float> v = values(joint_);
    for (std::size_t k = 0; k < v.size() && k < bound_.size(); ++k) {
      const double below = double(bound_[k]) - v[k];
      if (below > 0) sum += below * below;
    }
  }
  return float(sum);
}

float hcConstraint::potential() {
  double pos = 0, ori = 0;
  if (needsGoal()) {
    hMatrix E, T;
    if (!effectorFrame(E) || !aimFrame(T)) return 0;
    pos = positionTerm(E, T);
    ori = orientationTerm(E, T);
  }
  pos += jointTerm();
  return float(pos + double(poWeight_) * ori);
}

float hcConstraint::getPotential() {
  OpRecord rec("hcConstraint::getPotential");
  return potential();
}

// ---------------------------------------------------------------------------
// The chain.

std::vector<hcJoint *> hcConstraint::chain(hcJoint *stopAt) {
  if (joint_) return {joint_};
  std::vector<hcJoint *> out;
  hcSegment *seg = nullptr;
  if (effector_ == Effector::Site) seg = effectorSite_->getSegment();
  if (effector_ == Effector::Node) seg = effectorSegment_;
  // Each step goes one joint nearer the root; a tree ends.
  while (seg) {
    hcSite *hang = seg->getRootSite();
    hcJoint *j = hang ? hang->getRootJoint() : nullptr;
    if (!j || std::find(out.begin(), out.end(), j) != out.end()) break;
    out.push_back(j);
    if (j == stopAt) break;
    hcSite *parent = j->getOtherSite(hang);
    seg = parent ? parent->getSegment() : nullptr;
  }
  return out;
}

std::vector<hcConstraint::Dof> hcConstraint::dofs() {
  std::vector<Dof> out;
  for (hcJoint *j : chain(startJoint_)) {
    if (j->getFrozen()) continue;
    const int n = j->getNDOFs();
    if (n <= 0) continue;
    std::vector<float> lower(n), upper(n);
    j->getLowerLimits(lower.data(), 1);
    j->getUpperLimits(upper.data(), 1);
    for (int k = 0; k < n; ++k) out.push_back({j, k, lower[k], upper[k]});
  }
  return out;
}

// ---------------------------------------------------------------------------
// The solver.

int hcConstraint::evaluate(hcConstraint *c, float timelimit, float stepfactor) {
  OpRecord rec("hcConstraint::evaluate", c, timelimit, stepfactor);
  if (!isRegistered(c)) return -1;
  return c->solve(timelimit, stepfactor);
}

int hcConstraint::solve(float timelimit, float stepfactor) {
  if (!active_ || !modelled()) return -1;
  if (needsGoal()) {
    hMatrix E, T;
    if (!effectorFrame(E) || !aimFrame(T)) return -1;
  }
  float p = potential();
  if (history_.throttled()) return p <= kTolerance ? 1 : 0;

  using Clock = std::chrono::steady_clock;
  const auto start = Clock::now();
  const bool timed = timelimit > 0;
  const int sweeps = timed ? kMaxSweeps : kSweeps;
  const float first = std::isfinite(stepfactor) && stepfactor > 0 ? stepfactor : 0.0f;

  std::vector<Dof> all = dofs();
  std::vector<float> step(all.size(), first);
  for (int sweep = 0; sweep < sweeps && p > kTolerance; ++sweep) {
    if (timed && sweep > 0 &&
        std::chrono::duration<double>(Clock::now() - start).count() >= timelimit)
      break;
    bool moving = false;
    for (std::size_t k = 0; k < all.size() && p > kTolerance; ++k) {
      if (!(step[k] >= kMinStep)) continue;
      moving = true;
      const Dof &d = all[k];
      std::vector<float> v = values(d.joint);
      if (static_cast<std::size_t>(d.index) >= v.size()) continue;
      const float was = v[d.index];
      bool better = false;
      for (float dir : {1.0f, -1.0f}) {
        const float next = std::clamp(was + dir * step[k], d.lower, std::max(d.lower, d.upper));
        if (next == was) continue;
        v[d.index] = next;
        d.joint->setAngles(v.data(), 1);
        const float q = potential();
        if (q < p) {
          p = q;
          better = true;
          break;
        }
        v[d.index] = was;
        d.joint->setAngles(v.data(), 1);
      }
      if (!better) step[k] *= 0.5f;
    }
    if (!moving) break;
  }
  history_.record(p);
  return p <= kTolerance ? 1 : 0;
}
