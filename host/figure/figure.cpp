// hcFigure: registries, naming, frames and the figure-level queries.
#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstring>
#include <deque>

#include "host/constraint.h"
#include "host/figure.h"
#include "host/material.h"
#include "host/posture.h"
#include "figure/figure_detail.h"
#include "human/human_body.h"

using namespace hcfigure_detail;

namespace {

bool emptyText(const char *s) { return !s || !*s; }

}  // namespace

// ---------------------------------------------------------------------------
// Construction and teardown.

hcFigure::hcFigure() = default;

hcFigure::~hcFigure() {
  hccore::destroying(this, "hcFigure::~hcFigure");
  hccore::Quiet quiet;
  for (hcSegment *seg : items<hcSegment>(segments_)) destroySegment(seg);
  for (hcJoint *j : items<hcJoint>(joints_)) destroyJoint(j);
  hList::destroy(&segments_, nullptr);
  hList::destroy(&joints_, nullptr);
  hList::destroy(&sites_, nullptr);
}

hcFigure *hcFigure::createInMemory(const char *name) {
  OpRecord rec("hcFigure::createInMemory", name);
  if (emptyText(name)) return nullptr;
  auto *fig = new hcFigure();
  fig->setFullName("", name);
  return fig;
}

int hcFigure::destroy(hcFigure *figure) {
  OpRecord rec("hcFigure::destroy", figure);
  if (!figure) return 0;
  delete figure;
  return 1;
}

hcFigure *hcFigure::resolve(hList *l) {
  OpRecord rec("hcFigure::resolve", l);
  // Only a live figure at the head of the list counts.
  return l && hcIsLiveObject(l->getData()) ? dynamic_cast<hcFigure *>(static_cast<hcObject *>(l->getData())) : nullptr;
}

hcFigure *hcFigure::editSplit(hcJoint *joint) {
  OpRecord rec("hcFigure::editSplit", joint);
  return nullptr;  // splitting a figure at a joint is not modelled
}

void hcFigure::destroyJoint(hcJoint *j) {
  j->disconnect();
  remove(&joints_, j);
  delete j;
  touch();
}

void hcFigure::destroySite(hcSite *s) {
  for (hcJoint *j : items<hcJoint>(s->joints_)) destroyJoint(j);
  remove(&s->segment_->sites_, s);
  remove(&sites_, s);
  if (root_ == s) root_ = nullptr;
  delete s;
  touch();
}

void hcFigure::destroySegment(hcSegment *seg) {
  for (hcSite *s : items<hcSite>(seg->sites_)) destroySite(s);
  remove(&segments_, seg);
  delete seg;
  touch();
}

// ---------------------------------------------------------------------------
// Naming.

int hcFigure::setName(const char *newName) {
  OpRecord rec("hcFigure::setName", newName);
  if (emptyText(newName)) return 0;
  std::string n = newName;
  setFullName("", n.c_str());
  refreshFullNames();
  return 1;
}

void hcFigure::refreshFullNames() {
  std::string fig = getName() ? getName() : "";
  for (hcSegment *seg : items<hcSegment>(segments_)) {
    std::string n = seg->getName() ? seg->getName() : "";
    seg->setFullName((fig + ".").c_str(), n.c_str());
    for (hcSite *s : items<hcSite>(seg->sites_)) {
      std::string sn = s->getName() ? s->getName() : "";
      s->setFullName((fig + "." + n + ".").c_str(), sn.c_str());
    }
  }
  for (hcJoint *j : items<hcJoint>(joints_)) {
    std::string n = j->getName() ? j->getName() : "";
    j->setFullName((fig + ".").c_str(), n.c_str());
  }
}

hcJoint *hcFigure::findJoint(const char *name) {
  OpRecord rec("hcFigure::findJoint", name);
  return findJointImpl(name);
}

hcJoint *hcFigure::findJointImpl(const char *name) {
  if (!name) return nullptr;
  for (hcJoint *j : items<hcJoint>(joints_))
    if (sameName(j, name)) return j;
  return nullptr;
}

hcSegment *hcFigure::findSegment(const char *name) {
  OpRecord rec("hcFigure::findSegment", name);
  return findSegmentImpl(name);
}

hcSegment *hcFigure::findSegmentImpl(const char *name) {
  if (!name) return nullptr;
  for (hcSegment *seg : items<hcSegment>(segments_))
    if (sameName(seg, name)) return seg;
  return nullptr;
}

