// Host library: the motion kinds and the motion factory.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

#include "host/constraint.h"
#include "host/figure.h"
#include "host/motion.h"
#include "figure/figure_detail.h"

using hcfigure_detail::addr;
using hcfigure_detail::OpRecord;

namespace hcmotion_detail {
std::vector<hcMotion *> &registry();
hcTypeTable *table(const char *name, std::initializer_list<std::pair<const char *, int>> entries);
}  // namespace hcmotion_detail

namespace {

std::string nameOf(hcObject *o) { return o && o->name && *o->name ? o->name : "-"; }

std::string number(double d) {
  char buf[32];
  std::snprintf(buf, sizeof buf, "%g", d);
  return buf;
}

std::string numbers(const hVector &v) {
  return number(v.v[0]) + ' ' + number(v.v[1]) + ' ' + number(v.v[2]);
}

bool positive(const hVector &v) {
  for (float x : v.v)
    if (!(x > 0) || !std::isfinite(x)) return false;
  return true;
}

hVector mix(const hVector &a, const hVector &b, float p) {
  hVector r;
  for (int i = 0; i < 3; ++i) r.v[i] = a.v[i] + (b.v[i] - a.v[i]) * p;
  return r;
}

// Rotations as unit quaternions, for interpolating locations.
struct Quat {
  double w, x, y, z;
};

Quat toQuat(const hMatrix &m) {
  const double t = double(m.m[0][0]) + m.m[1][1] + m.m[2][2];
  Quat q;
  if (t > 0) {
    double s = std::sqrt(t + 1.0) * 2;
    q = {s / 4, (m.m[2][1] - m.m[1][2]) / s, (m.m[0][2] - m.m[2][0]) / s, (m.m[1][0] - m.m[0][1]) / s};
  } else if (m.m[0][0] > m.m[1][1] && m.m[0][0] > m.m[2][2]) {
    double s = std::sqrt(1.0 + m.m[0][0] - m.m[1][1] - m.m[2][2]) * 2;
    q = {(m.m[2][1] - m.m[1][2]) / s, s / 4, (m.m[0][1] + m.m[1][0]) / s, (m.m[0][2] + m.m[2][0]) / s};
  } else if (m.m[1][1] > m.m[2][2]) {
    double s = std::sqrt(1.0 + m.m[1][1] - m.m[0][0] - m.m[2][2]) * 2;
    q = {(m.m[0][2] - m.m[2][0]) / s, (m.m[0][1] + m.m[1][0]) / s, s / 4, (m.m[1][2] + m.m[2][1]) / s};
  } else {
    double s = std::sqrt(1.0 + m.m[2][2] - m.m[0][0] - m.m[1][1]) * 2;
    q = {(m.m[1][0] - m.m[0][1]) / s, (m.m[0][2] + m.m[2][0]) / s, (m.m[1][2] + m.m[2][1]) / s, s / 4};
  }
  double n = std::sqrt(q.w * q.w + q.x * q.x + q.y * q.y + q.z * q.z);
  if (!(n > 0)) return {1, 0, 0, 0};
  return {q.w / n, q.x / n, q.y / n, q.z / n};
}

void setRotation(hMatrix &m, const Quat &q) {
  const double w = q.w, x = q.x, y = q.y, z = q.z;
  const double r[3][3] = {{1 - 2 * (y * y + z * z), 2 * (x * y - w * z), 2 * (x * z + w * y)},
                          {2 * (x * y + w * z), 1 - 2 * (x * x + z * z), 2 * (y * z - w * x)},
                          {2 * (x * z - w * y), 2 * (y * z + w * x), 1 - 2 * (x * x + y * y)}};
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 3; ++j) m.m[i][j] = static_cast<float>(r[i][j]);
}

Quat slerp(Quat a, Quat b, double p) {
  double d = a.w * b.w + a.x * b.x + a.y * b.y + a.z * b.z;
  if (d < 0) {
    b = {-b.w, -b.x, -b.y, -b.z};
    d = -d;
  }
  double ka = 1 - p, kb = p;
  if (d < 0.9995) {
    const double theta = std::acos(std::min(d, 1.0));
    ka = std::sin((1 - p) * theta) / std::sin(theta);
    kb = std::sin(p * theta) / std::sin(theta);
  }
  Quat q{ka * a.w + kb * b.w, ka * a.x + kb * b.x, ka * a.y + kb * b.y, ka * a.z + kb * b.z};
  double n = std::sqrt(q.w * q.w + q.x * q.x + q.y * q.y + q.z * q.z);
  return {q.w / n, q.x / n, q.y / n, q.z / n};
}

