// hcHuman: life cycle, the figure, landmarks, scales, postures and the
// operations on the figure as a whole.
#include <cmath>
#include <vector>

#include "host/human.h"

#include "host/anthro.h"
#include "host/skin.h"
#include "figure/figure_detail.h"
#include "human/human_body.h"

using namespace hcfigure_detail;

// ---------------------------------------------------------------------------
// The human's watch on its figure.  When the figure goes, the human forgets
// it; when the watch itself goes (a script may delete observers), the human
// forgets the watch, and with it the figure (figure()).

class hcHuman::FigureWatch : public hcObserver {
 public:
  FigureWatch(hcHuman *human, hcFigure *figure)
      : hcObserver("hcHuman", "hcObserver", figure, hcObserver::DESTROY), human_(human) {}

  ~FigureWatch() override {
    if (human_) human_->watch_ = nullptr;
  }

  void update(int protocol) override {
    if (protocol != hcObserver::DESTROY || !human_) return;
    human_->figure_ = nullptr;
    human_->ownsFigure_ = false;
    // The subject skips observers that are gone by the time it reaches them.
    delete this;
  }

 private:
  hcHuman *human_;
};

namespace {

// Live humans, oldest first.
std::vector<hcHuman *> &liveHumans() {
  static auto *live = new std::vector<hcHuman *>;
  return *live;
}

}  // namespace

hcHuman *hcbody::humanOf(hcFigure *figure) {
  if (!figure) return nullptr;
  auto &live = liveHumans();
  for (auto it = live.rbegin(); it != live.rend(); ++it)
    if ((*it)->getFigure() == figure) return *it;
  return nullptr;
}

hcHuman::hcHuman(hcFigure *figure, bool ownsFigure) : figure_(figure), ownsFigure_(ownsFigure) {
  for (hVector &s : anthro_) s = hVector(1, 1, 1);
  hccore::Quiet quiet;
  watch_ = new FigureWatch(this, figure);
  liveHumans().push_back(this);
}

hcHuman::~hcHuman() {
  hccore::Quiet quiet;
  std::erase(liveHumans(), this);
  delete skin_;
  delete scaler_;
  hcFigure *fig = figure();
  delete watch_;  // clears watch_
  if (ownsFigure_) hcFigure::destroy(fig);
}

hcFigure *hcHuman::figure() {
  // A watch that no longer watches this figure (a script may rebind or
  // delete observers) cannot vouch for it any more.
  if (figure_ && (!watch_ || watch_->getSubject() != figure_)) {
    figure_ = nullptr;
    ownsFigure_ = false;
  }
  return figure_;
}

hcHuman *hcHuman::readFromFile(const char *filename, const char *newName) {
  OpRecord rec("hcHuman::readFromFile", filename, newName);
  hcFigure *figure = hcFigure::readFromFile(filename, newName);
  return figure ? new hcHuman(figure, true) : nullptr;
}

// An empty figure gets the standard adult; a figure that already has a
// human body's parts (a saved human read back, or one built by hand with the
// landmark names) is taken as it is; any other figure is refused untouched.
hcHuman *hcHuman::initHuman(hcFigure *figure, int *initOK) {
  OpRecord rec("hcHuman::initHuman", figure, initOK);
  bool ok = figure && (hcbody::looksHuman(figure) || hcbody::buildStandardAdult(figure));
  if (initOK) *initOK = ok ? 1 : 0;
  return ok ? new hcHuman(figure, false) : nullptr;
}

int hcHuman::destroy(hcHuman *human) {
  OpRecord rec("hcHuman::destroy", human);
  if (!human) return 0;
  delete human;
  return 1;
}

hcFigure *hcHuman::getFigure() {
  OpRecord rec("hcHuman::getFigure");
  return figure();
}

// ---------------------------------------------------------------------------
// Anthropometric scaling: the human's scaler (host/anthro.h), which it owns,
// and its own per-part scales.

hcAnthroScale *hcHuman::initAnthroscale(const char *databasename) {
  OpRecord rec("hcHuman::initAnthroscale", databasename);
  hcAnthroScale *made = hcAnthroScale::create(this, databasename);
  if (!made) return nullptr;  // an unknown database keeps the scaler there is
  delete scaler_;
  scaler_ = made;
  return made;
}

hcAnthroScale *hcHuman::getAnthroscale() {
  OpRecord rec("hcHuman::getAnthroscale");
  return scaler_;
}

