// hcPosture: named joint values of a figure; and the subject references that
// postures, bones and twist links keep.
#include "core/messages.h"
#include "host/posture.h"
#include "core/word_file.h"
#include "figure/figure_detail.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

using namespace hcfigure_detail;

// ---------------------------------------------------------------------------
// SubjectRef: an observer attached for DESTROY.

namespace hcposture_detail {

class SubjectRef::Watch : public hcObserver {
 public:
  Watch(SubjectRef *ref, hcSubject *subject, const char *owner)
      : hcObserver(owner, "hcObserver", subject, hcObserver::DESTROY), ref_(ref) {}
  ~Watch() override {
    if (ref_) ref_->watch_ = nullptr;
  }

  void update(int protocol) override {
    // A watch that a script rebound to another subject speaks for nothing.
    if (protocol != hcObserver::DESTROY || !ref_ || getSubject() != ref_->subject_) return;
    std::function<void()> gone = ref_->gone_;
    ref_->subject_ = nullptr;
    ref_->watch_ = nullptr;
    ref_ = nullptr;
    // The subject skips observers that are gone by the time it reaches
    // them; the callback may destroy the owner of the reference.
    delete this;
    if (gone) gone();
  }

  SubjectRef *ref_;
};

SubjectRef::~SubjectRef() {
  if (!watch_) return;
  hccore::Quiet quiet;
  watch_->ref_ = nullptr;
  delete watch_;
}

void SubjectRef::watch(hcSubject *subject, const char *owner, std::function<void()> gone) {
  hccore::Quiet quiet;
  if (watch_) {
    watch_->ref_ = nullptr;
    delete watch_;
    watch_ = nullptr;
  }
  subject_ = subject;
  gone_ = std::move(gone);
  if (subject) watch_ = new Watch(this, subject, owner);
}

bool SubjectRef::alive() const {
  // A watch that was rebound to another subject no longer vouches for this
  // one; one that was never attached (the subject was not live) neither.
  return subject_ && watch_ && watch_->getSubject() == subject_;
}

}  // namespace hcposture_detail

// ---------------------------------------------------------------------------

namespace {

std::vector<hcPosture *> &registry() {
  static auto *all = new std::vector<hcPosture *>;
  return *all;
}

bool registered(const void *p) {
  auto &all = registry();
  return p && std::find(all.begin(), all.end(), p) != all.end();
}

bool emptyText(const char *s) { return !s || !*s; }

std::string escape(const std::string &s) {
  std::string out;
  for (unsigned char c : s) {
    if (c <= ' ' || c == '%' || c == 127) {
      char buf[4];
      std::snprintf(buf, sizeof buf, "%%%02X", c);
      out += buf;
    } else {
      out += char(c);
    }
  }
  return out;
}

bool unescape(const std::string &in, std::string &out) {
  out.clear();
  for (size_t i = 0; i < in.size(); ++i) {
    if (in[i] != '%') {
      out += in[i];
      continue;
    }
    if (i + 2 >= in.size() || !std::isxdigit(static_cast<unsigned char>(in[i + 1])) ||
        !std::isxdigit(static_cast<unsigned char>(in[i + 2])))
      return false;
    char hex[3] = {in[i + 1], in[i + 2], 0};
    long c = std::strtol(hex, nullptr, 16);
    if (c == 0) return false;
    out += char(c);
    i += 2;
  }
  return !out.empty();
}

std::string number(float f) {
  char buf[32];
  std::snprintf(buf, sizeof buf, "%.9g", f);
  return buf;
}

bool toFloat(const std::string &w, float &out) {
  errno = 0;
  char *end = nullptr;
  double d = std::strtod(w.c_str(), &end);
  if (end == w.c_str() || *end || errno == ERANGE || !std::isfinite(d)) return false;
  out = static_cast<float>(d);
  return true;
}

bool toCount(const std::string &w, long max, long &out) {
  char *end = nullptr;
  errno = 0;
  long n = std::strtol(w.c_str(), &end, 10);
  if (end == w.c_str() || *end || errno == ERANGE || n < 0 || n > max) return false;
  out = n;
  return true;
}

constexpr long kMaxDofs = 64;

}  // namespace

// ---------------------------------------------------------------------------
// Life cycle and registry.

hcPosture::hcPosture(hcFigure *figure, const char *name) : hcRefObject(1), name_(name) {
  figure_.watch(figure, "hcPosture", [this] { delete this; });
  fullName_ = std::string(figure->getName() ? figure->getName() : "") + "." + name_;
  registry().push_back(this);
}

hcPosture::~hcPosture() {
  hccore::destroying(this, "hcPosture::~hcPosture");
  auto &all = registry();
  all.erase(std::remove(all.begin(), all.end(), this), all.end());
  HandedList::forget(this);
  // The figure's list of postures no longer holds this one.
  if (hcFigure *fig = figure_.get()) {
    hccore::Quiet quiet;
    fig->getPostureList();
  }
}

std::vector<hcPosture *> hcPosture::of(hcFigure *figure) {
  std::vector<hcPosture *> mine;
  for (hcPosture *p : registry())
    if (figure && p->figure_.get() == figure) mine.push_back(p);
  return mine;
}

hcPosture *hcPosture::make(hcFigure *figure, const char *name) {
  if (!figure || emptyText(name) || find(figure, name)) return nullptr;
  return new hcPosture(figure, name);
}

