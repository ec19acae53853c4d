// Host library: channel sets, bound channel sets and their bindings.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

#include "core/messages.h"
#include "host/kit.h"
#include "host/timeline.h"
#include "motion/channel_detail.h"
#include "figure/figure_detail.h"

using hcchannel_detail::channelsOf;
using hcchannel_detail::OpRecord;

hList *hcChannelSet::globalList = nullptr;
hList *hcBoundChannelSet::globalList = nullptr;

namespace {

template <class T>
std::vector<T *> registry(hList *head) {
  std::vector<T *> out;
  for (hList *n = hList::iterator(head, nullptr); n; n = hList::iterator(head, n))
    out.push_back(static_cast<T *>(n->getData()));
  return out;
}

bool samePrototype(hcChannel *c, const char *proto) {
  const char *p = c->getPrototype();
  return p && proto && std::strcmp(p, proto) == 0;
}

}  // namespace

// ---------------------------------------------------------------------------
// hcChannelSet

hcChannelSet::hcChannelSet(const char *n) : name_(n ? n : "") {
  OpRecord rec("hcChannelSet::hcChannelSet", n);
  hList::append(&globalList, this);
}

hcChannelSet::~hcChannelSet() {
  hccore::Quiet quiet;
  hcfigure_detail::remove(&globalList, this);
  HandedList::forget(this);
  for (hcBoundChannelSet *b : registry<hcBoundChannelSet>(hcBoundChannelSet::globalList))
    if (b->cs_ == this) b->cs_ = nullptr;
  hList::destroy(&channels_, nullptr);
  const std::vector<hcChannel *> owned = std::move(owned_);
  owned_.clear();
  for (hcChannel *c : owned) delete c;
}

hcChannelSet *hcChannelSet::live(const void *p) {
  if (!p) return nullptr;
  for (hcChannelSet *s : registry<hcChannelSet>(globalList))
    if (static_cast<const void *>(s) == p) return s;
  return nullptr;
}

int hcChannelSet::destroy(hcChannelSet *cs) {
  OpRecord rec("hcChannelSet::destroy", cs);
  if (!live(cs)) return 0;
  delete cs;
  return 1;
}

hcChannelSet *hcChannelSet::load(const char *filename) {
  OpRecord rec("hcChannelSet::load", filename);
  hcChannelSet *set = hcChannelFile::read(filename);
  if (!set) hcmsg::unparsable(filename);
  return set;
}

hcChannelSet *hcChannelSet::find(const char *name) {
  hccore::call("hcChannelSet::find", name);
  if (!name) return nullptr;
  for (hcChannelSet *s : registry<hcChannelSet>(globalList))
    if (s->name_ == name) return s;
  return nullptr;
}

const char *hcChannelSet::getName() {
  hccore::call("hcChannelSet::getName");
  return name_.c_str();
}

hcChannelSet *hcChannelSet::resolve(hList *l) {
  hccore::call("hcChannelSet::resolve", l);
  return l ? live(l->getData()) : nullptr;
}

void hcChannelSet::own(hcChannel *ch) {
  hList::append(&channels_, ch);
  owned_.push_back(ch);
}

void hcChannelSet::forget(hcChannel *ch) {
  hcfigure_detail::remove(&channels_, ch);
  owned_.erase(std::remove(owned_.begin(), owned_.end(), ch), owned_.end());
}

std::string hcChannelSet::text() {
  const auto chans = channelsOf(channels_);
  std::string out = "hcChannelSet " + name_ + " fps " + std::to_string(fps_) + " channels " +
                    std::to_string(chans.size()) + "\n";
  for (hcChannel *c : chans) out += "  " + c->describe(0) + "\n";
  return out;
}

int hcChannelSet::printinfo(int show) {
  OpRecord rec("hcChannelSet::printinfo", show);
  if (show) hcchannel_detail::show(text());
  return static_cast<int>(channelsOf(channels_).size());
}

int hcChannelSet::printCS(const char *name, int show) {
  OpRecord rec("hcChannelSet::printCS", name, show);
  if (!name) return 0;
  std::string out;
  int count = 0;
  for (hcChannelSet *s : registry<hcChannelSet>(globalList))
    if (s->name_ == name) {
      ++count;
      out += s->text();
    }
  if (show && count) hcchannel_detail::show(out);
  return count;
}

