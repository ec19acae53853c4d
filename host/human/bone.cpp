// Bones (hcBone, hcSegmentBone, hcTwistBone) and twist links (hcTwistLink).
#include <algorithm>
#include <cmath>
#include <cstdio>

#include "host/posture.h"
#include "figure/figure_detail.h"

using namespace hcfigure_detail;

namespace {

constexpr int kMaxBones = 64;

hcTwistLink::Params &params() {
  static hcTwistLink::Params p;
  return p;
}

// Every link alive, for the process-wide arm scale factors.
std::vector<hcTwistLink *> &links() {
  static auto *all = new std::vector<hcTwistLink *>;
  return *all;
}

hMatrix rotationOnly(hMatrix m) {
  for (int i = 0; i < 3; ++i) m.m[i][3] = 0;
  return m;
}

float length(const hVector &v) { return std::sqrt(v.v[0] * v.v[0] + v.v[1] * v.v[1] + v.v[2] * v.v[2]); }

hVector scaled(const hVector &v, float s) { return hVector(v.v[0] * s, v.v[1] * s, v.v[2] * s); }

hVector plus(const hVector &a, const hVector &b) {
  return hVector(a.v[0] + b.v[0], a.v[1] + b.v[1], a.v[2] + b.v[2]);
}

float dot(const hVector &a, const hVector &b) { return a.v[0] * b.v[0] + a.v[1] * b.v[1] + a.v[2] * b.v[2]; }

// The column `axis` of a matrix's rotation part.
hVector column(const hMatrix &m, int axis) { return hVector(m.m[0][axis], m.m[1][axis], m.m[2][axis]); }

}  // namespace

// ---------------------------------------------------------------------------
// hcBone

hcBone::hcBone() { hccore::call("hcBone::hcBone"); }

hcBone::~hcBone() {
  hccore::destroying(this, "hcBone::~hcBone");
  hccore::destroyed(this);
}

void hcBone::getGlobal(hMatrix &global) {
  OpRecord rec("hcBone::getGlobal", addr(&global));
  global = hMatrix();
}

int hcBone::upToDate() {
  OpRecord rec("hcBone::upToDate");
  return 1;
}

hcLandmark *hcBone::getLandmark(int i) {
  OpRecord rec("hcBone::getLandmark", i);
  return i >= 0 && i < int(landmarks_.size()) ? landmarks_[i] : nullptr;
}

hcMeshGeometry *hcBone::getMesh(int i) {
  OpRecord rec("hcBone::getMesh", i);
  return i >= 0 && i < int(meshes_.size()) ? meshes_[i] : nullptr;
}

int hcBone::getNLandmarks() {
  OpRecord rec("hcBone::getNLandmarks");
  return int(landmarks_.size());
}

int hcBone::getNMeshes() {
  OpRecord rec("hcBone::getNMeshes");
  return int(meshes_.size());
}

void hcBone::addLandmark(hcLandmark *landmark) {
  OpRecord rec("hcBone::addLandmark", landmark);
  if (landmark) landmarks_.push_back(landmark);
}

void hcBone::addMesh(hcMeshGeometry *mesh) {
  OpRecord rec("hcBone::addMesh", mesh);
  if (mesh) meshes_.push_back(mesh);
}

// ---------------------------------------------------------------------------
// hcSegmentBone

hcSegmentBone::hcSegmentBone(hcSegment *s) {
  hccore::call("hcSegmentBone::hcSegmentBone", s);
  segment_.watch(s, "hcSegmentBone");
}

hcSegmentBone::~hcSegmentBone() { hccore::destroying(this, "hcSegmentBone::~hcSegmentBone"); }

void hcSegmentBone::getGlobal(hMatrix &global) {
  OpRecord rec("hcSegmentBone::getGlobal", addr(&global));
  hcSegment *seg = segment_.get();
  if (!seg) return;
  seg->getGlobal(answered_);
  hasAnswered_ = true;
  global = answered_;
}

int hcSegmentBone::upToDate() {
  OpRecord rec("hcSegmentBone::upToDate");
  hcSegment *seg = segment_.get();
  if (!seg || !hasAnswered_) return 0;
  hMatrix now;
  seg->getGlobal(now);
  return now == answered_ ? 1 : 0;
}

