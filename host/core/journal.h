// Stand-in host: a journal of the most recent operations.
//
// Stand-in host operations record their name and converted arguments here so
// that tests can see exactly what the binding forwarded (defaults, narrowed
// numbers, copies).  Nothing in the module reads it, and it is private to the
// stand-in: only the test-support extension and the host's unit tests turn
// it on.  While it is off (the default) recording costs one predictable
// branch and no formatting.
#pragma once

#include <string>

#include "host/core.h"

namespace hcjournal {

// True while the journal records; off until setEnabled(true).
extern bool on;
void setEnabled(bool enabled);

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
  if (!on) return;
  std::string entry = op;
  ((entry += ' ', entry += print(args)), ...);
  record(entry);
}

}  // namespace hcjournal

// ---------------------------------------------------------------------------
// Journal helpers of the host's own sources.  While a host operation runs
// other host operations on its own behalf it holds a Quiet scope, so that the
// journal shows the operation its caller asked for and not its internals.
namespace hccore {
int &quietDepth();
class Quiet {
 public:
  Quiet() { ++quietDepth(); }
  ~Quiet() { --quietDepth(); }
  Quiet(const Quiet &) = delete;
  Quiet &operator=(const Quiet &) = delete;
};
// hcjournal::call, unless a Quiet scope is open.
template <class... A>
void call(const char *op, const A &...args) {
  if (hcjournal::on && quietDepth() == 0) hcjournal::call(op, args...);
}
// Destructor entries.  Every destructor of a class hierarchy calls
// destroying(this, "Class::~Class") first; only the first call for an object
// (the most derived destructor's) counts.  The root destructor calls
// destroyed(this) last, which records that entry, so that the journal shows
// one entry, for the class that was deleted, after everything the
// destruction itself did.
void destroying(const void *self, const char *op);
void destroyed(const void *self);
// The descriptor of the class named, without a journal entry.
hcType *typeNamed(const char *name);
}  // namespace hccore