// Rigid transforms a and b blended by p: rotation by spherical
// interpolation, translation linearly.
hMatrix blend(const hMatrix &a, const hMatrix &b, float p) {
  hMatrix r;
  setRotation(r, slerp(toQuat(a), toQuat(b), p));
  for (int i = 0; i < 3; ++i) r.m[i][3] = a.m[i][3] + (b.m[i][3] - a.m[i][3]) * p;
  return r;
}

std::vector<float> anglesOf(hcJoint *j) {
  std::vector<float> v(static_cast<std::size_t>(std::max(j->getNDOFs(), 0)));
  if (!v.empty()) j->getAngles(v.data(), 1);
  return v;
}

hcTypeTable *pathDirections() {
  return hcmotion_detail::table("pathDirections",
                                {{"FORWARD", hcPathMotion::FORWARD}, {"BACKWARD", hcPathMotion::BACKWARD}});
}

hcTypeTable *channelSetDirections() {
  return hcmotion_detail::table("channelSetDirections", {{"PLAYBACK", hcChannelSetMotion::PLAYBACK},
                                                         {"RECORD", hcChannelSetMotion::RECORD}});
}

}  // namespace

// ---------------------------------------------------------------------------
// The factory.

hcMotion *hcMotion::create(int type, const char *name, hcFigure *figure) {
  OpRecord rec("hcMotion::create", type, name, figure);
  hcMotion *m = nullptr;
  switch (type) {
    case MOTION: m = new hcMotion(name); break;
    case JOINT_MOTION: m = new hcJointMotion(name); break;
    case FIGURE_MOTION: m = new hcFigureMotion(name, figure); break;
    case SCALE_MOTION: m = new hcScaleMotion(name, figure); break;
    case SCALESEG_MOTION: m = new hcScaleSegMotion(name); break;
    case PATH_MOTION: m = new hcPathMotion(name); break;
    case FIGUREPATH_MOTION: m = new hcFigurePathMotion(name, nullptr, figure); break;
    case TIMED_ATTACH: m = new hcTimedAttach(name, figure); break;
    case TIMED_CONSTRAINT: m = new hcTimedConstraint(name); break;
    case COLOR_MOTION: m = new hcColorMotion(name); break;
    case SCRIPT_MOTION: m = new hcScriptMotion(name); break;
    case CHANNELSET_MOTION: m = new hcChannelSetMotion(name, nullptr); break;
    case GROUP_MOTION:
      m = new hcGroupMotion(nullptr);
      m->setName(name);
      break;
    case DUMMY_MOTION: m = new hcDummyMotion(name); break;
    default: return nullptr;
  }
  if (figure && !m->getFigure()) m->setFigure(figure);
  hcmotion_detail::registry().push_back(m);
  return m;
}

// ---------------------------------------------------------------------------
hcGroupMotion::hcGroupMotion(hcMotionGroup *grp) : hcMotion(nullptr, GROUP_MOTION) {
  group = grp;
  hccore::call("hcGroupMotion::hcGroupMotion", static_cast<const void *>(grp));
}

hcGroupMotion::~hcGroupMotion() { hccore::destroying(this, "hcGroupMotion::~hcGroupMotion"); }

int hcGroupMotion::init() {
  OpRecord rec("hcGroupMotion::init");
  return 0;
}

void hcGroupMotion::updatetime() { OpRecord rec("hcGroupMotion::updatetime"); }

// ---------------------------------------------------------------------------
hcDummyMotion::hcDummyMotion(const char *n) : hcMotion(n, DUMMY_MOTION) {
  hccore::call("hcDummyMotion::hcDummyMotion", n);
}

hcDummyMotion::~hcDummyMotion() { hccore::destroying(this, "hcDummyMotion::~hcDummyMotion"); }

int hcDummyMotion::preaction() {
  OpRecord rec("hcDummyMotion::preaction");
  return 1;
}

int hcDummyMotion::apply(long t) {
  OpRecord rec("hcDummyMotion::apply", t);
  return activeq(t);
}

int hcDummyMotion::init() {
  OpRecord rec("hcDummyMotion::init");
  return 1;
}

int hcDummyMotion::sprint(char **buffer) {
  OpRecord rec("hcDummyMotion::sprint", buffer);
  return printTo(buffer);
}

int hcDummyMotion::scan(hcValue *value) {
  OpRecord rec("hcDummyMotion::scan", value);
  float f = 0;
  if (!value || !value->get(f) || !std::isfinite(f)) return 0;
  setDuration(std::lround(std::clamp(f, -1e15f, 1e15f)));
  return 1;
}

