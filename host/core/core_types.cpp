// Host library: run-time type descriptors and named type tables.
#include <cstring>
#include <deque>
#include <map>
#include <string_view>

#include "host/core.h"
#include "core/journal.h"

namespace {

// The class tree: each class after its direct base (null for a root).
struct TypeRow {
  const char *name;
  const char *base;
};

const TypeRow kTypeTree[] = {
    {"hcSubject", nullptr},
    {"hcObject", "hcSubject"},
    {"hcNode", "hcObject"},
    {"hcSegment", "hcNode"},
    {"hcJoint", "hcNode"},
    {"hcSite", "hcNode"},
    {"hcFigure", "hcNode"},
    {"hcGlyph", "hcNode"},
    {"hcViewConeGlyph", "hcGlyph"},
    {"hcSiteGlyph", "hcGlyph"},
    {"hcSegmentTraceGlyph", "hcGlyph"},
    {"hcGhostGlyph", "hcGlyph"},
    {"hcProjectionGlyph", "hcGlyph"},
    {"hcScene", "hcObject"},
    {"hcConstraint", "hcObject"},
    {"hcMaterial", "hcObject"},
    {"hcGeometry", "hcObject"},
    {"hcMeshGeometry", "hcGeometry"},
    {"hcLandmark", "hcObject"},
    {"hcLandmarkImpl", "hcLandmark"},
    {"hcChannel", "hcObject"},
    {"hcJointChannel", "hcChannel"},
    {"hcFigureChannel", "hcChannel"},
    {"hcRealtimeChannel", "hcChannel"},
    {"VisibilityChannel", "hcChannel"},
    {"hcMotion", "hcObject"},
    {"hcGroupMotion", "hcMotion"},
    {"hcDummyMotion", "hcMotion"},
    {"hcFigureMotion", "hcMotion"},
    {"hcScaleMotion", "hcMotion"},
    {"hcScaleSegMotion", "hcMotion"},
    {"hcJointMotion", "hcMotion"},
    {"hcTimedAttach", "hcMotion"},
    {"hcTimedConstraint", "hcMotion"},
    {"hcColorMotion", "hcMotion"},
    {"hcScriptMotion", "hcMotion"},
    {"hcChannelSetMotion", "hcMotion"},
    {"hcPathMotion", "hcMotion"},
    {"hcFigurePathMotion", "hcPathMotion"},
    {"hcTimeline", "hcSubject"},
    {"hcObserver", nullptr},
    {"VisibilityChannelObserver", "hcObserver"},
    {"hcRefObject", nullptr},
    {"hcPosture", "hcRefObject"},
    {"hcBone", nullptr},
    {"hcSegmentBone", "hcBone"},
    {"hcTwistBone", "hcBone"},
    {"hcType", nullptr},
    {"hList", nullptr},
    {"hVector", nullptr},
    {"hMatrix", nullptr},
    {"hcConstrHistory", nullptr},
    {"hcAnthroScale", nullptr},
    {"hcGlobal", nullptr},
    {"hcHuman", nullptr},
    {"hcValue", nullptr},
    {"hcPy", nullptr},
    {"hcChannelSet", nullptr},
    {"hcChannelBinding", nullptr},
    {"hcBoundChannelSet", nullptr},
    {"hcKit", nullptr},
    {"hcSim", nullptr},
    {"hcPropertyList", nullptr},
    {"hcTypeTable", nullptr},
    {"hcTwistLink", nullptr},
    {"hcDisplayFlags", nullptr},
    {"hcMeshInternals", nullptr},
    {"hcSmoothSkin", nullptr},
};

struct Descriptors {
  std::deque<hcType> types;  // stable addresses
  std::map<std::string, hcType *, std::less<>> byName;
};

// Built on first use and kept for the life of the process.
Descriptors &descriptors() {
  static Descriptors *table = [] {
    auto *d = new Descriptors;
    for (const TypeRow &row : kTypeTree) {
      hcType *base = row.base ? d->byName.at(row.base) : nullptr;
      d->types.emplace_back(row.name, base);
      d->byName[row.name] = &d->types.back();
    }
    return d;
  }();
  return *table;
}

// Registered type tables; kept for the life of the process.
std::map<std::string, hcTypeTable *, std::less<>> &tables() {
  static auto *registry = new std::map<std::string, hcTypeTable *, std::less<>>;
  return *registry;
}

}  // namespace

