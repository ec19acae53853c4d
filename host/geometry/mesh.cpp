// hcMeshGeometry and hcMeshInternals: meshes on segments and their rigging.
#include <algorithm>
#include <cmath>

#include "host/figure.h"
#include "host/geometry.h"
#include "host/material.h"
#include "host/posture.h"
#include "host/skin.h"
#include "figure/figure_detail.h"

using namespace hcfigure_detail;

namespace {

constexpr std::size_t kMaxBones = 64;

// The global frame of a live segment; identity without one.
hMatrix frameOf(hcSegment *segment) {
  hMatrix m;
  if (segment && hcIsLiveObject(segment)) {
    hccore::Quiet quiet;
    segment->getGlobal(m);
  }
  return m;
}

hVector rotate(const hMatrix &m, const hVector &v) {
  hVector r;
  for (int i = 0; i < 3; ++i) r.v[i] = m.m[i][0] * v.v[0] + m.m[i][1] * v.v[1] + m.m[i][2] * v.v[2];
  return r;
}

}  // namespace

// ===========================================================================
// hcMeshGeometry

hcMeshGeometry::hcMeshGeometry(int nVertices, int nFaces, int hasTexCoords, hcFigure *parent) : figure_(parent) {
  hccore::call("hcMeshGeometry::hcMeshGeometry", nVertices, nFaces, hasTexCoords, static_cast<void *>(parent));
  nodes_.resize(static_cast<std::size_t>(std::clamp(nVertices, 0, 1 << 20)));
  faces_.resize(static_cast<std::size_t>(std::clamp(nFaces, 0, 1 << 20)));
  if (hasTexCoords) attributes_ |= faceTextures;
  rebuild();
}

hcMeshGeometry::~hcMeshGeometry() {
  hccore::destroying(this, "hcMeshGeometry::~hcMeshGeometry");
  if (segment_ && hcIsLiveObject(segment_) && segment_->getGeometry() == this) {
    hccore::Quiet quiet;
    segment_->setGeometry(nullptr);
  }
  // The internals belong to whoever made them; they only forget the mesh.
  if (m_meshInternals && m_meshInternals->mesh_ == this) m_meshInternals->mesh_ = nullptr;
}

void hcMeshGeometry::setRigidSegment(hcSegment *segment) {
  segment_ = segment;
  initial_ = frameOf(segment);
}

hcSegment *hcMeshGeometry::getRigidSegment() {
  OpRecord rec("hcMeshGeometry::getRigidSegment");
  return segment_ && hcIsLiveObject(segment_) ? segment_ : nullptr;
}

void hcMeshGeometry::getInitialState(hMatrix &m) {
  OpRecord rec("hcMeshGeometry::getInitialState", addr(&m));
  m = initial_;
}

bool hcMeshGeometry::blend(int index, hVector *coords, hVector *normals) {
  const hcMeshInternals::Vertex *v = m_meshInternals && !bones_.empty() ? m_meshInternals->vertex(index) : nullptr;
  if (!v || v->count == 0) return false;
  hVector p(0, 0, 0), n(0, 0, 0);
  float total = 0;
  for (int k = 0; k < v->count; ++k) {
    const auto &in = v->in[k];
    if (in.bone < 0 || in.bone >= static_cast<int>(bones_.size())) continue;
    hMatrix now = in.frame;  // a bone that cannot answer leaves the vertex at rest
    bones_[static_cast<std::size_t>(in.bone)]->getGlobal(now);
    const hMatrix move = mul(now, inverse(in.frame));
    const hVector q = apply(now, in.offset), r = rotate(move, v->restNormal);
    for (int i = 0; i < 3; ++i) {
      p.v[i] += in.weight * q.v[i];
      n.v[i] += in.weight * r.v[i];
    }
    total += in.weight;
  }
  if (!(total > 0)) return false;
  const float len = std::sqrt(n.v[0] * n.v[0] + n.v[1] * n.v[1] + n.v[2] * n.v[2]);
  for (int i = 0; i < 3; ++i) {
    p.v[i] /= total;
    if (len > 0) n.v[i] /= len;
  }
  if (coords) *coords = p;
  if (normals) *normals = n;
  return true;
}

