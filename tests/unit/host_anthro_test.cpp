// The stand-in host's anthropometric databases and scaler, and the scaler's
// commands (no script can obtain a scaler from this host's humans, so the
// commands are driven here with a scaler made on the host side).
#include <gtest/gtest.h>
#include <tcl.h>

#include <cstring>
#include <string>

#include "frame/typed_pointer.h"
#include "host/anthro.h"
#include "core/journal.h"

extern "C" int Hktcl_Init(Tcl_Interp *interp);

namespace {

using A = hcAnthroScale;

hVector globalPos(hcSite *s) {
  hVector p;
  s->getGlobalPosition(p);
  return p;
}

hcSite *siteAt(const char *name, hcSegment *seg, float x) {
  hcSite *s = hcSite::create(name, seg);
  s->setPosition(hVector(x, 0, 0));
  return s;
}

// A torso (whose root site bears the pelvis landmark name, so that a human
// can be made of it) with an upper arm and a hand along x: the hand tip is at
// x = 2.
class AnthroScaling : public ::testing::Test {
 protected:
  void SetUp() override {
    fig = hcFigure::createInMemory("body");
    torso = hcSegment::createInMemory(fig, "torso");
    arm = hcSegment::createInMemory(fig, "upperarm");
    hand = hcSegment::createInMemory(fig, "leftHand");
    hcSite *root = siteAt("pelvis", torso, 0);
    hcSite *sh = siteAt("sh", torso, 0);
    hcSite *armTop = siteAt("top", arm, 0);
    hcSite *armEnd = siteAt("end", arm, 1);
    hcSite *handTop = siteAt("top", hand, 0);
    tip = siteAt("tip", hand, 1);
    fig->setRoot(root);
    hcJoint::createBetweenSites(sh, armTop);
    hcJoint::createBetweenSites(armEnd, handTop);
    human = hcHuman::initHuman(fig);
    scaler = A::create(human, "ANSUR");
  }
  void TearDown() override {
    delete scaler;
    hcHuman::destroy(human);
    hcFigure::destroy(fig);
  }
  float totalMass() {
    float m = 0;
    for (hcSegment *s : {torso, arm, hand}) m += s->getMass();
    return m;
  }

