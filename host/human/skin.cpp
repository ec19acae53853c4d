// hcSmoothSkin: the meshes covering a human, rigged to segment and twist
// bones.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <initializer_list>

#include "core/messages.h"
#include "host/skin.h"
#include "host/geometry.h"
#include "host/human.h"
#include "host/material.h"
#include "host/posture.h"
#include "figure/figure_detail.h"
#include "geometry/geometry_detail.h"
#include "human/human_body.h"

using namespace hcfigure_detail;

namespace {

// The node order of a segment's box: bit 0 is x, bit 1 y, bit 2 z.
constexpr int kBoxFaces[6][4] = {{0, 2, 3, 1}, {4, 5, 7, 6}, {0, 1, 5, 4}, {2, 6, 7, 3}, {0, 4, 6, 2}, {1, 3, 7, 5}};
// At most this many bones are recorded on a mesh (with the null after them).
constexpr std::size_t kMaxSkinBones = 63;
constexpr std::size_t kMaxSkinSegments = 47;

struct Switches {
  int allVertices = 0;
  hcSmoothSkin::hcSkinFrame frame = hcSmoothSkin::HC_SKIN_GLOBAL;
  int extEngine = 0;
  int reverseSG = 0;
  int boxes = 1;
  int rigidOff = 0;
};
Switches &switches() {
  static Switches s;
  return s;
}

std::vector<hcSmoothSkinImpl *> &liveSkins() {
  static std::vector<hcSmoothSkinImpl *> skins;
  return skins;
}

float dot(const hVector &a, const hVector &b) { return a.v[0] * b.v[0] + a.v[1] * b.v[1] + a.v[2] * b.v[2]; }
hVector sub(const hVector &a, const hVector &b) { return hVector(a.v[0] - b.v[0], a.v[1] - b.v[1], a.v[2] - b.v[2]); }
hVector unit(const hVector &a, const hVector &fallback) {
  const float len = std::sqrt(dot(a, a));
  return len > 1e-9f && std::isfinite(len) ? hVector(a.v[0] / len, a.v[1] / len, a.v[2] / len) : fallback;
}
hVector column(const hMatrix &m, int c) { return hVector(m.m[0][c], m.m[1][c], m.m[2][c]); }

// The body section a segment of the standard adult belongs to.
const char *sectionOf(const char *segment) {
  const std::string s = segment ? segment : "";
  auto has = [&s](const char *part) { return s.find(part) != std::string::npos; };
  const char *side = s.rfind("left", 0) == 0 ? "left" : s.rfind("right", 0) == 0 ? "right" : nullptr;
  if (side && (has("Arm") || has("Forearm") || has("Palm") || has("Fingers") || has("Hand")))
    return side[0] == 'l' ? "leftArm" : "rightArm";
  if (side && (has("Thigh") || has("Shank") || has("Foot") || has("Toe")))
    return side[0] == 'l' ? "leftLeg" : "rightLeg";
  if (s == "head" || s == "neck" || has("Eye")) return "head";
  return "trunk";
}

}  // namespace

// ===========================================================================
// Body sections and psurf representations

const char *hcBodySection::getName() { return name_.c_str(); }
int hcBodySection::getNumMeshes() { return static_cast<int>(meshes_.size()); }
hcMeshGeometry *hcBodySection::getMesh(int i) {
  return i >= 0 && i < getNumMeshes() ? meshes_[static_cast<std::size_t>(i)] : nullptr;
}

hcSegment *hcPsurf::getSegment() { return bone_ ? bone_->getSegment() : nullptr; }

// ===========================================================================
// hcSmoothSkin: the interface and the process-wide switches

float hcSmoothSkin::s_seamVertexEpsilon = 1e-5f;

hcSmoothSkin::hcSmoothSkin() = default;
hcSmoothSkin::~hcSmoothSkin() = default;

void hcSmoothSkin::updateAll() {
  OpRecord rec("hcSmoothSkin::updateAll");
  for (hcSmoothSkinImpl *s : liveSkins()) s->update();
}

