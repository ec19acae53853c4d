// Host library: the human figure controller.
//
// A human (hcHuman) is built on a figure (host/figure.h) and adds landmark
// sites and joints, per-part anthropometric scales, named postures and the
// behaviour controllers (arm, shoulder, hand, pelvis, torso, balance, foot,
// heel, knee, head, eyes, neck, root, stepping, support).
//
// This stand-in keeps the state a script can observe and takes from the
// figure what the figure has; it does not solve a body model:
//   * Every controller setting (control modes, references, goals, spine
//     parameters, flags) is stored and answered by the matching getter.  The
//     setters answer 1 when the mode is one of their enumeration's values and
//     the side is leftSide or rightSide, else 0 and nothing changes.  The
//     control setters that answer a constraint answer null: no constraint
//     objects are built.
//   * Landmarks are the figure's sites and joints named like the enumerators
//     ("leftHeel", "hPoint", "rightElbow", ...); null when there is none.
//   * Shoulder angles, limits and validity are those of the first three DOFs
//     of the shoulder landmark joint (radians); missing DOFs read as 0.
//   * queryPosture answers, in degrees, the angle of a landmark joint's DOF
//     where one stands for the query (shoulder flexion, abduction and
//     transverse abduction: shoulder DOFs 0, 1, 2; elbow flexion: elbow DOF
//     0; knee flexion: knee DOF 0), else 0.
//   * Reaching, moving the pelvis, balance, feet, heels, head and eyes, hand
//     shapes, spine limits, the feet's balance interpolation and force trees
//     need the body model: those operations answer 0, and the potentials 0.
//     The balance, head and eyes goals they are given are remembered for the
//     goal getters, which answer 0 (leaving the matrix alone) until a goal
//     exists.
//   * The anthropometric scaler (host/anthro.h) is made by initAnthroscale
//     and belongs to the human.  Smooth skins are not built: their
//     operations answer null or 0.
//   * Out-of-range enumeration and side values never fail harder than a
//     status 0 (or -1 from the mode getters for a bad side); null pointers
//     are accepted everywhere.
//
// The human watches its figure: when the figure is destroyed by other means
// the human carries on without one (getFigure answers null).  A human read
// with readFromFile owns its figure and destroys it with itself; a figure
// given to initHuman stays its owner's.
//
#pragma once

#include <map>
#include <string>

#include "host/core.h"
#include "host/figure.h"

// Classes of other families that the human hands out or takes.
class hcAnthroScale;
class hcSmoothSkin;
class hcSmoothSkinImpl;

