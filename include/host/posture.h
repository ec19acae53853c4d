// Host library: postures, bones and twist links.
//
// Postures (hcPosture).  A posture is a named set of joint values of a
// figure, recorded with the figure's location.  The host keeps every
// posture in one registry: create, add and find work per figure (a name is
// used once per figure), remove and the destructor take a posture out of it,
// resolve answers only postures that are in it, and a posture is destroyed
// with its figure.  Joints are remembered by name and reached through the
// figure when the posture is applied: apply sets every recorded joint's
// values (radians / metres) with hcJoint::setAngles when every recorded
// joint still exists with the recorded number of DOFs, and changes nothing
// (answering 0) otherwise.  The location is recorded for the files only and
// is not applied.
//
// The text of a posture (saveToBuffer, save) is a positions file as
// hcFigure::savePositions writes it, so either can be read by add and by
// hcFigure::poseFromFile:
//   hcpositions 1
//   location <16 numbers>
//   joint <name> <n> <n values>      (once per joint)
//   end
// Names are written with blanks, '%' and control characters as %XX.
//
// Bones (hcBone, hcSegmentBone, hcTwistBone).  A bone yields a global
// transform and says whether it is up to date.  The meshes and landmarks
// bound to a bone are the skin's business (addMesh, addLandmark); the bone
// only lists them.  A bare bone is the identity and always up to date.  A
// segment bone answers its segment's global frame and is up to date while
// the segment has not moved since the bone last answered it; once the
// segment has been destroyed it answers nothing (the matrix is left alone)
// and is not up to date.
//
// Twist links (hcTwistLink).  A link spreads the twist of one DOF of a joint
// (twistDOF, radians) over its twist bones, along the line from its site to
// its toSite.  update places each bone b at
//     origin(site) + a * offset(b) * length,  rotated by twist * scale(b)
// about the unit axis a (site towards toSite) on top of site's rotation.
// With manual computation on, update leaves the bones where setGlobalLocation
// put them.  getComputedAngleInfo answers the last twist update used: the
// angle, the axis as the plane normal, site's x axis projected into the plane
// (vec1; its y axis when x is along the axis) and vec1 turned by the angle
// (vec2).  A link without both sites, or with sites at one point, computes
// nothing.  A twist DOF that the joint does not have counts as no twist.
//
// A link made with nBones builds and owns that many twist bones (at most 64),
// with offsets and scale factors from the two arrays or, for a null array,
// evenly spaced offsets (i + 1) / (nBones + 1) and scales equal to them.  A
// twist bone made on a link joins its bones without belonging to it: it
// leaves the link when it is destroyed, and is left without a link when the
// link is.  construct builds an arm link of a human: for the upper arm the
// shoulder landmark joint with its DOF 2, from the joint's first site to the
// elbow landmark joint's first site; for the forearm the elbow joint with its
// DOF 1, from its first site to the hand landmark site.  Its four bones sit
// at the offsets 0.2, 0.4, 0.6 and 0.8 and their scales are the process-wide
// arm scale factors; setting the factors also rescales the bones of every
// arm link made so far.
//
// The joints, sites and segments a link or bone refers to may be destroyed by
// other means: the link then answers null for them.  Vertex weighting of the
// meshes is not modelled: initialize only records the counts it is given,
// resetVertexWeights and setOriginalWeights change nothing, getVertexList
// leaves the list alone.  The weighting tuning (enableVertexWeighting, the
// scale factors, the gap weightings, the weight threshold) is process-wide.
// This host has no console: printParams answers without printing.
//
#pragma once

#include <functional>
#include <list>
#include <map>
#include <string>
#include <vector>

#include "host/figure.h"
#include "host/human.h"

class hcLandmark;
class hcMeshGeometry;
class hcBone;
class hcTwistBone;
class hcTwistLink;

struct twistBoneList : std::list<hcTwistBone *> {};
struct vertexList : std::list<int> {};

namespace hcposture_detail {

// A pointer to a subject that other code may destroy.  It reads null once
// the subject has gone, or once the observer that watches it was rebound or
// deleted; the callback given to watch runs after the subject has gone.
class SubjectRef {
 public:
  SubjectRef() = default;
  ~SubjectRef();
  SubjectRef(const SubjectRef &) = delete;
  SubjectRef &operator=(const SubjectRef &) = delete;

  void watch(hcSubject *subject, const char *owner, std::function<void()> gone = {});
  bool alive() const;

 private:
  class Watch;
  hcSubject *subject_ = nullptr;
  Watch *watch_ = nullptr;
  std::function<void()> gone_;
};

template <class T>
class Ref {
 public:
  void watch(T *p, const char *owner, std::function<void()> gone = {}) {
    ptr_ = p;
    ref_.watch(p, owner, std::move(gone));
  }
  T *get() const { return ptr_ && ref_.alive() ? ptr_ : nullptr; }

