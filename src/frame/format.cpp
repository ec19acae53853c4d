#include "frame/format.h"

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace hk {
namespace {

// The precision last written to tcl_precision in an interpreter that loaded
// the module; 0 while it is the default.
int gPrecision = 0;

void ReadPrecision(Tcl_Interp *interp) {
  const char *text = Tcl_GetVar(interp, "tcl_precision", TCL_GLOBAL_ONLY);
  gPrecision = text ? std::atoi(text) : 0;
}

char *PrecisionTrace(ClientData, Tcl_Interp *interp, const char *, const char *, int flags) {
  if (!(flags & TCL_INTERP_DESTROYED)) ReadPrecision(interp);
  return nullptr;
}

// A positive double as whole / 10^k exactly, when whole has at most 18
// digits; false for longer expansions.
bool ExactWhole(double a, std::uint64_t &whole, int &k) {
  constexpr std::uint64_t kLimit = 999999999999999999ULL;  // 18 digits
  // a = m * 2^e, from the bits.
  const auto bits = std::bit_cast<std::uint64_t>(a);
  const int biased = static_cast<int>(bits >> 52);  // a is positive: no sign bit
  std::uint64_t m = bits & ((std::uint64_t{1} << 52) - 1);
  int e = -1074;
  if (biased != 0) {
    m |= std::uint64_t{1} << 52;
    e = biased - 1075;
  }
  if (m == 0) return false;
  const int zeros = __builtin_ctzll(m);
  m >>= zeros;
  e += zeros;
  k = 0;
  if (e >= 0) {
    if (e > 59 || m > (kLimit >> e)) return false;
    whole = m << e;
  } else {
    k = -e;
    if (k > 25) return false;  // 5^26 alone has 19 digits
    static constexpr auto kPow5 = [] {
      std::array<std::uint64_t, 26> p{};
      p[0] = 1;
      for (std::size_t i = 1; i < p.size(); ++i) p[i] = p[i - 1] * 5;
      return p;
    }();
    const std::uint64_t pow5 = kPow5[static_cast<std::size_t>(k)];
    if (m > kLimit / pow5) return false;
    whole = m * pow5;
  }
  return true;
}

// The exact decimal expansion of a positive double, when it has at most 18
// significant digits: fills the digits (without trailing zeros) and the
// decimal exponent, and answers their count; 0 for longer expansions.
// With 15 digits or fewer the expansion is the shortest text that reads
// back, since no two such decimals read back to the same double.  With 16
// to 18 the shortest text may fall exactly halfway between two candidates,
// where the interpreter's choice is its own.
constexpr int kOwnExactDigits = 15;
int ExactDigits(double a, char *digits, int &exponent) {
  std::uint64_t whole;
  int k;
  if (!ExactWhole(a, whole, k)) return 0;
  char text[24];
  const int length = static_cast<int>(std::to_chars(text, text + sizeof text, whole).ptr - text);
  int n = length;
  while (n > 1 && text[n - 1] == '0') --n;
  std::memcpy(digits, text, static_cast<std::size_t>(n));
  exponent = length - 1 - k;
  return n;
}

// How a layout writes its numbers: the interpreter's (fixed form from 1e-4
// up to 1e17, always with a fraction, exponents of one digit or more) or
// "%g"'s (fixed form from 1e-4 up to 1e6, no fraction on integral values,
// exponents of two digits or more).
struct Style {
  int maxFixed;      // largest decimal exponent written in fixed form
  int minExponent;   // fewest exponent digits
  bool pointZero;    // ".0" after integral values
};
constexpr Style kInterpreter{16, 1, true};
constexpr Style kG{5, 2, false};

// Lays out n significant digits with value d.ddd x 10^exponent in style.
char *LayOut(char *out, const char *digits, int n, int exponent, Style style) {
  if (exponent < -4 || exponent > style.maxFixed) {
    *out++ = digits[0];
    if (n > 1) {
      *out++ = '.';
      std::memcpy(out, digits + 1, static_cast<std::size_t>(n - 1));
      out += n - 1;
    }
    *out++ = 'e';
    *out++ = exponent < 0 ? '-' : '+';
    const int x = exponent < 0 ? -exponent : exponent;
    if (x >= 100) *out++ = static_cast<char>('0' + x / 100);
    if (x >= 10 || style.minExponent > 1) *out++ = static_cast<char>('0' + x / 10 % 10);
    *out++ = static_cast<char>('0' + x % 10);
    return out;
  }
  if (exponent < 0) {
    // 0.000ddd
    *out++ = '0';
    *out++ = '.';
    for (int z = -exponent - 1; z > 0; --z) *out++ = '0';
    std::memcpy(out, digits, static_cast<std::size_t>(n));
    return out + n;
  }
  const int whole = exponent + 1;  // digits before the point
  if (n <= whole) {
    std::memcpy(out, digits, static_cast<std::size_t>(n));
    out += n;
    for (int z = whole - n; z > 0; --z) *out++ = '0';
    if (style.pointZero) {
      *out++ = '.';
      *out++ = '0';
    }
    return out;
  }
  std::memcpy(out, digits, static_cast<std::size_t>(whole));
  out += whole;
  *out++ = '.';
  std::memcpy(out, digits + whole, static_cast<std::size_t>(n - whole));
  return out + (n - whole);
}

}  // namespace

void WatchPrecision(Tcl_Interp *interp) {
  ReadPrecision(interp);
  Tcl_TraceVar(interp, "tcl_precision", TCL_GLOBAL_ONLY | TCL_TRACE_WRITES, PrecisionTrace, nullptr);
}

int FormatDouble(double value, char *buf) {
  if (gPrecision != 0 || !std::isfinite(value)) {
    // Tcl_PrintDouble does not use its interpreter.
    Tcl_PrintDouble(nullptr, value, buf);
    return static_cast<int>(std::strlen(buf));
  }
  return FormatShortest(value, buf);
}

bool CanFormatLater(double value) {
  if (gPrecision != 0 || !std::isfinite(value)) return false;
  char digits[24];
  int exponent;
  return ExactDigits(std::fabs(value), digits, exponent) <= kOwnExactDigits;
}

int FormatShortest(double value, char *buf) {
  char *out = buf;
  if (std::signbit(value)) *out++ = '-';
  const double a = std::fabs(value);
  char digits[24];
  int exponent = 0;
  const int n = ExactDigits(a, digits, exponent);
  if (n > kOwnExactDigits) {
    // The shortest text may be a tie between two candidates.
    Tcl_PrintDouble(nullptr, value, buf);
    return static_cast<int>(std::strlen(buf));
  }
  if (n > 0) {
    out = LayOut(out, digits, n, exponent, kInterpreter);
  } else {
    // The shortest round-trip digits as d.ddde-XX; moving the first digit
    // onto the point makes the digits contiguous.
    char sci[40];
    const char *end = std::to_chars(sci, sci + sizeof sci, a, std::chars_format::scientific).ptr;
    const char *e = end - 2;  // at least one exponent digit after "e-"
    while (*e != 'e') --e;
    int x = 0;
    for (const char *p = e + 2; p < end; ++p) x = x * 10 + (*p - '0');
    const char *first = sci;
    if (sci[1] == '.') {
      sci[1] = sci[0];
      first = sci + 1;
    }
    out = LayOut(out, first, static_cast<int>(e - first), e[1] == '-' ? -x : x, kInterpreter);
  }
  *out = '\0';
  return static_cast<int>(out - buf);
}

long ParseLong(const char *word) {
  const char *p = word;
  while (*p == ' ' || (*p >= '\t' && *p <= '\r')) ++p;
  const bool negative = *p == '-';
  if (*p == '-' || *p == '+') ++p;
  // Accumulated as a negative number, whose range holds every long.
  constexpr long kMin = std::numeric_limits<long>::min();
  long value = 0;
  for (; *p >= '0' && *p <= '9'; ++p) {
    const int digit = *p - '0';
    if (value < (kMin + digit) / 10) {
      value = kMin;  // saturated; the remaining digits change nothing
      while (*p >= '0' && *p <= '9') ++p;
      break;
    }
    value = value * 10 - digit;
  }
  if (negative) return value;
  return value == kMin ? std::numeric_limits<long>::max() : -value;
}

namespace {

// Six significant digits of a, correctly rounded (ties to even, as the C
// library rounds an exact tie), when exact arithmetic on doubles or
// integers can find them: digits is 100000..999999 and a rounds to
// digits x 10^(exponent - 5).  False when a is out of the fast range.
bool SixDigits(double a, std::uint64_t &digits, int &exponent) {
  static constexpr double kPow10[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                      1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
  static constexpr std::uint64_t kPow10Int[] = {1,         10,         100,         1000,         10000,
                                                100000,    1000000,    10000000,    100000000,    1000000000,
                                                10000000000, 100000000000, 1000000000000, 10000000000000};
  // The bits of 5^k: a x 10^k is exact when the odd part of a's significand
  // and 5^k fit in 53 bits together.
  static constexpr int kPow5Bits[] = {0,  3,  5,  7,  10, 12, 14, 17, 19, 21, 24, 26,
                                      28, 31, 33, 35, 38, 40, 42, 45, 47, 49, 52};
  const auto bits = std::bit_cast<std::uint64_t>(a);
  const int biased = static_cast<int>(bits >> 52);
  if (biased == 0) return false;  // zero and subnormals
  std::uint64_t m = (bits & ((std::uint64_t{1} << 52) - 1)) | (std::uint64_t{1} << 52);
  const int e2 = biased - 1075;             // a = m x 2^e2
  const int significant = 53 - __builtin_ctzll(m);  // bits of m's odd part
  // floor(log10(a)), or one less.
  int x = ((biased - 1023) * 78913) >> 18;
  for (int tries = 0; tries < 2; ++tries, ++x) {
    const int k = 5 - x;
    if (k >= 0) {
      if (k > 22 || significant + kPow5Bits[k] > 53) return false;
      const double scaled = a * kPow10[k];  // exact
      if (scaled >= 1e6) continue;
      if (scaled < 1e5) return false;  // the estimate was never too high
      auto whole = static_cast<std::uint64_t>(scaled);
      const double fraction = scaled - static_cast<double>(whole);  // exact
      if (fraction > 0.5 || (fraction == 0.5 && (whole & 1))) ++whole;
      digits = whole;
      exponent = x;
    } else {
      // a >= 1e6: an integer when its significand has no fraction bits.
      if (-k > 13 || e2 > 10 || e2 + 53 - significant < 0) return false;
      const std::uint64_t n = e2 >= 0 ? m << e2 : m >> -e2;
      const std::uint64_t p = kPow10Int[-k];
      std::uint64_t q = n / p;
      if (q >= 1000000) continue;
      const std::uint64_t r = n % p;
      if (2 * r > p || (2 * r == p && (q & 1))) ++q;
      digits = q;
      exponent = x;
    }
    if (digits == 1000000) {
      digits = 100000;
      ++exponent;
    }
    return true;
  }
  return false;
}

}  // namespace

int FormatG(double value, char *buf) {
  std::uint64_t six = 0;
  int x = 0;
  if (!std::isfinite(value) || !SixDigits(std::fabs(value), six, x)) {
    const auto res = std::to_chars(buf, buf + kNumberSpace - 1, value, std::chars_format::general, 6);
    *res.ptr = '\0';
    return static_cast<int>(res.ptr - buf);
  }
  // Two digits at a time: three short dependent divisions instead of six.
  static constexpr auto kPairs = [] {
    std::array<char, 200> p{};
    for (int i = 0; i < 100; ++i) {
      p[static_cast<std::size_t>(2 * i)] = static_cast<char>('0' + i / 10);
      p[static_cast<std::size_t>(2 * i + 1)] = static_cast<char>('0' + i % 10);
    }
    return p;
  }();
  const auto high = static_cast<unsigned>(six / 10000), low = static_cast<unsigned>(six % 10000);
  char digits[6];
  std::memcpy(digits, &kPairs[2 * high], 2);
  std::memcpy(digits + 2, &kPairs[2 * (low / 100)], 2);
  std::memcpy(digits + 4, &kPairs[2 * (low % 100)], 2);
  int n = 6;
  while (n > 1 && digits[n - 1] == '0') --n;
  char *out = buf;
  if (std::signbit(value)) *out++ = '-';
  out = LayOut(out, digits, n, x, kG);
  *out = '\0';
  return static_cast<int>(out - buf);
}

int FormatUnsigned(unsigned long value, char *buf) {
  const auto res = std::to_chars(buf, buf + kNumberSpace - 1, value);
  *res.ptr = '\0';
  return static_cast<int>(res.ptr - buf);
}

}  // namespace hk