// ---------------------------------------------------------------------------
hcFigureMotion::hcFigureMotion(const char *name, hcFigure *figure) : hcMotion(name, FIGURE_MOTION) {
  {
    hccore::Quiet quiet;
    setFigure(figure);
    if (figure) figure->getLocation(startLocation_);
    goal_ = startLocation_;
  }
  hccore::call("hcFigureMotion::hcFigureMotion", name, figure);
}

hcFigureMotion::~hcFigureMotion() { hccore::destroying(this, "hcFigureMotion::~hcFigureMotion"); }

int hcFigureMotion::preaction() {
  OpRecord rec("hcFigureMotion::preaction");
  return figure_ != nullptr;
}

int hcFigureMotion::apply(long t) {
  OpRecord rec("hcFigureMotion::apply", t);
  if (!figure_ || !activeq(t)) return 0;
  hMatrix location = blend(startLocation_, goal_, progress(t));
  return figure_->setLocation(location);
}

int hcFigureMotion::scan(hcValue *vector) {
  OpRecord rec("hcFigureMotion::scan", vector);
  hMatrix m;
  hMatrix *p = &m;
  if (!vector || !vector->get(p)) return 0;
  goal_ = m;
  return 1;
}

int hcFigureMotion::init() {
  OpRecord rec("hcFigureMotion::init");
  if (!figure_) return 0;
  figure_->getLocation(startLocation_);
  return 1;
}

int hcFigureMotion::sprint(char **buffer) {
  OpRecord rec("hcFigureMotion::sprint", buffer);
  return printTo(buffer);
}

std::string hcFigureMotion::params() {
  hVector at(goal_.m[0][3], goal_.m[1][3], goal_.m[2][3]);
  return " figure " + nameOf(figure_) + " goal " + numbers(at);
}

int hcFigureMotion::setParams(hMatrix goal) {
  OpRecord rec("hcFigureMotion::setParams", goal);
  goal_ = goal;
  return 1;
}

int hcFigureMotion::getEndLocation(hMatrix &end) {
  OpRecord rec("hcFigureMotion::getEndLocation", addr(&end));
  end = goal_;
  return 1;
}

int hcFigureMotion::getStartLocation(hMatrix &start) {
  OpRecord rec("hcFigureMotion::getStartLocation", addr(&start));
  start = startLocation_;
  return 1;
}

// ---------------------------------------------------------------------------
hcScaleMotion::hcScaleMotion(const char *name, hcFigure *figure) : hcMotion(name, SCALE_MOTION) {
  {
    hccore::Quiet quiet;
    setFigure(figure);
  }
  hccore::call("hcScaleMotion::hcScaleMotion", name, figure);
}

hcScaleMotion::~hcScaleMotion() { hccore::destroying(this, "hcScaleMotion::~hcScaleMotion"); }

int hcScaleMotion::preaction() {
  OpRecord rec("hcScaleMotion::preaction");
  return figure_ != nullptr;
}

int hcScaleMotion::apply(long t) {
  OpRecord rec("hcScaleMotion::apply", t);
  if (!figure_ || !activeq(t)) return 0;
  hVector scale = mix(startScale_, endScale_, progress(t));
  return figure_->setScale(scale);
}

int hcScaleMotion::init() {
  OpRecord rec("hcScaleMotion::init");
  if (!figure_) return 0;
  hVector s = startScale_;
  if (!figure_->getScale(s) || !positive(s)) return 0;
  startScale_ = s;
  return 1;
}

int hcScaleMotion::sprint(char **buffer) {
  OpRecord rec("hcScaleMotion::sprint", buffer);
  return printTo(buffer);
}

int hcScaleMotion::scan(hcValue *value) {
  OpRecord rec("hcScaleMotion::scan", value);
  hVector v;
  hVector *p = &v;
  if (!value || !value->get(p) || !positive(v)) return 0;
  endScale_ = v;
  return 1;
}

std::string hcScaleMotion::params() { return " scale " + numbers(endScale_); }

int hcScaleMotion::setParams(hVector &scale) {
  OpRecord rec("hcScaleMotion::setParams", addr(&scale));
  if (!positive(scale)) return 0;
  endScale_ = scale;
  return 1;
}

int hcScaleMotion::getStart(hVector &vec) {
  OpRecord rec("hcScaleMotion::getStart", addr(&vec));
  vec = startScale_;
  return 1;
}

int hcScaleMotion::getEnd(hVector &vec) {
  OpRecord rec("hcScaleMotion::getEnd", addr(&vec));
  vec = endScale_;
  return 1;
}