int hcChannelSet::printAll(int show) {
  OpRecord rec("hcChannelSet::printAll", show);
  std::string out;
  int count = 0;
  for (hcChannelSet *s : registry<hcChannelSet>(globalList)) {
    ++count;
    out += s->text();
  }
  if (show && count) hcchannel_detail::show(out);
  return count;
}

void hcChannelSet::setRealtimeMethod(int which) {
  OpRecord rec("hcChannelSet::setRealtimeMethod", which);
  realtimeMethod_ = which;
  for (hcChannel *c : channelsOf(channels_))
    if (auto *r = dynamic_cast<hcRealtimeChannel *>(c)) r->setMethod(which);
}

int hcChannelSet::getRealtimeMethod() {
  hccore::call("hcChannelSet::getRealtimeMethod");
  return realtimeMethod_;
}

void hcChannelSet::stuffRealtime(double rt, int doconstraints, int interpolate) {
  OpRecord rec("hcChannelSet::stuffRealtime", rt, doconstraints, interpolate);
  const auto chans = channelsOf(channels_);
  hcRealtimeChannel *clock = nullptr;
  for (hcChannel *c : chans)
    if ((clock = dynamic_cast<hcRealtimeChannel *>(c))) break;
  int frame;
  float fraction = 0;
  if (clock) {
    frame = clock->getFrame(rt, &fraction);
    if (frame < 0) return;
  } else {
    const double position = rt * fps_;
    if (!std::isfinite(position) || position < 0 || position > std::numeric_limits<int>::max()) return;
    frame = static_cast<int>(std::floor(position));
    fraction = static_cast<float>(position - frame);
  }
  for (hcChannel *c : chans)
    if (c != clock && c->active_ && !dynamic_cast<hcRealtimeChannel *>(c))
      c->stuff(frame, interpolate ? fraction : 0.0f);
}

int hcChannelSet::getSize() {
  hccore::call("hcChannelSet::getSize");
  int size = 0;
  for (hcChannel *c : channelsOf(channels_)) size = std::max(size, c->frameCount());
  return size;
}

int hcChannelSet::getFPS() {
  hccore::call("hcChannelSet::getFPS");
  return fps_;
}

int hcChannelSet::setFPS(int fpsv) {
  hccore::call("hcChannelSet::setFPS", fpsv);
  if (fpsv < 1) return 0;
  fps_ = fpsv;
  return 1;
}

int hcChannelSet::addChannel(hcChannel *ch) {
  hccore::call("hcChannelSet::addChannel", ch);
  if (!hcChannel::live(ch) || hcfigure_detail::contains(channels_, ch)) return 0;
  hList::append(&channels_, ch);
  return 1;
}

int hcChannelSet::removeChannel(hcChannel *ch) {
  hccore::call("hcChannelSet::removeChannel", ch);
  if (!ch || !hcfigure_detail::contains(channels_, ch)) return 0;
  // A channel the set made is from now on its own (delete_hcChannel ends it).
  forget(ch);
  return 1;
}

int hcChannelSet::hasChannel(hcChannel *ch) {
  hccore::call("hcChannelSet::hasChannel", ch);
  return ch && hcfigure_detail::contains(channels_, ch) ? 1 : 0;
}

int hcChannelSet::saveInternal(const char *filename, const char *name) {
  OpRecord rec("hcChannelSet::saveInternal", filename, name);
  hcChannelSet *set = nullptr;
  if (name) {
    set = find(name);
  } else {
    for (hcChannelSet *s : registry<hcChannelSet>(globalList)) set = s;
  }
  if (!set) return 0;
  return hcChannelFile::writeAll(filename, set->name_.c_str(), set->fps_, set->realtimeMethod_,
                                 channelsOf(set->channels_));
}

int hcChannelSet::stuffToInternal() {
  OpRecord rec("hcChannelSet::stuffToInternal");
  return 0;
}

