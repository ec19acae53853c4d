// hcSegment: frames, box geometry, mass properties and display flags.
#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <vector>

#include "core/messages.h"
#include "host/figure.h"
#include "host/geometry.h"
#include "figure/figure_detail.h"

using namespace hcfigure_detail;

namespace {

// Node i of the box is at (x, y, z) with x from bit 0, y from bit 1 and z
// from bit 2 of i (0 = low side).  Faces are listed counter-clockwise seen
// from outside.
constexpr int kFaceNodes[hcSegment::kFaces][4] = {
    {0, 2, 3, 1}, {4, 5, 7, 6}, {0, 1, 5, 4},
    {2, 6, 7, 3}, {0, 4, 6, 2}, {1, 3, 7, 5}};

bool emptyText(const char *s) { return !s || !*s; }

bool positive(const hVector &s) {
  return s.v[0] > 0 && s.v[1] > 0 && s.v[2] > 0;
}

}  // namespace

hcSegment::hcSegment() {
  resetBox(0.1f);
  display_[ON] = 1;
  display_[FACES] = 1;
  display_[MODE] = shaded;
}

hcSegment::~hcSegment() {
  hccore::destroying(this, "hcSegment::~hcSegment");
  if (geometry_ && hcIsLiveObject(geometry_)) {  // the segment owns its geometry
    hccore::Quiet quiet;
    if (auto *mesh = dynamic_cast<hcMeshGeometry *>(geometry_)) mesh->setRigidSegment(nullptr);
    delete geometry_;
  }
  hList::destroy(&sites_, nullptr);
  hList::destroy(&joints_, nullptr);
}

hcSegment *hcSegment::createInMemory(hcFigure *figure, const char *name) {
  OpRecord rec("hcSegment::createInMemory", figure, name);
  if (!figure || emptyText(name) || figure->findSegmentImpl(name))
    return nullptr;
  auto *seg = new hcSegment();
  seg->figure_ = figure;
  hList::append(&figure->segments_, seg);
  std::string prefix = figure->getName() ? figure->getName() : "";
  seg->setFullName((prefix + ".").c_str(), name);
  figure->touch();
  return seg;
}

void hcSegment::editRemove(hcSegment *segment) {
  OpRecord rec("hcSegment::editRemove", segment);
  if (segment) segment->figure_->destroySegment(segment);
}

hcSegment *hcSegment::find(hList *objs, const char *fname) {
  OpRecord rec("hcSegment::find", objs, fname);
  if (!fname) return nullptr;
  for (void *p : items<void>(objs)) {
    auto *seg = dynamic_cast<hcSegment *>(static_cast<hcObject *>(p));
    if (seg && sameName(seg, fname)) return seg;
  }
  return nullptr;
}

hcSegment *hcSegment::resolve(hList *l) {
  OpRecord rec("hcSegment::resolve", l);
  // Only a live segment at the head of the list counts.
  return l && hcIsLiveObject(l->getData()) ? dynamic_cast<hcSegment *>(static_cast<hcObject *>(l->getData())) : nullptr;
}

int hcSegment::editMerge(hcSegment *segment1, hcSegment *segment2) {
  OpRecord rec("hcSegment::editMerge", segment1, segment2);
  return 0;  // merging geometry is not modelled
}

int hcSegment::editSplit(hcSegment *segment, const char *tmpdir, int sType) {
  OpRecord rec("hcSegment::editSplit", segment, tmpdir, sType);
  return 0;  // splitting geometry is not modelled
}

int hcSegment::setName(const char *newName) {
  OpRecord rec("hcSegment::setName", newName);
  if (emptyText(newName)) return 0;
  hcSegment *other = figure_->findSegmentImpl(newName);
  if (other && other != this) return 0;
  std::string n = newName;
  std::string prefix = figure_->getName() ? figure_->getName() : "";
  setFullName((prefix + ".").c_str(), n.c_str());
  figure_->refreshFullNames();
  return 1;
}

int hcSegment::searchProperty(const char *name, hcValue *value) {
  OpRecord rec("hcSegment::searchProperty", name, value);
  if (!name || !value) return 0;
  if (hcObject::searchProperty(name, value)) return 1;
  if (std::strcmp(name, "mass") == 0) {
    value->set(massImpl());
  } else if (std::strcmp(name, "volume") == 0) {
    value->set(volumeImpl());
  } else if (std::strcmp(name, "density") == 0) {
    value->set(densityImpl());
  } else if (std::strcmp(name, "figure") == 0) {
    value->set(figure_);
  } else {
    return 0;
  }
  return 1;
}