hcSite *hcFigure::findSite(const char *name) {
  OpRecord rec("hcFigure::findSite", name);
  if (!name) return nullptr;
  for (hcSite *s : items<hcSite>(sites_)) {
    if (sameName(s, name)) return s;
    const char *seg = s->segment_->getName();
    const char *sn = s->getName();
    if (seg && sn && std::string(seg) + "." + sn == name) return s;
  }
  return nullptr;
}

int hcFigure::searchProperty(const char *name, hcValue *value) {
  OpRecord rec("hcFigure::searchProperty", name, value);
  if (!name || !value) return 0;
  if (hcObject::searchProperty(name, value)) return 1;
  if (std::strcmp(name, "mass") == 0) {
    float m = 0;
    for (hcSegment *seg : items<hcSegment>(segments_)) m += seg->massImpl();
    value->set(m);
    return 1;
  }
  if (std::strcmp(name, "root") == 0 && effectiveRoot()) {
    value->set(effectiveRoot());
    return 1;
  }
  return 0;
}

// ---------------------------------------------------------------------------
// Registries.

void hcFigure::addJoint(hcJoint *joint) {
  OpRecord rec("hcFigure::addJoint", joint);
  if (!joint || joint->figure_ == this) return;
  if (joint->site1_ || joint->site2_) return;  // its sites stay where they are
  if (findJointImpl(joint->getName())) return;
  if (joint->figure_) remove(&joint->figure_->joints_, joint);
  joint->figure_ = this;
  hList::append(&joints_, joint);
  refreshFullNames();
}

void hcFigure::addSegment(hcSegment *segment) {
  OpRecord rec("hcFigure::addSegment", segment);
  if (!segment || segment->figure_ == this) return;
  if (findSegmentImpl(segment->getName())) return;
  hcFigure *old = segment->figure_;
  // Joints that would link the two figures go; joints within the segment
  // travel with it.
  for (hcJoint *j : items<hcJoint>(segment->joints_)) {
    bool inside = j->site1_->segment_ == segment &&
                  j->site2_->segment_ == segment;
    if (inside) {
      remove(&old->joints_, j);
      j->figure_ = this;
      hList::append(&joints_, j);
    } else {
      old->destroyJoint(j);
    }
  }
  for (hcSite *s : items<hcSite>(segment->sites_)) {
    remove(&old->sites_, s);
    if (old->root_ == s) old->root_ = nullptr;
    hList::append(&sites_, s);
  }
  remove(&old->segments_, segment);
  old->touch();
  segment->figure_ = this;
  hList::append(&segments_, segment);
  refreshFullNames();
  touch();
}

void hcFigure::addSite(hcSite *site) {
  OpRecord rec("hcFigure::addSite", site);
  if (!site || site->segment_->figure_ != this) return;
  appendOnce(&sites_, site);
}

int hcFigure::delJoint(hcJoint *joint) {
  OpRecord rec("hcFigure::delJoint", joint);
  if (!joint || joint->figure_ != this) return 0;
  destroyJoint(joint);
  return 1;
}

int hcFigure::delSegment(hcSegment *segment) {
  OpRecord rec("hcFigure::delSegment", segment);
  if (!segment || segment->figure_ != this) return 0;
  destroySegment(segment);
  return 1;
}

int hcFigure::delSite(hcSite *site) {
  OpRecord rec("hcFigure::delSite", site);
  if (!site || site->segment_->figure_ != this) return 0;
  destroySite(site);
  return 1;
}

hList *hcFigure::getJoints() {
  OpRecord rec("hcFigure::getJoints");
  return handedJoints_.answer(items<void>(joints_));
}

hList *hcFigure::getSegments() {
  OpRecord rec("hcFigure::getSegments");
  return handedSegments_.answer(items<void>(segments_));
}

hList *hcFigure::getSites() {
  OpRecord rec("hcFigure::getSites");
  return handedSites_.answer(items<void>(sites_));
}

int hcFigure::getNDOFs() {
  OpRecord rec("hcFigure::getNDOFs");
  int n = 0;
  for (hcJoint *j : items<hcJoint>(joints_)) n += int(j->dofs_.size());
  return n;
}

int hcFigure::getNEdges() {
  OpRecord rec("hcFigure::getNEdges");
  return hList::count(segments_) * hcSegment::kEdges;
}

int hcFigure::getNFaces() {
  OpRecord rec("hcFigure::getNFaces");
  return hList::count(segments_) * hcSegment::kFaces;
}

