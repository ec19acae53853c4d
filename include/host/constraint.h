// Host library: constraints and the constraint history settings.
//
// A constraint ties an end effector (a site, or a node of a segment) to a
// goal (a site, a node or face of a segment, a world transform, or a
// transform relative to a segment) and poses the joints between a start
// joint and the end effector so that its objectives are met.  A joint
// constraint made by setPreferredAngle or setJointLimitSpring acts on one
// joint's values instead and has neither end effector nor goal.
//
// Objectives.  A constraint has one orientation and one position objective
// (ObjectiveType).  Its potential measures how far they are from being met:
//     potential = distance + poWeight * angle (radians)
// with the distance (e = end-effector origin, g = goal origin, both global;
// directions are given in the goal's frame)
//     C_POS        |e - g|
//     C_LINE       distance of e from the line through g along the line
//                  vector
//     C_PLANE      distance of e from the plane through g normal to the
//                  plane normal
//     C_HALFSPACE  as C_PLANE while e lies behind the plane, else 0
//     C_RESTANGLE  root of the sum over the joint's DOFs of
//                  (value - rest value)^2
//     C_JOINTLIMIT root of the sum over the joint's DOFs of the squared
//                  amount by which a value lies below its spring's minimum
// and the angle (Re, Rg the rotations of the end-effector and goal frames)
//     C_FRAME      the angle of the rotation from Re to Rg
//     C_AIM        between Re aim and g - e (0 when e and g coincide)
//     C_DIR        between Re endEffectorVector and Rg goalVector
// C_NONE contributes nothing.  The other types (C_UNDEF, C_EDGE, C_FACE,
// C_VIEW, C_PLANEDIR, C_SELFAVOID) are accepted and stored but not modelled:
// they contribute nothing to the potential and evaluate refuses them.
//
// Faces and nodes.  Node n of a segment is its box node n (0..7); face f
// (0..5) is the side of the box at the low (even f) or high (odd f) end of
// the z, y, x axis for f = 0-1, 2-3, 4-5.  A face goal is placed at the
// centre of the face's four nodes with the segment's orientation.
//
// Offsets.  useOffset records the present relation of the end effector to
// the goal (its orientation part, its position part, or both); the solver
// then aims at the goal frame times that displacement instead of at the
// goal frame itself.
//
// The solver.  evaluate solves by damped least squares over the chain's
// DOFs (unfrozen joints from the start joint, else the root, to the end
// effector): each iteration takes the step dq = J^T (J J^T + l^2 I)^-1 e
// for the objectives' residual rows (orientation rows weighted by
// sqrt(poWeight)), with e the residual clamped to stepfactor times the
// chain's length (0.1 for stepfactor <= 0 or NaN) and no DOF moving more
// than kMaxStep.  The damping l adapts as in Levenberg-Marquardt: halved
// after a step that lowers the error, multiplied by 4 and the step retried
// after one that does not.  Values are clamped to their limits, and a DOF
// that sits on a limit the step pushes past is left out of that step.  It
// stops when the objectives are met (kMetDistance, kMetAngle), when no step
// lowers the error, after kIterations iterations, or after timelimit
// seconds (> 0).  Statuses: 1 met; 0 not met (unreachable, limited, out of
// iterations: the chain is left as close as it got); -1 the constraint
// cannot be evaluated (unknown constraint, no end effector or goal where
// the objectives need them, a goal that is not finite, an objective that
// is not modelled); 2 skipped (inactive, weight 0, or throttled).  -1 and 2
// move nothing.
//
// Every live constraint is registered; the static operations that take a
// constraint (destroy, evaluate) and resolve accept only registered ones,
// so a stale or foreign pointer answers their failure value.  A constraint
// does not own or watch the figure parts it refers to: destroying them
// first leaves it with stale references, as any stale pointer.
//
// Statuses are 1 for success and 0 for failure unless a comment says
// otherwise.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "host/core.h"
#include "host/figure.h"