// ---------------------------------------------------------------------------
// hcType

hcType::hcType(const char *name, hcType *ancestor)
    : name_(name ? name : ""), ancestor_(ancestor) {
  if (ancestor_) ancestor_->descendents_.push_back(this);
}

const char *hcType::getName() {
  hccore::call("hcType::getName");
  return name_.c_str();
}

hcType *hcType::getAncestor() {
  hccore::call("hcType::getAncestor");
  return ancestor_;
}

int hcType::getNumAncestors() {
  hccore::call("hcType::getNumAncestors");
  int n = 0;
  for (hcType *t = ancestor_; t; t = t->ancestor_) ++n;
  return n;
}

int hcType::isDerivedFrom(hcType *t) {
  hccore::call("hcType::isDerivedFrom", t ? t->name_.c_str() : nullptr);
  if (!t) return 0;
  for (hcType *p = this; p; p = p->ancestor_)
    if (p == t) return 1;
  return 0;
}

int hcType::getNumDescendents() {
  hccore::call("hcType::getNumDescendents");
  return static_cast<int>(descendents_.size());
}

hcType *hcType::getDescendent(unsigned int i) {
  hccore::call("hcType::getDescendent", i);
  return i < descendents_.size() ? descendents_[i] : nullptr;
}

hcType *hcType::getType(const char *name) {
  hccore::call("hcType::getType", name);
  hccore::Quiet quiet;
  return hccore::typeNamed(name);
}

int hcType::getNumTypes() {
  hccore::call("hcType::getNumTypes");
  return static_cast<int>(descriptors().types.size());
}

hcType *hccore::typeNamed(const char *name) {
  if (!name) return nullptr;
  auto &byName = descriptors().byName;
  auto it = byName.find(std::string_view(name));
  return it == byName.end() ? nullptr : it->second;
}

// ---------------------------------------------------------------------------
// hcTypeTable

hcTypeTable::hcTypeTable(const char *name) : name_(name ? name : "") {}

hcTypeTable *hcTypeTable::create(const char *newName) {
  hccore::call("hcTypeTable::create", newName);
  if (!newName) return nullptr;
  auto &registry = tables();
  auto it = registry.find(std::string_view(newName));
  if (it != registry.end()) return it->second;
  auto *table = new hcTypeTable(newName);
  registry[newName] = table;
  return table;
}

hcTypeTable::~hcTypeTable() {
  hccore::call("hcTypeTable::~hcTypeTable", name_.c_str());
  auto &registry = tables();
  auto it = registry.find(name_);
  if (it != registry.end() && it->second == this) registry.erase(it);
}

int hcTypeTable::addEntry(const char *newName, int token) {
  hccore::call("hcTypeTable::addEntry", newName, token);
  if (!newName) return 0;
  for (const auto &entry : entries_)
    if (entry.first == newName) return 0;
  entries_.emplace_back(newName, token);
  return 1;
}

int hcTypeTable::findToken(const char *findName) {
  hccore::call("hcTypeTable::findToken", findName);
  if (!findName) return -1;
  for (const auto &entry : entries_)
    if (entry.first == findName) return entry.second;
  return -1;
}

const char *hcTypeTable::findName(int token) {
  hccore::call("hcTypeTable::findName", token);
  for (const auto &entry : entries_)
    if (entry.second == token) return entry.first.c_str();
  return nullptr;
}

hcTypeTable *hcTypeTable::findTable(const char *findName) {
  hccore::call("hcTypeTable::findTable", findName);
  if (!findName) return nullptr;
  auto &registry = tables();
  auto it = registry.find(std::string_view(findName));
  return it == registry.end() ? nullptr : it->second;
}
