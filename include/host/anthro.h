// Host library: anthropometric databases and the scaler of a human.
//
// Databases.  Four databases, indexed by their ANTHRO_DATABASE value and
// named "ANSUR", "NHANES", "NA_AUTO" and "CDN_LF_97".  Each offers the
// percentiles 1, 5, 50, 95 and 99 (indexed by P_1 .. P_99 = 0 .. 4) with a
// stature (cm) and a weight (kg) per gender at each of them.  Values between
// two tabulated percentiles are interpolated linearly; percentiles outside
// 1 .. 99, unknown database names and genders other than male and female
// answer 0.
//
// Limits.  getStatureLimits places a weight among the weights of the
// database (its percentile, interpolated and held within 1 .. 99) and
// answers the statures from 40 percentiles below to 40 above it (held within
// 1 .. 99); getWeightLimits does the same the other way round.  A database
// value outside 0 .. 3, a gender other than male or female, or a weight or
// stature that is not positive leaves the outputs untouched; a null output
// is skipped.
//
// Scaler (hcAnthroScale).  A scaler belongs to one human (it must not
// outlive it) and keeps the human's current build: a stature, a weight, a
// scale factor per body part and axis, locked measurements, the units of
// the values it takes and answers (centimetres and kilograms until set), the
// waist-to-hip ratio and the scaling mode.  A new scaler starts at the
// 50th percentile of its database for its human type (children use the
// female tables), with every part factor 1; the human's figure is taken to
// show that build.
//
// Measurements.  Each measurement is a fixed fraction of the stature.
// Measurements of a body part (HAND_LENGTH, FOOT_BREADTH, ...) are also
// multiplied by the part's factor along the axis that getBodyPartDim gives
// for their dimension; the others (STATURE, the heights, the reaches) are
// whole-body measurements.
//
// Scaling the figure.  Changing the stature (or any whole-body measurement)
// by a ratio scales every segment of the human's figure by that ratio
// (hcSegment::applyScale); changing a part measurement, or scaleBodyPart,
// scales the segments of that part along the part's axes.  A segment
// belongs to a part when its name contains one of the part's words, case
// ignored: head; neck; torso, chest, spine, abdomen; upperarm, bicep;
// forearm, lowerarm; hand, palm; pelvis, hip; thigh, upperleg; calf, shin,
// lowerleg; foot, toe.  With an anchor site (of the same figure) the figure
// is then moved so that the site keeps its global position.  After every
// successful scaling the weight is spread over the segments in proportion
// to their volumes (computeAndUpdateSegmentsMass).
//
// Result codes of the scale operations, checked in this order: NO_HUMAN
// (no human, or a human without a figure); INVALID_PERCENTILE (outside
// 1 .. 99), INVALID_ARGUMENTS (unknown body part or measurement, a value
// that validateScaleValue refuses, an anchor site of another figure),
// INVALID_SCALE_VEC (a factor that is not positive);
// ERR_OVERCONSTRAINED (a height and weight pair whose weight lies outside
// getWeightLimits of the height); ERR_LOCKED_MEASUREMENT (a locked
// measurement would change: every one for a whole-body change, those of the
// part and axis for a part change); FAIL (no segment of the part).  Nothing
// changes unless the answer is SUCCESS.
//
#pragma once

#include "host/human.h"
#include "host/scene.h"

enum ANTHRO_DATABASE : int { ANSUR = 0, NHANES = 1, NA_AUTO = 2, CDN_LF_97 = 3 };

unsigned int getNumAnthroDatabases();
// Null for an index outside 0 .. getNumAnthroDatabases() - 1.
const char *getAnthroDatabaseName(int indx);
unsigned int getNumPercentiles(const char *databaseName);  // 0 when unknown
float getPercentile(const char *databaseName, int indx);   // 0 when unknown
float getStatureValueInCM(const char *databaseName, float p, hcHuman::gender g);
float getWeightValueInKG(const char *databaseName, float p, hcHuman::gender g);
// dataBase is an ANTHRO_DATABASE value.
void getStatureLimits(double weight, int dataBase, hcHuman::gender g,
                      double *statureMin, double *statureMax);
void getWeightLimits(double stature, int dataBase, hcHuman::gender g,
                     double *weightMin, double *weightMax);
// A hint for the scaling code; stored.
void conserveMemoryDuringScaling(bool onOff);
// The directory must exist: true when it does (and becomes the setting).
bool setScalingCacheDir(const char *path);
const char *getScalingCacheDir();  // null until set