class hcHuman {
 public:
  enum gender : int { male = 0, female = 1 };
  enum landmarkSite : int {
    leftToes = 0, rightToes, leftHeel, rightHeel, leftHand, rightHand,
    leftEye, rightEye, leftHip, rightHip, pelvis, headSight, centerOfMass,
    hPoint
  };
  enum landmarkJoint : int {
    leftShoulder = 0, rightShoulder, leftElbow, rightElbow, leftKnee, rightKnee
  };
  enum sides : int { leftSide = 0, rightSide = 1, noSide = 2 };
  enum armJoint : int { armShoulder = 0, armWaist = 1 };
  enum armEndEff : int { armForearm = 0, armPalm = 1, armAttObject = 2 };
  // armLocal and armGlobal share their values with two hold modes.
  enum armCtrlType : int {
    armRelease = 0, armHips = 1, armKnees = 2, armHoldSelf = 3,
    armHoldObject = 4, armSite = 5, armStabilize = 6, armHoldWorld = 7,
    armSymmetry = 8, armLocal = 4, armGlobal = 3
  };
  enum torsoParams : int { torsoNeck = 1, torsoWaist = 2, torsoInput = 3 };
  enum torsoCtrlType : int {
    torsoVertical = 0, torsoRelease = 1, torsoSetparam = 2, torsoHold = 3
  };
  // footLocal and footGlobal share their values with two hold modes.
  enum footCtrlType : int {
    footRelease = 0, footPivot = 1, footHoldObject = 2, footHoldSelf = 3,
    footBalanceLine = 4, footSite = 5, footHoldWorld = 6, footFlat = 7,
    footSymmetry = 8, footLocal = 2, footGlobal = 3
  };
  enum kneeCtrlType : int {
    kneeRelease = 0, kneeVertical = 1, kneeHold = 2, kneeOverFoot = 3
  };
  enum elbowCtrlType : int { elbowRelease = 0, elbowDown = 1 };
  enum pelvisCtrlType : int {
    pelvisRelease = 2, pelvisHold = 0, pelvisFeet = 1, pelvisTorso = 3
  };
  enum eyeCtrlType : int { eyeRelease = 0, eyeFixate = 1, eyeHeadTrack = 2 };
  enum headCtrlType : int { headRelease = 0, headFixate = 1, headFollowEyes = 2 };
  // balanceSeated shares its value with balanceRelease.
  enum balanceCtrlType : int {
    balanceFeet = 0, balanceHold = 1, balanceHoldElev = 2,
    balanceReleaseElev = 3, balanceRelease = 4, balanceUpperBody = 5,
    balanceSeated = 4
  };
  enum stepBalanceCtrlType : int { stepBalanceNone = 0, stepBalance = 1 };
  enum stepPelvisCtrlType : int { stepPelvisNone = 0, stepPelvis = 1 };
  enum rootCtrlType : int { rootDisable = 0, rootEnable = 1 };
  enum anthroPart : int {
    headPart = 0, neckPart, torsoPart, upperArmPart, lowerArmPart, handPart,
    upperLegPart, lowerLegPart, footPart, pelvisPart, eyePart
  };
  enum supportType : int { leftFoot = 0, rightFoot = 1, lowerTorso = 3 };
  enum postureQueryType : int {
    neckFlexion = 0, neckAxial, neckLateral, shoulderFlexion,
    shoulderAbduction, shoulderTransverseAbduction, lateralHumeralRotation,
    elbowFlexion, palmPronation, wristFlexion, wristUlnarDeviation,
    torsoFlexion, torsoAxial, torsoLateral, hipFlexion, hipAbduction,
    hipTransverseAbduction, hipLateralRotation, kneeFlexion, footFlexion,
    footEversion
  };
  enum postureQueryOffsetType : int { offsetGlobal = 0, offsetLocal = 1 };

  // Reads a figure file (as hcFigure::readFromFile) and makes a human of
  // the figure; null when the file cannot be read.
  static hcHuman *readFromFile(const char *filename, const char *newName);
  // Makes a human of an existing figure; *initOK (when given) receives 1,
  // or 0 for a null figure.
  static hcHuman *initHuman(hcFigure *figure, int *initOK = nullptr);
  // Frees the human (and a figure it read itself); 1, or 0 for null.
  static int destroy(hcHuman *human);

  // A new scaler on the named database (null name: the default one)
  // replaces the human's scaler; null, keeping the old one, for an unknown
  // database.
  virtual hcAnthroScale *initAnthroscale(const char *databasename = nullptr);
  virtual hcAnthroScale *getAnthroscale();  // null when there is none
  // Copies source's per-part scales and, when this human has a scaler, the
  // build of source's scaler (hcAnthroScale::copyAnthroscale); false, with
  // nothing copied, for a null source or a build the scaler refuses.
  virtual bool copyAnthroscale(hcHuman *source);
  // Destroys the scaler: 1, or 0 when there is none.
  virtual int destroyAnthroscale();

  virtual hcSite *getLandmarkSite(int site);     // a landmarkSite
  virtual hcJoint *getLandmarkJoint(int joint);  // a landmarkJoint
  virtual hcFigure *getFigure();
  // Every joint of the figure back to 0 (within its limits), torso angles
  // to 0.
  virtual int bodyNeutral();
  // The figure's location.
  virtual int setLocation(hMatrix location);
  // Applies the positions file that poseFromFile last read under the name.
  virtual int poseBody(const char *postureName);
  // Applies a positions file (hcFigure::savePositions format) and, when it
  // applies, remembers it under posturename for poseBody.
  virtual int poseFromFile(const char *posturename, const char *filename);
  // Per-part scale factors (an anthroPart; positive components), 1 1 1
  // until set.
  virtual int setAnthroScale(int part, hVector dim);
  virtual int getAnthroScale(int part, hVector &dim);