hcChannel *hcScaleMotion::getChannel() {
  OpRecord rec("hcScaleMotion::getChannel");
  return nullptr;
}

// ---------------------------------------------------------------------------
hcScaleSegMotion::hcScaleSegMotion(const char *name, hcSegment *segment)
    : hcMotion(name, SCALESEG_MOTION) {
  {
    hccore::Quiet quiet;
    setSegment(segment);
    if (segment) segment->getAbsoluteScale(startScale_);
    endScale_ = startScale_;
  }
  hccore::call("hcScaleSegMotion::hcScaleSegMotion", name, segment);
}

hcScaleSegMotion::~hcScaleSegMotion() { hccore::destroying(this, "hcScaleSegMotion::~hcScaleSegMotion"); }

int hcScaleSegMotion::preaction() {
  OpRecord rec("hcScaleSegMotion::preaction");
  return segment_ != nullptr;
}

int hcScaleSegMotion::apply(long t) {
  OpRecord rec("hcScaleSegMotion::apply", t);
  if (!segment_ || !activeq(t)) return 0;
  const hVector target = mix(startScale_, endScale_, progress(t));
  hVector now;
  segment_->getAbsoluteScale(now);
  if (!positive(now) || !positive(target)) return 0;
  hVector factor(target.v[0] / now.v[0], target.v[1] / now.v[1], target.v[2] / now.v[2]);
  segment_->applyScale(factor, 0);
  return 1;
}

int hcScaleSegMotion::init() {
  OpRecord rec("hcScaleSegMotion::init");
  if (!segment_) return 0;
  segment_->getAbsoluteScale(startScale_);
  return 1;
}

int hcScaleSegMotion::sprint(char **buffer) {
  OpRecord rec("hcScaleSegMotion::sprint", buffer);
  return printTo(buffer);
}

int hcScaleSegMotion::scan(hcValue *value) {
  OpRecord rec("hcScaleSegMotion::scan", value);
  hVector v;
  hVector *p = &v;
  if (!value || !value->get(p) || !positive(v)) return 0;
  endScale_ = v;
  return 1;
}

std::string hcScaleSegMotion::params() {
  return " segment " + nameOf(segment_) + " scale " + numbers(endScale_);
}

int hcScaleSegMotion::setParams(hVector scale) {
  OpRecord rec("hcScaleSegMotion::setParams", scale);
  if (!positive(scale)) return 0;
  endScale_ = scale;
  return 1;
}

int hcScaleSegMotion::getStart(hVector &v) {
  OpRecord rec("hcScaleSegMotion::getStart", addr(&v));
  v = startScale_;
  return 1;
}

int hcScaleSegMotion::getEnd(hVector &v) {
  OpRecord rec("hcScaleSegMotion::getEnd", addr(&v));
  v = endScale_;
  return 1;
}

hcChannel *hcScaleSegMotion::getChannel() {
  OpRecord rec("hcScaleSegMotion::getChannel");
  return nullptr;
}

hcSegment *hcScaleSegMotion::getSegment() {
  OpRecord rec("hcScaleSegMotion::getSegment");
  return segment_;
}

// ---------------------------------------------------------------------------
hcPathMotion::hcPathMotion(const char *name, hcSegment *segment) : hcPathMotion(name, segment, PATH_MOTION) {}

hcPathMotion::hcPathMotion(const char *name, hcSegment *segment, int type) : hcMotion(name, type) {
  {
    hccore::Quiet quiet;
    setSegment(segment);
  }
  hccore::call("hcPathMotion::hcPathMotion", name, segment);
}

hcPathMotion::~hcPathMotion() { hccore::destroying(this, "hcPathMotion::~hcPathMotion"); }

int hcPathMotion::preaction() {
  OpRecord rec("hcPathMotion::preaction");
  return 0;
}

int hcPathMotion::apply(long t) {
  OpRecord rec("hcPathMotion::apply", t);
  return 0;
}

int hcPathMotion::postaction() {
  OpRecord rec("hcPathMotion::postaction");
  return 0;
}

int hcPathMotion::sprint(char **buffer) {
  OpRecord rec("hcPathMotion::sprint", buffer);
  return printTo(buffer);
}

int hcPathMotion::scan(hcValue *val) {
  OpRecord rec("hcPathMotion::scan", val);
  float f = 0;
  if (!val || !val->get(f) || (f != 0.0f && f != 1.0f)) return 0;
  direction_ = f == 0.0f ? FORWARD : BACKWARD;
  return 1;
}

