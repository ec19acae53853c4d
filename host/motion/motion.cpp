// Host library: the motion base class (timing, interpolation, references,
// texts) and the registry of host-owned motions.
#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sstream>

#include "host/constraint.h"
#include "host/figure.h"
#include "host/kit.h"
#include "host/motion.h"
#include "host/timeline.h"
#include "figure/figure_detail.h"

using hcfigure_detail::OpRecord;

namespace {

constexpr double kPi = 3.14159265358979323846;

long clampFrame(long t) { return std::clamp(t, -hcMotion::kMaxFrame, hcMotion::kMaxFrame); }

float unit(float f) {
  if (!(f > 0)) return 0;  // NaN too
  return f < 1 ? f : 1;
}

bool validName(const char *s) {
  if (!s || !*s) return false;
  for (; *s; ++s)
    if (std::isspace(static_cast<unsigned char>(*s))) return false;
  return true;
}

// A whole word as a long; false when it is not one.
bool readLong(const std::string &word, long &out) {
  if (word.empty()) return false;
  errno = 0;
  char *end = nullptr;
  long v = std::strtol(word.c_str(), &end, 10);
  if (errno || *end) return false;
  out = v;
  return true;
}

}  // namespace

namespace hcmotion_detail {

// Motions made by the host's factories.  Never freed, so that it outlives
// every motion whatever the order of static destruction.
std::vector<hcMotion *> &registry() {
  static auto *owned = new std::vector<hcMotion *>;
  return *owned;
}

// A (name, token) table, made again should a script delete it.
hcTypeTable *table(const char *name, std::initializer_list<std::pair<const char *, int>> entries) {
  hccore::Quiet quiet;
  hcTypeTable *t = hcTypeTable::findTable(name);
  if (!t) {
    t = hcTypeTable::create(name);
    for (const auto &[entry, token] : entries) t->addEntry(entry, token);
  }
  return t;
}

hcTypeTable *motionTypes() {
  return table("motionTypes", {{"hcMotion", hcMotion::MOTION},
                               {"hcJointMotion", hcMotion::JOINT_MOTION},
                               {"hcFigureMotion", hcMotion::FIGURE_MOTION},
                               {"hcScaleMotion", hcMotion::SCALE_MOTION},
                               {"hcScaleSegMotion", hcMotion::SCALESEG_MOTION},
                               {"hcPathMotion", hcMotion::PATH_MOTION},
                               {"hcFigurePathMotion", hcMotion::FIGUREPATH_MOTION},
                               {"hcTimedAttach", hcMotion::TIMED_ATTACH},
                               {"hcTimedConstraint", hcMotion::TIMED_CONSTRAINT},
                               {"hcColorMotion", hcMotion::COLOR_MOTION},
                               {"hcScriptMotion", hcMotion::SCRIPT_MOTION},
                               {"hcChannelSetMotion", hcMotion::CHANNELSET_MOTION},
                               {"hcGroupMotion", hcMotion::GROUP_MOTION},
                               {"hcDummyMotion", hcMotion::DUMMY_MOTION}});
}

}  // namespace hcmotion_detail

using hcmotion_detail::registry;

// ---------------------------------------------------------------------------
// Watching the objects a motion refers to.

class hcMotion::Watch : public hcObserver {
 public:
  Watch(hcMotion *owner, hcSubject *subject)
      : hcObserver("motion watch", "hcMotionWatch", subject, hcObserver::DESTROY),
        owner_(owner),
        watched_(subject) {}
  // The owner deletes this watch while it handles the update.
  void update(int protocol) override {
    if (protocol == hcObserver::DESTROY) owner_->subjectGone(watched_);
  }

 private:
  hcMotion *owner_;
  hcSubject *watched_;
};

void hcMotion::watch(hcSubject *s, bool observed) {
  if (!s) return;
  for (auto &w : watched_)
    if (w.subject == s) {
      w.observed = w.observed || observed;
      return;
    }
  hccore::Quiet quiet;
  watched_.push_back({s, new Watch(this, s), observed});
}

void hcMotion::subjectGone(hcSubject *s) {
  auto it = std::find_if(watched_.begin(), watched_.end(),
                         [s](const Watched &w) { return w.subject == s; });
  if (it == watched_.end()) return;
  const bool observed = it->observed;
  Watch *w = it->watch;
  watched_.erase(it);
  {
    hccore::Quiet quiet;
    delete w;
  }
  forget(s);
  if (observed) active_ = 0;
}