bool hcHuman::copyAnthroscale(hcHuman *source) {
  OpRecord rec("hcHuman::copyAnthroscale", source);
  if (!source) return false;
  if (scaler_ && !scaler_->copyAnthroscale(source)) return false;
  for (int p = 0; p <= eyePart; ++p) anthro_[p] = source->anthro_[p];
  return true;
}

int hcHuman::destroyAnthroscale() {
  OpRecord rec("hcHuman::destroyAnthroscale");
  if (!scaler_) return 0;
  delete scaler_;
  scaler_ = nullptr;
  return 1;
}

int hcHuman::setAnthroScale(int part, hVector dim) {
  OpRecord rec("hcHuman::setAnthroScale", part, dim);
  if (part < headPart || part > eyePart) return 0;
  for (float f : dim.v)
    if (!(f > 0)) return 0;
  anthro_[part] = dim;
  return 1;
}

int hcHuman::getAnthroScale(int part, hVector &dim) {
  OpRecord rec("hcHuman::getAnthroScale", part, addr(&dim));
  if (part < headPart || part > eyePart) return 0;
  dim = anthro_[part];
  return 1;
}

// ---------------------------------------------------------------------------
// Landmarks: the figure's sites and joints named like the enumerators.

namespace {

const auto &kSiteNames = hcbody::kLandmarkSites;
const auto &kJointNames = hcbody::kLandmarkJoints;

template <class T, std::size_t N>
constexpr bool inTable(int i, T (&)[N]) {
  return i >= 0 && i < static_cast<int>(N);
}

}  // namespace

hcSite *hcHuman::getLandmarkSite(int site) {
  OpRecord rec("hcHuman::getLandmarkSite", site);
  hcFigure *fig = figure();
  if (!fig || !inTable(site, kSiteNames)) return nullptr;
  hcSite *found = fig->findSite(kSiteNames[site]);
  if (found && site == centerOfMass) {
    // The centre-of-mass site is moved to the centre of mass when asked for.
    hccore::Quiet quiet;
    hVector com;
    fig->calcCOM(com, 0);
    found->setGlobalPosition(com);
  }
  return found;
}

hcJoint *hcHuman::getLandmarkJoint(int joint) {
  OpRecord rec("hcHuman::getLandmarkJoint", joint);
  return landmarkJoint(joint);
}

hcJoint *hcHuman::landmarkJoint(int joint) {
  hcFigure *fig = figure();
  if (!fig || !inTable(joint, kJointNames)) return nullptr;
  hccore::Quiet quiet;
  return fig->findJoint(kJointNames[joint]);
}

hcJoint *hcHuman::shoulder(int side) {
  if (side != leftSide && side != rightSide) return nullptr;
  return landmarkJoint(side == leftSide ? leftShoulder : rightShoulder);
}

bool hcHuman::jointTriple(hcJoint *j, int (hcJoint::*get)(float *, int), hVector &out) {
  if (!j) return false;
  hccore::Quiet quiet;
  std::vector<float> values(j->getNDOFs() + 1);
  (j->*get)(values.data(), 1);
  hVector v;
  for (int k = 0; k < 3 && k < j->getNDOFs(); ++k) v.v[k] = values[k];
  out = v;
  return true;
}

// ---------------------------------------------------------------------------
// Shoulders: the shoulder landmark joints.

int hcHuman::setShoulderAngles(int side, hVector angles) {
  OpRecord rec("hcHuman::setShoulderAngles", side, angles);
  hcJoint *j = shoulder(side);
  if (!j) return 0;
  std::vector<float> values(j->getNDOFs() + 1);
  j->getAngles(values.data(), 1);
  for (int k = 0; k < 3 && k < j->getNDOFs(); ++k) values[k] = angles.v[k];
  return j->setAngles(values.data(), 1);
}

int hcHuman::getShoulderAngles(int side, hVector &angles) {
  OpRecord rec("hcHuman::getShoulderAngles", side, addr(&angles));
  return jointTriple(shoulder(side), &hcJoint::getAngles, angles) ? 1 : 0;
}

int hcHuman::getShoulderUpperLimits(int side, hVector &angles) {
  OpRecord rec("hcHuman::getShoulderUpperLimits", side, addr(&angles));
  return jointTriple(shoulder(side), &hcJoint::getUpperLimits, angles) ? 1 : 0;
}

int hcHuman::getShoulderLowerLimits(int side, hVector &angles) {
  OpRecord rec("hcHuman::getShoulderLowerLimits", side, addr(&angles));
  return jointTriple(shoulder(side), &hcJoint::getLowerLimits, angles) ? 1 : 0;
}