int hcPathMotion::init() {
  OpRecord rec("hcPathMotion::init");
  return 0;
}

void hcPathMotion::updatetime() { OpRecord rec("hcPathMotion::updatetime"); }

std::string hcPathMotion::params() { return " direction " + std::to_string(direction_); }

int hcPathMotion::setParams(int direction) {
  OpRecord rec("hcPathMotion::setParams", direction);
  if (direction != FORWARD && direction != BACKWARD) return 0;
  direction_ = direction;
  return 1;
}

hcSegment *hcPathMotion::getSegment() {
  OpRecord rec("hcPathMotion::getSegment");
  return segment_;
}

hcPath *hcPathMotion::getPath() {
  OpRecord rec("hcPathMotion::getPath");
  return nullptr;
}

hcChannel *hcPathMotion::getChannel() {
  OpRecord rec("hcPathMotion::getChannel");
  return nullptr;
}

int hcPathMotion::getDirection() {
  OpRecord rec("hcPathMotion::getDirection");
  return direction_;
}

hcTypeTable *hcPathMotion::getDirectionTypes() {
  OpRecord rec("hcPathMotion::getDirectionTypes");
  return pathDirections();
}

// ---------------------------------------------------------------------------
hcFigurePathMotion::hcFigurePathMotion(const char *name, hcSegment *segment, hcFigure *figure)
    : hcPathMotion(name, segment, FIGUREPATH_MOTION) {
  pathFigure_ = figure;
  watch(figure);
  hccore::call("hcFigurePathMotion::hcFigurePathMotion", name, segment, figure);
}

hcFigurePathMotion::~hcFigurePathMotion() {
  hccore::destroying(this, "hcFigurePathMotion::~hcFigurePathMotion");
}

int hcFigurePathMotion::apply(long t) {
  OpRecord rec("hcFigurePathMotion::apply", t);
  return 0;
}

int hcFigurePathMotion::sprint(char **buffer) {
  OpRecord rec("hcFigurePathMotion::sprint", buffer);
  return printTo(buffer);
}

int hcFigurePathMotion::scan(hcValue *val) {
  OpRecord rec("hcFigurePathMotion::scan", val);
  hcFigure *f = nullptr;
  if (val && val->get(f)) {
    pathFigure_ = f;
    watch(f);
    return f != nullptr;
  }
  return hcPathMotion::scan(val);
}

hcFigure *hcFigurePathMotion::getPathFigure() {
  OpRecord rec("hcFigurePathMotion::getPathFigure");
  return pathFigure_;
}

std::string hcFigurePathMotion::params() { return hcPathMotion::params() + " figure " + nameOf(pathFigure_); }

void hcFigurePathMotion::forget(hcSubject *gone) {
  if (pathFigure_ && static_cast<hcSubject *>(pathFigure_) == gone) pathFigure_ = nullptr;
  hcPathMotion::forget(gone);
}

// ---------------------------------------------------------------------------
hcJointMotion::hcJointMotion(const char *name) : hcMotion(name, JOINT_MOTION) {
  hccore::call("hcJointMotion::hcJointMotion", name);
}

hcJointMotion::~hcJointMotion() { hccore::destroying(this, "hcJointMotion::~hcJointMotion"); }

int hcJointMotion::preaction() {
  OpRecord rec("hcJointMotion::preaction");
  return !joints_.empty();
}

int hcJointMotion::apply(long t) {
  OpRecord rec("hcJointMotion::apply", t);
  if (joints_.empty() || !activeq(t)) return 0;
  const float p = progress(t);
  int set = 0;
  for (auto &e : joints_) {
    if (e.joint->getNDOFs() != static_cast<int>(e.start.size()) || e.start.empty()) continue;
    std::vector<float> v(e.start.size());
    for (std::size_t k = 0; k < v.size(); ++k) v[k] = e.start[k] + (e.end[k] - e.start[k]) * p;
    if (e.joint->setAngles(v.data(), 1)) ++set;
  }
  return set > 0;
}

int hcJointMotion::sprint(char **buffer) {
  OpRecord rec("hcJointMotion::sprint", buffer);
  return printTo(buffer);
}

int hcJointMotion::scan(hcValue *value) {
  OpRecord rec("hcJointMotion::scan", value);
  hcJoint *j = nullptr;
  if (!value || !value->get(j)) return 0;
  return addJoint(j);
}

int hcJointMotion::init() {
  OpRecord rec("hcJointMotion::init");
  for (auto &e : joints_) {
    e.start = anglesOf(e.joint);
    e.end.resize(e.start.size(), 0.0f);
  }
  return !joints_.empty();
}

