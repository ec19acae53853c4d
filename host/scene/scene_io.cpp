// hcScene: scene files, position files and figure states (formats in
// host/scene.h).
#include <cctype>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "core/messages.h"
#include "core/word_file.h"
#include "scene/scene_detail.h"
#include "figure/figure_detail.h"

using namespace hcfigure_detail;
using namespace hcscene_detail;

namespace {

// Blanks, '%' and control characters as %XX.
std::string escape(const std::string &s) {
  std::string out;
  for (unsigned char c : s) {
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

// The text a word stands for; false for a malformed escape, a NUL or an
// empty result.
bool unescape(const std::string &in, std::string &out) {
  out.clear();
  for (std::size_t i = 0; i < in.size(); ++i) {
    if (in[i] != '%') {
      out += in[i];
      continue;
    }
    if (i + 2 >= in.size()) return false;
    const char hi = in[i + 1], lo = in[i + 2];
    if (!std::isxdigit(static_cast<unsigned char>(hi)) ||
        !std::isxdigit(static_cast<unsigned char>(lo)))
      return false;
    const char hex[3] = {hi, lo, 0};
    const long c = std::strtol(hex, nullptr, 16);
    if (c == 0) return false;
    out += char(c);
    i += 2;
  }
  return !out.empty();
}

bool finish(FILE *f) {
  const bool ok = !std::ferror(f);
  return std::fclose(f) == 0 && ok;
}

std::string directoryOf(const std::string &path) {
  const auto slash = path.rfind('/');
  return slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
}

std::string baseName(const std::string &path) {
  const auto slash = path.rfind('/');
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

// What a scene file says, read completely before anything changes.
struct SceneFile {
  float gravity = 0;
  hcScene::distUnits dist = hcScene::METERS;
  hcScene::angleUnits angle = hcScene::RADIANS;
  hcScene::massUnits mass = hcScene::KILOGRAMS;
  int cleanTree = 0;
  std::vector<std::string> figures;  // paths as given in the file
};

bool parseScene(const std::vector<std::string> &w, SceneFile &out) {
  std::size_t i = 0;
  auto next = [&](std::string &s) {
    if (i >= w.size()) return false;
    s = w[i++];
    return true;
  };
  auto expect = [&](const char *keyword) {
    std::string s;
    return next(s) && s == keyword;
  };
  std::string g, d, a, m, c;
  if (!expect("hcscene") || !expect("1") || !expect("gravity") || !next(g) ||
      !expect("units") || !next(d) || !next(a) || !next(m) ||
      !expect("cleantree") || !next(c))
    return false;
  char *end;
  errno = 0;
  out.gravity = std::strtof(g.c_str(), &end);
  if (*end || errno || !std::isfinite(out.gravity)) return false;
  if (!unitNamed(d.c_str(), out.dist) || !unitNamed(a.c_str(), out.angle) ||
      !unitNamed(m.c_str(), out.mass))
    return false;
  if (c != "0" && c != "1") return false;
  out.cleanTree = c == "1";
  std::string key;
  while (next(key)) {
    if (key == "end") return i == w.size();
    std::string word, path;
    if (key != "figure" || !next(word) || !unescape(word, path)) return false;
    out.figures.push_back(path);
  }
  return false;  // no "end"
}

}  // namespace

// ---------------------------------------------------------------------------
// Scene files.

int hcScene::load(const char *filename) {
  OpRecord rec("hcScene::load", filename);
  inParser_ = 1;
  const int ok = readScene(filename);
  inParser_ = 0;
  if (!ok) hcmsg::unparsable(filename);
  return ok;
}

int hcScene::readScene(const char *filename) {
  std::vector<std::string> words;
  SceneFile file;
  if (!hcio::readWords(filename, "hcscene", words) || !parseScene(words, file)) return 0;

  const std::string dir = directoryOf(filename);
  std::vector<hcFigure *> read;
  for (const std::string &p : file.figures) {
    const std::string path = p[0] == '/' ? p : dir + p;
    hcFigure *f = hcFigure::readFromFile(path.c_str(), nullptr);
    if (!f) {
      for (hcFigure *done : read) hcFigure::destroy(done);
      return 0;
    }
    read.push_back(f);
  }
  for (hcFigure *f : read) hold(FIGURE, f);
  gravity_ = file.gravity;
  dist_ = file.dist;
  angle_ = file.angle;
  mass_ = file.mass;
  cleanTree_ = file.cleanTree;
  modified_ = 0;
  return 1;
}

int hcScene::save(const char *filename, int withPostures) {
  OpRecord rec("hcScene::save", filename, withPostures);
  if (!writeScene(filename)) return 0;
  modified_ = 0;
  return 1;
}

int hcScene::writeScene(const char *filename) {
  if (!filename || !*filename) return 0;
  std::vector<std::string> names;
  int n = 0;
  for (hcFigure *f : figures()) {
    const std::string path = std::string(filename) + "." + std::to_string(n++) + ".fig";
    if (!f->saveToFile(path.c_str(), 1, 1)) return 0;
    names.push_back(baseName(path));
  }
  FILE *out = hcmsg::open(filename, "w");
  if (!out) return 0;
  std::fprintf(out, "hcscene 1\ngravity %.9g\nunits %s %s %s\ncleantree %d\n",
               gravity_, unitName(dist_), unitName(angle_), unitName(mass_),
               cleanTree_);
  for (const std::string &name : names)
    std::fprintf(out, "figure %s\n", escape(name).c_str());
  std::fprintf(out, "end\n");
  return finish(out) ? 1 : 0;
}

// ---------------------------------------------------------------------------
// Positions.

int hcScene::savePositions(const char *filename, int docamera,
                           int allAttachments) {
  OpRecord rec("hcScene::savePositions", filename, docamera, allAttachments);
  return writePositions(filename, allAttachments);
}

int hcScene::writePositions(const char *filename, int allAttachments) {
  if (!filename || !*filename) return 0;
  std::vector<std::pair<std::string, std::string>> lines;
  int n = 0;
  for (hcFigure *f : figures()) {
    const std::string path = std::string(filename) + "." + std::to_string(n++) + ".pos";
    if (!f->savePositions(path.c_str(), allAttachments)) return 0;
    lines.emplace_back(f->getName(), baseName(path));
  }
  FILE *out = hcmsg::open(filename, "w");
  if (!out) return 0;
  std::fprintf(out, "hcscenepositions 1\n");
  for (const auto &[name, file] : lines)
    std::fprintf(out, "figure %s %s\n", escape(name).c_str(), escape(file).c_str());
  std::fprintf(out, "end\n");
  return finish(out) ? 1 : 0;
}

int hcScene::saveFigureState(const char *filename, hcFigure *figure) {
  OpRecord rec("hcScene::saveFigureState", filename, figure);
  if (!figure) return 0;
  return figure->savePositions(filename, 0);
}