  // Arms.  side is a sides value; sjoint an armJoint, endtype an armEndEff.
  virtual int moveArm(int side, int sjoint, int endtype, hcSite *endSite,
                      hMatrix goal);
  virtual float getMoveArmPotential(int side);
  virtual hcConstraint *setArmControl(int side, int type, int sjoint,
                                      hcSegment *ref, hcSite *goal);
  virtual int getArmControlType(int side);
  virtual int getArmControlBase(int side);
  virtual hcSegment *getArmControlRef(int side);
  virtual hcSite *getArmControlGoal(int side);
  virtual int setShoulderAngles(int side, hVector angles);
  virtual int getShoulderAngles(int side, hVector &angles);
  virtual int getShoulderUpperLimits(int side, hVector &angles);
  virtual int getShoulderLowerLimits(int side, hVector &angles);
  // Reads the shoulder joint's angles into a vector the human owns and
  // answers it; null without a shoulder joint.
  virtual hVector *synchShoulderAngles(int side);
  // 1 when the shoulder joint's angles lie within its limits.
  virtual int isShoulderValid(int side);
  virtual int shapeHand(int side, const char *handShape,
                        float interpolation = 100.0f);

  // Pelvis.
  virtual int rotatePelvis(hMatrix goal);
  virtual float getRotatePelvisPotential();
  virtual int setPelvisControl(int type);
  virtual int getPelvisControlType();

  // Torso.  The spine parameters are stored as given.
  virtual int bendTorso(int type, hVector angles, int low = 1, int high = 17,
                        int initiator = 17, int resistor = 1,
                        float resistance = 100.0f, int interp = 1);
  virtual int getTorsoParams();
  virtual int getTorsoAngles(hVector &v);
  virtual int getTorsoUpperLimits(hVector &angles);
  virtual int getTorsoLowerLimits(hVector &angles);
  virtual int getTorsoLow();
  virtual int getTorsoHigh();
  virtual int getTorsoInitiator();
  virtual int getTorsoResistor();
  virtual float getTorsoResistance();
  virtual int getTorsoInterp();
  virtual int setTorsoControl(int type);
  virtual int setTorsoSpineParams(int low = 1, int high = 17,
                                  int initiator = 17, int resistor = 1,
                                  float resistance = 100.0f, int interp = 1);
  virtual int getTorsoControlType();
  virtual int setTorsoCentered(int on);
  virtual int getTorsoCentered();
  virtual void updateTorso();
  virtual void synchTorsoAngles();

  // Balance.
  virtual int moveBalance(hMatrix goal);
  virtual int getBalanceGoal(hMatrix &goal);
  virtual int setBalanceControl(int type, float interpx, float interpz);
  virtual int getBalanceControlType();
  virtual float getBalanceControlInterpX();
  virtual float getBalanceControlInterpZ();
  virtual float getMoveBalancePotential();

  // Feet, heels and knees.
  virtual int moveFoot(int side, hMatrix goalTransform);
  virtual float getMoveFootPotential(int side);
  virtual hcConstraint *setFootControl(int side, int type, hcSegment *ref);
  virtual int getFootControlType(int side);
  virtual hcSegment *getFootControlRef(int side);
  virtual int findFootBalanceInterp(float *x, float *z);
  virtual int moveHeel(int side, hMatrix goalTransform);
  virtual float getMoveHeelPotential(int side);
  virtual int setKneeControl(int side, int type);
  virtual int getKneeControlType(int side);

  // Head, eyes and neck.  A null goal transform sets the mode without a
  // goal.
  virtual int moveHead(hMatrix goalTransform);
  virtual int getMoveHeadGoal(hMatrix &goal);
  virtual float getMoveHeadPotential();
  virtual int setHeadControl(int type, hMatrix *goalTransform, hcSite *site);
  virtual int getHeadControlType();
  virtual int getHeadControlGoal(hMatrix &goalTransform);
  virtual hcSite *getHeadControlRef();
  // The translation of the eyes' control goal.
  virtual int getEyeFixation(hVector &eyeFixation);
  virtual int moveEyes(hMatrix goalTransform);
  virtual int getMoveEyesGoal(hMatrix &goal);
  virtual float getMoveEyesPotential();
  virtual int setEyesControl(int type, hMatrix *goalTransform, hcSite *site);
  virtual int getEyesControlType();
  virtual int getEyesControlGoal(hMatrix &goalTransform);
  virtual hcSite *getEyesControlRef();
  virtual int setNeckCentered(int on);
  virtual int getNeckCentered();