hcSegment *hcSegmentBone::getSegment() {
  OpRecord rec("hcSegmentBone::getSegment");
  return segment_.get();
}

// ---------------------------------------------------------------------------
// hcTwistBone

hcTwistBone::hcTwistBone(hcTwistLink *t, float offset, float twistScale)
    : link_(t), offset_(offset), scale_(twistScale) {
  hccore::call("hcTwistBone::hcTwistBone", t, offset, twistScale);
  if (link_) link_->bones_.push_back(this);
}

hcTwistBone::~hcTwistBone() {
  hccore::destroying(this, "hcTwistBone::~hcTwistBone");
  if (link_) link_->forget(this);
}

void hcTwistBone::getGlobal(hMatrix &global) {
  OpRecord rec("hcTwistBone::getGlobal", addr(&global));
  if (placed_) global = global_;
}

int hcTwistBone::upToDate() {
  OpRecord rec("hcTwistBone::upToDate");
  if (!placed_) return 0;
  if (!link_ || link_->manual_) return 1;
  hcTwistLink::Frame f = link_->frame();
  return f.ok && link_->placement(f, this) == global_ ? 1 : 0;
}

hcTwistLink *hcTwistBone::getLink() {
  OpRecord rec("hcTwistBone::getLink");
  return link_;
}

void hcTwistBone::getOffset(int local, hVector &offset) {
  OpRecord rec("hcTwistBone::getOffset", local, addr(&offset));
  if (!link_) return;
  hcTwistLink::Frame f = link_->frame();
  if (!f.ok) return;
  float along = offset_ * f.length;
  offset = local ? hVector(0, 0, along) : plus(f.origin, scaled(f.axis, along));
}

float hcTwistBone::getScale() {
  OpRecord rec("hcTwistBone::getScale");
  return scale_;
}

float hcTwistBone::getRelativeOffset() {
  OpRecord rec("hcTwistBone::getRelativeOffset");
  return offset_;
}

void hcTwistBone::initialize() {
  OpRecord rec("hcTwistBone::initialize");
  if (!link_) return;
  hcTwistLink::Frame f = link_->frame();
  if (!f.ok) return;
  global_ = link_->placement(f, this);
  placed_ = true;
}

void hcTwistBone::setGlobalLocation(hMatrix m) {
  OpRecord rec("hcTwistBone::setGlobalLocation", m);
  global_ = m;
  placed_ = true;
}

// ---------------------------------------------------------------------------
// hcTwistLink: life cycle.

hcTwistLink::hcTwistLink(hcJoint *j, int twistDOF, hcSite *site, hcSite *toSite, int refSiteTwistAxis,
                         hcMeshGeometry *twistMesh, hcMeshGeometry *fromNeighbor, hcMeshGeometry *toNeighbor,
                         int fromGapWeighting, hcSegment *fromSegment, int toGapWeighting, hcSegment *toSegment,
                         int outgoing, int angleComputation, hcSite *s1, int a1, hcSite *s2, int a2, hcSite *s3,
                         int a3, hcSite *s4, int a4, int nBones, float *offsets, float *scaleFactors)
    : twistDOF_(twistDOF),
      refAxis_(refSiteTwistAxis),
      twistMesh_(twistMesh),
      fromMesh_(fromNeighbor),
      toMesh_(toNeighbor),
      fromGap_(fromGapWeighting),
      toGap_(toGapWeighting),
      outgoing_(outgoing),
      angleComputation_(angleComputation),
      refAxes_{a1, a2, a3, a4} {
  hccore::call("hcTwistLink::hcTwistLink", j, twistDOF, site, toSite, refSiteTwistAxis, twistMesh, fromNeighbor,
               toNeighbor, fromGapWeighting, fromSegment, toGapWeighting, toSegment, outgoing, angleComputation,
               s1, a1, s2, a2, s3, a3, s4, a4, nBones, offsets, scaleFactors);
  hccore::Quiet quiet;
  joint_.watch(j, "hcTwistLink");
  from_.watch(site, "hcTwistLink");
  to_.watch(toSite, "hcTwistLink");
  fromSegment_.watch(fromSegment, "hcTwistLink");
  toSegment_.watch(toSegment, "hcTwistLink");
  hcSite *refs[4] = {s1, s2, s3, s4};
  for (int k = 0; k < 4; ++k) refSites_[k].watch(refs[k], "hcTwistLink");
  int n = std::clamp(nBones, 0, kMaxBones);
  for (int i = 0; i < n; ++i) {
    float offset = offsets ? offsets[i] : float(i + 1) / float(n + 1);
    float scale = scaleFactors ? scaleFactors[i] : offset;
    owned_.push_back(new hcTwistBone(this, offset, scale));
  }
  links().push_back(this);
}

