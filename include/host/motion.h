// Host library: motions.
//
// A motion changes something over an interval of frames [start, end]:
// joint angles, a figure's location, a scale, a colour, a path, an
// attachment, a constraint's weight, a script.  A timeline (host/timeline.h)
// holds motions and calls their three stages: preaction when a motion
// becomes current, apply(t) for every frame t it plays, postaction when it
// has played its last frame.
//
// Timing.  Frames are integers, clamped to +-kMaxFrame.  setStartTime moves
// the whole interval (the duration stays); setStartFrame and setEndFrame
// move one edge (the end never lies before the start); setDuration moves the
// end.  A motion is current at t (activeq) when it is switched on and
// start <= t <= end.
//
// Interpolation.  apply(t) turns t into a progress value p in [0, 1]:
//     f = timeFraction(t)       (t - start) / (end - start), clamped; for a
//                               zero-length motion 1 from its start on
//     g = velocityControl(f)    VC_CONSTANT, VC_NONE: f;  VC_ACCELERATE: f^2;
//                               VC_DECELERATE: 1 - (1 - f)^2;
//                               VC_EASEIN_EASEOUT: (1 - cos(pi f)) / 2
//     p = shaped by the interpolation type: a motion has two keys (its start
//         and end values), through which I_LINEAR, I_BSPLINE and I_SCALED
//         coincide (p = g); I_CSPLINE has zero end tangents
//         (p = 3g^2 - 2g^3); I_NONE holds the start value until the end
//         frame (p = 0 below g = 1, else 1)
// and sets its target to start + p * (end - start).  The weight function
// (used by timed constraints) maps f to a weight: WF_CONSTANT and WF_NONE 1,
// WF_DECAY 1 - f, WF_EASEIN_EASEOUT sin(pi f), WF_INCREASE f.
//
// References.  A motion watches every host object it refers to (its figure,
// segment, joints, site, constraint) and forgets it when that object is
// destroyed.  Objects given to the observe operations are dependencies: when
// one of them is destroyed the motion also switches itself off.  Materials,
// motion groups, paths, channels and bound channel sets are not modelled by
// this stand-in: they are stored and handed back, never read.
//
// Kinds.  The kinds that drive the in-memory figure model (joint, figure
// location, segment scale, timed constraint) really move it; kinds that need
// machinery this stand-in does not model (figure scale, material colour,
// paths, attachments, scripts, channel sets, motion groups) keep their
// parameters but answer failure from the stages that would need it.
//
// Registry.  create and hcChannelSetMotion::create make motions that the
// host owns; destroy and destroyAll delete those only (any other pointer is
// ignored).  Motions made with new belong to their maker.
//
// Texts.  serialize gives one line "Class name start end interp velocity
// weight active" (name "-" when empty), which parse reads back; sprint and
// presprint point *buffer at a text owned by the motion and answer its
// length (0, buffer untouched, when there is nothing to print).
//
// Statuses are 1 for success and 0 for failure unless a comment says
// otherwise.
#pragma once

#include <cstddef>
#include <list>
#include <string>
#include <vector>

#include "host/core.h"

class hcTimeline;
class hcMotionGroup;       // the host's motion editor groups; opaque here
class hcPath;              // opaque host path
class hcChannel;           // channels record per-frame data; opaque here
class hcBoundChannelSet;   // channel sets bound to a figure; opaque here

// ---------------------------------------------------------------------------
class hcMotion : public hcObject {
 public:
  enum InterpType : int { I_LINEAR = 0, I_BSPLINE = 1, I_CSPLINE = 2, I_SCALED = 3, I_NONE = 4 };
  enum VelocityType : int {
    VC_CONSTANT = 0, VC_ACCELERATE = 1, VC_DECELERATE = 2, VC_EASEIN_EASEOUT = 3, VC_NONE = 4
  };
  enum WeightType : int {
    WF_CONSTANT = 0, WF_DECAY = 1, WF_EASEIN_EASEOUT = 2, WF_NONE = 3, WF_INCREASE = 4
  };
  // Motion types (getMotionType, and the tokens of getMotionTypeTable,
  // whose entries are the class names).
  enum {
    MOTION = 0, JOINT_MOTION, FIGURE_MOTION, SCALE_MOTION, SCALESEG_MOTION,
    PATH_MOTION, FIGUREPATH_MOTION, TIMED_ATTACH, TIMED_CONSTRAINT,
    COLOR_MOTION, SCRIPT_MOTION, CHANNELSET_MOTION, GROUP_MOTION,
    DUMMY_MOTION, kMotionTypes
  };
  struct motionList : std::list<hcMotion *> {};

