// Host library: the channel kinds (joint values, figure locations, real-time
// stamps, segment visibility) and the visibility channel's observer.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>

#include "motion/channel_detail.h"
#include "figure/figure_detail.h"

using hcchannel_detail::OpRecord;
using hcchannel_detail::words;

namespace {

float clampFraction(float f) { return f < 0 ? 0 : f > 1 ? 1 : f; }

std::string figureName(hcFigure *fig) {
  hccore::Quiet quiet;
  return fig && fig->getName() ? fig->getName() : "";
}

std::string objectName(hcObject *object) {
  hccore::Quiet quiet;
  return object && object->getName() ? object->getName() : "";
}

// Seconds of a monotonic clock.
double now() {
  using namespace std::chrono;
  return duration<double>(steady_clock::now().time_since_epoch()).count();
}

// The rotation and translation between a and b, a fraction f of the way.
hMatrix between(const hMatrix &a, const hMatrix &b, float f) {
  using namespace hcfigure_detail;
  hccore::Quiet quiet;
  hMatrix relative = mul(inverse(a), b);
  hVector axis;
  const float angle = relative.toAxisAngle(axis);
  hMatrix out = mul(a, rotation(axis, f * angle));
  for (int r = 0; r < 3; ++r) out.m[r][3] = a.m[r][3] + f * (b.m[r][3] - a.m[r][3]);
  return out;
}

}  // namespace

// ---------------------------------------------------------------------------
// hcJointChannel

hcJointChannel::hcJointChannel(hcJoint *join, int start, int durate, const char *name)
    : hcChannel(Unbound{}, JOINT, start, nullptr) {
  OpRecord rec("hcJointChannel::hcJointChannel", join, start, durate, name);
  if (join) {
    ndofs_ = std::clamp(join->getNDOFs(), 0, kMaxDOFs);
    targetName_ = objectName(join);
    prototype_ = figureName(join->getFigure());
  }
  setFullName("", name ? name : targetName_.c_str());
  setTarget(join);
  if (!setDuration(durate)) setDuration(0);
}

hcJointChannel::hcJointChannel(Unbound, int ndofs, int start, int duration)
    : hcChannel(Unbound{}, JOINT, start, nullptr), ndofs_(std::clamp(ndofs, 0, kMaxDOFs)) {
  setDuration(duration);
}

hcJointChannel::~hcJointChannel() { hccore::destroying(this, "hcJointChannel::~hcJointChannel"); }

hcJoint *hcJointChannel::getJoint() {
  hccore::call("hcJointChannel::getJoint");
  return static_cast<hcJoint *>(getTarget());
}

int hcJointChannel::getNDOFs() {
  hccore::call("hcJointChannel::getNDOFs");
  return ndofs_;
}

void hcJointChannel::bind(hcChannelBinding *cb, hcFigure *fig) {
  OpRecord rec("hcJointChannel::bind", cb, fig);
  bindTo(cb, fig);
}

void hcJointChannel::rebind(hcChannelBinding *cb) {
  OpRecord rec("hcJointChannel::rebind", cb);
  if (cb) bindTo(nullptr, cb->getFigure());
}

hcObject *hcJointChannel::findTarget(hcFigure *fig) {
  return fig && !targetName_.empty() ? fig->findJoint(targetName_.c_str()) : nullptr;
}

void *hcJointChannel::grab(int t) {
  OpRecord rec("hcJointChannel::grab", t);
  const int i = index(t);
  auto *joint = static_cast<hcJoint *>(getTarget());
  if (i < 0 || !joint) return nullptr;
  std::vector<float> values(std::max(joint->getNDOFs(), 1), 0.0f);
  joint->getAngles(values.data(), 1);
  Data &d = frames_[i];
  for (int k = 0; k < kMaxDOFs; ++k)
    d.value[k] = k < ndofs_ && k < joint->getNDOFs() ? values[k] : 0.0f;
  markRecorded(i);
  return &d;
}

void *hcJointChannel::stuff(int t, float fraction) {
  OpRecord rec("hcJointChannel::stuff", t, fraction);
  const int i = index(t);
  if (!recorded(i)) return nullptr;
  Data d = frames_[i];
  fraction = clampFraction(fraction);
  if (fraction > 0 && recorded(i + 1))
    for (int k = 0; k < ndofs_; ++k) d.value[k] += fraction * (frames_[i + 1].value[k] - d.value[k]);
  if (auto *joint = static_cast<hcJoint *>(getTarget())) {
    const int n = joint->getNDOFs();
    std::vector<float> values(std::max(n, 1), 0.0f);
    joint->getAngles(values.data(), 1);
    for (int k = 0; k < n && k < ndofs_; ++k) values[k] = d.value[k];
    joint->setAngles(values.data(), 1);
  }
  return &frames_[i];
}

