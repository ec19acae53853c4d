// Host library: the timeline.
#include "host/timeline.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

#include "host/figure.h"
#include "host/kit.h"
#include "figure/figure_detail.h"

using hcfigure_detail::OpRecord;

namespace {

long clampFrame(long t) { return std::clamp(t, -hcMotion::kMaxFrame, hcMotion::kMaxFrame); }

}  // namespace

hcTimeline::hcTimeline() { hccore::call("hcTimeline::hcTimeline"); }

hcTimeline::~hcTimeline() {
  hccore::destroying(this, "hcTimeline::~hcTimeline");
  hccore::Quiet quiet;
  for (hcMotion *m : motions_) {
    m->timeline_ = nullptr;
    m->running_ = false;
  }
  motions_.clear();
  if (hcGlobal::getTimeline() == this) hcGlobal::setTimeline(nullptr);
}

// ---------------------------------------------------------------------------
// The motions.

void hcTimeline::add(hcMotion *m) {
  OpRecord rec("hcTimeline::add", m);
  if (!m || m->timeline_ == this) return;
  if (m->timeline_) m->timeline_->drop(m);
  motions_.push_back(m);
  m->timeline_ = this;
  m->running_ = false;
}

void hcTimeline::remove(hcMotion *m) {
  OpRecord rec("hcTimeline::remove", m);
  if (std::find(motions_.begin(), motions_.end(), m) != motions_.end()) drop(m);
}

void hcTimeline::drop(hcMotion *m) {
  hccore::Quiet quiet;
  motions_.remove(m);
  m->timeline_ = nullptr;
  m->running_ = false;
}

int hcTimeline::numMotions() {
  OpRecord rec("hcTimeline::numMotions");
  return static_cast<int>(motions_.size());
}

hcMotion *hcTimeline::findMotion(const char *name) {
  OpRecord rec("hcTimeline::findMotion", name);
  if (!name) return nullptr;
  for (hcMotion *m : motions_)
    if (m->name && std::strcmp(m->name, name) == 0) return m;
  for (hcMotion *m : motions_)
    if (m->fullname && std::strcmp(m->fullname, name) == 0) return m;
  return nullptr;
}

hcMotion::motionList *hcTimeline::getMotions() {
  OpRecord rec("hcTimeline::getMotions");
  return &motions_;
}

hList *hcTimeline::getMotionList() {
  OpRecord rec("hcTimeline::getMotionList");
  return motionList_.answer(std::vector<void *>(motions_.begin(), motions_.end()));
}

int hcTimeline::sort() {
  OpRecord rec("hcTimeline::sort");
  std::vector<hcMotion *> order(motions_.begin(), motions_.end());
  std::stable_sort(order.begin(), order.end(),
                   [](const hcMotion *a, const hcMotion *b) { return a->start_ < b->start_; });
  motions_.assign(order.begin(), order.end());
  return 1;
}

// ---------------------------------------------------------------------------
// Settings.

void hcTimeline::setPlaybackMode(int mode) {
  OpRecord rec("hcTimeline::setPlaybackMode", mode);
  if (mode == frames || mode == realtime) mode_ = mode;
}

int hcTimeline::getPlaybackMode() {
  OpRecord rec("hcTimeline::getPlaybackMode");
  return mode_;
}

void hcTimeline::setRealtimeFactor(float factor) {
  OpRecord rec("hcTimeline::setRealtimeFactor", factor);
  if (std::isfinite(factor) && factor > 0) factor_ = factor;
}

float hcTimeline::getRealtimeFactor() {
  OpRecord rec("hcTimeline::getRealtimeFactor");
  return factor_;
}

void hcTimeline::setInterpolate(int intp) {
  OpRecord rec("hcTimeline::setInterpolate", intp);
  interpolate_ = intp;
}

int hcTimeline::getInterpolate() {
  OpRecord rec("hcTimeline::getInterpolate");
  return interpolate_;
}

// ---------------------------------------------------------------------------
// Applying motions.

bool hcTimeline::takesPart(hcMotion *m, int constraints) const {
  return constraints || !dynamic_cast<hcTimedConstraint *>(m);
}

bool hcTimeline::covered(long frame, int constraints) const {
  for (hcMotion *m : motions_)
    if (m->active_ && takesPart(m, constraints) && frame >= m->start_ && frame <= m->end_) return true;
  return false;
}

