// Figure files.
//
// A figure file is a sequence of blank-separated words:
//
//   hcfigure 1
//   name <figure>
//   location <16 numbers, row by row>
//   segment <name> <massFlag> <mass> <densityFlag> <density>
//     nodes <24 numbers: x y z of the 8 box nodes>
//     free <16 numbers: placement when no joint path reaches the root>
//   site <segment index> <name> <16 numbers: local location>
//   joint <name> <site index> <site index> <frozen> <number of DOFs>
//     dof <type> <axis x y z> <value> <lower> <upper> <tolerance> <rest>
//         <stiffness> <damping>                        (once per DOF)
//     displacement <16 numbers D> <16 numbers I>       (optional)
//   root <site index>
//   end
//
// Indexes count from 0 in the order the items appear; a joint without sites
// has the site indexes -1 -1, a figure without a root the root -1.  Names
// are written with blanks, '%' and control characters as %XX.  Angles are
// radians.
//
// A positions file (savePositions, poseFromFile) holds
//   hcpositions 1
//   location <16 numbers>
//   joint <name> <n> <n values>      (once per joint)
//   end
// and a global positions file "hcglobalpositions 1" followed by one
// "site <full name> <x> <y> <z>" line per site.
#include <cctype>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>

#include "core/messages.h"
#include "host/figure.h"
#include "core/word_file.h"
#include "figure/figure_detail.h"

using namespace hcfigure_detail;

namespace {

constexpr int kMaxDofs = 64;

std::string escape(const char *s) {
  std::string out;
  for (const char *p = s ? s : ""; *p; ++p) {
    unsigned char c = static_cast<unsigned char>(*p);
    if (c <= ' ' || c == '%' || c == 127) {
      char buf[4];
      std::snprintf(buf, sizeof buf, "%%%02X", c);
      out += buf;
    } else {
      out += char(c);
    }
  }
  return out;
}

bool unescape(const std::string &in, std::string &out) {
  out.clear();
  for (size_t i = 0; i < in.size(); ++i) {
    if (in[i] != '%') {
      out += in[i];
      continue;
    }
    if (i + 2 >= in.size()) return false;
    char hex[3] = {in[i + 1], in[i + 2], 0};
    char *end;
    long c = std::strtol(hex, &end, 16);
    if (*end || !std::isxdigit(static_cast<unsigned char>(hex[0])) || c == 0)
      return false;
    out += char(c);
    i += 2;
  }
  return !out.empty();
}

void writeMatrix(FILE *f, const hMatrix &m) {
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) std::fprintf(f, " %.9g", m.m[r][c]);
}

bool finish(FILE *f) {
  bool ok = !std::ferror(f);
  return (std::fclose(f) == 0) && ok;
}

// A cursor over the words of a file; every read checks what it gets.
class Words {
 public:
  explicit Words(const std::vector<std::string> &w) : w_(w) {}

  bool atEnd() const { return i_ >= w_.size(); }
  bool word(std::string &out) {
    if (atEnd()) return false;
    out = w_[i_++];
    return true;
  }
  bool expect(const char *keyword) {
    std::string s;
    return word(s) && s == keyword;
  }
  bool name(std::string &out) {
    std::string s;
    return word(s) && unescape(s, out);
  }
  bool number(float &out) {
    std::string s;
    if (!word(s)) return false;
    char *end;
    errno = 0;
    out = std::strtof(s.c_str(), &end);
    return *end == 0 && errno == 0 && std::isfinite(out);
  }
  bool integer(long lo, long hi, long &out) {
    std::string s;
    if (!word(s)) return false;
    char *end;
    errno = 0;
    out = std::strtol(s.c_str(), &end, 10);
    return *end == 0 && errno == 0 && out >= lo && out <= hi;
  }
  bool matrix(hMatrix &m) {
    for (int r = 0; r < 4; ++r)
      for (int c = 0; c < 4; ++c)
        if (!number(m.m[r][c])) return false;
    return true;
  }
  bool vector(hVector &v) {
    return number(v.v[0]) && number(v.v[1]) && number(v.v[2]);
  }

