// hcJoint and hcSite: connectivity, degrees of freedom and site frames.
#include <cctype>
#include <cmath>
#include <cstring>

#include "host/figure.h"
#include "figure/figure_detail.h"

using namespace hcfigure_detail;

namespace {

constexpr float kPi = 3.14159265358979f;
constexpr float kWide = 1e6f;  // default limit of a translation
constexpr float kDegrees = 180.0f / kPi;

bool emptyText(const char *s) { return !s || !*s; }

// The first blank-delimited word of text.
std::string firstWord(const char *text) {
  const char *p = text;
  while (*p && std::isspace(static_cast<unsigned char>(*p))) ++p;
  const char *q = p;
  while (*q && !std::isspace(static_cast<unsigned char>(*q))) ++q;
  return std::string(p, q);
}

}  // namespace

// ===========================================================================
// hcJoint

hcJoint::hcJoint() = default;
hcJoint::~hcJoint() { hccore::destroying(this, "hcJoint::~hcJoint"); }

hcJoint *hcJoint::createInMemory(hcFigure *figure, const char *name) {
  OpRecord rec("hcJoint::createInMemory", figure, name);
  if (!figure || emptyText(name) || figure->findJointImpl(name)) return nullptr;
  auto *j = new hcJoint();
  j->figure_ = figure;
  hList::append(&figure->joints_, j);
  std::string prefix = figure->getName() ? figure->getName() : "";
  j->setFullName((prefix + ".").c_str(), name);
  return j;
}

hcJoint *hcJoint::createBetweenSites(hcSite *site1, hcSite *site2) {
  OpRecord rec("hcJoint::createBetweenSites", site1, site2);
  if (!linkable(site1, site2)) return nullptr;
  hcFigure *fig = site1->segment_->figure_;
  // Named after the two segments, made unique with a number.
  std::string base = std::string(site1->segment_->getName()) + "_" +
                     site2->segment_->getName();
  std::string name = base;
  for (int n = 2; fig->findJointImpl(name.c_str()); ++n)
    name = base + "_" + std::to_string(n);
  auto *j = new hcJoint();
  j->figure_ = fig;
  hList::append(&fig->joints_, j);
  j->setFullName((std::string(fig->getName()) + ".").c_str(), name.c_str());
  j->connect(site1, site2);
  return j;
}

bool hcJoint::linkable(hcSite *a, hcSite *b) {
  return a && b && a != b && a->segment_ != b->segment_ &&
         a->segment_->figure_ == b->segment_->figure_;
}

int hcJoint::destroy(hcJoint *joint) {
  OpRecord rec("hcJoint::destroy", joint);
  if (!joint) return 0;
  joint->figure_->destroyJoint(joint);
  return 1;
}

hcFigure *hcJoint::editRemove(hcJoint *joint) {
  OpRecord rec("hcJoint::editRemove", joint);
  if (!joint) return nullptr;
  hcFigure *fig = joint->figure_;
  fig->destroyJoint(joint);
  return fig;
}

hcJoint *hcJoint::find(hcFigure *fig, char **bufp) {
  OpRecord rec("hcJoint::find", fig, bufp && *bufp ? *bufp : nullptr);
  if (!fig || !bufp || !*bufp) return nullptr;
  std::string name = firstWord(*bufp);
  return name.empty() ? nullptr : fig->findJointImpl(name.c_str());
}

hcJoint *hcJoint::resolve(hList *l) {
  OpRecord rec("hcJoint::resolve", l);
  // Only a live joint at the head of the list counts.
  return l && hcIsLiveObject(l->getData()) ? dynamic_cast<hcJoint *>(static_cast<hcObject *>(l->getData())) : nullptr;
}

void hcJoint::touch() {
  if (figure_) figure_->touch();
}

void hcJoint::connect(hcSite *site1, hcSite *site2) {
  site1_ = site1;
  site2_ = site2;
  appendOnce(&site1->joints_, this);
  appendOnce(&site2->joints_, this);
  appendOnce(&site1->segment_->joints_, this);
  appendOnce(&site2->segment_->joints_, this);
  touch();
}

