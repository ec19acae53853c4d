// Host library: display glyphs.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>

#include "host/geometry.h"
#include "host/glyph.h"
#include "geometry/material_watch.h"
#include "figure/figure_detail.h"

using namespace hcfigure_detail;
using hcmaterial_detail::Watch;

namespace {

constexpr float kPi = 3.14159265358979f;

// Every glyph in creation order; never freed, so that it outlives every
// glyph whatever the order of static destruction.
hcGlyph::glyphList &glyphs() {
  static auto *all = new hcGlyph::glyphList;
  return *all;
}

const char *nameOf(hcObject *o) { return o && o->name ? o->name : ""; }

std::string vectorText(const hVector &v) {
  char buf[96];
  std::snprintf(buf, sizeof buf, "%g %g %g", v.v[0], v.v[1], v.v[2]);
  return buf;
}

}  // namespace

// ---------------------------------------------------------------------------
// hcGlyph

hcGlyph::hcGlyph(const char *kind, hcSubject *part, const char *partName)
    : part_(new Watch(kind, part)) {
  hccore::Quiet quiet;
  std::string name = std::string(kind) + "_" + (partName ? partName : "");
  setFullName("", name.c_str());
  glyphs().push_back(this);
}

hcGlyph::~hcGlyph() {
  hccore::destroying(this, "hcGlyph::~hcGlyph");
  glyphs().remove(this);
  delete part_;
}

hcSubject *hcGlyph::part() { return part_->target(); }

std::string hcGlyph::details() { return ""; }

hcType *hcGlyph::getClassType() {
  hccore::call("hcGlyph::getClassType");
  return hccore::typeNamed("hcGlyph");
}

hcGlyph *hcGlyph::find(const char *name) {
  OpRecord rec("hcGlyph::find", name);
  if (!name) return nullptr;
  for (int pass = 0; pass < 2; ++pass)
    for (hcGlyph *g : glyphs()) {
      const char *candidate = pass == 0 ? g->fullname : g->name;
      if (candidate && std::strcmp(candidate, name) == 0) return g;
    }
  return nullptr;
}

hcGlyph::glyphList *hcGlyph::getGlyphList() {
  OpRecord rec("hcGlyph::getGlyphList");
  return glyphs().empty() ? nullptr : &glyphs();
}

int hcGlyph::getDisplay() {
  OpRecord rec("hcGlyph::getDisplay");
  if (!part()) display_ = 0;
  return display_;
}

int hcGlyph::setDisplay(int on) {
  OpRecord rec("hcGlyph::setDisplay", on);
  if (!part()) {
    display_ = 0;
    return on ? 0 : 1;
  }
  display_ = on != 0;
  return 1;
}

void hcGlyph::tessprint(char *buffer, int level, std::size_t size) {
  OpRecord rec("hcGlyph::tessprint", level, static_cast<long>(size));
  if (!buffer || size == 0) return;
  hcSubject *p = part();
  std::string text = std::string(className()) + " " + nameOf(this) + " part " +
                     (p ? nameOf(dynamic_cast<hcObject *>(p)) : "none") + " display " +
                     std::to_string(p ? display_ : 0);
  if (level > 0) {
    std::string more = details();
    if (!more.empty()) text += " " + more;
  }
  std::snprintf(buffer, size, "%s", text.c_str());
}

// ---------------------------------------------------------------------------
// hcViewConeGlyph

namespace {
bool coneParams(float angle, float length) { return angle > 0.0f && angle < 180.0f && length > 0.0f; }
}  // namespace

hcViewConeGlyph::hcViewConeGlyph(hcHuman *h, int eye, hcSite *site, float length, float angle)
    : hcGlyph("viewCone", site, nameOf(site)), human_(h), eye_(eye), length_(length), angle_(angle) {}

hcViewConeGlyph::~hcViewConeGlyph() {
  hccore::destroying(this, "hcViewConeGlyph::~hcViewConeGlyph");
  hccore::Quiet quiet;
  delete cone_;
}

hcType *hcViewConeGlyph::getClassType() {
  hccore::call("hcViewConeGlyph::getClassType");
  return hccore::typeNamed("hcViewConeGlyph");
}

hcViewConeGlyph *hcViewConeGlyph::create(hcHuman *h, int eye, float length, float angle) {
  OpRecord rec("hcViewConeGlyph::create", h, eye, length, angle);
  if (!h || (eye != leftEye && eye != rightEye) || !coneParams(angle, length)) return nullptr;
  hcSite *site = h->getLandmarkSite(eye == leftEye ? hcHuman::leftEye : hcHuman::rightEye);
  return site ? new hcViewConeGlyph(h, eye, site, length, angle) : nullptr;
}