int hcChannelSet::save(const char *filename, hList *figList, const char *name, int from, int to,
                       int stride, int fps) {
  OpRecord rec("hcChannelSet::save", filename, figList, name, from, to, stride, fps);
  int count;
  if (!filename || fps < 1 || !hcchannel_detail::frameRange(from, to, stride, count)) return 0;
  // Sample k is recorded at frame k of channels made for the call.
  std::vector<hcChannel *> recorded;
  for (hList *n = hList::iterator(figList, nullptr); n; n = hList::iterator(figList, n)) {
    auto *fig = static_cast<hcFigure *>(n->getData());
    if (!fig) continue;
    recorded.push_back(new hcFigureChannel(fig, 0, count));
    for (hList *j = hList::iterator(fig->getJoints(), nullptr); j; j = hList::iterator(fig->getJoints(), j))
      recorded.push_back(new hcJointChannel(static_cast<hcJoint *>(j->getData()), 0, count));
  }
  int status = 0;
  if (!recorded.empty()) {
    hcTimeline *timeline = hcGlobal::getTimeline();
    const long before = timeline ? timeline->getTime() : 0;
    for (int k = 0; k < count; ++k) {
      if (timeline) timeline->setTime(static_cast<long>(from) + static_cast<long>(k) * stride);
      for (hcChannel *c : recorded) c->grab(k);
    }
    if (timeline) timeline->setTime(before);
    status = hcChannelFile::writeSampled(filename, name, fps, 0, recorded, 0, 1, count);
  }
  for (hcChannel *c : recorded) delete c;
  return status;
}

int hcChannelSet::saveSubset(const char *sfilename, hList *savecList, const char *cname, int from,
                             int to, int stride, int fps) {
  OpRecord rec("hcChannelSet::saveSubset", sfilename, savecList, cname, from, to, stride, fps);
  int count;
  if (!sfilename || fps < 1 || !hcchannel_detail::frameRange(from, to, stride, count)) return 0;
  std::vector<hcChannel *> chosen;
  for (hcChannel *c : channelsOf(savecList))
    if (hcfigure_detail::contains(channels_, c) && std::find(chosen.begin(), chosen.end(), c) == chosen.end())
      chosen.push_back(c);
  if (chosen.empty()) return 0;
  return hcChannelFile::writeSampled(sfilename, cname ? cname : name_.c_str(), fps, realtimeMethod_, chosen,
                                     from, stride, count);
}

hList *hcChannelSet::getPrototypes() {
  hccore::call("hcChannelSet::getPrototypes");
  hList *out = nullptr;
  for (hcChannel *c : channelsOf(channels_)) {
    if (c->prototype_.empty()) continue;
    bool seen = false;
    for (hList *n = hList::iterator(out, nullptr); n && !seen; n = hList::iterator(out, n))
      seen = std::strcmp(static_cast<const char *>(n->getData()), c->prototype_.c_str()) == 0;
    if (!seen) hList::append(&out, const_cast<char *>(c->prototype_.c_str()));
  }
  return out;
}

// ---------------------------------------------------------------------------
// hcChannelBinding

hcChannelBinding::hcChannelBinding(hcBoundChannelSet *owner, const char *prototype, hcFigure *figure)
    : owner_(owner), prototype_(prototype ? prototype : ""), figure_(figure) {
  hccore::Quiet quiet;
  if (figure) watch_ = new hcChannelWatch(figure, this);
}

hcChannelBinding::~hcChannelBinding() {
  hcObserver *watch = watch_;
  watch_ = nullptr;
  hcchannel_detail::dropWatch(watch);
}

hcFigure *hcChannelBinding::getFigure() {
  if (figure_ && (!watch_ || watch_->getSubject() != static_cast<hcSubject *>(figure_))) figureGone();
  return figure_;
}

void hcChannelBinding::figureGone() {
  hcFigure *figure = figure_;
  figure_ = nullptr;
  if (owner_ && figure) owner_->figureGone(figure);
}

void hcChannelBinding::watchGone(hcObserver *watch) {
  if (!watch || watch != watch_) return;
  watch_ = nullptr;
  figureGone();
}

// ---------------------------------------------------------------------------
// hcBoundChannelSet

hcBoundChannelSet::hcBoundChannelSet(const char *n, hcChannelSet *c) : name_(n ? n : ""), cs_(c) {
  hList::append(&globalList, this);
}

hcBoundChannelSet::~hcBoundChannelSet() {
  hccore::Quiet quiet;
  hcfigure_detail::remove(&globalList, this);
  dropBindings();
}

hcBoundChannelSet *hcBoundChannelSet::live(const void *p) {
  if (!p) return nullptr;
  for (hcBoundChannelSet *b : registry<hcBoundChannelSet>(globalList))
    if (static_cast<const void *>(b) == p) return b;
  return nullptr;
}

hcBoundChannelSet *hcBoundChannelSet::create(const char *n, hcChannelSet *c) {
  OpRecord rec("hcBoundChannelSet::create", n, c);
  if (!hcChannelSet::live(c)) return nullptr;
  return new hcBoundChannelSet(n, c);
}