void hcMeshGeometry::getDeformedNodeCoords(int index, hVector *coords, hVector *normals) {
  OpRecord rec("hcMeshGeometry::getDeformedNodeCoords", index, coords, normals);
  if (!validNode(index)) return;
  hccore::Quiet blendQuiet;
  if (blend(index, coords, normals)) return;
  const hMatrix frame = frameOf(getRigidSegment());
  hccore::Quiet quiet;
  if (coords) {
    *coords = nodes_[index].coords;
    coords->xform(frame);
  }
  if (normals) *normals = rotate(frame, nodes_[index].normal);
}

void hcMeshGeometry::getDeformedCoords(hVector *coords, hVector *normals) {
  OpRecord rec("hcMeshGeometry::getDeformedCoords", coords, normals);
  hccore::Quiet quiet;
  getDeformedNodeCoords(0, coords, normals);
}

hcMeshInternals *hcMeshGeometry::getMeshInternals() {
  OpRecord rec("hcMeshGeometry::getMeshInternals");
  return m_meshInternals;
}

sgMesh *hcMeshGeometry::getSG() {
  OpRecord rec("hcMeshGeometry::getSG");
  return nullptr;  // no scene graph here
}

int hcMeshGeometry::getNumLandmarks() {
  OpRecord rec("hcMeshGeometry::getNumLandmarks");
  return m_meshInternals ? static_cast<int>(m_meshInternals->landmarks_.size()) : 0;
}

hcLandmark *hcMeshGeometry::getLandmark(int i) {
  OpRecord rec("hcMeshGeometry::getLandmark", i);
  if (!m_meshInternals) return nullptr;
  hccore::Quiet quiet;
  return m_meshInternals->getLandmark(i);
}

hcFigure *hcMeshGeometry::getFigure() {
  OpRecord rec("hcMeshGeometry::getFigure");
  if (hcSegment *s = getRigidSegment()) {
    hccore::Quiet quiet;
    return s->getFigure();
  }
  return figure_ && hcIsLiveObject(figure_) ? figure_ : nullptr;
}

void hcMeshGeometry::constructExtInfo(hMatrix figRoot, hcBone **boneArray) {
  OpRecord rec("hcMeshGeometry::constructExtInfo", static_cast<void *>(boneArray));
  extRoot_ = figRoot;
  bones_.clear();
  for (std::size_t i = 0; boneArray && i < kMaxBones && boneArray[i]; ++i) bones_.push_back(boneArray[i]);
}

int hcMeshGeometry::getNBones() {
  OpRecord rec("hcMeshGeometry::getNBones");
  return static_cast<int>(bones_.size());
}

int hcMeshGeometry::convertBoneIndex(int globalIndex) {
  OpRecord rec("hcMeshGeometry::convertBoneIndex", globalIndex);
  return globalIndex >= 0 && globalIndex < static_cast<int>(bones_.size()) ? globalIndex : -1;
}

int hcMeshGeometry::getVertexBones(int i, int *bones) {
  OpRecord rec("hcMeshGeometry::getVertexBones", i, bones);
  hccore::Quiet quiet;
  return m_meshInternals ? m_meshInternals->getVertexBones(i, bones) : 0;
}

int hcMeshGeometry::getVertexWeights(int i, float *bones) {
  OpRecord rec("hcMeshGeometry::getVertexWeights", i, bones);
  hccore::Quiet quiet;
  return m_meshInternals ? m_meshInternals->getVertexWeights(i, bones) : 0;
}

void hcMeshGeometry::setNodeNormal(int node, hVector &vec) {
  OpRecord rec("hcMeshGeometry::setNodeNormal", node, addr(&vec));
  if (!validNode(node)) return;
  const double len = std::sqrt(double(vec.v[0]) * vec.v[0] + double(vec.v[1]) * vec.v[1] +
                               double(vec.v[2]) * vec.v[2]);
  if (!(len > 0) || !std::isfinite(len)) return;  // a direction is needed
  nodes_[node].normal = hVector(float(vec.v[0] / len), float(vec.v[1] / len), float(vec.v[2] / len));
  nodes_[node].normalGiven = true;
}

void hcMeshGeometry::setVisibility(int on) {
  OpRecord rec("hcMeshGeometry::setVisibility", on);
  visible_ = on ? 1 : 0;
}

void hcMeshGeometry::getUndeformedNodeCoords(int nodeIndex, hVector &nodeCoords) {
  OpRecord rec("hcMeshGeometry::getUndeformedNodeCoords", nodeIndex, addr(&nodeCoords));
  if (validNode(nodeIndex)) nodeCoords = nodes_[nodeIndex].coords;
}

