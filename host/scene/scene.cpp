// hcScene: the current scene, the registries of what a scene holds, finding,
// settings, and the operations this stand-in does not model.
#include <algorithm>
#include <cmath>

#include "core/messages.h"
#include "host/channel.h"
#include "scene/scene_detail.h"
#include "figure/figure_detail.h"

using namespace hcfigure_detail;
using namespace hcscene_detail;

// The current scene, made when the library is loaded.  It is never freed:
// whatever it holds stays reachable until the process ends.
hcScene *hcscene = [] {
  hccore::Quiet quiet;
  return new hcScene("scene");
}();

// ---------------------------------------------------------------------------
// The observer a scene attaches to each object it holds.  When the object
// announces its destruction the scene forgets it (and destroys the watch).

class hcScene::Watch : public hcObserver {
 public:
  Watch(hcScene *scene, hcNode *object)
      : hcObserver("hcScene", "hcSceneWatch", object, hcObserver::DESTROY),
        scene_(scene) {}
  void update(int protocol) override {
    if (protocol == hcObserver::DESTROY) scene_->watchedGone(this);
  }

 private:
  hcScene *scene_;
};

// ---------------------------------------------------------------------------
// Construction and teardown.

hcScene::hcScene(const char *name) {
  hccore::call("hcScene::hcScene", name);
  hccore::Quiet quiet;
  setFullName("", name && *name ? name : "scene");
}

hcScene::~hcScene() {
  hccore::destroying(this, "hcScene::~hcScene");
  hccore::Quiet quiet;
  clear();
  // A script that deletes the current scene gets a new, empty one.
  if (hcscene == this) hcscene = new hcScene("scene");
}

hcType *hcScene::getClassType() {
  hccore::call("hcScene::getClassType");
  return hccore::typeNamed("hcScene");
}

// ---------------------------------------------------------------------------
// Registries.

bool hcScene::hold(Kind kind, hcNode *object) {
  prune();
  if (!object) return false;
  for (const Held &h : held_)
    if (h.kind == kind && h.object == object) return false;
  hccore::Quiet quiet;
  held_.push_back({kind, object, new Watch(this, object)});
  modified_ = 1;
  return true;
}

bool hcScene::release(Kind kind, hcNode *object) {
  prune();
  if (!object) return false;
  auto it = std::find_if(held_.begin(), held_.end(), [&](const Held &h) {
    return h.kind == kind && h.object == object;
  });
  if (it == held_.end()) return false;
  Watch *w = it->watch;
  held_.erase(it);
  hccore::Quiet quiet;
  delete w;
  modified_ = 1;
  return true;
}

void hcScene::watchedGone(Watch *watch) {
  auto it = std::find_if(held_.begin(), held_.end(),
                         [&](const Held &h) { return h.watch == watch; });
  if (it != held_.end()) held_.erase(it);
  hccore::Quiet quiet;
  delete watch;  // it has just been called: nothing touches it afterwards
}

void hcScene::prune() {
  // A watch that a script detached or moved to another subject can no
  // longer tell when its object goes: the object is forgotten, never read.
  std::vector<Watch *> lost;
  std::erase_if(held_, [&](const Held &h) {
    if (h.watch->getSubject() == h.object) return false;
    lost.push_back(h.watch);
    return true;
  });
  hccore::Quiet quiet;
  for (Watch *w : lost) delete w;
}

std::vector<hcFigure *> hcScene::figures() {
  prune();
  std::vector<hcFigure *> out;
  for (const Held &h : held_)
    if (h.kind == FIGURE) out.push_back(static_cast<hcFigure *>(h.object));
  return out;
}

std::vector<hcNode *> hcScene::parts(Kind kind) {
  std::vector<hcNode *> out;
  auto add = [&](hcNode *n) {
    if (n && std::find(out.begin(), out.end(), n) == out.end()) out.push_back(n);
  };
  for (hcFigure *f : figures()) {
    hList *l = kind == SEGMENT ? f->getSegments()
               : kind == JOINT ? f->getJoints()
                               : f->getSites();
    forEach<hcNode>(l, add);
  }
  for (const Held &h : held_)
    if (h.kind == kind) add(h.object);
  return out;
}

hList *hcScene::answer(int slot, const std::vector<void *> &items) {
  // One list per getter, kept for the life of the process.
  static auto *lists = new HandedList[kAnswerSlots];
  return lists[slot].answer(items);
}

hcNode *hcScene::findPart(Kind kind, const char *name) {
  if (!name) return nullptr;
  for (hcNode *n : parts(kind))
    if (sameName(n, name)) return n;
  return nullptr;
}

template <class T>
static std::vector<void *> untyped(const std::vector<T *> &v) {
  return std::vector<void *>(v.begin(), v.end());
}

// ---------------------------------------------------------------------------
// Lists.

hList *hcScene::getFigures() {
  OpRecord rec("hcScene::getFigures");
  return answer(kFigureList, untyped(figures()));
}

