// Anthropometric databases and the scaler of a human.
#include "host/anthro.h"
#include "figure/figure_detail.h"

#include <sys/stat.h>

#include <algorithm>
#include <bitset>
#include <cctype>
#include <cmath>
#include <cstring>
#include <string>
#include <vector>

using namespace hcfigure_detail;

namespace {

// ---------------------------------------------------------------------------
// The tables.

constexpr int kDatabases = 4;
constexpr int kPercentiles = 5;
const char *const kDatabaseNames[kDatabases] = {"ANSUR", "NHANES", "NA_AUTO", "CDN_LF_97"};
const float kPercentileValues[kPercentiles] = {1, 5, 50, 95, 99};

// Survey values per gender (male, female) at the tabulated percentiles; each
// database shifts the statures and scales the weights.
const float kStatureCM[2][kPercentiles] = {{160.5f, 164.7f, 175.6f, 186.7f, 191.4f},
                                           {149.1f, 152.8f, 162.9f, 173.7f, 178.0f}};
const float kWeightKG[2][kPercentiles] = {{55.2f, 60.1f, 78.5f, 99.0f, 108.6f},
                                          {45.4f, 49.6f, 62.4f, 81.6f, 90.7f}};
const float kStatureShift[kDatabases] = {0.0f, -0.8f, -0.3f, 0.9f};
const float kWeightFactor[kDatabases] = {1.0f, 1.06f, 1.03f, 1.02f};

int databaseIndex(const char *name) {
  if (!name) return -1;
  for (int i = 0; i < kDatabases; ++i)
    if (std::strcmp(name, kDatabaseNames[i]) == 0) return i;
  return -1;
}

bool validGender(int g) { return g == hcHuman::male || g == hcHuman::female; }
bool validPercentile(double p) { return p >= 1.0 && p <= 99.0; }

double tableValue(int db, int g, int i, bool stature) {
  return stature ? double(kStatureCM[g][i]) + kStatureShift[db] : double(kWeightKG[g][i]) * kWeightFactor[db];
}

// The value at percentile p (within 1 .. 99), interpolated.
double valueAt(int db, int g, double p, bool stature) {
  p = std::clamp(p, 1.0, 99.0);
  for (int i = 1; i < kPercentiles; ++i) {
    if (p <= kPercentileValues[i]) {
      double lo = kPercentileValues[i - 1], hi = kPercentileValues[i];
      double t = (p - lo) / (hi - lo);
      return tableValue(db, g, i - 1, stature) + t * (tableValue(db, g, i, stature) - tableValue(db, g, i - 1, stature));
    }
  }
  return tableValue(db, g, kPercentiles - 1, stature);
}

// The percentile of a value, interpolated and held within 1 .. 99.
double percentileOf(int db, int g, double value, bool stature) {
  if (value <= tableValue(db, g, 0, stature)) return 1.0;
  for (int i = 1; i < kPercentiles; ++i) {
    double lo = tableValue(db, g, i - 1, stature), hi = tableValue(db, g, i, stature);
    if (value <= hi) {
      double t = (value - lo) / (hi - lo);
      return kPercentileValues[i - 1] + t * (kPercentileValues[i] - kPercentileValues[i - 1]);
    }
  }
  return 99.0;
}

// The range of one quantity that goes with a value of the other.
void limits(double value, int db, int g, bool givenStature, double *lo, double *hi) {
  if (db < 0 || db >= kDatabases || !validGender(g) || !(value > 0) || !std::isfinite(value)) return;
  double p = percentileOf(db, g, value, givenStature);
  if (lo) *lo = valueAt(db, g, std::max(1.0, p - 40.0), !givenStature);
  if (hi) *hi = valueAt(db, g, std::min(99.0, p + 40.0), !givenStature);
}

bool conserveMemory = false;

std::string &cacheDir() {
  static auto *dir = new std::string;
  return *dir;
}

// ---------------------------------------------------------------------------
// Measurements: a fraction of the stature, and for part measurements the
// body part and dimension whose factor also applies.

struct MeasurementDef {
  float ofStature;
  int part;  // -1: whole body
  int dim;
};

constexpr int kMeasurements = hcAnthroScale::THUMBTIP_REACH + 1;
constexpr int kParts = hcAnthroScale::FOOT + 1;
using A = hcAnthroScale;

const MeasurementDef kMeasurementDefs[kMeasurements] = {
    {1.0f, -1, 0},                        // STATURE
    {0.137f, A::TORSO, A::DEPTH},          // ABDOMINAL_DEPTH
    {0.039f, A::FOOT, A::HEIGHT},          // ANKLE_HEIGHT
    {0.818f, -1, 0},                       // ACROMION_HEIGHT
    {0.44f, -1, 0},                        // ARM_LENGTH
    {0.227f, A::TORSO, A::BREADTH},        // BIACROMINAL_BREADTH
    {0.283f, A::TORSO, A::BREADTH},        // BIDELTOID_BREADTH
    {0.343f, A::THIGH, A::LENGTH},         // BUTTOCK_KNEE_LENGTH
    {0.137f, -1, 0},                       // ELBOW_REST_HEIGHT
    {0.272f, A::FOREARM, A::LENGTH},       // ELBOW_FINGERTIP_LENGTH
    {0.055f, A::FOOT, A::BREADTH},         // FOOT_BREADTH
    {0.152f, A::FOOT, A::LENGTH},          // FOOT_LENGTH
    {0.051f, A::HAND, A::BREADTH},         // HAND_BREADTH
    {0.109f, A::HAND, A::LENGTH},          // HAND_LENGTH
    {0.087f, A::HEAD, A::BREADTH},         // HEAD_BREADTH
    {0.13f, A::HEAD, A::HEIGHT},           // HEAD_HEIGHT
    {0.112f, A::HEAD, A::LENGTH},          // HEAD_LENGTH
    {0.205f, A::PELVIS, A::BREADTH},       // HIP_BREADTH
    {0.036f, -1, 0},                       // INTERPUPIL_DISTANCE
    {0.207f, A::BICEP, A::LENGTH},         // SHOULDER_ELBOW_LENGTH
    {0.34f, -1, 0},                        // SITTING_ACROMIAL_HEIGHT
    {0.45f, -1, 0},                        // SITTING_EYE_HEIGHT
    {0.52f, -1, 0},                        // SITTING_HEIGHT
    {0.31f, -1, 0},                        // SITTING_KNEE_HEIGHT
    {0.096f, A::THIGH, A::DEPTH},          // THIGH_CLEARANCE
    {0.45f, -1, 0},                        // THUMBTIP_REACH
};

// Axis of each dimension per part (BREADTH, DEPTH, HEIGHT, LENGTH); -1 none.
const int kPartAxes[kParts][4] = {
    {0, 1, 2, 1},    // HEAD: its length runs front to back
    {0, 1, -1, 2},   // NECK
    {0, 1, 2, -1},   // TORSO
    {0, 1, -1, 2},   // BICEP
    {0, 1, -1, 2},   // FOREARM
    {0, 1, -1, 2},   // HAND
    {0, 1, 2, -1},   // PELVIS
    {0, 1, -1, 2},   // THIGH
    {0, 1, -1, 2},   // CALF
    {0, -1, 2, 1},   // FOOT: its length runs forward
};

const std::vector<const char *> kPartWords[kParts] = {
    {"head"},
    {"neck"},
    {"torso", "chest", "spine", "abdomen"},
    {"upperarm", "bicep"},
    {"forearm", "lowerarm"},
    {"hand", "palm"},
    {"pelvis", "hip"},
    {"thigh", "upperleg"},
    {"calf", "shin", "lowerleg"},
    {"foot", "toe"},
};

int partAxis(int part, int dim) {
  if (part < 0 || part >= kParts || dim < A::LENGTH || dim > A::DEPTH) return -1;
  switch (dim) {
    case A::BREADTH: return kPartAxes[part][0];
    case A::DEPTH: return kPartAxes[part][1];
    case A::HEIGHT: return kPartAxes[part][2];
    default: return kPartAxes[part][3];
  }
}

bool validMeasurement(int m) { return m >= 0 && m < kMeasurements; }

// Centimetres per unit of hcScene::distUnits, kilograms per hcScene::massUnits.
double cmPer(int units) {
  static const double k[] = {100.0, 1.0, 0.1, 2.54, 30.48};
  return units >= hcScene::METERS && units <= hcScene::FEET ? k[units] : 0.0;
}
double kgPer(int units) {
  static const double k[] = {1.0, 0.001, 0.45359237};
  return units >= hcScene::KILOGRAMS && units <= hcScene::POUNDS ? k[units] : 0.0;
}

bool partSegment(hcSegment *seg, int part) {
  std::string name = seg && seg->name ? seg->name : "";
  for (char &c : name) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  for (const char *w : kPartWords[part])
    if (name.find(w) != std::string::npos) return true;
  return false;
}

bool positiveVector(const hVector &v) {
  for (float f : v.v)
    if (!(f > 0) || !std::isfinite(f)) return false;
  return true;
}

// ---------------------------------------------------------------------------
// The scaler.

class Scaler final : public hcAnthroScale {
 public:
  Scaler(hcHuman *human, int db, int type) : human_(human), db_(db), type_(type) {
    stature_ = valueAt(db_, gender(), 50, true);
    weight_ = valueAt(db_, gender(), 50, false);
    for (auto &axes : parts_) axes[0] = axes[1] = axes[2] = 1.0;
    whRatio_ = defaultRatio();
  }
  ~Scaler() override { hccore::destroying(this, "hcAnthroScale::~hcAnthroScale"); }