bool hcTimeline::anyRunning() const {
  for (hcMotion *m : motions_)
    if (m->running_) return true;
  return false;
}

long hcTimeline::nextFrame(long from, long to, int constraints) const {
  const long dir = to > from ? 1 : -1;
  if (covered(from + dir, constraints) || anyRunning()) return from + dir;
  long best = to;
  for (hcMotion *m : motions_) {
    if (!m->active_ || !takesPart(m, constraints)) continue;
    if (dir > 0 && m->start_ > from && m->start_ < best) best = m->start_;
    if (dir < 0 && m->end_ < from && m->end_ > best) best = m->end_;
  }
  return best;
}

int hcTimeline::applyAt(long t, int constraints) {
  time_ = t;
  position_ = static_cast<double>(t);
  int applied = 0;
  const std::vector<hcMotion *> order(motions_.begin(), motions_.end());
  for (hcMotion *m : order) {
    if (!takesPart(m, constraints)) continue;
    const bool inside = m->active_ && t >= m->start_ && t <= m->end_;
    if (inside) {
      if (!m->running_) {
        m->preaction();
        m->running_ = true;
      }
      if (m->apply(t)) ++applied;
      if (t == m->end_) {
        m->postaction();
        m->running_ = false;
      }
    } else if (m->running_) {
      // Passed over its end: it finishes at its end pose.
      if (m->active_ && t > m->end_ && m->apply(m->end_)) ++applied;
      m->postaction();
      m->running_ = false;
    }
  }
  return applied;
}

long hcTimeline::frameOf(double position, int interp) const {
  double f = interp ? std::floor(position + 0.5) : std::floor(position);
  const double limit = static_cast<double>(hcMotion::kMaxFrame);
  return static_cast<long>(std::clamp(f, -limit, limit));
}

int hcTimeline::run(double from, double to, double stepSize, int interp, int constraints, int *applied) {
  const int dir = to >= from ? 1 : -1;
  double p = from;
  long f = frameOf(p, interp);
  const long last = frameOf(to, interp);
  *applied += applyAt(f, constraints);
  position_ = p;
  int visited = 1;
  while (f != last) {
    const long target = nextFrame(f, last, constraints);
    // The first position of the grid from + k * stepSize whose frame
    // reaches target.
    double q;
    if (dir > 0) {
      const double threshold = interp ? target - 0.5 : static_cast<double>(target);
      q = from + std::ceil((threshold - from) / stepSize) * stepSize;
    } else {
      const double threshold = interp ? target + 0.5 : target + 1.0;
      q = from - (std::floor((from - threshold) / stepSize) + 1) * stepSize;
    }
    // Rounding may leave the grid position short of the target frame.
    const long fq = frameOf(q, interp);
    if (dir * (fq - target) < 0 || dir * (fq - f) <= 0) q = static_cast<double>(target);
    if (dir * (q - to) >= 0) q = to;
    p = q;
    f = frameOf(p, interp);
    *applied += applyAt(f, constraints);
    position_ = p;
    ++visited;
  }
  position_ = to;
  return visited;
}

int hcTimeline::setTime(long t, int constraints) {
  OpRecord rec("hcTimeline::setTime", t, constraints);
  return applyAt(clampFrame(t), constraints);
}

int hcTimeline::setRealtime(float rt, int interp, int constraints) {
  OpRecord rec("hcTimeline::setRealtime", rt, interp, constraints);
  if (!std::isfinite(rt)) return 0;
  const double limit = static_cast<double>(hcMotion::kMaxFrame);
  const double p = std::clamp(static_cast<double>(rt), -limit, limit);
  const int applied = applyAt(frameOf(p, interp), constraints);
  position_ = p;
  return applied;
}

int hcTimeline::setFrame(long f) {
  OpRecord rec("hcTimeline::setFrame", f);
  time_ = clampFrame(f);
  position_ = static_cast<double>(time_);
  return 1;
}

long hcTimeline::getTime() {
  OpRecord rec("hcTimeline::getTime");
  return time_;
}

