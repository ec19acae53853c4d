// Typed pointer strings and the type-equivalence map.
#include "frame/typed_pointer.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {
using namespace hk;
namespace dbg = hk::typemap_debug;

void *const kSentinel = reinterpret_cast<void *>(0x5a5a);

class TypeMap : public ::testing::Test {
 protected:
  void SetUp() override {
    dbg::Reset();
    RegisterBuiltinTypes();
  }
  void TearDown() override {
    dbg::Reset();
    RegisterBuiltinTypes();
  }
  // Answers the address on success, kSentinel-untouched checks as failures.
  static bool Check(const std::string &text, const char *expected, void **addr) {
    *addr = kSentinel;
    return CheckPointer(text.c_str(), addr, expected) == nullptr;
  }
};

TEST(MakePointer, WritesNullAndLowerCaseHex) {
  char buf[kMaxPointerString];
  EXPECT_EQ(MakePointer(buf, nullptr, "_hcFigure_p"), 4);
  EXPECT_STREQ(buf, "NULL");
  EXPECT_EQ(MakePointer(buf, reinterpret_cast<void *>(0x1f2a3b40), "_hcFigure_p"), 20);
  EXPECT_STREQ(buf, "_1f2a3b40_hcFigure_p");
  MakePointer(buf, reinterpret_cast<void *>(~std::uintptr_t{0}), "");
  EXPECT_STREQ(buf, "_ffffffffffffffff");
  MakePointer(buf, reinterpret_cast<void *>(1), "_p");
  EXPECT_STREQ(buf, "_1_p");
  EXPECT_EQ(MakePointerString(reinterpret_cast<void *>(0xABC), "_x_p"), "_abc_x_p");
}

TEST(MakePointer, CutsOverlongTypeInsteadOfOverflowing) {
  char buf[kMaxPointerString + 8];
  std::memset(buf, 'z', sizeof buf);
  std::string type(1000, 't');
  MakePointer(buf, reinterpret_cast<void *>(0x10), type.c_str());
  EXPECT_EQ(std::strlen(buf), kMaxPointerString - 1);
  EXPECT_EQ(buf[kMaxPointerString], 'z');
  EXPECT_EQ(MakePointerString(reinterpret_cast<void *>(0x10), type.c_str()), "_10" + type);
}

TEST_F(TypeMap, HoldsTheWholeHierarchy) {
  EXPECT_EQ(dbg::RegistrationCount(), 646);
  EXPECT_EQ(dbg::HeadCount(), 172);
}

TEST_F(TypeMap, NullAndMalformedWords) {
  void *addr;
  EXPECT_TRUE(Check("NULL", "_hcFigure_p", &addr));
  EXPECT_EQ(addr, nullptr);
  EXPECT_TRUE(Check("NULL", "_anything_pp", &addr));
  for (const char *bad : {"null", "", "abc", " _1_hcFigure_p"}) {
    EXPECT_FALSE(Check(bad, "_hcFigure_p", &addr)) << bad;
    EXPECT_EQ(addr, nullptr) << bad;
  }
  const char *text = "abc";
  EXPECT_EQ(CheckPointer(text, &addr, "_hcFigure_p"), text);
}

TEST_F(TypeMap, DigitsAndGivenType) {
  void *addr;
  EXPECT_TRUE(Check("_1F2A3B40_hcFigure_p", "_hcFigure_p", &addr));
  EXPECT_EQ(addr, reinterpret_cast<void *>(0x1f2a3b40));
  EXPECT_TRUE(Check("_0_hcFigure_p", "_hcFigure_p", &addr));
  EXPECT_EQ(addr, nullptr);
  std::string noDigits = "_hcFigure_p";
  EXPECT_STREQ(CheckPointer(noDigits.c_str(), &addr, "_hcFigure_p"), "hcFigure_p");
  EXPECT_TRUE(Check("_10", nullptr, &addr));  // no expected type: any type
  EXPECT_EQ(addr, reinterpret_cast<void *>(0x10));
}

TEST_F(TypeMap, DescendantsStandForAncestorsOnly) {
  void *addr;
  EXPECT_TRUE(Check("_40_hcFigure_p", "_hcNode_p", &addr));
  EXPECT_EQ(addr, reinterpret_cast<void *>(0x40));
  EXPECT_TRUE(Check("_40_hcFigure_p", "_hcObject_p", &addr));
  EXPECT_TRUE(Check("_40_hcFigure_p", "_hcSubject_p", &addr));
  EXPECT_TRUE(Check("_40_class_hcFigure_p", "_hcNode_p", &addr));
  EXPECT_TRUE(Check("_40_hcFigure_pp", "_hcNode_pp", &addr));
  EXPECT_TRUE(Check("_40_hcFigurePathMotion_p", "_class_hcMotion_p", &addr));
  std::string wrong = "_40_hcFigure_p";
  EXPECT_STREQ(CheckPointer(wrong.c_str(), &addr, "_hcSegment_p"), "_hcFigure_p");
  EXPECT_EQ(addr, reinterpret_cast<void *>(0x40));
  EXPECT_FALSE(Check("_40_hcNode_p", "_hcFigure_p", &addr));
  EXPECT_FALSE(Check("_40_hcHuman_p", "_hcFigure_p", &addr));
  EXPECT_FALSE(Check("_40_hcTimeline_p", "_hcObject_p", &addr));
  EXPECT_TRUE(Check("_40_hcTimeline_p", "_hcSubject_p", &addr));
}