// ---------------------------------------------------------------------------
// Structure.

hcFigure *hcSegment::getFigure() {
  OpRecord rec("hcSegment::getFigure");
  return figure_;
}

int hcSegment::getNJoints() {
  OpRecord rec("hcSegment::getNJoints");
  return hList::count(joints_);
}

hList *hcSegment::getJoints() {
  OpRecord rec("hcSegment::getJoints");
  return handedJoints_.answer(items<void>(joints_));
}

int hcSegment::getNSites() {
  OpRecord rec("hcSegment::getNSites");
  return hList::count(sites_);
}

hList *hcSegment::getSites() {
  OpRecord rec("hcSegment::getSites");
  return handedSites_.answer(items<void>(sites_));
}

hcSite *hcSegment::getRootSite() {
  OpRecord rec("hcSegment::getRootSite");
  figure_->updateFrames();
  return hangSite_;
}

hcSegment *hcSegment::parentSegment() {
  if (!parentJoint_) return nullptr;
  hcSite *s = parentJoint_->site1_ == hangSite_ ? parentJoint_->site2_
                                                : parentJoint_->site1_;
  return s->segment_;
}

void hcSegment::addSite(hcSite *site) {
  OpRecord rec("hcSegment::addSite", site);
  if (!site || site->segment_ == this) return;
  for (hcSite *s : items<hcSite>(sites_))
    if (sameName(s, site->getName())) return;
  hcSegment *old = site->segment_;
  hcFigure *oldFig = old->figure_;
  if (oldFig != figure_ && site->joints_) return;  // joints cannot cross
  remove(&old->sites_, site);
  if (oldFig != figure_) {
    remove(&oldFig->sites_, site);
    if (oldFig->root_ == site) oldFig->root_ = nullptr;
    oldFig->touch();
    hList::append(&figure_->sites_, site);
  }
  for (hcJoint *j : items<hcJoint>(site->joints_)) {
    hcSite *other = j->site1_ == site ? j->site2_ : j->site1_;
    if (other->segment_ != old) remove(&old->joints_, j);
    appendOnce(&joints_, j);
  }
  site->segment_ = this;
  hList::append(&sites_, site);
  figure_->refreshFullNames();
  figure_->touch();
}

int hcSegment::delSite(hcSite *site) {
  OpRecord rec("hcSegment::delSite", site);
  if (!site || site->segment_ != this) return 0;
  figure_->destroySite(site);
  return 1;
}

// ---------------------------------------------------------------------------
// Frames.

void hcSegment::getGlobal(hMatrix &G) {
  OpRecord rec("hcSegment::getGlobal", addr(&G));
  figure_->updateFrames();
  G = global_;
}

void hcSegment::setGlobal(hMatrix &G) {
  OpRecord rec("hcSegment::setGlobal", addr(&G));
  figure_->updateFrames();
  hMatrix delta = mul(G, inverse(global_));
  figure_->moveRigidly(this, delta);
}

void hcSegment::setCoordGlobal(hVector p, hMatrix &trans) {
  OpRecord rec("hcSegment::setCoordGlobal", argText(p).c_str(), addr(&trans));
  figure_->updateFrames();
  trans = mul(global_, translation(p));
}

hVector hcSegment::nodeGlobal(int node) {
  figure_->updateFrames();
  return apply(global_, nodes_[node]);
}

// ---------------------------------------------------------------------------
// Geometry.

void hcSegment::resetBox(float size) {
  float h = size / 2;
  for (int i = 0; i < kNodes; ++i)
    nodes_[i] = hVector(i & 1 ? h : -h, i & 2 ? h : -h, i & 4 ? h : -h);
}

void hcSegment::touchPhysics() { modified_ = 1; }

void hcSegment::scaleImpl(hVector &scale, bool withSites) {
  for (auto &n : nodes_)
    for (int i = 0; i < 3; ++i) n.v[i] *= scale.v[i];
  if (withSites) {
    for (hcSite *s : items<hcSite>(sites_))
      for (int i = 0; i < 3; ++i) s->location_.m[i][3] *= scale.v[i];
    figure_->touch();
  }
  for (int i = 0; i < 3; ++i) absScale_.v[i] *= scale.v[i];
  touchPhysics();
}