int hcFigure::getNJoints() {
  OpRecord rec("hcFigure::getNJoints");
  return hList::count(joints_);
}

int hcFigure::getNNodes() {
  OpRecord rec("hcFigure::getNNodes");
  return hList::count(segments_) * hcSegment::kNodes;
}

int hcFigure::getNSegments() {
  OpRecord rec("hcFigure::getNSegments");
  return hList::count(segments_);
}

int hcFigure::getNSites() {
  OpRecord rec("hcFigure::getNSites");
  return hList::count(sites_);
}

// ---------------------------------------------------------------------------
// Root and frames.

hcSite *hcFigure::effectiveRoot() {
  if (root_) return root_;
  hList *first = hList::iterator(sites_, nullptr);
  return first ? static_cast<hcSite *>(first->getData()) : nullptr;
}

hcSite *hcFigure::getRoot() {
  OpRecord rec("hcFigure::getRoot");
  return effectiveRoot();
}

hcJoint *hcFigure::getRootJoint() {
  OpRecord rec("hcFigure::getRootJoint");
  hcSite *r = effectiveRoot();
  if (!r) return nullptr;
  hList *first = hList::iterator(r->joints_, nullptr);
  return first ? static_cast<hcJoint *>(first->getData()) : nullptr;
}

int hcFigure::setRoot(hcSite *site) {
  OpRecord rec("hcFigure::setRoot", site);
  if (!site || site->segment_->figure_ != this) return 0;
  root_ = site;
  touch();
  return 1;
}

int hcFigure::setRootJoint(hcSite *site) {
  OpRecord rec("hcFigure::setRootJoint", site);
  if (!site || site->segment_->figure_ != this) return 0;
  root_ = site;
  touch();
  return 1;
}

void hcFigure::touch() {
  framesValid_ = false;
  modified_ = 1;
}

void hcFigure::updateFrames() {
  if (framesValid_) return;
  framesValid_ = true;
  for (hcSegment *seg : items<hcSegment>(segments_)) {
    seg->placed_ = false;
    seg->parentJoint_ = nullptr;
    seg->hangSite_ = nullptr;
  }
  for (hcJoint *j : items<hcJoint>(joints_)) j->reversed_ = false;

  std::deque<hcSegment *> queue;
  auto walk = [&]() {
    while (!queue.empty()) {
      hcSegment *seg = queue.front();
      queue.pop_front();
      for (hcJoint *j : items<hcJoint>(seg->joints_)) {
        if (!j->site1_ || !j->site2_) continue;
        bool forward = j->site1_->segment_ == seg;
        hcSite *a = forward ? j->site1_ : j->site2_;
        hcSite *b = forward ? j->site2_ : j->site1_;
        hcSegment *child = b->segment_;
        if (child == seg || child->placed_) continue;
        hMatrix t = j->transform();
        if (!forward) t = inverse(t);
        hMatrix gb = mul(mul(seg->global_, a->location_), t);
        child->global_ = mul(gb, inverse(b->location_));
        child->parentJoint_ = j;
        child->hangSite_ = b;
        child->placed_ = true;
        j->reversed_ = !forward;
        queue.push_back(child);
      }
    }
  };

  if (hcSite *r = effectiveRoot()) {
    hcSegment *seg = r->segment_;
    seg->global_ = mul(location_, inverse(r->location_));
    seg->hangSite_ = r;
    seg->placed_ = true;
    queue.push_back(seg);
    walk();
  }
  for (hcSegment *seg : items<hcSegment>(segments_)) {
    if (seg->placed_) continue;
    seg->global_ = mul(location_, seg->free_);
    seg->placed_ = true;
    queue.push_back(seg);
    walk();
  }
}

void hcFigure::moveRigidly(hcSegment *seg, hMatrix &delta) {
  updateFrames();
  hcSegment *base = seg;
  while (hcJoint *j = base->parentJoint_) {
    hcSite *parentSite = j->site1_ == base->hangSite_ ? j->site2_ : j->site1_;
    base = parentSite->segment_;
  }
  if (base->hangSite_ && base->hangSite_ == effectiveRoot())
    location_ = mul(delta, location_);
  else
    base->free_ = mul(inverse(location_), mul(delta, base->global_));
  touch();
}

// ---------------------------------------------------------------------------
// Location.

void hcFigure::getLocation(hMatrix &M) {
  OpRecord rec("hcFigure::getLocation", addr(&M));
  M = location_;
}

int hcFigure::setLocation(hMatrix &M) {
  OpRecord rec("hcFigure::setLocation", addr(&M));
  location_ = M;
  touch();
  return 1;
}