void hcMotion::forget(hcSubject *gone) {
  if (figure_ && static_cast<hcSubject *>(figure_) == gone) figure_ = nullptr;
  if (segment_ && static_cast<hcSubject *>(segment_) == gone) segment_ = nullptr;
  if (constraint_ && static_cast<hcSubject *>(constraint_) == gone) constraint_ = nullptr;
}

// ---------------------------------------------------------------------------
// Life cycle.

hcMotion::hcMotion(const char *name, int type) : group(nullptr), describe(nullptr), type_(type) {
  {
    hccore::Quiet quiet;
    if (validName(name)) hcObject::setName(name);
  }
  hccore::call("hcMotion::hcMotion", name, type);
}

hcMotion::~hcMotion() {
  hccore::destroying(this, "hcMotion::~hcMotion");
  hccore::Quiet quiet;
  if (timeline_) timeline_->drop(this);
  auto &owned = registry();
  owned.erase(std::remove(owned.begin(), owned.end(), this), owned.end());
  for (auto &w : watched_) delete w.watch;
  watched_.clear();
  delete[] describe;
  describe = nullptr;
}

hcType *hcMotion::getClassType() {
  hccore::call("hcMotion::getClassType");
  return hccore::typeNamed("hcMotion");
}

int hcMotion::setName(const char *newName) {
  OpRecord rec("hcMotion::setName", newName);
  if (!validName(newName)) return 0;
  return hcObject::setName(newName);
}

std::string hcMotion::headline() {
  std::string s = className();
  s += ' ';
  s += name && *name ? name : "-";
  s += ' ' + std::to_string(start_) + ' ' + std::to_string(end_);
  return s;
}

std::string hcMotion::params() { return ""; }

const char *hcMotion::getDescription() {
  OpRecord rec("hcMotion::getDescription");
  if (describe && *describe) return describe;
  text_ = headline();
  return text_.c_str();
}

int hcMotion::getMotionType() {
  OpRecord rec("hcMotion::getMotionType");
  return type_;
}

// ---------------------------------------------------------------------------
// Timing.

long hcMotion::getEndTime() {
  OpRecord rec("hcMotion::getEndTime");
  return end_;
}

void hcMotion::setStartFrame(long start) {
  OpRecord rec("hcMotion::setStartFrame", start);
  start_ = clampFrame(start);
  if (end_ < start_) end_ = start_;
}

void hcMotion::setEndFrame(long end) {
  OpRecord rec("hcMotion::setEndFrame", end);
  end_ = std::max(clampFrame(end), start_);
}

long hcMotion::getStartTime() {
  OpRecord rec("hcMotion::getStartTime");
  return start_;
}

void hcMotion::setStartTime(long start) {
  OpRecord rec("hcMotion::setStartTime", start);
  const long duration = end_ - start_;
  start_ = clampFrame(start);
  end_ = clampFrame(start_ + duration);
}

long hcMotion::getDuration() {
  OpRecord rec("hcMotion::getDuration");
  return end_ - start_;
}

void hcMotion::setDuration(long dur) {
  OpRecord rec("hcMotion::setDuration", dur);
  end_ = clampFrame(start_ + std::clamp(dur, 0L, 2 * kMaxFrame));
}

long hcMotion::getStartFrame() {
  OpRecord rec("hcMotion::getStartFrame");
  return start_;
}

long hcMotion::getEndFrame() {
  OpRecord rec("hcMotion::getEndFrame");
  return end_;
}

int hcMotion::getWeightFunction() {
  OpRecord rec("hcMotion::getWeightFunction");
  return weight_;
}

void hcMotion::setWeightFunction(int weight) {
  OpRecord rec("hcMotion::setWeightFunction", weight);
  if (weight >= WF_CONSTANT && weight <= WF_INCREASE) weight_ = weight;
}

int hcMotion::getVelocityControl() {
  OpRecord rec("hcMotion::getVelocityControl");
  return velocity_;
}

void hcMotion::setVelocityControl(int vc) {
  OpRecord rec("hcMotion::setVelocityControl", vc);
  if (vc >= VC_CONSTANT && vc <= VC_NONE) velocity_ = vc;
}

