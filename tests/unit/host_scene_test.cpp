// The stand-in host's scene: what scenes own and how they let go of objects
// that other code destroys.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "host/scene.h"

namespace {

int count(hList *l) {
  int n = hList::count(l);
  hList::destroy(&l, nullptr);
  return n;
}

TEST(HostScene, SceneDestructionDestroysItsFiguresAndReleasesSharedOnes) {
  auto *a = new hcScene("a");
  auto *b = new hcScene("b");
  hcFigure *shared = hcFigure::createInMemory("shared");
  hcSegment::createInMemory(shared, "body");
  a->addFigure(shared);
  b->addFigure(shared);
  ASSERT_EQ(count(b->getSegments()), 1);

  delete a;  // destroys shared; b hears of it through its watch
  EXPECT_EQ(b->getFigures(), nullptr);
  EXPECT_EQ(b->findSegment("shared.body"), nullptr);
  EXPECT_EQ(hcObserver::find("hcScene"), nullptr);
  delete b;
}

TEST(HostScene, ListsAreSnapshotsOwnedByTheirCaller) {
  hcScene scene("lists");
  hcFigure *f = hcFigure::createInMemory("f");
  scene.addFigure(f);
  hList *before = scene.getFigures();
  EXPECT_EQ(scene.delFigure(f), 1);
  EXPECT_EQ(hList::count(before), 1);
  EXPECT_EQ(before->getData(), f);
  hList::destroy(&before, nullptr);
  EXPECT_EQ(scene.getModified(), 1);
  hcFigure::destroy(f);
}

TEST(HostScene, UnitsTravelThroughSceneFiles) {
  hcScene scene("units");
  const std::string file = ::testing::TempDir() + "units.scene";
  scene.setDistanceUnits("inches");
  ASSERT_EQ(scene.save(file.c_str()), 1);
  EXPECT_EQ(scene.getModified(), 0);
  hcScene other("other");
  EXPECT_EQ(other.load(file.c_str()), 1);
  EXPECT_EQ(other.getDistUnits(), hcScene::INCHES);
  EXPECT_EQ(other.getAngleUnits(), hcScene::RADIANS);
  std::remove(file.c_str());
}

}  // namespace
