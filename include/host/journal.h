// Host library: a journal of the most recent operations.
//
// Stand-in host operations record their name and converted arguments here so
// that tests can see exactly what the binding forwarded (defaults, narrowed
// numbers, copies).  Nothing in the module reads it.
#pragma once

#include <string>

namespace hcjournal {

// Records one call: "op arg1 arg2 ...".  Keeps the last 64 entries.
void record(const std::string &entry);

// Convenience: joins op and the printed arguments with single blanks.
template <class... A>
void call(const char *op, const A &...args);

// The most recent entry ("" when empty) and the entry n back (0 = last).
std::string last(int back = 0);
void clear();

std::string print(const char *s);
std::string print(const void *p);
std::string print(double d);
std::string print(long n);
inline std::string print(int n) { return print(static_cast<long>(n)); }
inline std::string print(short n) { return print(static_cast<long>(n)); }
inline std::string print(unsigned int n) { return print(static_cast<long>(n)); }
inline std::string print(bool b) { return print(static_cast<long>(b)); }
inline std::string print(float f) { return print(static_cast<double>(f)); }
inline std::string print(char *s) { return print(static_cast<const char *>(s)); }

template <class... A>
void call(const char *op, const A &...args) {
  std::string entry = op;
  ((entry += ' ', entry += print(args)), ...);
  record(entry);
}

}  // namespace hcjournal
