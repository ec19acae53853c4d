// hcConstraint: frames of the end effector and the goal, the potential, the
// joint chain and the damped least-squares solver behind evaluate.
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

// The weighted residual rows of the objectives at the present pose, and the
// errors they stand for: distance (metres, or radians for the joint kinds)
// and angle (radians).  The solver drives the rows to zero; the potential is
// distance + poWeight * angle.
void hcConstraint::residual(const hMatrix &E, const hMatrix &T, std::vector<double> &rows,
                            double &distance, double &angle) {
  rows.clear();
  distance = angle = 0;
  const hVector e = origin(E), g = origin(T);
  const hVector d = minus(e, g);
  auto push3 = [&](const hVector &v, double scale) {
    for (int i = 0; i < 3; ++i) rows.push_back(scale * v.v[i]);
  };
  switch (positionType_) {
    case C_POS:
      push3(d, 1);
      distance = std::sqrt(squared(d));
      break;
    case C_LINE: {
      hVector u = rotate(T, lineVector_);
      const double along = dot(d, u);
      const hVector off(float(d.v[0] - along * u.v[0]), float(d.v[1] - along * u.v[1]),
                        float(d.v[2] - along * u.v[2]));
      push3(off, 1);
      distance = std::sqrt(squared(off));
      break;
    }
    case C_PLANE:
    case C_HALFSPACE: {
      double off = dot(d, rotate(T, planeNormal_));
      if (positionType_ == C_HALFSPACE && off > 0) off = 0;  // only from behind the plane
      rows.push_back(off);
      distance = std::fabs(off);
      break;
    }
    default:
      break;
  }
  const double w = std::sqrt(std::max(0.0f, poWeight_));
  // Angle between two unit directions, accurate near 0 and near pi.
  auto between = [](const hVector &a, const hVector &b) {
    const double c[3] = {double(a.v[1]) * b.v[2] - double(a.v[2]) * b.v[1],
                         double(a.v[2]) * b.v[0] - double(a.v[0]) * b.v[2],
                         double(a.v[0]) * b.v[1] - double(a.v[1]) * b.v[0]};
    return std::atan2(std::sqrt(c[0] * c[0] + c[1] * c[1] + c[2] * c[2]), dot(a, b));
  };
  auto unit = [](hVector v) {
    const double n = std::sqrt(squared(v));
    if (n > 1e-12)
      for (float &x : v.v) x = float(x / n);
    return v;
  };
  switch (orientationType_) {
    case C_FRAME: {
      // The rotation between the frames: sin from the axes' cross products,
      // cos from the trace, so that small angles keep their precision.
      double trace = 0, axis[3] = {0, 0, 0};
      for (int ax = 0; ax < 3; ++ax) {
        const hVector a = axisOf(E, ax), b = axisOf(T, ax);
        push3(minus(a, b), w);
        trace += dot(a, b);
        axis[0] += 0.5 * (double(a.v[1]) * b.v[2] - double(a.v[2]) * b.v[1]);
        axis[1] += 0.5 * (double(a.v[2]) * b.v[0] - double(a.v[0]) * b.v[2]);
        axis[2] += 0.5 * (double(a.v[0]) * b.v[1] - double(a.v[1]) * b.v[0]);
      }
      angle = std::atan2(std::sqrt(axis[0] * axis[0] + axis[1] * axis[1] + axis[2] * axis[2]), (trace - 1) / 2);
      break;
    }
    case C_AIM: {
      const hVector toGoal = minus(g, e);
      if (squared(toGoal) < 1e-24) break;  // at the goal: any direction aims at it
      const hVector a = unit(rotate(E, aimDirection_)), want = unit(toGoal);
      push3(minus(a, want), w);
      angle = between(a, want);
      break;
    }
    case C_DIR: {
      const hVector a = unit(rotate(E, dirEffector_)), want = unit(rotate(T, dirGoal_));
      push3(minus(a, want), w);
      angle = between(a, want);
      break;
    }
    default:
      break;
  }
}