void hcJoint::disconnect() {
  for (hcSite *s : {site1_, site2_}) {
    if (!s) continue;
    remove(&s->joints_, this);
    remove(&s->segment_->joints_, this);
  }
  site1_ = site2_ = nullptr;
  reversed_ = false;
  touch();
}

int hcJoint::assignConnectivity(hcSite *site1, hcSite *site2) {
  OpRecord rec("hcJoint::assignConnectivity", site1, site2);
  if (!linkable(site1, site2) || site1->segment_->figure_ != figure_) return 0;
  disconnect();
  connect(site1, site2);
  return 1;
}

hMatrix hcJoint::transform() {
  hMatrix t = displacement_;
  for (const Dof &d : dofs_) {
    if (d.type == ROT) {
      t = mul(t, rotation(d.axis, d.value));
    } else if (d.type == TRANS) {
      hVector step(d.axis.v[0] * d.value, d.axis.v[1] * d.value,
                   d.axis.v[2] * d.value);
      t = mul(t, translation(step));
    }
  }
  return mul(t, displacementInv_);
}

// ---------------------------------------------------------------------------
// Degrees of freedom.

int hcJoint::copyOut(float Dof::*field, float *out, int internal) {
  if (!out) return 0;
  for (size_t k = 0; k < dofs_.size(); ++k) {
    float v = dofs_[k].*field;
    out[k] = !internal && dofs_[k].type == ROT ? v * kDegrees : v;
  }
  return 1;
}

int hcJoint::copyIn(float Dof::*field, const float *in, int internal) {
  if (!in) return 0;
  for (size_t k = 0; k < dofs_.size(); ++k)
    if (!std::isfinite(in[k])) return 0;  // nothing changes
  for (size_t k = 0; k < dofs_.size(); ++k)
    dofs_[k].*field = !internal && dofs_[k].type == ROT ? in[k] / kDegrees
                                                       : in[k];
  touch();
  return 1;
}

int hcJoint::getAngles(float *angles, int internal) {
  OpRecord rec("hcJoint::getAngles", angles, internal);
  return copyOut(&Dof::value, angles, internal);
}

int hcJoint::setAngles(float *angles, int internal) {
  OpRecord rec("hcJoint::setAngles", angles, internal);
  return copyIn(&Dof::value, angles, internal);
}

int hcJoint::getLowerLimits(float *lower, int internal) {
  OpRecord rec("hcJoint::getLowerLimits", lower, internal);
  return copyOut(&Dof::lower, lower, internal);
}

int hcJoint::getUpperLimits(float *upper, int internal) {
  OpRecord rec("hcJoint::getUpperLimits", upper, internal);
  return copyOut(&Dof::upper, upper, internal);
}

void hcJoint::setLowerLimits(float *lower) {
  OpRecord rec("hcJoint::setLowerLimits", lower);
  copyIn(&Dof::lower, lower, 1);
}

void hcJoint::setUpperLimits(float *upper) {
  OpRecord rec("hcJoint::setUpperLimits", upper);
  copyIn(&Dof::upper, upper, 1);
}

int hcJoint::setTolerance(float *value) {
  OpRecord rec("hcJoint::setTolerance", value);
  return copyIn(&Dof::tolerance, value, 1);
}

int hcJoint::getTolerance(float *value) {
  OpRecord rec("hcJoint::getTolerance", value);
  return copyOut(&Dof::tolerance, value, 1);
}

int hcJoint::setRest(float *value) {
  OpRecord rec("hcJoint::setRest", value);
  return copyIn(&Dof::rest, value, 1);
}

int hcJoint::getRest(float *value) {
  OpRecord rec("hcJoint::getRest", value);
  return copyOut(&Dof::rest, value, 1);
}

int hcJoint::setStiffness(float *value) {
  OpRecord rec("hcJoint::setStiffness", value);
  return copyIn(&Dof::stiffness, value, 1);
}

int hcJoint::getStiffness(float *value) {
  OpRecord rec("hcJoint::getStiffness", value);
  return copyOut(&Dof::stiffness, value, 1);
}

int hcJoint::setDamp(float *value) {
  OpRecord rec("hcJoint::setDamp", value);
  return copyIn(&Dof::damp, value, 1);
}