hcBoundChannelSet *hcBoundChannelSet::createEmpty(const char *n, hList *objectList) {
  OpRecord rec("hcBoundChannelSet::createEmpty", n, objectList);
  auto *cs = new hcChannelSet(n);
  auto *bcs = new hcBoundChannelSet(n, cs);
  std::vector<hcFigure *> figures;
  auto note = [&figures](hcFigure *f) {
    if (f && std::find(figures.begin(), figures.end(), f) == figures.end()) figures.push_back(f);
  };
  for (hList *node = hList::iterator(objectList, nullptr); node; node = hList::iterator(objectList, node)) {
    auto *object = static_cast<hcObject *>(node->getData());
    if (auto *fig = dynamic_cast<hcFigure *>(object)) {
      cs->own(new hcFigureChannel(fig, 0, 0));
      for (hList *j = hList::iterator(fig->getJoints(), nullptr); j; j = hList::iterator(fig->getJoints(), j))
        cs->own(new hcJointChannel(static_cast<hcJoint *>(j->getData()), 0, 0));
      note(fig);
    } else if (auto *joint = dynamic_cast<hcJoint *>(object)) {
      cs->own(new hcJointChannel(joint, 0, 0));
      note(joint->getFigure());
    } else if (auto *seg = dynamic_cast<hcSegment *>(object)) {
      cs->own(new VisibilityChannel(seg, 0, 0));
      note(seg->getFigure());
    }
  }
  for (hcFigure *f : figures) bcs->bindImpl(f->getName(), f);
  return bcs;
}

int hcBoundChannelSet::destroy(hcBoundChannelSet *bcs, int destroyCS) {
  OpRecord rec("hcBoundChannelSet::destroy", bcs, destroyCS);
  if (!live(bcs)) return 0;
  hcChannelSet *cs = bcs->cs_;
  delete bcs;
  if (destroyCS && hcChannelSet::live(cs)) delete cs;
  return 1;
}

hcBoundChannelSet *hcBoundChannelSet::find(const char *name) {
  hccore::call("hcBoundChannelSet::find", name);
  if (!name) return nullptr;
  for (hcBoundChannelSet *b : registry<hcBoundChannelSet>(globalList))
    if (b->name_ == name) return b;
  return nullptr;
}

hcBoundChannelSet *hcBoundChannelSet::resolve(hList *l) {
  hccore::call("hcBoundChannelSet::resolve", l);
  return l ? live(l->getData()) : nullptr;
}

const char *hcBoundChannelSet::getName() {
  hccore::call("hcBoundChannelSet::getName");
  return name_.c_str();
}

int hcBoundChannelSet::getSize() {
  OpRecord rec("hcBoundChannelSet::getSize");
  return cs_ ? cs_->getSize() : 0;
}

int hcBoundChannelSet::isBound() {
  hccore::call("hcBoundChannelSet::isBound");
  if (!cs_) return 0;
  bool any = false;
  for (hcChannel *c : channelsOf(cs_->channels_)) {
    if (c->prototype_.empty()) continue;
    any = true;
    if (!c->getTarget()) return 0;
  }
  return any ? 1 : 0;
}

hcChannelSet *hcBoundChannelSet::getChannelSet() {
  hccore::call("hcBoundChannelSet::getChannelSet");
  return cs_;
}

hcChannelSet *hcBoundChannelSet::getCS() {
  hccore::call("hcBoundChannelSet::getCS");
  return cs_;
}

const char *hcBoundChannelSet::getFigureBinding(hcFigure *figure) {
  hccore::call("hcBoundChannelSet::getFigureBinding", figure);
  if (!figure) return nullptr;
  for (hcChannelBinding *b : bindings_)
    if (b->getFigure() == figure) return b->getPrototype();
  return nullptr;
}

int hcBoundChannelSet::grab(int t) {
  OpRecord rec("hcBoundChannelSet::grab", t);
  if (!cs_) return 0;
  int count = 0;
  for (hcChannel *c : channelsOf(cs_->channels_))
    if (c->active_ && c->grab(t)) ++count;
  return count;
}

void hcBoundChannelSet::stuff(int t, float fraction) {
  OpRecord rec("hcBoundChannelSet::stuff", t, fraction);
  if (!cs_) return;
  for (hcChannel *c : channelsOf(cs_->channels_))
    if (c->active_) c->stuff(t, fraction);
}