  static constexpr long kMaxFrame = 1000000000000000L;
  // Size of the buffer tessprint writes into.
  static constexpr std::size_t kDescriptionSize = 1024;

  hcMotionGroup *group;  // stored and handed back as is
  char *describe;        // owned text (new[]), or null

  static hcType *getClassType();
  // A motion named name (unnamed for null) of the given type, interval
  // [0, 0], switched on, linear, constant velocity, constant weight.
  explicit hcMotion(const char *name = nullptr, int type = MOTION);
  ~hcMotion() override;
  hcMotion(const hcMotion &) = delete;
  hcMotion &operator=(const hcMotion &) = delete;

  // 0 (unchanged) for a null or empty name or one holding white space,
  // which could not be serialized.
  int setName(const char *newName) override;
  // The describe text when set and not empty, else "Class name start end".
  const char *getDescription();
  int getMotionType();
  long getEndTime();
  void setStartFrame(long start);
  void setEndFrame(long end);
  long getStartTime();
  void setStartTime(long start);
  long getDuration();
  void setDuration(long dur);  // negative durations count as 0
  // The setters ignore values outside their enumeration.
  int getWeightFunction();
  void setWeightFunction(int weight);
  int getVelocityControl();
  void setVelocityControl(int vc);
  int getInterpType();
  void setInterpType(int i);
  // Position on its timeline (0 first), -1 when on none.
  int getOrder();
  float timeFraction(long t);
  float velocityControl(float f);
  int activeq(long t);
  virtual int preaction();
  // A plain motion drives nothing: 0.
  virtual int apply(long t);
  virtual int postaction();
  long getStartFrame();
  long getEndFrame();
  // Moves the motion onto timeline (off its present one; null: onto none).
  void setTimeline(hcTimeline *timeline);
  hcTimeline *getTimeline();
  hcFigure *getFigure();
  void setFigure(hcFigure *figure);
  void setSegment(hcSegment *segment);
  void observeFigure(hcFigure *fig);
  // The constraint observed is also the one a timed constraint drives.
  void observeConstraint(hcConstraint *constr);
  void observeObject(hcObject *object);
  // Stored only (materials are not modelled); a colour motion's material.
  void observeMaterial(hcMaterial *material);
  hcMotionGroup *getMotionGroup();
  void activate(int on);
  int isActive();
  static hcTypeTable *getMotionTypeTable();
  const char *serialize();
  // Reads a serialize line of this motion's class; nothing changes unless
  // the whole line is valid.
  int parse(const char *buf);
  // Makes the motion type table and, when the host has no current timeline,
  // a timeline that becomes current (hcGlobal::getTimeline).
  static void Init();
  // A host-owned motion of the given type; null for an unknown type.
  static hcMotion *create(int type, const char *name, hcFigure *figure);
  // Writes the description (level 0: class and name; higher: the serialize
  // line) into buffer (kDescriptionSize bytes); answers its length.
  virtual int tessprint(char *buffer, int level);
  void tessprint(char *buffer, int level, std::size_t size) override;
  static void destroy(hcMotion *m);
  static void destroyAll();

  // Stages and texts the kinds provide.
  virtual int init();         // checks (and refreshes) what the motion needs
  virtual void updatetime();  // brings the interval up to date
  virtual int presprint(char **buffer);
  virtual int scan(hcValue *value);  // takes one value of the kind's parameters
  int sprint(char **buffer) override;

  // Progress p of apply(t) and the weight at fraction f (see above).
  float progress(long t);
  float weightAt(float f);