  int scalePercentileHeight(float p, hcSite *anchor) override {
    OpRecord rec("hcAnthroScale::scalePercentileHeight", p, anchor);
    return rescale(percentile(p), Target{}, anchor);
  }
  int scalePercentileWeight(float p, hcSite *anchor) override {
    OpRecord rec("hcAnthroScale::scalePercentileWeight", p, anchor);
    return rescale(Target{}, percentile(p), anchor);
  }
  int scalePercentileHeightNWeight(float hp, float wp, hcSite *anchor) override {
    OpRecord rec("hcAnthroScale::scalePercentileHeightNWeight", hp, wp, anchor);
    return rescale(percentile(hp), percentile(wp), anchor);
  }
  int scaleHeightNpercentileWeight(float height, float wp, hcSite *anchor) override {
    OpRecord rec("hcAnthroScale::scaleHeightNpercentileWeight", height, wp, anchor);
    return rescale(absolute(height), percentile(wp), anchor);
  }
  int scaleWeightNpercentileHeight(float weight, float hp, hcSite *anchor) override {
    OpRecord rec("hcAnthroScale::scaleWeightNpercentileHeight", weight, hp, anchor);
    return rescale(percentile(hp), absolute(weight), anchor);
  }
  int scaleHeightNweight(float height, float weight, hcSite *anchor) override {
    OpRecord rec("hcAnthroScale::scaleHeightNweight", height, weight, anchor);
    return rescale(absolute(height), absolute(weight), anchor);
  }
  int scaleHeight(float height, hcSite *anchor) override {
    OpRecord rec("hcAnthroScale::scaleHeight", height, anchor);
    return rescale(absolute(height), Target{}, anchor);
  }
  int scaleWeight(float weight, hcSite *anchor) override {
    OpRecord rec("hcAnthroScale::scaleWeight", weight, anchor);
    return rescale(Target{}, absolute(weight), anchor);
  }

