// hcGeometry: nodes, faces and the fields derived from them; edits; boxes.
#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstdio>
#include <cstdint>
#include <map>

#include "host/geometry.h"
#include "host/material.h"
#include "figure/figure_detail.h"
#include "geometry/geometry_detail.h"

using namespace hcfigure_detail;

namespace {

// The fields every geometry keeps.
constexpr unsigned long kKept = hcGeometry::nodeCoords | hcGeometry::nodeNormals | hcGeometry::nodeColors |
                                hcGeometry::edgeHeads | hcGeometry::edgeTails | hcGeometry::edgeLefts |
                                hcGeometry::edgeRights | hcGeometry::faceVertices | hcGeometry::faceAttributes |
                                hcGeometry::faceNormals | hcGeometry::faceCenters | hcGeometry::faceEdges;

hVector minus(const hVector &a, const hVector &b) {
  return hVector(a.v[0] - b.v[0], a.v[1] - b.v[1], a.v[2] - b.v[2]);
}

}  // namespace

hcGeometry::hcGeometry() : attributes_(kKept) {}

hcGeometry::~hcGeometry() { hccore::destroying(this, "hcGeometry::~hcGeometry"); }

void hcGeometry::rebuild() {
  edges_.clear();
  std::map<std::pair<int, int>, int> byNodes;
  for (std::size_t f = 0; f < faces_.size(); ++f) {
    Face &face = faces_[f];
    face.edges.clear();
    const std::size_t n = face.nodes.size();
    // Newell's method: a unit normal for any simple polygon.
    double nx = 0, ny = 0, nz = 0, cx = 0, cy = 0, cz = 0;
    for (std::size_t k = 0; k < n; ++k) {
      const hVector &a = nodes_[face.nodes[k]].coords;
      const hVector &b = nodes_[face.nodes[(k + 1) % n]].coords;
      nx += double(a.v[1] - b.v[1]) * (a.v[2] + b.v[2]);
      ny += double(a.v[2] - b.v[2]) * (a.v[0] + b.v[0]);
      nz += double(a.v[0] - b.v[0]) * (a.v[1] + b.v[1]);
      cx += a.v[0], cy += a.v[1], cz += a.v[2];
      const int tail = face.nodes[k], head = face.nodes[(k + 1) % n];
      const auto key = std::minmax(tail, head);
      auto it = byNodes.find(key);
      if (it == byNodes.end()) {
        it = byNodes.emplace(key, static_cast<int>(edges_.size())).first;
        edges_.push_back({tail, head, static_cast<int>(f), -1});
      } else if (edges_[it->second].right < 0 && edges_[it->second].left != static_cast<int>(f)) {
        edges_[it->second].right = static_cast<int>(f);
      }
      face.edges.push_back(it->second);
    }
    const double len = std::sqrt(nx * nx + ny * ny + nz * nz);
    face.normal = len > 0 ? hVector(float(nx / len), float(ny / len), float(nz / len)) : hVector();
    face.center = n ? hVector(float(cx / n), float(cy / n), float(cz / n)) : hVector();
  }
  // Node normals: the mean of the normals of the faces using the node.
  std::vector<hVector> sum(nodes_.size());
  for (const Face &face : faces_)
    for (int node : face.nodes)
      for (int i = 0; i < 3; ++i) sum[node].v[i] += face.normal.v[i];
  for (std::size_t k = 0; k < nodes_.size(); ++k) {
    if (nodes_[k].normalGiven) continue;
    const hVector &s = sum[k];
    const double len = std::sqrt(double(s.v[0]) * s.v[0] + double(s.v[1]) * s.v[1] + double(s.v[2]) * s.v[2]);
    nodes_[k].normal = len > 0 ? hVector(float(s.v[0] / len), float(s.v[1] / len), float(s.v[2] / len)) : hVector();
  }
}

int hcGeometry::hasAttribute(hasFlag flag) {
  OpRecord rec("hcGeometry::hasAttribute", int(flag));
  const unsigned long bits = static_cast<unsigned long>(flag);
  return bits && (attributes_ & bits) == bits ? 1 : 0;
}

unsigned long hcGeometry::removeAttribute(hasFlag flag) {
  OpRecord rec("hcGeometry::removeAttribute", int(flag));
  attributes_ &= ~static_cast<unsigned long>(flag);
  return attributes_;
}

