// Host library: subjects and observers, reference objects, the named object
// and the tree node.
//
// Registries (live subjects, observers, handed-out observer lists, running
// destructions) are heap objects that are never freed, so that they outlive
// every object that refers to them, whatever the order of static destruction.
#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <unordered_set>
#include <vector>

#include "host/core.h"
#include "core/journal.h"

namespace {

// A journal entry made when the operation ends, after whatever it set off
// (observer updates in particular), so that it is the latest entry.
class Entry {
 public:
  template <class... A>
  explicit Entry(const char *op, const A &...args)
      : active_(hcjournal::on && hccore::quietDepth() == 0) {
    if (!active_) return;
    text_ = op;
    ((text_ += ' ', text_ += hcjournal::print(args)), ...);
  }
  ~Entry() {
    if (active_) hcjournal::record(text_);
  }
  Entry(const Entry &) = delete;
  Entry &operator=(const Entry &) = delete;

 private:
  bool active_;
  std::string text_;
};

struct Destruction {
  const void *self;
  std::string op;
  bool loud;
};

std::vector<Destruction> &destructions() {
  static auto *running = new std::vector<Destruction>;
  return *running;
}

std::unordered_set<hcSubject *> &liveSubjects() {
  static auto *live = new std::unordered_set<hcSubject *>;
  return *live;
}

hcObserver::observerList &observers() {
  static auto *all = new hcObserver::observerList;
  return *all;
}

bool isLive(hcSubject *s) { return s && liveSubjects().count(s) != 0; }

bool isObserver(hcObserver *o) {
  auto &all = observers();
  return o && std::find(all.begin(), all.end(), o) != all.end();
}

int gTimestamp = 0;
long gSimNotifications = 0;

char *duplicate(const char *s) {
  if (!s) s = "";
  const std::size_t n = std::strlen(s);
  char *out = new char[n + 1];
  std::memcpy(out, s, n + 1);
  return out;
}

char *concat(const char *a, const char *b) {
  if (!a) a = "";
  if (!b) b = "";
  const std::size_t na = std::strlen(a), nb = std::strlen(b);
  char *out = new char[na + nb + 1];
  std::memcpy(out, a, na);
  std::memcpy(out + na, b, nb + 1);
  return out;
}

// The token of an observer type name in the table, added when new.
int registerType(hcTypeTable *table, const char *typeName) {
  int token = table->findToken(typeName);
  if (token >= 0) return token;
  token = 0;
  while (table->findName(token)) ++token;
  table->addEntry(typeName, token);
  return token;
}

// The table of observer type names, made again should a script delete it.
hcTypeTable *observerTypes() {
  hccore::Quiet quiet;
  hcTypeTable *table = hcTypeTable::findTable("observerTypes");
  if (!table) {
    table = hcTypeTable::create("observerTypes");
    table->addEntry("hcObserver", 0);
    table->addEntry("VisibilityChannelObserver", 1);
    for (hcObserver *o : observers()) registerType(table, o->getTypeName());
  }
  return table;
}

bool receives(int aspect, int protocol) {
  return protocol == hcObserver::ALL || aspect == hcObserver::ALL || aspect == protocol;
}

}  // namespace

// ---------------------------------------------------------------------------
// Journal helpers

int &hccore::quietDepth() {
  static int depth = 0;
  return depth;
}

void hccore::destroying(const void *self, const char *op) {
  if (!hcjournal::on) return;
  auto &running = destructions();
  for (const auto &d : running)
    if (d.self == self) return;
  running.push_back({self, op ? op : "", quietDepth() == 0});
}

void hccore::destroyed(const void *self) {
  if (!hcjournal::on) return;
  auto &running = destructions();
  for (auto it = running.rbegin(); it != running.rend(); ++it) {
    if (it->self != self) continue;
    if (it->loud) hcjournal::record(it->op);
    running.erase(std::next(it).base());
    return;
  }
}

// ---------------------------------------------------------------------------
// hcSubject

hcSubject::hcSubject() {
  liveSubjects().insert(this);
  hccore::call("hcSubject::hcSubject");
}

hcSubject::hcSubject(const hcSubject &) : hcSubject() {}

hcSubject &hcSubject::operator=(const hcSubject &) { return *this; }

hcSubject::~hcSubject() {
  hccore::destroying(this, "hcSubject::~hcSubject");
  releaseObservers();
  liveSubjects().erase(this);
  hccore::destroyed(this);
}