void hcSmoothSkin::useAllVerticesForSegmentBBoxes(int on) {
  OpRecord rec("hcSmoothSkin::useAllVerticesForSegmentBBoxes", on);
  switches().allVertices = on;
}
int hcSmoothSkin::getUseAllVerticesForSegmentBBoxes() {
  OpRecord rec("hcSmoothSkin::getUseAllVerticesForSegmentBBoxes");
  return switches().allVertices;
}
void hcSmoothSkin::setSkinFrame(hcSkinFrame etype) {
  OpRecord rec("hcSmoothSkin::setSkinFrame", static_cast<int>(etype));
  if (etype == HC_SKIN_GLOBAL || etype == HC_SKIN_RELATIVE_FIGURE) switches().frame = etype;
}
hcSmoothSkin::hcSkinFrame hcSmoothSkin::getSkinFrame() {
  OpRecord rec("hcSmoothSkin::getSkinFrame");
  return switches().frame;
}
void hcSmoothSkin::useExtEngine(int yes) {
  OpRecord rec("hcSmoothSkin::useExtEngine", yes);
  switches().extEngine = yes;
}
int hcSmoothSkin::isExtEngine() {
  OpRecord rec("hcSmoothSkin::isExtEngine");
  return switches().extEngine;
}
void hcSmoothSkin::useReverseSG(int yes) {
  OpRecord rec("hcSmoothSkin::useReverseSG", yes);
  switches().reverseSG = yes;
}
int hcSmoothSkin::isReverseSG() {
  OpRecord rec("hcSmoothSkin::isReverseSG");
  return switches().reverseSG;
}
void hcSmoothSkin::computeBBoxes(int on) {
  OpRecord rec("hcSmoothSkin::computeBBoxes", on);
  switches().boxes = on;
}
int hcSmoothSkin::bboxesComputed() {
  OpRecord rec("hcSmoothSkin::bboxesComputed");
  return switches().boxes;
}
void hcSmoothSkin::disableRigidMeshSkinning(int on) {
  OpRecord rec("hcSmoothSkin::disableRigidMeshSkinning", on);
  switches().rigidOff = on;
}
int hcSmoothSkin::rigidMeshSkinningDisabled() {
  OpRecord rec("hcSmoothSkin::rigidMeshSkinningDisabled");
  return switches().rigidOff;
}

void hcSmoothSkin::outputToPsurfs(const char *path, float discardTolerance, int splitTriangles, int nodeOffset,
                                  int useBodySections, int initToMeshState) {
  OpRecord rec("hcSmoothSkin::outputToPsurfs", path, discardTolerance, splitTriangles, nodeOffset, useBodySections,
               initToMeshState);
  auto *self = dynamic_cast<hcSmoothSkinImpl *>(this);
  if (!self || !path || !*path) return;
  if (initToMeshState) self->initializeToMeshState(1, 0);
  const std::string dir = std::string(path) + "/";
  std::vector<std::pair<std::string, std::vector<std::size_t>>> files;
  if (useBodySections) {
    for (int s = 0; s < getNumBodySections(); ++s) {
      hcBodySection *section = getBodySection(s);
      std::vector<std::size_t> meshes;
      for (int k = 0; k < section->getNumMeshes(); ++k)
        for (int m = 0; m < getNumMeshes(); ++m)
          if (getMeshGeometry(m) == section->getMesh(k)) meshes.push_back(static_cast<std::size_t>(m));
      files.emplace_back(section->getName(), meshes);
    }
  } else {
    for (int m = 0; m < getNumMeshes(); ++m)
      if (hcMeshGeometry *g = getMeshGeometry(m); g && g->getName())
        files.emplace_back(g->getName(), std::vector<std::size_t>{static_cast<std::size_t>(m)});
  }
  for (const auto &[name, meshes] : files)
    hcmsg::writeText((dir + name + ".psurf").c_str(),
              self->psurfOf(meshes, nullptr, discardTolerance, splitTriangles != 0, nodeOffset));
}

