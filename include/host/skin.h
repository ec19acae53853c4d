// Host library: the smooth skin of a human.
//
// hcHuman::buildSmoothSkin covers the human's figure with one mesh per
// segment, named after it: the segment's box (8 vertices, 6 faces) and, for
// every joint between it and another segment, a seam of four vertices around
// the joint centre (one face), which the two meshes share.  The meshes are
// built in the pose the figure has then, the rest pose, in world
// coordinates; each is rigged (hcMeshInternals) to the skin's bones, whose
// ids are the figure's segments in list order (one segment bone each)
// followed by the twist bones of the arm twist links the human has.  A box
// vertex is bound to its segment's bone; on the upper arms and forearms,
// while twist-link vertex weighting is on when the skin is built, half of
// its weight goes to the link's twist bone nearest to it along the link.  A
// seam vertex is bound half to each of the two segments' bones.  Weights
// sum to 1, rest normals are unit.  The meshes of segments joined by a joint
// are neighbours; getSharedVertices finds their seams.  Each of the human's
// landmark sites becomes a landmark (hcLandmarkImpl) of its segment.
// Body sections group the meshes: head, trunk, leftArm, rightArm, leftLeg,
// rightLeg (segments of other names join the trunk).
//
// The shown coordinates of a skin (its bounding box, psurf output) follow
// the figure: they are brought up to date before they are read unless mesh
// updates are disabled; while edits are notified they are the rest
// coordinates (with the T-pose) or stay as they were.  The skin belongs to
// its human and goes with it; its bones, meshes and landmarks go with the
// skin.
#pragma once

#include <list>
#include <string>
#include <vector>

#include "host/figure.h"

class hcHuman;
class hcBone;
class hcSegmentBone;
class hcTwistLink;
class hcMeshGeometry;
class hcMeshInternals;
class hcLandmark;
class hcLandmarkImpl;

// A named group of a skin's meshes.
class hcBodySection {
 public:
  const char *getName();
  int getNumMeshes();
  hcMeshGeometry *getMesh(int i);  // null out of range

 private:
  friend class hcSmoothSkinImpl;
  std::string name_;
  std::vector<hcMeshGeometry *> meshes_;
};

// The polygon-surface representation of a segment: one of the skin's
// meshes.
class hcPsurf {
 public:
  hcMeshGeometry *getMesh() { return mesh_; }
  hcSegment *getSegment();

 private:
  friend class hcSmoothSkinImpl;
  hcMeshGeometry *mesh_ = nullptr;
  hcSegmentBone *bone_ = nullptr;
};

// ---------------------------------------------------------------------------
class hcSmoothSkin {
 public:
  // The frame skin coordinates are computed in: the world, or the figure's
  // root (getRigRoot answers the identity, or the figure's location).
  enum hcSkinFrame : int { HC_SKIN_GLOBAL = 0, HC_SKIN_RELATIVE_FIGURE = 1 };

  // Distance within which seam vertices count as one.
  static float s_seamVertexEpsilon;

  virtual ~hcSmoothSkin();
  virtual int getNumMeshes() = 0;
  virtual hcMeshGeometry *getMeshGeometry(const char *name) = 0;  // null when none
  virtual hcMeshGeometry *getMeshGeometry(int meshID) = 0;        // null out of range
  virtual int getNumLandmarks() = 0;
  virtual hcLandmark *getLandmark(const char *name) = 0;
  virtual hcLandmark *getLandmark(int n) = 0;
  // The box of the shown coordinates, in the world with global, else in the
  // frame of getRigRoot; 1, or 0 (corners left alone) without vertices or
  // while boxes are not computed.
  virtual int getBoundingBox(hVector &bmin, hVector &bmax, int global = 1) = 0;
  virtual int getNumBodySections() = 0;
  virtual hcBodySection *getBodySection(const char *name) = 0;
  virtual hcBodySection *getBodySection(int sectionID) = 0;
  // Sets the shown coordinates: the rest ones with useTPose, else those of
  // the present pose; forceUpdates does so even while updates are disabled.
  virtual void initializeToMeshState(int forceUpdates = 1, int useTPose = 1) = 0;
  virtual hcSegment *getSegmentFromBoneID(int boneID) = 0;  // null for a twist bone or out of range
  virtual int getBoneID(hcSegment *segment) = 0;            // -1 when none
  virtual void getRigRoot(hMatrix &mat) = 0;

  // Writes one polygon-surface file per body section (useBodySections) or
  // per mesh into the directory path, named after it with ".psurf", in
  // shown world coordinates (first initialised to the present pose with
  // initToMeshState); faces of area at most discardTolerance are left out,
  // and with splitTriangles larger faces are written as triangle fans.
  void outputToPsurfs(const char *path, float discardTolerance = 0.00005f, int splitTriangles = 1,
                      int nodeOffset = 1, int useBodySections = 1, int initToMeshState = 1);

