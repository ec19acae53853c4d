// The fast number formatting against the interpreter's and the C library's.
#include <gtest/gtest.h>
#include <tcl.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "frame/format.h"

namespace {

// Random doubles (bit patterns, and floats widened).  Tcl_PrintDouble of
// large exponents is slow: the test command compares 10^6 (10^5 under the
// sanitizers); HK_FORMAT_VALUES asks for more (10^7 for a full run).
#if defined(__SANITIZE_ADDRESS__)
constexpr long kRandom = 100000;
#else
constexpr long kRandom = 1000000;
#endif
long RandomCount() {
  const char *asked = std::getenv("HK_FORMAT_VALUES");
  return asked ? std::atol(asked) : kRandom;
}

// The interpreter library's subsystems, which Tcl_PrintDouble relies on.
struct TclReady : ::testing::Environment {
  void SetUp() override { Tcl_FindExecutable(nullptr); }
};
const auto *const kTclReady = ::testing::AddGlobalTestEnvironment(new TclReady);

std::string Printed(double v) {
  char buf[TCL_DOUBLE_SPACE];
  Tcl_PrintDouble(nullptr, v, buf);
  return buf;
}
std::string Fast(double v) {
  char buf[hk::kNumberSpace];
  const int n = hk::FormatDouble(v, buf);
  EXPECT_EQ(n, static_cast<int>(std::strlen(buf)));
  return buf;
}
std::string SnprintfG(double v) {
  char buf[64];
  std::snprintf(buf, sizeof buf, "%g", v);
  return buf;
}
std::string FastG(double v) {
  char buf[hk::kNumberSpace];
  hk::FormatG(v, buf);
  return buf;
}

// The values where layouts change or digits are scarce.
std::vector<double> HardCases() {
  using L = std::numeric_limits<double>;
  std::vector<double> v = {0.0, -0.0, L::min(), L::denorm_min(), L::max(), -L::max(), L::infinity(),
                           -L::infinity(), L::quiet_NaN(), 9007199254740991.0, 9007199254740992.0,
                           9007199254740993.0, 0.1, 0.2, 0.3, 1.0 / 3, 2.0 / 3, 123456789012345.0,
                           1234567890123456.0, 12345678901234567.0, 0.1f, 1.5, 100.0, 1e16, 1e17, 1e-4,
                           1e-5, 0.00012345, 0.000012345, 5e-324, 1.7976931348623157e308};
  for (int e = -30; e <= 30; ++e) {
    const double p = std::pow(10.0, e);
    for (double x : {p, std::nextafter(p, 0.0), std::nextafter(p, L::infinity()), 9.999999 * p, 1.000001 * p,
                     0.5 * p})
      v.insert(v.end(), {x, -x});
  }
  return v;
}

void Compare(const std::vector<double> &values) {
  int shown = 0;
  for (double x : values) {
    if (Fast(x) != Printed(x) && shown++ < 10) ADD_FAILURE() << Printed(x) << " written as " << Fast(x);
    if (FastG(x) != SnprintfG(x) && shown++ < 10) ADD_FAILURE() << SnprintfG(x) << " written as " << FastG(x);
  }
}

TEST(Format, HardCasesMatchTheInterpreterAndSnprintf) { Compare(HardCases()); }

TEST(Format, ShortBinaryFractionsMatch) {
  // m / 2^j: the values with a short exact decimal expansion, and their
  // neighbours whose expansion is too long for the short path.
  std::vector<double> values;
  for (int j = 0; j <= 24; ++j)
    for (int m = 1; m <= 20000; m += (m < 2000 ? 1 : 7)) {
      const double v = std::ldexp(static_cast<double>(m), -j);
      values.insert(values.end(), {v, -v, v * 1e6, std::nextafter(v, 0.0)});
    }
  for (double big = 1; big < 1e18; big *= 3) values.insert(values.end(), {big, big + 1, -big});
  Compare(values);
}

TEST(Format, RandomBitPatternsAndFloatsMatch) {
  std::mt19937_64 rng(20261124);
  std::vector<double> values;
  values.reserve(4096);
  const long count = RandomCount();
  for (long i = 0; i < count; ++i) {
    const std::uint64_t bits = rng();
    double d;
    if (i % 2) {
      std::memcpy(&d, &bits, sizeof d);
    } else {
      float f;
      const std::uint32_t b32 = static_cast<std::uint32_t>(bits);
      std::memcpy(&f, &b32, sizeof f);
      d = f;
    }
    values.push_back(d);
    if (values.size() == 4096) {
      Compare(values);
      values.clear();
    }
  }
  Compare(values);
}

TEST(Format, EverydayFloatsAndSixDigitTiesMatch) {
  // Floats of everyday sizes (where "%g" finds its digits by exact scaling),
  // and values exactly halfway between two six-digit texts.
  std::mt19937_64 rng(42);
  std::uniform_real_distribution<float> unit(-1.0f, 1.0f);
  std::uniform_int_distribution<int> decade(-9, 19);
  std::vector<double> values;
  for (long i = 0; i < RandomCount() / 4; ++i) {
    values.push_back(static_cast<double>(unit(rng) * std::pow(10.0f, static_cast<float>(decade(rng)))));
    const std::uint64_t six = 100000 + rng() % 900000;
    const double tie = (static_cast<double>(six) + 0.5) * std::pow(10.0, static_cast<int>(rng() % 14) - 6);
    values.insert(values.end(), {tie, std::nextafter(tie, 0.0), std::nextafter(tie, 1e300), -tie});
    if (values.size() >= 4096) {
      Compare(values);
      values.clear();
    }
  }
  for (double nines : {999999.5, 9999995.0, 99999.95, 0.9999995, 999999.4999, 1e6 - 0.5, 1e13 * 999999.5})
    values.insert(values.end(), {nines, std::nextafter(nines, 0.0), std::nextafter(nines, 1e300)});
  Compare(values);
}

TEST(Format, OtherPrecisionsAreTheInterpretersOwn) {
  Tcl_Interp *interp = Tcl_CreateInterp();
  hk::WatchPrecision(interp);
  for (int precision = 1; precision <= 17; ++precision) {
    Tcl_SetVar(interp, "tcl_precision", std::to_string(precision).c_str(), TCL_GLOBAL_ONLY);
    for (double x : {0.1, 1.0 / 3, 1e20, 123.456, -2.5e-7}) EXPECT_EQ(Fast(x), Printed(x)) << precision;
  }
  Tcl_SetVar(interp, "tcl_precision", "0", TCL_GLOBAL_ONLY);
  EXPECT_EQ(Fast(0.1), "0.1");
  Tcl_DeleteInterp(interp);
}

TEST(Format, TextsLeftForLaterDoNotDependOnThePrecision) {
  Tcl_Interp *interp = Tcl_CreateInterp();
  hk::WatchPrecision(interp);
  std::vector<double> values = HardCases();
  std::mt19937_64 random(7);
  for (int i = 0; i < 20000; ++i) {
    std::uint64_t bits = random();
    double d;
    std::memcpy(&d, &bits, sizeof d);
    values.push_back(d);
    values.push_back(static_cast<float>(static_cast<std::int32_t>(bits) % 100000) / 64.0f);
  }
  values.insert(values.end(), {1e17f, 9007199254740993.0, 1234567890123456.5, 0.5, 1.5, 3.0});
  std::vector<std::string> now(values.size());
  std::vector<bool> later(values.size());
  int deferred = 0, kept = 0;
  for (std::size_t i = 0; i < values.size(); ++i) {
    now[i] = Fast(values[i]);
    later[i] = hk::CanFormatLater(values[i]);
    (later[i] ? deferred : kept) += 1;
  }
  EXPECT_GT(deferred, 0);
  EXPECT_GT(kept, 0);  // non-finite values and ties are written at once
  Tcl_SetVar(interp, "tcl_precision", "4", TCL_GLOBAL_ONLY);
  EXPECT_FALSE(hk::CanFormatLater(0.5));
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (!later[i]) continue;
    char buf[hk::kNumberSpace];
    hk::FormatShortest(values[i], buf);
    ASSERT_EQ(std::string(buf), now[i]) << values[i];
  }
  Tcl_SetVar(interp, "tcl_precision", "0", TCL_GLOBAL_ONLY);
  Tcl_DeleteInterp(interp);
}