int hcMeshGeometry::bbox(int global, hMatrix model, float *min, float *max, int extend) {
  OpRecord rec("hcMeshGeometry::bbox", global, min, max, extend);
  const hMatrix frame = frameOf(getRigidSegment());
  return boxOf(model, global ? &frame : nullptr, min, max, extend);
}

hcMaterial *hcMeshGeometry::getMaterial(int i) {
  OpRecord rec("hcMeshGeometry::getMaterial", i);
  hccore::Quiet quiet;
  return hcGeometry::getMaterial(i);
}

// ===========================================================================
// hcMeshInternals

hcMeshInternals::hcMeshInternals(hcMeshGeometry *m) : mesh_(m), flags_(new hcDisplayFlags) {
  hccore::call("hcMeshInternals::hcMeshInternals", static_cast<void *>(m));
  if (m) {
    vertices_.resize(m->nodes_.size());
    m->m_meshInternals = this;
  }
}

hcMeshInternals::~hcMeshInternals() {
  hccore::call("hcMeshInternals::~hcMeshInternals");
  if (mesh_ && hcIsLiveObject(mesh_)) {
    if (mesh_->m_meshInternals == this) mesh_->m_meshInternals = nullptr;
  }
  delete flags_;
}

hcMeshInternals::Vertex *hcMeshInternals::vertex(int i) {
  if (i < 0) return nullptr;
  // The mesh may have gained nodes since the internals were made.
  const std::size_t nodes = mesh_ && hcIsLiveObject(mesh_) ? mesh_->nodes_.size() : vertices_.size();
  if (static_cast<std::size_t>(i) >= nodes) return nullptr;
  if (vertices_.size() < nodes) vertices_.resize(nodes);
  return &vertices_[static_cast<std::size_t>(i)];
}

void hcMeshInternals::compact(Vertex &v) {
  int k = 0;
  for (int i = 0; i < kInfluences; ++i)
    if (v.in[i].weight > 0) v.in[k++] = v.in[i];
  for (int i = k; i < kInfluences; ++i) v.in[i] = Influence{};
  v.count = k;
}

hcDisplayFlags *hcMeshInternals::getDisplayFlags() {
  hccore::call("hcMeshInternals::getDisplayFlags");
  return flags_;
}

void hcMeshInternals::setNeighbors(meshList neighbors) {
  hccore::call("hcMeshInternals::setNeighbors", static_cast<int>(neighbors.size()));
  neighbors_.assign(neighbors.begin(), neighbors.end());
}

int hcMeshInternals::getNNeighbors() {
  hccore::call("hcMeshInternals::getNNeighbors");
  return static_cast<int>(neighbors_.size());
}

hcMeshGeometry *hcMeshInternals::getNeighbor(int i) {
  hccore::call("hcMeshInternals::getNeighbor", i);
  if (i < 0 || i >= static_cast<int>(neighbors_.size())) return nullptr;
  hcMeshGeometry *m = neighbors_[static_cast<std::size_t>(i)];
  return hcIsLiveObject(m) ? m : nullptr;
}

void hcMeshInternals::getSharedVertices(int neighborID, intList &thisMesh, intList &neighborMesh) {
  hccore::call("hcMeshInternals::getSharedVertices", neighborID);
  hccore::Quiet quiet;
  hcMeshGeometry *other = getNeighbor(neighborID);
  if (!other || !mesh_ || !hcIsLiveObject(mesh_)) return;
  const float eps = hcSmoothSkin::s_seamVertexEpsilon;
  for (std::size_t a = 0; a < mesh_->nodes_.size(); ++a)
    for (std::size_t b = 0; b < other->nodes_.size(); ++b) {
      const hVector &p = mesh_->nodes_[a].coords, &q = other->nodes_[b].coords;
      if (std::fabs(p.v[0] - q.v[0]) <= eps && std::fabs(p.v[1] - q.v[1]) <= eps &&
          std::fabs(p.v[2] - q.v[2]) <= eps) {
        thisMesh.push_back(static_cast<int>(a));
        neighborMesh.push_back(static_cast<int>(b));
        break;
      }
    }
}