 private:
  SubjectRef ref_;
  T *ptr_ = nullptr;
};

}  // namespace hcposture_detail

// ---------------------------------------------------------------------------
class hcPosture : public hcRefObject {
 public:
  // Sets the figure's joints; 1, or 0 (nothing changed) as described above.
  virtual int apply();
  // Writes the posture's text; 0 when the file cannot be written.
  virtual int save(const char *filename);
  // The posture's text, in a buffer the posture owns (until the next call).
  const char *saveToBuffer();
  // Records the figure's current joint values and location into the posture
  // and answers the new text; null (nothing changed) without a figure.
  const char *cacheInBuffer();
  const char *getName();
  // "<figure name>.<posture name>".
  const char *getFullName();

  // The figure's posture of that name; null when none.
  static hcPosture *find(hcFigure *figure, const char *name);
  // Records the figure's current joint values under a new name; null for a
  // null figure, an empty name or one the figure's postures already use.
  static hcPosture *create(hcFigure *figure, const char *name);
  // Reads a positions file whose joints all exist on the figure with their
  // numbers of DOFs; null otherwise (and for names as create).
  static hcPosture *add(hcFigure *figure, const char *newName, const char *fileName);
  // Destroys a posture of the registry; 1, or 0 for null or unknown.
  static int remove(hcPosture *posture);
  // The posture held by the list node l; null unless it is a posture.
  static hcPosture *resolve(hList *l);
  // The figure's postures in the order they were made (host-side).
  static std::vector<hcPosture *> of(hcFigure *figure);

  ~hcPosture() override;

 protected:
  hcPosture(hcFigure *figure, const char *name);

 private:
  struct JointValues {
    std::string joint;
    std::vector<float> values;
  };

  static hcPosture *make(hcFigure *figure, const char *name);
  // Reads a positions file whose joints all exist on figure with their
  // numbers of DOFs; false (outputs unspecified) otherwise.
  static bool readPositionsFile(hcFigure *figure, const char *fileName, hMatrix &location,
                                std::vector<JointValues> &joints);
  void capture(hcFigure *figure);
  std::string text() const;

  hcposture_detail::Ref<hcFigure> figure_;
  std::string name_;
  std::string fullName_;
  std::string buffer_;
  hMatrix location_;
  std::vector<JointValues> joints_;
};

// ---------------------------------------------------------------------------
class hcBone {
 public:
  hcBone();
  virtual ~hcBone();
  virtual void getGlobal(hMatrix &global);
  virtual int upToDate();
  hcLandmark *getLandmark(int i);     // null out of range
  hcMeshGeometry *getMesh(int i);     // null out of range
  int getNLandmarks();
  int getNMeshes();

  // Binding by the skin (not exposed to scripts); null is ignored.
  void addLandmark(hcLandmark *landmark);
  void addMesh(hcMeshGeometry *mesh);

  hcBone(const hcBone &) = delete;
  hcBone &operator=(const hcBone &) = delete;

 private:
  std::vector<hcLandmark *> landmarks_;
  std::vector<hcMeshGeometry *> meshes_;
};

// ---------------------------------------------------------------------------
class hcSegmentBone : public hcBone {
 public:
  explicit hcSegmentBone(hcSegment *s);
  ~hcSegmentBone() override;
  void getGlobal(hMatrix &global) override;
  int upToDate() override;
  hcSegment *getSegment();

 private:
  hcposture_detail::Ref<hcSegment> segment_;
  hMatrix answered_;
  bool hasAnswered_ = false;
};

// ---------------------------------------------------------------------------
class hcTwistBone : public hcBone {
 public:
  // A bone that joins t's bones (t may be null).
  hcTwistBone(hcTwistLink *t, float offset, float twistScale);
  ~hcTwistBone() override;
  // The placement; the matrix is left alone until the bone has one.
  void getGlobal(hMatrix &global) override;
  // 1 when placed and, unless the link is computed by hand, where update
  // would place it now.
  int upToDate() override;
  hcTwistLink *getLink();
  // The bone's point on the link: (0, 0, offset * length) in the link's
  // frame when local is non-zero, else global; left alone without a link
  // that can compute.
  void getOffset(int local, hVector &offset);
  float getScale();
  float getRelativeOffset();
  // Places the bone as update would.
  void initialize();
  void setGlobalLocation(hMatrix m);

 private:
  friend class hcTwistLink;
  hcTwistLink *link_;
  float offset_;
  float scale_;
  hMatrix global_;
  bool placed_ = false;
};

// ---------------------------------------------------------------------------
class hcTwistLink {
 public:
  enum { NOTHING = 0, REPLACE = 1, REWEIGHT = 2 };