void hcSubject::releaseObservers() {
  if (observers_.empty()) return;
  hccore::Quiet quiet;  // the updates themselves still show
  hcSubject::notify(hcObserver::DESTROY);
  const auto attached = observers_;
  for (const auto &[o, aspect] : attached) {
    (void)aspect;
    // An update may have destroyed an observer; only those still attached
    // are told.
    auto it = std::find_if(observers_.begin(), observers_.end(),
                           [o = o](const auto &p) { return p.first == o; });
    if (it == observers_.end()) continue;
    if (o->subject_ == this) o->subjectGone();
  }
  observers_.clear();
}

void hcSubject::attach(hcObserver *observer, int aspect) {
  hccore::call("hcSubject::attach", observer, aspect);
  if (!isObserver(observer)) return;
  for (auto &entry : observers_)
    if (entry.first == observer) {
      entry.second = aspect;
      return;
    }
  observers_.emplace_back(observer, aspect);
}

void hcSubject::detach(hcObserver *observer) {
  hccore::call("hcSubject::detach", observer);
  if (!observer) return;
  auto it = std::remove_if(observers_.begin(), observers_.end(),
                           [observer](const auto &p) { return p.first == observer; });
  if (it == observers_.end()) return;
  observers_.erase(it, observers_.end());
  if (observer->subject_ == this) observer->subject_ = nullptr;
}

void hcSubject::notify(int protocol) {
  Entry entry("hcSubject::notify", protocol);
  const auto attached = observers_;
  for (const auto &[o, aspect] : attached) {
    if (!receives(aspect, protocol)) continue;
    // Skip observers that an earlier update detached or destroyed.
    auto it = std::find_if(observers_.begin(), observers_.end(),
                           [o = o](const auto &p) { return p.first == o; });
    if (it != observers_.end()) o->update(protocol);
  }
}

void hcSubject::invalid() {
  Entry entry("hcSubject::invalid");
  hccore::Quiet quiet;
  notify(hcObserver::UPDATE);
}

hcObserver::observerList *hcSubject::getObservers(int protocol) {
  hccore::call("hcSubject::getObservers", protocol);
  answer_.clear();
  for (const auto &[o, aspect] : observers_)
    if (receives(aspect, protocol)) answer_.push_back(o);
  return &answer_;
}

// ---------------------------------------------------------------------------
// hcObserver

hcObserver::hcObserver(const char *name, const char *tstring, hcSubject *subject,
                       int protocol)
    : name_(name ? name : ""),
      typeName_(tstring && *tstring ? tstring : "hcObserver") {
  Entry entry("hcObserver::hcObserver", name, tstring, subject, protocol);
  hccore::Quiet quiet;
  observers().push_back(this);
  registerType(observerTypes(), typeName_.c_str());
  if (isLive(subject)) {
    subject_ = subject;
    subject->attach(this, protocol);
  }
}

hcObserver::~hcObserver() {
  hccore::destroying(this, "hcObserver::~hcObserver");
  HandedList::forget(this);
  // Leave every subject that still lists this observer, however attached.
  for (hcSubject *s : liveSubjects()) {
    auto &list = s->observers_;
    list.erase(std::remove_if(list.begin(), list.end(),
                              [this](const auto &p) { return p.first == this; }),
               list.end());
  }
  observers().remove(this);
  hccore::destroyed(this);
}

void hcObserver::update(int protocol) {
  // Updates are always journalled, even when a host operation set them off:
  // they are the visible effect of that operation.
  hcjournal::call("hcObserver::update", protocol);
  ++updates_;
  lastProtocol_ = protocol;
}

const char *hcObserver::getName() {
  hccore::call("hcObserver::getName");
  return name_.c_str();
}

void hcObserver::setName(const char *n) {
  hccore::call("hcObserver::setName", n);
  if (n) name_ = n;
}

int hcObserver::getTypeIndex() {
  hccore::call("hcObserver::getTypeIndex");
  hcTypeTable *table = observerTypes();
  hccore::Quiet quiet;
  return registerType(table, typeName_.c_str());
}

const char *hcObserver::getTypeName() {
  hccore::call("hcObserver::getTypeName");
  return typeName_.c_str();
}

hcObserver::observerList *hcObserver::getList() {
  hccore::call("hcObserver::getList");
  return &observers();
}

