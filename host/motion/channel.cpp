// Host library: the channel base class, the channel registry and the
// observers that watch channel targets.
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "motion/channel_detail.h"
#include "host/kit.h"
#include "figure/figure_detail.h"

using hcchannel_detail::OpRecord;

namespace {

// Every live channel; never freed, so that it outlives them all.
hcChannel::channelList &channels() {
  static auto *all = new hcChannel::channelList;
  return *all;
}

void rename(hcObject *object, const char *n) { object->setFullName("", n ? n : ""); }

int hexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

}  // namespace

// ---------------------------------------------------------------------------
// Helpers

namespace hcchannel_detail {

void dropWatch(hcObserver *watch) {
  hccore::Quiet quiet;
  delete watch;
}

void show(const std::string &text) {
  hccore::Quiet quiet;
  hcKit::sendMsg(text.c_str(), hcKit::INFO);
}

namespace {
const char *const kKinds[] = {"generic", "joint", "figure", "realtime", "visibility"};
}

const char *kindName(int type) {
  return type >= 0 && type < 5 ? kKinds[type] : kKinds[hcChannel::GENERIC];
}

int kindNamed(const std::string &name) {
  for (int i = 0; i < 5; ++i)
    if (name == kKinds[i]) return i;
  return -1;
}

std::vector<std::string> words(const std::string &text) {
  std::vector<std::string> out;
  std::size_t i = 0;
  while (i < text.size()) {
    while (i < text.size() && (text[i] == ' ' || text[i] == '\t')) ++i;
    std::size_t j = i;
    while (j < text.size() && text[j] != ' ' && text[j] != '\t') ++j;
    if (j > i) out.push_back(text.substr(i, j - i));
    i = j;
  }
  return out;
}

bool toLong(const std::string &word, long &out) {
  if (word.empty()) return false;
  errno = 0;
  char *end = nullptr;
  long v = std::strtol(word.c_str(), &end, 10);
  if (errno || *end) return false;
  out = v;
  return true;
}

bool toInt(const std::string &word, int &out) {
  long v;
  if (!toLong(word, v) || v < std::numeric_limits<int>::min() || v > std::numeric_limits<int>::max())
    return false;
  out = static_cast<int>(v);
  return true;
}

bool toDouble(const std::string &word, double &out) {
  if (word.empty()) return false;
  errno = 0;
  char *end = nullptr;
  double v = std::strtod(word.c_str(), &end);
  if (errno || *end || !std::isfinite(v)) return false;
  out = v;
  return true;
}

bool toFloat(const std::string &word, float &out) {
  double v;
  if (!toDouble(word, v) || std::fabs(v) > std::numeric_limits<float>::max()) return false;
  out = static_cast<float>(v);
  return true;
}

std::string number(double value) {
  char buf[40];
  std::snprintf(buf, sizeof buf, "%.17g", value);
  return buf;
}

bool frameRange(int from, int to, int stride, int &count) {
  if (stride < 1 || from > to) return false;
  const long long n = (static_cast<long long>(to) - from) / stride + 1;
  if (n > hcChannel::kMaxFrames) return false;
  count = static_cast<int>(n);
  return true;
}

std::vector<hcChannel *> channelsOf(hList *list) {
  std::vector<hcChannel *> out;
  for (hList *n = hList::iterator(list, nullptr); n; n = hList::iterator(list, n))
    if (hcChannel *c = hcChannel::live(n->getData())) out.push_back(c);
  return out;
}

}  // namespace hcchannel_detail

// ---------------------------------------------------------------------------
// hcChannelWatch

hcChannelWatch::hcChannelWatch(hcObject *target, hcChannel *channel)
    : hcObserver("channelWatch", "hcChannelWatch", target, DESTROY), channel_(channel) {}

hcChannelWatch::hcChannelWatch(hcObject *target, hcChannelBinding *binding)
    : hcObserver("bindingWatch", "hcChannelWatch", target, DESTROY), binding_(binding) {}

