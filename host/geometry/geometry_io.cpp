// Geometry files: Wavefront OBJ and polygon-surface text in, polygon-surface
// text out, material libraries.
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <sstream>

#include "core/messages.h"
#include "host/figure.h"
#include "host/geometry.h"
#include "host/material.h"
#include "figure/figure_detail.h"
#include "geometry/geometry_detail.h"

using namespace hcfigure_detail;

namespace {

constexpr std::size_t kMaxLine = 1u << 16;
constexpr std::size_t kMaxLines = 1u << 22;
constexpr std::size_t kMaxItems = 1u << 21;  // nodes, faces, texture coordinates

struct Closer {
  void operator()(std::FILE *f) const { std::fclose(f); }
};

// Reads the lines of a file, refusing a line or a file of unreasonable size.
bool readLines(const char *filename, std::vector<std::string> &lines) {
  if (!filename || !*filename) return false;
  std::unique_ptr<std::FILE, Closer> in(hcmsg::open(filename, "r"));
  if (!in) return false;
  std::string line;
  int c;
  while ((c = std::getc(in.get())) != EOF) {
    if (c == '\0') return false;  // no text file of ours
    if (c == '\n') {
      if (lines.size() >= kMaxLines) return false;
      lines.push_back(std::move(line));
      line.clear();
    } else if (c != '\r') {
      if (line.size() >= kMaxLine) return false;
      line += static_cast<char>(c);
    }
  }
  if (!line.empty()) lines.push_back(std::move(line));
  return !std::ferror(in.get());
}

bool toFloat(const std::string &w, float &out) {
  char *end = nullptr;
  errno = 0;
  out = std::strtof(w.c_str(), &end);
  return !w.empty() && *end == 0 && errno == 0 && std::isfinite(out);
}

bool toLong(const std::string &w, long &out) {
  char *end = nullptr;
  errno = 0;
  out = std::strtol(w.c_str(), &end, 10);
  return !w.empty() && *end == 0 && errno == 0;
}

std::string directoryOf(const std::string &path) {
  const auto slash = path.rfind('/');
  return slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
}

// An OBJ index (1-based, or negative from the end) into count items.
bool objIndex(const std::string &w, std::size_t count, int &out) {
  long i;
  if (!toLong(w, i) || i == 0) return false;
  if (i < 0) i += static_cast<long>(count) + 1;
  if (i < 1 || i > static_cast<long>(count)) return false;
  out = static_cast<int>(i - 1);
  return true;
}

}  // namespace

// Fills a geometry from file text; false, geometry unspecified, when the
// text is of neither kind or malformed.
struct GeometryFile {
  static bool readObj(hcGeometry &g, const std::vector<std::string> &lines) {
    std::vector<hVector> normals;
    std::vector<std::pair<float, float>> tex;
    int material = 0, smooth = 0;
    for (const std::string &line : lines) {
      std::istringstream in(line);
      std::string key;
      if (!(in >> key) || key[0] == '#') continue;
      std::vector<std::string> w;
      for (std::string s; in >> s;) w.push_back(s);
      if (key == "v" || key == "vn") {
        hVector p;
        if (w.size() < 3 || !toFloat(w[0], p.v[0]) || !toFloat(w[1], p.v[1]) || !toFloat(w[2], p.v[2]))
          return false;
        if (g.nodes_.size() >= kMaxItems || normals.size() >= kMaxItems) return false;
        if (key == "v") {
          g.nodes_.push_back({p, hVector(), hVector(0.8f, 0.8f, 0.8f), false});
        } else {
          normals.push_back(p);
        }
      } else if (key == "vt") {
        float u, v = 0;
        if (w.empty() || !toFloat(w[0], u) || (w.size() > 1 && !toFloat(w[1], v)) || tex.size() >= kMaxItems)
          return false;
        tex.emplace_back(u, v);
      } else if (key == "f") {
        if (w.size() < 3 || g.faces_.size() >= kMaxItems) return false;
        hcGeometry::Face face;
        face.material = material;
        face.smooth = smooth;
        bool textured = true;
        for (const std::string &vertex : w) {
          // v, v/t, v//n or v/t/n
          std::string parts[3];
          std::size_t k = 0;
          for (char ch : vertex) {
            if (ch == '/') {
              if (++k > 2) return false;
            } else {
              parts[k] += ch;
            }
          }
          int node;
          if (!objIndex(parts[0], g.nodes_.size(), node)) return false;
          face.nodes.push_back(node);
          int t;
          if (!parts[1].empty() && objIndex(parts[1], tex.size(), t)) {
            face.u.push_back(tex[t].first);
            face.v.push_back(tex[t].second);
          } else if (!parts[1].empty()) {
            return false;
          } else {
            textured = false;
          }
          int n;
          if (!parts[2].empty()) {
            if (!objIndex(parts[2], normals.size(), n)) return false;
            g.nodes_[node].normal = normals[n];
            g.nodes_[node].normalGiven = true;
          }
        }
        if (!textured) face.u.clear(), face.v.clear();
        g.faces_.push_back(std::move(face));
      } else if (key == "s") {
        smooth = !w.empty() && w[0] != "off" && w[0] != "0";
      } else if (key == "usemtl") {
        if (w.empty()) return false;
        material = -1;
        for (std::size_t i = 0; i < g.materialNames_.size(); ++i)
          if (g.materialNames_[i] == w[0]) material = static_cast<int>(i);
        if (material < 0) {
          material = static_cast<int>(g.materialNames_.size());
          g.materialNames_.push_back(w[0]);
        }
      } else if (key == "mtllib") {
        if (!w.empty()) g.materialLibrary_ = w[0];
      }
      // Other statements (o, g, l, ...) carry nothing the geometry keeps.
    }
    if (g.nodes_.empty()) return false;
    bool anyTexture = false;
    for (const auto &f : g.faces_) anyTexture = anyTexture || !f.u.empty();
    if (anyTexture) g.attributes_ |= hcGeometry::faceTextures;
    return true;
  }