// ===========================================================================
// hcSmoothSkinImpl: building

hcSmoothSkinImpl *hcSmoothSkinImpl::build(hcHuman *h) {
  OpRecord rec("hcSmoothSkinImpl::build");
  hcFigure *fig = h ? h->getFigure() : nullptr;
  std::vector<hcSegment *> segments = fig ? items<hcSegment>(fig->getSegments()) : std::vector<hcSegment *>{};
  if (segments.empty()) return nullptr;
  if (segments.size() > kMaxSkinSegments) segments.resize(kMaxSkinSegments);

  auto *skin = new hcSmoothSkinImpl;
  skin->human_ = h;
  for (hcSegment *s : segments) {
    skin->segmentBones_.push_back(new hcSegmentBone(s));
    skin->bones_.push_back(skin->segmentBones_.back());
  }
  // The arm twist links, with their bones after the segment bones.
  for (int left = 0; left < 2; ++left)
    for (int top = 1; top >= 0; --top) {
      hcTwistLink *link = hcTwistLink::construct(left, top, h);
      if (!link) continue;
      if (skin->bones_.size() + static_cast<std::size_t>(link->getNBones()) > kMaxSkinBones) {
        delete link;
        continue;
      }
      link->update();
      for (int b = 0; b < link->getNBones(); ++b) {
        link->setBoneIndex(link->getBone(b), static_cast<int>(skin->bones_.size()));
        skin->bones_.push_back(link->getBone(b));
      }
      skin->links_.push_back(link);
    }
  for (hcBone *b : skin->bones_) {
    hMatrix m;
    b->getGlobal(m);
    skin->restFrames_.push_back(m);
  }
  skin->bones_.push_back(nullptr);

  // Rest coordinates: each segment's box, then a seam per joint it shares.
  struct Binding {
    std::array<int, 2> bone{-1, -1};
  };
  std::vector<std::vector<hVector>> points(segments.size());
  std::vector<std::vector<std::vector<int>>> faces(segments.size());
  std::vector<std::vector<Binding>> bindings(segments.size());
  std::vector<std::vector<std::size_t>> neighbours(segments.size());
  auto indexOf = [&segments](hcSegment *s) -> int {
    auto it = std::find(segments.begin(), segments.end(), s);
    return it == segments.end() ? -1 : static_cast<int>(it - segments.begin());
  };
  for (std::size_t m = 0; m < segments.size(); ++m) {
    for (int n = 0; n < hcSegment::kNodes; ++n) {
      hMatrix node;
      segments[m]->getNodeGlobal(n, node);
      points[m].push_back(origin(node));
      bindings[m].push_back(Binding{{static_cast<int>(m), -1}});
    }
    for (const auto &f : kBoxFaces) faces[m].push_back({f[0], f[1], f[2], f[3]});
  }
  for (hcJoint *j : items<hcJoint>(fig->getJoints())) {
    hcSite *a = j->getFromSite(), *b = j->getToSite();
    const int ma = a ? indexOf(a->getSegment()) : -1, mb = b ? indexOf(b->getSegment()) : -1;
    if (ma < 0 || mb < 0 || ma == mb) continue;
    hMatrix frame;
    a->getGlobal(frame);
    hVector lo, hi;
    float size = 1e30f;
    for (int m : {ma, mb}) {
      segments[static_cast<std::size_t>(m)]->getBoundingBox(lo, hi, 0);
      for (int i = 0; i < 3; ++i) size = std::min(size, hi.v[i] - lo.v[i]);
    }
    const float r = std::max(size, 1e-3f) / 4;
    const hVector c = origin(frame), x = column(frame, 0), y = column(frame, 1);
    for (int m : {ma, mb}) {
      auto &pts = points[static_cast<std::size_t>(m)];
      const int first = static_cast<int>(pts.size());
      for (const auto &[sx, sy] : {std::pair{-1, -1}, {1, -1}, {1, 1}, {-1, 1}}) {
        pts.emplace_back(c.v[0] + r * (sx * x.v[0] + sy * y.v[0]), c.v[1] + r * (sx * x.v[1] + sy * y.v[1]),
                         c.v[2] + r * (sx * x.v[2] + sy * y.v[2]));
        bindings[static_cast<std::size_t>(m)].push_back(Binding{{ma, mb}});
      }
      faces[static_cast<std::size_t>(m)].push_back({first, first + 1, first + 2, first + 3});
      neighbours[static_cast<std::size_t>(m)].push_back(static_cast<std::size_t>(m == ma ? mb : ma));
    }
  }

  for (std::size_t m = 0; m < segments.size(); ++m) {
    auto *mesh = new hcMeshGeometry(static_cast<int>(points[m].size()), 0, 0, fig);
    for (std::size_t n = 0; n < points[m].size(); ++n) mesh->setNodeLocation(static_cast<int>(n), points[m][n]);
    for (const auto &f : faces[m]) {
      hList *list = nullptr;
      for (int n : f) hList::append(&list, reinterpret_cast<void *>(static_cast<std::intptr_t>(n)));
      mesh->createFace(list);
      hList::destroy(&list, nullptr);
    }
    mesh->setName(segments[m]->getName());
    mesh->constructExtInfo(hMatrix(), skin->bones_.data());
    Mesh entry;
    entry.geometry = mesh;
    entry.internals = new hcMeshInternals(mesh);
    entry.psurf.mesh_ = mesh;
    entry.psurf.bone_ = skin->segmentBones_[m];
    skin->segmentBones_[m]->addMesh(mesh);
    skin->meshes_.push_back(std::move(entry));
  }

  // Bindings: box vertices to their segment (half to the nearest twist bone
  // of an arm link while vertex weighting is on), seams half to each side.
  const bool twist = hcTwistLink::getParams().vertexWeighting != 0;
  for (std::size_t m = 0; m < skin->meshes_.size(); ++m) {
    hcMeshInternals *in = skin->meshes_[m].internals;
    hcTwistLink *link = nullptr;
    for (hcTwistLink *l : skin->links_) {
      hcJoint *j = l->getJoint();
      hcSite *root = j ? j->getRootSite() : nullptr;
      hcSite *child = root ? j->getOtherSite(root) : nullptr;
      if (child && child->getSegment() == segments[m]) link = l;
    }
    for (std::size_t n = 0; n < points[m].size(); ++n) {
      const int vert = static_cast<int>(n);
      hVector normal;
      skin->meshes_[m].geometry->getNodeNormal(vert, normal);
      hVector centre(0, 0, 0);
      for (int k = 0; k < hcSegment::kNodes; ++k)
        for (int i = 0; i < 3; ++i) centre.v[i] += points[m][static_cast<std::size_t>(k)].v[i] / hcSegment::kNodes;
      normal = unit(normal, unit(sub(points[m][n], centre), hVector(0, 1, 0)));
      const Binding &b = bindings[m][n];
      std::vector<std::pair<int, float>> influences;
      if (b.bone[1] >= 0) {
        influences = {{b.bone[0], 0.5f}, {b.bone[1], 0.5f}};
      } else if (link && twist && link->getNBones() > 0) {
        hMatrix from;
        link->getFromSite()->getGlobal(from);
        hcSite *to = link->getToSite();
        hMatrix toFrame;
        if (to) to->getGlobal(toFrame);
        const hVector axis = sub(origin(toFrame), origin(from));
        const float len2 = dot(axis, axis);
        const float t = len2 > 0 ? dot(sub(points[m][n], origin(from)), axis) / len2 : 0;
        int nearest = 0;
        for (int k = 1; k < link->getNBones(); ++k)
          if (std::fabs(link->getBone(k)->getRelativeOffset() - t) <
              std::fabs(link->getBone(nearest)->getRelativeOffset() - t))
            nearest = k;
        influences = {{b.bone[0], 0.5f}, {link->getBoneIndex(link->getBone(nearest)), 0.5f}};
      } else {
        influences = {{b.bone[0], 1.0f}};
      }
      for (std::size_t k = 0; k < influences.size(); ++k) {
        const auto [bone, weight] = influences[k];
        const hMatrix &rest = skin->restFrames_[static_cast<std::size_t>(bone)];
        in->setRigInfo(vert, static_cast<int>(k), bone, weight, rest, normal, apply(inverse(rest), points[m][n]));
      }
    }
    hcMeshInternals::meshList near;
    for (std::size_t k : neighbours[m]) near.push_back(skin->meshes_[k].geometry);
    in->setNeighbors(near);
  }

  // Landmarks at the human's landmark sites, on their segments.
  for (const char *name : hcbody::kLandmarkSites) {
    hcSite *site = fig->findSite(name);
    hcSegment *seg = site ? site->getSegment() : nullptr;
    const int m = indexOf(seg);
    if (m < 0) continue;
    hMatrix at;
    site->getGlobal(at);
    hcSegment *list[2] = {seg, nullptr};
    hcLandmarkImpl *l = hcLandmarkImpl::create(name, at, list, nullptr);
    if (!l) continue;
    skin->landmarks_.push_back(l);
    skin->segmentBones_[static_cast<std::size_t>(m)]->addLandmark(l);
  }
  for (std::size_t m = 0; m < skin->meshes_.size(); ++m) {
    hcMeshInternals::landmarkList mine;
    for (hcLandmarkImpl *l : skin->landmarks_)
      if (l->getInfluenceSegment(0) == segments[m]) mine.push_back(l);
    skin->meshes_[m].internals->setLandmarkRefs(mine);
  }

  for (const char *name : {"head", "trunk", "leftArm", "rightArm", "leftLeg", "rightLeg"}) {
    hcBodySection section;
    section.name_ = name;
    for (std::size_t m = 0; m < segments.size(); ++m)
      if (std::strcmp(sectionOf(segments[m]->getName()), name) == 0)
        section.meshes_.push_back(skin->meshes_[m].geometry);
    skin->sections_.push_back(std::move(section));
  }
  skin->refresh(true);
  liveSkins().push_back(skin);
  return skin;
}