hcTwistLink::~hcTwistLink() {
  hccore::destroying(this, "hcTwistLink::~hcTwistLink");
  {
    hccore::Quiet quiet;
    auto &all = links();
    all.erase(std::remove(all.begin(), all.end(), this), all.end());
    // Owned bones are destroyed; the others are left without a link.
    std::vector<hcTwistBone *> bones = bones_;
    for (hcTwistBone *b : bones) {
      if (std::find(owned_.begin(), owned_.end(), b) != owned_.end()) {
        delete b;
      } else {
        b->link_ = nullptr;
      }
    }
    bones_.clear();
  }
  hccore::destroyed(this);
}

void hcTwistLink::forget(hcTwistBone *bone) {
  bones_.erase(std::remove(bones_.begin(), bones_.end(), bone), bones_.end());
  owned_.erase(std::remove(owned_.begin(), owned_.end(), bone), owned_.end());
  boneIndex_.erase(bone);
}

hcTwistLink *hcTwistLink::construct(int left, int top, hcHuman *h) {
  OpRecord rec("hcTwistLink::construct", left, top, h);
  if (!h) return nullptr;
  hcJoint *joint = h->getLandmarkJoint(top ? (left ? hcHuman::leftShoulder : hcHuman::rightShoulder)
                                           : (left ? hcHuman::leftElbow : hcHuman::rightElbow));
  if (!joint) return nullptr;
  // The joint's first site is on the untwisted side.
  hcSite *from = joint->getFromSite();
  hcSite *to = nullptr;
  if (top) {
    hcJoint *elbow = h->getLandmarkJoint(left ? hcHuman::leftElbow : hcHuman::rightElbow);
    to = elbow ? elbow->getFromSite() : nullptr;
  } else {
    to = h->getLandmarkSite(left ? hcHuman::leftHand : hcHuman::rightHand);
  }
  if (!from || !to || from == to) return nullptr;
  const float *factors = top ? params().upperArm : params().lowerArm;
  float offsets[4] = {0.2f, 0.4f, 0.6f, 0.8f};
  float scales[4] = {factors[0], factors[1], factors[2], factors[3]};
  auto *link = new hcTwistLink(joint, top ? 2 : 1, from, to, 0, nullptr, nullptr, nullptr, 0, from->getSegment(), 0,
                               to->getSegment(), 0, 0, nullptr, 0, nullptr, 0, nullptr, 0, nullptr, 0, 4, offsets,
                               scales);
  link->arm_ = top ? UpperArm : LowerArm;
  return link;
}

// ---------------------------------------------------------------------------
// The process-wide tuning.

const hcTwistLink::Params &hcTwistLink::getParams() { return params(); }

void hcTwistLink::enableVertexWeighting(int on) {
  OpRecord rec("hcTwistLink::enableVertexWeighting", on);
  params().vertexWeighting = on ? 1 : 0;
}

void hcTwistLink::rescaleArmBones() {
  if (arm_ == NotArm) return;
  const float *factors = arm_ == UpperArm ? params().upperArm : params().lowerArm;
  for (size_t i = 0; i < owned_.size() && i < 4; ++i) owned_[i]->scale_ = factors[i];
}

void hcTwistLink::setUpperArmScaleFactors(float s1, float s2, float s3, float s4) {
  OpRecord rec("hcTwistLink::setUpperArmScaleFactors", s1, s2, s3, s4);
  float *f = params().upperArm;
  f[0] = s1, f[1] = s2, f[2] = s3, f[3] = s4;
  for (hcTwistLink *l : links())
    if (l->arm_ == UpperArm) l->rescaleArmBones();
}