  bool copyAnthroscale(hcHuman *source) override {
    OpRecord rec("hcAnthroScale::copyAnthroscale", source);
    if (!source || source == human_) return false;
    auto *from = dynamic_cast<Scaler *>(source->getAnthroscale());
    if (!from || from == this || !figure()) return false;
    // The whole-body ratio first, then what is left per part and axis.
    double r = from->stature_ / stature_;
    for (int m = 0; m < kMeasurements; ++m)
      if (locked_[m] && std::fabs(from->valueCM(m) - valueCM(m)) > 1e-6 * valueCM(m)) return false;
    scaleSegments(-1, hVector(float(r), float(r), float(r)));
    for (int p = 0; p < kParts; ++p) {
      hVector v;
      for (int a = 0; a < 3; ++a) v.v[a] = float(from->parts_[p][a] / parts_[p][a]);
      scaleSegments(p, v);
      for (int a = 0; a < 3; ++a) parts_[p][a] = from->parts_[p][a];
    }
    stature_ = from->stature_;
    weight_ = from->weight_;
    whRatio_ = from->whRatio_;
    spreadMass();
    return true;
  }

  int scaleBodyPart(int part, hVector vec, hcSite *anchor) override {
    OpRecord rec("hcAnthroScale::scaleBodyPart", part, vec, anchor);
    if (!figure()) return NO_HUMAN;
    if (part < 0 || part >= kParts || !anchorOk(anchor)) return INVALID_ARGUMENTS;
    if (!positiveVector(vec)) return INVALID_SCALE_VEC;
    for (int m = 0; m < kMeasurements; ++m) {
      const MeasurementDef &d = kMeasurementDefs[m];
      if (locked_[m] && d.part == part && vec.v[partAxis(part, d.dim)] != 1.0f) return ERR_LOCKED_MEASUREMENT;
    }
    return applyPart(part, vec, anchor);
  }

