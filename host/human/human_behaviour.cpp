// hcHuman: the behaviour controllers.  Settings are stored and answered back.
// Reaching, stepping and looking move the limb concerned by solving one
// constraint over its own joints; hands take the shapes they know.
#include <algorithm>
#include <cmath>
#include <cstring>

#include "host/constraint.h"
#include "host/human.h"
#include "figure/figure_detail.h"
#include "human/human_body.h"

using namespace hcfigure_detail;

namespace {

bool between(int v, int lo, int hi) { return v >= lo && v <= hi; }
bool validSide(int side) { return side == hcHuman::leftSide || side == hcHuman::rightSide; }

bool finite(const hMatrix &m) {
  for (const auto &row : m.m)
    for (float x : row)
      if (!std::isfinite(x)) return false;
  return true;
}

}  // namespace

int hcHuman::reach(hcSite *effector, hcJoint *start, const hMatrix &goal, bool aim, float &potential) {
  if (!effector || !start || !finite(goal)) return 0;
  hccore::Quiet quiet;
  hcConstraint *c = hcConstraint::create("hcHuman goal");
  if (!c) return 0;
  hMatrix g = goal;
  c->setEndEffectorSite(effector);
  c->setGoalTransform(g);
  if (aim) {
    hVector sight(0, 0, 1);
    c->setAimDirection(sight);
    c->setObjectiveTypes(hcConstraint::C_AIM, hcConstraint::C_NONE);
  }
  int status = start && c->setStartJoint(start) ? hcConstraint::evaluate(c) : -1;
  if (status == 0 || status == 1) potential = c->getPotential();
  hcConstraint::destroy(c);
  return status == 1 ? 1 : 0;
}

int hcHuman::readGoal(const Goal &g, hMatrix &out) {
  if (!g.set) return 0;
  out = g.m;
  return 1;
}

// ---------------------------------------------------------------------------
// Arms and hands.

// The end site is the one given, else the forearm's end or the hand's
// landmark; the chain starts at the shoulder or at the waist.
int hcHuman::moveArm(int side, int sjoint, int endtype, hcSite *endSite, hMatrix goal) {
  OpRecord rec("hcHuman::moveArm", side, sjoint, endtype, endSite, goal);
  hcFigure *fig = figure();
  if (!fig || !validSide(side) || !between(sjoint, armShoulder, armWaist)) return 0;
  hcSite *end = endSite;
  if (!end && endtype == armForearm) end = fig->findSite(hcbody::sideName(side, "ForearmEnd"));
  if (!end && endtype == armPalm) end = fig->findSite(hcbody::sideName(side, "Hand"));
  hcJoint *start = sjoint == armWaist ? fig->findJoint("lumbar") : shoulder(side);
  return reach(end, start, goal, false, armPotential_[side]);
}

float hcHuman::getMoveArmPotential(int side) {
  OpRecord rec("hcHuman::getMoveArmPotential", side);
  return validSide(side) ? armPotential_[side] : 0;
}

hcConstraint *hcHuman::setArmControl(int side, int type, int sjoint, hcSegment *ref, hcSite *goal) {
  OpRecord rec("hcHuman::setArmControl", side, type, sjoint, ref, goal);
  if (validSide(side) && between(type, armRelease, armSymmetry) && between(sjoint, armShoulder, armWaist))
    arm_[side] = Arm{type, sjoint, ref, goal};
  return nullptr;
}

int hcHuman::getArmControlType(int side) {
  OpRecord rec("hcHuman::getArmControlType", side);
  return validSide(side) ? arm_[side].type : -1;
}

int hcHuman::getArmControlBase(int side) {
  OpRecord rec("hcHuman::getArmControlBase", side);
  return validSide(side) ? arm_[side].base : -1;
}

hcSegment *hcHuman::getArmControlRef(int side) {
  OpRecord rec("hcHuman::getArmControlRef", side);
  return validSide(side) ? arm_[side].ref : nullptr;
}

hcSite *hcHuman::getArmControlGoal(int side) {
  OpRecord rec("hcHuman::getArmControlGoal", side);
  return validSide(side) ? arm_[side].goal : nullptr;
}

// Hand shapes: "fist" curls the fingers fully, "open" straightens them;
// interpolation (percent, 0 to 100) moves that share of the way there.
int hcHuman::shapeHand(int side, const char *handShape, float interpolation) {
  OpRecord rec("hcHuman::shapeHand", side, handShape, interpolation);
  hcFigure *fig = figure();
  if (!fig || !validSide(side) || !handShape || !std::isfinite(interpolation)) return 0;
  bool fist = std::strcmp(handShape, "fist") == 0;
  if (!fist && std::strcmp(handShape, "open") != 0) return 0;
  hcJoint *knuckle = fig->findJoint(hcbody::sideName(side, "Knuckle"));
  if (!knuckle || knuckle->getNDOFs() != 1) return 0;
  float value, lower, upper;
  knuckle->getAngles(&value, 1);
  knuckle->getLowerLimits(&lower, 1);
  knuckle->getUpperLimits(&upper, 1);
  const float share = std::clamp(interpolation, 0.0f, 100.0f) / 100.0f;
  value += ((fist ? upper : lower) - value) * share;
  knuckle->setAngles(&value, 1);
  return 1;
}