hList *hcScene::getHumans() {
  OpRecord rec("hcScene::getHumans");
  std::vector<void *> out;
  for (hcFigure *f : figures())
    if (hcHuman *h = f->getHuman()) out.push_back(h);
  return answer(kHumanList, out);
}

hList *hcScene::getJoints() {
  OpRecord rec("hcScene::getJoints");
  return answer(kJointList, untyped(parts(JOINT)));
}

hList *hcScene::getSegments() {
  OpRecord rec("hcScene::getSegments");
  return answer(kSegmentList, untyped(parts(SEGMENT)));
}

hList *hcScene::getSites() {
  OpRecord rec("hcScene::getSites");
  return answer(kSiteList, untyped(parts(SITE)));
}

hList *hcScene::getMaterials() {
  OpRecord rec("hcScene::getMaterials");
  std::vector<void *> out;
  for (hcFigure *f : figures())
    for (hcMaterial *m : *f->getMaterialList())
      if (m && std::find(out.begin(), out.end(), m) == out.end()) out.push_back(m);
  return answer(kMaterialList, out);
}

hList *hcScene::getConstraints() {
  OpRecord rec("hcScene::getConstraints");
  std::vector<void *> out;
  for (hcFigure *f : figures())
    forEach<void>(f->getConstraints(), [&](void *c) {
      if (c && std::find(out.begin(), out.end(), c) == out.end()) out.push_back(c);
    });
  return answer(kConstraintList, out);
}

// ---------------------------------------------------------------------------
// Finding.

hcFigure *hcScene::findFigure(const char *name) {
  OpRecord rec("hcScene::findFigure", name);
  if (!name) return nullptr;
  for (hcFigure *f : figures())
    if (sameName(f, name)) return f;
  return nullptr;
}

hcHuman *hcScene::findHuman(const char *name) {
  OpRecord rec("hcScene::findHuman", name);
  if (!name) return nullptr;
  for (hcFigure *f : figures())
    if (sameName(f, name)) return f->getHuman();
  return nullptr;
}

hcSegment *hcScene::findSegment(const char *name) {
  OpRecord rec("hcScene::findSegment", name);
  return static_cast<hcSegment *>(findPart(SEGMENT, name));
}

hcSite *hcScene::findSite(const char *name) {
  OpRecord rec("hcScene::findSite", name);
  return static_cast<hcSite *>(findPart(SITE, name));
}

hcJoint *hcScene::findJoint(const char *name) {
  OpRecord rec("hcScene::findJoint", name);
  return static_cast<hcJoint *>(findPart(JOINT, name));
}

hcConstraint *hcScene::findConstraint(const char *name) {
  OpRecord rec("hcScene::findConstraint", name);
  return nullptr;  // constraints are listed, never looked into
}

// ---------------------------------------------------------------------------
// Adding and removing.

void hcScene::addFigure(hcFigure *figure) {
  OpRecord rec("hcScene::addFigure", figure);
  hold(FIGURE, figure);
}

void hcScene::addSegment(hcSegment *segment) {
  OpRecord rec("hcScene::addSegment", segment);
  hold(SEGMENT, segment);
}

void hcScene::addJoint(hcJoint *joint) {
  OpRecord rec("hcScene::addJoint", joint);
  hold(JOINT, joint);
}

void hcScene::addSite(hcSite *site) {
  OpRecord rec("hcScene::addSite", site);
  hold(SITE, site);
}

int hcScene::delFigure(hcFigure *figure) {
  OpRecord rec("hcScene::delFigure", figure);
  return release(FIGURE, figure) ? 1 : 0;
}

int hcScene::delSegment(hcSegment *segment) {
  OpRecord rec("hcScene::delSegment", segment);
  return release(SEGMENT, segment) ? 1 : 0;
}

int hcScene::delJoint(hcJoint *joint) {
  OpRecord rec("hcScene::delJoint", joint);
  return release(JOINT, joint) ? 1 : 0;
}

int hcScene::delSite(hcSite *site) {
  OpRecord rec("hcScene::delSite", site);
  return release(SITE, site) ? 1 : 0;
}

int hcScene::clear() {
  OpRecord rec("hcScene::clear");
  prune();
  // Every watch goes first, so that destroying the figures calls nothing
  // back into the registry being emptied.
  std::vector<Held> held;
  held.swap(held_);
  std::vector<hcFigure *> owned;
  for (const Held &h : held) {
    if (h.kind == FIGURE) owned.push_back(static_cast<hcFigure *>(h.object));
    delete h.watch;
  }
  for (hcFigure *f : owned) hcFigure::destroy(f);
  modified_ = 1;
  return 1;
}

// ---------------------------------------------------------------------------
// Settings.

