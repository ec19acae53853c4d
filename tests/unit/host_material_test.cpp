// Display flags, which only the host hands out: the host's flags and the
// commands that reach them.  Materials following their owners.
#include <gtest/gtest.h>
#include <tcl.h>

#include <string>

#include "frame/typed_pointer.h"
#include "host/material.h"

extern "C" int Hktcl_Init(Tcl_Interp *interp);

namespace {

TEST(HostDisplayFlags, DefaultsRoundTripAndRange) {
  hcDisplayFlags flags;
  EXPECT_EQ(flags.get(hcDisplayFlags::VISIBLE), 1);
  EXPECT_EQ(flags.get(hcDisplayFlags::RENDER_STYLE), hcDisplayFlags::SHADED);
  EXPECT_EQ(flags.get(hcDisplayFlags::FACE_NORMS), 0);
  flags.set(hcDisplayFlags::RENDER_STYLE, hcDisplayFlags::TRANSPARENT_WIREFRAME);
  flags.set(hcDisplayFlags::NODE_ENUM, -3);
  EXPECT_EQ(flags.get(hcDisplayFlags::RENDER_STYLE), hcDisplayFlags::TRANSPARENT_WIREFRAME);
  EXPECT_EQ(flags.get(hcDisplayFlags::NODE_ENUM), -3);
  flags.set(9, 5);
  flags.set(-1, 5);
  EXPECT_EQ(flags.get(9), 0);
  EXPECT_EQ(flags.get(-1), 0);
}

class DisplayFlagCommands : public ::testing::Test {
 protected:
  void SetUp() override {
    interp_ = Tcl_CreateInterp();
    ASSERT_EQ(Hktcl_Init(interp_), TCL_OK);
    Tcl_SetVar(interp_, "df", hk::MakePointerString(&flags_, "_hcDisplayFlags_p").c_str(), 0);
  }
  void TearDown() override { Tcl_DeleteInterp(interp_); }
  std::string eval(const char *script) {
    int code = Tcl_Eval(interp_, script);
    return std::to_string(code) + " " + Tcl_GetStringResult(interp_);
  }

  Tcl_Interp *interp_ = nullptr;
  hcDisplayFlags flags_;
};

TEST_F(DisplayFlagCommands, ForwardSelectorsAndValuesUnchecked) {
  EXPECT_EQ(eval("hcDisplayFlags_set $df $hcDisplayFlags_RENDER_STYLE $hcDisplayFlags_WIREFRAME"), "0 ");
  EXPECT_EQ(flags_.get(hcDisplayFlags::RENDER_STYLE), hcDisplayFlags::WIREFRAME);
  EXPECT_EQ(eval("hcDisplayFlags_get $df 4"), "0 1");
  EXPECT_EQ(eval("hcDisplayFlags_set $df 12 7; hcDisplayFlags_get $df 12"), "0 0");
  EXPECT_EQ(eval("hcDisplayFlags_set $df 2x 7abc; hcDisplayFlags_get $df 2"), "0 7");
  EXPECT_EQ(eval("hcDisplayFlags_get $df"), "1 Wrong # args. hcDisplayFlags_get { hcDisplayFlags * } which ");
}

TEST_F(DisplayFlagCommands, ObjectCommandBindsOnly) {
  EXPECT_EQ(eval("hcDisplayFlags d -this $df; d set 0 0; d get 0"), "0 0");
  EXPECT_EQ(eval("d"), "1 hcDisplayFlags methods : { cget configure set get  }");
  EXPECT_EQ(eval("d configure -x 1"), "1 Invalid configure option. Must be {  }");
  EXPECT_EQ(eval("rename d {}; hcDisplayFlags"), "1 No constructor available.");
  EXPECT_EQ(flags_.get(hcDisplayFlags::VISIBLE), 0);  // bound, not destroyed
}

TEST(HostMaterial, OwnersThatGoLeaveTheirMaterialsShared) {
  auto *owner = new hcObject;
  hcMaterial *m = hcMaterial::create("unit-owned");
  ASSERT_NE(m, nullptr);
  EXPECT_EQ(m->makeLocal(owner), 1);
  EXPECT_EQ(hcMaterial::find("unit-owned"), nullptr);
  EXPECT_EQ(hcMaterial::find("unit-owned", owner), m);
  delete owner;
  EXPECT_EQ(m->getOwner(), nullptr);
  EXPECT_EQ(hcMaterial::find("unit-owned"), m);
  EXPECT_EQ(hcMaterial::destroy(nullptr, m), 1);
}

}  // namespace