 private:
  const std::vector<std::string> &w_;
  size_t i_ = 0;
};

}  // namespace

// ---------------------------------------------------------------------------
// Whole figures.

int hcFigure::saveToFile(const char *filename, int withMaterials,
                         int withDisplacements) {
  OpRecord rec("hcFigure::saveToFile", filename, withMaterials,
               withDisplacements);
  // Materials are not modelled, so withMaterials adds nothing to the file.
  if (!saveImpl(filename, withDisplacements)) return 0;
  fileName_ = filename;
  hasFileName_ = true;
  modified_ = 0;
  return 1;
}

int hcFigure::saveImpl(const char *filename, int withDisplacements) {
  if (!filename || !*filename) return 0;
  // The text is made in memory and only written when the reader takes it
  // back, so that every figure saved with success reads back.
  char *buffer = nullptr;
  std::size_t length = 0;
  FILE *f = open_memstream(&buffer, &length);
  if (!f) return 0;
  std::fprintf(f, "hcfigure 1\nname %s\nlocation", escape(name).c_str());
  writeMatrix(f, location_);
  std::fprintf(f, "\n");

  std::map<hcSegment *, int> segIndex;
  for (hcSegment *seg : items<hcSegment>(segments_)) {
    int idx = int(segIndex.size());
    segIndex[seg] = idx;
    std::fprintf(f, "segment %s %d %.9g %d %.9g\n  nodes",
                 escape(seg->name).c_str(), seg->massFlag_, seg->mass_,
                 seg->densityFlag_, seg->density_);
    for (const hVector &n : seg->nodes_)
      std::fprintf(f, " %.9g %.9g %.9g", n.v[0], n.v[1], n.v[2]);
    std::fprintf(f, "\n  free");
    writeMatrix(f, seg->free_);
    std::fprintf(f, "\n");
  }

  std::map<hcSite *, int> siteIndex;
  for (hcSite *s : items<hcSite>(sites_)) {
    int idx = int(siteIndex.size());
    siteIndex[s] = idx;
    std::fprintf(f, "site %d %s", segIndex[s->segment_], escape(s->name).c_str());
    writeMatrix(f, s->location_);
    std::fprintf(f, "\n");
  }

  for (hcJoint *j : items<hcJoint>(joints_)) {
    int a = j->site1_ ? siteIndex[j->site1_] : -1;
    int b = j->site2_ ? siteIndex[j->site2_] : -1;
    std::fprintf(f, "joint %s %d %d %d %d\n", escape(j->name).c_str(), a, b,
                 j->frozen_, int(j->dofs_.size()));
    for (const hcJoint::Dof &d : j->dofs_)
      std::fprintf(f,
                   "  dof %d %.9g %.9g %.9g %.9g %.9g %.9g %.9g %.9g %.9g "
                   "%.9g\n",
                   d.type, d.axis.v[0], d.axis.v[1], d.axis.v[2], d.value,
                   d.lower, d.upper, d.tolerance, d.rest, d.stiffness, d.damp);
    if (withDisplacements) {
      std::fprintf(f, "  displacement");
      writeMatrix(f, j->displacement_);
      writeMatrix(f, j->displacementInv_);
      std::fprintf(f, "\n");
    }
  }

  hcSite *r = effectiveRoot();
  std::fprintf(f, "root %d\nend\n", r ? siteIndex[r] : -1);
  bool made = finish(f);
  std::string text(buffer ? buffer : "", buffer ? length : 0);
  std::free(buffer);
  if (!made || !readsBack(text)) return 0;
  FILE *out = hcmsg::open(filename, "w");
  if (!out) return 0;
  std::fwrite(text.data(), 1, text.size(), out);
  return finish(out) ? 1 : 0;
}

bool hcFigure::readsBack(const std::string &text) {
  hccore::Quiet quiet;
  std::vector<std::string> words;
  if (!hcio::splitWords(text, "hcfigure", words)) return false;
  hcFigure *check = parseFigure(words);
  if (!check) return false;
  delete check;
  return true;
}