namespace hcscene_detail {

const char *const kDistUnitNames[] = {"meters", "centimeters", "millimeters",
                                      "inches", "feet"};
const char *const kAngleUnitNames[] = {"radians", "degrees"};
const char *const kMassUnitNames[] = {"kilograms", "grams", "pounds"};
// The same units by their symbols.
const char *const kDistUnitSymbols[] = {"m", "cm", "mm", "in", "ft"};
const char *const kAngleUnitSymbols[] = {"rad", "deg"};
const char *const kMassUnitSymbols[] = {"kg", "g", "lb"};

template <std::size_t N>
const char *nameAt(int u, const char *const (&names)[N]) {
  return u >= 0 && static_cast<std::size_t>(u) < N ? names[u] : "";
}

const char *unitName(hcScene::distUnits u) { return nameAt(u, kDistUnitNames); }
const char *unitName(hcScene::angleUnits u) { return nameAt(u, kAngleUnitNames); }
const char *unitName(hcScene::massUnits u) { return nameAt(u, kMassUnitNames); }

bool unitNamed(const char *str, hcScene::distUnits &out) {
  return lookUp(str, kDistUnitNames, out) || lookUp(str, kDistUnitSymbols, out);
}
bool unitNamed(const char *str, hcScene::angleUnits &out) {
  return lookUp(str, kAngleUnitNames, out) || lookUp(str, kAngleUnitSymbols, out);
}
bool unitNamed(const char *str, hcScene::massUnits &out) {
  return lookUp(str, kMassUnitNames, out) || lookUp(str, kMassUnitSymbols, out);
}

void unknownUnit(const char *str) { hcmsg::warning(std::string("unknown unit ") + (str ? str : "(null)")); }

}  // namespace hcscene_detail

void hcScene::setDistanceUnits(const char *str) {
  OpRecord rec("hcScene::setDistanceUnits", str);
  if (!unitNamed(str, dist_)) unknownUnit(str);
}

void hcScene::setAngleUnits(const char *str) {
  OpRecord rec("hcScene::setAngleUnits", str);
  if (!unitNamed(str, angle_)) unknownUnit(str);
}

void hcScene::setMassUnits(const char *str) {
  OpRecord rec("hcScene::setMassUnits", str);
  if (!unitNamed(str, mass_)) unknownUnit(str);
}

float hcScene::getGravity() {
  OpRecord rec("hcScene::getGravity");
  return gravity_;
}

void hcScene::setGravity(float newGravity) {
  OpRecord rec("hcScene::setGravity", newGravity);
  if (std::isfinite(newGravity)) gravity_ = newGravity;
}

void hcScene::setCleanTree(int value) {
  OpRecord rec("hcScene::setCleanTree", value);
  cleanTree_ = value != 0;
}

int hcScene::isCleanTree() {
  OpRecord rec("hcScene::isCleanTree");
  return cleanTree_;
}

void hcScene::setModified(int value) {
  OpRecord rec("hcScene::setModified", value);
  modified_ = value != 0;
}

int hcScene::getInParser() {
  OpRecord rec("hcScene::getInParser");
  return inParser_;
}

// ---------------------------------------------------------------------------
// Operations of the host that this stand-in does not model.

hList *hcScene::getChannelSets() {
  OpRecord rec("hcScene::getChannelSets");
  std::vector<void *> out;
  forEach<void>(hcChannelSet::globalList, [&out](void *set) { out.push_back(set); });
  return answer(kChannelSetList, out);
}

hList *hcScene::getASDXMLObjects() {
  OpRecord rec("hcScene::getASDXMLObjects");
  return nullptr;
}

int hcScene::saveToPsurf(const char *filename) {
  OpRecord rec("hcScene::saveToPsurf", filename);
  return 0;
}

int hcScene::saveMotions(const char *filename, const char *mode, int timeline,
                         int title) {
  OpRecord rec("hcScene::saveMotions", filename, mode, timeline, title);
  return 0;
}

int hcScene::saveToArchive(const char *filename, int flag) {
  OpRecord rec("hcScene::saveToArchive", filename, flag);
  return 0;
}

hcASDXMLObject *hcScene::findASDXMLObject(const char *name) {
  OpRecord rec("hcScene::findASDXMLObject", name);
  return nullptr;
}

void hcScene::addASDXMLObject(hcASDXMLObject *object) {
  OpRecord rec("hcScene::addASDXMLObject", object);
}

int hcScene::delASDXMLObject(hcASDXMLObject *object) {
  OpRecord rec("hcScene::delASDXMLObject", object);
  return 0;
}

hcSegment *hcScene::getWorld() {
  OpRecord rec("hcScene::getWorld");
  return nullptr;
}

hcSite *hcScene::getRootSite() {
  OpRecord rec("hcScene::getRootSite");
  return nullptr;
}

int hcScene::destroyAllForceTreesID() {
  OpRecord rec("hcScene::destroyAllForceTreesID");
  return 0;
}

void hcScene::addForceTreeID(InvDynamics *tree) {
  OpRecord rec("hcScene::addForceTreeID", tree);
}

int hcScene::delForceTreeID(InvDynamics *tree) {
  OpRecord rec("hcScene::delForceTreeID", tree);
  return 0;
}

hList *hcScene::getForceTreesID() {
  OpRecord rec("hcScene::getForceTreesID");
  return nullptr;
}