hcChannelWatch::~hcChannelWatch() {
  hccore::destroying(this, "hcChannelWatch::~hcChannelWatch");
  if (channel_) channel_->watchGone(this);
  if (binding_) binding_->watchGone(this);
}

void hcChannelWatch::update(int protocol) {
  if (protocol != DESTROY) return;
  if (channel_) channel_->targetGone();
  if (binding_) binding_->figureGone();
}

// ---------------------------------------------------------------------------
// hcChannel: construction and registry

hcChannel::hcChannel(int type, int start, int duration, void *param, unsigned int dataSize,
                     const char *name)
    : type_(type), start_(start), param_(param), dataSize_(dataSize) {
  OpRecord rec("hcChannel::hcChannel", type, start, duration, param, dataSize, name);
  channels().push_back(this);
  rename(this, name);
  setDuration(duration);
}

hcChannel::hcChannel(Unbound, int type, int start, const char *name)
    : type_(type), start_(start), param_(nullptr), dataSize_(0) {
  hccore::Quiet quiet;
  channels().push_back(this);
  rename(this, name);
}

hcChannel::~hcChannel() {
  hccore::destroying(this, "hcChannel::~hcChannel");
  hccore::Quiet quiet;
  channels().remove(this);
  for (hList *n = hList::iterator(hcChannelSet::globalList, nullptr); n;
       n = hList::iterator(hcChannelSet::globalList, n))
    static_cast<hcChannelSet *>(n->getData())->forget(this);
  hcObserver *watch = watch_;
  watch_ = nullptr;
  target_ = nullptr;
  hcchannel_detail::dropWatch(watch);
}

hcChannel *hcChannel::live(const void *p) {
  if (!p) return nullptr;
  for (hcChannel *c : channels())
    if (static_cast<const void *>(c) == p) return c;
  return nullptr;
}

hcChannel::channelList *hcChannel::getList() {
  hccore::call("hcChannel::getList");
  return &channels();
}

hcChannel *hcChannel::findChannel(const char *name, void *param) {
  hccore::call("hcChannel::findChannel", name, param);
  if (!name) return nullptr;
  for (hcChannel *c : channels())
    if (c->name && std::strcmp(c->name, name) == 0 && (!param || c->param_ == param)) return c;
  return nullptr;
}

hcChannel *hcChannel::findByType(hList *chlist, int type) {
  hccore::call("hcChannel::findByType", chlist, type);
  for (hcChannel *c : hcchannel_detail::channelsOf(chlist))
    if (c->type_ == type) return c;
  return nullptr;
}

hcChannel *hcChannel::resolve(hList *l) {
  hccore::call("hcChannel::resolve", l);
  return l ? live(l->getData()) : nullptr;
}

// ---------------------------------------------------------------------------
// hcChannel: state

int hcChannel::activate(int on) {
  hccore::call("hcChannel::activate", on);
  const int previous = active_;
  active_ = on != 0;
  return previous;
}

int hcChannel::activep() {
  hccore::call("hcChannel::activep");
  return active_;
}

int hcChannel::at(int t) {
  hccore::call("hcChannel::at", t);
  const int i = index(t);
  return i >= 0 && recorded(i) ? 1 : 0;
}

int hcChannel::getChannelType() {
  hccore::call("hcChannel::getChannelType");
  return type_;
}

int hcChannel::getSize() {
  hccore::call("hcChannel::getSize");
  return duration_;
}

const char *hcChannel::getPrototype() {
  hccore::call("hcChannel::getPrototype");
  return prototype_.empty() ? nullptr : prototype_.c_str();
}

int hcChannel::resize(int duration) {
  OpRecord rec("hcChannel::resize", duration);
  return setDuration(duration) ? 1 : 0;
}

bool hcChannel::setDuration(int duration) {
  if (duration < 0 || duration > kMaxFrames) return false;
  const unsigned long long bytes =
      static_cast<unsigned long long>(duration) * static_cast<unsigned long long>(recordBytes());
  if (bytes > kMaxBytes) return false;
  recorded_.resize(duration, 0);
  resizeRecords(duration);
  duration_ = duration;
  return true;
}