hcSmoothSkinImpl::~hcSmoothSkinImpl() {
  hccore::Quiet quiet;
  std::erase(liveSkins(), this);
  for (hcLandmarkImpl *l : landmarks_)
    if (hcIsLiveObject(l)) hcLandmarkImpl::destroy(l);
  for (std::size_t m = 0; m < meshes_.size(); ++m) {
    delete meshes_[m].internals;
    delete geometry(m);
  }
  for (hcTwistLink *l : links_) delete l;
  for (hcSegmentBone *b : segmentBones_) delete b;
}

// ===========================================================================
// hcSmoothSkinImpl: shown coordinates

hcMeshGeometry *hcSmoothSkinImpl::geometry(std::size_t mesh) const {
  // A script may have deleted a mesh it was handed.
  hcMeshGeometry *g = mesh < meshes_.size() ? meshes_[mesh].geometry : nullptr;
  return g && hcIsLiveObject(g) ? g : nullptr;
}

hcSegment *hcSmoothSkinImpl::segmentOf(int mesh) const {
  return mesh >= 0 && mesh < static_cast<int>(meshes_.size()) ? segmentBones_[static_cast<std::size_t>(mesh)]->getSegment()
                                                               : nullptr;
}

void hcSmoothSkinImpl::refresh(bool rest) {
  hccore::Quiet quiet;
  if (!rest)
    for (hcTwistLink *l : links_) l->update();
  for (std::size_t i = 0; i < meshes_.size(); ++i) {
    hcMeshGeometry *g = geometry(i);
    auto &shown = meshes_[i].shown;
    shown.resize(g ? static_cast<std::size_t>(g->getNumNodes()) : 0);
    for (std::size_t k = 0; k < shown.size(); ++k) {
      if (rest) g->getUndeformedNodeCoords(static_cast<int>(k), shown[k]);
      else g->getDeformedNodeCoords(static_cast<int>(k), &shown[k], nullptr);
    }
  }
}