hcPosture *hcPosture::find(hcFigure *figure, const char *name) {
  OpRecord rec("hcPosture::find", figure, name);
  if (!figure || !name) return nullptr;
  for (hcPosture *p : registry())
    if (p->figure_.get() == figure && (p->name_ == name || p->fullName_ == name)) return p;
  return nullptr;
}

hcPosture *hcPosture::create(hcFigure *figure, const char *name) {
  OpRecord rec("hcPosture::create", figure, name);
  hcPosture *p = make(figure, name);
  if (p) p->capture(figure);
  return p;
}

hcPosture *hcPosture::add(hcFigure *figure, const char *newName, const char *fileName) {
  OpRecord rec("hcPosture::add", figure, newName, fileName);
  if (!figure || emptyText(newName) || find(figure, newName)) return nullptr;
  // The file is read whole first; a file that does not parse is reported.
  std::vector<JointValues> joints;
  hMatrix location;
  if (!readPositionsFile(figure, fileName, location, joints)) {
    hcmsg::unparsable(fileName);
    return nullptr;
  }
  hcPosture *p = make(figure, newName);
  p->location_ = location;
  p->joints_ = std::move(joints);
  return p;
}

bool hcPosture::readPositionsFile(hcFigure *figure, const char *fileName, hMatrix &location,
                                  std::vector<JointValues> &joints) {
  std::vector<std::string> w;
  if (!hcio::readWords(fileName, "hcpositions", w)) return false;
  // hcpositions 1 location <16> { joint <name> <n> <n values> } end
  size_t i = 0;
  auto next = [&](std::string &out) {
    if (i >= w.size()) return false;
    out = w[i++];
    return true;
  };
  std::string word;
  if (!next(word) || word != "hcpositions" || !next(word) || word != "1" || !next(word) || word != "location")
    return false;
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c)
      if (!next(word) || !toFloat(word, location.m[r][c])) return false;
  for (;;) {
    if (!next(word)) return false;
    if (word == "end") break;
    std::string name, count;
    long n = 0;
    JointValues jv;
    if (word != "joint" || !next(name) || !unescape(name, jv.joint) || !next(count) || !toCount(count, kMaxDofs, n))
      return false;
    hcJoint *j = figure->findJoint(jv.joint.c_str());
    if (!j || j->getNDOFs() != n) return false;
    jv.values.resize(n);
    for (float &v : jv.values)
      if (!next(word) || !toFloat(word, v)) return false;
    joints.push_back(std::move(jv));
  }
  return i == w.size();
}

int hcPosture::remove(hcPosture *posture) {
  OpRecord rec("hcPosture::remove", posture);
  if (!registered(posture)) return 0;
  delete posture;
  return 1;
}

hcPosture *hcPosture::resolve(hList *l) {
  OpRecord rec("hcPosture::resolve", l);
  if (!l) return nullptr;
  void *data = l->getData();
  return registered(data) ? static_cast<hcPosture *>(data) : nullptr;
}

// ---------------------------------------------------------------------------
// Recording, applying, text.

void hcPosture::capture(hcFigure *figure) {
  figure->getLocation(location_);
  joints_.clear();
  for (hcJoint *j : items<hcJoint>(figure->getJoints())) {
    JointValues jv;
    jv.joint = j->getName() ? j->getName() : "";
    int n = j->getNDOFs();
    jv.values.assign(std::max(n, 0), 0.0f);
    if (n > 0) j->getAngles(jv.values.data(), 1);
    joints_.push_back(std::move(jv));
  }
}

std::string hcPosture::text() const {
  std::string out = "hcpositions 1\nlocation";
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) out += " " + number(location_.m[r][c]);
  out += "\n";
  for (const JointValues &jv : joints_) {
    out += "joint " + escape(jv.joint) + " " + std::to_string(jv.values.size());
    for (float v : jv.values) out += " " + number(v);
    out += "\n";
  }
  return out + "end\n";
}

int hcPosture::apply() {
  OpRecord rec("hcPosture::apply");
  hcFigure *fig = figure_.get();
  if (!fig) return 0;
  // Everything is checked before anything changes.
  std::vector<hcJoint *> targets;
  for (const JointValues &jv : joints_) {
    hcJoint *j = fig->findJoint(jv.joint.c_str());
    if (!j || j->getNDOFs() != static_cast<int>(jv.values.size())) return 0;
    targets.push_back(j);
  }
  for (size_t k = 0; k < targets.size(); ++k) {
    std::vector<float> values = joints_[k].values;
    if (!values.empty()) targets[k]->setAngles(values.data(), 1);
  }
  return 1;
}

int hcPosture::save(const char *filename) {
  OpRecord rec("hcPosture::save", filename);
  if (emptyText(filename)) return 0;
  FILE *f = hcmsg::open(filename, "w");
  if (!f) return 0;
  std::string t = text();
  bool ok = std::fwrite(t.data(), 1, t.size(), f) == t.size();
  ok = std::fclose(f) == 0 && ok;
  return ok ? 1 : 0;
}

const char *hcPosture::saveToBuffer() {
  OpRecord rec("hcPosture::saveToBuffer");
  buffer_ = text();
  return buffer_.c_str();
}

const char *hcPosture::cacheInBuffer() {
  OpRecord rec("hcPosture::cacheInBuffer");
  hcFigure *fig = figure_.get();
  if (!fig) return nullptr;
  capture(fig);
  buffer_ = text();
  return buffer_.c_str();
}

const char *hcPosture::getName() {
  OpRecord rec("hcPosture::getName");
  return name_.c_str();
}

const char *hcPosture::getFullName() {
  OpRecord rec("hcPosture::getFullName");
  return fullName_.c_str();
}