class hcConstraint;

// ---------------------------------------------------------------------------
// The solver's history of potentials, used to throttle constraints that make
// no progress.  The settings are process-wide; each constraint has a history
// of its own.
class hcConstrHistory {
 public:
  static int getMinHistorySize();  // 2
  static int getMaxHistorySize();  // 1000
  // 1 and stored within the bounds; 0 (unchanged) outside them.
  static int setHistorySize(int size);
  static int getHistorySize();  // 10 until set
  // 1 and stored for a finite delta >= 0; 0 (unchanged) otherwise.
  static int setHistoryDelta(float delta);
  static float getHistoryDelta();  // 0.001 until set
  static int getThrottleOn();      // 0 until set
  // Stores on != 0; answers 1.
  static int setThrottleOn(int on);
  // 1 when throttling is on, the history holds getHistorySize() potentials
  // and the oldest of them exceeds the newest by less than the delta.
  int isThrottled();

  // Host-side: the potentials recorded, oldest first.
  void record(float potential);
  void clear();
  int count() const { return static_cast<int>(potentials_.size()); }

 private:
  friend class hcConstraint;
  hcConstrHistory() = default;
  bool throttled() const;

  std::deque<float> potentials_;
};

// ---------------------------------------------------------------------------
class hcConstraint : public hcObject {
 public:
  enum ObjectiveType : int {
    C_UNDEF = 0, C_NONE, C_POS, C_LINE, C_PLANE, C_EDGE, C_FACE, C_FRAME,
    C_AIM, C_DIR, C_VIEW, C_RESTANGLE, C_JOINTLIMIT, C_PLANEDIR, C_SELFAVOID,
    C_HALFSPACE
  };

  // Met: the end effector within kMetDistance metres (radians for the
  // joint kinds) and kMetAngle radians of its objectives.
  static constexpr double kMetDistance = 1e-4;
  static constexpr double kMetAngle = 1e-4;
  static constexpr int kIterations = 100;
  static constexpr double kDifference = 1e-5;  // Jacobian step, radians or metres
  static constexpr double kMinDamping = 1e-6;
  static constexpr double kMaxDamping = 1e6;
  static constexpr double kMaxStep = 0.5;      // per DOF and iteration
  // Size of the buffer tessprint writes into.
  static constexpr std::size_t kDescriptionSize = 1024;

  static hcType *getClassType();
  // A new registered constraint named name (null gives an empty name):
  // active, weight 1, priority 0, orientation C_NONE, position C_POS.
  explicit hcConstraint(const char *name);
  ~hcConstraint() override;

  // A new constraint; null for a null or empty name.
  static hcConstraint *create(const char *newName);
  // Deletes a registered constraint: 1, else 0.
  static int destroy(hcConstraint *c);
  // Runs the solver on c; see the header comment for the statuses.
  static int evaluate(hcConstraint *c, float timelimit = 0.0f,
                      float stepfactor = 0.1f);
  // The oldest live constraint named name; null when none.
  static hcConstraint *find(const char *name);

  // 0 for a null or empty name.
  int setName(const char *newName) override;
  // Writes the description into buffer (kDescriptionSize bytes); answers
  // its length.  Level 0 gives the class and name, higher levels the state.
  virtual int tessprint(char *buffer, int level);
  void tessprint(char *buffer, int level, std::size_t size) override;