void hcViewConeGlyph::destroy(hcViewConeGlyph *glyph) {
  OpRecord rec("hcViewConeGlyph::destroy", glyph);
  delete glyph;
}

int hcViewConeGlyph::setParams(float angle, float length) {
  OpRecord rec("hcViewConeGlyph::setParams", angle, length);
  if (!coneParams(angle, length)) return 0;
  angle_ = angle;
  length_ = length;
  return 1;
}

float hcViewConeGlyph::getAngle() {
  OpRecord rec("hcViewConeGlyph::getAngle");
  return angle_;
}

float hcViewConeGlyph::getLength() {
  OpRecord rec("hcViewConeGlyph::getLength");
  return length_;
}

hcHuman *hcViewConeGlyph::getHuman() {
  OpRecord rec("hcViewConeGlyph::getHuman");
  return human_;
}

hcSite *hcViewConeGlyph::getEyeSite() {
  OpRecord rec("hcViewConeGlyph::getEyeSite");
  return dynamic_cast<hcSite *>(part());
}

void hcViewConeGlyph::getScale(hVector &scale) {
  OpRecord rec("hcViewConeGlyph::getScale", addr(&scale));
  const float diameter = 2 * length_ * std::tan(angle_ * kPi / 360.0f);
  scale = hVector(diameter, diameter, length_);
}

hcGeometry *hcViewConeGlyph::getGeometry() {
  OpRecord rec("hcViewConeGlyph::getGeometry");
  if (cone_) return cone_;
  hccore::Quiet quiet;
  constexpr int kSides = 8;
  auto *cone = new hcMeshGeometry(kSides + 1, 0, 0, nullptr);
  for (int k = 0; k < kSides; ++k) {
    const double a = 2 * M_PI * k / kSides;
    hVector p(float(0.5 * std::cos(a)), float(0.5 * std::sin(a)), 1.0f);
    cone->setNodeLocation(k + 1, p);
  }
  auto face = [cone](std::initializer_list<int> nodes) {
    hList *list = nullptr;
    for (int n : nodes) hList::append(&list, reinterpret_cast<void *>(static_cast<std::intptr_t>(n)));
    cone->createFace(list);
    hList::destroy(&list, nullptr);
  };
  for (int k = 0; k < kSides; ++k) face({0, 1 + (k + 1) % kSides, 1 + k});  // sides, wound outwards
  face({1, 2, 3, 4, 5, 6, 7, 8});                                            // the base
  cone->setName("viewcone");
  cone_ = cone;
  return cone_;
}

int hcViewConeGlyph::getDisplay() {
  OpRecord rec("hcViewConeGlyph::getDisplay");
  return hcGlyph::getDisplay();
}

int hcViewConeGlyph::setDisplay(int on) {
  OpRecord rec("hcViewConeGlyph::setDisplay", on);
  return hcGlyph::setDisplay(on);
}

int hcViewConeGlyph::getApex(hVector &apex) {
  auto *site = dynamic_cast<hcSite *>(part());
  if (!site) return 0;
  hccore::Quiet quiet;
  site->getGlobalPosition(apex);
  return 1;
}

std::string hcViewConeGlyph::details() {
  hVector apex, scale;
  std::string text = std::string("eye ") + (eye_ == leftEye ? "left" : "right");
  if (getApex(apex)) text += " apex " + vectorText(apex);
  {
    hccore::Quiet quiet;
    getScale(scale);
  }
  return text + " scale " + vectorText(scale);
}

// ---------------------------------------------------------------------------
// hcSiteGlyph

hcSiteGlyph::hcSiteGlyph(hcSite *site) : hcGlyph("siteGlyph", site, nameOf(site)) {}

hcSiteGlyph::~hcSiteGlyph() { hccore::destroying(this, "hcSiteGlyph::~hcSiteGlyph"); }

hcType *hcSiteGlyph::getClassType() {
  hccore::call("hcSiteGlyph::getClassType");
  return hccore::typeNamed("hcSiteGlyph");
}

hcSiteGlyph *hcSiteGlyph::create(hcSite *site) {
  OpRecord rec("hcSiteGlyph::create", site);
  return site ? new hcSiteGlyph(site) : nullptr;
}