void hcMeshInternals::synchroniseBoundaries() {
  hccore::call("hcMeshInternals::synchroniseBoundaries");
  hccore::Quiet quiet;
  for (int i = 0; i < static_cast<int>(neighbors_.size()); ++i) {
    intList mine, theirs;
    getSharedVertices(i, mine, theirs);
    hcMeshGeometry *other = getNeighbor(i);
    if (!other) continue;
    auto t = theirs.begin();
    for (auto m = mine.begin(); m != mine.end(); ++m, ++t)
      other->nodes_[static_cast<std::size_t>(*t)].coords = mesh_->nodes_[static_cast<std::size_t>(*m)].coords;
    other->rebuild();
  }
}

void hcMeshInternals::validateSharedVertices() {
  hccore::call("hcMeshInternals::validateSharedVertices");
  std::erase_if(neighbors_, [this](hcMeshGeometry *m) { return !hcIsLiveObject(m) || m == mesh_; });
}

void hcMeshInternals::setLandmarkRefs(landmarkList l) {
  hccore::call("hcMeshInternals::setLandmarkRefs", static_cast<int>(l.size()));
  landmarks_.assign(l.begin(), l.end());
}

hcLandmarkImpl *hcMeshInternals::getLandmark(int i) {
  hccore::call("hcMeshInternals::getLandmark", i);
  if (i < 0 || i >= static_cast<int>(landmarks_.size())) return nullptr;
  hcLandmarkImpl *l = landmarks_[static_cast<std::size_t>(i)];
  return hcIsLiveObject(l) ? l : nullptr;
}

int hcMeshInternals::getNumLandmarks() {
  hccore::call("hcMeshInternals::getNumLandmarks");
  return static_cast<int>(landmarks_.size());
}

int hcMeshInternals::getVertexBones(int i, int *bones) {
  hccore::call("hcMeshInternals::getVertexBones", i, static_cast<void *>(bones));
  Vertex *v = vertex(i);
  if (!v || !bones) return 0;
  for (int k = 0; k < v->count; ++k) bones[k] = v->in[k].bone;
  return v->count;
}

int hcMeshInternals::getVertexWeights(int i, float *bones) {
  hccore::call("hcMeshInternals::getVertexWeights", i, static_cast<void *>(bones));
  Vertex *v = vertex(i);
  if (!v || !bones) return 0;
  for (int k = 0; k < v->count; ++k) bones[k] = v->in[k].weight;
  return v->count;
}

int hcMeshInternals::getVertexOffsets(int i, hVector &v0, hVector &v1, hVector &v2, hVector &v3) {
  hccore::call("hcMeshInternals::getVertexOffsets", i);
  Vertex *v = vertex(i);
  if (!v) return 0;
  hVector *out[kInfluences] = {&v0, &v1, &v2, &v3};
  for (int k = 0; k < v->count; ++k) *out[k] = v->in[k].offset;
  return v->count;
}

int hcMeshInternals::getVertexFrames(int i, hMatrix &m0, hMatrix &m1, hMatrix &m2, hMatrix &m3) {
  hccore::call("hcMeshInternals::getVertexFrames", i);
  Vertex *v = vertex(i);
  if (!v) return 0;
  hMatrix *out[kInfluences] = {&m0, &m1, &m2, &m3};
  for (int k = 0; k < v->count; ++k) *out[k] = v->in[k].frame;
  return v->count;
}

int hcMeshInternals::getVertexRestNormal(int i, hVector &m) {
  hccore::call("hcMeshInternals::getVertexRestNormal", i);
  Vertex *v = vertex(i);
  if (!v) return 0;
  m = v->restNormal;
  return 1;
}

void hcMeshInternals::resetRigInfo(int vertID) {
  hccore::call("hcMeshInternals::resetRigInfo", vertID);
  if (Vertex *v = vertex(vertID)) *v = Vertex{};
}

void hcMeshInternals::setRigInfo(int vertID, int influenceID, int boneIndex, float weight, hMatrix boneGlobal,
                                 hVector restNormal, hVector restOffset) {
  hccore::call("hcMeshInternals::setRigInfo", vertID, influenceID, boneIndex, weight);
  Vertex *v = vertex(vertID);
  if (!v || influenceID < 0 || influenceID >= kInfluences || !(weight >= 0) || !std::isfinite(weight)) return;
  v->in[influenceID] = Influence{boneIndex, weight, restOffset, boneGlobal};
  v->restNormal = restNormal;
  compact(*v);
}