// Rows of the joint kinds: each DOF's distance from its rest value, or the
// amount by which it lies below its spring's minimum.
void hcConstraint::jointRows(std::vector<double> &rows, double &distance) {
  double sum = 0;
  if (positionType_ == C_RESTANGLE) {
    for (hcJoint *j : chain(startJoint_)) {
      std::vector<float> v = values(j), rest(v.size());
      if (!v.empty()) j->getRest(rest.data());
      for (std::size_t k = 0; k < v.size(); ++k) rows.push_back(double(v[k]) - rest[k]);
    }
  } else if (positionType_ == C_JOINTLIMIT && joint_) {
    std::vector<float> v = values(joint_);
    for (std::size_t k = 0; k < v.size() && k < bound_.size(); ++k)
      rows.push_back(std::max(0.0, double(bound_[k]) - v[k]));
  }
  for (double r : rows) sum += r * r;
  distance = std::sqrt(sum);
}

// Rows and errors at the present pose; false when the frames cannot be
// read.
bool hcConstraint::measure(std::vector<double> &rows, double &distance, double &angle) {
  rows.clear();
  distance = angle = 0;
  if (needsGoal()) {
    hMatrix E, T;
    if (!effectorFrame(E) || !aimFrame(T)) return false;
    residual(E, T, rows, distance, angle);
  }
  if (positionType_ == C_RESTANGLE || positionType_ == C_JOINTLIMIT) jointRows(rows, distance);
  return true;
}