void hcFigure::setPosition(hVector &vec) {
  OpRecord rec("hcFigure::setPosition", addr(&vec));
  for (int i = 0; i < 3; ++i) location_.m[i][3] = vec.v[i];
  touch();
}

void hcFigure::getPosition(hVector &vec) {
  OpRecord rec("hcFigure::getPosition", addr(&vec));
  vec = origin(location_);
}

void hcFigure::setOrientation(hVector &vec) {
  OpRecord rec("hcFigure::setOrientation", addr(&vec));
  hMatrix r = fromXYZ(vec);
  for (int i = 0; i < 3; ++i)
    for (int k = 0; k < 3; ++k) location_.m[i][k] = r.m[i][k];
  touch();
}

void hcFigure::getOrientation(hVector &vec) {
  OpRecord rec("hcFigure::getOrientation", addr(&vec));
  vec = toXYZ(location_);
}

void hcFigure::reset() {
  OpRecord rec("hcFigure::reset");
  for (hcJoint *j : items<hcJoint>(joints_)) {
    for (auto &d : j->dofs_) {
      d.value = 0;
      if (d.value < d.lower) d.value = d.lower;
      if (d.value > d.upper) d.value = d.upper;
    }
  }
  touch();
}

// ---------------------------------------------------------------------------
// Mass, centroid and box.

void hcFigure::comImpl(hVector &out) {
  updateFrames();
  double sum[3] = {0, 0, 0}, total = 0;
  for (hcSegment *seg : items<hcSegment>(segments_)) {
    float vol, cov[3][3];
    hVector com;
    seg->massProperties(vol, com, cov);
    float m = seg->massImpl();
    hVector g = apply(seg->global_, com);
    for (int i = 0; i < 3; ++i) sum[i] += double(m) * g.v[i];
    total += m;
  }
  if (total <= 0) {
    out = hVector();
    return;
  }
  out = hVector(float(sum[0] / total), float(sum[1] / total),
                float(sum[2] / total));
}

void hcFigure::getCOM(hVector &center) {
  OpRecord rec("hcFigure::getCOM", addr(&center));
  comImpl(center);
}

void hcFigure::calcCOM(hVector &vecCOM, int withAttachments) {
  OpRecord rec("hcFigure::calcCOM", addr(&vecCOM), withAttachments);
  // No figure is ever attached here, so withAttachments changes nothing.
  comImpl(vecCOM);
}

void hcFigure::setCOM() {
  OpRecord rec("hcFigure::setCOM");
  // The centre of mass is always computed from the current state.
}

void hcFigure::inertia(int docom) {
  OpRecord rec("hcFigure::inertia", docom);
  // Segment inertias are computed on demand; nothing is cached.
}

// Calls fn with every node of every segment, in world coordinates or
// relative to the figure location.
template <class F>
void hcFigure::forEachNode(int global, F fn) {
  updateFrames();
  hMatrix toLocal = inverse(location_);
  for (hcSegment *seg : items<hcSegment>(segments_))
    for (int n = 0; n < hcSegment::kNodes; ++n) {
      hVector p = seg->nodeGlobal(n);
      fn(global ? p : apply(toLocal, p));
    }
}

int hcFigure::getCentroid(hVector &c, int global) {
  OpRecord rec("hcFigure::getCentroid", addr(&c), global);
  if (!segments_) return 0;
  double sum[3] = {0, 0, 0};
  int n = 0;
  forEachNode(global, [&](const hVector &p) {
    for (int i = 0; i < 3; ++i) sum[i] += p.v[i];
    ++n;
  });
  c = hVector(float(sum[0] / n), float(sum[1] / n), float(sum[2] / n));
  return 1;
}

int hcFigure::getBoundingBox(hVector &bmin, hVector &bmax, int global) {
  OpRecord rec("hcFigure::getBoundingBox", addr(&bmin), addr(&bmax), global);
  if (!segments_) return 0;
  hVector lo(FLT_MAX, FLT_MAX, FLT_MAX), hi(-FLT_MAX, -FLT_MAX, -FLT_MAX);
  forEachNode(global, [&](const hVector &p) {
    for (int i = 0; i < 3; ++i) {
      if (p.v[i] < lo.v[i]) lo.v[i] = p.v[i];
      if (p.v[i] > hi.v[i]) hi.v[i] = p.v[i];
    }
  });
  bmin = lo;
  bmax = hi;
  return 1;
}