void hcSmoothSkinImpl::update() {
  OpRecord rec("hcSmoothSkinImpl::update");
  if (!updatesOff_ && !editing_) refresh(false);
}

hVector hcSmoothSkinImpl::shown(int mesh, int node) const {
  if (mesh < 0 || mesh >= static_cast<int>(meshes_.size())) return hVector();
  const auto &pts = meshes_[static_cast<std::size_t>(mesh)].shown;
  return node >= 0 && node < static_cast<int>(pts.size()) ? pts[static_cast<std::size_t>(node)] : hVector();
}

void hcSmoothSkinImpl::initializeToMeshState(int forceUpdates, int useTPose) {
  OpRecord rec("hcSmoothSkinImpl::initializeToMeshState", forceUpdates, useTPose);
  if (updatesOff_ && !forceUpdates) return;
  refresh(useTPose != 0);
}

void hcSmoothSkinImpl::rig(std::size_t mesh) {
  // Every influence keeps its bone and weight; the offset and rest normal
  // are taken again from the rest coordinates.
  hcMeshGeometry *g = geometry(mesh);
  hcMeshInternals *in = meshes_[mesh].internals;
  for (int v = 0; g && v < g->getNumNodes(); ++v) {
    int bones[hcMeshInternals::kInfluences] = {};
    float weights[hcMeshInternals::kInfluences] = {};
    const int count = in->getVertexBones(v, bones);
    in->getVertexWeights(v, weights);
    hVector p, normal;
    g->getUndeformedNodeCoords(v, p);
    in->getVertexRestNormal(v, normal);
    for (int k = 0; k < count; ++k) {
      if (bones[k] < 0 || bones[k] >= static_cast<int>(restFrames_.size())) continue;
      const hMatrix &rest = restFrames_[static_cast<std::size_t>(bones[k])];
      in->setRigInfo(v, k, bones[k], weights[k], rest, normal, apply(inverse(rest), p));
    }
  }
}