  static bool readPsurf(hcGeometry &g, const std::vector<std::string> &lines) {
    std::istringstream head(lines[0]);
    std::string key;
    long nodes, faces, offset;
    std::string a, b, c;
    if (!(head >> key >> a >> b >> c) || key != "psurf" || !toLong(a, nodes) || !toLong(b, faces) ||
        !toLong(c, offset) || nodes < 1 || faces < 0 || nodes > long(kMaxItems) || faces > long(kMaxItems) ||
        lines.size() < static_cast<std::size_t>(1 + nodes + faces))
      return false;
    for (long i = 0; i < nodes; ++i) {
      std::istringstream in(lines[1 + i]);
      std::string x, y, z;
      hVector p;
      if (!(in >> x >> y >> z) || !toFloat(x, p.v[0]) || !toFloat(y, p.v[1]) || !toFloat(z, p.v[2])) return false;
      g.nodes_.push_back({p, hVector(), hVector(0.8f, 0.8f, 0.8f), false});
    }
    for (long i = 0; i < faces; ++i) {
      std::istringstream in(lines[1 + nodes + i]);
      std::string w;
      long count;
      if (!(in >> w) || !toLong(w, count) || count < 3 || count > nodes) return false;
      hcGeometry::Face face;
      for (long k = 0; k < count; ++k) {
        long index;
        if (!(in >> w) || !toLong(w, index) || index - offset < 0 || index - offset >= nodes) return false;
        face.nodes.push_back(static_cast<int>(index - offset));
      }
      g.faces_.push_back(std::move(face));
    }
    return true;
  }