hList *hcObserver::getObserverList() {
  hccore::call("hcObserver::getObserverList");
  hccore::Quiet quiet;
  static auto *list = new HandedList;  // kept for the life of the process
  return list->answer(std::vector<void *>(observers().begin(), observers().end()));
}

hcObserver *hcObserver::find(const char *name) {
  hccore::call("hcObserver::find", name);
  if (!name) return nullptr;
  for (hcObserver *o : observers())
    if (o->name_ == name) return o;
  return nullptr;
}

hcTypeTable *hcObserver::getTypeTable() {
  hccore::call("hcObserver::getTypeTable");
  return observerTypes();
}

void hcObserver::purge() {
  Entry entry("hcObserver::purge");
  hccore::Quiet quiet;
  const observerList all = observers();
  for (hcObserver *o : all)
    if (isObserver(o) && o->subjectLost_) delete o;
}

void hcObserver::setSubject(hcSubject *subject, int protocol) {
  Entry entry("hcObserver::setSubject", subject, protocol);
  hccore::Quiet quiet;
  if (isLive(subject_)) subject_->detach(this);
  subject_ = nullptr;
  subjectLost_ = false;
  if (isLive(subject)) {
    subject_ = subject;
    subject->attach(this, protocol);
  }
}

int hcObserver::getNumberPurgeObservers() {
  hccore::call("hcObserver::getNumberPurgeObservers");
  int n = 0;
  for (hcObserver *o : observers())
    if (o->subjectLost_) ++n;
  return n;
}

void hcObserver::subjectGone() {
  hccore::call("hcObserver::subjectGone");
  subject_ = nullptr;
  subjectLost_ = true;
}

// ---------------------------------------------------------------------------
// hcRefObject
//
// Detach behaviour 0 (the default) leaves the lists alone when the object is
// destroyed (the lists may already be gone); any other value makes the
// destructor remove the object from every list it joined.

namespace {
void removeFromList(hList **l, hcRefObject *self) {
  if (!l) return;
  for (;;) {
    hList *found = nullptr;
    for (hList *n = hList::iterator(*l, nullptr); n; n = hList::iterator(*l, n))
      if (n->getData() == self) {
        found = n;
        break;
      }
    if (!found) return;
    hList::deleteNode(l, found, nullptr);
  }
}
}  // namespace

hcRefObject::hcRefObject(short t)
    : magic(0), type(t), list(nullptr), lists(nullptr), deleting_flag(0) {
  hccore::call("hcRefObject::hcRefObject", t);
}

hcRefObject::~hcRefObject() {
  hccore::destroying(this, "hcRefObject::~hcRefObject");
  deleting_flag = 1;
  if (detachBehavior_) {
    hccore::Quiet quiet;
    for (hList **l : joined_) removeFromList(l, this);
  }
  hccore::destroyed(this);
}

void hcRefObject::reserved() { hccore::call("hcRefObject::reserved"); }

void hcRefObject::attach(hList **l) {
  Entry entry("hcRefObject::attach", l);
  if (!l) return;
  hccore::Quiet quiet;
  hList::append(l, this);
  if (std::find(joined_.begin(), joined_.end(), l) == joined_.end()) joined_.push_back(l);
  list = l;
}

void hcRefObject::detach(hList **l) {
  Entry entry("hcRefObject::detach", l);
  hccore::Quiet quiet;
  if (l) {
    removeFromList(l, this);
    joined_.erase(std::remove(joined_.begin(), joined_.end(), l), joined_.end());
    if (list == l) list = nullptr;
    return;
  }
  for (hList **joined : joined_) removeFromList(joined, this);
  joined_.clear();
  list = nullptr;
}

void hcRefObject::set_detach_behavior(int i) {
  hccore::call("hcRefObject::set_detach_behavior", i);
  detachBehavior_ = i;
}

// ---------------------------------------------------------------------------
// hcObject

namespace {
std::unordered_set<const void *> &liveObjects() {
  static auto *live = new std::unordered_set<const void *>;
  return *live;
}
}  // namespace

bool hcIsLiveObject(const void *p) { return p && liveObjects().count(p) != 0; }

hcObject::hcObject() : name(duplicate("")), fullname(duplicate("")) {
  liveObjects().insert(this);
  hccore::call("hcObject::hcObject");
}

