// The stand-in host's articulated figures: forward kinematics, mass
// properties, registries and the figure file formats.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>
#include <unistd.h>

#include "host/figure.h"
#include "figure/figure_detail.h"

namespace {

constexpr float kHalfPi = 1.57079632679f;

hMatrix at(float x, float y, float z) {
  hMatrix m;
  m.m[0][3] = x;
  m.m[1][3] = y;
  m.m[2][3] = z;
  return m;
}

hVector globalPos(hcSite *s) {
  hVector p;
  s->getGlobalPosition(p);
  return p;
}

#define EXPECT_VEC(expr, X, Y, Z)         \
  do {                                    \
    hVector v_ = (expr);                  \
    EXPECT_NEAR(v_.v[0], (X), 1e-5);      \
    EXPECT_NEAR(v_.v[1], (Y), 1e-5);      \
    EXPECT_NEAR(v_.v[2], (Z), 1e-5);      \
  } while (0)

std::string tempPath(const char *tag) {
  return "/tmp/hft_" + std::to_string(getpid()) + "_" + tag;
}

void writeFile(const std::string &path, const std::string &text) {
  std::ofstream(path) << text;
}

std::string readFile(const std::string &path) {
  std::ifstream in(path);
  std::stringstream s;
  s << in.rdbuf();
  return s.str();
}

// A two-link arm: upper [base at 0, tip at x = 1] and lower [base at 0,
// tip at x = 1], the elbow joining upper.tip to lower.base with one
// rotation about z.  upper.base is the root.
class Arm : public ::testing::Test {
 protected:
  void SetUp() override {
    fig = hcFigure::createInMemory("arm");
    upper = hcSegment::createInMemory(fig, "upper");
    lower = hcSegment::createInMemory(fig, "lower");
    base = hcSite::create("base", upper);
    tip = hcSite::create("tip", upper);
    elbowSite = hcSite::create("base", lower);
    hand = hcSite::create("tip", lower);
    hMatrix one = at(1, 0, 0);
    tip->setLocation(one);
    hand->setLocation(one);
    elbow = hcJoint::createBetweenSites(tip, elbowSite);
    hVector z(0, 0, 1);
    ASSERT_TRUE(elbow);
    ASSERT_EQ(elbow->appendDOF(hcJoint::ROT, z), 1);
    ASSERT_EQ(fig->setRoot(base), 1);
  }
  void TearDown() override { EXPECT_EQ(hcFigure::destroy(fig), 1); }

  void bend(float radians) { elbow->setAngles(&radians, 1); }