int hcJoint::getDamp(float *value) {
  OpRecord rec("hcJoint::getDamp", value);
  return copyOut(&Dof::damp, value, 1);
}

int hcJoint::getDOFAxis(int dofNum, hVector &axis) {
  OpRecord rec("hcJoint::getDOFAxis", dofNum, addr(&axis));
  if (dofNum < 0 || dofNum >= int(dofs_.size())) return 0;
  axis = dofs_[dofNum].axis;
  return 1;
}

int hcJoint::getDOFType(int dofNum) {
  OpRecord rec("hcJoint::getDOFType", dofNum);
  if (dofNum < 0 || dofNum >= int(dofs_.size())) return NONE;
  return dofs_[dofNum].type;
}

int hcJoint::clearDOFs() {
  OpRecord rec("hcJoint::clearDOFs");
  dofs_.clear();
  touch();
  return 1;
}

int hcJoint::appendDOF(int type, hVector &axis) {
  OpRecord rec("hcJoint::appendDOF", type, addr(&axis));
  if (type != ROT && type != TRANS) return 0;
  double len = std::sqrt(double(axis.v[0]) * axis.v[0] +
                         double(axis.v[1]) * axis.v[1] +
                         double(axis.v[2]) * axis.v[2]);
  if (!(len > 1e-12) || !std::isfinite(len)) return 0;
  Dof d;
  d.type = type;
  d.axis = hVector(float(axis.v[0] / len), float(axis.v[1] / len),
                   float(axis.v[2] / len));
  d.lower = type == ROT ? -kPi : -kWide;
  d.upper = type == ROT ? kPi : kWide;
  dofs_.push_back(d);
  touch();
  return 1;
}

int hcJoint::getNDOFs() {
  OpRecord rec("hcJoint::getNDOFs");
  return int(dofs_.size());
}

int hcJoint::clampToLimits() {
  OpRecord rec("hcJoint::clampToLimits");
  int moved = 0;
  for (Dof &d : dofs_) {
    float v = d.value < d.lower ? d.lower : d.value > d.upper ? d.upper : d.value;
    if (v != d.value) {
      d.value = v;
      ++moved;
    }
  }
  if (moved) touch();
  return moved;
}

int hcJoint::getFrozen() {
  OpRecord rec("hcJoint::getFrozen");
  return frozen_;
}

int hcJoint::setFrozen(int temp) {
  OpRecord rec("hcJoint::setFrozen", temp);
  frozen_ = temp ? 1 : 0;
  return 1;
}

void hcJoint::getDisplacement(hMatrix &D, hMatrix &I) {
  OpRecord rec("hcJoint::getDisplacement", addr(&D), addr(&I));
  D = displacement_;
  I = displacementInv_;
}

int hcJoint::setDisplacement(hMatrix &D, hMatrix &I) {
  OpRecord rec("hcJoint::setDisplacement", addr(&D), addr(&I));
  displacement_ = D;
  displacementInv_ = I;
  touch();
  return 1;
}

// ---------------------------------------------------------------------------
// Connectivity queries.

hcFigure *hcJoint::getFigure() {
  OpRecord rec("hcJoint::getFigure");
  return figure_;
}

hcSite *hcJoint::getFromSite() {
  OpRecord rec("hcJoint::getFromSite");
  return site1_;
}

hcSite *hcJoint::getToSite() {
  OpRecord rec("hcJoint::getToSite");
  return site2_;
}

hcSite *hcJoint::site(int oneOrTwo) {
  OpRecord rec("hcJoint::site", oneOrTwo);
  return oneOrTwo == 1 ? site1_ : oneOrTwo == 2 ? site2_ : nullptr;
}

hcSite *hcJoint::getOtherSite(hcSite *site) {
  OpRecord rec("hcJoint::getOtherSite", site);
  if (!site) return nullptr;
  return site == site1_ ? site2_ : site == site2_ ? site1_ : nullptr;
}

int hcJoint::isReverse() {
  OpRecord rec("hcJoint::isReverse");
  figure_->updateFrames();
  return reversed_ ? 1 : 0;
}