// ---------------------------------------------------------------------------
// Pelvis.

int hcHuman::rotatePelvis(hMatrix goal) {
  OpRecord rec("hcHuman::rotatePelvis", goal);
  return 0;
}

float hcHuman::getRotatePelvisPotential() {
  OpRecord rec("hcHuman::getRotatePelvisPotential");
  return 0;
}

int hcHuman::setPelvisControl(int type) {
  OpRecord rec("hcHuman::setPelvisControl", type);
  if (!between(type, pelvisHold, pelvisTorso)) return 0;
  pelvisType_ = type;
  return 1;
}

int hcHuman::getPelvisControlType() {
  OpRecord rec("hcHuman::getPelvisControlType");
  return pelvisType_;
}

// ---------------------------------------------------------------------------
// Torso.

int hcHuman::bendTorso(int type, hVector angles, int low, int high, int initiator, int resistor,
                       float resistance, int interp) {
  OpRecord rec("hcHuman::bendTorso", type, angles, low, high, initiator, resistor, resistance, interp);
  if (!between(type, torsoNeck, torsoInput)) return 0;
  torsoParams_ = type;
  torsoAngles_ = angles;
  spine_ = Spine{low, high, initiator, resistor, resistance, interp};
  return 1;
}

int hcHuman::getTorsoParams() {
  OpRecord rec("hcHuman::getTorsoParams");
  return torsoParams_;
}

int hcHuman::getTorsoAngles(hVector &v) {
  OpRecord rec("hcHuman::getTorsoAngles", addr(&v));
  v = torsoAngles_;
  return 1;
}

int hcHuman::getTorsoUpperLimits(hVector &angles) {
  OpRecord rec("hcHuman::getTorsoUpperLimits", addr(&angles));
  return 0;  // the spine has no limits without the body model
}

int hcHuman::getTorsoLowerLimits(hVector &angles) {
  OpRecord rec("hcHuman::getTorsoLowerLimits", addr(&angles));
  return 0;
}

int hcHuman::getTorsoLow() {
  OpRecord rec("hcHuman::getTorsoLow");
  return spine_.low;
}

int hcHuman::getTorsoHigh() {
  OpRecord rec("hcHuman::getTorsoHigh");
  return spine_.high;
}

int hcHuman::getTorsoInitiator() {
  OpRecord rec("hcHuman::getTorsoInitiator");
  return spine_.initiator;
}

int hcHuman::getTorsoResistor() {
  OpRecord rec("hcHuman::getTorsoResistor");
  return spine_.resistor;
}

float hcHuman::getTorsoResistance() {
  OpRecord rec("hcHuman::getTorsoResistance");
  return spine_.resistance;
}

int hcHuman::getTorsoInterp() {
  OpRecord rec("hcHuman::getTorsoInterp");
  return spine_.interp;
}

int hcHuman::setTorsoControl(int type) {
  OpRecord rec("hcHuman::setTorsoControl", type);
  if (!between(type, torsoVertical, torsoHold)) return 0;
  torsoType_ = type;
  return 1;
}

int hcHuman::setTorsoSpineParams(int low, int high, int initiator, int resistor, float resistance,
                                 int interp) {
  OpRecord rec("hcHuman::setTorsoSpineParams", low, high, initiator, resistor, resistance, interp);
  spine_ = Spine{low, high, initiator, resistor, resistance, interp};
  return 1;
}

int hcHuman::getTorsoControlType() {
  OpRecord rec("hcHuman::getTorsoControlType");
  return torsoType_;
}

int hcHuman::setTorsoCentered(int on) {
  OpRecord rec("hcHuman::setTorsoCentered", on);
  torsoCentered_ = on ? 1 : 0;
  return 1;
}

int hcHuman::getTorsoCentered() {
  OpRecord rec("hcHuman::getTorsoCentered");
  return torsoCentered_;
}

void hcHuman::updateTorso() { OpRecord rec("hcHuman::updateTorso"); }

void hcHuman::synchTorsoAngles() { OpRecord rec("hcHuman::synchTorsoAngles"); }

// ---------------------------------------------------------------------------
// Balance.

int hcHuman::moveBalance(hMatrix goal) {
  OpRecord rec("hcHuman::moveBalance", goal);
  balanceGoal_ = Goal{true, goal};
  return 0;
}

