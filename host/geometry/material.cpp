// Host library: materials, and the watches that follow subjects.
#include <algorithm>
#include <cstring>

#include "host/geometry.h"
#include "host/material.h"
#include "geometry/material_watch.h"
#include "figure/figure_detail.h"

using namespace hcfigure_detail;
using hcmaterial_detail::Watch;

// ---------------------------------------------------------------------------
// Watch

class Watch::Observer : public hcObserver {
 public:
  Observer(Watch *watch, const char *label, hcSubject *subject)
      : hcObserver(label, "hcObserver", subject, hcObserver::DESTROY), watch_(watch) {}

  ~Observer() override {
    if (watch_) watch_->observer_ = nullptr;
  }

  void update(int protocol) override {
    if (protocol != hcObserver::DESTROY || !watch_) return;
    watch_->subject_ = nullptr;
    // The subject skips observers that are gone by the time it reaches them.
    delete this;
  }

  Watch *watch_;
};

void Watch::watch(const char *label, hcSubject *subject) {
  release();
  if (!subject) return;
  hccore::Quiet quiet;
  observer_ = new Observer(this, label, subject);
  subject_ = subject;
}

hcSubject *Watch::target() {
  if (subject_ && (!observer_ || observer_->getSubject() != subject_)) subject_ = nullptr;
  return subject_;
}

void Watch::release() {
  subject_ = nullptr;
  if (!observer_) return;
  hccore::Quiet quiet;
  observer_->watch_ = nullptr;
  delete observer_;
  observer_ = nullptr;
}

// ---------------------------------------------------------------------------
// Registry

namespace {

// Every material in creation order; never freed, so that it outlives every
// material whatever the order of static destruction.
std::vector<hcMaterial *> &materials() {
  static auto *all = new std::vector<hcMaterial *>;
  return *all;
}

// Host lists handed out by list() and getMaterials(), rebuilt on each call.
// The lists answered by getMaterials (0) and list (1).
hList *answer(int which, const std::vector<hcMaterial *> &items) {
  static auto *lists = new HandedList[2];  // kept for the life of the process
  return lists[which].answer(std::vector<void *>(items.begin(), items.end()));
}

bool sameText(const char *a, const char *b) { return std::strcmp(a ? a : "", b ? b : "") == 0; }

float mean(const hVector &v) { return (v.v[0] + v.v[1] + v.v[2]) / 3.0f; }

hVector scaled(const hVector &v, float k) { return hVector(v.v[0] * k, v.v[1] * k, v.v[2] * k); }

// The figure an object belongs to: the figure itself, or its part's.
hcFigure *figureOf(hcObject *o) {
  if (!o) return nullptr;
  hccore::Quiet quiet;
  if (auto *f = dynamic_cast<hcFigure *>(o)) return f;
  if (auto *s = dynamic_cast<hcSegment *>(o)) return s->getFigure();
  if (auto *s = dynamic_cast<hcSite *>(o)) return s->getFigure();
  if (auto *j = dynamic_cast<hcJoint *>(o)) return j->getFigure();
  return nullptr;
}

}  // namespace

// ---------------------------------------------------------------------------
// hcMaterial

hcMaterial::hcMaterial(const char *name) : owner_(new Watch) {
  setFullName("", name ? name : "");
  materials().push_back(this);
}

hcMaterial::~hcMaterial() {
  hccore::destroying(this, "hcMaterial::~hcMaterial");
  auto &all = materials();
  all.erase(std::remove(all.begin(), all.end(), this), all.end());
  delete owner_;
}

hcObject *hcMaterial::getOwner() { return owner_->as<hcObject>(); }

hcMaterial *hcMaterial::findIn(hcObject *owner, const char *name) {
  for (hcMaterial *m : materials())
    if (m->getOwner() == owner && sameText(m->name, name)) return m;
  return nullptr;
}

void hcMaterial::refreshCoefficients() {
  const float c = mean(color_);
  kAmbient_ = c != 0.0f ? mean(ambient_) / c : 0.0f;
  kDiffuse_ = c != 0.0f ? mean(diffuse_) / c : 0.0f;
}

hcMaterial *hcMaterial::create(const char *newName) {
  OpRecord rec("hcMaterial::create", newName);
  if (newName && *newName && findIn(nullptr, newName)) return nullptr;
  return new hcMaterial(newName);
}

hcMaterial *hcMaterial::resolve(hList *l) {
  OpRecord rec("hcMaterial::resolve", l);
  // Only a live material at the head of the list counts.
  return l && hcIsLiveObject(l->getData()) ? dynamic_cast<hcMaterial *>(static_cast<hcObject *>(l->getData())) : nullptr;
}

int hcMaterial::count() {
  OpRecord rec("hcMaterial::count");
  return static_cast<int>(materials().size());
}

hcMaterial *hcMaterial::find(const char *name, hcObject *owner) {
  OpRecord rec("hcMaterial::find", name, owner);
  if (!name) return nullptr;
  if (owner)
    if (hcMaterial *m = findIn(owner, name)) return m;
  return findIn(nullptr, name);
}

hList *hcMaterial::getMaterials(hcObject *object) {
  OpRecord rec("hcMaterial::getMaterials", object);
  if (!object) return nullptr;
  const bool figure = dynamic_cast<hcFigure *>(object) != nullptr;
  std::vector<hcMaterial *> out;
  for (hcMaterial *m : materials()) {
    hcObject *owner = m->getOwner();
    if (owner && (owner == object || (figure && figureOf(owner) == object))) out.push_back(m);
  }
  return answer(0, out);
}

hList *hcMaterial::list() {
  OpRecord rec("hcMaterial::list");
  return answer(1, materials());
}