  // Brings the shown coordinates of every skin up to date.
  static void updateAll();
  // Process-wide switches; they read back as set.  Boxes not computed make
  // getBoundingBox answer 0; the skin frame is described above; the others
  // choose among engines and scene graphs this host does not have.
  static void useAllVerticesForSegmentBBoxes(int on);
  static int getUseAllVerticesForSegmentBBoxes();
  static void setSkinFrame(hcSkinFrame etype);
  static hcSkinFrame getSkinFrame();
  static void useExtEngine(int yes);
  static int isExtEngine();
  static void useReverseSG(int yes);
  static int isReverseSG();
  static void computeBBoxes(int on);
  static int bboxesComputed();
  static void disableRigidMeshSkinning(int on);
  static int rigidMeshSkinningDisabled();

  hcSmoothSkin(const hcSmoothSkin &) = delete;
  hcSmoothSkin &operator=(const hcSmoothSkin &) = delete;

 protected:
  hcSmoothSkin();
};

// ---------------------------------------------------------------------------
class hcSmoothSkinImpl : public hcSmoothSkin {
 public:
  // The skin of h's figure as described above; null without a figure with
  // segments.
  static hcSmoothSkinImpl *build(hcHuman *h);
  ~hcSmoothSkinImpl() override;

  int getNumMeshes() override;
  hcMeshGeometry *getMeshGeometry(const char *name) override;
  hcMeshGeometry *getMeshGeometry(int meshID) override;
  int getNumLandmarks() override;
  hcLandmark *getLandmark(const char *name) override;
  hcLandmark *getLandmark(int n) override;
  int getBoundingBox(hVector &bmin, hVector &bmax, int global = 1) override;
  int getNumBodySections() override;
  hcBodySection *getBodySection(const char *name) override;
  hcBodySection *getBodySection(int sectionID) override;
  void initializeToMeshState(int forceUpdates = 1, int useTPose = 1) override;
  hcSegment *getSegmentFromBoneID(int boneID) override;
  int getBoneID(hcSegment *segment) override;
  void getRigRoot(hMatrix &mat) override;

  // Scene graphs are not drawn here: building only records that there is one.
  void buildSceneGraph();
  void unBuildSceneGraph();
  int hasSceneGraph() const { return sceneGraph_; }
  // Edits of the rest coordinates: between the two calls the shown
  // coordinates hold (the rest ones with useTPose); on completion every
  // vertex is rigged again from its rest coordinates.
  void notifyEditsOn(int useTPose);
  void notifyEditsComplete();
  int editing() const { return editing_; }
  void disableMeshUpdates(int on);
  int meshUpdatesDisabled() const { return updatesOff_; }
  hcSegmentBone *getBone(hcSegment *s);     // null when s has none
  hcTwistLink *getTwistLink(hcJoint *j);    // null when j drives none
  // Sets a segment display switch on every segment the skin covers, and
  // the meshes' visibility for ON.
  void setDisplay(hcSegment::segDisplayType type, int value);
  int getNPsurfReps(hcSegment *seg);        // the segment's meshes: 1, or 0
  // The i-th representation of seg; bound (4 floats) receives the centre
  // and radius of a sphere round its shown coordinates.  Null (bound left
  // alone) out of range.
  hcPsurf *getPsurfRep(int i, hcSegment *seg, float *bound, int flag);
  // Writes seg's mesh to outdir/filename, shown coordinates in the world
  // with global, else in the segment's frame.
  void printPsurfRep(hcSegment *seg, const char *outdir, const char *filename, int global);

  // Shown coordinates of vertex node of mesh (host-side).
  hVector shown(int mesh, int node) const;
  // Brings the shown coordinates up to date (unless disabled or editing).
  void update();

 private:
  friend class hcSmoothSkin;
  struct Mesh {
    hcMeshGeometry *geometry = nullptr;
    hcMeshInternals *internals = nullptr;
    hcPsurf psurf;
    std::vector<hVector> shown;
  };

  hcSmoothSkinImpl() = default;
  hcMeshGeometry *geometry(std::size_t mesh) const;  // null once deleted
  hcSegment *segmentOf(int mesh) const;
  void refresh(bool rest);
  void rig(std::size_t mesh);
  std::string psurfOf(const std::vector<std::size_t> &meshes, const hMatrix *frame, float tolerance, bool split,
                      int nodeOffset) const;

  hcHuman *human_ = nullptr;
  std::vector<hcSegmentBone *> segmentBones_;
  std::vector<hcTwistLink *> links_;
  std::vector<hcBone *> bones_;  // segment bones, then twist bones; null-terminated
  std::vector<hMatrix> restFrames_;
  std::vector<Mesh> meshes_;
  std::vector<hcLandmarkImpl *> landmarks_;
  std::vector<hcBodySection> sections_;
  int sceneGraph_ = 0;
  int editing_ = 0;
  int updatesOff_ = 0;
};