hcObject::hcObject(const hcObject &other)
    : hcSubject(other),
      name(duplicate(other.name)),
      fullname(duplicate(other.fullname)),
      timestamp_(other.timestamp_),
      properties_(other.properties_ ? new hcPropertyList(*other.properties_) : nullptr),
      scriptObject_(other.scriptObject_) {
  liveObjects().insert(this);
}

hcObject &hcObject::operator=(const hcObject &other) {
  if (this == &other) return *this;
  hcSubject::operator=(other);
  char *n = duplicate(other.name), *f = duplicate(other.fullname);
  delete[] name;
  delete[] fullname;
  name = n;
  fullname = f;
  hcPropertyList *p = other.properties_ ? new hcPropertyList(*other.properties_) : nullptr;
  {
    hccore::Quiet quiet;
    delete properties_;
  }
  properties_ = p;
  timestamp_ = other.timestamp_;
  scriptObject_ = other.scriptObject_;
  return *this;
}

hcObject::~hcObject() {
  liveObjects().erase(this);
  HandedList::forget(this);
  hccore::destroying(this, "hcObject::~hcObject");
  releaseObservers();  // while the object is still whole
  {
    hccore::Quiet quiet;
    delete properties_;
  }
  delete[] name;
  delete[] fullname;
}

hcType *hcObject::getClassType() {
  hccore::call("hcObject::getClassType");
  return hccore::typeNamed("hcObject");
}

const char *hcObject::getName() {
  hccore::call("hcObject::getName");
  return name ? name : "";
}

const char *hcObject::getFullName() {
  hccore::call("hcObject::getFullName");
  return fullname ? fullname : "";
}

hcObject *hcObject::find(hList *objs, const char *fname) {
  Entry entry("hcObject::find", objs, fname);
  if (!fname) return nullptr;
  hccore::Quiet quiet;
  // Full names first, then plain names.
  for (int pass = 0; pass < 2; ++pass)
    for (hList *n = hList::iterator(objs, nullptr); n; n = hList::iterator(objs, n)) {
      if (!hcIsLiveObject(n->getData())) continue;  // only live named objects
      auto *o = static_cast<hcObject *>(n->getData());
      const char *candidate = pass == 0 ? o->fullname : o->name;
      if (candidate && std::strcmp(candidate, fname) == 0) return o;
    }
  return nullptr;
}

void hcObject::setFullName(const char *prefix, const char *newName) {
  hccore::call("hcObject::setFullName", prefix, newName);
  char *n = duplicate(newName), *f = concat(prefix, newName);
  delete[] name;
  delete[] fullname;
  name = n;
  fullname = f;
}

int hcObject::setName(const char *newName) {
  Entry entry("hcObject::setName", newName);
  if (!newName) return 0;
  // The prefix is what the full name holds before the old name.
  std::string prefix;
  const char *old = name ? name : "";
  const char *full = fullname ? fullname : "";
  const std::size_t nl = std::strlen(old), fl = std::strlen(full);
  if (fl >= nl && std::strcmp(full + fl - nl, old) == 0) prefix.assign(full, fl - nl);
  char *n = duplicate(newName), *f = concat(prefix.c_str(), newName);
  delete[] name;
  delete[] fullname;
  name = n;
  fullname = f;
  hccore::Quiet quiet;
  notify(hcObserver::UPDATE);
  return 1;
}

void hcObject::uniqueName(char *uniqName, hList *objs) {
  Entry entry("hcObject::uniqueName", uniqName, objs);
  if (!uniqName || !objs) return;
  hccore::Quiet quiet;
  std::vector<const char *> names;
  for (hList *n = hList::iterator(objs, nullptr); n; n = hList::iterator(objs, n)) {
    if (!hcIsLiveObject(n->getData())) continue;  // only live named objects
    auto *o = static_cast<hcObject *>(n->getData());
    if (o->name) names.push_back(o->name);
  }
  auto taken = [&names](const char *s) {
    for (const char *n : names)
      if (std::strcmp(n, s) == 0) return true;
    return false;
  };
  if (!taken(uniqName)) return;

  // Rewrite the trailing number (at most its last nine digits), keeping its
  // width: "part9" becomes "part0", "part1", ... whichever is free.
  const std::size_t len = std::strlen(uniqName);
  std::size_t start = len;
  while (start > 0 && std::isdigit(static_cast<unsigned char>(uniqName[start - 1]))) --start;
  const int width = static_cast<int>(std::min<std::size_t>(len - start, 9));
  if (width == 0) return;  // nothing to rewrite without growing the name
  char *digits = uniqName + len - width;
  unsigned long modulus = 1;
  for (int i = 0; i < width; ++i) modulus *= 10;
  const unsigned long current = std::strtoul(digits, nullptr, 10);
  std::string candidate(uniqName);
  char buf[24];  // room for any unsigned long
  // Each name in objs rules out at most one candidate.
  for (unsigned long k = 1; k < modulus && k <= names.size() + 1; ++k) {
    std::snprintf(buf, sizeof buf, "%0*lu", width, (current + k) % modulus);
    candidate.replace(len - width, width, buf);
    if (!taken(candidate.c_str())) {
      std::memcpy(digits, buf, width);
      return;
    }
  }
}