void hcSegment::applyScale(hVector &scale, int fast) {
  OpRecord rec("hcSegment::applyScale", addr(&scale), fast);
  if (positive(scale)) scaleImpl(scale, true);
}

void hcSegment::scaleGeometry(hVector &scale) {
  OpRecord rec("hcSegment::scaleGeometry", addr(&scale));
  if (positive(scale)) scaleImpl(scale, false);
}

void hcSegment::scaleFast(hVector &scale) {
  OpRecord rec("hcSegment::scaleFast", addr(&scale));
  if (positive(scale)) scaleImpl(scale, true);
}

void hcSegment::getAbsoluteScale(hVector &vec) {
  OpRecord rec("hcSegment::getAbsoluteScale", addr(&vec));
  vec = absScale_;
}

void hcSegment::transformGeometry(hMatrix M) {
  OpRecord rec("hcSegment::transformGeometry", argText(M).c_str());
  for (auto &n : nodes_) n = apply(M, n);
  touchPhysics();
}

int hcSegment::getClosestNode(hVector &vector) {
  OpRecord rec("hcSegment::getClosestNode", addr(&vector));
  int best = -1;
  float bestD = FLT_MAX;
  for (int n = 0; n < kNodes; ++n) {
    hVector p = nodeGlobal(n);
    float d = 0;
    for (int i = 0; i < 3; ++i)
      d += (p.v[i] - vector.v[i]) * (p.v[i] - vector.v[i]);
    if (d < bestD) {
      bestD = d;
      best = n;
    }
  }
  return best;
}

int hcSegment::getNodeGlobal(int node, hMatrix &matrix) {
  OpRecord rec("hcSegment::getNodeGlobal", node, addr(&matrix));
  if (node < 0 || node >= kNodes) return 0;
  hVector p = nodeGlobal(node);
  matrix = global_;
  for (int i = 0; i < 3; ++i) matrix.m[i][3] = p.v[i];
  return 1;
}

void hcSegment::setNodeLocation(int node, hVector &vec) {
  OpRecord rec("hcSegment::setNodeLocation", node, addr(&vec));
  if (node < 0 || node >= kNodes) return;
  nodes_[node] = vec;
  touchPhysics();
}

int hcSegment::saveGeometryToFile(const char *fileName, int global) {
  OpRecord rec("hcSegment::saveGeometryToFile", fileName, global);
  if (emptyText(fileName)) return 0;
  // The materials go beside the OBJ file, in one named after it.
  std::string objPath = fileName;
  const auto slash = objPath.rfind('/');
  const auto dot = objPath.rfind('.');
  const std::string stem = dot != std::string::npos && (slash == std::string::npos || dot > slash)
                               ? objPath.substr(0, dot) : objPath;
  const std::string mtlPath = stem + ".mtl";
  const std::string mtlName = mtlPath.substr(slash == std::string::npos ? 0 : slash + 1);
  std::string obj, mtl;
  if (auto *g = geometry_ && hcIsLiveObject(geometry_) ? geometry_ : nullptr) {
    hMatrix frame;
    if (global) {
      figure_->updateFrames();
      frame = global_;
    }
    g->writeObj(obj, mtl, mtlName, frame);
  } else {
    // Without a geometry the segment is its box.
    obj = "mtllib " + mtlName + "\n";
    char line[128];
    for (int n = 0; n < kNodes; ++n) {
      hVector p = global ? nodeGlobal(n) : nodes_[n];
      std::snprintf(line, sizeof line, "v %.9g %.9g %.9g\n", p.v[0], p.v[1], p.v[2]);
      obj += line;
    }
    for (const auto &face : kFaceNodes) {
      std::snprintf(line, sizeof line, "f %d %d %d %d\n", face[0] + 1, face[1] + 1, face[2] + 1, face[3] + 1);
      obj += line;
    }
  }
  return hcmsg::writeText(objPath.c_str(), obj) && hcmsg::writeText(mtlPath.c_str(), mtl) ? 1 : 0;
}

