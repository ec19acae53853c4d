// Stand-in host: helpers shared by the host's own sources (journal entries of
// operations, 4x4 arithmetic, list helpers).  Private to the stand-in.
#pragma once

#include <string>
#include <vector>

#include "core/journal.h"
#include "host/figure.h"

// ---------------------------------------------------------------------------
// Helpers shared by the figure sources.
namespace hcfigure_detail {

// Journal text of an argument: vectors and matrices passed by value print
// their numbers; everything else prints as hcjournal::print does.
std::string argText(const hVector &v);
std::string argText(const hMatrix &m);
template <class T>
std::string argText(const T &x) {
  return hcjournal::print(x);
}

// Records "op args..." in the journal when the operation starts (unless an
// enclosing host operation is running) and keeps the journal quiet while
// the operation runs, so that only the operation the caller asked for shows.
class OpRecord {
 public:
  template <class... A>
  explicit OpRecord(const char *op, const A &...args) {
    if (hcjournal::on && hccore::quietDepth() == 0) {
      std::string entry = op;
      ((entry += ' ', entry += argText(args)), ...);
      hcjournal::record(entry);
    }
    ++hccore::quietDepth();
  }
  ~OpRecord() { --hccore::quietDepth(); }
  OpRecord(const OpRecord &) = delete;
  OpRecord &operator=(const OpRecord &) = delete;
};

// Address of an object passed by reference, for the journal.
inline const void *addr(const void *p) { return p; }

// 4x4 helpers (column vectors, translation in column 3).
hMatrix mul(const hMatrix &a, const hMatrix &b);
hMatrix inverse(const hMatrix &a);  // general; identity if singular
hMatrix rotation(const hVector &axis, float angle);  // unit axis
hMatrix translation(const hVector &t);
hMatrix fromXYZ(const hVector &angles);  // fixed-axis x-y-z angles
hVector toXYZ(const hMatrix &m);
hVector apply(const hMatrix &m, const hVector &p);  // m * p as a point
hVector origin(const hMatrix &m);

// hList helpers.
bool contains(hList *head, const void *data);
void appendOnce(hList **head, void *data);
void remove(hList **head, const void *data);
template <class T, class F>
void forEach(hList *head, F fn) {
  for (hList *n = hList::iterator(head, nullptr); n;
       n = hList::iterator(head, n))
    fn(static_cast<T *>(n->getData()));
}
// The data of a list as a vector (safe to iterate while the list changes).
template <class T>
std::vector<T *> items(hList *head) {
  std::vector<T *> out;
  forEach<T>(head, [&](T *x) { out.push_back(x); });
  return out;
}

bool sameName(hcObject *o, const char *name);

}  // namespace hcfigure_detail