  // The end effector's segment (of the site, or of the node); null if none.
  hcSegment *getEndEffectorSegment();
  // The end effector's global frame: 1, or 0 (E untouched) without one.
  int getEndEffectorTransform(hMatrix &E);
  // The segment the goal lies on; null for transform and joint goals.
  hcSegment *getGoalSegment();
  int setActive(int on);  // answers 1
  int isActive();
  int isBehavior();  // 0: plain constraints are not behaviours
  int isMotion();    // 0: plain constraints are not motions
  // The origin of the frame the solver aims at (getGoal): 1, or 0 (point
  // untouched) without a goal.
  int getGoalPoint(hVector &point);
  // The goal frame as the goal defines it (global): 1, or 0 without one.
  int getGoalTransform(hMatrix &G);
  // The frame the solver aims at: the goal frame times the recorded offset.
  int getGoal(hMatrix &T);
  // 0 without what the objectives need.
  float getPotential();
  float getWeight();
  // The joint chain from the end effector up to and including the start
  // joint (or the root), or the joint of a joint constraint.  The list is
  // the constraint's and is rebuilt on each call; null when empty.
  hList *getJoints();
  // (name, token) tables: goal and end-effector kinds by their
  // hcValue::vType, objective types by their value.
  static hcTypeTable *getGoalTypeTable();
  static hcTypeTable *getEndEffectorTypeTable();
  static hcTypeTable *getOrientationTypeTable();
  static hcTypeTable *getPositionTypeTable();

  // Goals.  A null segment or site clears the goal; a node or face index
  // out of range leaves it unchanged.
  void setGoalSite(hcSite *site);
  hcSite *getGoalSite();
  void setGoalNode(hcSegment *segment, int node);
  int getGoalNode();  // -1 unless a node goal
  void setGoalFace(hcSegment *segment, int face);
  int getGoalFace();  // -1 unless a face goal
  // The goal is the segment's global frame times matrix.
  void setGoalRelativeSegment(hcSegment *segment, hMatrix &matrix);
  void setGoalTransform(hMatrix &matrix);
  // Writes the recorded offset (identity when none); answers
  // useDisplacement().
  int getGoalDisplacement(hMatrix &matrix);
  int useDisplacement();  // 1 when an offset is in use
  // V_UNDEF, V_SITE, V_NODE, V_FACE, V_SEGMENT (relative to a segment),
  // V_MATRIX (transform) or V_JOINTANGLE (joint constraints).
  int getGoalType();

  // End effectors; a null site or segment clears it, a node index out of
  // range leaves it unchanged.
  void setEndEffectorSite(hcSite *site);
  hcSite *getEndEffectorSite();
  void setEndEffectorNode(hcSegment *segment, int node);
  int getEndEffectorNode();  // -1 unless a node end effector
  int getEndEffectorType();  // V_UNDEF, V_SITE or V_NODE

  // 1 when orientation is one of C_UNDEF, C_NONE, C_FRAME, C_AIM, C_DIR,
  // C_VIEW, C_PLANEDIR and position one of C_UNDEF, C_NONE, C_POS, C_LINE,
  // C_PLANE, C_EDGE, C_FACE, C_RESTANGLE, C_JOINTLIMIT, C_SELFAVOID,
  // C_HALFSPACE; 0 (unchanged) otherwise.
  int setObjectiveTypes(int orientation, int position);
  int getOrientationType();
  int getPositionType();
  // Weight of the orientation term: 1 and stored for a finite value >= 0.
  int setPOWeight(float poweight);
  float getPOWeight();  // 1 until set

  // Direction vectors, stored normalised: the setters answer 0 (unchanged)
  // for a zero or non-finite vector.  Line vector (1 0 0), plane normal
  // (0 0 1), aim direction (1 0 0), direction vectors (1 0 0) and plane
  // normal vectors (0 0 1) until set.
  int setLineVector(hVector &vector);
  int getLineVector(hVector &vector);
  int setPlaneNormal(hVector &vector);
  int getPlaneNormal(hVector &vector);
  int setAimDirection(hVector &vector);
  int getAimDirection(hVector &vector);
  int setDirectionVectors(hVector &endEffectorVector, hVector &goalVector);
  int getDirectionVectors(hVector &endEffectorVector, hVector &goalVector);
  int setPlaneNormalVectors(hVector &endEffectorVector, hVector &goalVector);
  int getPlaneNormalVectors(hVector &endEffectorVector, hVector &goalVector);