  hcFigure *fig;
  hcSegment *upper, *lower;
  hcSite *base, *tip, *elbowSite, *hand;
  hcJoint *elbow;
};

// ---------------------------------------------------------------------------
// Forward kinematics.

TEST_F(Arm, StraightAndBentChain) {
  EXPECT_VEC(globalPos(hand), 2, 0, 0);
  bend(kHalfPi);
  EXPECT_VEC(globalPos(elbowSite), 1, 0, 0);
  EXPECT_VEC(globalPos(hand), 1, 1, 0);
  // The lower segment's frame turned with it: its x axis is now world y.
  hMatrix g;
  lower->getGlobal(g);
  EXPECT_NEAR(g.m[1][0], 1, 1e-5);
  EXPECT_EQ(elbow->isReverse(), 0);
  EXPECT_EQ(elbow->getRootSite(), tip);
  EXPECT_EQ(lower->getRootSite(), elbowSite);
  EXPECT_EQ(elbowSite->getRootJoint(), elbow);
}

TEST_F(Arm, DegreesWhenNotInternal) {
  float deg = 90;
  ASSERT_EQ(elbow->setAngles(&deg, 0), 1);
  EXPECT_VEC(globalPos(hand), 1, 1, 0);
  float rad = 0;
  elbow->getAngles(&rad, 1);
  EXPECT_NEAR(rad, kHalfPi, 1e-5);
}

TEST_F(Arm, FigureLocationMovesEverything) {
  bend(kHalfPi);
  hVector turn(0, 0, kHalfPi), shift(0, 0, 5);
  fig->setOrientation(turn);
  fig->setPosition(shift);
  // Upper now points along world y, lower (bent +90) along world -x.
  EXPECT_VEC(globalPos(tip), 0, 1, 5);
  EXPECT_VEC(globalPos(hand), -1, 1, 5);
  hVector back;
  fig->getOrientation(back);
  EXPECT_VEC(back, 0, 0, kHalfPi);
}

TEST_F(Arm, ReversedJointInvertsItsTransform) {
  // The same elbow defined from the lower segment to the upper one.
  hcJoint::destroy(elbow);
  elbow = hcJoint::createBetweenSites(elbowSite, tip);
  hVector z(0, 0, 1);
  elbow->appendDOF(hcJoint::ROT, z);
  bend(kHalfPi);
  EXPECT_EQ(elbow->isReverse(), 1);
  EXPECT_EQ(elbow->getRootSite(), tip);
  EXPECT_VEC(globalPos(hand), 1, -1, 0);
}

TEST_F(Arm, RootElsewhereHangsTheChainFromIt) {
  bend(kHalfPi);
  hMatrix loc = at(3, 0, 0);
  fig->setLocation(loc);
  ASSERT_EQ(fig->setRoot(hand), 1);
  EXPECT_VEC(globalPos(hand), 3, 0, 0);
  // Lower runs back along -x to the elbow, then the upper arm is turned
  // by -90 degrees relative to it.
  EXPECT_VEC(globalPos(elbowSite), 2, 0, 0);
  EXPECT_VEC(globalPos(base), 2, 1, 0);
  EXPECT_EQ(elbow->isReverse(), 1);
}

TEST_F(Arm, TranslationAndDisplacement) {
  elbow->clearDOFs();
  hVector y(0, 2, 0);  // normalised on the way in
  ASSERT_EQ(elbow->appendDOF(hcJoint::TRANS, y), 1);
  hVector axis;
  elbow->getDOFAxis(0, axis);
  EXPECT_VEC(axis, 0, 1, 0);
  bend(0.5f);
  EXPECT_VEC(globalPos(hand), 2, 0.5f, 0);
  hMatrix d = at(0, 0, 1), i;
  ASSERT_EQ(elbow->setDisplacement(d, i), 1);
  EXPECT_VEC(globalPos(hand), 2, 0.5f, 1);
}

TEST_F(Arm, SettingGlobalFramesOfSites) {
  bend(kHalfPi);
  // A free site changes its own local location.
  hVector p(1, 1, 1);
  hand->setGlobalPosition(p);
  EXPECT_VEC(globalPos(hand), 1, 1, 1);
  hVector local;
  hand->getPosition(local);
  EXPECT_VEC(local, 1, 0, 1);
  // The site that places its segment moves the whole figure instead.
  hVector q(0, 0, 2);
  elbowSite->setGlobalPosition(q);
  EXPECT_VEC(globalPos(elbowSite), 0, 0, 2);
  EXPECT_VEC(globalPos(base), -1, 0, 2);
  hVector loc;
  fig->getPosition(loc);
  EXPECT_VEC(loc, -1, 0, 2);
}

TEST_F(Arm, SegmentSetGlobalMovesTheConnectedPart) {
  hMatrix target = at(0, 4, 0);
  lower->setGlobal(target);
  hMatrix g;
  lower->getGlobal(g);
  EXPECT_VEC(hcfigure_detail::origin(g), 0, 4, 0);
  EXPECT_NEAR(g.m[0][0], 1, 1e-6);
  EXPECT_VEC(globalPos(base), -1, 4, 0);
}

// ---------------------------------------------------------------------------
// Limits and values.

TEST_F(Arm, LimitsAndClamping) {
  float lo, hi;
  elbow->getLowerLimits(&lo, 1);
  elbow->getUpperLimits(&hi, 1);
  EXPECT_NEAR(lo, -3.14159f, 1e-4);
  EXPECT_NEAR(hi, 3.14159f, 1e-4);
  float up = 1.0f;
  elbow->setUpperLimits(&up);
  bend(2.0f);
  EXPECT_EQ(elbow->clampToLimits(), 1);
  EXPECT_EQ(elbow->clampToLimits(), 0);
  float v;
  elbow->getAngles(&v, 1);
  EXPECT_FLOAT_EQ(v, 1.0f);
  EXPECT_EQ(elbow->getDOFType(0), hcJoint::ROT);
  EXPECT_EQ(elbow->getDOFType(1), hcJoint::NONE);
  EXPECT_EQ(elbow->getDOFType(-1), hcJoint::NONE);
  hVector a;
  EXPECT_EQ(elbow->getDOFAxis(3, a), 0);
  hVector zero;
  EXPECT_EQ(elbow->appendDOF(hcJoint::ROT, zero), 0);
  EXPECT_EQ(elbow->appendDOF(7, a), 0);
  EXPECT_EQ(elbow->getNDOFs(), 1);
}

TEST_F(Arm, DofsComposeInTheirOwnOrder) {
  // The second axis is taken in the frame the first DOF has turned.
  hVector y(0, 1, 0);
  elbow->appendDOF(hcJoint::ROT, y);
  float angles[2] = {kHalfPi, kHalfPi};
  elbow->setAngles(angles, 1);
  EXPECT_VEC(globalPos(hand), 1, 0, -1);
}

TEST_F(Arm, SiteOrientationsRoundTrip) {
  hVector a(0.1f, 0.2f, 0.3f), b;
  hand->setOrientation(a);
  hand->getOrientation(b);
  EXPECT_VEC(b, 0.1f, 0.2f, 0.3f);
  bend(0.4f);
  hVector g(-0.3f, 0.5f, 1.0f);
  hand->setGlobalOrientation(g);
  hand->getGlobalOrientation(b);
  EXPECT_VEC(b, -0.3f, 0.5f, 1.0f);
  EXPECT_VEC(globalPos(hand), 1 + std::cos(0.4f), std::sin(0.4f), 0);
  hMatrix frame;
  lower->setCoordGlobal(hVector(1, 0, 0), frame);
  EXPECT_VEC(hcfigure_detail::origin(frame), 1 + std::cos(0.4f), std::sin(0.4f),
             0);
}

// ---------------------------------------------------------------------------
// Mass properties.

TEST_F(Arm, BoxMassAndCentreOfMass) {
  EXPECT_NEAR(upper->getVolume(), 0.001f, 1e-7);
  EXPECT_NEAR(upper->getMass(), 1.0f, 1e-5);
  float inertia[9];
  upper->getInertiaMatrix(inertia);
  EXPECT_NEAR(inertia[0], 0.01f / 6, 1e-7);  // m (b^2 + c^2) / 12
  EXPECT_NEAR(inertia[1], 0, 1e-9);
  // Two equal boxes centred at (0,0,0) and (1,0,0): the centre is halfway.
  hVector com;
  fig->getCOM(com);
  EXPECT_VEC(com, 0.5f, 0, 0);
  // A heavier lower box pulls it towards itself; density follows the mass.
  lower->setMass(3);
  EXPECT_NEAR(lower->getDensity(), 3000, 1e-2);
  EXPECT_EQ(lower->getMassFlag(), 1);
  fig->calcCOM(com);
  EXPECT_VEC(com, 0.75f, 0, 0);
  // Scaling keeps an explicit mass but changes the density.
  hVector twice(2, 2, 2);
  lower->applyScale(twice);
  EXPECT_NEAR(lower->getVolume(), 0.008f, 1e-6);
  EXPECT_NEAR(lower->getMass(), 3, 1e-5);
}

TEST_F(Arm, OffCentreGeometry) {
  hMatrix shift = at(0.5f, 0, 0);
  upper->transformGeometry(shift);
  hVector c;
  upper->getCenterOfMass(c);
  EXPECT_VEC(c, 0.5f, 0, 0);
  hVector lo, hi;
  ASSERT_EQ(upper->getBoundingBox(lo, hi), 1);
  EXPECT_VEC(lo, 0.45f, -0.05f, -0.05f);
  hVector probe(2, 0, 0);
  EXPECT_EQ(lower->getClosestNode(probe) % 2, 1);  // a node on the +x side
  float d = -1, dir[3];
  ASSERT_EQ(upper->getMinDistance(lower, &d, dir), 1);
  EXPECT_NEAR(d, 0.4f, 1e-5);
  EXPECT_NEAR(dir[0], 1, 1e-5);
  EXPECT_EQ(upper->getMinDistance(lower, nullptr, dir), 0);
  hMatrix m;
  EXPECT_EQ(upper->getNodeGlobal(8, m), 0);
  EXPECT_EQ(upper->getNodeGlobal(7, m), 1);
  EXPECT_NEAR(m.m[0][3], 0.55f, 1e-5);
}

TEST_F(Arm, InertiaOfScaledTurnedAndShiftedBoxes) {
  hVector s(1, 2, 3);
  upper->scaleGeometry(s);  // 0.1 x 0.2 x 0.3, mass 6
  float I[9];
  upper->getInertiaMatrix(I);
  EXPECT_NEAR(I[0], 0.065f, 1e-5);
  EXPECT_NEAR(I[4], 0.05f, 1e-5);
  EXPECT_NEAR(I[8], 0.025f, 1e-5);
  // Turned a quarter about z and moved away: x and y swap, and the
  // inertia stays about the centre of mass.
  hMatrix m = at(3, -2, 1);
  m.m[0][0] = m.m[1][1] = 0;
  m.m[0][1] = -1;
  m.m[1][0] = 1;
  upper->transformGeometry(m);
  upper->getInertiaMatrix(I);
  EXPECT_NEAR(I[0], 0.05f, 1e-4);
  EXPECT_NEAR(I[4], 0.065f, 1e-4);
  EXPECT_NEAR(I[1], 0, 1e-4);
  EXPECT_NEAR(upper->getMass(), 6, 1e-4);
  hVector c;
  upper->getCenterOfMass(c);
  EXPECT_VEC(c, 3, -2, 1);
}

TEST_F(Arm, MassFollowsDensityAfterOverride) {
  lower->setMass(2);
  hVector twice(2, 1, 1);
  lower->scaleGeometry(twice);
  EXPECT_NEAR(lower->getMass(), 2, 1e-5);
  EXPECT_EQ(lower->updatePhysical(1), 1);
  EXPECT_EQ(lower->getMassFlag(), 0);
  lower->scaleGeometry(twice);
  EXPECT_NEAR(lower->getMass(), 4, 1e-4);
  lower->setDensity(500);
  EXPECT_EQ(lower->getDensityFlag(), 1);
  EXPECT_NEAR(lower->getMass(), 2, 1e-4);
  lower->setMass(-1);  // refused
  EXPECT_NEAR(lower->getMass(), 2, 1e-4);
}

TEST_F(Arm, BoxesInOtherFrames) {
  hVector lo, hi;
  hMatrix ref = at(1, 0, 0);
  ASSERT_EQ(lower->getBoundingBox(lo, hi, 1, 0, &ref), 1);
  EXPECT_VEC(lo, -0.05f, -0.05f, -0.05f);
  // extend grows the box already held.
  ASSERT_EQ(upper->getBoundingBox(lo, hi, 1, 1), 1);
  EXPECT_VEC(lo, -0.05f, -0.05f, -0.05f);
  EXPECT_VEC(hi, 0.05f, 0.05f, 0.05f);
  ASSERT_EQ(lower->getBoundingBox(lo, hi, 1, 1), 1);
  EXPECT_VEC(hi, 1.05f, 0.05f, 0.05f);
  // The figure's local box ignores the figure location.
  hVector far(0, 0, 10);
  fig->setPosition(far);
  ASSERT_EQ(fig->getBoundingBox(lo, hi, 0), 1);
  EXPECT_VEC(lo, -0.05f, -0.05f, -0.05f);
  ASSERT_EQ(fig->getBoundingBox(lo, hi), 1);
  EXPECT_VEC(lo, -0.05f, -0.05f, 9.95f);
  ASSERT_EQ(fig->getCentroid(lo, 1), 1);
  EXPECT_VEC(lo, 0.5f, 0, 10);
}

// ---------------------------------------------------------------------------
// Registries and lifetime.

TEST_F(Arm, RegistriesFollowEdits) {
  EXPECT_EQ(fig->getNSegments(), 2);
  EXPECT_EQ(fig->getNSites(), 4);
  EXPECT_EQ(fig->getNJoints(), 1);
  EXPECT_EQ(fig->getNDOFs(), 1);
  EXPECT_EQ(fig->findSegment("lower"), lower);
  EXPECT_EQ(fig->findSite("lower.tip"), hand);
  EXPECT_EQ(fig->findJoint("upper_lower"), elbow);
  EXPECT_EQ(hcSegment::find(fig->getSegments(), "upper"), upper);
  char text[] = "upper_lower rest", *cursor = text;
  EXPECT_EQ(hcJoint::find(fig, &cursor), elbow);
  EXPECT_STREQ(cursor, "upper_lower rest");  // read, never moved
  EXPECT_EQ(hcJoint::find(fig, nullptr), nullptr);
  // Duplicate names are refused.
  EXPECT_EQ(hcSegment::createInMemory(fig, "upper"), nullptr);
  EXPECT_EQ(hcSite::create("tip", upper), nullptr);
  EXPECT_EQ(lower->setName("upper"), 0);
  // Deleting the lower segment takes its sites and the elbow with it.
  EXPECT_EQ(fig->delSegment(lower), 1);
  EXPECT_EQ(fig->getNSegments(), 1);
  EXPECT_EQ(fig->getNSites(), 2);
  EXPECT_EQ(fig->getNJoints(), 0);
  EXPECT_EQ(tip->getNumJoints(), 0);
  EXPECT_EQ(upper->getNJoints(), 0);
  EXPECT_EQ(fig->findSite("lower.tip"), nullptr);
}

TEST_F(Arm, MovingASegmentToAnotherFigureDropsCrossingJoints) {
  hcFigure *other = hcFigure::createInMemory("other");
  other->addSegment(lower);
  EXPECT_EQ(lower->getFigure(), other);
  EXPECT_EQ(fig->getNSegments(), 1);
  EXPECT_EQ(fig->getNSites(), 2);
  EXPECT_EQ(fig->getNJoints(), 0);
  EXPECT_EQ(tip->getNumJoints(), 0);
  EXPECT_EQ(other->getNSites(), 2);
  EXPECT_EQ(other->findSite("lower.tip"), hand);
  EXPECT_STREQ(hand->getFullName(), "other.lower.tip");
  // Its first site now serves as the root, at the figure's location.
  EXPECT_EQ(other->getRoot(), elbowSite);
  EXPECT_VEC(globalPos(hand), 1, 0, 0);
  hcFigure::destroy(other);
}

TEST_F(Arm, SitesMoveBetweenSegmentsOnlyUnderFreeNames) {
  upper->addSite(hand);  // upper already has a "tip"
  EXPECT_EQ(hand->getSegment(), lower);
  ASSERT_EQ(hand->setName("hand"), 1);
  upper->addSite(hand);
  EXPECT_EQ(hand->getSegment(), upper);
  EXPECT_EQ(upper->getNSites(), 3);
  EXPECT_EQ(lower->getNSites(), 1);
  EXPECT_EQ(fig->findSite("upper.hand"), hand);
  bend(kHalfPi);  // no longer carried by the elbow
  EXPECT_VEC(globalPos(hand), 1, 0, 0);
}

TEST_F(Arm, UnlinkedSegmentsKeepTheirOwnPlacement) {
  hcSegment *loose = hcSegment::createInMemory(fig, "loose");
  hMatrix g = at(0, 0, 7);
  loose->setGlobal(g);
  hVector shift(1, 0, 0);
  fig->setPosition(shift);
  loose->getGlobal(g);
  EXPECT_VEC(hcfigure_detail::origin(g), 1, 0, 7);
  EXPECT_VEC(globalPos(hand), 3, 0, 0);  // the arm moved with the figure only
  EXPECT_EQ(loose->getRootSite(), nullptr);

  std::string path = tempPath("loose");
  ASSERT_EQ(fig->saveToFile(path.c_str()), 1);
  hcFigure *copy = hcFigure::readFromFile(path.c_str(), nullptr);
  ASSERT_NE(copy, nullptr);
  copy->findSegment("loose")->getGlobal(g);
  EXPECT_VEC(hcfigure_detail::origin(g), 1, 0, 7);
  hcFigure::destroy(copy);
  std::remove(path.c_str());
}

TEST_F(Arm, DisplayFlagsAndVisibility) {
  EXPECT_EQ(fig->getVisibility(), hcFigure::ON);
  lower->setDisplay(hcSegment::ON, 0);
  EXPECT_EQ(fig->getVisibility(), hcFigure::MIXED);
  lower->setDisplay(hcSegment::ON, 1);
  upper->setDisplay(hcSegment::ON, 0, 1);  // the subtree below upper too
  EXPECT_EQ(lower->getDisplay(hcSegment::ON), 0);
  EXPECT_EQ(fig->getVisibility(), hcFigure::OFF);
  fig->setVisibility(hcFigure::ON);
  EXPECT_EQ(upper->getDisplay(hcSegment::ON), 1);
  EXPECT_EQ(upper->getDisplay(99), 0);
  upper->setDisplay(-1, 5);  // ignored
}

TEST_F(Arm, ResetAndDegreeViews) {
  float lim = 0.2f;
  elbow->setLowerLimits(&lim);
  bend(1.0f);
  fig->reset();
  float v, lo;
  elbow->getAngles(&v, 1);
  EXPECT_FLOAT_EQ(v, 0.2f);
  elbow->getLowerLimits(&lo, 0);
  EXPECT_NEAR(lo, 0.2f * 180 / 3.14159265f, 1e-3);
  EXPECT_EQ(elbow->getOtherSite(tip), elbowSite);
  EXPECT_EQ(elbow->getOtherSite(hand), nullptr);
  EXPECT_EQ(elbow->site(2), elbowSite);
  EXPECT_EQ(elbow->site(3), nullptr);
  EXPECT_EQ(hcJoint::editRemove(elbow), fig);
  EXPECT_EQ(fig->getNJoints(), 0);
}

TEST_F(Arm, JournalShowsOnlyTheRequestedOperation) {
  hcjournal::clear();
  hVector com;
  fig->calcCOM(com);
  EXPECT_EQ(hcjournal::last(0).rfind("hcFigure::calcCOM ", 0), 0u);
  EXPECT_EQ(hcjournal::last(0).substr(hcjournal::last(0).size() - 2), " 1");
  EXPECT_EQ(hcjournal::last(1), "");
  hand->setGlobalPosition(hVector(1, 2, 3));
  EXPECT_EQ(hcjournal::last(), "hcSite::setGlobalPosition {1 2 3}");
  EXPECT_EQ(hcjournal::last(2), "");
}

TEST_F(Arm, GlobalPositionAndGeometryFiles) {
  std::string path = tempPath("glob");
  ASSERT_EQ(fig->saveGlobalPositions(path.c_str()), 1);
  EXPECT_NE(readFile(path).find("site arm.lower.tip 2 0 0\n"), std::string::npos);
  ASSERT_EQ(lower->saveGeometryToFile(path.c_str()), 1);
  std::string text = readFile(path);
  // Without a geometry the segment is written as its box, in OBJ.
  EXPECT_NE(text.find("\nv 0.949999988 -0.0500000007 -0.0500000007\n"), std::string::npos);
  EXPECT_NE(text.find("\nf "), std::string::npos);
  ASSERT_EQ(lower->saveGeometryToFile(path.c_str(), 0), 1);
  EXPECT_NE(readFile(path).find("\nv -0.0500000007 "), std::string::npos);
  std::remove((path + ".mtl").c_str());
  EXPECT_EQ(fig->saveGlobalPositions("/nonexistent/dir/x"), 0);
  std::remove(path.c_str());
}

TEST(FigureLinks, JointsNeverCrossFigures) {
  hcFigure *a = hcFigure::createInMemory("a");
  hcFigure *b = hcFigure::createInMemory("b");
  hcSite *sa = hcSite::create("s", hcSegment::createInMemory(a, "x"));
  hcSite *sb = hcSite::create("s", hcSegment::createInMemory(b, "x"));
  EXPECT_EQ(hcJoint::createBetweenSites(sa, sb), nullptr);
  hcJoint *j = hcJoint::createInMemory(a, "j");
  EXPECT_EQ(j->assignConnectivity(sa, sb), 0);
  EXPECT_EQ(j->assignConnectivity(sa, sa), 0);
  EXPECT_EQ(hcFigure::destroy(a), 1);
  EXPECT_EQ(hcFigure::destroy(b), 1);
}

TEST(FigureLinks, NullArgumentsAnswerFailure) {
  EXPECT_EQ(hcFigure::destroy(nullptr), 0);
  EXPECT_EQ(hcFigure::resolve(nullptr), nullptr);
  EXPECT_EQ(hcFigure::createInMemory(nullptr), nullptr);
  EXPECT_EQ(hcSegment::createInMemory(nullptr, "s"), nullptr);
  EXPECT_EQ(hcSite::create("s", nullptr), nullptr);
  EXPECT_EQ(hcJoint::createBetweenSites(nullptr, nullptr), nullptr);
  EXPECT_EQ(hcJoint::destroy(nullptr), 0);
  hcFigure *f = hcFigure::createInMemory("f");
  hcSegment *s = hcSegment::createInMemory(f, "s");
  hcJoint *j = hcJoint::createInMemory(f, "j");
  EXPECT_EQ(f->setRoot(nullptr), 0);
  EXPECT_EQ(f->delSite(nullptr), 0);
  EXPECT_EQ(j->getAngles(nullptr, 1), 0);
  EXPECT_EQ(j->getRootSite(), nullptr);
  s->getInertiaMatrix(nullptr);
  EXPECT_EQ(f->findSite(nullptr), nullptr);
  hVector lo, hi;
  hcFigure *empty = hcFigure::createInMemory("e");
  EXPECT_EQ(empty->getBoundingBox(lo, hi), 0);
  EXPECT_EQ(empty->getCentroid(lo, 1), 0);
  hcFigure::destroy(empty);
  hcFigure::destroy(f);
}

// ---------------------------------------------------------------------------
// Files.

TEST_F(Arm, SaveAndReadBack) {
  float lim[1] = {-0.5f}, tol[1] = {0.25f};
  elbow->setLowerLimits(lim);
  elbow->setTolerance(tol);
  elbow->setFrozen(1);
  bend(0.7f);
  hMatrix d = at(0, 0, 0.3f), i = at(0, 0, -0.3f);
  elbow->setDisplacement(d, i);
  hcSite *extra = hcSite::create("odd name%", lower);
  hVector p(0.2f, 0.1f, 0);
  extra->setPosition(p);
  hVector move(1, 2, 3);
  fig->setPosition(move);
  upper->setMass(4);

  std::string path = tempPath("fig");
  ASSERT_EQ(fig->saveToFile(path.c_str(), 1, 1), 1);
  EXPECT_EQ(hcjournal::last(), "hcFigure::saveToFile " + path + " 1 1");
  EXPECT_STREQ(fig->getFileName(), path.c_str());

  hcFigure *copy = hcFigure::readFromFile(path.c_str(), "copy");
  ASSERT_NE(copy, nullptr);
  EXPECT_STREQ(copy->getName(), "copy");
  EXPECT_EQ(copy->getNSegments(), 2);
  EXPECT_EQ(copy->getNSites(), 5);
  EXPECT_EQ(copy->getNJoints(), 1);
  hcJoint *j = copy->findJoint("upper_lower");
  ASSERT_NE(j, nullptr);
  float v, lo, t;
  j->getAngles(&v, 1);
  j->getLowerLimits(&lo, 1);
  j->getTolerance(&t);
  EXPECT_FLOAT_EQ(v, 0.7f);
  EXPECT_FLOAT_EQ(lo, -0.5f);
  EXPECT_FLOAT_EQ(t, 0.25f);
  EXPECT_EQ(j->getFrozen(), 1);
  EXPECT_EQ(copy->getRoot(), copy->findSite("upper.base"));
  EXPECT_NEAR(copy->findSegment("upper")->getMass(), 4, 1e-5);
  for (const char *name : {"upper.tip", "lower.tip", "lower.odd name%"}) {
    hcSite *a = fig->findSite(name), *b = copy->findSite(name);
    ASSERT_NE(b, nullptr) << name;
    hVector pa = globalPos(a), pb = globalPos(b);
    EXPECT_VEC(pb, pa.v[0], pa.v[1], pa.v[2]);
  }
  hcFigure::destroy(copy);
  std::remove(path.c_str());
}

TEST_F(Arm, MalformedFilesAreRefused) {
  std::string path = tempPath("bad");
  ASSERT_EQ(fig->saveToFile(path.c_str()), 1);
  std::string good = readFile(path);
  hcFigure *ok = hcFigure::readFromFile(path.c_str(), nullptr);
  ASSERT_NE(ok, nullptr);
  hcFigure::destroy(ok);

  // Every truncation at a word boundary lacks the final "end".
  for (size_t cut = 0; cut + 1 < good.size(); ++cut) {
    if (good[cut] != ' ' && good[cut] != '\n') continue;
    writeFile(path, good.substr(0, cut));
    EXPECT_EQ(hcFigure::readFromFile(path.c_str(), nullptr), nullptr) << cut;
  }
  auto replaced = [&](const std::string &from, const std::string &to) {
    std::string s = good;
    s.replace(s.find(from), from.size(), to);
    return s;
  };
  for (const std::string &text :
       {replaced("site 0", "site 9"), replaced("site 0", "site -1"),
        replaced("location 1", "location 1x"),
        replaced("location 1", "location nan"),
        replaced("hcfigure 1", "hcfigure 2"), replaced("end", "end extra"),
        replaced("root", "bogus"), replaced("joint upper_lower 1 2",
                                            "joint upper_lower 1 1"),
        good + "garbage", std::string(""), std::string("hcfigure")}) {
    writeFile(path, text);
    EXPECT_EQ(hcFigure::readFromFile(path.c_str(), nullptr), nullptr) << text;
  }
  EXPECT_EQ(hcFigure::readFromFile("/nonexistent/dir/file", nullptr), nullptr);
  EXPECT_EQ(hcFigure::readFromFile(nullptr, nullptr), nullptr);
  std::remove(path.c_str());
}

TEST_F(Arm, DamagedWordsNeverBreakTheReader) {
  std::string path = tempPath("fuzz");
  float lim = -1;
  elbow->setLowerLimits(&lim);
  ASSERT_EQ(fig->saveToFile(path.c_str(), 1, 1), 1);
  std::vector<std::string> words;
  std::istringstream in(readFile(path));
  for (std::string w; in >> w;) words.push_back(w);
  const char *junk[] = {"-1", "7", "1e39", "x", "joint", "end", "%", "%0", "2"};
  unsigned seed = 12345;
  for (int round = 0; round < 400; ++round) {
    std::vector<std::string> w = words;
    for (int k = 0; k < 1 + round % 3; ++k) {
      seed = seed * 1103515245u + 12345u;
      w[(seed >> 8) % w.size()] = junk[(seed >> 20) % 9];
    }
    std::string text;
    for (const auto &x : w) text += x + " ";
    writeFile(path, text);
    if (hcFigure *f = hcFigure::readFromFile(path.c_str(), nullptr)) {
      EXPECT_EQ(f->getNSegments(), 2);  // damage that still parses
      hVector p;
      f->getCOM(p);
      hcFigure::destroy(f);
    }
  }
  std::remove(path.c_str());
}

TEST_F(Arm, PositionsRoundTripAndBadPositionsChangeNothing) {
  std::string path = tempPath("pos");
  bend(0.3f);
  ASSERT_EQ(fig->savePositions(path.c_str()), 1);
  EXPECT_EQ(hcjournal::last(), "hcFigure::savePositions " + path + " 0");
  bend(1.2f);
  hVector elsewhere(5, 5, 5);
  fig->setPosition(elsewhere);
  ASSERT_EQ(fig->poseFromFile("p", path.c_str()), 1);
  float v;
  elbow->getAngles(&v, 1);
  EXPECT_FLOAT_EQ(v, 0.3f);
  hVector loc;
  fig->getPosition(loc);
  EXPECT_VEC(loc, 0, 0, 0);

  std::string good = readFile(path);
  std::string bad = good;
  bad.replace(bad.find("upper_lower 1"), 13, "upper_lower 2");
  writeFile(path, bad);
  bend(1.2f);
  EXPECT_EQ(fig->poseFromFile("p", path.c_str()), 0);
  elbow->getAngles(&v, 1);
  EXPECT_FLOAT_EQ(v, 1.2f);
  std::remove(path.c_str());
}

}  // namespace
