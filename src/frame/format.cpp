#include "frame/format.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <cstring>

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
  char sci[40];
  const auto res = std::to_chars(sci, sci + sizeof sci, value, std::chars_format::scientific);
  *res.ptr = '\0';
  const char *p = sci;
  char *out = buf;
  if (*p == '-') *out++ = *p++;
  char digits[24];
  int n = 0;
  for (; *p && *p != 'e'; ++p)
    if (*p != '.') digits[n++] = *p;
  digits[n] = '\0';
  int exponent = *p == 'e' ? std::atoi(p + 1) : 0;
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