TEST(Format, IntegersMatchSnprintf) {
  char buf[hk::kNumberSpace], want[64];
  constexpr unsigned long kMax = std::numeric_limits<unsigned long>::max();
  for (unsigned long v : {0UL, 1UL, 42UL, kMax / 2, kMax / 2 + 1, kMax}) {
    hk::FormatUnsigned(v, buf);
    std::snprintf(want, sizeof want, "%lu", v);
    EXPECT_STREQ(buf, want);
  }
}

TEST(Format, IntegerWordsReadAsAtolReadsThem) {
  std::vector<std::string> words = {"", "0", "1", "-1", "+7", " 12", "\t\n\v\f\r 3", "12abc", "abc", "- 5", "--5",
                                    "0x10", "007", "1e3", "3.9", "-0", "9223372036854775807",
                                    "9223372036854775808", "99999999999999999999", "-9223372036854775808",
                                    "-9223372036854775809", "-99999999999999999999", "2147483648", "+", "-"};
  std::mt19937_64 rng(7);
  const char alphabet[] = " +-0123456789x\t";
  for (int i = 0; i < 100000; ++i) {
    std::string w;
    for (int n = static_cast<int>(rng() % 24); n > 0; --n) w += alphabet[rng() % (sizeof alphabet - 1)];
    words.push_back(w);
  }
  for (const std::string &w : words) ASSERT_EQ(hk::ParseLong(w.c_str()), std::atol(w.c_str())) << "[" << w << "]";
}

}  // namespace
