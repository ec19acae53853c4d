// Host library, private: following a subject for as long as it lives.
//
// Materials follow their owners, landmarks their segments and glyphs their
// parts.  A Watch holds an observer attached to the subject for the
// DESTROY protocol; when the subject is destroyed the observer forgets it
// and deletes itself, so the watch answers null from then on.  The observer
// is an ordinary host observer that scripts can see and rebind; a watch
// whose observer no longer observes the subject it was made for answers
// null too.
#pragma once

#include "host/core.h"

namespace hcmaterial_detail {

class Watch {
 public:
  Watch() = default;
  // label names the observer ("hcMaterial", "hcSiteGlyph", ...).
  Watch(const char *label, hcSubject *subject) { watch(label, subject); }
  ~Watch() { release(); }
  Watch(const Watch &) = delete;
  Watch &operator=(const Watch &) = delete;

  // Follows subject instead of whatever was followed before (nothing for
  // null or a subject that is not alive).
  void watch(const char *label, hcSubject *subject);
  // The subject while it lives and the observer still follows it.
  hcSubject *target();
  template <class T>
  T *as() {
    return dynamic_cast<T *>(target());
  }
  void release();

 private:
  class Observer;
  friend class Observer;
  Observer *observer_ = nullptr;
  hcSubject *subject_ = nullptr;
};

}  // namespace hcmaterial_detail
