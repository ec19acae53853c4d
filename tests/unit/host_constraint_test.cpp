// The stand-in host's constraints: objectives, the solver on chains the
// scripts cannot easily build, and the registry behind resolve.
#include <gtest/gtest.h>

#include <cmath>

#include "host/constraint.h"

namespace {

constexpr float kHalfPi = 1.57079632679f;

hMatrix at(float x, float y, float z) {
  hMatrix m;
  m.m[0][3] = x;
  m.m[1][3] = y;
  m.m[2][3] = z;
  return m;
}

// upper [base at 0, tip at x = 1], lower [elbow at 0, hand at x = 1]; the
// elbow joint turns about z; base is the root.
class Reach : public ::testing::Test {
 protected:
  void SetUp() override {
    fig = hcFigure::createInMemory("reach");
    upper = hcSegment::createInMemory(fig, "upper");
    lower = hcSegment::createInMemory(fig, "lower");
    base = hcSite::create("base", upper);
    tip = hcSite::create("tip", upper);
    elbowSite = hcSite::create("elbow", lower);
    hand = hcSite::create("hand", lower);
    hMatrix one = at(1, 0, 0);
    tip->setLocation(one);
    hand->setLocation(one);
    fig->setRoot(base);
    c = hcConstraint::create("reach");
    c->setEndEffectorSite(hand);
  }
  void TearDown() override {
    hcConstraint::destroy(c);
    hcFigure::destroy(fig);
  }
  void join(hcSite *a, hcSite *b) {
    elbow = hcJoint::createBetweenSites(a, b);
    hVector z(0, 0, 1);
    ASSERT_EQ(elbow->appendDOF(hcJoint::ROT, z), 1);
  }
  float angle() {
    float a = 0;
    elbow->getAngles(&a, 1);
    return a;
  }

  hcFigure *fig;
  hcSegment *upper, *lower;
  hcSite *base, *tip, *elbowSite, *hand;
  hcJoint *elbow = nullptr;
  hcConstraint *c;
};

TEST_F(Reach, ThroughAJointDefinedFromTheChildSide) {
  join(elbowSite, tip);  // reversed: walked from its second site
  hMatrix goal = at(1, 1, 0);
  c->setGoalTransform(goal);
  ASSERT_EQ(hcConstraint::evaluate(c), 1);
  EXPECT_LT(c->getPotential(), hcConstraint::kMetDistance);
  EXPECT_NEAR(std::fabs(angle()), kHalfPi, 2e-4);
}

TEST_F(Reach, FrameObjectiveTurnsTheEndEffector) {
  join(tip, elbowSite);
  hMatrix goal;
  goal.rotateAround(2, kHalfPi);
  c->setGoalTransform(goal);
  ASSERT_EQ(c->setObjectiveTypes(hcConstraint::C_FRAME, hcConstraint::C_NONE), 1);
  EXPECT_NEAR(c->getPotential(), kHalfPi, 1e-5);  // a quarter turn off
  ASSERT_EQ(hcConstraint::evaluate(c, 0, 0.3f), 1);
  EXPECT_NEAR(angle(), kHalfPi, 2e-4);
}

TEST_F(Reach, AimAndDirectionObjectives) {
  join(tip, elbowSite);
  c->setObjectiveTypes(hcConstraint::C_AIM, hcConstraint::C_NONE);
  hMatrix ahead = at(3, 0, 0), behind = at(1, 0, 0), same = at(2, 0, 0);
  c->setGoalTransform(ahead);
  EXPECT_NEAR(c->getPotential(), 0, 1e-6);
  c->setGoalTransform(behind);
  EXPECT_NEAR(c->getPotential(), 2 * kHalfPi, 1e-5);  // aiming away
  c->setGoalTransform(same);
  EXPECT_EQ(c->getPotential(), 0);
  // The hand's y axis should point along the goal's x axis: a quarter turn
  // back.
  c->setObjectiveTypes(hcConstraint::C_DIR, hcConstraint::C_NONE);
  hVector e(0, 1, 0), g(1, 0, 0);
  ASSERT_EQ(c->setDirectionVectors(e, g), 1);
  ASSERT_EQ(c->setPOWeight(2), 1);
  EXPECT_NEAR(c->getPotential(), 2 * kHalfPi, 1e-5);  // weight 2 times a quarter turn
  ASSERT_EQ(hcConstraint::evaluate(c, 0, 0.3f), 1);
  EXPECT_NEAR(angle(), -kHalfPi, 2e-4);
}

TEST_F(Reach, TranslationsLimitsAndFrozenJoints) {
  join(tip, elbowSite);
  hVector x(1, 0, 0);
  ASSERT_EQ(elbow->appendDOF(hcJoint::TRANS, x), 1);
  float lower[2] = {-kHalfPi, 0}, upper[2] = {kHalfPi, 0.25f};
  elbow->setLowerLimits(lower);
  elbow->setUpperLimits(upper);
  hMatrix goal = at(2.5f, 0, 0);
  c->setGoalTransform(goal);
  EXPECT_EQ(hcConstraint::evaluate(c), 0);  // the slide stops at its limit
  EXPECT_NEAR(c->getPotential(), 0.25f, 1e-4);
  float v[2];
  elbow->getAngles(v, 1);
  EXPECT_NEAR(v[1], 0.25f, 1e-6);

  v[1] = 0;
  elbow->setAngles(v, 1);
  elbow->setFrozen(1);
  EXPECT_EQ(hcConstraint::evaluate(c), 0);
  EXPECT_NEAR(c->getPotential(), 0.5f, 1e-5);
}

TEST(HostConstraint, ResolveAnswersTheFirstElementWhenItIsAConstraint) {
  hcConstraint *a = hcConstraint::create("a"), *b = hcConstraint::create("b");
  hcObject stranger;
  hList *list = nullptr;
  hList::append(&list, a);
  hList::append(&list, b);
  EXPECT_EQ(hcConstraint::resolve(list), a);
  hList::destroy(&list, nullptr);
  hList::append(&list, &stranger);
  hList::append(&list, a);
  EXPECT_EQ(hcConstraint::resolve(list), nullptr);
  EXPECT_EQ(hcConstraint::resolve(nullptr), nullptr);
  hList::destroy(&list, nullptr);

  // The solver's list holds each constraint once and forgets deleted ones.
  const std::size_t before = hcConstraint::solverList().size();
  a->addToList();
  a->addToList();
  EXPECT_EQ(hcConstraint::solverList().size(), before + 1);
  EXPECT_EQ(hcConstraint::find("a"), a);
  delete a;
  EXPECT_EQ(hcConstraint::solverList().size(), before);
  EXPECT_EQ(hcConstraint::find("a"), nullptr);
  EXPECT_EQ(hcConstraint::destroy(b), 1);
}

}  // namespace