int hcHuman::getBalanceGoal(hMatrix &goal) {
  OpRecord rec("hcHuman::getBalanceGoal", addr(&goal));
  return readGoal(balanceGoal_, goal);
}

int hcHuman::setBalanceControl(int type, float interpx, float interpz) {
  OpRecord rec("hcHuman::setBalanceControl", type, interpx, interpz);
  if (!between(type, balanceFeet, balanceUpperBody)) return 0;
  balanceType_ = type;
  interpX_ = interpx;
  interpZ_ = interpz;
  return 1;
}

int hcHuman::getBalanceControlType() {
  OpRecord rec("hcHuman::getBalanceControlType");
  return balanceType_;
}

float hcHuman::getBalanceControlInterpX() {
  OpRecord rec("hcHuman::getBalanceControlInterpX");
  return interpX_;
}

float hcHuman::getBalanceControlInterpZ() {
  OpRecord rec("hcHuman::getBalanceControlInterpZ");
  return interpZ_;
}

float hcHuman::getMoveBalancePotential() {
  OpRecord rec("hcHuman::getMoveBalancePotential");
  return 0;
}

// ---------------------------------------------------------------------------
// Feet, heels and knees.

// Feet and heels: the heel site goes to the goal, moved by the hip, knee
// and ankle of its leg.
int hcHuman::moveFoot(int side, hMatrix goalTransform) {
  OpRecord rec("hcHuman::moveFoot", side, goalTransform);
  hcFigure *fig = figure();
  if (!fig || !validSide(side)) return 0;
  return reach(fig->findSite(hcbody::sideName(side, "Heel")), fig->findJoint(hcbody::sideName(side, "HipJoint")),
               goalTransform, false, footPotential_[side]);
}

float hcHuman::getMoveFootPotential(int side) {
  OpRecord rec("hcHuman::getMoveFootPotential", side);
  return validSide(side) ? footPotential_[side] : 0;
}

hcConstraint *hcHuman::setFootControl(int side, int type, hcSegment *ref) {
  OpRecord rec("hcHuman::setFootControl", side, type, ref);
  if (validSide(side) && between(type, footRelease, footSymmetry)) foot_[side] = Foot{type, ref};
  return nullptr;
}

int hcHuman::getFootControlType(int side) {
  OpRecord rec("hcHuman::getFootControlType", side);
  return validSide(side) ? foot_[side].type : -1;
}

hcSegment *hcHuman::getFootControlRef(int side) {
  OpRecord rec("hcHuman::getFootControlRef", side);
  return validSide(side) ? foot_[side].ref : nullptr;
}

int hcHuman::findFootBalanceInterp(float *x, float *z) {
  OpRecord rec("hcHuman::findFootBalanceInterp", x, z);
  return 0;  // needs the feet's support polygon
}

int hcHuman::moveHeel(int side, hMatrix goalTransform) {
  OpRecord rec("hcHuman::moveHeel", side, goalTransform);
  hcFigure *fig = figure();
  if (!fig || !validSide(side)) return 0;
  return reach(fig->findSite(hcbody::sideName(side, "Heel")), fig->findJoint(hcbody::sideName(side, "HipJoint")),
               goalTransform, false, heelPotential_[side]);
}

float hcHuman::getMoveHeelPotential(int side) {
  OpRecord rec("hcHuman::getMoveHeelPotential", side);
  return validSide(side) ? heelPotential_[side] : 0;
}

int hcHuman::setKneeControl(int side, int type) {
  OpRecord rec("hcHuman::setKneeControl", side, type);
  if (!validSide(side) || !between(type, kneeRelease, kneeOverFoot)) return 0;
  knee_[side] = type;
  return 1;
}

int hcHuman::getKneeControlType(int side) {
  OpRecord rec("hcHuman::getKneeControlType", side);
  return validSide(side) ? knee_[side] : -1;
}

// ---------------------------------------------------------------------------
// Head, eyes and neck.

// The head turns on the neck until its line of sight points at the goal.
int hcHuman::moveHead(hMatrix goalTransform) {
  OpRecord rec("hcHuman::moveHead", goalTransform);
  headMove_ = Goal{true, goalTransform};
  hcFigure *fig = figure();
  if (!fig) return 0;
  return reach(fig->findSite("headSight"), fig->findJoint("neck"), goalTransform, true, headPotential_);
}

int hcHuman::getMoveHeadGoal(hMatrix &goal) {
  OpRecord rec("hcHuman::getMoveHeadGoal", addr(&goal));
  return readGoal(headMove_, goal);
}

float hcHuman::getMoveHeadPotential() {
  OpRecord rec("hcHuman::getMoveHeadPotential");
  return headPotential_;
}