std::string hcJointMotion::params() { return " joints " + std::to_string(joints_.size()); }

void hcJointMotion::forget(hcSubject *gone) {
  joints_.erase(std::remove_if(joints_.begin(), joints_.end(),
                               [gone](const Entry &e) { return static_cast<hcSubject *>(e.joint) == gone; }),
                joints_.end());
  hcMotion::forget(gone);
}

int hcJointMotion::addJoint(hcJoint *j) {
  OpRecord rec("hcJointMotion::addJoint", j);
  if (!j) return 0;
  for (const auto &e : joints_)
    if (e.joint == j) return 0;
  std::vector<float> now = anglesOf(j);
  joints_.push_back({j, now, now});
  watch(j);
  if (!figure_ && j->getFigure()) setFigure(j->getFigure());
  return 1;
}

int hcJointMotion::setNthAngle(int n, float *angles) {
  OpRecord rec("hcJointMotion::setNthAngle", n, angles);
  if (!angles || n < 0 || n >= static_cast<int>(joints_.size())) return 0;
  auto &entry = joints_[static_cast<std::size_t>(n)];
  if (static_cast<int>(entry.end.size()) != entry.joint->getNDOFs()) return 0;  // the joint changed
  auto &end = entry.end;
  std::copy(angles, angles + end.size(), end.begin());
  return 1;
}

int hcJointMotion::addFigureJoints(hcFigure *fig, int grabAngles) {
  OpRecord rec("hcJointMotion::addFigureJoints", fig, grabAngles);
  if (!fig) return 0;
  int added = 0;
  for (hcJoint *j : hcfigure_detail::items<hcJoint>(fig->getJoints())) {
    bool present = false;
    for (const auto &e : joints_) present = present || e.joint == j;
    if (present) continue;
    std::vector<float> now = anglesOf(j);
    joints_.push_back({j, now, grabAngles ? now : std::vector<float>(now.size(), 0.0f)});
    watch(j);
    ++added;
  }
  if (!figure_) setFigure(fig);
  return added;
}

int hcJointMotion::setParams() {
  OpRecord rec("hcJointMotion::setParams");
  for (auto &e : joints_) {
    e.end = anglesOf(e.joint);
    e.start.resize(e.end.size(), 0.0f);
  }
  return !joints_.empty();
}

hcJoint *hcJointMotion::getNthJoint(int n) {
  OpRecord rec("hcJointMotion::getNthJoint", n);
  if (n < 0 || n >= static_cast<int>(joints_.size())) return nullptr;
  return joints_[static_cast<std::size_t>(n)].joint;
}

int hcJointMotion::getNumberOfJoints() {
  OpRecord rec("hcJointMotion::getNumberOfJoints");
  return static_cast<int>(joints_.size());
}

float *hcJointMotion::getNthStartAngles(int n, float *angles) {
  OpRecord rec("hcJointMotion::getNthStartAngles", n, angles);
  if (!angles || n < 0 || n >= static_cast<int>(joints_.size())) return nullptr;
  const auto &entry = joints_[static_cast<std::size_t>(n)];
  const auto &v = entry.start;
  if (static_cast<int>(v.size()) != entry.joint->getNDOFs()) return nullptr;  // the joint changed
  std::copy(v.begin(), v.end(), angles);
  return angles;
}

float *hcJointMotion::getNthEndAngles(int n, float *angles) {
  OpRecord rec("hcJointMotion::getNthEndAngles", n, angles);
  if (!angles || n < 0 || n >= static_cast<int>(joints_.size())) return nullptr;
  const auto &entry = joints_[static_cast<std::size_t>(n)];
  const auto &v = entry.end;
  if (static_cast<int>(v.size()) != entry.joint->getNDOFs()) return nullptr;  // the joint changed
  std::copy(v.begin(), v.end(), angles);
  return angles;
}

// ---------------------------------------------------------------------------
hcTimedAttach::hcTimedAttach(const char *name, hcFigure *figure) : hcMotion(name, TIMED_ATTACH) {
  {
    hccore::Quiet quiet;
    setFigure(figure);
  }
  hccore::call("hcTimedAttach::hcTimedAttach", name, figure);
}

hcTimedAttach::~hcTimedAttach() { hccore::destroying(this, "hcTimedAttach::~hcTimedAttach"); }

int hcTimedAttach::preaction() {
  OpRecord rec("hcTimedAttach::preaction");
  return 0;
}

int hcTimedAttach::postaction() {
  OpRecord rec("hcTimedAttach::postaction");
  return 0;
}

