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

// The exact decimal expansion of a positive double, when it has at most 18
// significant digits: fills the digits (without trailing zeros) and the
// decimal exponent, and answers their count; 0 for longer expansions.
// With 15 digits or fewer the expansion is the shortest text that reads
// back, since no two such decimals read back to the same double.  With 16
// to 18 the shortest text may fall exactly halfway between two candidates,
// where the interpreter's choice is its own.
int ExactDigits(double a, char *digits, int &exponent) {
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
  if (m == 0) return 0;
  const int zeros = __builtin_ctzll(m);
  m >>= zeros;
  e += zeros;
  std::uint64_t whole;  // a = whole / 10^k
  int k = 0;
  if (e >= 0) {
    if (e > 59 || m > (kLimit >> e)) return 0;
    whole = m << e;
  } else {
    k = -e;
    if (k > 25) return 0;  // 5^26 alone has 19 digits
    static constexpr auto kPow5 = [] {
      std::array<std::uint64_t, 26> p{};
      p[0] = 1;
      for (std::size_t i = 1; i < p.size(); ++i) p[i] = p[i - 1] * 5;
      return p;
    }();
    const std::uint64_t pow5 = kPow5[static_cast<std::size_t>(k)];
    if (m > kLimit / pow5) return 0;
    whole = m * pow5;
  }
  char text[24];
  const int length = static_cast<int>(std::to_chars(text, text + sizeof text, whole).ptr - text);
  int n = length;
  while (n > 1 && text[n - 1] == '0') --n;
  std::memcpy(digits, text, static_cast<std::size_t>(n));
  exponent = length - 1 - k;
  return n;
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
  // The shortest digits and the decimal exponent: value = d.ddd x 10^exponent.
  char *out = buf;
  char digits[24];
  int n = 0, exponent = 0;
  if (std::signbit(value)) *out++ = '-';
  n = ExactDigits(std::fabs(value), digits, exponent);
  if (n > 15) {
    Tcl_PrintDouble(nullptr, value, buf);
    return static_cast<int>(std::strlen(buf));
  }
  if (n == 0) {
    char sci[40];
    const auto res = std::to_chars(sci, sci + sizeof sci, std::fabs(value), std::chars_format::scientific);
    *res.ptr = '\0';
    const char *p = sci;
    n = 0;
    for (; *p && *p != 'e'; ++p)
      if (*p != '.') digits[n++] = *p;
    exponent = *p == 'e' ? std::atoi(p + 1) : 0;
  }
  if (exponent < -4 || exponent > 16) {
    // Exponent form for numbers below 1e-4 and from 1e17 on.
    *out++ = digits[0];
    if (n > 1) {
      *out++ = '.';
      for (int i = 1; i < n; ++i) *out++ = digits[i];
    }
    *out++ = 'e';
    *out++ = exponent < 0 ? '-' : '+';
    out = std::to_chars(out, buf + kNumberSpace, exponent < 0 ? -exponent : exponent).ptr;
  } else {
    // Fixed form, always with a fraction.
    int i = 0;
    if (exponent < 0) *out++ = '0';
    while (exponent-- >= 0) *out++ = i < n ? digits[i++] : '0';
    *out++ = '.';
    if (i >= n) {
      *out++ = '0';
    } else {
      while (++exponent < -1) *out++ = '0';
      while (i < n) *out++ = digits[i++];
    }
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

int FormatG(double value, char *buf) {
  const auto res = std::to_chars(buf, buf + kNumberSpace - 1, value, std::chars_format::general, 6);
  *res.ptr = '\0';
  return static_cast<int>(res.ptr - buf);
}

int FormatLong(long value, char *buf) {
  const auto res = std::to_chars(buf, buf + kNumberSpace - 1, value);
  *res.ptr = '\0';
  return static_cast<int>(res.ptr - buf);
}

int FormatUnsigned(unsigned long value, char *buf) {
  const auto res = std::to_chars(buf, buf + kNumberSpace - 1, value);
  *res.ptr = '\0';
  return static_cast<int>(res.ptr - buf);
}

}  // namespace hk