  hcFigure *fig = nullptr;
  hcSegment *torso = nullptr, *arm = nullptr, *hand = nullptr;
  hcSite *tip = nullptr;
  hcHuman *human = nullptr;
  A *scaler = nullptr;
};

TEST(AnthroDatabases, ValuesAreInterpolatedAndLimitsFollowThePercentile) {
  EXPECT_EQ(getNumAnthroDatabases(), 4u);
  EXPECT_STREQ(getAnthroDatabaseName(CDN_LF_97), "CDN_LF_97");
  EXPECT_EQ(getAnthroDatabaseName(4), nullptr);
  EXPECT_NEAR(getStatureValueInCM("ANSUR", 50, hcHuman::male), 175.6, 1e-4);
  EXPECT_NEAR(getStatureValueInCM("ANSUR", 97, hcHuman::female), (173.7 + 178.0) / 2, 1e-4);
  EXPECT_NEAR(getWeightValueInKG("CDN_LF_97", 5, hcHuman::male), 60.1 * 1.02, 1e-4);
  EXPECT_EQ(getStatureValueInCM("ANSUR", 100, hcHuman::female), 0.0f);

  // Limits are symmetric in percentile: the stature range of the median
  // weight runs from the 10th to the 90th percentile stature.
  double lo = 0, hi = 0;
  getStatureLimits(getWeightValueInKG("ANSUR", 50, hcHuman::male), ANSUR, hcHuman::male, &lo, &hi);
  EXPECT_NEAR(lo, getStatureValueInCM("ANSUR", 10, hcHuman::male), 1e-3);
  EXPECT_NEAR(hi, getStatureValueInCM("ANSUR", 90, hcHuman::male), 1e-3);
  // Extreme values are held within the table.
  getWeightLimits(300, NHANES, hcHuman::female, &lo, &hi);
  EXPECT_NEAR(lo, getWeightValueInKG("NHANES", 59, hcHuman::female), 1e-3);
  EXPECT_NEAR(hi, getWeightValueInKG("NHANES", 99, hcHuman::female), 1e-3);
  getWeightLimits(170, ANSUR, hcHuman::male, nullptr, nullptr);  // no outputs: nothing to write
}

TEST_F(AnthroScaling, StartsAtTheMedianAndAnswersInItsUnits) {
  EXPECT_EQ(A::create(human, "nosuch"), nullptr);
  EXPECT_NEAR(scaler->getMeasurement(A::STATURE), 175.6, 1e-3);
  EXPECT_NEAR(scaler->getMeasurement(A::HAND_LENGTH), 175.6 * 0.109, 1e-3);
  EXPECT_TRUE(scaler->setAnthroDistUnits(hcScene::METERS));
  EXPECT_NEAR(scaler->getMeasurement(A::STATURE), 1.756, 1e-6);
  EXPECT_NEAR(scaler->getMeasurement(A::STATURE, hcScene::INCHES), 175.6 / 2.54, 1e-3);
  EXPECT_TRUE(scaler->setAnthroWeightUnits(hcScene::POUNDS));
  EXPECT_NEAR(scaler->getWeight(), 78.5 / 0.45359237, 1e-2);
  EXPECT_EQ(scaler->getMeasurement(26), 0.0f);
  EXPECT_FLOAT_EQ(scaler->getWaistToHipRatio(), 0.9f);
  scaler->setWaistToHipRatio(0.7f);
  scaler->setWaistToHipRatio();
  EXPECT_FLOAT_EQ(scaler->getWaistToHipRatio(), 0.9f);
  EXPECT_EQ(scaler->getBodyPartDim(A::FOOT, A::LENGTH), 1);
  EXPECT_EQ(scaler->getBodyPartDim(A::HAND, A::HEIGHT), -1);
  EXPECT_EQ(scaler->getBodyPartDim(A::HAND, A::INVALID_DIM), -1);
}

TEST_F(AnthroScaling, HeightScalesEveryPartAndSpreadsTheWeight) {
  ASSERT_EQ(scaler->scaleHeight(175.6f * 1.1f), A::SUCCESS);
  EXPECT_NEAR(globalPos(tip).v[0], 2.2f, 1e-4);
  EXPECT_NEAR(scaler->getMeasurement(A::STATURE), 175.6 * 1.1, 1e-3);
  EXPECT_NEAR(totalMass(), 78.5f, 1e-3);

  // The weight alone leaves the figure's size alone.
  ASSERT_EQ(scaler->scalePercentileWeight(95), A::SUCCESS);
  EXPECT_NEAR(totalMass(), 99.0f, 1e-3);
  EXPECT_NEAR(globalPos(tip).v[0], 2.2f, 1e-4);
}

TEST_F(AnthroScaling, AnAnchorSiteKeepsItsPlace) {
  hVector before = globalPos(tip);
  ASSERT_EQ(scaler->scalePercentileHeight(5, tip), A::SUCCESS);
  hVector after = globalPos(tip);
  for (int i = 0; i < 3; ++i) EXPECT_NEAR(after.v[i], before.v[i], 1e-4);

  hcFigure *other = hcFigure::createInMemory("other");
  hcSite *stranger = hcSite::create("s", hcSegment::createInMemory(other, "seg"));
  EXPECT_EQ(scaler->scaleHeight(170, stranger), A::INVALID_ARGUMENTS);
  hcFigure::destroy(other);
}

TEST_F(AnthroScaling, RefusalsChangeNothing) {
  EXPECT_EQ(scaler->scalePercentileHeight(0.5f), A::INVALID_PERCENTILE);
  EXPECT_EQ(scaler->scaleHeight(20), A::INVALID_ARGUMENTS);
  EXPECT_EQ(scaler->scaleWeight(-1), A::INVALID_ARGUMENTS);
  EXPECT_EQ(scaler->scalePercentileHeightNWeight(1, 99), A::ERR_OVERCONSTRAINED);
  EXPECT_EQ(scaler->scaleBodyPart(A::HAND, hVector(1, 1, 0)), A::INVALID_SCALE_VEC);
  EXPECT_EQ(scaler->scaleBodyPart(12, hVector(1, 1, 1)), A::INVALID_ARGUMENTS);
  EXPECT_EQ(scaler->scaleBodyPart(A::HEAD, hVector(1, 1, 2)), A::FAIL);  // no head segment
  EXPECT_EQ(scaler->scaleMeasurement(A::STATURE, 1000), A::INVALID_ARGUMENTS);
  EXPECT_NEAR(scaler->getMeasurement(A::STATURE), 175.6, 1e-3);
  EXPECT_NEAR(globalPos(tip).v[0], 2.0f, 1e-5);

  A *lonely = A::create(nullptr, nullptr);
  EXPECT_STREQ(lonely->getAntrhoDatabaseName(), "ANSUR");
  EXPECT_EQ(lonely->scaleHeight(180), A::NO_HUMAN);
  EXPECT_FALSE(lonely->copyAnthroscale(human));
  delete lonely;
}

TEST_F(AnthroScaling, PartsScaleAlongTheirAxesAndLocksHold) {
  // The hand's length runs along z: the segment's nodes grow in z only.
  float length = scaler->getMeasurement(A::HAND_LENGTH);
  ASSERT_EQ(scaler->scaleMeasurement(A::HAND_LENGTH, length * 1.2f, true), A::SUCCESS);
  EXPECT_NEAR(scaler->getMeasurement(A::HAND_LENGTH), length * 1.2f, 1e-3);
  hVector abs;
  hand->getAbsoluteScale(abs);
  EXPECT_NEAR(abs.v[2], 1.2f, 1e-5);
  EXPECT_NEAR(abs.v[0], 1.0f, 1e-5);
  EXPECT_TRUE(scaler->isMeasurementLocked(A::HAND_LENGTH));

  // The lock holds the hand's z axis and every whole-body change; the
  // hand's breadth and the weight stay free.
  EXPECT_EQ(scaler->scaleBodyPart(A::HAND, hVector(1, 1, 2)), A::ERR_LOCKED_MEASUREMENT);
  EXPECT_EQ(scaler->scaleHeight(180), A::ERR_LOCKED_MEASUREMENT);
  EXPECT_EQ(scaler->scaleBodyPart(A::HAND, hVector(2, 1, 1)), A::SUCCESS);
  EXPECT_EQ(scaler->scaleWeight(70), A::SUCCESS);
  scaler->unlockAllMeasurements();
  EXPECT_EQ(scaler->scaleHeight(180), A::SUCCESS);
  EXPECT_NEAR(scaler->getMeasurement(A::HAND_LENGTH), length * 1.2f * 180 / 175.6f, 1e-3);
}

// ---------------------------------------------------------------------------
// The commands.

class AnthroCommands : public AnthroScaling {
 protected:
  static void SetUpTestSuite() {
    Tcl_FindExecutable(nullptr);
    interp = Tcl_CreateInterp();
    ASSERT_EQ(Hktcl_Init(interp), TCL_OK);
  }
  static void TearDownTestSuite() { Tcl_DeleteInterp(interp); }