  // The process-wide weighting tuning.
  struct Params {
    int vertexWeighting = 1;
    float upperArm[4] = {1.0f, 0.75f, 0.5f, 0.25f};
    float lowerArm[4] = {1.0f, 0.75f, 0.5f, 0.25f};
    int shoulderGap[2] = {0, 0};
    int wristGap[2] = {0, 0};
    float weightThreshold = 0.01f;
  };

  hcTwistLink(hcJoint *j, int twistDOF, hcSite *site, hcSite *toSite, int refSiteTwistAxis,
              hcMeshGeometry *twistMesh, hcMeshGeometry *fromNeighbor, hcMeshGeometry *toNeighbor,
              int fromGapWeighting, hcSegment *fromSegment, int toGapWeighting, hcSegment *toSegment,
              int outgoing, int angleComputation, hcSite *s1, int a1, hcSite *s2, int a2, hcSite *s3,
              int a3, hcSite *s4, int a4, int nBones, float *offsets, float *scaleFactors);
  ~hcTwistLink();

  // left and top are flags: the left arm, the upper arm.  Null when the
  // human lacks the landmarks.
  static hcTwistLink *construct(int left, int top, hcHuman *h);
  static void enableVertexWeighting(int on);
  static void setUpperArmScaleFactors(float s1, float s2, float s3, float s4);
  static void setLowerArmScaleFactors(float s1, float s2, float s3, float s4);
  static void setShoulderGapWeighting(int proximalGap, int distalGap);
  static void setWristGapWeighting(int proximalGap, int distalGap);
  static void printParams();
  static void setWeightThreshold(float threshold);
  static const Params &getParams();  // host-side

  void update();
  void resetVertexWeights(hcBone **boneArray);
  void setOriginalWeights(hcBone **boneArray);
  hcMeshGeometry *getTwistMesh();
  hcMeshGeometry *getToMesh();
  hcMeshGeometry *getFromMesh();
  // Replaces the list's content by the link's bones.
  void getBones(twistBoneList &boneList);
  // The bone's index among the skin's bones; ignored for another link's bone.
  void setBoneIndex(hcTwistBone *bone, int index);
  int getBoneIndex(hcTwistBone *bone);  // host-side; -1 when unset
  int getNBones();
  hcTwistBone *getBone(int ID);  // null out of range
  hcJoint *getJoint();
  float getLinkLength();  // distance between the two sites, 0 without them
  hcSite *getFromSite();
  hcSite *getToSite();
  int getFromSiteAxisID();  // refSiteTwistAxis
  void initialize(hcBone **boneArray, int nSegBones, hcMeshGeometry **meshArray, int nMeshes);
  void getVertexList(hcMeshGeometry *mesh, vertexList &vlist);
  void getComputedAngleInfo(float &angle, hVector &planeNormal, hVector &vec1, hVector &vec2);
  void setManualComputation(int on);

  // Host-side inspection.
  int getInitializedBones() const { return nSegBones_; }
  int getInitializedMeshes() const { return nMeshes_; }
  int getManualComputation() const { return manual_; }

  hcTwistLink(const hcTwistLink &) = delete;
  hcTwistLink &operator=(const hcTwistLink &) = delete;

 private:
  friend class hcTwistBone;
  enum Arm : int { NotArm, UpperArm, LowerArm };
  struct Frame {
    bool ok = false;
    hMatrix site;      // the site's global frame
    hVector origin;
    hVector axis;      // unit, site towards toSite
    float length = 0;
    float twist = 0;
  };

  Frame frame();
  hMatrix placement(const Frame &f, const hcTwistBone *bone) const;
  void forget(hcTwistBone *bone);
  void rescaleArmBones();

  hcposture_detail::Ref<hcJoint> joint_;
  int twistDOF_;
  hcposture_detail::Ref<hcSite> from_;
  hcposture_detail::Ref<hcSite> to_;
  int refAxis_;
  hcMeshGeometry *twistMesh_;
  hcMeshGeometry *fromMesh_;
  hcMeshGeometry *toMesh_;
  int fromGap_;
  hcposture_detail::Ref<hcSegment> fromSegment_;
  int toGap_;
  hcposture_detail::Ref<hcSegment> toSegment_;
  int outgoing_;
  int angleComputation_;
  hcposture_detail::Ref<hcSite> refSites_[4];
  int refAxes_[4];
  std::vector<hcTwistBone *> bones_;
  std::vector<hcTwistBone *> owned_;
  std::map<hcTwistBone *, int> boneIndex_;
  Arm arm_ = NotArm;
  int manual_ = 0;
  int nSegBones_ = 0;
  int nMeshes_ = 0;
  bool computed_ = false;
  float angle_ = 0;
  hVector normal_, vec1_, vec2_;
};