hcFigure *hcFigure::readFromFile(const char *filename, const char *newName) {
  OpRecord rec("hcFigure::readFromFile", filename, newName);
  std::vector<std::string> words;
  hcFigure *fig = hcio::readWords(filename, "hcfigure", words) ? parseFigure(words) : nullptr;
  if (!fig) {
    hcmsg::unparsable(filename);
    return nullptr;
  }
  if (newName && *newName) {
    std::string n = newName;
    fig->setFullName("", n.c_str());
    fig->refreshFullNames();
  }
  fig->fileName_ = filename;
  fig->hasFileName_ = true;
  fig->modified_ = 0;
  return fig;
}

hcFigure *hcFigure::parseFigure(const std::vector<std::string> &words) {
  Words in(words);
  std::string figName;
  hMatrix location;
  if (!in.expect("hcfigure") || !in.expect("1") || !in.expect("name") ||
      !in.name(figName) || !in.expect("location") || !in.matrix(location))
    return nullptr;

  hcFigure *fig = createInMemory(figName.c_str());
  fig->location_ = location;
  std::vector<hcSegment *> segs;
  std::vector<hcSite *> sites;
  hcJoint *lastJoint = nullptr;  // the joint a displacement line belongs to
  auto fail = [&]() -> hcFigure * {
    destroy(fig);
    return nullptr;
  };

  auto readSegment = [&]() {
    std::string n;
    long massFlag, densityFlag;
    float mass, density;
    if (!in.name(n) || !in.integer(0, 1, massFlag) || !in.number(mass) ||
        !in.integer(0, 1, densityFlag) || !in.number(density) || mass < 0 ||
        density < 0 || !in.expect("nodes"))
      return false;
    hcSegment *seg = hcSegment::createInMemory(fig, n.c_str());
    if (!seg) return false;
    segs.push_back(seg);
    seg->massFlag_ = int(massFlag);
    seg->mass_ = mass;
    seg->densityFlag_ = int(densityFlag);
    seg->density_ = density;
    for (hVector &node : seg->nodes_)
      if (!in.vector(node)) return false;
    return in.expect("free") && in.matrix(seg->free_);
  };

  auto readSite = [&]() {
    long segIdx;
    std::string n;
    hMatrix loc;
    if (!in.integer(0, long(segs.size()) - 1, segIdx) || !in.name(n) ||
        !in.matrix(loc))
      return false;
    hcSite *s = hcSite::create(n.c_str(), segs[segIdx]);
    if (!s) return false;
    s->location_ = loc;
    sites.push_back(s);
    return true;
  };

  auto readJoint = [&]() {
    std::string n;
    long a, b, frozen, ndofs;
    long last = long(sites.size()) - 1;
    if (!in.name(n) || !in.integer(-1, last, a) || !in.integer(-1, last, b) ||
        !in.integer(0, 1, frozen) || !in.integer(0, kMaxDofs, ndofs))
      return false;
    if ((a < 0) != (b < 0)) return false;
    hcJoint *j = hcJoint::createInMemory(fig, n.c_str());
    if (!j) return false;
    lastJoint = j;
    if (a >= 0 && !j->assignConnectivity(sites[a], sites[b])) return false;
    j->frozen_ = int(frozen);
    for (long k = 0; k < ndofs; ++k) {
      long type;
      hVector axis;
      float v[7];
      if (!in.expect("dof") || !in.integer(hcJoint::ROT, hcJoint::TRANS, type) ||
          !in.vector(axis))
        return false;
      for (float &x : v)
        if (!in.number(x)) return false;
      if (!j->appendDOF(int(type), axis)) return false;
      hcJoint::Dof &d = j->dofs_.back();
      d.value = v[0];
      d.lower = v[1];
      d.upper = v[2];
      d.tolerance = v[3];
      d.rest = v[4];
      d.stiffness = v[5];
      d.damp = v[6];
    }
    return true;
  };

  for (;;) {
    std::string key;
    if (!in.word(key)) return fail();  // no "end"
    bool ok;
    hcJoint *owner = lastJoint;
    lastJoint = nullptr;
    if (key == "segment") {
      ok = readSegment();
    } else if (key == "site") {
      ok = readSite();
    } else if (key == "joint") {
      ok = readJoint();
    } else if (key == "displacement") {
      ok = owner && in.matrix(owner->displacement_) &&
           in.matrix(owner->displacementInv_);
    } else if (key == "root") {
      long r;
      ok = in.integer(-1, long(sites.size()) - 1, r);
      if (ok) fig->root_ = r >= 0 ? sites[r] : nullptr;
    } else if (key == "end") {
      if (!in.atEnd()) return fail();
      break;
    } else {
      ok = false;
    }
    if (!ok) return fail();
  }
  fig->touch();
  return fig;
}