// ---------------------------------------------------------------------------
// State flags.

const char *hcFigure::getFileName() {
  OpRecord rec("hcFigure::getFileName");
  return hasFileName_ ? fileName_.c_str() : nullptr;
}

void hcFigure::clearFileName() {
  OpRecord rec("hcFigure::clearFileName");
  fileName_.clear();
  hasFileName_ = false;
}

void hcFigure::setModified(int value) {
  OpRecord rec("hcFigure::setModified", value);
  modified_ = value;
}

int hcFigure::getModified() {
  OpRecord rec("hcFigure::getModified");
  return modified_;
}

int hcFigure::getNoWrite() {
  OpRecord rec("hcFigure::getNoWrite");
  return 0;
}

void hcFigure::setSmoothSkin(int flag) {
  OpRecord rec("hcFigure::setSmoothSkin", flag);
  smoothSkin_ = flag;
}

int hcFigure::getSmoothSkin() {
  OpRecord rec("hcFigure::getSmoothSkin");
  return smoothSkin_;
}

void hcFigure::setVisibility(int value) {
  OpRecord rec("hcFigure::setVisibility", value);
  if (value != ON && value != OFF) return;
  visibility_ = value;
  for (hcSegment *seg : items<hcSegment>(segments_))
    seg->display_[hcSegment::ON] = value == ON ? 1 : 0;
}

int hcFigure::getVisibility() {
  OpRecord rec("hcFigure::getVisibility");
  if (!segments_) return visibility_;
  int shown = 0, total = 0;
  for (hcSegment *seg : items<hcSegment>(segments_)) {
    ++total;
    if (seg->display_[hcSegment::ON]) ++shown;
  }
  return shown == total ? ON : shown == 0 ? OFF : MIXED;
}

void hcFigure::setGeometry(hcGeometry *geo) {
  OpRecord rec("hcFigure::setGeometry", geo);
  geometry_ = geo;
}

hcGeometry *hcFigure::getGeometry() {
  OpRecord rec("hcFigure::getGeometry");
  return geometry_;
}

int hcFigure::isCamera() {
  OpRecord rec("hcFigure::isCamera");
  return 0;
}

int hcFigure::getDontPickMe() {
  OpRecord rec("hcFigure::getDontPickMe");
  return 0;
}

void hcFigure::applyScale(float *newScale, int global, int fast) {
  OpRecord rec("hcFigure::applyScale", newScale, global, fast);
  if (!newScale) return;
  for (int i = 0; i < 3; ++i)
    if (!(newScale[i] > 0) || !std::isfinite(newScale[i])) return;  // factors must be positive
  hccore::Quiet quiet;
  for (hcSegment *seg : items<hcSegment>(segments_)) {
    hVector factor(newScale[0], newScale[1], newScale[2]);
    if (global) {
      // The factors are the segment's scale from now on.
      hVector present;
      seg->getAbsoluteScale(present);
      for (int i = 0; i < 3; ++i) factor.v[i] /= present.v[i];
    }
    seg->applyScale(factor, fast);
  }
}

// ---------------------------------------------------------------------------
// Operations of the host that this stand-in does not model.

hList *hcFigure::getAttached() {
  OpRecord rec("hcFigure::getAttached");
  return nullptr;
}

hcSite *hcFigure::getAttachedTo() {
  OpRecord rec("hcFigure::getAttachedTo");
  return nullptr;
}

hList *hcFigure::getConstraints() {
  OpRecord rec("hcFigure::getConstraints");
  hccore::Quiet quiet;
  std::vector<void *> mine;
  for (hcConstraint *c : hcConstraint::solverList())
    if (c->getEndEffectorFigure() == this) mine.push_back(c);
  return handedConstraints_.answer(mine);
}

hcHuman *hcFigure::getHuman() {
  OpRecord rec("hcFigure::getHuman");
  return hcbody::humanOf(this);
}

float hcFigure::getHumanVersion() {
  OpRecord rec("hcFigure::getHumanVersion");
  return 0;
}

sgFigure *hcFigure::getSG() {
  OpRecord rec("hcFigure::getSG");
  return nullptr;
}

hList *hcFigure::getPostures() {
  OpRecord rec("hcFigure::getPostures");
  const std::vector<hcPosture *> mine = hcPosture::of(this);
  return handedPostures_.answer(std::vector<void *>(mine.begin(), mine.end()));
}