void hcJointChannel::sprintat(int t, char *buf, std::size_t size) {
  OpRecord rec("hcJointChannel::sprintat", t);
  sprintText(t, buf, size);
}

void hcJointChannel::scan(int t, hcValue *val) {
  OpRecord rec("hcJointChannel::scan", t, val);
  scanValue(t, val);
}

float hcJointChannel::getAngle(int t, int dof) {
  OpRecord rec("hcJointChannel::getAngle", t, dof);
  const int i = index(t);
  if (!recorded(i) || dof < 0 || dof >= ndofs_) return 0.0f;
  return frames_[i].value[dof];
}

void hcJointChannel::getDisplacement(int t, hMatrix &displ) {
  using namespace hcfigure_detail;
  OpRecord rec("hcJointChannel::getDisplacement", t, addr(&displ));
  const int i = index(t);
  auto *joint = static_cast<hcJoint *>(getTarget());
  if (!recorded(i) || !joint) return;
  hMatrix d, inner;
  joint->getDisplacement(d, inner);
  hMatrix m = d;
  for (int k = 0; k < ndofs_ && k < joint->getNDOFs(); ++k) {
    hVector axis;
    joint->getDOFAxis(k, axis);
    const float value = frames_[i].value[k];
    if (joint->getDOFType(k) == hcJoint::ROT)
      m = mul(m, rotation(axis, value));
    else if (joint->getDOFType(k) == hcJoint::TRANS)
      m = mul(m, translation(hVector(axis.v[0] * value, axis.v[1] * value, axis.v[2] * value)));
  }
  displ = mul(m, inner);
}

hcJointChannel::Data *hcJointChannel::getData(int t) {
  hccore::call("hcJointChannel::getData", t);
  const int i = index(t);
  return recorded(i) ? &frames_[i] : nullptr;
}

std::string hcJointChannel::recordText(int index) {
  std::string out;
  for (int k = 0; k < ndofs_; ++k) {
    if (k) out += ' ';
    out += hcchannel_detail::number(frames_[index].value[k]);
  }
  return out;
}

bool hcJointChannel::parseRecord(const std::string &text, int index) {
  const auto w = words(text);
  if (static_cast<int>(w.size()) != ndofs_) return false;
  Data d{};
  for (int k = 0; k < ndofs_; ++k)
    if (!hcchannel_detail::toFloat(w[k], d.value[k])) return false;
  frames_[index] = d;
  return true;
}

bool hcJointChannel::scanOther(hcValue *val, int index) {
  float f;
  if (ndofs_ < 1 || !val->get(f)) return false;
  if (!recorded(index)) frames_[index] = Data{};
  frames_[index].value[0] = f;
  return true;
}

int hcJointChannel::fileParams(long &p1, double &p2) {
  p1 = ndofs_;
  p2 = 0;
  return JOINT;
}

// ---------------------------------------------------------------------------
// hcFigureChannel

hcFigureChannel::hcFigureChannel(hcFigure *fig, int start, int durate, const char *name)
    : hcChannel(Unbound{}, FIGURE, start, nullptr) {
  OpRecord rec("hcFigureChannel::hcFigureChannel", fig, start, durate, name);
  targetName_ = prototype_ = figureName(fig);
  setFullName("", name ? name : targetName_.c_str());
  setTarget(fig);
  if (!setDuration(durate)) setDuration(0);
}

hcFigureChannel::hcFigureChannel(Unbound, int start, int duration)
    : hcChannel(Unbound{}, FIGURE, start, nullptr) {
  setDuration(duration);
}

hcFigureChannel::~hcFigureChannel() { hccore::destroying(this, "hcFigureChannel::~hcFigureChannel"); }

hcFigure *hcFigureChannel::getFigure() {
  hccore::call("hcFigureChannel::getFigure");
  return static_cast<hcFigure *>(getTarget());
}

void hcFigureChannel::bind(hcChannelBinding *cb, hcFigure *fig) {
  OpRecord rec("hcFigureChannel::bind", cb, fig);
  bindTo(cb, fig);
}

void hcFigureChannel::rebind(hcChannelBinding *cb) {
  OpRecord rec("hcFigureChannel::rebind", cb);
  if (cb) bindTo(nullptr, cb->getFigure());
}

hcObject *hcFigureChannel::findTarget(hcFigure *fig) { return fig; }