void hcGeometry::getScaleVector(hVector *scale) {
  OpRecord rec("hcGeometry::getScaleVector", scale);
  if (scale) *scale = scale_;
}

int hcGeometry::getNumNodes() {
  OpRecord rec("hcGeometry::getNumNodes");
  return static_cast<int>(nodes_.size());
}

void hcGeometry::getNodeCoords(int nodeIndex, hVector &nodeCoords) {
  OpRecord rec("hcGeometry::getNodeCoords", nodeIndex, addr(&nodeCoords));
  if (validNode(nodeIndex)) nodeCoords = nodes_[nodeIndex].coords;
}

void hcGeometry::getNodeNormal(int nodeIndex, hVector &nodeNormal) {
  OpRecord rec("hcGeometry::getNodeNormal", nodeIndex, addr(&nodeNormal));
  if (validNode(nodeIndex)) nodeNormal = nodes_[nodeIndex].normal;
}

void hcGeometry::getNodeColor(int nodeIndex, hVector &nodeColor) {
  OpRecord rec("hcGeometry::getNodeColor", nodeIndex, addr(&nodeColor));
  if (validNode(nodeIndex)) nodeColor = nodes_[nodeIndex].color;
}

int hcGeometry::getNumFaces() {
  OpRecord rec("hcGeometry::getNumFaces");
  return static_cast<int>(faces_.size());
}

void hcGeometry::getFaceNormal(int faceIndex, hVector &faceNormal) {
  OpRecord rec("hcGeometry::getFaceNormal", faceIndex, addr(&faceNormal));
  if (validFace(faceIndex)) faceNormal = faces_[faceIndex].normal;
}

int hcGeometry::getNumFaceVertices(int faceIndex) {
  OpRecord rec("hcGeometry::getNumFaceVertices", faceIndex);
  return validFace(faceIndex) ? static_cast<int>(faces_[faceIndex].nodes.size()) : -1;
}

int hcGeometry::getNumEdges() {
  OpRecord rec("hcGeometry::getNumEdges");
  return static_cast<int>(edges_.size());
}

int hcGeometry::getNumFaceEdges(int faceIndex) {
  OpRecord rec("hcGeometry::getNumFaceEdges", faceIndex);
  return validFace(faceIndex) ? static_cast<int>(faces_[faceIndex].edges.size()) : -1;
}

int hcGeometry::getFaceEdge(int faceIndex, int faceEdge) {
  OpRecord rec("hcGeometry::getFaceEdge", faceIndex, faceEdge);
  if (!validFace(faceIndex)) return -1;
  const auto &e = faces_[faceIndex].edges;
  return faceEdge >= 0 && faceEdge < static_cast<int>(e.size()) ? e[faceEdge] : -1;
}

int hcGeometry::getFaceNode(int faceIndex, int faceVertex) {
  OpRecord rec("hcGeometry::getFaceNode", faceIndex, faceVertex);
  if (!validFace(faceIndex)) return -1;
  const auto &n = faces_[faceIndex].nodes;
  return faceVertex >= 0 && faceVertex < static_cast<int>(n.size()) ? n[faceVertex] : -1;
}

int hcGeometry::getFaceTexCoords(int faceIndex, int faceVertex, float *u, float *v) {
  OpRecord rec("hcGeometry::getFaceTexCoords", faceIndex, faceVertex, u, v);
  if (!validFace(faceIndex) || !u || !v) return 0;
  const Face &f = faces_[faceIndex];
  if (faceVertex < 0 || faceVertex >= static_cast<int>(f.u.size())) return 0;
  *u = f.u[faceVertex];
  *v = f.v[faceVertex];
  return 1;
}

int hcGeometry::getFaceSmoothShade(int faceIndex) {
  OpRecord rec("hcGeometry::getFaceSmoothShade", faceIndex);
  return validFace(faceIndex) ? faces_[faceIndex].smooth : -1;
}

int hcGeometry::getNumMaterials() {
  OpRecord rec("hcGeometry::getNumMaterials");
  return static_cast<int>(materials_.size());
}