// ===========================================================================
// hcSmoothSkinImpl: the interface

int hcSmoothSkinImpl::getNumMeshes() {
  OpRecord rec("hcSmoothSkinImpl::getNumMeshes");
  return static_cast<int>(meshes_.size());
}

hcMeshGeometry *hcSmoothSkinImpl::getMeshGeometry(const char *name) {
  OpRecord rec("hcSmoothSkinImpl::getMeshGeometry", name);
  for (std::size_t m = 0; m < meshes_.size(); ++m)
    if (hcMeshGeometry *g = geometry(m); g && name && g->getName() && std::strcmp(g->getName(), name) == 0) return g;
  return nullptr;
}

hcMeshGeometry *hcSmoothSkinImpl::getMeshGeometry(int meshID) {
  OpRecord rec("hcSmoothSkinImpl::getMeshGeometry", meshID);
  return meshID >= 0 ? geometry(static_cast<std::size_t>(meshID)) : nullptr;
}

int hcSmoothSkinImpl::getNumLandmarks() {
  OpRecord rec("hcSmoothSkinImpl::getNumLandmarks");
  return static_cast<int>(landmarks_.size());
}

hcLandmark *hcSmoothSkinImpl::getLandmark(const char *name) {
  OpRecord rec("hcSmoothSkinImpl::getLandmark", name);
  for (hcLandmarkImpl *l : landmarks_)
    if (hcIsLiveObject(l) && name && l->getName() && std::strcmp(l->getName(), name) == 0) return l;
  return nullptr;
}

hcLandmark *hcSmoothSkinImpl::getLandmark(int n) {
  OpRecord rec("hcSmoothSkinImpl::getLandmark", n);
  hcLandmarkImpl *l = n >= 0 && n < getNumLandmarks() ? landmarks_[static_cast<std::size_t>(n)] : nullptr;
  return l && hcIsLiveObject(l) ? l : nullptr;
}