int hcMotion::getInterpType() {
  OpRecord rec("hcMotion::getInterpType");
  return interp_;
}

void hcMotion::setInterpType(int i) {
  OpRecord rec("hcMotion::setInterpType", i);
  if (i >= I_LINEAR && i <= I_NONE) interp_ = i;
}

int hcMotion::getOrder() {
  OpRecord rec("hcMotion::getOrder");
  if (!timeline_) return -1;
  int n = 0;
  for (hcMotion *m : timeline_->motions_) {
    if (m == this) return n;
    ++n;
  }
  return -1;
}

float hcMotion::timeFraction(long t) {
  OpRecord rec("hcMotion::timeFraction", t);
  t = clampFrame(t);
  if (end_ == start_) return t >= start_ ? 1.0f : 0.0f;
  return unit(static_cast<float>(static_cast<double>(t - start_) / static_cast<double>(end_ - start_)));
}

float hcMotion::velocityControl(float f) {
  OpRecord rec("hcMotion::velocityControl", f);
  f = unit(f);
  switch (velocity_) {
    case VC_ACCELERATE:
      return f * f;
    case VC_DECELERATE:
      return 1 - (1 - f) * (1 - f);
    case VC_EASEIN_EASEOUT:
      return static_cast<float>((1 - std::cos(kPi * f)) / 2);
    default:
      return f;
  }
}

float hcMotion::progress(long t) {
  const float g = velocityControl(timeFraction(t));
  switch (interp_) {
    case I_CSPLINE:
      return g * g * (3 - 2 * g);
    case I_NONE:
      return g >= 1 ? 1.0f : 0.0f;
    default:
      return g;
  }
}

float hcMotion::weightAt(float f) {
  f = unit(f);
  switch (weight_) {
    case WF_DECAY:
      return 1 - f;
    case WF_EASEIN_EASEOUT:
      return static_cast<float>(std::sin(kPi * f));
    case WF_INCREASE:
      return f;
    default:
      return 1;
  }
}

int hcMotion::activeq(long t) {
  OpRecord rec("hcMotion::activeq", t);
  return active_ && t >= start_ && t <= end_;
}

// ---------------------------------------------------------------------------
// Stages.

int hcMotion::preaction() {
  OpRecord rec("hcMotion::preaction");
  return 1;
}

int hcMotion::apply(long t) {
  OpRecord rec("hcMotion::apply", t);
  return 0;
}

int hcMotion::postaction() {
  OpRecord rec("hcMotion::postaction");
  return 1;
}

int hcMotion::init() {
  OpRecord rec("hcMotion::init");
  return 1;
}

void hcMotion::updatetime() { OpRecord rec("hcMotion::updatetime"); }

// ---------------------------------------------------------------------------
// Timeline, references, switches.

void hcMotion::setTimeline(hcTimeline *timeline) {
  OpRecord rec("hcMotion::setTimeline", timeline);
  if (timeline == timeline_) return;
  if (timeline_) timeline_->drop(this);
  if (timeline) timeline->add(this);
}

hcTimeline *hcMotion::getTimeline() {
  OpRecord rec("hcMotion::getTimeline");
  return timeline_;
}

hcFigure *hcMotion::getFigure() {
  OpRecord rec("hcMotion::getFigure");
  return figure_;
}

void hcMotion::setFigure(hcFigure *figure) {
  OpRecord rec("hcMotion::setFigure", figure);
  figure_ = figure;
  watch(figure);
}

void hcMotion::setSegment(hcSegment *segment) {
  OpRecord rec("hcMotion::setSegment", segment);
  segment_ = segment;
  watch(segment);
}

void hcMotion::observeFigure(hcFigure *fig) {
  OpRecord rec("hcMotion::observeFigure", fig);
  watch(fig, true);
}

void hcMotion::observeConstraint(hcConstraint *constr) {
  OpRecord rec("hcMotion::observeConstraint", constr);
  constraint_ = constr;
  watch(constr, true);
}

void hcMotion::observeObject(hcObject *object) {
  OpRecord rec("hcMotion::observeObject", object);
  watch(object, true);
}

void hcMotion::observeMaterial(hcMaterial *material) {
  OpRecord rec("hcMotion::observeMaterial", static_cast<const void *>(material));
  material_ = material;
}