 protected:
  const char *className() const override { return "hcMotion"; }
  // The kind's parameters, for the description texts.
  virtual std::string params();
  // Clears every reference to an object that is being destroyed.
  virtual void forget(hcSubject *gone);
  // Watches s (null ignored); observed dependencies switch the motion off
  // when they go.
  void watch(hcSubject *s, bool observed = false);
  // Points *buffer at "Class name start end" + params().
  int printTo(char **buffer);
  int printText(char **buffer, const std::string &text);

  hcFigure *figure_ = nullptr;
  hcSegment *segment_ = nullptr;
  hcConstraint *constraint_ = nullptr;
  hcMaterial *material_ = nullptr;

 private:
  friend class hcTimeline;
  class Watch;
  struct Watched {
    hcSubject *subject;
    Watch *watch;
    bool observed;
  };
  void subjectGone(hcSubject *s);
  std::string headline();

  int type_;
  long start_ = 0;
  long end_ = 0;
  int weight_ = WF_CONSTANT;
  int velocity_ = VC_CONSTANT;
  int interp_ = I_LINEAR;
  int active_ = 1;
  hcTimeline *timeline_ = nullptr;
  bool running_ = false;  // preaction done on the timeline, postaction not yet
  std::vector<Watched> watched_;
  std::string text_;         // serialize, getDescription
  std::string printed_;      // sprint, presprint
};

// ---------------------------------------------------------------------------
class hcGroupMotion : public hcMotion {
 public:
  explicit hcGroupMotion(hcMotionGroup *grp);
  ~hcGroupMotion() override;
  int init() override;        // 0: motion groups are not modelled
  void updatetime() override; // nothing to follow without a group model

 protected:
  const char *className() const override { return "hcGroupMotion"; }
};

// A placeholder that occupies its interval and changes nothing.
class hcDummyMotion : public hcMotion {
 public:
  explicit hcDummyMotion(const char *n = nullptr);
  ~hcDummyMotion() override;
  int preaction() override;      // 1
  int apply(long t) override;    // activeq(t)
  int init() override;           // 1
  int sprint(char **buffer) override;
  int scan(hcValue *value) override;  // a number: the duration

 protected:
  const char *className() const override { return "hcDummyMotion"; }
};

// Moves a figure's location from its start location to a goal (rotations
// by spherical interpolation, translations linearly).
class hcFigureMotion : public hcMotion {
 public:
  // The start and goal locations are the figure's present location.
  hcFigureMotion(const char *name, hcFigure *figure);
  ~hcFigureMotion() override;
  int preaction() override;      // 0 without a figure
  int apply(long t) override;
  int scan(hcValue *vector) override;  // a matrix: the goal
  int init() override;           // takes the start location again
  int sprint(char **buffer) override;
  int setParams(hMatrix goal);
  int getEndLocation(hMatrix &end);
  int getStartLocation(hMatrix &start);

 protected:
  const char *className() const override { return "hcFigureMotion"; }
  std::string params() override;

 private:
  hMatrix startLocation_;
  hMatrix goal_;
};

// Scales a figure; figure scaling is not modelled, so the stages that read
// or set the figure's scale answer its failure.
class hcScaleMotion : public hcMotion {
 public:
  explicit hcScaleMotion(const char *name = nullptr, hcFigure *figure = nullptr);
  ~hcScaleMotion() override;
  int preaction() override;
  int apply(long t) override;
  int init() override;
  int sprint(char **buffer) override;
  int scan(hcValue *value) override;  // a vector: the end scale
  int setParams(hVector &scale);      // 0 (unchanged) unless all positive
  int getStart(hVector &vec);
  int getEnd(hVector &vec);
  hcChannel *getChannel();            // null: channels are not modelled

 protected:
  const char *className() const override { return "hcScaleMotion"; }
  std::string params() override;

 private:
  hVector startScale_{1, 1, 1};
  hVector endScale_{1, 1, 1};
};