long hcTimeline::step(int n) {
  OpRecord rec("hcTimeline::step", n);
  if (n == 0) return time_;
  int applied = 0;
  if (mode_ == realtime) {
    const double limit = static_cast<double>(hcMotion::kMaxFrame);
    const double p = std::clamp(position_ + static_cast<double>(n) * factor_, -limit, limit);
    applyAt(frameOf(p, interpolate_), 1);
    position_ = p;
    return time_;
  }
  // Frame by frame, from the frame after the present one.
  const long from = time_;
  const long to = clampFrame(time_ + n);
  if (to == from) return time_;
  const long first = nextFrame(from, to, 1);
  run(static_cast<double>(first), static_cast<double>(to), 1.0, 0, 1, &applied);
  return time_;
}

// ---------------------------------------------------------------------------
// Playing.

int hcTimeline::playback(int on, const char *how, int start, int end) {
  OpRecord rec("hcTimeline::playback", on, how, start, end);
  if (!on) return 1;
  if (!how) return 0;
  const bool forward = std::strcmp(how, "forward") == 0;
  if (!forward && std::strcmp(how, "reverse") != 0) return 0;
  const long s = clampFrame(start);
  long e = end;
  if (end == -1) {
    e = 0;
    for (hcMotion *m : motions_) e = std::max(e, m->end_);
  }
  e = clampFrame(e);
  if (s > e) return 0;
  const double from = static_cast<double>(forward ? s : e);
  const double to = static_cast<double>(forward ? e : s);
  int applied = 0;
  if (mode_ == realtime) return run(from, to, factor_, interpolate_, 1, &applied);
  return run(from, to, 1.0, 0, 1, &applied);
}

long hcTimeline::startTime(int save) {
  OpRecord rec("hcTimeline::startTime", save);
  hasSaved_ = save != 0;
  saved_ = time_;
  return time_;
}

long hcTimeline::stopTime() {
  OpRecord rec("hcTimeline::stopTime");
  if (hasSaved_) {
    time_ = saved_;
    position_ = static_cast<double>(time_);
    hasSaved_ = false;
  }
  return time_;
}

long hcTimeline::getDuration(int ignoreoff) {
  OpRecord rec("hcTimeline::getDuration", ignoreoff);
  bool any = false;
  long latest = 0;
  for (hcMotion *m : motions_) {
    if (ignoreoff && !m->active_) continue;
    latest = any ? std::max(latest, m->end_) : m->end_;
    any = true;
  }
  return latest;
}

int hcTimeline::execute(int save) {
  OpRecord rec("hcTimeline::execute", save);
  bool any = false;
  long first = 0, last = 0;
  for (hcMotion *m : motions_) {
    if (!m->active_) continue;
    first = any ? std::min(first, m->start_) : m->start_;
    last = any ? std::max(last, m->end_) : m->end_;
    any = true;
  }
  if (!any) return 0;
  const long before = time_;
  const double position = position_;
  int applied = 0;
  run(static_cast<double>(first), static_cast<double>(last), 1.0, 0, 1, &applied);
  if (save) {
    time_ = before;
    position_ = position;
  }
  return applied;
}

// ---------------------------------------------------------------------------
// Editing time.

int hcTimeline::insertTime(long t, long amount) {
  OpRecord rec("hcTimeline::insertTime", t, amount);
  if (amount < 1) return 0;
  t = clampFrame(t);
  amount = std::min(amount, hcMotion::kMaxFrame);
  int changed = 0;
  for (hcMotion *m : motions_) {
    if (m->start_ >= t) {
      m->start_ = clampFrame(m->start_ + amount);
      m->end_ = clampFrame(m->end_ + amount);
      ++changed;
    } else if (m->end_ >= t) {
      m->end_ = clampFrame(m->end_ + amount);
      ++changed;
    }
  }
  return changed;
}

int hcTimeline::deleteTime(long t, long amount) {
  OpRecord rec("hcTimeline::deleteTime", t, amount);
  if (amount < 1) return 0;
  t = clampFrame(t);
  amount = std::min(amount, 2 * hcMotion::kMaxFrame);
  const long stop = t + amount;
  auto shift = [&](long x) { return x < t ? x : (x >= stop ? x - amount : t); };
  int changed = 0;
  for (hcMotion *m : motions_) {
    const long s = shift(m->start_), e = shift(m->end_);
    if (s == m->start_ && e == m->end_) continue;
    m->start_ = s;
    m->end_ = e;
    ++changed;
  }
  return changed;
}