hcMaterial *hcGeometry::getMaterial(int i) {
  OpRecord rec("hcGeometry::getMaterial", i);
  if (i < 0 || i >= static_cast<int>(materials_.size())) return nullptr;
  hcMaterial *m = materials_[i];
  return hcIsLiveObject(m) ? m : nullptr;  // a material may have been destroyed since
}

int hcGeometry::getFaceMaterial(int faceIndex) {
  OpRecord rec("hcGeometry::getFaceMaterial", faceIndex);
  return validFace(faceIndex) ? faces_[faceIndex].material : -1;
}

int hcGeometry::getFaceCenter(int face, hVector &v) {
  OpRecord rec("hcGeometry::getFaceCenter", face, addr(&v));
  if (!validFace(face)) return 0;
  v = faces_[face].center;
  return 1;
}

void hcGeometry::updateAllFields() {
  OpRecord rec("hcGeometry::updateAllFields");
  rebuild();
}

const char *hcGeometry::getFileName() {
  OpRecord rec("hcGeometry::getFileName");
  return fileName_.c_str();
}

int hcGeometry::getEdgeHead(int edge) {
  OpRecord rec("hcGeometry::getEdgeHead", edge);
  return validEdge(edge) ? edges_[edge].head : -1;
}

int hcGeometry::getEdgeTail(int edge) {
  OpRecord rec("hcGeometry::getEdgeTail", edge);
  return validEdge(edge) ? edges_[edge].tail : -1;
}

int hcGeometry::getEdgeLeft(int edge) {
  OpRecord rec("hcGeometry::getEdgeLeft", edge);
  return validEdge(edge) ? edges_[edge].left : -1;
}

int hcGeometry::getEdgeRight(int edge) {
  OpRecord rec("hcGeometry::getEdgeRight", edge);
  return validEdge(edge) ? edges_[edge].right : -1;
}

int hcGeometry::boxOf(const hMatrix &model, const hMatrix *frame, float *min, float *max, int extend) {
  if (!min || !max || nodes_.empty()) return 0;
  float lo[3], hi[3];
  for (int i = 0; i < 3; ++i) {
    lo[i] = extend ? min[i] : FLT_MAX;
    hi[i] = extend ? max[i] : -FLT_MAX;
  }
  hccore::Quiet quiet;
  for (const Node &n : nodes_) {
    hVector p = n.coords;
    if (frame) p.xform(*frame);
    p.xform(model);
    for (int i = 0; i < 3; ++i) {
      lo[i] = std::min(lo[i], p.v[i]);
      hi[i] = std::max(hi[i], p.v[i]);
    }
  }
  for (int i = 0; i < 3; ++i) min[i] = lo[i], max[i] = hi[i];
  return 1;
}

int hcGeometry::bbox(float model[4][4], float *min, float *max, int extend) {
  OpRecord rec("hcGeometry::bbox(float)", min, max, extend);
  if (!model) return 0;
  hMatrix m;
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) m.m[r][c] = model[r][c];
  return boxOf(m, nullptr, min, max, extend);
}

int hcGeometry::bbox(hMatrix model, float *min, float *max, int extend) {
  OpRecord rec("hcGeometry::bbox", min, max, extend);
  return boxOf(model, nullptr, min, max, extend);
}

void hcGeometry::setNodeLocation(int node, hVector &vec) {
  OpRecord rec("hcGeometry::setNodeLocation", node, addr(&vec));
  if (!validNode(node)) return;
  for (float c : vec.v)
    if (!std::isfinite(c)) return;
  nodes_[node].coords = vec;
  rebuild();
}

int hcGeometry::deleteNode(int n, int deletefaces) {
  OpRecord rec("hcGeometry::deleteNode", n, deletefaces);
  if (!validNode(n)) return 0;
  auto uses = [n](const Face &f) { return std::find(f.nodes.begin(), f.nodes.end(), n) != f.nodes.end(); };
  const bool used = std::any_of(faces_.begin(), faces_.end(), uses);
  if (used && !deletefaces) return 0;
  std::erase_if(faces_, uses);
  nodes_.erase(nodes_.begin() + n);
  for (Face &f : faces_)
    for (int &k : f.nodes)
      if (k > n) --k;
  rebuild();
  return 1;
}