  int getBodyPartDim(int part, int dim) override {
    OpRecord rec("hcAnthroScale::getBodyPartDim", part, dim);
    return partAxis(part, dim);
  }

  float getMeasurement(int m, int units) override {
    OpRecord rec("hcAnthroScale::getMeasurement", m, units);
    return validMeasurement(m) && cmPer(units) > 0 ? float(valueCM(m) / cmPer(units)) : 0.0f;
  }
  float getMeasurement(int m) override {
    OpRecord rec("hcAnthroScale::getMeasurement", m);
    return validMeasurement(m) ? float(valueCM(m) / cmPer(dist_)) : 0.0f;
  }
  float getWeight(int units) override {
    OpRecord rec("hcAnthroScale::getWeight", units);
    return kgPer(units) > 0 ? float(weight_ / kgPer(units)) : 0.0f;
  }
  float getWeight() override {
    OpRecord rec("hcAnthroScale::getWeight");
    return float(weight_ / kgPer(mass_));
  }

  void lockMeasurement(int m) override {
    OpRecord rec("hcAnthroScale::lockMeasurement", m);
    if (validMeasurement(m)) locked_.set(m);
  }
  void unlockMeasurement(int m) override {
    OpRecord rec("hcAnthroScale::unlockMeasurement", m);
    if (validMeasurement(m)) locked_.reset(m);
  }
  void unlockAllMeasurements() override {
    OpRecord rec("hcAnthroScale::unlockAllMeasurements");
    locked_.reset();
  }
  bool isMeasurementLocked(int m) override {
    OpRecord rec("hcAnthroScale::isMeasurementLocked", m);
    return validMeasurement(m) && locked_[m];
  }

  int scaleMeasurement(int m, float desired, bool lockAfter, hcSite *anchor) override {
    OpRecord rec("hcAnthroScale::scaleMeasurement", m, desired, lockAfter, anchor);
    if (!figure()) return NO_HUMAN;
    if (!validMeasurement(m) || !valid(m, desired) || !anchorOk(anchor)) return INVALID_ARGUMENTS;
    if (locked_[m]) return ERR_LOCKED_MEASUREMENT;
    const MeasurementDef &d = kMeasurementDefs[m];
    double r = desired * cmPer(dist_) / valueCM(m);
    int result;
    if (d.part < 0) {
      if (locked_.any()) return ERR_LOCKED_MEASUREMENT;
      result = applyWhole(r, anchor);
    } else {
      int axis = partAxis(d.part, d.dim);
      for (int o = 0; o < kMeasurements; ++o) {
        const MeasurementDef &od = kMeasurementDefs[o];
        if (locked_[o] && od.part == d.part && partAxis(od.part, od.dim) == axis) return ERR_LOCKED_MEASUREMENT;
      }
      hVector v(1, 1, 1);
      v.v[axis] = float(r);
      result = applyPart(d.part, v, anchor);
    }
    if (result == SUCCESS && lockAfter) locked_.set(m);
    return result;
  }