hcSite *hcJoint::getRootSite() {
  OpRecord rec("hcJoint::getRootSite");
  figure_->updateFrames();
  return reversed_ ? site2_ : site1_;
}

int hcJoint::setName(const char *newName) {
  OpRecord rec("hcJoint::setName", newName);
  if (emptyText(newName)) return 0;
  hcJoint *other = figure_->findJointImpl(newName);
  if (other && other != this) return 0;
  std::string n = newName;
  std::string prefix = figure_->getName() ? figure_->getName() : "";
  setFullName((prefix + ".").c_str(), n.c_str());
  return 1;
}

int hcJoint::searchProperty(const char *name, hcValue *value) {
  OpRecord rec("hcJoint::searchProperty", name, value);
  if (!name || !value) return 0;
  if (hcObject::searchProperty(name, value)) return 1;
  if (std::strcmp(name, "figure") == 0) {
    value->set(figure_);
    return 1;
  }
  return 0;
}

sgJoint *hcJoint::getSG() {
  OpRecord rec("hcJoint::getSG");
  return nullptr;
}

hcJointPhys *hcJoint::getPhysical() {
  OpRecord rec("hcJoint::getPhysical");
  return nullptr;
}

// ===========================================================================
// hcSite

hcSite::hcSite() = default;

hcSite::~hcSite() {
  hccore::destroying(this, "hcSite::~hcSite");
  hList::destroy(&joints_, nullptr);
}

hcSite *hcSite::create(const char *name, hcSegment *segment) {
  OpRecord rec("hcSite::create", name, segment);
  if (!segment || emptyText(name)) return nullptr;
  for (hcSite *s : items<hcSite>(segment->sites_))
    if (sameName(s, name)) return nullptr;
  hcFigure *fig = segment->figure_;
  auto *site = new hcSite();
  site->segment_ = segment;
  hList::append(&segment->sites_, site);
  hList::append(&fig->sites_, site);
  std::string prefix = std::string(fig->getName() ? fig->getName() : "") +
                       "." + segment->getName() + ".";
  site->setFullName(prefix.c_str(), name);
  fig->touch();
  return site;
}

hcSite *hcSite::find(hcSegment *segment, char **bufp) {
  OpRecord rec("hcSite::find", segment, bufp && *bufp ? *bufp : nullptr);
  if (!segment || !bufp || !*bufp) return nullptr;
  std::string name = firstWord(*bufp);
  if (name.empty()) return nullptr;
  for (hcSite *s : items<hcSite>(segment->sites_))
    if (sameName(s, name.c_str())) return s;
  return nullptr;
}

hcSite *hcSite::resolve(hList *l) {
  OpRecord rec("hcSite::resolve", l);
  // Only a live site at the head of the list counts.
  return l && hcIsLiveObject(l->getData()) ? dynamic_cast<hcSite *>(static_cast<hcObject *>(l->getData())) : nullptr;
}

void hcSite::touch() { segment_->figure_->touch(); }

hMatrix hcSite::globalImpl() {
  segment_->figure_->updateFrames();
  return mul(segment_->global_, location_);
}

void hcSite::setGlobalImpl(hMatrix &M) {
  hcFigure *fig = segment_->figure_;
  fig->updateFrames();
  if (this == fig->effectiveRoot() || this == segment_->hangSite_) {
    // This site fixes where its segment is: move the whole connected part.
    hMatrix delta = mul(M, inverse(globalImpl()));
    fig->moveRigidly(segment_, delta);
  } else {
    location_ = mul(inverse(segment_->global_), M);
    touch();
  }
}

hcFigure *hcSite::getFigure() {
  OpRecord rec("hcSite::getFigure");
  return segment_->figure_;
}

hcSegment *hcSite::getSegment() {
  OpRecord rec("hcSite::getSegment");
  return segment_;
}

void hcSite::getGlobal(hMatrix &M) {
  OpRecord rec("hcSite::getGlobal", addr(&M));
  M = globalImpl();
}

void hcSite::setGlobal(hMatrix M) {
  OpRecord rec("hcSite::setGlobal", M);
  setGlobalImpl(M);
}