int hcBoundChannelSet::resize(int size) {
  OpRecord rec("hcBoundChannelSet::resize", size);
  if (!cs_ || size < 0) return 0;
  int ok = 1;
  for (hcChannel *c : channelsOf(cs_->channels_))
    if (!c->resize(size)) ok = 0;
  return ok;
}

int hcBoundChannelSet::saveCS(const char *filename, int from, int to, int stride, int fps,
                              const char *csname) {
  OpRecord rec("hcBoundChannelSet::saveCS", filename, from, to, stride, fps, csname);
  int count;
  if (!cs_ || !filename || fps < 1 || !hcchannel_detail::frameRange(from, to, stride, count)) return 0;
  return hcChannelFile::writeSampled(filename, csname ? csname : name_.c_str(), fps, cs_->realtimeMethod_,
                                     channelsOf(cs_->channels_), from, stride, count);
}

int hcBoundChannelSet::unbind() {
  OpRecord rec("hcBoundChannelSet::unbind");
  if (!cs_) return 0;
  for (hcChannel *c : channelsOf(cs_->channels_))
    if (!c->prototype_.empty()) c->setTarget(nullptr);
  dropBindings();
  return 1;
}

hcChannelBinding *hcBoundChannelSet::bindingOf(const char *proto) {
  for (hcChannelBinding *b : bindings_)
    if (std::strcmp(b->getPrototype(), proto) == 0) return b;
  return nullptr;
}

void hcBoundChannelSet::dropBindings() {
  const auto bindings = std::move(bindings_);
  bindings_.clear();
  figures_.clear();
  for (hcChannelBinding *b : bindings) delete b;
}

void hcBoundChannelSet::figureGone(hcFigure *figure) {
  for (hcChannelBinding *b : bindings_)
    if (b->getFigure() == figure) return;  // still bound through another prototype
  figures_.remove(figure);
}

int hcBoundChannelSet::bindImpl(const char *proto, hcFigure *figure) {
  hccore::Quiet quiet;
  if (!proto || !figure || !cs_) return Failed;
  std::vector<std::pair<hcChannel *, hcObject *>> targets;
  for (hcChannel *c : channelsOf(cs_->channels_)) {
    if (!samePrototype(c, proto)) continue;
    hcObject *target = c->findTarget(figure);
    if (!target) return Failed;
    targets.emplace_back(c, target);
  }
  if (targets.empty()) return Failed;
  hcChannelBinding *existing = bindingOf(proto);
  if (existing && existing->getFigure() == figure) {
    bool whole = true;
    for (const auto &[c, target] : targets) whole = whole && c->getTarget() == target;
    if (whole) return Found;
  }
  if (existing) {
    hcFigure *old = existing->getFigure();
    bindings_.erase(std::remove(bindings_.begin(), bindings_.end(), existing), bindings_.end());
    delete existing;
    if (old) figureGone(old);
  }
  auto *binding = new hcChannelBinding(this, proto, figure);
  bindings_.push_back(binding);
  if (std::find(figures_.begin(), figures_.end(), figure) == figures_.end()) figures_.push_back(figure);
  for (const auto &[c, target] : targets) c->bind(binding, figure);
  return OK;
}

int hcBoundChannelSet::bindToPrototype(const char *proto, hcFigure *figure) {
  OpRecord rec("hcBoundChannelSet::bindToPrototype", proto, figure);
  return bindImpl(proto, figure);
}

int hcBoundChannelSet::bind(hList *objectList) {
  OpRecord rec("hcBoundChannelSet::bind", objectList);
  if (!cs_) return 0;
  std::vector<std::string> prototypes;
  {
    hccore::Quiet quiet;
    hList *list = cs_->getPrototypes();
    for (hList *n = hList::iterator(list, nullptr); n; n = hList::iterator(list, n))
      prototypes.emplace_back(static_cast<const char *>(n->getData()));
    hList::destroy(&list, nullptr);
  }
  int count = 0;
  std::size_t i = 0;
  for (hList *n = hList::iterator(objectList, nullptr); n && i < prototypes.size();
       n = hList::iterator(objectList, n), ++i) {
    auto *figure = static_cast<hcFigure *>(n->getData());
    if (figure && bindImpl(prototypes[i].c_str(), figure) != Failed) ++count;
  }
  return count;
}

hcBoundChannelSet::figureList &hcBoundChannelSet::getFigList() {
  hccore::call("hcBoundChannelSet::getFigList");
  return figures_;
}