int hcSegment::getMinDistance(hcSegment *toSegment, float *dist, float *dir,
                              float eps) {
  OpRecord rec("hcSegment::getMinDistance", toSegment, dist, dir, eps);
  if (!toSegment || !dist || !dir) return 0;
  hVector best[2];
  double bestD = DBL_MAX;
  for (int a = 0; a < kNodes; ++a) {
    hVector p = nodeGlobal(a);
    for (int b = 0; b < kNodes; ++b) {
      hVector q = toSegment->nodeGlobal(b);
      double d = 0;
      for (int i = 0; i < 3; ++i) d += double(q.v[i] - p.v[i]) * (q.v[i] - p.v[i]);
      if (d < bestD) {
        bestD = d;
        best[0] = p;
        best[1] = q;
      }
    }
  }
  double d = std::sqrt(bestD);
  dist[0] = float(d);
  for (int i = 0; i < 3; ++i)
    dir[i] = d < eps ? 0.0f : float((best[1].v[i] - best[0].v[i]) / d);
  return 1;
}

int hcSegment::getBoundingBox(hVector &bmin, hVector &bmax, int global,
                              int extend, hMatrix *ref) {
  OpRecord rec("hcSegment::getBoundingBox", addr(&bmin), addr(&bmax), global,
               extend, ref);
  hVector lo(FLT_MAX, FLT_MAX, FLT_MAX), hi(-FLT_MAX, -FLT_MAX, -FLT_MAX);
  if (extend) {
    lo = bmin;
    hi = bmax;
  }
  hMatrix toRef = ref ? inverse(*ref) : hMatrix();
  for (int n = 0; n < kNodes; ++n) {
    hVector p = ref ? apply(toRef, nodeGlobal(n))
                    : global ? nodeGlobal(n) : nodes_[n];
    for (int i = 0; i < 3; ++i) {
      if (p.v[i] < lo.v[i]) lo.v[i] = p.v[i];
      if (p.v[i] > hi.v[i]) hi.v[i] = p.v[i];
    }
  }
  bmin = lo;
  bmax = hi;
  return 1;
}

int hcSegment::getCentroid(hVector &c, int global) {
  OpRecord rec("hcSegment::getCentroid", addr(&c), global);
  double sum[3] = {0, 0, 0};
  for (int n = 0; n < kNodes; ++n) {
    hVector p = global ? nodeGlobal(n) : nodes_[n];
    for (int i = 0; i < 3; ++i) sum[i] += p.v[i];
  }
  c = hVector(float(sum[0] / kNodes), float(sum[1] / kNodes),
              float(sum[2] / kNodes));
  return 1;
}

int hcSegment::setGeometry(hcGeometry *geom) {
  OpRecord rec("hcSegment::setGeometry", geom);
  hccore::Quiet quiet;
  // The geometry it replaces is handed back to whoever holds it.
  if (auto *old = dynamic_cast<hcMeshGeometry *>(geometry_); old && hcIsLiveObject(old))
    old->setRigidSegment(nullptr);
  geometry_ = geom;
  if (auto *mesh = dynamic_cast<hcMeshGeometry *>(geom)) mesh->setRigidSegment(this);
  return geom ? 1 : 0;
}

hcGeometry *hcSegment::getGeometry() {
  OpRecord rec("hcSegment::getGeometry");
  return geometry_;
}

// ---------------------------------------------------------------------------
// Mass properties of the solid hexahedron, by decomposition into
// tetrahedra (segment origin, face triangle).

