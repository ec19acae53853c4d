// Host library: tagged values and property lists.
//
// A value holds one kind at a time: a number, a text (copied), an object
// pointer (not owned) or the sixteen floats of a matrix or three of a
// vector (copied).  There is no material kind: a material is kept as
// V_ATTRIBUTE.  Setting a kind clears whatever the value held before.
#include <cstdio>

#include "host/core.h"
#include "core/journal.h"

namespace {

const char *const kTypeNames[] = {
    "undefined", "unsupplied", "variable",  "op",          "ignore",     "number",
    "matrix",    "string",     "dof",       "vector",      "funcall",    "figure",
    "segment",   "light",      "site",      "joint",       "constraint", "node",
    "edge",      "face",       "curve",     "patch",       "attribute",  "texture",
    "numberptr", "transformptr", "jointangle", "jointcouple", "defnode", "defedge",
    "defface",   "dynstring",  "glyph",     "scene"};

constexpr int kNumTypeNames = sizeof kTypeNames / sizeof kTypeNames[0];

const char *typeName(int t) {
  return t >= 0 && t < kNumTypeNames ? kTypeNames[t] : "unknown";
}

}  // namespace

// Clears what a value holds and tags it with a kind.
#define HC_VALUE_RETAG(kind)           \
  do {                                 \
    type_ = (kind);                    \
    number_ = 0;                       \
    text_.clear();                     \
    pointer_ = nullptr;                \
    for (float &f_ : values_) f_ = 0;  \
  } while (0)

hcValue::hcValue() { hccore::call("hcValue::hcValue"); }

// Copies are made for by-value arguments and property storage; they are not
// journalled, nor is the destructor (hcValue::destroy is).
hcValue::hcValue(const hcValue &other) = default;
hcValue &hcValue::operator=(const hcValue &other) = default;
hcValue::~hcValue() = default;

void hcValue::nil() {
  hccore::call("hcValue::nil");
  HC_VALUE_RETAG(V_UNDEF);
}

hcValue *hcValue::copy() {
  hccore::call("hcValue::copy");
  return new hcValue(*this);
}

void hcValue::destroy(hcValue *val) {
  hccore::call("hcValue::destroy", val);
  delete val;
}

hcValue::vType hcValue::getType() {
  hccore::call("hcValue::getType");
  return type_;
}

const char *hcValue::getTypeName() {
  hccore::call("hcValue::getTypeName");
  return typeName(type_);
}

const char *hcValue::tessprint() {
  hccore::call("hcValue::tessprint");
  char buf[64];
  description_ = typeName(type_);
  switch (type_) {
    case V_UNDEF:
      break;
    case V_NUMBER:
      std::snprintf(buf, sizeof buf, " %g", number_);
      description_ += buf;
      break;
    case V_STRING:
    case V_DYNSTRING:
      description_ += ' ';
      description_ += text_;
      break;
    case V_VECTOR:
    case V_MATRIX:
      for (int i = 0; i < (type_ == V_VECTOR ? 3 : 16); ++i) {
        std::snprintf(buf, sizeof buf, " %g", values_[i]);
        description_ += buf;
      }
      break;
    default:
      std::snprintf(buf, sizeof buf, " %p", pointer_);
      description_ += pointer_ ? buf : " null";
      break;
  }
  return description_.c_str();
}


void hcValue::set(float f) {
  hccore::call("hcValue::set number", f);
  HC_VALUE_RETAG(V_NUMBER);
  number_ = f;
}

void hcValue::set(const char *s) {
  hccore::call("hcValue::set string", s);
  if (!s) {
    HC_VALUE_RETAG(V_UNDEF);
    return;
  }
  std::string copy = s;  // s may point into this value's own text
  HC_VALUE_RETAG(V_STRING);
  text_ = std::move(copy);
}

