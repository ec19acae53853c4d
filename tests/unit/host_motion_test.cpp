// The stand-in host's timeline: which frames it visits and how motions are
// started, applied and finished; interpolation of figure locations.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "host/figure.h"
#include "host/kit.h"
#include "host/motion.h"
#include "host/timeline.h"

namespace {

// Records the stages the timeline calls.
class Probe : public hcMotion {
 public:
  Probe(long start, long end) {
    setStartFrame(start);
    setEndFrame(end);
  }
  int preaction() override {
    log.push_back(-1);
    return 1;
  }
  int apply(long t) override {
    log.push_back(t);
    return 1;
  }
  int postaction() override {
    log.push_back(-2);
    return 1;
  }
  std::vector<long> log;
};

TEST(HostTimeline, SkipsFramesNoMotionCoversAndFinishesMotionsItPasses) {
  hcTimeline tl;
  Probe a(10, 12), b(1000, 1000);
  tl.add(&a);
  tl.add(&b);
  EXPECT_EQ(tl.step(2000), 2000);
  EXPECT_EQ(a.log, (std::vector<long>{-1, 10, 11, 12, -2}));
  EXPECT_EQ(b.log, (std::vector<long>{-1, 1000, -2}));

  // Jumping over a motion's end applies it at its end and finishes it.
  a.log.clear();
  tl.setTime(11);
  tl.setTime(50);
  EXPECT_EQ(a.log, (std::vector<long>{-1, 11, 12, -2}));
  // Going back before its start finishes it without applying.
  a.log.clear();
  tl.setTime(11);
  tl.setTime(0);
  EXPECT_EQ(a.log, (std::vector<long>{-1, 11, -2}));
}

TEST(HostTimeline, RealtimePositionsNeverApplyAFrameTwiceInARow) {
  hcTimeline tl;
  Probe a(0, 6);
  tl.add(&a);
  tl.setPlaybackMode(hcTimeline::realtime);
  tl.setRealtimeFactor(0.3f);
  EXPECT_EQ(tl.playback(1, "forward", 0, 6), 7);
  EXPECT_EQ(a.log, (std::vector<long>{-1, 0, 1, 2, 3, 4, 5, 6, -2}));
  a.log.clear();
  tl.setRealtimeFactor(2.0f);
  tl.setInterpolate(0);
  EXPECT_EQ(tl.playback(1, "reverse", 0, 6), 4);
  EXPECT_EQ(a.log, (std::vector<long>{-1, 6, -2, -1, 4, 2, 0}));
  EXPECT_DOUBLE_EQ(tl.getRealtimePosition(), 0.0);
}

TEST(HostTimeline, DestroyedTimelinesAndMotionsLetGoOfEachOther) {
  auto *tl = new hcTimeline;
  hcGlobal::setTimeline(tl);
  auto *m = new hcDummyMotion("d");
  Probe p(0, 1);
  tl->add(m);
  tl->add(&p);
  delete m;
  EXPECT_EQ(tl->numMotions(), 1);
  delete tl;
  EXPECT_EQ(p.getTimeline(), nullptr);
  EXPECT_EQ(p.getOrder(), -1);
  EXPECT_EQ(hcGlobal::getTimeline(), nullptr);
}

TEST(HostMotion, FigureMotionTurnsHalfWayThroughAHalfTurn) {
  hcFigure *f = hcFigure::createInMemory("turn");
  hcFigureMotion m("m", f);
  m.setEndFrame(2);
  hMatrix goal;  // half a turn about z, moved along x
  goal.m[0][0] = goal.m[1][1] = -1;
  goal.m[0][3] = 2;
  ASSERT_EQ(m.setParams(goal), 1);
  ASSERT_EQ(m.apply(1), 1);
  hMatrix at;
  f->getLocation(at);
  // A quarter turn either way, and half the way along x.
  EXPECT_NEAR(std::fabs(at.m[0][1]), 1, 1e-5);
  EXPECT_NEAR(at.m[0][0], 0, 1e-5);
  EXPECT_NEAR(at.m[0][3], 1, 1e-6);
  hcFigure::destroy(f);
  EXPECT_EQ(m.getFigure(), nullptr);
  EXPECT_EQ(m.apply(1), 0);
}

TEST(HostMotion, WeightFunctionsAndShaping) {
  hcMotion m;
  m.setEndFrame(4);
  const float f = 0.25f;
  const float want[] = {1, 1 - f, static_cast<float>(std::sin(M_PI * f)), 1, f};
  for (int w = hcMotion::WF_CONSTANT; w <= hcMotion::WF_INCREASE; ++w) {
    m.setWeightFunction(w);
    EXPECT_NEAR(m.weightAt(f), want[w], 1e-6) << w;
  }
  m.setInterpType(hcMotion::I_CSPLINE);
  EXPECT_NEAR(m.progress(1), 0.15625f, 1e-6);
  m.setInterpType(hcMotion::I_NONE);
  EXPECT_EQ(m.progress(3), 0.0f);
  EXPECT_EQ(m.progress(4), 1.0f);
}

}  // namespace