int hcTimedAttach::sprint(char **buffer) {
  OpRecord rec("hcTimedAttach::sprint", buffer);
  return printTo(buffer);
}

int hcTimedAttach::scan(hcValue *val) {
  OpRecord rec("hcTimedAttach::scan", val);
  hcSite *s = nullptr;
  if (!val || !val->get(s)) return 0;
  return setParams(s);
}

int hcTimedAttach::init() {
  OpRecord rec("hcTimedAttach::init");
  return figure_ && site_;
}

std::string hcTimedAttach::params() { return " site " + nameOf(site_); }

void hcTimedAttach::forget(hcSubject *gone) {
  if (site_ && static_cast<hcSubject *>(site_) == gone) site_ = nullptr;
  hcMotion::forget(gone);
}

int hcTimedAttach::setParams(hcSite *s) {
  OpRecord rec("hcTimedAttach::setParams", s);
  site_ = s;
  watch(s);
  return s != nullptr;
}

hcSite *hcTimedAttach::getSite() {
  OpRecord rec("hcTimedAttach::getSite");
  return site_;
}

// ---------------------------------------------------------------------------
hcTimedConstraint::hcTimedConstraint(const char *name) : hcMotion(name, TIMED_CONSTRAINT) {
  hccore::call("hcTimedConstraint::hcTimedConstraint", name);
}

hcTimedConstraint::~hcTimedConstraint() { hccore::destroying(this, "hcTimedConstraint::~hcTimedConstraint"); }

int hcTimedConstraint::preaction() {
  OpRecord rec("hcTimedConstraint::preaction");
  if (!constraint_) return 0;
  constraint_->setActive(1);
  return 1;
}

int hcTimedConstraint::apply(long t) {
  OpRecord rec("hcTimedConstraint::apply", t);
  if (!constraint_ || !activeq(t)) return 0;
  weight_ = peak_ * weightAt(timeFraction(t));
  constraint_->setWeight(weight_);
  return 1;
}

int hcTimedConstraint::postaction() {
  OpRecord rec("hcTimedConstraint::postaction");
  if (!constraint_) return 0;
  constraint_->setActive(0);
  return 1;
}

int hcTimedConstraint::presprint(char **buffer) {
  OpRecord rec("hcTimedConstraint::presprint", buffer);
  if (!constraint_) return 0;
  return printText(buffer, "constraint " + nameOf(constraint_));
}

int hcTimedConstraint::sprint(char **buffer) {
  OpRecord rec("hcTimedConstraint::sprint", buffer);
  return printTo(buffer);
}

int hcTimedConstraint::scan(hcValue *val) {
  OpRecord rec("hcTimedConstraint::scan", val);
  hcConstraint *c = nullptr;
  if (!val || !val->get(c) || !c) return 0;
  observeConstraint(c);
  return 1;
}

int hcTimedConstraint::init() {
  OpRecord rec("hcTimedConstraint::init");
  weight_ = 0;
  return constraint_ != nullptr;
}

std::string hcTimedConstraint::params() {
  return " constraint " + nameOf(constraint_) + " peak " + number(peak_);
}

int hcTimedConstraint::setParams() {
  OpRecord rec("hcTimedConstraint::setParams");
  if (!constraint_) return 0;
  peak_ = constraint_->getWeight();
  return 1;
}

hcConstraint *hcTimedConstraint::getConstraint() {
  OpRecord rec("hcTimedConstraint::getConstraint");
  return constraint_;
}

float hcTimedConstraint::getWeight() {
  OpRecord rec("hcTimedConstraint::getWeight");
  return weight_;
}

// ---------------------------------------------------------------------------
hcColorMotion::hcColorMotion(const char *name, hcMaterial *material) : hcMotion(name, COLOR_MOTION) {
  material_ = material;
  hccore::call("hcColorMotion::hcColorMotion", name, static_cast<const void *>(material));
}

hcColorMotion::~hcColorMotion() { hccore::destroying(this, "hcColorMotion::~hcColorMotion"); }

int hcColorMotion::preaction() {
  OpRecord rec("hcColorMotion::preaction");
  return 0;
}

int hcColorMotion::apply(long t) {
  OpRecord rec("hcColorMotion::apply", t);
  return 0;
}

int hcColorMotion::init() {
  OpRecord rec("hcColorMotion::init");
  return 0;
}

int hcColorMotion::sprint(char **buffer) {
  OpRecord rec("hcColorMotion::sprint", buffer);
  return printTo(buffer);
}