int hcHuman::setHeadControl(int type, hMatrix *goalTransform, hcSite *site) {
  OpRecord rec("hcHuman::setHeadControl", type, goalTransform, site);
  if (!between(type, headRelease, headFollowEyes)) return 0;
  head_.type = type;
  head_.goal = goalTransform ? Goal{true, *goalTransform} : Goal{};
  head_.site = site;
  return 1;
}

int hcHuman::getHeadControlType() {
  OpRecord rec("hcHuman::getHeadControlType");
  return head_.type;
}

int hcHuman::getHeadControlGoal(hMatrix &goalTransform) {
  OpRecord rec("hcHuman::getHeadControlGoal", addr(&goalTransform));
  return readGoal(head_.goal, goalTransform);
}

hcSite *hcHuman::getHeadControlRef() {
  OpRecord rec("hcHuman::getHeadControlRef");
  return head_.site;
}

int hcHuman::getEyeFixation(hVector &eyeFixation) {
  OpRecord rec("hcHuman::getEyeFixation", addr(&eyeFixation));
  if (!eyes_.goal.set) return 0;
  eyeFixation = origin(eyes_.goal.m);
  return 1;
}

// Each eye turns in its socket to look at the goal; the potential is the
// two eyes' together.
int hcHuman::moveEyes(hMatrix goalTransform) {
  OpRecord rec("hcHuman::moveEyes", goalTransform);
  eyesMove_ = Goal{true, goalTransform};
  hcFigure *fig = figure();
  if (!fig) return 0;
  int met = 1;
  float total = 0;
  for (int side = leftSide; side <= rightSide; ++side) {
    float p = 0;
    met &= reach(fig->findSite(hcbody::sideName(side, "Eye")), fig->findJoint(hcbody::sideName(side, "EyeJoint")),
                 goalTransform, true, p);
    total += p;
  }
  eyesPotential_ = total;
  return met;
}

int hcHuman::getMoveEyesGoal(hMatrix &goal) {
  OpRecord rec("hcHuman::getMoveEyesGoal", addr(&goal));
  return readGoal(eyesMove_, goal);
}

float hcHuman::getMoveEyesPotential() {
  OpRecord rec("hcHuman::getMoveEyesPotential");
  return eyesPotential_;
}

int hcHuman::setEyesControl(int type, hMatrix *goalTransform, hcSite *site) {
  OpRecord rec("hcHuman::setEyesControl", type, goalTransform, site);
  if (!between(type, eyeRelease, eyeHeadTrack)) return 0;
  eyes_.type = type;
  eyes_.goal = goalTransform ? Goal{true, *goalTransform} : Goal{};
  eyes_.site = site;
  return 1;
}

int hcHuman::getEyesControlType() {
  OpRecord rec("hcHuman::getEyesControlType");
  return eyes_.type;
}

int hcHuman::getEyesControlGoal(hMatrix &goalTransform) {
  OpRecord rec("hcHuman::getEyesControlGoal", addr(&goalTransform));
  return readGoal(eyes_.goal, goalTransform);
}

hcSite *hcHuman::getEyesControlRef() {
  OpRecord rec("hcHuman::getEyesControlRef");
  return eyes_.site;
}

int hcHuman::setNeckCentered(int on) {
  OpRecord rec("hcHuman::setNeckCentered", on);
  neckCentered_ = on ? 1 : 0;
  return 1;
}

int hcHuman::getNeckCentered() {
  OpRecord rec("hcHuman::getNeckCentered");
  return neckCentered_;
}

// ---------------------------------------------------------------------------
// Root, stepping and support.

int hcHuman::getRootControlType() {
  OpRecord rec("hcHuman::getRootControlType");
  return rootType_;
}

void hcHuman::setRootControl(int type) {
  OpRecord rec("hcHuman::setRootControl", type);
  if (between(type, rootDisable, rootEnable)) rootType_ = type;
}

void hcHuman::setStepBalanceControl(int type) {
  OpRecord rec("hcHuman::setStepBalanceControl", type);
  if (between(type, stepBalanceNone, stepBalance)) stepBalanceType_ = type;
}

int hcHuman::getStepBalanceControlType() {
  OpRecord rec("hcHuman::getStepBalanceControlType");
  return stepBalanceType_;
}

void hcHuman::setStepPelvisControl(int type) {
  OpRecord rec("hcHuman::setStepPelvisControl", type);
  if (between(type, stepPelvisNone, stepPelvis)) stepPelvisType_ = type;
}

int hcHuman::getStepPelvisControlType() {
  OpRecord rec("hcHuman::getStepPelvisControlType");
  return stepPelvisType_;
}

int hcHuman::setSupport(int type) {
  OpRecord rec("hcHuman::setSupport", type);
  if (type != leftFoot && type != rightFoot && type != lowerTorso) return 0;
  support_ = type;
  return 1;
}