void *hcFigureChannel::grab(int t) {
  OpRecord rec("hcFigureChannel::grab", t);
  const int i = index(t);
  auto *fig = static_cast<hcFigure *>(getTarget());
  if (i < 0 || !fig) return nullptr;
  fig->getLocation(frames_[i].location);
  markRecorded(i);
  return &frames_[i];
}

void *hcFigureChannel::stuff(int t, float fraction) {
  OpRecord rec("hcFigureChannel::stuff", t, fraction);
  const int i = index(t);
  if (!recorded(i)) return nullptr;
  hMatrix m = frames_[i].location;
  fraction = clampFraction(fraction);
  if (fraction > 0 && recorded(i + 1)) m = between(m, frames_[i + 1].location, fraction);
  if (auto *fig = static_cast<hcFigure *>(getTarget())) fig->setLocation(m);
  return &frames_[i];
}

void hcFigureChannel::sprintat(int t, char *buf, std::size_t size) {
  OpRecord rec("hcFigureChannel::sprintat", t);
  sprintText(t, buf, size);
}

void hcFigureChannel::scan(int t, hcValue *val) {
  OpRecord rec("hcFigureChannel::scan", t, val);
  scanValue(t, val);
}

void hcFigureChannel::drawtessel(int mode) { OpRecord rec("hcFigureChannel::drawtessel", mode); }

hMatrix *hcFigureChannel::getLocation(int t) {
  hccore::call("hcFigureChannel::getLocation", t);
  const int i = index(t);
  return recorded(i) ? &frames_[i].location : nullptr;
}

hcFigureChannel::Data *hcFigureChannel::getData(int t) {
  hccore::call("hcFigureChannel::getData", t);
  const int i = index(t);
  return recorded(i) ? &frames_[i] : nullptr;
}

std::string hcFigureChannel::recordText(int index) {
  std::string out;
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) {
      if (r || c) out += ' ';
      out += hcchannel_detail::number(frames_[index].location.m[r][c]);
    }
  return out;
}

bool hcFigureChannel::parseRecord(const std::string &text, int index) {
  const auto w = words(text);
  if (w.size() != 16) return false;
  hMatrix m;
  for (int k = 0; k < 16; ++k)
    if (!hcchannel_detail::toFloat(w[k], m.m[k / 4][k % 4])) return false;
  frames_[index].location = m;
  return true;
}

bool hcFigureChannel::scanOther(hcValue *val, int index) {
  hMatrix m;
  hMatrix *p = &m;
  if (!val->get(p)) return false;
  frames_[index].location = m;
  return true;
}

int hcFigureChannel::fileParams(long &p1, double &p2) {
  p1 = 0;
  p2 = 0;
  return FIGURE;
}

// ---------------------------------------------------------------------------
// hcRealtimeChannel

hcRealtimeChannel::hcRealtimeChannel(int start, int durate, const char *name)
    : hcChannel(Unbound{}, REALTIME, start, name), mfps(0), startreal(0) {
  OpRecord rec("hcRealtimeChannel::hcRealtimeChannel", start, durate, name);
  if (!setDuration(durate)) setDuration(0);
}

hcRealtimeChannel::~hcRealtimeChannel() {
  hccore::destroying(this, "hcRealtimeChannel::~hcRealtimeChannel");
}

double hcRealtimeChannel::stampOf(int index) {
  if (mfps > 0) return startreal + static_cast<double>(index) / mfps;
  return recorded(index) ? frames_[index].realtime : 0.0;
}

void *hcRealtimeChannel::grab(int t) {
  OpRecord rec("hcRealtimeChannel::grab", t);
  const int i = index(t);
  if (i < 0) return nullptr;
  frames_[i].realtime = mfps > 0 ? stampOf(i) : now();
  markRecorded(i);
  return &frames_[i];
}

void *hcRealtimeChannel::stuff(int t, float fraction) {
  OpRecord rec("hcRealtimeChannel::stuff", t, fraction);
  return recordedAt(t);
}

void hcRealtimeChannel::sprintat(int t, char *buf, std::size_t size) {
  OpRecord rec("hcRealtimeChannel::sprintat", t);
  sprintText(t, buf, size);
}

void hcRealtimeChannel::scan(int t, hcValue *val) {
  OpRecord rec("hcRealtimeChannel::scan", t, val);
  scanValue(t, val);
}

void hcRealtimeChannel::drawtessel(int mode) { OpRecord rec("hcRealtimeChannel::drawtessel", mode); }

hcRealtimeChannel::Data *hcRealtimeChannel::getData(int t) {
  hccore::call("hcRealtimeChannel::getData", t);
  const int i = index(t);
  return recorded(i) ? &frames_[i] : nullptr;
}