void hcTwistLink::setLowerArmScaleFactors(float s1, float s2, float s3, float s4) {
  OpRecord rec("hcTwistLink::setLowerArmScaleFactors", s1, s2, s3, s4);
  float *f = params().lowerArm;
  f[0] = s1, f[1] = s2, f[2] = s3, f[3] = s4;
  for (hcTwistLink *l : links())
    if (l->arm_ == LowerArm) l->rescaleArmBones();
}

void hcTwistLink::setShoulderGapWeighting(int proximalGap, int distalGap) {
  OpRecord rec("hcTwistLink::setShoulderGapWeighting", proximalGap, distalGap);
  params().shoulderGap[0] = proximalGap;
  params().shoulderGap[1] = distalGap;
}

void hcTwistLink::setWristGapWeighting(int proximalGap, int distalGap) {
  OpRecord rec("hcTwistLink::setWristGapWeighting", proximalGap, distalGap);
  params().wristGap[0] = proximalGap;
  params().wristGap[1] = distalGap;
}

void hcTwistLink::setWeightThreshold(float threshold) {
  OpRecord rec("hcTwistLink::setWeightThreshold", threshold);
  params().weightThreshold = threshold;
}

void hcTwistLink::printParams() {
  const Params &p = params();
  char text[512];
  std::snprintf(text, sizeof text,
                "vertexWeighting %d upperArm %g %g %g %g lowerArm %g %g %g %g shoulderGap %d %d wristGap %d %d "
                "weightThreshold %g",
                p.vertexWeighting, p.upperArm[0], p.upperArm[1], p.upperArm[2], p.upperArm[3], p.lowerArm[0],
                p.lowerArm[1], p.lowerArm[2], p.lowerArm[3], p.shoulderGap[0], p.shoulderGap[1], p.wristGap[0],
                p.wristGap[1], p.weightThreshold);
  OpRecord rec("hcTwistLink::printParams", text);
}

// ---------------------------------------------------------------------------
// Computing the twist.

hcTwistLink::Frame hcTwistLink::frame() {
  Frame f;
  hcSite *from = from_.get();
  hcSite *to = to_.get();
  if (!from || !to) return f;
  hccore::Quiet quiet;
  from->getGlobal(f.site);
  hVector target;
  to->getGlobalPosition(target);
  f.origin = origin(f.site);
  hVector d = plus(target, scaled(f.origin, -1));
  f.length = length(d);
  if (!(f.length > 1e-6f)) return f;
  f.axis = scaled(d, 1.0f / f.length);
  if (hcJoint *j = joint_.get()) {
    int n = j->getNDOFs();
    if (twistDOF_ >= 0 && twistDOF_ < n) {
      std::vector<float> values(n);
      j->getAngles(values.data(), 1);
      f.twist = values[twistDOF_];
    }
  }
  f.ok = true;
  return f;
}

hMatrix hcTwistLink::placement(const Frame &f, const hcTwistBone *bone) const {
  hVector at = plus(f.origin, scaled(f.axis, bone->offset_ * f.length));
  return mul(translation(at), mul(rotation(f.axis, f.twist * bone->scale_), rotationOnly(f.site)));
}

void hcTwistLink::update() {
  OpRecord rec("hcTwistLink::update");
  Frame f = frame();
  if (!f.ok) return;
  // vec1: the site's x axis in the plane normal to the link (y when x is
  // along the link); vec2: vec1 turned by the twist.
  hVector v = column(f.site, 0);
  hVector in = plus(v, scaled(f.axis, -dot(v, f.axis)));
  if (length(in) < 1e-4f) {
    v = column(f.site, 1);
    in = plus(v, scaled(f.axis, -dot(v, f.axis)));
  }
  in = scaled(in, 1.0f / length(in));
  computed_ = true;
  angle_ = f.twist;
  normal_ = f.axis;
  vec1_ = in;
  vec2_ = apply(rotation(f.axis, f.twist), in);
  if (manual_) return;
  for (hcTwistBone *b : bones_) {
    b->global_ = placement(f, b);
    b->placed_ = true;
  }
}