  // Shared materials named in the library file, made when unknown; the
  // geometry's material slots then follow its usemtl names.
  static void loadLibrary(hcGeometry &g) {
    if (!g.materialLibrary_.empty()) {
      std::string path = g.materialLibrary_[0] == '/' ? g.materialLibrary_
                                                      : directoryOf(g.fileName_) + g.materialLibrary_;
      std::vector<std::string> lines;
      if (readLines(path.c_str(), lines)) {
        // A material's statements are applied once it is read whole: the
        // colour first (Kc, else Kd), since it rescales ambient and diffuse.
        struct Pending {
          hcMaterial *m = nullptr;
          bool has[5] = {};  // Ka Kd Kc Ks Tf
          hVector v[5];
          float d = -1, ns = -1;
          std::string map;
        } p;
        auto apply = [&p]() {
          if (!p.m) return;
          if (p.has[2] || p.has[1]) p.m->setColor(p.v[p.has[2] ? 2 : 1]);
          if (p.has[0]) p.m->setAmbient(p.v[0]);
          if (p.has[1]) p.m->setDiffuse(p.v[1]);
          if (p.has[3]) p.m->setSpecular(p.v[3]);
          if (p.has[4]) p.m->setTransparent(p.v[4]);
          if (p.d >= 0 && !p.has[4]) {
            hVector t(1 - p.d, 1 - p.d, 1 - p.d);
            p.m->setTransparent(t);
          }
          if (p.ns >= 0) p.m->setGlossiness(static_cast<int>(p.ns));
          if (!p.map.empty()) p.m->setTexture(p.map.c_str(), "diffuse", 1);
          p = Pending{};
        };
        static const char *const kTriples[5] = {"Ka", "Kd", "Kc", "Ks", "Tf"};
        for (const std::string &line : lines) {
          std::istringstream in(line);
          std::string key;
          if (!(in >> key)) continue;
          std::vector<std::string> w;
          for (std::string s; in >> s;) w.push_back(s);
          if (key == "newmtl" && !w.empty()) {
            apply();
            // Known materials keep their values.
            if (!hcMaterial::find(w[0].c_str())) p.m = hcMaterial::create(w[0].c_str());
            continue;
          }
          if (!p.m) continue;
          hVector v;
          const bool triple = w.size() >= 3 && toFloat(w[0], v.v[0]) && toFloat(w[1], v.v[1]) &&
                              toFloat(w[2], v.v[2]);
          for (int k = 0; k < 5; ++k)
            if (key == kTriples[k] && triple) p.has[k] = true, p.v[k] = v;
          float x;
          if (key == "d" && !w.empty() && toFloat(w[0], x)) p.d = x;
          if (key == "Ns" && !w.empty() && toFloat(w[0], x)) p.ns = x;
          if (key == "map_Kd" && !w.empty()) p.map = w.back();
        }
        apply();
      }
    }
    g.materials_.assign(g.materialNames_.size(), nullptr);
    for (std::size_t i = 0; i < g.materialNames_.size(); ++i)
      g.materials_[i] = hcMaterial::find(g.materialNames_[i].c_str());
  }
};

void hcGeometry::loadMaterials() {
  OpRecord rec("hcGeometry::loadMaterials");
  hccore::Quiet quiet;
  GeometryFile::loadLibrary(*this);
}

hcGeometry *hcGeometry::read(const char *fileName, hVector *scale) {
  OpRecord rec("hcGeometry::read", fileName, scale);
  std::vector<std::string> lines;
  if (!readLines(fileName, lines) || lines.empty()) {
    hcmsg::unparsable(fileName);
    return nullptr;
  }
  hccore::Quiet quiet;
  auto *mesh = new hcMeshGeometry(0, 0, 0, nullptr);
  std::istringstream first(lines[0]);
  std::string key;
  first >> key;
  const bool ok = key == "psurf" ? GeometryFile::readPsurf(*mesh, lines) : GeometryFile::readObj(*mesh, lines);
  if (!ok) {
    delete mesh;
    hcmsg::unparsable(fileName);
    return nullptr;
  }
  if (scale) {
    mesh->scale_ = *scale;
    for (auto &n : mesh->nodes_)
      for (int i = 0; i < 3; ++i) n.coords.v[i] *= scale->v[i];
  }
  mesh->fileName_ = fileName;
  std::string base = fileName;
  base = base.substr(base.rfind('/') + 1);
  mesh->setName(base.c_str());
  mesh->rebuild();
  GeometryFile::loadLibrary(*mesh);
  return mesh;
}

hcFigure *hcGeometry::readFromFile(const char *fileName, const char *newName) {
  OpRecord rec("hcGeometry::readFromFile", fileName, newName);
  if (!newName || !*newName) return nullptr;
  hcGeometry *g = read(fileName, nullptr);
  if (!g) return nullptr;
  hccore::Quiet quiet;
  hcFigure *fig = hcFigure::createInMemory(newName);
  hcSegment *seg = fig ? hcSegment::createInMemory(fig, newName) : nullptr;
  if (!seg) {
    delete g;
    if (fig) hcFigure::destroy(fig);
    return nullptr;
  }
  seg->setGeometry(g);
  return fig;
}