void hcSite::getLocation(hMatrix &M) {
  OpRecord rec("hcSite::getLocation", addr(&M));
  M = location_;
}

void hcSite::setLocation(hMatrix &M) {
  OpRecord rec("hcSite::setLocation", addr(&M));
  location_ = M;
  touch();
}

void hcSite::setPosition(hVector p) {
  OpRecord rec("hcSite::setPosition", p);
  for (int i = 0; i < 3; ++i) location_.m[i][3] = p.v[i];
  touch();
}

void hcSite::getPosition(hVector &p) {
  OpRecord rec("hcSite::getPosition", addr(&p));
  p = origin(location_);
}

void hcSite::setOrientation(hVector angles) {
  OpRecord rec("hcSite::setOrientation", angles);
  hMatrix r = fromXYZ(angles);
  for (int i = 0; i < 3; ++i)
    for (int k = 0; k < 3; ++k) location_.m[i][k] = r.m[i][k];
  touch();
}

void hcSite::getOrientation(hVector &angles) {
  OpRecord rec("hcSite::getOrientation", addr(&angles));
  angles = toXYZ(location_);
}

void hcSite::setGlobalPosition(hVector p) {
  OpRecord rec("hcSite::setGlobalPosition", p);
  hMatrix M = globalImpl();
  for (int i = 0; i < 3; ++i) M.m[i][3] = p.v[i];
  setGlobalImpl(M);
}

void hcSite::getGlobalPosition(hVector &p) {
  OpRecord rec("hcSite::getGlobalPosition", addr(&p));
  p = origin(globalImpl());
}

void hcSite::setGlobalOrientation(hVector angles) {
  OpRecord rec("hcSite::setGlobalOrientation", angles);
  hMatrix M = globalImpl();
  hMatrix r = fromXYZ(angles);
  for (int i = 0; i < 3; ++i)
    for (int k = 0; k < 3; ++k) M.m[i][k] = r.m[i][k];
  setGlobalImpl(M);
}

void hcSite::getGlobalOrientation(hVector &angles) {
  OpRecord rec("hcSite::getGlobalOrientation", addr(&angles));
  angles = toXYZ(globalImpl());
}

int hcSite::setName(const char *name) {
  OpRecord rec("hcSite::setName", name);
  if (emptyText(name)) return 0;
  for (hcSite *s : items<hcSite>(segment_->sites_))
    if (s != this && sameName(s, name)) return 0;
  std::string n = name;
  hcFigure *fig = segment_->figure_;
  std::string prefix = std::string(fig->getName() ? fig->getName() : "") +
                       "." + segment_->getName() + ".";
  setFullName(prefix.c_str(), n.c_str());
  return 1;
}

void hcSite::setDisplay(int on, int transient) {
  OpRecord rec("hcSite::setDisplay", on, transient);
  display_ = on;
  if (!transient) segment_->figure_->modified_ = 1;
}

int hcSite::getDisplay() {
  OpRecord rec("hcSite::getDisplay");
  return display_;
}

int hcSite::getNumJoints() {
  OpRecord rec("hcSite::getNumJoints");
  return hList::count(joints_);
}

hList *hcSite::getJoints() {
  OpRecord rec("hcSite::getJoints");
  return handedJoints_.answer(items<void>(joints_));
}

hcJoint *hcSite::getRootJoint() {
  OpRecord rec("hcSite::getRootJoint");
  segment_->figure_->updateFrames();
  return segment_->hangSite_ == this ? segment_->parentJoint_ : nullptr;
}

int hcSite::searchProperty(const char *name, hcValue *value) {
  OpRecord rec("hcSite::searchProperty", name, value);
  if (!name || !value) return 0;
  if (hcObject::searchProperty(name, value)) return 1;
  if (std::strcmp(name, "segment") == 0) {
    value->set(segment_);
  } else if (std::strcmp(name, "figure") == 0) {
    value->set(segment_->figure_);
  } else {
    return 0;
  }
  return 1;
}

sgSite *hcSite::getSG() {
  OpRecord rec("hcSite::getSG");
  return nullptr;
}

hcSitePhys *hcSite::getPhysical() {
  OpRecord rec("hcSite::getPhysical");
  return nullptr;
}