// Scales a segment from its start scale (its absolute scale when given) to
// an end scale.
class hcScaleSegMotion : public hcMotion {
 public:
  explicit hcScaleSegMotion(const char *name = nullptr, hcSegment *segment = nullptr);
  ~hcScaleSegMotion() override;
  int preaction() override;
  int apply(long t) override;
  int init() override;                // takes the start scale again
  int sprint(char **buffer) override;
  int scan(hcValue *value) override;  // a vector: the end scale
  int setParams(hVector scale);       // 0 (unchanged) unless all positive
  int getStart(hVector &v);
  int getEnd(hVector &v);
  hcChannel *getChannel();
  hcSegment *getSegment();

 protected:
  const char *className() const override { return "hcScaleSegMotion"; }
  std::string params() override;

 private:
  hVector startScale_{1, 1, 1};
  hVector endScale_{1, 1, 1};
};

// Moves a segment along a path; paths are not modelled, so the stages
// answer 0.
class hcPathMotion : public hcMotion {
 public:
  enum { FORWARD = 0, BACKWARD = 1 };  // directions (getDirectionTypes)

  explicit hcPathMotion(const char *name = nullptr, hcSegment *segment = nullptr);
  ~hcPathMotion() override;
  int preaction() override;
  int apply(long t) override;
  int postaction() override;
  int sprint(char **buffer) override;
  int scan(hcValue *val) override;    // a number: the direction
  int init() override;
  void updatetime() override;         // the interval follows the path: none
  int setParams(int direction);       // 0 (unchanged) for an unknown one
  hcSegment *getSegment();
  hcPath *getPath();                  // null
  hcChannel *getChannel();            // null
  int getDirection();
  static hcTypeTable *getDirectionTypes();

 protected:
  hcPathMotion(const char *name, hcSegment *segment, int type);
  const char *className() const override { return "hcPathMotion"; }
  std::string params() override;

 private:
  int direction_ = FORWARD;
};

class hcFigurePathMotion : public hcPathMotion {
 public:
  explicit hcFigurePathMotion(const char *name = nullptr, hcSegment *segment = nullptr,
                              hcFigure *figure = nullptr);
  ~hcFigurePathMotion() override;
  int apply(long t) override;
  int sprint(char **buffer) override;
  int scan(hcValue *val) override;    // a figure: the path figure
  hcFigure *getPathFigure();

 protected:
  const char *className() const override { return "hcFigurePathMotion"; }
  std::string params() override;
  void forget(hcSubject *gone) override;

 private:
  hcFigure *pathFigure_ = nullptr;
};

// Interpolates the angles of a set of joints (radians / metres) from their
// start angles to their end angles.
class hcJointMotion : public hcMotion {
 public:
  explicit hcJointMotion(const char *name);
  ~hcJointMotion() override;
  int preaction() override;      // 0 without joints
  // 1 when it set at least one joint; a joint whose DOF count changed since
  // it was added is left alone.
  int apply(long t) override;
  int sprint(char **buffer) override;
  int scan(hcValue *value) override;  // a joint: addJoint
  int init() override;           // takes the start angles from the pose
  // Adds a joint with its present angles as start and end angles; the first
  // joint's figure becomes the motion's figure when it has none.
  int addJoint(hcJoint *j);
  // Sets the end angles of joint n from angles (getNthJoint(n)->getNDOFs()
  // floats); 0 when the joint's DOF count changed since it was added.
  int setNthAngle(int n, float *angles);
  // Adds the figure's joints not yet in the motion, start angles from the
  // pose, end angles from the pose when grabAngles, else 0; answers how
  // many were added.
  int addFigureJoints(hcFigure *fig, int grabAngles = 0);
  // Takes the end angles from the present pose; 0 without joints.
  virtual int setParams();
  hcJoint *getNthJoint(int n);
  int getNumberOfJoints();
  // Copy joint n's start or end angles (getNthJoint(n)->getNDOFs() floats)
  // into angles and answer it; null for a bad n, a null array or a joint
  // whose DOF count changed since it was added.
  float *getNthStartAngles(int n, float *angles);
  float *getNthEndAngles(int n, float *angles);

 protected:
  const char *className() const override { return "hcJointMotion"; }
  std::string params() override;
  void forget(hcSubject *gone) override;

 private:
  struct Entry {
    hcJoint *joint;
    std::vector<float> start;
    std::vector<float> end;
  };
  std::vector<Entry> joints_;
};