void hcMeshGeometry::writeToPsurf(const char *filename, int nodeOffset, float discardTolerance) {
  OpRecord rec("hcMeshGeometry::writeToPsurf", filename, nodeOffset, discardTolerance);
  if (!filename || !*filename) return;
  std::vector<hVector> points;
  for (const Node &n : nodes_) points.push_back(n.coords);
  std::vector<std::vector<int>> faces;
  for (const Face &f : faces_) faces.push_back(f.nodes);
  hcmsg::writeText(filename, hcgeometry_detail::psurfText(points, faces, nodeOffset, discardTolerance, false));
}

// ---------------------------------------------------------------------------
// Materials of faces; OBJ output.

int hcGeometry::setFaceMaterial(int face, hcMaterial *material) {
  if (!material || (face != -1 && !validFace(face))) return 0;
  int slot = -1;
  for (std::size_t i = 0; i < materials_.size(); ++i)
    if (materials_[i] == material) slot = static_cast<int>(i);
  if (slot < 0) {
    slot = static_cast<int>(materials_.size());
    materials_.push_back(material);
    materialNames_.resize(materials_.size());
    materialNames_.back() = material->getName() ? material->getName() : "";
  }
  for (std::size_t f = 0; f < faces_.size(); ++f)
    if (face == -1 || static_cast<int>(f) == face) faces_[f].material = slot;
  return 1;
}

int hcGeometry::replaceMaterial(hcMaterial *replaced, hcMaterial *with) {
  if (!replaced || !with) return 0;
  int changed = 0;
  for (std::size_t i = 0; i < materials_.size(); ++i)
    if (materials_[i] == replaced) {
      materials_[i] = with;
      for (const Face &f : faces_) changed += f.material == static_cast<int>(i);
    }
  return changed;
}

bool hcGeometry::usesMaterial(const hcMaterial *material) {
  for (const Face &f : faces_)
    if (f.material >= 0 && f.material < static_cast<int>(materials_.size()) && materials_[f.material] == material)
      return true;
  return false;
}

void hcGeometry::writeObj(std::string &obj, std::string &mtl, const std::string &mtlName, const hMatrix &frame) {
  char line[160];
  obj = "mtllib " + mtlName + "\n";
  hccore::Quiet quiet;
  for (const Node &n : nodes_) {
    hVector p = n.coords;
    p.xform(frame);
    std::snprintf(line, sizeof line, "v %.9g %.9g %.9g\n", p.v[0], p.v[1], p.v[2]);
    obj += line;
  }
  int current = -2;
  for (const Face &f : faces_) {
    if (f.nodes.empty()) continue;
    if (f.material != current) {
      current = f.material;
      hcMaterial *m = current >= 0 && current < static_cast<int>(materials_.size()) ? materials_[current] : nullptr;
      if (m && hcIsLiveObject(m) && m->getName() && *m->getName()) obj += std::string("usemtl ") + m->getName() + "\n";
    }
    obj += "f";
    for (int n : f.nodes) obj += " " + std::to_string(n + 1);
    obj += "\n";
  }
  mtl.clear();
  for (hcMaterial *m : materials_) {
    if (!m || !hcIsLiveObject(m) || !m->getName() || !*m->getName()) continue;
    hVector a, d, sp, t;
    m->getAmbient(a);
    m->getDiffuse(d);
    m->getSpecular(sp);
    m->getTransparent(t);
    hVector c;
    m->getColor(c);
    std::snprintf(line, sizeof line, "newmtl %s\n", m->getName());
    mtl += line;
    std::snprintf(line, sizeof line, "Kc %.6g %.6g %.6g\nKa %.6g %.6g %.6g\n", c.v[0], c.v[1], c.v[2], a.v[0],
                  a.v[1], a.v[2]);
    mtl += line;
    std::snprintf(line, sizeof line, "Kd %.6g %.6g %.6g\nKs %.6g %.6g %.6g\n", d.v[0], d.v[1], d.v[2], sp.v[0],
                  sp.v[1], sp.v[2]);
    mtl += line;
    std::snprintf(line, sizeof line, "Tf %.6g %.6g %.6g\nNs %d\n", t.v[0], t.v[1], t.v[2], m->getGlossiness());
    mtl += line;
  }
}
