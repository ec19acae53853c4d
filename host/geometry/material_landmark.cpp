// Host library: landmarks and display flags.
#include "host/material.h"
#include "geometry/material_watch.h"
#include "figure/figure_detail.h"

using namespace hcfigure_detail;
using hcmaterial_detail::Watch;

namespace {

bool emptyText(const char *s) { return !s || !*s; }

hMatrix segmentGlobal(hcSegment *seg) {
  hccore::Quiet quiet;
  hMatrix g;
  seg->getGlobal(g);
  return g;
}

}  // namespace

// ---------------------------------------------------------------------------
// hcLandmark

hcLandmark::hcLandmark() = default;

hcLandmark::~hcLandmark() { hccore::destroying(this, "hcLandmark::~hcLandmark"); }

void hcLandmark::getTPoseMatrix(hMatrix &mat) { OpRecord rec("hcLandmark::getTPoseMatrix", addr(&mat)); }

void hcLandmark::getGlobal(hMatrix &mat) { OpRecord rec("hcLandmark::getGlobal", addr(&mat)); }

void hcLandmark::setVisibility(int on) {
  OpRecord rec("hcLandmark::setVisibility", on);
  visible_ = on != 0;
}

int hcLandmark::getVisibility() {
  OpRecord rec("hcLandmark::getVisibility");
  return visible_;
}

sgLandmark *hcLandmark::getSG() {
  OpRecord rec("hcLandmark::getSG");
  return nullptr;
}

// ---------------------------------------------------------------------------
// hcLandmarkImpl

struct hcLandmarkImpl::Influence {
  Watch segment;
  float weight = 0;
  hMatrix offset;
};

hcLandmarkImpl::hcLandmarkImpl() = default;

hcLandmarkImpl::~hcLandmarkImpl() {
  hccore::destroying(this, "hcLandmarkImpl::~hcLandmarkImpl");
  for (Influence *i : influences_) delete i;
}

hcLandmarkImpl *hcLandmarkImpl::create(const char *name, hMatrix mat, hcSegment **segList,
                                       float *weights) {
  OpRecord rec("hcLandmarkImpl::create", name, mat, segList, weights);
  if (emptyText(name)) return nullptr;
  auto *lm = new hcLandmarkImpl();
  lm->setFullName("", name);
  lm->tpose_ = mat;
  for (int k = 0; segList && k < kMaxInfluences && segList[k]; ++k) {
    auto *inf = new Influence;
    inf->segment.watch("hcLandmarkImpl", segList[k]);
    inf->weight = weights ? weights[k] : 1.0f;
    lm->influences_.push_back(inf);
  }
  lm->initialize();
  return lm;
}

void hcLandmarkImpl::destroy(hcLandmarkImpl *ptr) {
  OpRecord rec("hcLandmarkImpl::destroy", ptr);
  delete ptr;
}

hcSegment *hcLandmarkImpl::segmentOf(int index) {
  if (index < 0 || index >= static_cast<int>(influences_.size())) return nullptr;
  return influences_[index]->segment.as<hcSegment>();
}

int hcLandmarkImpl::getNumInfluences() { return static_cast<int>(influences_.size()); }

void hcLandmarkImpl::setTPoseMatrix(hMatrix mat) {
  OpRecord rec("hcLandmarkImpl::setTPoseMatrix", mat);
  tpose_ = mat;
}

void hcLandmarkImpl::initialize() {
  OpRecord rec("hcLandmarkImpl::initialize");
  for (std::size_t k = 0; k < influences_.size(); ++k)
    if (hcSegment *seg = segmentOf(static_cast<int>(k)))
      influences_[k]->offset = mul(inverse(segmentGlobal(seg)), tpose_);
}

void hcLandmarkImpl::getTPoseMatrix(hMatrix &mat) {
  OpRecord rec("hcLandmarkImpl::getTPoseMatrix", addr(&mat));
  mat = tpose_;
}

void hcLandmarkImpl::getGlobal(hMatrix &mat) {
  OpRecord rec("hcLandmarkImpl::getGlobal", addr(&mat));
  double total = 0, pos[3] = {0, 0, 0};
  float heaviest = 0;
  hMatrix rotation;
  bool any = false;
  for (std::size_t k = 0; k < influences_.size(); ++k) {
    hcSegment *seg = segmentOf(static_cast<int>(k));
    if (!seg) continue;
    const float w = influences_[k]->weight;
    const hMatrix g = mul(segmentGlobal(seg), influences_[k]->offset);
    for (int r = 0; r < 3; ++r) pos[r] += double(w) * g.m[r][3];
    total += w;
    if (!any || w > heaviest) {
      heaviest = w;
      rotation = g;
      any = true;
    }
  }
  if (!any || total == 0.0) return;
  for (int r = 0; r < 3; ++r) rotation.m[r][3] = static_cast<float>(pos[r] / total);
  mat = rotation;
}

hcSegment *hcLandmarkImpl::getInfluenceSegment(int index) {
  OpRecord rec("hcLandmarkImpl::getInfluenceSegment", index);
  return segmentOf(index);
}

float hcLandmarkImpl::getInfluenceWeight(int index) {
  OpRecord rec("hcLandmarkImpl::getInfluenceWeight", index);
  if (index < 0 || index >= static_cast<int>(influences_.size())) return 0.0f;
  return influences_[index]->weight;
}

void hcLandmarkImpl::getInfluenceOffset(int index, hMatrix &mat) {
  OpRecord rec("hcLandmarkImpl::getInfluenceOffset", index, addr(&mat));
  if (index < 0 || index >= static_cast<int>(influences_.size())) return;
  mat = influences_[index]->offset;
}

void hcLandmarkImpl::setInfluence(int index, hcSegment *seg, float weight) {
  OpRecord rec("hcLandmarkImpl::setInfluence", index, seg, weight);
  const int n = static_cast<int>(influences_.size());
  if (!seg || index < 0 || index > n || index >= kMaxInfluences) return;
  if (index == n) influences_.push_back(new Influence);
  Influence *inf = influences_[index];
  inf->segment.watch("hcLandmarkImpl", seg);
  inf->weight = weight;
  inf->offset = mul(inverse(segmentGlobal(seg)), tpose_);
}

void hcLandmarkImpl::setVisibility(int on) {
  OpRecord rec("hcLandmarkImpl::setVisibility", on);
  visible_ = on != 0;
}

int hcLandmarkImpl::getVisibility() {
  OpRecord rec("hcLandmarkImpl::getVisibility");
  return visible_;
}

sgLandmark *hcLandmarkImpl::getSG() {
  OpRecord rec("hcLandmarkImpl::getSG");
  return nullptr;
}

// ---------------------------------------------------------------------------
// hcDisplayFlags

hcDisplayFlags::hcDisplayFlags() {
  flags_[VISIBLE] = 1;
  flags_[RENDER_STYLE] = SHADED;
}

hcDisplayFlags::~hcDisplayFlags() = default;

void hcDisplayFlags::set(int type, int value) {
  hccore::call("hcDisplayFlags::set", type, value);
  if (type >= VISIBLE && type <= FACE_NORMS) flags_[type] = value;
}

int hcDisplayFlags::get(int which) {
  hccore::call("hcDisplayFlags::get", which);
  return which >= VISIBLE && which <= FACE_NORMS ? flags_[which] : 0;
}