hVector *hcHuman::synchShoulderAngles(int side) {
  OpRecord rec("hcHuman::synchShoulderAngles", side);
  hcJoint *j = shoulder(side);
  if (!jointTriple(j, &hcJoint::getAngles, shoulderSynch_[side == rightSide])) return nullptr;
  return &shoulderSynch_[side == rightSide];
}

int hcHuman::isShoulderValid(int side) {
  OpRecord rec("hcHuman::isShoulderValid", side);
  hcJoint *j = shoulder(side);
  hVector a, lo, hi;
  if (!jointTriple(j, &hcJoint::getAngles, a)) return 0;
  jointTriple(j, &hcJoint::getLowerLimits, lo);
  jointTriple(j, &hcJoint::getUpperLimits, hi);
  for (int k = 0; k < 3; ++k)
    if (a.v[k] < lo.v[k] || a.v[k] > hi.v[k]) return 0;
  return 1;
}

float hcHuman::queryPosture(int type, int side, int offsetType) {
  OpRecord rec("hcHuman::queryPosture", type, side, offsetType);
  if (side != leftSide && side != rightSide) return 0;
  if (offsetType != offsetGlobal && offsetType != offsetLocal) return 0;
  int joint = -1, dof = 0;
  switch (type) {
    case shoulderFlexion:
    case shoulderAbduction:
    case shoulderTransverseAbduction:
      joint = leftShoulder;
      dof = type - shoulderFlexion;
      break;
    case elbowFlexion:
      joint = leftElbow;
      break;
    case kneeFlexion:
      joint = leftKnee;
      break;
    default:
      return 0;
  }
  hcJoint *j = landmarkJoint(joint + side);  // each right joint follows its left one
  if (!j) return 0;
  hccore::Quiet quiet;
  if (dof >= j->getNDOFs()) return 0;
  std::vector<float> values(j->getNDOFs());
  j->getAngles(values.data(), 0);
  return values[dof];
}

// ---------------------------------------------------------------------------
// The figure as a whole.

int hcHuman::bodyNeutral() {
  OpRecord rec("hcHuman::bodyNeutral");
  hcFigure *fig = figure();
  if (!fig) return 0;
  fig->reset();
  torsoAngles_ = hVector();
  return 1;
}

int hcHuman::setLocation(hMatrix location) {
  OpRecord rec("hcHuman::setLocation", location);
  hcFigure *fig = figure();
  return fig ? fig->setLocation(location) : 0;
}

int hcHuman::poseFromFile(const char *posturename, const char *filename) {
  OpRecord rec("hcHuman::poseFromFile", posturename, filename);
  hcFigure *fig = figure();
  if (!fig || !filename || !fig->poseFromFile(posturename, filename)) return 0;
  if (posturename && *posturename) postures_[posturename] = filename;
  return 1;
}

int hcHuman::poseBody(const char *postureName) {
  OpRecord rec("hcHuman::poseBody", postureName);
  hcFigure *fig = figure();
  if (!fig || !postureName) return 0;
  auto it = postures_.find(postureName);
  if (it == postures_.end()) return 0;
  return fig->poseFromFile(postureName, it->second.c_str());
}

int hcHuman::rotateBy(float theta, hVector &axis, int globalP) {
  OpRecord rec("hcHuman::rotateBy", theta, addr(&axis), globalP);
  hcFigure *fig = figure();
  hVector unit = axis;
  unit.normalize();
  if (!fig || unit.mag() == 0) return 0;
  hMatrix location;
  fig->getLocation(location);
  hMatrix turn = rotation(unit, theta);
  hMatrix turned = globalP ? mul(turn, location) : mul(location, turn);
  for (int r = 0; r < 3; ++r) turned.m[r][3] = location.m[r][3];
  return fig->setLocation(turned);
}

int hcHuman::createWholeBodyForceTreeFID() {
  OpRecord rec("hcHuman::createWholeBodyForceTreeFID");
  return 0;  // force trees are not modelled
}

int hcHuman::computeWeightDistribFID() {
  OpRecord rec("hcHuman::computeWeightDistribFID");
  return 0;
}

int hcHuman::buildSmoothSkin() {
  OpRecord rec("hcHuman::buildSmoothSkin");
  delete skin_;
  skin_ = hcSmoothSkinImpl::build(this);
  return skin_ ? 1 : 0;
}

hcSmoothSkin *hcHuman::getSmoothSkin() {
  OpRecord rec("hcHuman::getSmoothSkin");
  return skin_;
}