#define HC_VALUE_POINTER_KIND(Type, Kind, label)                      \
  void hcValue::set(Type *p) {                                        \
    hccore::call("hcValue::set " label, static_cast<const void *>(p)); \
    HC_VALUE_RETAG(Kind);              \
    pointer_ = p;                                                     \
  }                                                                   \
  int hcValue::get(Type *&p) {                                        \
    hccore::call("hcValue::get " label);                              \
    if (type_ != Kind) return 0;                                      \
    p = static_cast<Type *>(pointer_);                                \
    return 1;                                                         \
  }

HC_VALUE_POINTER_KIND(hcFigure, V_FIGURE, "figure")
HC_VALUE_POINTER_KIND(hcSegment, V_SEGMENT, "segment")
HC_VALUE_POINTER_KIND(hcSite, V_SITE, "site")
HC_VALUE_POINTER_KIND(hcJoint, V_JOINT, "joint")
HC_VALUE_POINTER_KIND(hcMaterial, V_ATTRIBUTE, "material")
HC_VALUE_POINTER_KIND(hcConstraint, V_CONSTRAINT, "constraint")
HC_VALUE_POINTER_KIND(hcTexture, V_TEXTURE, "texture")
HC_VALUE_POINTER_KIND(hcDOF, V_DOF, "dof")

#undef HC_VALUE_POINTER_KIND

void hcValue::set(hMatrix *m) {
  hccore::call("hcValue::set matrix", static_cast<const void *>(m));
  HC_VALUE_RETAG(m ? V_MATRIX : V_UNDEF);
  if (!m) return;
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) values_[r * 4 + c] = m->m[r][c];
}

void hcValue::set(hVector *v) {
  hccore::call("hcValue::set vector", static_cast<const void *>(v));
  HC_VALUE_RETAG(v ? V_VECTOR : V_UNDEF);
  if (!v) return;
  for (int i = 0; i < 3; ++i) values_[i] = v->v[i];
}

int hcValue::get(float &f) {
  hccore::call("hcValue::get number");
  if (type_ != V_NUMBER) return 0;
  f = number_;
  return 1;
}

int hcValue::get(char *&s) {
  hccore::call("hcValue::get string");
  if (type_ != V_STRING && type_ != V_DYNSTRING) return 0;
  s = text_.data();
  return 1;
}

int hcValue::get(hMatrix *&m) {
  hccore::call("hcValue::get matrix", static_cast<const void *>(m));
  if (type_ != V_MATRIX) return 0;
  if (m)
    for (int r = 0; r < 4; ++r)
      for (int c = 0; c < 4; ++c) m->m[r][c] = values_[r * 4 + c];
  return 1;
}

int hcValue::get(hVector *&v) {
  hccore::call("hcValue::get vector", static_cast<const void *>(v));
  if (type_ != V_VECTOR) return 0;
  if (v)
    for (int i = 0; i < 3; ++i) v->v[i] = values_[i];
  return 1;
}

// ---------------------------------------------------------------------------
// hcPropertyList

hcPropertyList::hcPropertyList() { hccore::call("hcPropertyList::hcPropertyList"); }

hcPropertyList::~hcPropertyList() { hccore::call("hcPropertyList::~hcPropertyList"); }

int hcPropertyList::get(const char *name, hcValue *value) {
  hccore::call("hcPropertyList::get", name, value);
  if (!name || !value) return 0;
  auto it = values_.find(name);
  if (it == values_.end()) return 0;
  *value = it->second;
  return 1;
}

int hcPropertyList::set(const char *name, hcValue value) {
  if (hccore::quietDepth() == 0) {
    std::string shown;
    {
      hccore::Quiet quiet;
      shown = value.tessprint();
    }
    hcjournal::call("hcPropertyList::set", name, shown.c_str());
  }
  if (!name || !*name) return 0;
  auto [it, added] = values_.try_emplace(name, value);
  if (!added) it->second = value;
  return added ? 1 : 2;
}

int hcPropertyList::remove(const char *name) {
  hccore::call("hcPropertyList::remove", name);
  if (!name) return 0;
  return values_.erase(name) ? 1 : 0;
}

hcPropertyList::charList hcPropertyList::names() {
  hccore::call("hcPropertyList::names");
  charList out;
  for (const auto &entry : values_) out.push_back(entry.first);  // map order: sorted
  return out;
}