void hcSegment::massProperties(float &volume, hVector &com, float cov[3][3]) {
  double vol = 0, first[3] = {0, 0, 0}, second[3][3] = {};
  for (const auto &face : kFaceNodes) {
    for (int t = 0; t < 2; ++t) {
      const hVector &a = nodes_[face[0]];
      const hVector &b = nodes_[face[t + 1]];
      const hVector &c = nodes_[face[t + 2]];
      double det = a.v[0] * (double(b.v[1]) * c.v[2] - double(b.v[2]) * c.v[1]) -
                   a.v[1] * (double(b.v[0]) * c.v[2] - double(b.v[2]) * c.v[0]) +
                   a.v[2] * (double(b.v[0]) * c.v[1] - double(b.v[1]) * c.v[0]);
      double s[3];
      for (int i = 0; i < 3; ++i) s[i] = double(a.v[i]) + b.v[i] + c.v[i];
      vol += det / 6;
      for (int i = 0; i < 3; ++i) first[i] += det / 24 * s[i];
      for (int i = 0; i < 3; ++i)
        for (int k = 0; k < 3; ++k)
          second[i][k] += det / 120 *
                          (double(a.v[i]) * a.v[k] + double(b.v[i]) * b.v[k] +
                           double(c.v[i]) * c.v[k] + s[i] * s[k]);
    }
  }
  if (vol < 0) {  // inside out: mirror every integral
    vol = -vol;
    for (int i = 0; i < 3; ++i) {
      first[i] = -first[i];
      for (int k = 0; k < 3; ++k) second[i][k] = -second[i][k];
    }
  }
  volume = float(vol);
  if (vol < 1e-12) {
    double sum[3] = {0, 0, 0};
    for (const auto &n : nodes_)
      for (int i = 0; i < 3; ++i) sum[i] += n.v[i];
    com = hVector(float(sum[0] / kNodes), float(sum[1] / kNodes),
                  float(sum[2] / kNodes));
    for (int i = 0; i < 3; ++i)
      for (int k = 0; k < 3; ++k) cov[i][k] = 0;
    return;
  }
  double c[3];
  for (int i = 0; i < 3; ++i) c[i] = first[i] / vol;
  com = hVector(float(c[0]), float(c[1]), float(c[2]));
  for (int i = 0; i < 3; ++i)
    for (int k = 0; k < 3; ++k)
      cov[i][k] = float(second[i][k] - vol * c[i] * c[k]);
}

float hcSegment::volumeImpl() {
  float vol, cov[3][3];
  hVector com;
  massProperties(vol, com, cov);
  return vol;
}

float hcSegment::massImpl() {
  return massFlag_ ? mass_ : density_ * volumeImpl();
}

float hcSegment::densityImpl() {
  if (!massFlag_) return density_;
  float vol = volumeImpl();
  return vol > 0 ? mass_ / vol : 0.0f;
}

int hcSegment::updateMassDensityVolume() {
  OpRecord rec("hcSegment::updateMassDensityVolume");
  return volumeImpl() > 0 ? 1 : 0;
}

int hcSegment::updatePhysical(int override) {
  OpRecord rec("hcSegment::updatePhysical", override);
  if (override && massFlag_) {
    density_ = densityImpl();
    massFlag_ = 0;
  }
  return 1;
}

float hcSegment::getMass() {
  OpRecord rec("hcSegment::getMass");
  return massImpl();
}

float hcSegment::getDensity() {
  OpRecord rec("hcSegment::getDensity");
  return densityImpl();
}

float hcSegment::getVolume() {
  OpRecord rec("hcSegment::getVolume");
  return volumeImpl();
}

void hcSegment::getCenterOfMass(hVector &vec) {
  OpRecord rec("hcSegment::getCenterOfMass", addr(&vec));
  float vol, cov[3][3];
  massProperties(vol, vec, cov);
}

void hcSegment::getInertiaMatrix(float *mat) {
  OpRecord rec("hcSegment::getInertiaMatrix", mat);
  if (!mat) return;
  float vol, cov[3][3];
  hVector com;
  massProperties(vol, com, cov);
  float rho = densityImpl();
  float trace = cov[0][0] + cov[1][1] + cov[2][2];
  for (int i = 0; i < 3; ++i)
    for (int k = 0; k < 3; ++k)
      mat[3 * i + k] = rho * ((i == k ? trace : 0.0f) - cov[i][k]);
}

int hcSegment::getHascom() {
  OpRecord rec("hcSegment::getHascom");
  return volumeImpl() > 0 ? 1 : 0;
}

int hcSegment::getMassFlag() {
  OpRecord rec("hcSegment::getMassFlag");
  return massFlag_;
}

int hcSegment::getDensityFlag() {
  OpRecord rec("hcSegment::getDensityFlag");
  return densityFlag_;
}

void hcSegment::setMass(float newMass) {
  OpRecord rec("hcSegment::setMass", newMass);
  if (!(newMass >= 0)) return;
  mass_ = newMass;
  massFlag_ = 1;
  densityFlag_ = 0;
  touchPhysics();
}