  bool validateScaleValue(int m, float value) override {
    OpRecord rec("hcAnthroScale::validateScaleValue", m, value);
    return validMeasurement(m) && valid(m, value);
  }

  const char *getAntrhoDatabaseName() override {
    OpRecord rec("hcAnthroScale::getAntrhoDatabaseName");
    return kDatabaseNames[db_];
  }
  void changeAnthroDatabase(const char *name) override {
    OpRecord rec("hcAnthroScale::changeAnthroDatabase", name);
    int db = databaseIndex(name);
    if (db >= 0) db_ = db;
  }

  bool setAnthroDistUnits(hcScene::distUnits units) override {
    OpRecord rec("hcAnthroScale::setAnthroDistUnits", units);
    if (!(cmPer(units) > 0)) return false;
    dist_ = units;
    return true;
  }
  bool setAnthroWeightUnits(hcScene::massUnits units) override {
    OpRecord rec("hcAnthroScale::setAnthroWeightUnits", units);
    if (!(kgPer(units) > 0)) return false;
    mass_ = units;
    return true;
  }
  hcScene::distUnits getAnthroDistUnits() override {
    OpRecord rec("hcAnthroScale::getAnthroDistUnits");
    return dist_;
  }
  hcScene::massUnits getAnthroWeightUnits() override {
    OpRecord rec("hcAnthroScale::getAnthroWeightUnits");
    return mass_;
  }

  int getHumanType() override {
    OpRecord rec("hcAnthroScale::getHumanType");
    return type_;
  }
  hcHuman *getHuman() override {
    OpRecord rec("hcAnthroScale::getHuman");
    return human_;
  }
  void computeAndUpdateSegmentsMass() override {
    OpRecord rec("hcAnthroScale::computeAndUpdateSegmentsMass");
    spreadMass();
  }
  void setWaistToHipRatio(float r) override {
    OpRecord rec("hcAnthroScale::setWaistToHipRatio", r);
    whRatio_ = r > 0 && std::isfinite(r) ? r : defaultRatio();
  }
  float getWaistToHipRatio() override {
    OpRecord rec("hcAnthroScale::getWaistToHipRatio");
    return whRatio_;
  }
  void setScalingMode(int mode) override {
    OpRecord rec("hcAnthroScale::setScalingMode", mode);
    mode_ = mode;
  }

 private:
  // A requested stature or weight: a percentile, or an absolute value in
  // the scaler's units; `given` is false when the quantity stays.
  struct Target {
    bool given = false;
    bool percentile = false;
    float value = 0;
  };
  static Target percentile(float p) { return Target{true, true, p}; }
  static Target absolute(float v) { return Target{true, false, v}; }

  int gender() const { return type_ == MALE ? hcHuman::male : hcHuman::female; }
  float defaultRatio() const { return type_ == MALE ? 0.9f : 0.8f; }

  hcFigure *figure() { return human_ ? human_->getFigure() : nullptr; }

  double valueCM(int m) const {
    const MeasurementDef &d = kMeasurementDefs[m];
    double v = stature_ * d.ofStature;
    if (d.part >= 0) v *= parts_[d.part][partAxis(d.part, d.dim)];
    return v;
  }

  bool valid(int m, double value) const {
    double cm = value * cmPer(dist_);
    if (!(cm > 0) || !std::isfinite(cm)) return false;
    double lo = 0.8 * valueAt(db_, gender(), 1, true) * kMeasurementDefs[m].ofStature;
    double hi = 1.2 * valueAt(db_, gender(), 99, true) * kMeasurementDefs[m].ofStature;
    return cm >= lo && cm <= hi;
  }