class hcAnthroScale {
 public:
  enum bodyPart : int {
    HEAD = 0, NECK, TORSO, BICEP, FOREARM, HAND, PELVIS, THIGH, CALF, FOOT
  };
  enum dimIndex : int { INVALID_DIM = 0, LENGTH, BREADTH, HEIGHT, DEPTH };
  enum humanType : int { MALE = 0, FEMALE, CHILD };
  enum measurement : int {
    STATURE = 0, ABDOMINAL_DEPTH, ANKLE_HEIGHT, ACROMION_HEIGHT, ARM_LENGTH,
    BIACROMINAL_BREADTH, BIDELTOID_BREADTH, BUTTOCK_KNEE_LENGTH,
    ELBOW_REST_HEIGHT, ELBOW_FINGERTIP_LENGTH, FOOT_BREADTH, FOOT_LENGTH,
    HAND_BREADTH, HAND_LENGTH, HEAD_BREADTH, HEAD_HEIGHT, HEAD_LENGTH,
    HIP_BREADTH, INTERPUPIL_DISTANCE, SHOULDER_ELBOW_LENGTH,
    SITTING_ACROMIAL_HEIGHT, SITTING_EYE_HEIGHT, SITTING_HEIGHT,
    SITTING_KNEE_HEIGHT, THIGH_CLEARANCE, THUMBTIP_REACH
  };
  enum resultCode : int {
    SUCCESS = 0, FAIL, NO_HUMAN, INVALID_SCALE_VEC, INVALID_PERCENTILE,
    INVALID_ARGUMENTS, ERR_OVERCONSTRAINED, ERR_LOCKED_MEASUREMENT
  };

  // A scaler for human on the named database (null for an unknown name; a
  // null name is ANSUR).  humanType is a humanType value (MALE otherwise).
  static hcAnthroScale *create(hcHuman *human, const char *databaseName,
                               int humanType = MALE);

  // Percentiles are numbers (50 is the median), heights and weights are in
  // the scaler's units; the answers are resultCode values.
  virtual int scalePercentileHeight(float htPercentile, hcSite *anchorSite = nullptr) = 0;
  virtual int scalePercentileWeight(float wtPercentile, hcSite *anchorSite = nullptr) = 0;
  virtual int scalePercentileHeightNWeight(float htPercentile, float wtPercentile,
                                           hcSite *anchorSite = nullptr) = 0;
  virtual int scaleHeightNpercentileWeight(float height, float wtPercentile,
                                           hcSite *anchorSite = nullptr) = 0;
  virtual int scaleWeightNpercentileHeight(float weight, float htPercentile,
                                           hcSite *anchorSite = nullptr) = 0;
  virtual int scaleHeightNweight(float height, float weight, hcSite *anchorSite = nullptr) = 0;
  virtual int scaleHeight(float height, hcSite *anchorSite = nullptr) = 0;
  virtual int scaleWeight(float weight, hcSite *anchorSite = nullptr) = 0;
  // Gives this human the build of source's scaler; false when source is
  // null, has no scaler (or is this human) or the build cannot be applied.
  virtual bool copyAnthroscale(hcHuman *source) = 0;
  // Multiplies the part's factors by scaleVec (x, y, z).
  virtual int scaleBodyPart(int bodyPart, hVector scaleVec, hcSite *anchorSite = nullptr) = 0;
  // The axis (0 x breadth, 1 y depth, 2 z up or along a limb) along which
  // the part has the dimension dimIndex; -1 when it has none.
  virtual int getBodyPartDim(int bodyPart, int dimIndex) = 0;
  // The value in the given hcScene::distUnits (0 for an unknown measurement
  // or unit).
  virtual float getMeasurement(int measurement, int distUnits) = 0;
  // The value in the scaler's units (0 for an unknown measurement).
  virtual float getMeasurement(int measurement) = 0;
  virtual float getWeight(int massUnits) = 0;  // 0 for an unknown unit
  virtual float getWeight() = 0;
  virtual void lockMeasurement(int measurement) = 0;
  virtual void unlockMeasurement(int measurement) = 0;
  virtual void unlockAllMeasurements() = 0;
  virtual bool isMeasurementLocked(int measurement) = 0;
  virtual int scaleMeasurement(int measurement, float desiredVal, bool lockAfterScale = false,
                               hcSite *anchorSite = nullptr) = 0;
  // True when value (scaler's units) lies between 0.8 times the 1st and 1.2
  // times the 99th percentile of the measurement in the scaler's database.
  virtual bool validateScaleValue(int measurement, float value) = 0;
  virtual const char *getAntrhoDatabaseName() = 0;
  // An unknown name leaves the database alone.
  virtual void changeAnthroDatabase(const char *databaseName) = 0;
  // True for a valid unit (which becomes the setting).
  virtual bool setAnthroDistUnits(hcScene::distUnits distunits) = 0;
  virtual bool setAnthroWeightUnits(hcScene::massUnits wtunits) = 0;
  virtual hcScene::distUnits getAnthroDistUnits() = 0;
  virtual hcScene::massUnits getAnthroWeightUnits() = 0;
  virtual int getHumanType() = 0;
  virtual hcHuman *getHuman() = 0;
  virtual void computeAndUpdateSegmentsMass() = 0;
  // A ratio that is not positive (the default -1) restores the type's
  // default: 0.9 for men, 0.8 otherwise.
  virtual void setWaistToHipRatio(float whRatio = -1.0f) = 0;
  virtual float getWaistToHipRatio() = 0;
  virtual void setScalingMode(int scalingMode) = 0;
  virtual ~hcAnthroScale();

 protected:
  hcAnthroScale() = default;
  hcAnthroScale(const hcAnthroScale &) = delete;
  hcAnthroScale &operator=(const hcAnthroScale &) = delete;
};