hcMotionGroup *hcMotion::getMotionGroup() {
  OpRecord rec("hcMotion::getMotionGroup");
  return group;
}

void hcMotion::activate(int on) {
  OpRecord rec("hcMotion::activate", on);
  active_ = on != 0;
}

int hcMotion::isActive() {
  OpRecord rec("hcMotion::isActive");
  return active_;
}

// ---------------------------------------------------------------------------
// Texts.

const char *hcMotion::serialize() {
  OpRecord rec("hcMotion::serialize");
  text_ = headline() + ' ' + std::to_string(interp_) + ' ' + std::to_string(velocity_) + ' ' +
          std::to_string(weight_) + ' ' + std::to_string(active_);
  return text_.c_str();
}

int hcMotion::parse(const char *buf) {
  OpRecord rec("hcMotion::parse", buf);
  if (!buf) return 0;
  std::istringstream in(buf);
  std::vector<std::string> w;
  for (std::string word; in >> word;) w.push_back(word);
  if (w.size() != 8 || w[0] != className()) return 0;
  long v[6];
  for (int i = 0; i < 6; ++i)
    if (!readLong(w[i + 2], v[i])) return 0;
  const long start = v[0], end = v[1];
  if (start < -kMaxFrame || end > kMaxFrame || start > end) return 0;
  if (v[2] < I_LINEAR || v[2] > I_NONE || v[3] < VC_CONSTANT || v[3] > VC_NONE ||
      v[4] < WF_CONSTANT || v[4] > WF_INCREASE)
    return 0;
  if (w[1] != "-") hcObject::setName(w[1].c_str());
  start_ = start;
  end_ = end;
  interp_ = static_cast<int>(v[2]);
  velocity_ = static_cast<int>(v[3]);
  weight_ = static_cast<int>(v[4]);
  active_ = v[5] != 0;
  return 1;
}

int hcMotion::tessprint(char *buffer, int level) {
  OpRecord rec("hcMotion::tessprint", static_cast<const void *>(buffer), level);
  if (!buffer) return 0;
  std::string text;
  if (level > 0) {
    text = serialize();
  } else {
    text = className();
    text += ' ';
    text += name ? name : "";
  }
  std::snprintf(buffer, kDescriptionSize, "%s", text.c_str());
  return static_cast<int>(std::min(text.size(), kDescriptionSize - 1));
}

void hcMotion::tessprint(char *buffer, int level, std::size_t size) {
  OpRecord rec("hcMotion::tessprint", level, static_cast<long>(size));
  if (!buffer || size == 0) return;
  char text[kDescriptionSize];
  tessprint(text, level);
  std::snprintf(buffer, size, "%s", text);
}

int hcMotion::printText(char **buffer, const std::string &text) {
  if (!buffer) return 0;
  printed_ = text;
  *buffer = printed_.data();
  return static_cast<int>(printed_.size());
}

int hcMotion::printTo(char **buffer) { return printText(buffer, headline() + params()); }

int hcMotion::sprint(char **buffer) {
  OpRecord rec("hcMotion::sprint", buffer);
  return printTo(buffer);
}

int hcMotion::presprint(char **buffer) {
  OpRecord rec("hcMotion::presprint", buffer);
  return 0;
}

int hcMotion::scan(hcValue *value) {
  OpRecord rec("hcMotion::scan", value);
  return 0;
}

// ---------------------------------------------------------------------------
// Registry and tables.

hcTypeTable *hcMotion::getMotionTypeTable() {
  OpRecord rec("hcMotion::getMotionTypeTable");
  return hcmotion_detail::motionTypes();
}

void hcMotion::Init() {
  OpRecord rec("hcMotion::Init");
  hcmotion_detail::motionTypes();
  if (!hcGlobal::getTimeline()) hcGlobal::setTimeline(new hcTimeline);
}

void hcMotion::destroy(hcMotion *m) {
  OpRecord rec("hcMotion::destroy", m);
  auto &owned = registry();
  if (m && std::find(owned.begin(), owned.end(), m) != owned.end()) delete m;
}

void hcMotion::destroyAll() {
  OpRecord rec("hcMotion::destroyAll");
  auto &owned = registry();
  while (!owned.empty()) delete owned.back();
}