  bool validWeight(double kg) const {
    return kg > 0 && std::isfinite(kg) && kg >= 0.5 * valueAt(db_, gender(), 1, false) &&
           kg <= 1.5 * valueAt(db_, gender(), 99, false);
  }

  bool anchorOk(hcSite *anchor) {
    return !anchor || anchor->getFigure() == figure();
  }

  // Resolves the targets into a stature (cm) and weight (kg) and applies
  // them; see the header for the order of the checks.
  int rescale(const Target &height, const Target &weight, hcSite *anchor) {
    if (!figure()) return NO_HUMAN;
    double stature = stature_, kg = weight_;
    for (const Target *t : {&height, &weight}) {
      if (!t->given) continue;
      bool isHeight = t == &height;
      if (t->percentile) {
        if (!validPercentile(t->value)) return INVALID_PERCENTILE;
        (isHeight ? stature : kg) = valueAt(db_, gender(), t->value, isHeight);
      } else if (isHeight) {
        if (!valid(STATURE, t->value)) return INVALID_ARGUMENTS;
        stature = t->value * cmPer(dist_);
      } else {
        kg = t->value * kgPer(mass_);
        if (!validWeight(kg)) return INVALID_ARGUMENTS;
      }
    }
    if (!anchorOk(anchor)) return INVALID_ARGUMENTS;
    if (height.given && weight.given) {
      double lo = 0, hi = 0;
      limits(stature, db_, gender(), true, &lo, &hi);
      if (kg < lo - 1e-3 || kg > hi + 1e-3) return ERR_OVERCONSTRAINED;
    }
    if (height.given && std::fabs(stature - stature_) > 1e-9 && locked_.any()) return ERR_LOCKED_MEASUREMENT;
    weight_ = kg;
    return applyWhole(stature / stature_, anchor);
  }

  // Scales the whole figure by r; the caller has checked everything.
  int applyWhole(double r, hcSite *anchor) {
    Anchor keep(anchor);
    scaleSegments(-1, hVector(float(r), float(r), float(r)));
    stature_ *= r;
    keep.restore(figure());
    spreadMass();
    return SUCCESS;
  }

  int applyPart(int part, const hVector &vec, hcSite *anchor) {
    if (!hasSegments(part)) return FAIL;
    Anchor keep(anchor);
    scaleSegments(part, vec);
    for (int a = 0; a < 3; ++a) parts_[part][a] *= vec.v[a];
    keep.restore(figure());
    spreadMass();
    return SUCCESS;
  }

  bool hasSegments(int part) {
    hcFigure *fig = figure();
    if (!fig) return false;
    for (hcSegment *seg : items<hcSegment>(fig->getSegments()))
      if (partSegment(seg, part)) return true;
    return false;
  }

  // Scales the segments of a part (every segment for part -1).
  void scaleSegments(int part, hVector vec) {
    hcFigure *fig = figure();
    if (!fig) return;
    bool unit = true;
    for (float f : vec.v) unit = unit && f == 1.0f;
    if (unit) return;
    for (hcSegment *seg : items<hcSegment>(fig->getSegments()))
      if (part < 0 || partSegment(seg, part)) seg->applyScale(vec);
  }

  void spreadMass() {
    hcFigure *fig = figure();
    if (!fig) return;
    std::vector<hcSegment *> segs = items<hcSegment>(fig->getSegments());
    double total = 0;
    for (hcSegment *s : segs) total += s->getVolume();
    if (!(total > 0)) return;
    for (hcSegment *s : segs) s->setMass(float(weight_ * s->getVolume() / total));
  }

  // Remembers an anchor site's global position and moves the figure back
  // onto it.
  class Anchor {
   public:
    explicit Anchor(hcSite *site) : site_(site) {
      if (site_) site_->getGlobalPosition(before_);
    }
    void restore(hcFigure *fig) {
      if (!site_ || !fig) return;
      hVector after;
      site_->getGlobalPosition(after);
      hMatrix loc;
      fig->getLocation(loc);
      for (int i = 0; i < 3; ++i) loc.m[i][3] += before_.v[i] - after.v[i];
      fig->setLocation(loc);
    }