// Attaches its figure to a site for its interval; attachments are not
// modelled, so preaction and postaction answer 0.
class hcTimedAttach : public hcMotion {
 public:
  explicit hcTimedAttach(const char *name = nullptr, hcFigure *figure = nullptr);
  ~hcTimedAttach() override;
  int preaction() override;
  int postaction() override;
  int sprint(char **buffer) override;
  int scan(hcValue *val) override;    // a site: setParams
  int init() override;                // 1 with a figure and a site
  virtual int setParams(hcSite *s);   // null clears; answers s != null
  hcSite *getSite();

 protected:
  const char *className() const override { return "hcTimedAttach"; }
  std::string params() override;
  void forget(hcSubject *gone) override;

 private:
  hcSite *site_ = nullptr;
};

// Switches the observed constraint on for its interval and weighs it by the
// weight function times its peak weight.
class hcTimedConstraint : public hcMotion {
 public:
  explicit hcTimedConstraint(const char *name);
  ~hcTimedConstraint() override;
  int preaction() override;      // switches the constraint on
  int apply(long t) override;    // sets the constraint's weight
  int postaction() override;     // switches it off
  int presprint(char **buffer) override;
  int sprint(char **buffer) override;
  int scan(hcValue *val) override;    // a constraint: observeConstraint
  int init() override;
  // Takes the constraint's present weight as the peak weight.
  virtual int setParams();
  hcConstraint *getConstraint();
  float getWeight();             // the weight last applied (0 before)

 protected:
  const char *className() const override { return "hcTimedConstraint"; }
  std::string params() override;

 private:
  float peak_ = 1;
  float weight_ = 0;
};

// Changes a material's colour; materials are not modelled, so the stages
// and the start colour (read from the material) answer 0.
class hcColorMotion : public hcMotion {
 public:
  explicit hcColorMotion(const char *name = nullptr, hcMaterial *material = nullptr);
  ~hcColorMotion() override;
  int preaction() override;
  int apply(long t) override;
  int init() override;
  int sprint(char **buffer) override;
  int scan(hcValue *value) override;  // a vector: setParams
  virtual int setParams(hVector &color);
  int getStartColor(hVector &v);
  int getEndColor(hVector &v);
  hcChannel *getChannel();
  hcMaterial *getMaterial();

 protected:
  const char *className() const override { return "hcColorMotion"; }
  std::string params() override;

 private:
  hVector endColor_;
};

// Calls methods of a script class of the host's embedded interpreter, which
// this stand-in does not model: the stages answer 0, callMethod null.
class hcScriptMotion : public hcMotion {
 public:
  explicit hcScriptMotion(const char *name);
  ~hcScriptMotion() override;
  int preaction() override;
  int apply(long t) override;
  int postaction() override;
  int presprint(char **buffer) override;
  int scan(hcValue *vector) override;  // a string: setClass
  int sprint(char **buffer) override;
  int init() override;
  void setClass(const char *classname);  // null clears
  const char *callMethod(const char *methodname, const char *argstr = nullptr);

 protected:
  const char *className() const override { return "hcScriptMotion"; }
  std::string params() override;

 private:
  std::string class_;
};

// Plays a bound channel set into its figure or records the figure into it;
// channel sets are not modelled, so the stages are hcMotion's.
class hcChannelSetMotion : public hcMotion {
 public:
  enum { PLAYBACK = 0, RECORD = 1 };  // directions (getDirectionsTable)

  hcChannelSetMotion(const char *n, hcBoundChannelSet *b);
  ~hcChannelSetMotion() override;
  // A host-owned channel set motion (see hcMotion::destroy).
  static hcChannelSetMotion *create(const char *n, hcBoundChannelSet *b);
  int setParams(int direction);  // 0 (unchanged) for an unknown one
  hcBoundChannelSet *getBoundChannelSet();
  hcTypeTable *getDirectionsTable();
  int getDirection();

 protected:
  const char *className() const override { return "hcChannelSetMotion"; }
  std::string params() override;

 private:
  hcBoundChannelSet *set_;
  int direction_ = PLAYBACK;
};
