#include "core/journal.h"

#include <cstdio>
#include <deque>

namespace hcjournal {

bool on = false;
void setEnabled(bool enabled) { on = enabled; }

namespace {
std::deque<std::string> &entries() {
  static std::deque<std::string> log;
  return log;
}
}  // namespace

void record(const std::string &entry) {
  auto &log = entries();
  log.push_back(entry);
  if (log.size() > 64) log.pop_front();
}

std::string last(int back) {
  auto &log = entries();
  if (back < 0 || static_cast<size_t>(back) >= log.size()) return "";
  return log[log.size() - 1 - back];
}

void clear() { entries().clear(); }

std::string print(const char *s) { return s ? std::string(s) : std::string("(null)"); }

std::string print(const void *p) {
  if (!p) return "null";
  char buf[32];
  std::snprintf(buf, sizeof buf, "%p", p);
  return buf;
}

std::string print(double d) {
  char buf[64];
  std::snprintf(buf, sizeof buf, "%g", d);
  return buf;
}

std::string print(long n) { return std::to_string(n); }

}  // namespace hcjournal