  std::string eval(const std::string &script) {
    std::string s = "set s " + hk::MakePointerString(scaler, "_hcAnthroScale_p") + "\n" + script;
    EXPECT_EQ(Tcl_Eval(interp, s.c_str()), TCL_OK) << Tcl_GetStringResult(interp);
    return Tcl_GetStringResult(interp);
  }

  static Tcl_Interp *interp;
};
Tcl_Interp *AnthroCommands::interp = nullptr;

TEST_F(AnthroCommands, AbsentWordsReachTheHostAsTheirDefaults) {
  eval("hcAnthroScale_setWaistToHipRatio $s");
  EXPECT_EQ(hcjournal::last(), "hcAnthroScale::setWaistToHipRatio -1");
  eval("hcAnthroScale_scaleMeasurement $s 0 180");
  EXPECT_EQ(hcjournal::last(), "hcAnthroScale::scaleMeasurement 0 180 0 null");
  eval("hcAnthroScale_scaleMeasurement $s 0 181 2");
  EXPECT_EQ(hcjournal::last(), "hcAnthroScale::scaleMeasurement 0 181 1 null");
  EXPECT_EQ(eval("hcAnthroScale_isMeasurementLocked $s 0"), "1");
  eval("hcAnthroScale_scaleHeight $s 170");
  EXPECT_EQ(hcjournal::last(), "hcAnthroScale::scaleHeight 170 null");
}

TEST_F(AnthroCommands, BothListedNamesOfAnOverloadRunTheExposedOne) {
  EXPECT_EQ(eval("hcAnthroScale obj -this $s; set r [obj getMeasurement 0]; rename obj {}; set r"),
            eval("hcAnthroScale_getMeasurement $s 0"));
  EXPECT_EQ(eval("hcAnthroScale obj -this $s; set r [obj getWeight]; rename obj {}; set r"), "78.5");
}

TEST_F(AnthroCommands, EachUnitQueryAnswersANewCell) {
  scaler->setAnthroDistUnits(hcScene::FEET);
  std::string a = eval("hcAnthroScale_getAnthroDistUnits $s");
  std::string b = eval("hcAnthroScale_getAnthroDistUnits $s");
  EXPECT_NE(a, b);
  for (const std::string &cell : {a, b}) {
    void *addr = nullptr;
    ASSERT_EQ(hk::CheckPointer(cell.c_str(), &addr, "_hcScene::distUnits_p"), nullptr);
    EXPECT_EQ(*static_cast<int *>(addr), hcScene::FEET);
    eval("ptrfree " + cell);
  }
  std::string m = eval("set c [hcAnthroScale_getAnthroWeightUnits $s]; set v [ptrvalue $c 0 int]; ptrfree $c; set v");
  EXPECT_EQ(m, "0");
  // A unit goes in as a typed cell too.
  EXPECT_EQ(eval("set c [ptrcast [ptrcreate int 2] {hcScene::massUnits *}]; set r "
                 "[hcAnthroScale_setAnthroWeightUnits $s $c]; ptrfree $c; set r"),
            "1");
  EXPECT_EQ(scaler->getAnthroWeightUnits(), hcScene::POUNDS);
}

}  // namespace