void hcSiteGlyph::destroy(hcSiteGlyph *glyph) {
  OpRecord rec("hcSiteGlyph::destroy", glyph);
  delete glyph;
}

hcSite *hcSiteGlyph::getSite() {
  OpRecord rec("hcSiteGlyph::getSite");
  return dynamic_cast<hcSite *>(part());
}

int hcSiteGlyph::getDisplay() {
  OpRecord rec("hcSiteGlyph::getDisplay");
  return hcGlyph::getDisplay();
}

int hcSiteGlyph::setDisplay(int on) {
  OpRecord rec("hcSiteGlyph::setDisplay", on);
  return hcGlyph::setDisplay(on);
}

// ---------------------------------------------------------------------------
// hcSegmentTraceGlyph

hcSegmentTraceGlyph::hcSegmentTraceGlyph(hcSegment *segment) : hcGlyph("trace", segment, nameOf(segment)) {}

hcSegmentTraceGlyph::~hcSegmentTraceGlyph() {
  hccore::destroying(this, "hcSegmentTraceGlyph::~hcSegmentTraceGlyph");
}

hcType *hcSegmentTraceGlyph::getClassType() {
  hccore::call("hcSegmentTraceGlyph::getClassType");
  return hccore::typeNamed("hcSegmentTraceGlyph");
}

hcSegmentTraceGlyph *hcSegmentTraceGlyph::create(hcSegment *segment) {
  OpRecord rec("hcSegmentTraceGlyph::create", segment);
  return segment ? new hcSegmentTraceGlyph(segment) : nullptr;
}

void hcSegmentTraceGlyph::destroy(hcSegmentTraceGlyph *glyph) {
  OpRecord rec("hcSegmentTraceGlyph::destroy", glyph);
  delete glyph;
}

hcSegment *hcSegmentTraceGlyph::getSegment() {
  OpRecord rec("hcSegmentTraceGlyph::getSegment");
  return dynamic_cast<hcSegment *>(part());
}

int hcSegmentTraceGlyph::getDisplay() {
  OpRecord rec("hcSegmentTraceGlyph::getDisplay");
  return hcGlyph::getDisplay();
}

int hcSegmentTraceGlyph::setDisplay(int on) {
  OpRecord rec("hcSegmentTraceGlyph::setDisplay", on);
  return hcGlyph::setDisplay(on);
}

void hcSegmentTraceGlyph::setActive(int active) {
  OpRecord rec("hcSegmentTraceGlyph::setActive", active);
  active_ = active != 0;
}

int hcSegmentTraceGlyph::isActive() {
  OpRecord rec("hcSegmentTraceGlyph::isActive");
  return active_;
}

std::string hcSegmentTraceGlyph::details() { return "active " + std::to_string(active_); }

// ---------------------------------------------------------------------------
// hcGhostGlyph

hcGhostGlyph::hcGhostGlyph(hcFigure *figure) : hcGlyph("ghost", figure, nameOf(figure)) {}

hcGhostGlyph::~hcGhostGlyph() { hccore::destroying(this, "hcGhostGlyph::~hcGhostGlyph"); }

hcType *hcGhostGlyph::getClassType() {
  hccore::call("hcGhostGlyph::getClassType");
  return hccore::typeNamed("hcGhostGlyph");
}

hcGhostGlyph *hcGhostGlyph::create(hcFigure *figure) {
  OpRecord rec("hcGhostGlyph::create", figure);
  return figure ? new hcGhostGlyph(figure) : nullptr;
}

void hcGhostGlyph::destroy(hcGhostGlyph *glyph) {
  OpRecord rec("hcGhostGlyph::destroy", glyph);
  delete glyph;
}

hcFigure *hcGhostGlyph::getFigure() {
  OpRecord rec("hcGhostGlyph::getFigure");
  return dynamic_cast<hcFigure *>(part());
}

int hcGhostGlyph::getDisplay() {
  OpRecord rec("hcGhostGlyph::getDisplay");
  return hcGlyph::getDisplay();
}

int hcGhostGlyph::setDisplay(int on) {
  OpRecord rec("hcGhostGlyph::setDisplay", on);
  return hcGlyph::setDisplay(on);
}

int hcGhostGlyph::createGhost() {
  OpRecord rec("hcGhostGlyph::createGhost");
  auto *fig = dynamic_cast<hcFigure *>(part());
  if (!fig) return 0;
  frames_.clear();
  for (hcSegment *seg : items<hcSegment>(fig->getSegments())) {
    hMatrix g;
    seg->getGlobal(g);
    frames_.push_back(g);
  }
  return 1;
}