TEST_F(TypeMap, TypeNameEquivalencesWorkBothWays) {
  void *addr;
  EXPECT_TRUE(Check("_8_Boolean_p", "_long_p", &addr));
  EXPECT_TRUE(Check("_8_long_p", "_Boolean_p", &addr));
  EXPECT_TRUE(Check("_8_hList_p", "_ListJoint", &addr));
  EXPECT_TRUE(Check("_8_BoundChannelSet_p", "_hcBoundChannelSet_p", &addr));
  EXPECT_FALSE(Check("_8_Boolean_p", "_int_p", &addr));
}

TEST_F(TypeMap, CacheKeepsOnlyTheLatestSubstitution) {
  void *addr;
  ASSERT_TRUE(Check("_1_hcFigure_p", "_hcNode_p", &addr));
  EXPECT_EQ(dbg::Cache(0).given, "_hcFigure_p");
  EXPECT_EQ(dbg::Cache(0).hits, 1);
  ASSERT_TRUE(Check("_1_hcFigure_p", "_hcNode_p", &addr));
  EXPECT_EQ(dbg::Cache(0).hits, 2);  // served from the cache
  ASSERT_TRUE(Check("_2_hcSegment_p", "_hcObject_p", &addr));
  EXPECT_EQ(dbg::Cache(0).given, "_hcSegment_p");
  EXPECT_EQ(dbg::Cache(0).expected, "_hcObject_p");
  EXPECT_EQ(dbg::Cache(0).hits, 1);
  for (int i = 1; i < dbg::CacheSlots(); ++i) EXPECT_EQ(dbg::Cache(i).hits, 0) << i;
  ASSERT_TRUE(Check("_1_hcFigure_p", "_hcNode_p", &addr));  // searched again
  EXPECT_EQ(dbg::Cache(0).given, "_hcFigure_p");
  EXPECT_EQ(dbg::Cache(0).hits, 1);
}

void *AddEight(void *p) { return static_cast<char *>(p) + 8; }

TEST_F(TypeMap, CastIsAppliedAndDuplicateRegistrationAppends) {
  RegisterType("_base", "_derived", AddEight);
  void *addr;
  ASSERT_TRUE(Check("_100_derived_p", "_base_p", &addr));
  EXPECT_EQ(addr, reinterpret_cast<void *>(0x108));
  ASSERT_TRUE(Check("_100_derived_p", "_base_p", &addr));  // cached: cast again
  EXPECT_EQ(addr, reinterpret_cast<void *>(0x108));
  // The chain's last node is never compared, so the same pair adds a node.
  EXPECT_EQ(dbg::ChainLength("_base"), 1);
  RegisterType("_base", "_derived", AddEight);
  EXPECT_EQ(dbg::ChainLength("_base"), 2);
  RegisterType("_base", "_other", nullptr);
  RegisterType("_base", "_derived", nullptr);  // now found before the end
  EXPECT_EQ(dbg::ChainLength("_base"), 3);
  ASSERT_TRUE(Check("_100_derived_p", "_base_p", &addr));
  EXPECT_EQ(addr, reinterpret_cast<void *>(0x108));
}

TEST_F(TypeMap, OverlongNamesNeverOverflow) {
  static const std::string longName = "_" + std::string(300, 'q');
  RegisterType("_short", longName.c_str(), nullptr);
  void *addr = kSentinel;
  std::string word = "_10" + longName + "_p";
  // A chain name of 255 characters or more fails without writing the address.
  EXPECT_NE(CheckPointer(word.c_str(), &addr, "_short_p"), nullptr);
  EXPECT_EQ(addr, kSentinel);
  std::string longGiven = "_10_" + std::string(5000, 'h') + "_p";
  EXPECT_FALSE(Check(longGiven, "_hcNode_p", &addr));
  std::string longExpected = "_" + std::string(5000, 'h') + "_p";
  EXPECT_FALSE(Check("_10_hcFigure_p", longExpected.c_str(), &addr));
}

TEST_F(TypeMap, GrowsPastItsInitialCapacity) {
  static std::string names[200];
  for (int i = 0; i < 200; ++i) {
    names[i] = "_grow" + std::to_string(i) + "x";
    RegisterType(names[i].c_str(), "_hcFigure", nullptr);
  }
  EXPECT_EQ(dbg::HeadCount(), 372);
  void *addr;
  EXPECT_TRUE(Check("_1_hcFigure_p", "_grow199x_p", &addr));
  EXPECT_TRUE(Check("_1_hcFigure_p", "_hcNode_p", &addr));
}

}  // namespace