void hcTwistLink::getComputedAngleInfo(float &angle, hVector &planeNormal, hVector &vec1, hVector &vec2) {
  OpRecord rec("hcTwistLink::getComputedAngleInfo", addr(&angle), addr(&planeNormal), addr(&vec1), addr(&vec2));
  if (!computed_) return;
  angle = angle_;
  planeNormal = normal_;
  vec1 = vec1_;
  vec2 = vec2_;
}

void hcTwistLink::setManualComputation(int on) {
  OpRecord rec("hcTwistLink::setManualComputation", on);
  manual_ = on ? 1 : 0;
}

// ---------------------------------------------------------------------------
// Skin binding (vertex weighting is not modelled).

void hcTwistLink::initialize(hcBone **boneArray, int nSegBones, hcMeshGeometry **meshArray, int nMeshes) {
  OpRecord rec("hcTwistLink::initialize", boneArray, nSegBones, meshArray, nMeshes);
  nSegBones_ = boneArray ? std::max(nSegBones, 0) : 0;
  nMeshes_ = meshArray ? std::max(nMeshes, 0) : 0;
}

void hcTwistLink::resetVertexWeights(hcBone **boneArray) {
  OpRecord rec("hcTwistLink::resetVertexWeights", boneArray);
}

void hcTwistLink::setOriginalWeights(hcBone **boneArray) {
  OpRecord rec("hcTwistLink::setOriginalWeights", boneArray);
}

void hcTwistLink::getVertexList(hcMeshGeometry *mesh, vertexList &vlist) {
  OpRecord rec("hcTwistLink::getVertexList", mesh, addr(&vlist));
}

// ---------------------------------------------------------------------------
// Queries.

hcMeshGeometry *hcTwistLink::getTwistMesh() {
  OpRecord rec("hcTwistLink::getTwistMesh");
  return twistMesh_;
}

hcMeshGeometry *hcTwistLink::getToMesh() {
  OpRecord rec("hcTwistLink::getToMesh");
  return toMesh_;
}

hcMeshGeometry *hcTwistLink::getFromMesh() {
  OpRecord rec("hcTwistLink::getFromMesh");
  return fromMesh_;
}

void hcTwistLink::getBones(twistBoneList &boneList) {
  OpRecord rec("hcTwistLink::getBones", addr(&boneList));
  boneList.assign(bones_.begin(), bones_.end());
}

void hcTwistLink::setBoneIndex(hcTwistBone *bone, int index) {
  OpRecord rec("hcTwistLink::setBoneIndex", bone, index);
  if (std::find(bones_.begin(), bones_.end(), bone) != bones_.end()) boneIndex_[bone] = index;
}

int hcTwistLink::getBoneIndex(hcTwistBone *bone) {
  auto it = boneIndex_.find(bone);
  return it == boneIndex_.end() ? -1 : it->second;
}

int hcTwistLink::getNBones() {
  OpRecord rec("hcTwistLink::getNBones");
  return int(bones_.size());
}

hcTwistBone *hcTwistLink::getBone(int ID) {
  OpRecord rec("hcTwistLink::getBone", ID);
  return ID >= 0 && ID < int(bones_.size()) ? bones_[ID] : nullptr;
}

hcJoint *hcTwistLink::getJoint() {
  OpRecord rec("hcTwistLink::getJoint");
  return joint_.get();
}

float hcTwistLink::getLinkLength() {
  OpRecord rec("hcTwistLink::getLinkLength");
  hcSite *from = from_.get();
  hcSite *to = to_.get();
  if (!from || !to) return 0;
  hVector a, b;
  from->getGlobalPosition(a);
  to->getGlobalPosition(b);
  return length(plus(b, scaled(a, -1)));
}

hcSite *hcTwistLink::getFromSite() {
  OpRecord rec("hcTwistLink::getFromSite");
  return from_.get();
}

hcSite *hcTwistLink::getToSite() {
  OpRecord rec("hcTwistLink::getToSite");
  return to_.get();
}

int hcTwistLink::getFromSiteAxisID() {
  OpRecord rec("hcTwistLink::getFromSiteAxisID");
  return refAxis_;
}