   private:
    hcSite *site_;
    hVector before_;
  };

  hcHuman *human_;
  int db_;
  int type_;
  double stature_ = 0;  // cm
  double weight_ = 0;   // kg
  double parts_[kParts][3];
  std::bitset<kMeasurements> locked_;
  hcScene::distUnits dist_ = hcScene::CENTIMETERS;
  hcScene::massUnits mass_ = hcScene::KILOGRAMS;
  float whRatio_ = 0.9f;
  int mode_ = 0;
};

}  // namespace

// ---------------------------------------------------------------------------
// Database functions.

unsigned int getNumAnthroDatabases() {
  OpRecord rec("getNumAnthroDatabases");
  return kDatabases;
}

const char *getAnthroDatabaseName(int indx) {
  OpRecord rec("getAnthroDatabaseName", indx);
  return indx >= 0 && indx < kDatabases ? kDatabaseNames[indx] : nullptr;
}

unsigned int getNumPercentiles(const char *databaseName) {
  OpRecord rec("getNumPercentiles", databaseName);
  return databaseIndex(databaseName) >= 0 ? kPercentiles : 0;
}

float getPercentile(const char *databaseName, int indx) {
  OpRecord rec("getPercentile", databaseName, indx);
  if (databaseIndex(databaseName) < 0 || indx < 0 || indx >= kPercentiles) return 0;
  return kPercentileValues[indx];
}

float getStatureValueInCM(const char *databaseName, float p, hcHuman::gender g) {
  OpRecord rec("getStatureValueInCM", databaseName, p, g);
  int db = databaseIndex(databaseName);
  if (db < 0 || !validGender(g) || !validPercentile(p)) return 0;
  return float(valueAt(db, g, p, true));
}

float getWeightValueInKG(const char *databaseName, float p, hcHuman::gender g) {
  OpRecord rec("getWeightValueInKG", databaseName, p, g);
  int db = databaseIndex(databaseName);
  if (db < 0 || !validGender(g) || !validPercentile(p)) return 0;
  return float(valueAt(db, g, p, false));
}

void getStatureLimits(double weight, int dataBase, hcHuman::gender g, double *statureMin, double *statureMax) {
  OpRecord rec("getStatureLimits", weight, dataBase, g, statureMin, statureMax);
  limits(weight, dataBase, g, false, statureMin, statureMax);
}

void getWeightLimits(double stature, int dataBase, hcHuman::gender g, double *weightMin, double *weightMax) {
  OpRecord rec("getWeightLimits", stature, dataBase, g, weightMin, weightMax);
  limits(stature, dataBase, g, true, weightMin, weightMax);
}

void conserveMemoryDuringScaling(bool onOff) {
  OpRecord rec("conserveMemoryDuringScaling", onOff);
  conserveMemory = onOff;
}

bool setScalingCacheDir(const char *path) {
  OpRecord rec("setScalingCacheDir", path);
  struct stat st;
  if (!path || !*path || ::stat(path, &st) != 0 || !S_ISDIR(st.st_mode)) return false;
  cacheDir() = path;
  return true;
}

const char *getScalingCacheDir() {
  OpRecord rec("getScalingCacheDir");
  return cacheDir().empty() ? nullptr : cacheDir().c_str();
}

// ---------------------------------------------------------------------------

hcAnthroScale *hcAnthroScale::create(hcHuman *human, const char *databaseName, int humanType) {
  OpRecord rec("hcAnthroScale::create", human, databaseName, humanType);
  int db = databaseName ? databaseIndex(databaseName) : ANSUR;
  if (db < 0) return nullptr;
  if (humanType != FEMALE && humanType != CHILD) humanType = MALE;
  return new Scaler(human, db, humanType);
}

hcAnthroScale::~hcAnthroScale() {
  hccore::destroying(this, "hcAnthroScale::~hcAnthroScale");
  hccore::destroyed(this);
}