void hcSegment::setDensity(float newDensity) {
  OpRecord rec("hcSegment::setDensity", newDensity);
  if (!(newDensity >= 0)) return;
  density_ = newDensity;
  densityFlag_ = 1;
  massFlag_ = 0;
  touchPhysics();
}

// ---------------------------------------------------------------------------
// Display and state.

int hcSegment::getModified() {
  OpRecord rec("hcSegment::getModified");
  return modified_;
}

void hcSegment::setModified(int value) {
  OpRecord rec("hcSegment::setModified", value);
  modified_ = value;
}

void hcSegment::setDisplay(int type, int value, int subtree) {
  OpRecord rec("hcSegment::setDisplay", type, value, subtree);
  if (type < ON || type > NODL) return;
  display_[type] = value;
  if (!subtree) return;
  figure_->updateFrames();
  for (hcSegment *seg : items<hcSegment>(figure_->segments_))
    for (hcSegment *up = seg->parentSegment(); up; up = up->parentSegment())
      if (up == this) {
        seg->display_[type] = value;
        break;
      }
}

int hcSegment::getDisplay(int which) {
  OpRecord rec("hcSegment::getDisplay", which);
  if (which < ON || which > NODL) return 0;
  return display_[which];
}

// ---------------------------------------------------------------------------
// Operations of the host that this stand-in does not model.

int hcSegment::loadMaterials() {
  OpRecord rec("hcSegment::loadMaterials");
  return 0;
}

hcDisplayFlags *hcSegment::getDisplayFlags() {
  OpRecord rec("hcSegment::getDisplayFlags");
  return nullptr;
}

hcSegPhys *hcSegment::getPhysical() {
  OpRecord rec("hcSegment::getPhysical");
  return nullptr;
}

hcSegPhys *hcSegment::newSegPhys() {
  OpRecord rec("hcSegment::newSegPhys");
  return nullptr;
}

int hcSegment::setMaterials(hcMaterial **newMaterials, int newNMaterials) {
  OpRecord rec("hcSegment::setMaterials", newMaterials, newNMaterials);
  hcGeometry *g = geometry_ && hcIsLiveObject(geometry_) ? geometry_ : nullptr;
  if (!g || !newMaterials || newNMaterials <= 0) return 0;
  std::vector<hcMaterial *> given(newMaterials, newMaterials + std::min(newNMaterials, g->getNumFaces()));
  for (hcMaterial *m : given)
    if (!hcIsLiveObject(m)) return 0;
  // Face k takes material k; the faces after the last material take it.
  for (int f = 0; f < g->getNumFaces(); ++f)
    g->setFaceMaterial(f, given[std::min<std::size_t>(static_cast<std::size_t>(f), given.size() - 1)]);
  return 1;
}

int hcSegment::setMaterial(hcMaterial *newMaterial) {
  OpRecord rec("hcSegment::setMaterial", newMaterial);
  hcGeometry *g = geometry_ && hcIsLiveObject(geometry_) ? geometry_ : nullptr;
  return g && hcIsLiveObject(newMaterial) ? g->setFaceMaterial(-1, newMaterial) : 0;
}

int hcSegment::setFaceMaterial(int face, hcMaterial *material) {
  OpRecord rec("hcSegment::setFaceMaterial", face, material);
  hcGeometry *g = geometry_ && hcIsLiveObject(geometry_) ? geometry_ : nullptr;
  return g && face >= 0 && hcIsLiveObject(material) ? g->setFaceMaterial(face, material) : 0;
}

int hcSegment::replaceMaterial(hcMaterial *replMat, hcMaterial *withMat) {
  OpRecord rec("hcSegment::replaceMaterial", replMat, withMat);
  hcGeometry *g = geometry_ && hcIsLiveObject(geometry_) ? geometry_ : nullptr;
  return g && hcIsLiveObject(withMat) ? g->replaceMaterial(replMat, withMat) : 0;
}

sgSegment *hcSegment::getSG() {
  OpRecord rec("hcSegment::getSG");
  return nullptr;
}

void hcSegment::genTexCoordsFace(hcSite *camera, int face,
                                 hcSegment *texSegment, int tex_face) {
  OpRecord rec("hcSegment::genTexCoordsFace", camera, face, texSegment,
               tex_face);
}

void hcSegment::setPsurfScaleSaved() {
  OpRecord rec("hcSegment::setPsurfScaleSaved");
}