int hcChannel::index(int t) const {
  const long long offset = static_cast<long long>(t) - start_;
  return offset >= 0 && offset < duration_ ? static_cast<int>(offset) : -1;
}

bool hcChannel::recorded(int index) const {
  return index >= 0 && index < duration_ && recorded_[index];
}

void hcChannel::markRecorded(int index) {
  if (index >= 0 && index < duration_) recorded_[index] = 1;
}

void *hcChannel::recordedAt(int t) {
  const int i = index(t);
  return recorded(i) ? record(i) : nullptr;
}

// ---------------------------------------------------------------------------
// hcChannel: records of a plain channel (dataSize bytes each, at least one
// byte of storage so that every frame has an address)

void *hcChannel::record(int index) { return bytes_.data() + static_cast<std::size_t>(index) * recordBytes(); }

void hcChannel::resizeRecords(int n) { bytes_.resize(static_cast<std::size_t>(n) * recordBytes(), 0); }

std::size_t hcChannel::recordBytes() const { return dataSize_ ? dataSize_ : 1; }

std::string hcChannel::recordText(int index) {
  static const char digits[] = "0123456789abcdef";
  std::string out;
  const auto *p = static_cast<const unsigned char *>(record(index));
  for (unsigned int i = 0; i < dataSize_; ++i) {
    out += digits[p[i] >> 4];
    out += digits[p[i] & 15];
  }
  return out;
}

bool hcChannel::parseRecord(const std::string &text, int index) {
  const auto w = hcchannel_detail::words(text);
  if (dataSize_ == 0) return w.empty();
  if (w.size() != 1 || w[0].size() != 2 * static_cast<std::size_t>(dataSize_)) return false;
  std::vector<unsigned char> bytes(dataSize_);
  for (unsigned int i = 0; i < dataSize_; ++i) {
    const int hi = hexDigit(w[0][2 * i]), lo = hexDigit(w[0][2 * i + 1]);
    if (hi < 0 || lo < 0) return false;
    bytes[i] = static_cast<unsigned char>(hi * 16 + lo);
  }
  std::memcpy(record(index), bytes.data(), dataSize_);
  return true;
}

bool hcChannel::scanOther(hcValue *, int) { return false; }

int hcChannel::fileParams(long &p1, double &p2) {
  p1 = dataSize_;
  p2 = type_;
  return GENERIC;
}

hcObject *hcChannel::findTarget(hcFigure *) { return nullptr; }

hcObserver *hcChannel::makeWatch(hcObject *target) { return new hcChannelWatch(target, this); }

// ---------------------------------------------------------------------------
// hcChannel: targets

void hcChannel::setTarget(hcObject *target) {
  hccore::Quiet quiet;
  if (target == target_ && (watch_ || !target)) return;
  hcObserver *old = watch_;
  watch_ = nullptr;
  target_ = nullptr;
  hcchannel_detail::dropWatch(old);
  target_ = target;
  param_ = target;
  if (target) watch_ = makeWatch(target);
}

hcObject *hcChannel::getTarget() {
  // A watch that no longer follows the target (a script detached it or gave
  // it another subject) cannot report its destruction.
  if (target_ && (!watch_ || watch_->getSubject() != static_cast<hcSubject *>(target_))) targetGone();
  return target_;
}

void hcChannel::targetGone() {
  target_ = nullptr;
  param_ = nullptr;
}

void hcChannel::watchGone(hcObserver *watch) {
  if (!watch || watch != watch_) return;
  // Nothing watches the target any more, so it cannot be trusted.
  watch_ = nullptr;
  targetGone();
}

void hcChannel::bindTo(hcChannelBinding *cb, hcFigure *fig) {
  if (!fig && cb) fig = cb->getFigure();
  if (!fig) return;
  hcObject *target = findTarget(fig);
  if (target) setTarget(target);
}

// ---------------------------------------------------------------------------
// hcChannel: frame operations of a plain channel