int hcSmoothSkinImpl::getBoundingBox(hVector &bmin, hVector &bmax, int global) {
  OpRecord rec("hcSmoothSkinImpl::getBoundingBox", addr(&bmin), addr(&bmax), global);
  if (!switches().boxes) return 0;
  update();
  hMatrix root;
  getRigRoot(root);
  const hMatrix back = inverse(root);
  bool any = false;
  hVector lo, hi;
  for (const Mesh &m : meshes_)
    for (const hVector &p : m.shown) {
      const hVector q = global ? p : apply(back, p);
      for (int i = 0; i < 3; ++i) {
        lo.v[i] = any ? std::min(lo.v[i], q.v[i]) : q.v[i];
        hi.v[i] = any ? std::max(hi.v[i], q.v[i]) : q.v[i];
      }
      any = true;
    }
  if (!any) return 0;
  bmin = lo;
  bmax = hi;
  return 1;
}

int hcSmoothSkinImpl::getNumBodySections() {
  OpRecord rec("hcSmoothSkinImpl::getNumBodySections");
  return static_cast<int>(sections_.size());
}

hcBodySection *hcSmoothSkinImpl::getBodySection(const char *name) {
  OpRecord rec("hcSmoothSkinImpl::getBodySection", name);
  for (hcBodySection &s : sections_)
    if (name && s.name_ == name) return &s;
  return nullptr;
}

hcBodySection *hcSmoothSkinImpl::getBodySection(int sectionID) {
  OpRecord rec("hcSmoothSkinImpl::getBodySection", sectionID);
  return sectionID >= 0 && sectionID < getNumBodySections() ? &sections_[static_cast<std::size_t>(sectionID)]
                                                             : nullptr;
}

hcSegment *hcSmoothSkinImpl::getSegmentFromBoneID(int boneID) {
  OpRecord rec("hcSmoothSkinImpl::getSegmentFromBoneID", boneID);
  return segmentOf(boneID);
}

int hcSmoothSkinImpl::getBoneID(hcSegment *segment) {
  OpRecord rec("hcSmoothSkinImpl::getBoneID", segment);
  for (std::size_t i = 0; segment && i < segmentBones_.size(); ++i)
    if (segmentBones_[i]->getSegment() == segment) return static_cast<int>(i);
  return -1;
}

void hcSmoothSkinImpl::getRigRoot(hMatrix &mat) {
  OpRecord rec("hcSmoothSkinImpl::getRigRoot", addr(&mat));
  hcFigure *fig = human_ ? human_->getFigure() : nullptr;
  if (switches().frame == HC_SKIN_RELATIVE_FIGURE && fig) fig->getLocation(mat);
  else mat = hMatrix();
}

// ===========================================================================
// hcSmoothSkinImpl: the implementation's own operations

void hcSmoothSkinImpl::buildSceneGraph() {
  OpRecord rec("hcSmoothSkinImpl::buildSceneGraph");
  sceneGraph_ = 1;
}

void hcSmoothSkinImpl::unBuildSceneGraph() {
  OpRecord rec("hcSmoothSkinImpl::unBuildSceneGraph");
  sceneGraph_ = 0;
}

void hcSmoothSkinImpl::notifyEditsOn(int useTPose) {
  OpRecord rec("hcSmoothSkinImpl::notifyEditsOn", useTPose);
  if (useTPose) refresh(true);
  editing_ = 1;
}

void hcSmoothSkinImpl::notifyEditsComplete() {
  OpRecord rec("hcSmoothSkinImpl::notifyEditsComplete");
  if (!editing_) return;
  editing_ = 0;
  for (std::size_t m = 0; m < meshes_.size(); ++m) rig(m);
  update();
}

void hcSmoothSkinImpl::disableMeshUpdates(int on) {
  OpRecord rec("hcSmoothSkinImpl::disableMeshUpdates", on);
  updatesOff_ = on != 0;
}