std::pair<hcMeshInternals::Vertex *, hcMeshInternals::Vertex *> hcMeshInternals::vertexPair(
    hcMeshGeometry *m_target, int v_target, hcMeshGeometry *m_source, int v_source) {
  if (!m_target || !m_source || !m_target->m_meshInternals || !m_source->m_meshInternals) return {};
  return {m_source->m_meshInternals->vertex(v_source), m_target->m_meshInternals->vertex(v_target)};
}

void hcMeshInternals::copyRigInfo(hcMeshGeometry *m_target, int v_target, hcMeshGeometry *m_source,
                                  int v_source) {
  hccore::call("hcMeshInternals::copyRigInfo", static_cast<void *>(m_target), v_target,
               static_cast<void *>(m_source), v_source);
  auto [from, to] = vertexPair(m_target, v_target, m_source, v_source);
  if (from && to) *to = *from;
}

void hcMeshInternals::copyWeightInfo(hcMeshGeometry *m_target, int v_target, hcMeshGeometry *m_source,
                                     int v_source) {
  hccore::call("hcMeshInternals::copyWeightInfo", static_cast<void *>(m_target), v_target,
               static_cast<void *>(m_source), v_source);
  auto [from, to] = vertexPair(m_target, v_target, m_source, v_source);
  if (!from || !to) return;
  for (int k = 0; k < kInfluences; ++k) {
    to->in[k].bone = from->in[k].bone;
    to->in[k].weight = from->in[k].weight;
  }
  to->count = from->count;
}

void hcMeshInternals::setWeights(hcMeshGeometry *pMesh, int vertexID, int b0, int b1, int b2, int b3, float f0,
                                 float f1, float f2, float f3) {
  hccore::call("hcMeshInternals::setWeights", static_cast<void *>(pMesh), vertexID, b0, b1, b2, b3, f0, f1, f2, f3);
  if (!pMesh || !pMesh->m_meshInternals) return;
  Vertex *v = pMesh->m_meshInternals->vertex(vertexID);
  if (!v) return;
  const int bones[kInfluences] = {b0, b1, b2, b3};
  const float weights[kInfluences] = {f0, f1, f2, f3};
  double sum = 0;
  for (float w : weights) {
    if (!(w >= 0) || !std::isfinite(w)) return;
    sum += w;
  }
  if (!(sum > 0)) return;
  for (int k = 0; k < kInfluences; ++k) {
    v->in[k].bone = bones[k];
    v->in[k].weight = static_cast<float>(weights[k] / sum);
  }
  compact(*v);
}

void hcMeshInternals::recomputeNormals() {
  hccore::call("hcMeshInternals::recomputeNormals");
  if (!mesh_ || !hcIsLiveObject(mesh_)) return;
  for (auto &n : mesh_->nodes_) n.normalGiven = false;
  mesh_->rebuild();
}

void hcMeshInternals::freeVertex2Faces() {
  hccore::call("hcMeshInternals::freeVertex2Faces");
  vertex2faces_.clear();
}

int hcMeshInternals::getNVertex2Faces(int vertexID) {
  hccore::call("hcMeshInternals::getNVertex2Faces", vertexID);
  intList faces;
  getVertex2Faces(vertexID, faces);
  return static_cast<int>(faces.size());
}

void hcMeshInternals::getVertex2Faces(int vertexID, intList &faceList) {
  hccore::call("hcMeshInternals::getVertex2Faces", vertexID);
  if (!mesh_ || !hcIsLiveObject(mesh_) || !mesh_->validNode(vertexID)) return;
  {  // rebuilt on each call: edits change it
    vertex2faces_.assign(mesh_->nodes_.size(), {});
    for (std::size_t f = 0; f < mesh_->faces_.size(); ++f)
      for (int n : mesh_->faces_[f].nodes) {
        auto &faces = vertex2faces_[static_cast<std::size_t>(n)];
        if (faces.empty() || faces.back() != static_cast<int>(f)) faces.push_back(static_cast<int>(f));
      }
  }
  for (int f : vertex2faces_[static_cast<std::size_t>(vertexID)]) faceList.push_back(f);
}

int hcMeshInternals::getNSegments() {
  hccore::call("hcMeshInternals::getNSegments");
  return mesh_ && hcIsLiveObject(mesh_) && mesh_->getRigidSegment() ? 1 : 0;
}

hcSegment *hcMeshInternals::getSegment(int i) {
  hccore::call("hcMeshInternals::getSegment", i);
  hccore::Quiet quiet;
  return i == 0 && mesh_ && hcIsLiveObject(mesh_) ? mesh_->getRigidSegment() : nullptr;
}