void hcChannel::bind(hcChannelBinding *cb, hcFigure *fig) {
  OpRecord rec("hcChannel::bind", cb, fig);
  bindTo(cb, fig);
}

void hcChannel::rebind(hcChannelBinding *cb) {
  OpRecord rec("hcChannel::rebind", cb);
  if (cb) bindTo(nullptr, cb->getFigure());
}

void *hcChannel::grab(int t) {
  OpRecord rec("hcChannel::grab", t);
  // A plain channel reads nothing: its record is the frame's data, to be
  // filled by whoever holds it.
  const int i = index(t);
  if (i < 0) return nullptr;
  markRecorded(i);
  return record(i);
}

void *hcChannel::stuff(int t, float fraction) {
  OpRecord rec("hcChannel::stuff", t, fraction);
  return recordedAt(t);
}

void hcChannel::sprintText(int t, char *buf, std::size_t size) {
  if (!buf || size == 0) return;
  const int i = index(t);
  const std::string text = recorded(i) ? recordText(i) : std::string();
  std::snprintf(buf, size, "%s", text.c_str());
}

void hcChannel::sprintat(int t, char *buf, std::size_t size) {
  OpRecord rec("hcChannel::sprintat", t);
  sprintText(t, buf, size);
}

void hcChannel::scanValue(int t, hcValue *val) {
  const int i = index(t);
  if (i < 0 || !val) return;
  hccore::Quiet quiet;
  bool ok;
  if (val->getType() == hcValue::V_STRING) {
    char *text = nullptr;
    ok = val->get(text) && text && parseRecord(text, i);
  } else {
    ok = scanOther(val, i);
  }
  if (ok) markRecorded(i);
}

void hcChannel::scan(int t, hcValue *val) {
  OpRecord rec("hcChannel::scan", t, val);
  scanValue(t, val);
}

void hcChannel::drawtessel(int mode) { OpRecord rec("hcChannel::drawtessel", mode); }

// ---------------------------------------------------------------------------
// hcChannel: printing

std::string hcChannel::describe(int all) {
  std::string text = std::string(className()) + " " + (name ? name : "") +
                     " type " + std::to_string(type_) + " start " + std::to_string(start_) +
                     " size " + std::to_string(duration_) + " active " + std::to_string(active_) +
                     " prototype " + prototype_ + " target " + targetName_ +
                     (getTarget() ? " bound" : " unbound");
  if (all)
    for (int i = 0; i < duration_; ++i)
      if (recorded(i)) text += "\n  frame " + std::to_string(start_ + i) + ": " + recordText(i);
  return text;
}

int hcChannel::printinfo(int all, int show) {
  OpRecord rec("hcChannel::printinfo", all, show);
  if (show) hcchannel_detail::show(describe(all));
  return 1;
}

int hcChannel::printAll(int all, int show) {
  OpRecord rec("hcChannel::printAll", all, show);
  std::string text;
  int count = 0;
  for (hcChannel *c : channels()) {
    if (!all && !c->active_) continue;
    ++count;
    text += c->describe(0) + "\n";
  }
  if (show && count) hcchannel_detail::show(text);
  return count;
}

int hcChannel::printList(hList *list, const char *name, int all, int show) {
  OpRecord rec("hcChannel::printList", list, name, all, show);
  std::string text = std::string(name ? name : "") + "\n";
  int count = 0;
  for (hcChannel *c : hcchannel_detail::channelsOf(list)) {
    if (!all && !c->active_) continue;
    ++count;
    text += c->describe(0) + "\n";
  }
  if (show) hcchannel_detail::show(text);
  return count;
}

int hcChannel::printChannel(const char *name, int all) {
  OpRecord rec("hcChannel::printChannel", name, all);
  if (!name) return 0;
  std::string text;
  int count = 0;
  for (hcChannel *c : channels()) {
    if (!c->name || std::strcmp(c->name, name) != 0) continue;
    ++count;
    text += c->describe(all) + "\n";
  }
  if (count) hcchannel_detail::show(text);
  return count;
}