float hcConstraint::potential() {
  std::vector<double> rows;
  double distance, angle;
  if (!modelled() || !measure(rows, distance, angle)) return 0;
  return float(distance + double(poWeight_) * angle);
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

namespace {

// Solves the symmetric positive definite system A x = b (n by n, row
// major) by Cholesky factorisation; false when A is not positive definite.
bool solveSpd(std::vector<double> A, std::vector<double> &b, int n) {
  for (int j = 0; j < n; ++j) {
    double d = A[j * n + j];
    for (int k = 0; k < j; ++k) d -= A[j * n + k] * A[j * n + k];
    if (!(d > 0)) return false;
    d = std::sqrt(d);
    A[j * n + j] = d;
    for (int i = j + 1; i < n; ++i) {
      double v = A[i * n + j];
      for (int k = 0; k < j; ++k) v -= A[i * n + k] * A[j * n + k];
      A[i * n + j] = v / d;
    }
  }
  for (int i = 0; i < n; ++i) {  // L y = b
    double v = b[i];
    for (int k = 0; k < i; ++k) v -= A[i * n + k] * b[k];
    b[i] = v / A[i * n + i];
  }
  for (int i = n - 1; i >= 0; --i) {  // L^T x = y
    double v = b[i];
    for (int k = i + 1; k < n; ++k) v -= A[k * n + i] * b[k];
    b[i] = v / A[i * n + i];
  }
  return true;
}

double sumOfSquares(const std::vector<double> &rows) {
  double s = 0;
  for (double r : rows) s += r * r;
  return s;
}

}  // namespace

bool hcConstraint::met(double distance, double angle) const {
  return distance <= kMetDistance && angle <= kMetAngle;
}

// The length of the chain from its root-side joint to the end effector,
// through each joint of it; 1 when there is nothing to measure.
double hcConstraint::chainLength(const std::vector<Dof> &all) {
  std::vector<hVector> points;
  hcJoint *last = nullptr;
  for (auto it = all.rbegin(); it != all.rend(); ++it) {
    if (it->joint == last) continue;
    last = it->joint;
    if (hcSite *s = it->joint->getRootSite()) {
      hVector p;
      s->getGlobalPosition(p);
      points.push_back(p);
    }
  }
  hMatrix E;
  if (effector_ != Effector::None && effectorFrame(E)) points.push_back(origin(E));
  double length = 0;
  for (std::size_t i = 1; i < points.size(); ++i) length += std::sqrt(squared(minus(points[i], points[i - 1])));
  return length > 0 ? length : 1.0;
}

int hcConstraint::solve(float timelimit, float stepfactor) {
  if (!modelled()) return -1;
  std::vector<double> rows;
  double distance, angle;
  if (needsGoal()) {
    hMatrix T;
    if (!aimFrame(T)) return -1;
    for (const auto &row : T.m)
      for (float x : row)
        if (!std::isfinite(x)) return -1;
  }
  if (!measure(rows, distance, angle)) return -1;
  if (!active_ || weight_ == 0 || history_.throttled()) return 2;

  using Clock = std::chrono::steady_clock;
  const auto start = Clock::now();
  const bool timed = timelimit > 0;
  const double factor = std::isfinite(stepfactor) && stepfactor > 0 ? stepfactor : 0.1;

  std::vector<Dof> all = dofs();
  const int n = static_cast<int>(all.size());
  // The chain's values, read and written one joint at a time.
  auto read = [&](std::vector<double> &q) {
    q.assign(n, 0);
    for (int k = 0; k < n; ++k) q[k] = values(all[k].joint)[all[k].index];
  };
  auto write = [&](const std::vector<double> &q) {
    for (int k = 0; k < n; ++k) {
      std::vector<float> v = values(all[k].joint);
      v[all[k].index] = float(q[k]);
      all[k].joint->setAngles(v.data(), 1);
    }
  };
  auto limited = [&](int k, double x) {
    const double hi = std::max(all[k].lower, all[k].upper);
    return std::clamp(x, double(all[k].lower), hi);
  };

  std::vector<double> q;
  read(q);
  double error = sumOfSquares(rows);
  double lambda = 0.1;
  const double reach = factor * chainLength(all);
  for (int iteration = 0; iteration < kIterations && n > 0 && !met(distance, angle); ++iteration) {
    if (timed && std::chrono::duration<double>(Clock::now() - start).count() >= timelimit) break;
    const int m = static_cast<int>(rows.size());
    if (m == 0) break;
    // Jacobian by forward differences.
    std::vector<double> J(static_cast<std::size_t>(m) * n, 0.0), moved;
    double dm, am;
    for (int k = 0; k < n; ++k) {
      std::vector<double> qk = q;
      const double h = qk[k] + kDifference <= std::max(all[k].lower, all[k].upper) ? kDifference : -kDifference;
      qk[k] += h;
      write(qk);
      measure(moved, dm, am);
      for (int i = 0; i < m && i < static_cast<int>(moved.size()); ++i) J[i * n + k] = (moved[i] - rows[i]) / h;
    }
    write(q);
    // The error to remove this iteration, its length clamped to the reach.
    std::vector<double> target(rows.size());
    const double length = std::sqrt(error);
    const double scale = length > reach ? reach / length : 1.0;
    for (int i = 0; i < m; ++i) target[i] = -rows[i] * scale;

    std::vector<bool> dropped(n, false);
    bool accepted = false;
    while (!accepted && lambda < kMaxDamping) {
      // Damped step; DOFs that the step would push past a limit they sit on
      // are dropped and the step is taken again without them.
      std::vector<double> step(n, 0.0);
      for (int pass = 0; pass <= n; ++pass) {
        std::vector<double> A(static_cast<std::size_t>(m) * m, 0.0), y = target;
        for (int i = 0; i < m; ++i)
          for (int j = 0; j < m; ++j) {
            double v = 0;
            for (int k = 0; k < n; ++k)
              if (!dropped[k]) v += J[i * n + k] * J[j * n + k];
            A[i * m + j] = v + (i == j ? lambda * lambda : 0.0);
          }
        if (!solveSpd(A, y, m)) break;
        bool again = false;
        for (int k = 0; k < n; ++k) {
          step[k] = 0;
          if (dropped[k]) continue;
          for (int i = 0; i < m; ++i) step[k] += J[i * n + k] * y[i];
          if (limited(k, q[k] + step[k]) == q[k] && step[k] != 0) {
            dropped[k] = true;
            again = true;
          }
        }
        if (!again) break;
      }
      // No DOF turns (or slides) further than kMaxStep in one iteration.
      double largest = 0;
      for (double x : step) largest = std::max(largest, std::fabs(x));
      if (largest > kMaxStep)
        for (double &x : step) x *= kMaxStep / largest;
      std::vector<double> next(n);
      for (int k = 0; k < n; ++k) next[k] = limited(k, q[k] + step[k]);
      write(next);
      std::vector<double> nextRows;
      double nd, na;
      measure(nextRows, nd, na);
      const double nextError = sumOfSquares(nextRows);
      if (nextError < error) {
        q = next;
        rows = nextRows;
        distance = nd;
        angle = na;
        accepted = error - nextError > 1e-18 * (1 + error);
        error = nextError;
        lambda = std::max(kMinDamping, lambda / 2);
        if (!accepted) break;  // stalled
      } else {
        write(q);
        lambda *= 4;
      }
    }
    if (!accepted) break;
  }
  write(q);
  const float p = float(distance + double(poWeight_) * angle);
  history_.record(p);
  return met(distance, angle) ? 1 : 0;
}