double hcRealtimeChannel::getRealtime(int t) {
  hccore::call("hcRealtimeChannel::getRealtime", t);
  const int i = index(t);
  return i < 0 ? 0.0 : stampOf(i);
}

int hcRealtimeChannel::getFrame(double rt, float *fraction) {
  hccore::call("hcRealtimeChannel::getFrame", rt, static_cast<const void *>(fraction));
  const int n = frameCount();
  double position;  // frames after the first, with a fractional part
  if (mfps > 0) {
    if (n == 0) return -1;
    position = std::clamp((rt - startreal) * mfps, 0.0, static_cast<double>(n - 1));
  } else {
    // The last stamped frame at or before rt (the first stamped frame when
    // rt lies before them all), and the way towards the next stamped one.
    int first = -1, at = -1;
    for (int i = 0; i < n; ++i) {
      if (!recorded(i)) continue;
      if (first < 0) first = i;
      if (frames_[i].realtime <= rt) at = i;
    }
    if (first < 0) return -1;
    if (at < 0) at = first;
    position = at;
    for (int next = at + 1; next < n; ++next) {
      if (!recorded(next)) continue;
      const double from = frames_[at].realtime, to = frames_[next].realtime;
      if (to > from && rt > from) position += std::min((rt - from) / (to - from), 1.0) * (next - at);
      break;
    }
  }
  const double whole = std::floor(position);
  if (fraction) *fraction = static_cast<float>(position - whole);
  return getStart() + static_cast<int>(whole);
}

int hcRealtimeChannel::getMethod() {
  hccore::call("hcRealtimeChannel::getMethod");
  return mfps;
}

void hcRealtimeChannel::setMethod(int fps) {
  hccore::call("hcRealtimeChannel::setMethod", fps);
  mfps = fps > 0 ? fps : 0;
}

void hcRealtimeChannel::shift(double add) {
  hccore::call("hcRealtimeChannel::shift", add);
  startreal += add;
  for (int i = 0; i < frameCount(); ++i)
    if (recorded(i)) frames_[i].realtime += add;
}

std::string hcRealtimeChannel::recordText(int index) { return hcchannel_detail::number(frames_[index].realtime); }

bool hcRealtimeChannel::parseRecord(const std::string &text, int index) {
  const auto w = words(text);
  double v;
  if (w.size() != 1 || !hcchannel_detail::toDouble(w[0], v)) return false;
  frames_[index].realtime = v;
  return true;
}

bool hcRealtimeChannel::scanOther(hcValue *val, int index) {
  float f;
  if (!val->get(f)) return false;
  frames_[index].realtime = f;
  return true;
}

int hcRealtimeChannel::fileParams(long &p1, double &p2) {
  p1 = mfps;
  p2 = startreal;
  return REALTIME;
}

// ---------------------------------------------------------------------------
// VisibilityChannel

VisibilityChannel::VisibilityChannel(hcSegment *seg, int start, int durate, const char *name,
                                     int forHarlChannels)
    : hcChannel(Unbound{}, VISIBILITY, start, nullptr), forHarl_(forHarlChannels) {
  OpRecord rec("VisibilityChannel::VisibilityChannel", seg, start, durate, name, forHarlChannels);
  if (seg) {
    targetName_ = objectName(seg);
    prototype_ = figureName(seg->getFigure());
  }
  setFullName("", name ? name : targetName_.c_str());
  setTarget(seg);
  if (!setDuration(durate)) setDuration(0);
}

VisibilityChannel::VisibilityChannel(Unbound, int forHarl, int start, int duration)
    : hcChannel(Unbound{}, VISIBILITY, start, nullptr), forHarl_(forHarl) {
  setDuration(duration);
}

VisibilityChannel::~VisibilityChannel() {
  hccore::destroying(this, "VisibilityChannel::~VisibilityChannel");
  hccore::Quiet quiet;
  // Observers of this channel no longer have one.
  for (hcObserver *o : *hcObserver::getList())
    if (auto *v = dynamic_cast<VisibilityChannelObserver *>(o); v && v->vChannel == this) v->vChannel = nullptr;
}

hcSegment *VisibilityChannel::getSegment() { return static_cast<hcSegment *>(getTarget()); }

hcObserver *VisibilityChannel::makeWatch(hcObject *target) {
  return new VisibilityChannelObserver(this, static_cast<hcSegment *>(target));
}

hcObject *VisibilityChannel::findTarget(hcFigure *fig) {
  return fig && !targetName_.empty() ? fig->findSegment(targetName_.c_str()) : nullptr;
}

void VisibilityChannel::bind(hcChannelBinding *cb, hcFigure *fig) {
  OpRecord rec("VisibilityChannel::bind", cb, fig);
  bindTo(cb, fig);
}