int hcColorMotion::scan(hcValue *value) {
  OpRecord rec("hcColorMotion::scan", value);
  hVector v;
  hVector *p = &v;
  if (!value || !value->get(p)) return 0;
  endColor_ = v;
  return 1;
}

std::string hcColorMotion::params() { return " color " + numbers(endColor_); }

int hcColorMotion::setParams(hVector &color) {
  OpRecord rec("hcColorMotion::setParams", addr(&color));
  endColor_ = color;
  return 1;
}

int hcColorMotion::getStartColor(hVector &v) {
  OpRecord rec("hcColorMotion::getStartColor", addr(&v));
  return 0;
}

int hcColorMotion::getEndColor(hVector &v) {
  OpRecord rec("hcColorMotion::getEndColor", addr(&v));
  v = endColor_;
  return 1;
}

hcChannel *hcColorMotion::getChannel() {
  OpRecord rec("hcColorMotion::getChannel");
  return nullptr;
}

hcMaterial *hcColorMotion::getMaterial() {
  OpRecord rec("hcColorMotion::getMaterial");
  return material_;
}

// ---------------------------------------------------------------------------
hcScriptMotion::hcScriptMotion(const char *name) : hcMotion(name, SCRIPT_MOTION) {
  hccore::call("hcScriptMotion::hcScriptMotion", name);
}

hcScriptMotion::~hcScriptMotion() { hccore::destroying(this, "hcScriptMotion::~hcScriptMotion"); }

int hcScriptMotion::preaction() {
  OpRecord rec("hcScriptMotion::preaction");
  return 0;
}

int hcScriptMotion::apply(long t) {
  OpRecord rec("hcScriptMotion::apply", t);
  return 0;
}

int hcScriptMotion::postaction() {
  OpRecord rec("hcScriptMotion::postaction");
  return 0;
}

int hcScriptMotion::presprint(char **buffer) {
  OpRecord rec("hcScriptMotion::presprint", buffer);
  if (class_.empty()) return 0;
  return printText(buffer, "class " + class_);
}

int hcScriptMotion::scan(hcValue *vector) {
  OpRecord rec("hcScriptMotion::scan", vector);
  char *s = nullptr;
  if (!vector || !vector->get(s) || !s) return 0;
  class_ = s;
  return 1;
}

int hcScriptMotion::sprint(char **buffer) {
  OpRecord rec("hcScriptMotion::sprint", buffer);
  return printTo(buffer);
}

int hcScriptMotion::init() {
  OpRecord rec("hcScriptMotion::init");
  return 0;
}

std::string hcScriptMotion::params() { return " class " + (class_.empty() ? std::string("-") : class_); }

void hcScriptMotion::setClass(const char *classname) {
  OpRecord rec("hcScriptMotion::setClass", classname);
  class_ = classname ? classname : "";
}

const char *hcScriptMotion::callMethod(const char *methodname, const char *argstr) {
  OpRecord rec("hcScriptMotion::callMethod", methodname, argstr);
  return nullptr;
}

// ---------------------------------------------------------------------------
hcChannelSetMotion::hcChannelSetMotion(const char *n, hcBoundChannelSet *b)
    : hcMotion(n, CHANNELSET_MOTION), set_(b) {
  hccore::call("hcChannelSetMotion::hcChannelSetMotion", n, static_cast<const void *>(b));
}

hcChannelSetMotion::~hcChannelSetMotion() {
  hccore::destroying(this, "hcChannelSetMotion::~hcChannelSetMotion");
}

hcChannelSetMotion *hcChannelSetMotion::create(const char *n, hcBoundChannelSet *b) {
  OpRecord rec("hcChannelSetMotion::create", n, static_cast<const void *>(b));
  auto *m = new hcChannelSetMotion(n, b);
  hcmotion_detail::registry().push_back(m);
  return m;
}

int hcChannelSetMotion::setParams(int direction) {
  OpRecord rec("hcChannelSetMotion::setParams", direction);
  if (direction != PLAYBACK && direction != RECORD) return 0;
  direction_ = direction;
  return 1;
}

hcBoundChannelSet *hcChannelSetMotion::getBoundChannelSet() {
  OpRecord rec("hcChannelSetMotion::getBoundChannelSet");
  return set_;
}

hcTypeTable *hcChannelSetMotion::getDirectionsTable() {
  OpRecord rec("hcChannelSetMotion::getDirectionsTable");
  return channelSetDirections();
}

int hcChannelSetMotion::getDirection() {
  OpRecord rec("hcChannelSetMotion::getDirection");
  return direction_;
}

std::string hcChannelSetMotion::params() { return " direction " + std::to_string(direction_); }