  // The joint where the chain ends; null: the chain reaches the root.  0
  // (unchanged) for a joint that is not on the end effector's way to the
  // root.
  int setStartJoint(hcJoint *joint = nullptr);
  hcJoint *getStartJoint();
  // Turns the goal into a transform goal at the end effector's present
  // frame: 1, or 0 without an end effector.
  int initializeGoal();
  void setWeight(float weight);
  // Adds the constraint to the solver's list (once).
  void addToList();
  // Records the present offset of the end effector from the goal (or drops
  // it); without an end effector and a goal nothing is recorded.
  void useOffset(int useOriOffset, int usePosOffset);
  // Replaces the matrix of a transform or relative-segment goal; other
  // goals are left alone.
  void updateGoalTransform(hMatrix &trans);
  // A joint constraint pulling joint towards its rest values; null for a
  // null joint.
  static hcConstraint *setPreferredAngle(hcJoint *joint);
  // A joint constraint holding joint's values at or above minAngle (one
  // float per DOF, internal units); null for a null joint or array.
  static hcConstraint *setJointLimitSpring(hcJoint *joint, float *minAngle);
  void setPriority(int p);
  int getPriority();
  hcConstrHistory *getHistory();
  // The list's first element when it is a constraint; null otherwise.
  static hcConstraint *resolve(hList *l);
  hcFigure *getEndEffectorFigure();

  // Host-side: the solver's list and the registry.
  static const std::vector<hcConstraint *> &solverList();
  static bool isRegistered(const hcConstraint *c);

 protected:
  const char *className() const override { return "hcConstraint"; }

 private:
  enum class Goal { None, Site, Node, Face, Transform, Relative, Joint };
  enum class Effector { None, Site, Node };

  // One DOF of the chain the solver moves.
  struct Dof {
    hcJoint *joint;
    int index;
    float lower;
    float upper;
  };

  std::string describe(int level);
  void goalChanged();
  bool effectorFrame(hMatrix &E);
  bool goalFrame(hMatrix &G);
  bool aimFrame(hMatrix &T);
  bool needsGoal() const;
  bool modelled() const;
  void residual(const hMatrix &E, const hMatrix &T, std::vector<double> &rows, double &distance,
                double &angle);
  void jointRows(std::vector<double> &rows, double &distance);
  bool measure(std::vector<double> &rows, double &distance, double &angle);
  bool met(double distance, double angle) const;
  double chainLength(const std::vector<Dof> &all);
  float potential();
  std::vector<hcJoint *> chain(hcJoint *stopAt);
  std::vector<Dof> dofs();
  int solve(float timelimit, float stepfactor);

  int active_ = 1;
  float weight_ = 1.0f;
  int priority_ = 0;
  int orientationType_ = C_NONE;
  int positionType_ = C_POS;
  float poWeight_ = 1.0f;

  Goal goal_ = Goal::None;
  hcSite *goalSite_ = nullptr;
  hcSegment *goalSegment_ = nullptr;
  int goalIndex_ = -1;  // node or face
  hMatrix goalMatrix_;  // transform, or relative to goalSegment_

  Effector effector_ = Effector::None;
  hcSite *effectorSite_ = nullptr;
  hcSegment *effectorSegment_ = nullptr;
  int effectorNode_ = -1;

  hcJoint *startJoint_ = nullptr;
  hcJoint *joint_ = nullptr;   // joint constraints
  std::vector<float> bound_;   // spring minimums of a joint-limit constraint

  int useOriOffset_ = 0;
  int usePosOffset_ = 0;
  hMatrix offset_;

  hVector lineVector_{1, 0, 0};
  hVector planeNormal_{0, 0, 1};
  hVector aimDirection_{1, 0, 0};
  hVector dirEffector_{1, 0, 0};
  hVector dirGoal_{1, 0, 0};
  hVector normalEffector_{0, 0, 1};
  hVector normalGoal_{0, 0, 1};

  hcConstrHistory history_;
  HandedList jointList_;
};