int hcMaterial::loadUserPalette() {
  OpRecord rec("hcMaterial::loadUserPalette");
  return 0;  // palette files are not modelled
}

int hcMaterial::destroy(hcObject *owner, hcMaterial *material) {
  OpRecord rec("hcMaterial::destroy", owner, material);
  if (material) {
    if (material->getOwner() != owner) return 0;
    delete material;
    return 1;
  }
  if (!owner) return 0;
  std::vector<hcMaterial *> doomed;
  for (hcMaterial *m : materials())
    if (m->getOwner() == owner) doomed.push_back(m);
  for (hcMaterial *m : doomed) delete m;
  return static_cast<int>(doomed.size());
}

int hcMaterial::setName(const char *newName) {
  OpRecord rec("hcMaterial::setName", newName);
  if (!newName) return 0;
  hcMaterial *same = findIn(getOwner(), newName);
  if (same && same != this) return 0;
  return hcObject::setName(newName);
}

void hcMaterial::setColor(hVector &color) {
  OpRecord rec("hcMaterial::setColor", color);
  color_ = color;
  ambient_ = scaled(color, kAmbient_);
  diffuse_ = scaled(color, kDiffuse_);
}

void hcMaterial::getColor(hVector &color) {
  OpRecord rec("hcMaterial::getColor", addr(&color));
  color = color_;
}

void hcMaterial::getAmbient(hVector &ambient) {
  OpRecord rec("hcMaterial::getAmbient", addr(&ambient));
  ambient = ambient_;
}

void hcMaterial::getDiffuse(hVector &diffuse) {
  OpRecord rec("hcMaterial::getDiffuse", addr(&diffuse));
  diffuse = diffuse_;
}

void hcMaterial::getSpecular(hVector &specular) {
  OpRecord rec("hcMaterial::getSpecular", addr(&specular));
  specular = specular_;
}

void hcMaterial::getTransparent(hVector &trans) {
  OpRecord rec("hcMaterial::getTransparent", addr(&trans));
  trans = transparent_;
}

void hcMaterial::setAmbient(hVector &ambient) {
  OpRecord rec("hcMaterial::setAmbient", ambient);
  ambient_ = ambient;
  refreshCoefficients();
}

void hcMaterial::setDiffuse(hVector &diffuse) {
  OpRecord rec("hcMaterial::setDiffuse", diffuse);
  diffuse_ = diffuse;
  refreshCoefficients();
}

void hcMaterial::setSpecular(hVector &specular) {
  OpRecord rec("hcMaterial::setSpecular", specular);
  specular_ = specular;
}

void hcMaterial::setTransparent(hVector &trans) {
  OpRecord rec("hcMaterial::setTransparent", trans);
  transparent_ = trans;
}

void hcMaterial::setTexture(const char *filename, const char *type, int nreps) {
  OpRecord rec("hcMaterial::setTexture", filename, type, nreps);
  hasTexture_ = filename != nullptr;
  textureFile_ = filename ? filename : "";
  const std::size_t slash = textureFile_.rfind('/');
  texturePath_ = slash == std::string::npos ? "." : slash == 0 ? "/" : textureFile_.substr(0, slash);
  textureType_ = type ? type : "";
  textureReps_ = filename ? nreps : 0;
}

const char *hcMaterial::getTextureFile() {
  OpRecord rec("hcMaterial::getTextureFile");
  return hasTexture_ ? textureFile_.c_str() : nullptr;
}

const char *hcMaterial::getTexturePath() {
  OpRecord rec("hcMaterial::getTexturePath");
  return hasTexture_ ? texturePath_.c_str() : nullptr;
}

int hcMaterial::getGlossiness() {
  OpRecord rec("hcMaterial::getGlossiness");
  return glossiness_;
}

void hcMaterial::setGlossiness(int n) {
  OpRecord rec("hcMaterial::setGlossiness", n);
  glossiness_ = n;
}

sgMaterial *hcMaterial::getSG() {
  OpRecord rec("hcMaterial::getSG");
  return nullptr;
}

hList *hcMaterial::getTextures() {
  OpRecord rec("hcMaterial::getTextures");
  return nullptr;
}

float hcMaterial::getKAmbient() {
  OpRecord rec("hcMaterial::getKAmbient");
  return kAmbient_;
}

float hcMaterial::getKDiffuse() {
  OpRecord rec("hcMaterial::getKDiffuse");
  return kDiffuse_;
}

int hcMaterial::isOwner(hcObject *o) {
  OpRecord rec("hcMaterial::isOwner", o);
  return o && getOwner() == o ? 1 : 0;
}

int hcMaterial::isUsedBy(hcFigure *f) {
  OpRecord rec("hcMaterial::isUsedBy", f);
  if (!f) return 0;
  if (figureOf(getOwner()) == f) return 1;
  // Or a face of one of its segments' geometries.
  hccore::Quiet quiet;
  for (hList *n = hList::iterator(f->getSegments(), nullptr); n; n = hList::iterator(f->getSegments(), n)) {
    hcGeometry *g = static_cast<hcSegment *>(n->getData())->getGeometry();
    if (g && hcIsLiveObject(g) && g->usesMaterial(this)) return 1;
  }
  return 0;
}

int hcMaterial::makeLocal(hcObject *o) {
  OpRecord rec("hcMaterial::makeLocal", o);
  if (!o || o == this) return 0;
  if (getOwner() == o) return 1;
  if (findIn(o, name)) return 0;
  owner_->watch("hcMaterial", o);
  return 1;
}

int hcMaterial::makeShared() {
  OpRecord rec("hcMaterial::makeShared");
  if (!getOwner() || findIn(nullptr, name)) return 0;
  owner_->release();
  return 1;
}