std::string hcGhostGlyph::details() {
  std::string text = "frames " + std::to_string(frames_.size());
  for (const hMatrix &g : frames_) text += " {" + vectorText(origin(g)) + "}";
  return text;
}

// ---------------------------------------------------------------------------
// hcProjectionGlyph

namespace {
constexpr int kAxes[3] = {hcProjectionGlyph::axisX, hcProjectionGlyph::axisY, hcProjectionGlyph::axisZ};
constexpr int kAllAxes = hcProjectionGlyph::axisX | hcProjectionGlyph::axisY | hcProjectionGlyph::axisZ;
}  // namespace

hcProjectionGlyph::hcProjectionGlyph(hcFigure *figure) : hcGlyph("projection", figure, nameOf(figure)) {}

hcProjectionGlyph::~hcProjectionGlyph() { hccore::destroying(this, "hcProjectionGlyph::~hcProjectionGlyph"); }

hcType *hcProjectionGlyph::getClassType() {
  hccore::call("hcProjectionGlyph::getClassType");
  return hccore::typeNamed("hcProjectionGlyph");
}

hcProjectionGlyph *hcProjectionGlyph::create(hcFigure *figure) {
  OpRecord rec("hcProjectionGlyph::create", figure);
  return figure ? new hcProjectionGlyph(figure) : nullptr;
}

void hcProjectionGlyph::destroy(hcProjectionGlyph *glyph) {
  OpRecord rec("hcProjectionGlyph::destroy", glyph);
  delete glyph;
}

hcFigure *hcProjectionGlyph::getFigure() {
  OpRecord rec("hcProjectionGlyph::getFigure");
  return dynamic_cast<hcFigure *>(part());
}

int hcProjectionGlyph::getDisplay() {
  OpRecord rec("hcProjectionGlyph::getDisplay");
  return hcGlyph::getDisplay();
}

int hcProjectionGlyph::setDisplay(int on) {
  OpRecord rec("hcProjectionGlyph::setDisplay", on);
  return hcGlyph::setDisplay(on);
}

int hcProjectionGlyph::getMode(int axis) {
  OpRecord rec("hcProjectionGlyph::getMode", axis);
  if (axis <= none || (axis & ~kAllAxes)) return off;
  int mode = -1;
  for (int k = 0; k < 3; ++k) {
    if (!(axis & kAxes[k])) continue;
    if (mode < 0) mode = modes_[k];
    else if (mode != modes_[k]) return mixed;
  }
  return mode;
}

int hcProjectionGlyph::setMode(int mode, int axis) {
  OpRecord rec("hcProjectionGlyph::setMode", mode, axis);
  if (mode < off || mode > mixed || axis <= none || (axis & ~kAllAxes)) return 0;
  for (int k = 0; k < 3; ++k)
    if (axis & kAxes[k]) modes_[k] = mode;
  return 1;
}

void hcProjectionGlyph::pruneSegments() {
  auto *fig = dynamic_cast<hcFigure *>(part());
  if (!fig) {
    segmentAxes_.clear();
    return;
  }
  hList *segments = fig->getSegments();
  for (auto it = segmentAxes_.begin(); it != segmentAxes_.end();)
    it = contains(segments, it->first) ? std::next(it) : segmentAxes_.erase(it);
}

int hcProjectionGlyph::setSegmentMode(hcSegment *segment, int axis) {
  OpRecord rec("hcProjectionGlyph::setSegmentMode", segment, axis);
  pruneSegments();
  auto *fig = dynamic_cast<hcFigure *>(part());
  if (!segment || !fig || !contains(fig->getSegments(), segment) || axis < none || (axis & ~kAllAxes))
    return 0;
  if (axis == none)
    segmentAxes_.erase(segment);
  else
    segmentAxes_[segment] = axis;
  return 1;
}

int hcProjectionGlyph::getSegmentMode(hcSegment *segment) {
  OpRecord rec("hcProjectionGlyph::getSegmentMode", segment);
  pruneSegments();
  auto it = segmentAxes_.find(segment);
  return it == segmentAxes_.end() ? none : it->second;
}

std::string hcProjectionGlyph::details() {
  std::string text = "modes";
  for (int m : modes_) text += " " + std::to_string(m);
  pruneSegments();
  return text + " segments " + std::to_string(segmentAxes_.size());
}