hcSegmentBone *hcSmoothSkinImpl::getBone(hcSegment *s) {
  OpRecord rec("hcSmoothSkinImpl::getBone", s);
  const int id = getBoneID(s);
  return id < 0 ? nullptr : segmentBones_[static_cast<std::size_t>(id)];
}

hcTwistLink *hcSmoothSkinImpl::getTwistLink(hcJoint *j) {
  OpRecord rec("hcSmoothSkinImpl::getTwistLink", j);
  for (hcTwistLink *l : links_)
    if (j && l->getJoint() == j) return l;
  return nullptr;
}

void hcSmoothSkinImpl::setDisplay(hcSegment::segDisplayType type, int value) {
  OpRecord rec("hcSmoothSkinImpl::setDisplay", static_cast<int>(type), value);
  if (type < hcSegment::ON || type > hcSegment::NODL) return;
  for (std::size_t m = 0; m < meshes_.size(); ++m) {
    if (hcSegment *s = segmentOf(static_cast<int>(m))) s->setDisplay(type, value);
    if (hcMeshGeometry *g = geometry(m); g && type == hcSegment::ON) g->setVisibility(value);
  }
}

int hcSmoothSkinImpl::getNPsurfReps(hcSegment *seg) {
  OpRecord rec("hcSmoothSkinImpl::getNPsurfReps", seg);
  return getBoneID(seg) >= 0 ? 1 : 0;
}

hcPsurf *hcSmoothSkinImpl::getPsurfRep(int i, hcSegment *seg, float *bound, int flag) {
  OpRecord rec("hcSmoothSkinImpl::getPsurfRep", i, seg, static_cast<void *>(bound), flag);
  const int m = getBoneID(seg);
  if (m < 0 || i != 0) return nullptr;
  update();
  const auto &pts = meshes_[static_cast<std::size_t>(m)].shown;
  if (bound && !pts.empty()) {
    hVector c(0, 0, 0);
    for (const hVector &p : pts)
      for (int k = 0; k < 3; ++k) c.v[k] += p.v[k] / static_cast<float>(pts.size());
    float r = 0;
    for (const hVector &p : pts) r = std::max(r, std::sqrt(dot(sub(p, c), sub(p, c))));
    bound[0] = c.v[0];
    bound[1] = c.v[1];
    bound[2] = c.v[2];
    bound[3] = r;
  }
  return &meshes_[static_cast<std::size_t>(m)].psurf;
}

void hcSmoothSkinImpl::printPsurfRep(hcSegment *seg, const char *outdir, const char *filename, int global) {
  OpRecord rec("hcSmoothSkinImpl::printPsurfRep", seg, outdir, filename, global);
  const int m = getBoneID(seg);
  if (m < 0 || !outdir || !filename || !*filename) return;
  update();
  hMatrix frame;
  seg->getGlobal(frame);
  const hMatrix back = inverse(frame);
  hcmsg::writeText((std::string(*outdir ? outdir : ".") + "/" + filename).c_str(),
            psurfOf({static_cast<std::size_t>(m)}, global ? nullptr : &back, 0.00005f, false, 1));
}

std::string hcSmoothSkinImpl::psurfOf(const std::vector<std::size_t> &meshes, const hMatrix *frame, float tolerance,
                                      bool split, int nodeOffset) const {
  hccore::Quiet quiet;
  std::vector<hVector> points;
  std::vector<std::vector<int>> faces;
  for (std::size_t m : meshes) {
    const int base = static_cast<int>(points.size());
    for (const hVector &p : meshes_[m].shown) points.push_back(frame ? apply(*frame, p) : p);
    hcMeshGeometry *g = geometry(m);
    for (int f = 0; g && f < g->getNumFaces(); ++f) {
      std::vector<int> face;
      for (int k = 0; k < g->getNumFaceVertices(f); ++k) face.push_back(base + g->getFaceNode(f, k));
      faces.push_back(std::move(face));
    }
  }
  return hcgeometry_detail::psurfText(points, faces, nodeOffset, tolerance, split);
}