int hcGeometry::deleteEdge(int e) {
  OpRecord rec("hcGeometry::deleteEdge", e);
  if (!validEdge(e)) return 0;
  const int left = edges_[e].left, right = edges_[e].right;
  // The higher index first, so the lower stays valid.
  if (right > left && right >= 0) faces_.erase(faces_.begin() + right);
  if (left >= 0) faces_.erase(faces_.begin() + left);
  if (right >= 0 && right < left) faces_.erase(faces_.begin() + right);
  rebuild();
  return 1;
}

int hcGeometry::deleteFace(int f) {
  OpRecord rec("hcGeometry::deleteFace", f);
  if (!validFace(f)) return 0;
  faces_.erase(faces_.begin() + f);
  rebuild();
  return 1;
}

int hcGeometry::createNode() {
  OpRecord rec("hcGeometry::createNode");
  nodes_.push_back(Node{});
  return static_cast<int>(nodes_.size()) - 1;
}

int hcGeometry::createFace(hList *nodeList) {
  OpRecord rec("hcGeometry::createFace", nodeList);
  Face face;
  for (hList *n = hList::iterator(nodeList, nullptr); n; n = hList::iterator(nodeList, n)) {
    const auto index = reinterpret_cast<std::intptr_t>(n->getData());
    if (index < 0 || index >= static_cast<std::intptr_t>(nodes_.size())) return -1;
    face.nodes.push_back(static_cast<int>(index));
  }
  if (face.nodes.size() < 3) return -1;
  faces_.push_back(std::move(face));
  rebuild();
  return static_cast<int>(faces_.size()) - 1;
}

int hcGeometry::reverseFace(int f) {
  OpRecord rec("hcGeometry::reverseFace", f);
  if (!validFace(f)) return 0;
  Face &face = faces_[f];
  std::reverse(face.nodes.begin(), face.nodes.end());
  std::reverse(face.u.begin(), face.u.end());
  std::reverse(face.v.begin(), face.v.end());
  rebuild();
  return 1;
}

int hcGeometry::saveToArchive(const char *saveID, const char *archiveID, int flags) {
  OpRecord rec("hcGeometry::saveToArchive", saveID, archiveID, flags);
  return 0;  // archives are not modelled
}

float hcgeometry_detail::faceArea(const std::vector<hVector> &pts) {
  double ax = 0, ay = 0, az = 0;
  for (std::size_t k = 1; k + 1 < pts.size(); ++k) {
    const hVector a = minus(pts[k], pts[0]), b = minus(pts[k + 1], pts[0]);
    ax += double(a.v[1]) * b.v[2] - double(a.v[2]) * b.v[1];
    ay += double(a.v[2]) * b.v[0] - double(a.v[0]) * b.v[2];
    az += double(a.v[0]) * b.v[1] - double(a.v[1]) * b.v[0];
  }
  return static_cast<float>(std::sqrt(ax * ax + ay * ay + az * az) / 2);
}

std::string hcgeometry_detail::psurfText(const std::vector<hVector> &points, const std::vector<std::vector<int>> &faces,
                                         int nodeOffset, float discardTolerance, bool split) {
  std::vector<std::vector<int>> kept;
  for (const auto &f : faces) {
    std::vector<hVector> pts;
    for (int n : f)
      if (n >= 0 && static_cast<std::size_t>(n) < points.size()) pts.push_back(points[static_cast<std::size_t>(n)]);
    if (pts.size() != f.size() || !(faceArea(pts) > discardTolerance)) continue;
    if (split && f.size() > 3) {
      for (std::size_t k = 1; k + 1 < f.size(); ++k) kept.push_back({f[0], f[k], f[k + 1]});
    } else {
      kept.push_back(f);
    }
  }
  char line[128];
  std::snprintf(line, sizeof line, "psurf %zu %zu %d\n", points.size(), kept.size(), nodeOffset);
  std::string text = line;
  for (const hVector &p : points) {
    std::snprintf(line, sizeof line, "%.9g %.9g %.9g\n", p.v[0], p.v[1], p.v[2]);
    text += line;
  }
  for (const auto &f : kept) {
    text += std::to_string(f.size());
    for (int n : f) text += " " + std::to_string(static_cast<long>(n) + nodeOffset);
    text += "\n";
  }
  return text;
}