// ---------------------------------------------------------------------------
// Positions.

int hcFigure::savePositions(const char *filename, int attachment) {
  OpRecord rec("hcFigure::savePositions", filename, attachment);
  // No figure is attached to another here, so attachment adds nothing.
  return writePositions(filename);
}

int hcFigure::writePositions(const char *filename) {
  if (!filename || !*filename) return 0;
  FILE *f = hcmsg::open(filename, "w");
  if (!f) return 0;
  std::fprintf(f, "hcpositions 1\nlocation");
  writeMatrix(f, location_);
  std::fprintf(f, "\n");
  for (hcJoint *j : items<hcJoint>(joints_)) {
    std::fprintf(f, "joint %s %d", escape(j->name).c_str(),
                 int(j->dofs_.size()));
    for (const hcJoint::Dof &d : j->dofs_) std::fprintf(f, " %.9g", d.value);
    std::fprintf(f, "\n");
  }
  std::fprintf(f, "end\n");
  return finish(f) ? 1 : 0;
}

int hcFigure::poseFromFile(const char *posturename, const char *filename) {
  OpRecord rec("hcFigure::poseFromFile", posturename, filename);
  const int ok = readPositions(filename);
  if (!ok) hcmsg::unparsable(filename);
  return ok;
}

int hcFigure::readPositions(const char *filename) {
  std::vector<std::string> words;
  if (!hcio::readWords(filename, "hcpositions", words)) return 0;
  Words in(words);
  hMatrix location;
  if (!in.expect("hcpositions") || !in.expect("1") || !in.expect("location") ||
      !in.matrix(location))
    return 0;
  // Everything is checked before anything changes.
  std::vector<std::pair<hcJoint *, std::vector<float>>> values;
  for (;;) {
    std::string key;
    if (!in.word(key)) return 0;
    if (key == "end") {
      if (!in.atEnd()) return 0;
      break;
    }
    std::string n;
    long count;
    if (key != "joint" || !in.name(n) || !in.integer(0, kMaxDofs, count))
      return 0;
    hcJoint *j = findJointImpl(n.c_str());
    if (!j || long(j->dofs_.size()) != count) return 0;
    std::vector<float> v(count);
    for (float &x : v)
      if (!in.number(x)) return 0;
    values.emplace_back(j, std::move(v));
  }
  location_ = location;
  for (auto &[j, v] : values)
    for (size_t k = 0; k < v.size(); ++k) j->dofs_[k].value = v[k];
  touch();
  return 1;
}

int hcFigure::saveGlobalPositions(const char *filename) {
  OpRecord rec("hcFigure::saveGlobalPositions", filename);
  if (!filename || !*filename) return 0;
  FILE *f = hcmsg::open(filename, "w");
  if (!f) return 0;
  std::fprintf(f, "hcglobalpositions 1\n");
  for (hcSite *s : items<hcSite>(sites_)) {
    hVector p = origin(s->globalImpl());
    std::fprintf(f, "site %s %.9g %.9g %.9g\n", escape(s->fullname).c_str(),
                 p.v[0], p.v[1], p.v[2]);
  }
  return finish(f) ? 1 : 0;
}