hcFigure::postureList *hcFigure::getPostureList() {
  OpRecord rec("hcFigure::getPostureList");
  const std::vector<hcPosture *> mine = hcPosture::of(this);
  postures_.assign(mine.begin(), mine.end());
  return &postures_;
}

hcFigure::materialList *hcFigure::getMaterialList() {
  OpRecord rec("hcFigure::getMaterialList");
  hccore::Quiet quiet;
  materials_.clear();
  for (hcMaterial *m : items<hcMaterial>(hcMaterial::getMaterials(this))) materials_.push_back(m);
  return &materials_;
}

int hcFigure::updateMaterials(int numMaterials) {
  OpRecord rec("hcFigure::updateMaterials", numMaterials);
  return 0;
}

int hcFigure::pose(hcPosture *posture) {
  OpRecord rec("hcFigure::pose", posture);
  const std::vector<hcPosture *> mine = hcPosture::of(this);
  return std::find(mine.begin(), mine.end(), posture) != mine.end() ? posture->apply() : 0;
}

int hcFigure::getScale(hVector &vec) {
  OpRecord rec("hcFigure::getScale", addr(&vec));
  return 0;
}

int hcFigure::setScale(hVector &vec) {
  OpRecord rec("hcFigure::setScale", addr(&vec));
  return 0;
}

hcFigPhys *hcFigure::getPhysical() {
  OpRecord rec("hcFigure::getPhysical");
  return nullptr;
}

int hcFigure::isSegmentInForceTreeFID(hcSegment *theSeg) {
  OpRecord rec("hcFigure::isSegmentInForceTreeFID", theSeg);
  return 0;
}

int hcFigure::isSiteInForceTreeFID(hcSite *theSite) {
  OpRecord rec("hcFigure::isSiteInForceTreeFID", theSite);
  return 0;
}

int hcFigure::attachForceToSiteFID(hcSite *forceSite, hVector &force) {
  OpRecord rec("hcFigure::attachForceToSiteFID", forceSite, addr(&force));
  return 0;
}

int hcFigure::attachWeightToSiteFID(hcSite *weightSite, float weight) {
  OpRecord rec("hcFigure::attachWeightToSiteFID", weightSite, weight);
  return 0;
}

int hcFigure::getSegmentForceFID(hcSegment *seg, hVector &segForceLocal,
                                 hVector &segForceInertial) {
  OpRecord rec("hcFigure::getSegmentForceFID", seg, addr(&segForceLocal),
               addr(&segForceInertial));
  return 0;
}

int hcFigure::getExternalSegmentForceFID(hcSegment *seg,
                                         hVector &segExternForceLocal,
                                         hVector &segExternForceInertial) {
  OpRecord rec("hcFigure::getExternalSegmentForceFID", seg,
               addr(&segExternForceLocal), addr(&segExternForceInertial));
  return 0;
}

int hcFigure::clearSegmentForcesFID(hcSegment *seg) {
  OpRecord rec("hcFigure::clearSegmentForcesFID", seg);
  return 0;
}

int hcFigure::getJointTorquesFID(hcJoint *joint, float *axisTorque) {
  OpRecord rec("hcFigure::getJointTorquesFID", joint, axisTorque);
  return 0;
}

int hcFigure::defineRootForForceTreeFID(hcSite *startSite) {
  OpRecord rec("hcFigure::defineRootForForceTreeFID", startSite);
  return 0;
}

int hcFigure::addBranchToForceTreeFID(hcSegment *endSegment) {
  OpRecord rec("hcFigure::addBranchToForceTreeFID", endSegment);
  return 0;
}

void hcFigure::setRecalcInertiaParamFID() {
  OpRecord rec("hcFigure::setRecalcInertiaParamFID");
}

void hcFigure::setNotRecalcInertiaParamFID() {
  OpRecord rec("hcFigure::setNotRecalcInertiaParamFID");
}

int hcFigure::createForceTreeFID() {
  OpRecord rec("hcFigure::createForceTreeFID");
  return 0;
}

int hcFigure::computeForceTreeInDynamicModeFID() {
  OpRecord rec("hcFigure::computeForceTreeInDynamicModeFID");
  return 0;
}

int hcFigure::computeForceTreeInStaticModeFID() {
  OpRecord rec("hcFigure::computeForceTreeInStaticModeFID");
  return 0;
}

int hcFigure::deleteForceTreeFID() {
  OpRecord rec("hcFigure::deleteForceTreeFID");
  return 0;
}

float hcFigure::getVRPD() {
  OpRecord rec("hcFigure::getVRPD");
  return 0;
}