void VisibilityChannel::rebind(hcChannelBinding *cb) {
  OpRecord rec("VisibilityChannel::rebind", cb);
  if (cb) bindTo(nullptr, cb->getFigure());
}

void *VisibilityChannel::grab(int t) {
  OpRecord rec("VisibilityChannel::grab", t);
  const int i = index(t);
  hcSegment *seg = getSegment();
  if (i < 0 || !seg) return nullptr;
  frames_[i].visible = seg->getDisplay(hcSegment::ON) ? 1 : 0;
  markRecorded(i);
  return &frames_[i];
}

void *VisibilityChannel::stuff(int t, float fraction) {
  OpRecord rec("VisibilityChannel::stuff", t, fraction);
  const int i = index(t);
  if (!recorded(i)) return nullptr;
  int visible = frames_[i].visible;
  if (fraction >= 0.5f && recorded(i + 1)) visible = frames_[i + 1].visible;
  if (hcSegment *seg = getSegment()) seg->setDisplay(hcSegment::ON, visible, 0);
  return &frames_[i];
}

void VisibilityChannel::sprintat(int t, char *buf, std::size_t size) {
  OpRecord rec("VisibilityChannel::sprintat", t);
  sprintText(t, buf, size);
}

void VisibilityChannel::scan(int t, hcValue *val) {
  OpRecord rec("VisibilityChannel::scan", t, val);
  scanValue(t, val);
}

void VisibilityChannel::drawtessel(int mode) { OpRecord rec("VisibilityChannel::drawtessel", mode); }

void VisibilityChannel::enable(hcSegment *seg) {
  OpRecord rec("VisibilityChannel::enable", seg);
  if (seg) seg->setDisplay(hcSegment::ON, 1, 0);
}

std::string VisibilityChannel::recordText(int index) { return std::to_string(frames_[index].visible); }

bool VisibilityChannel::parseRecord(const std::string &text, int index) {
  const auto w = words(text);
  int v;
  if (w.size() != 1 || !hcchannel_detail::toInt(w[0], v) || (v != 0 && v != 1)) return false;
  frames_[index].visible = v;
  return true;
}

bool VisibilityChannel::scanOther(hcValue *val, int index) {
  float f;
  if (!val->get(f)) return false;
  frames_[index].visible = f != 0 ? 1 : 0;
  return true;
}

int VisibilityChannel::fileParams(long &p1, double &p2) {
  p1 = forHarl_;
  p2 = 0;
  return VISIBILITY;
}

// ---------------------------------------------------------------------------
// VisibilityChannelObserver

namespace {
// The observer carries its channel's name when the channel is live.
const char *observerName(VisibilityChannel *vc) {
  hcChannel *c = hcChannel::live(vc);
  return c && c->name ? c->name : "";
}
}  // namespace

VisibilityChannelObserver::VisibilityChannelObserver(VisibilityChannel *vc, hcSegment *s)
    : hcObserver(observerName(vc), "VisibilityChannelObserver", s, ALL), vChannel(vc) {
  hccore::call("VisibilityChannelObserver::VisibilityChannelObserver", vc, s);
}

VisibilityChannelObserver::~VisibilityChannelObserver() {
  hccore::destroying(this, "VisibilityChannelObserver::~VisibilityChannelObserver");
  if (VisibilityChannel *c = channel()) c->watchGone(this);
}

VisibilityChannel *VisibilityChannelObserver::channel() {
  return dynamic_cast<VisibilityChannel *>(hcChannel::live(vChannel));
}

void VisibilityChannelObserver::update(int protocol) {
  // Updates are always journalled: they are the visible effect of whatever
  // notified the segment.
  hcjournal::call("VisibilityChannelObserver::update", protocol);
  VisibilityChannel *c = channel();
  if (!c) return;
  if (protocol == DESTROY) {
    if (static_cast<hcSubject *>(c->getTarget()) == getSubject()) c->targetGone();
  } else {
    ++c->changes_;
  }
}

void VisibilityChannelObserver::rebind(hcSegment *segment) {
  OpRecord rec("VisibilityChannelObserver::rebind", segment);
  setSubject(segment, ALL);
  VisibilityChannel *c = channel();
  if (!c) return;
  if (c->watch_ == this) {
    // This is the channel's own watch: it follows the segment already.
    c->target_ = segment;
    c->param_ = segment;
  } else {
    c->setTarget(segment);
  }
}

void VisibilityChannelObserver::destroy() {
  hccore::call("VisibilityChannelObserver::destroy");
  hccore::Quiet quiet;
  delete this;
}