  // Root and stepping.
  virtual int getRootControlType();
  virtual void setRootControl(int type);
  virtual void setStepBalanceControl(int type);
  virtual int getStepBalanceControlType();
  virtual void setStepPelvisControl(int type);
  virtual int getStepPelvisControlType();

  // Turns the figure by theta radians about axis (world axes when globalP is
  // non-zero, the figure's own otherwise) keeping its position; 0 for a
  // zero axis.
  virtual int rotateBy(float theta, hVector &axis, int globalP);
  virtual int createWholeBodyForceTreeFID();
  virtual int computeWeightDistribFID();
  virtual int setSupport(int type);  // a supportType
  // Builds the skin of the figure (replacing the one built before): 1, or
  // 0 (none) when the figure has no segments.  The human owns its skin.
  virtual int buildSmoothSkin();
  virtual hcSmoothSkin *getSmoothSkin();  // null until built
  virtual float queryPosture(int type, int side = noSide,
                             int offsetType = offsetGlobal);

 protected:
  hcHuman(hcFigure *figure, bool ownsFigure);
  virtual ~hcHuman();

 private:
  class FigureWatch;

  struct Arm {
    int type = armRelease;
    int base = armShoulder;
    hcSegment *ref = nullptr;
    hcSite *goal = nullptr;
  };
  struct Foot {
    int type = footRelease;
    hcSegment *ref = nullptr;
  };
  struct Goal {
    bool set = false;
    hMatrix m;
  };
  struct LookControl {
    int type = 0;  // headRelease, eyeRelease
    Goal goal;
    hcSite *site = nullptr;
  };
  struct Spine {
    int low = 1, high = 17, initiator = 17, resistor = 1;
    float resistance = 100.0f;
    int interp = 1;
  };

  // The figure while the watch vouches for it, else null.
  hcFigure *figure();
  hcJoint *landmarkJoint(int joint);
  hcJoint *shoulder(int side);
  // The first three values of a joint array (getAngles, getUpperLimits, ...).
  bool jointTriple(hcJoint *j, int (hcJoint::*get)(float *, int), hVector &out);
  int readGoal(const Goal &g, hMatrix &out);
  // Solves one goal for an effector site over the joints from start to it:
  // position (C_POS) or aim (C_AIM with the site's z axis).  1 when met.
  int reach(hcSite *effector, hcJoint *start, const hMatrix &goal, bool aim, float &potential);

  hcFigure *figure_ = nullptr;
  bool ownsFigure_ = false;
  hcSmoothSkinImpl *skin_ = nullptr;
  FigureWatch *watch_ = nullptr;
  hcAnthroScale *scaler_ = nullptr;
  Arm arm_[2];
  Foot foot_[2];
  int knee_[2] = {kneeRelease, kneeRelease};
  hVector shoulderSynch_[2];
  hVector anthro_[eyePart + 1];
  std::map<std::string, std::string> postures_;
  int pelvisType_ = pelvisRelease;
  int torsoParams_ = torsoNeck;
  hVector torsoAngles_;
  Spine spine_;
  int torsoType_ = torsoRelease;
  int torsoCentered_ = 0;
  int balanceType_ = balanceRelease;
  float interpX_ = 0.5f;
  float interpZ_ = 0.5f;
  Goal balanceGoal_;
  Goal headMove_;
  Goal eyesMove_;
  LookControl head_;
  LookControl eyes_;
  int neckCentered_ = 0;
  int rootType_ = rootDisable;
  int stepBalanceType_ = stepBalanceNone;
  int stepPelvisType_ = stepPelvisNone;
  int support_ = leftFoot;
  float armPotential_[2] = {0, 0};
  float footPotential_[2] = {0, 0};
  float heelPotential_[2] = {0, 0};
  float headPotential_ = 0;
  float eyesPotential_ = 0;
};