int hcObject::getTimestamp() {
  hccore::call("hcObject::getTimestamp");
  return timestamp_;
}

void hcObject::setTimestamp() {
  hccore::call("hcObject::setTimestamp");
  timestamp_ = ++gTimestamp;
}

void hcObject::notifySimFunc() {
  ++gSimNotifications;
  hccore::call("hcObject::notifySimFunc", gSimNotifications);
}

hcType *hcObject::getType() {
  hccore::call("hcObject::getType");
  return hccore::typeNamed(className());
}

void hcObject::tessprint(char *buffer, int level, std::size_t size) {
  hccore::call("hcObject::tessprint", level, static_cast<long>(size));
  if (!buffer || size == 0) return;
  const char *n = name ? name : "";
  if (level > 0)
    std::snprintf(buffer, size, "%s %s fullname %s properties %d", className(), n,
                  fullname ? fullname : "", properties_ ? properties_->count() : 0);
  else
    std::snprintf(buffer, size, "%s %s", className(), n);
}

void hcObject::reserved() { hccore::call("hcObject::reserved"); }

int hcObject::sprint(char **buffer) {
  hccore::call("hcObject::sprint", static_cast<const void *>(buffer));
  if (!buffer) return 0;
  sprintText_ = className();
  sprintText_ += ' ';
  sprintText_ += name ? name : "";
  sprintText_ += " fullname ";
  sprintText_ += fullname ? fullname : "";
  sprintText_ += " timestamp " + std::to_string(timestamp_);
  *buffer = sprintText_.data();
  return static_cast<int>(sprintText_.size());
}

int hcObject::searchProperty(const char *name, hcValue *value) {
  Entry entry("hcObject::searchProperty", name, value);
  hccore::Quiet quiet;
  return getProperty(name, value);
}

int hcObject::getProperty(const char *name, hcValue *value) {
  Entry entry("hcObject::getProperty", name, value);
  if (!name || !value || !properties_) return 0;
  hccore::Quiet quiet;
  return properties_->get(name, value);
}

int hcObject::setProperty(const char *name, hcValue value) {
  std::string shown;
  {
    hccore::Quiet quiet;
    shown = value.tessprint();
  }
  Entry entry("hcObject::setProperty", name, shown.c_str());
  if (!name) return 0;
  hccore::Quiet quiet;
  return getPropertyList()->set(name, value);
}

int hcObject::removeProperty(const char *name) {
  Entry entry("hcObject::removeProperty", name);
  if (!name || !properties_) return 0;
  hccore::Quiet quiet;
  return properties_->remove(name);
}

hcPropertyList *hcObject::getPropertyList() {
  hccore::call("hcObject::getPropertyList");
  if (!properties_) {
    hccore::Quiet quiet;
    properties_ = new hcPropertyList;
  }
  return properties_;
}

int hcObject::setScriptObject(PyObject *object) {
  hccore::call("hcObject::setScriptObject", static_cast<const void *>(object));
  scriptObject_ = object;
  return 1;
}

PyObject *hcObject::getScriptObject() {
  hccore::call("hcObject::getScriptObject");
  return scriptObject_;
}

// ---------------------------------------------------------------------------
// hcNode

hcType *hcNode::getClassType() {
  hccore::call("hcNode::getClassType");
  return hccore::typeNamed("hcNode");
}

hcNode::hcNode() { hccore::call("hcNode::hcNode"); }

hcNode::~hcNode() { hccore::destroying(this, "hcNode::~hcNode"); }

int hcNode::getParent() {
  hccore::call("hcNode::getParent");
  return 0;
}
