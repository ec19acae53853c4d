// Number formatting for every result the module writes, and the reading
// of integer words.
//
// Doubles are written exactly as Tcl_PrintDouble writes them: while the
// interpreter's precision (tcl_precision) is 0, the default, the shortest
// text that reads back to the same double, laid out as the interpreter lays
// it out; at any other precision by Tcl_PrintDouble itself.  "%g" texts and
// unsigned integers are written as snprintf writes them.  The fast paths use the
// standard library's shortest round-trip and fixed-precision conversions.
#pragma once

#include <tcl.h>

#include <cstddef>

namespace hk {

// Room for any text below, with its terminating zero.
constexpr std::size_t kNumberSpace = TCL_DOUBLE_SPACE > 40 ? TCL_DOUBLE_SPACE : 40;

// Each writes the text and its terminating zero into buf (kNumberSpace
// bytes) and answers the length.
int FormatDouble(double value, char *buf);
// The text of a finite value as FormatDouble writes it while the precision
// is 0.  Values whose shortest text may be a tie between two candidates are
// left to Tcl_PrintDouble, which reads the current precision.
int FormatShortest(double value, char *buf);
// Whether FormatShortest, called at any later time, writes the text that
// FormatDouble would write now: at the default precision, for finite values
// it does not leave to Tcl_PrintDouble.
bool CanFormatLater(double value);
int FormatG(double value, char *buf);  // "%g"
int FormatUnsigned(unsigned long value, char *buf);  // "%lu"

// The integer value of a word exactly as atol reads it (leading white
// space, a sign, decimal digits up to the first other character, saturated
// at the range of long), without the C library's locale machinery.
long ParseLong(const char *word);

// Follows the precision through writes of the interpreter's tcl_precision
// (the precision is shared by every interpreter of the thread).
void WatchPrecision(Tcl_Interp *interp);

}  // namespace hk
