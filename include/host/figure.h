// Host library: articulated figures.
//
// A figure (hcFigure) owns segments (rigid bodies), sites (named frames on
// segments) and joints (connections between two sites that carry degrees of
// freedom).  The figure keeps one registry per kind of part; each segment
// keeps the sites on it and the joints that touch it, each site the joints
// that meet at it.
//
// Frames.  The figure has a location matrix and a root site.  The root
// site's segment is placed so that the root site coincides with the
// location; the tree of joints is then walked outwards.  A joint reached
// from its site A (on the already placed side) places the segment of its
// other site B so that
//     global(B) = global(A) * D * T1 * T2 * ... * Tn * I
// where D and I are the joint's displacement matrices (identity unless set)
// and Tk is the k-th DOF: a rotation about its axis by its angle (ROT) or a
// translation along its axis by its value (TRANS).  A joint walked from its
// second site to its first uses the inverse transform and reports
// isReverse() = 1.  A segment's global frame is global(B) * inverse of B's
// local location; a site's global frame is its segment's global frame times
// its local location.  Segments that no joint path links to the root site
// are placed at location * (their own free placement, identity by default).
// Without an explicit root the first registered site serves as root.
// Frames are recomputed lazily: every change marks them stale and every
// reader brings them up to date first.
//
// Geometry and mass.  Each segment has a closed hexahedron of eight nodes
// (initially a 0.1 cube centred at the segment origin), six quadrilateral
// faces and twelve edges.  Volume, centre of mass and inertia are those of
// the solid hexahedron; the mass is density * volume (density 1000 by
// default) unless the mass has been set explicitly, in which case the
// density follows as mass / volume.
//
// Units.  Joint values are radians (ROT) and metres (TRANS).  The get and
// set operations that take an `internal` flag use these units when the flag
// is non-zero, and degrees for ROT DOFs when it is 0.
//
// Statuses.  Integer results are 1 for success and 0 for failure unless a
// comment says otherwise.  Null object or array arguments make every
// operation answer its failure value and leave outputs untouched.
// Operations of the host that this stand-in does not model (scene-graph
// counterparts, physical records, force trees, materials, postures, human
// models) answer failure values.
//
#pragma once

#include <list>
#include <string>
#include <vector>

#include "host/core.h"

// Opaque host types that the figure operations only pass on.
class sgFigure;
class sgSegment;
class sgJoint;
class sgSite;
class hcFigPhys;
class hcSegPhys;
class hcJointPhys;
class hcSitePhys;
class hcDisplayFlags;
class hcGeometry;
class hcMaterial;
class hcHuman;
class hcPosture;

class hcFigure;
class hcSegment;
class hcJoint;
class hcSite;

// ---------------------------------------------------------------------------
class hcFigure : public hcNode {
 public:
  enum { ON = 0, OFF = 1, MIXED = 2 };
  struct postureList : std::list<hcPosture *> {};
  struct materialList : std::list<hcMaterial *> {};

  // Reads a file written by saveToFile; newName (when not null or empty)
  // replaces the stored name.  Null for an unreadable or malformed file.
  static hcFigure *readFromFile(const char *filename, const char *newName);
  // 1 when written; 0, and no file written, for a figure readFromFile
  // would refuse (non-finite values, a joint whose two sites share a
  // segment, names that are empty or repeated, more than 64 DOFs).
  virtual int saveToFile(const char *filename, int withMaterials = 1,
                         int withDisplacements = 0);
  // Writes the location and every joint's angles (radians).
  virtual int savePositions(const char *filename, int attachment = 0);
  // Writes the global position of every site.
  virtual int saveGlobalPositions(const char *filename);
  // Adopts a joint that has no sites yet (moving it from its figure).
  virtual void addJoint(hcJoint *joint);
  // Adopts a segment of another figure with its sites; joints that would
  // link the two figures are destroyed.
  virtual void addSegment(hcSegment *segment);
  // Registers a site that lies on one of this figure's segments.
  virtual void addSite(hcSite *site);
  // Destroy a part of this figure (and what depends on it): 1, else 0.
  virtual int delJoint(hcJoint *joint);
  virtual int delSegment(hcSegment *segment);
  virtual int delSite(hcSite *site);
  virtual void getLocation(hMatrix &M);
  // Sets every joint value to 0, clamped to its limits.
  virtual void reset();
  // Scales every segment (nodes and sites) along its own x, y and z by the
  // 3 floats of newScale; with global, they are the segments' scale from
  // now on rather than factors.  Factors that are not positive and finite
  // change nothing.
  virtual void applyScale(float *newScale, int global, int fast = 0);
  virtual hList *getAttached();
  virtual hcSite *getAttachedTo();
  // Mass-weighted global centre of the segments (zero without mass).
  virtual void getCOM(hVector &center);
  virtual void calcCOM(hVector &vecCOM, int withAttachments = 1);
  // The constraints put on the solver's list (hcConstraint::addToList)
  // whose end effector is on this figure, in the order they were put there.
  virtual hList *getConstraints();
  // The file last read or written; null when none.
  virtual const char *getFileName();
  virtual void clearFileName();
  // Find by name or full name ("figure.segment", "segment.site", ...).
  virtual hcJoint *findJoint(const char *name);
  virtual hcSegment *findSegment(const char *name);
  virtual hcSite *findSite(const char *name);
  virtual hList *getJoints();
  virtual hcHuman *getHuman();
  virtual float getHumanVersion();
  virtual int getNDOFs();
  virtual int getNEdges();
  virtual int getNFaces();
  virtual int getNJoints();
  virtual int getNNodes();
  virtual int getNSegments();
  virtual int getNSites();
  virtual hcSite *getRoot();
  // The first joint at the root site.
  virtual hcJoint *getRootJoint();
  virtual hList *getSegments();
  virtual hList *getSites();
  virtual void setCOM();
  virtual int setLocation(hMatrix &M);
  virtual void setModified(int value);
  virtual int getModified();
  virtual int getNoWrite();
  int setName(const char *newName) override;
  // The site must lie on this figure.
  virtual int setRoot(hcSite *site);
  virtual int setRootJoint(hcSite *site);
  virtual sgFigure *getSG();
  int searchProperty(const char *name, hcValue *value) override;
  // The figure's postures (hcPosture), in the order they were made; the
  // list getter follows the rule of every list getter.
  virtual hList *getPostures();
  virtual postureList *getPostureList();
  // The materials local to the figure or its parts (hcMaterial::makeLocal),
  // refreshed on each call.
  virtual materialList *getMaterialList();
  virtual int updateMaterials(int numMaterials);
  // Applies one of the figure's postures (hcPosture::apply); 0 for any
  // other posture.
  virtual int pose(hcPosture *posture);
  // Applies a file written by savePositions; nothing changes unless the
  // whole file is valid for this figure.
  virtual int poseFromFile(const char *posturename, const char *filename);
  virtual void setPosition(hVector &vec);
  virtual void getPosition(hVector &vec);
  // Fixed-axis x-y-z angles in radians.
  virtual void setOrientation(hVector &vec);
  virtual void getOrientation(hVector &vec);
  virtual int getScale(hVector &vec);
  virtual int setScale(hVector &vec);
  virtual void inertia(int docom);
  virtual hcFigPhys *getPhysical();
  virtual int isSegmentInForceTreeFID(hcSegment *theSeg);
  virtual int isSiteInForceTreeFID(hcSite *theSite);
  virtual int attachForceToSiteFID(hcSite *forceSite, hVector &force);
  virtual int attachWeightToSiteFID(hcSite *weightSite, float weight);
  virtual int getSegmentForceFID(hcSegment *seg, hVector &segForceLocal,
                                 hVector &segForceInertial);
  virtual int getExternalSegmentForceFID(hcSegment *seg,
                                         hVector &segExternForceLocal,
                                         hVector &segExternForceInertial);
  virtual int clearSegmentForcesFID(hcSegment *seg);
  virtual int getJointTorquesFID(hcJoint *joint, float *axisTorque);
  virtual int defineRootForForceTreeFID(hcSite *startSite);
  virtual int addBranchToForceTreeFID(hcSegment *endSegment);
  virtual void setRecalcInertiaParamFID();
  virtual void setNotRecalcInertiaParamFID();
  virtual int createForceTreeFID();
  virtual int computeForceTreeInDynamicModeFID();
  virtual int computeForceTreeInStaticModeFID();
  virtual int deleteForceTreeFID();
  virtual int isCamera();
  virtual int getDontPickMe();
  virtual void setSmoothSkin(int flag);
  virtual int getSmoothSkin();
  // ON shows every segment, OFF hides every segment; getVisibility answers
  // ON, OFF or MIXED from the segments' ON display flags.
  virtual void setVisibility(int value);
  virtual int getVisibility();
  // Mean of every node, global or relative to the figure location.
  virtual int getCentroid(hVector &c, int global);
  virtual int getBoundingBox(hVector &bmin, hVector &bmax, int global = 1);
  virtual float getVRPD();
  virtual void setGeometry(hcGeometry *geo);
  virtual hcGeometry *getGeometry();

  static hcFigure *editSplit(hcJoint *joint);
  // Frees the figure with its segments, sites and joints; 1, or 0 for null.
  static int destroy(hcFigure *figure);
  static hcFigure *resolve(hList *l);
  static hcFigure *createInMemory(const char *name);

 protected:
  hcFigure();
  ~hcFigure() override;
  const char *className() const override { return "hcFigure"; }

 private:
  friend class hcSegment;
  friend class hcJoint;
  friend class hcSite;

  void destroyJoint(hcJoint *j);
  void destroySite(hcSite *s);
  void destroySegment(hcSegment *seg);
  hcJoint *findJointImpl(const char *name);
  hcSegment *findSegmentImpl(const char *name);
  void comImpl(hVector &out);
  template <class F>
  void forEachNode(int global, F fn);
  // Marks the frames stale and the figure modified.
  void touch();
  // Recomputes every segment frame when stale.
  void updateFrames();
  hcSite *effectiveRoot();
  // Moves the connected part holding seg rigidly by delta (world frame).
  void moveRigidly(hcSegment *seg, hMatrix &delta);
  void refreshFullNames();
  int saveImpl(const char *filename, int withDisplacements);
  // Builds a figure from the words of a figure file; null when malformed.
  static hcFigure *parseFigure(const std::vector<std::string> &words);
  // True when parseFigure takes back the text of a figure file.
  static bool readsBack(const std::string &text);
  int writePositions(const char *filename);
  int readPositions(const char *filename);

  hList *segments_ = nullptr;
  hList *joints_ = nullptr;
  hList *sites_ = nullptr;
  HandedList handedSegments_;
  HandedList handedJoints_;
  HandedList handedSites_;
  HandedList handedConstraints_;
  HandedList handedPostures_;
  hcSite *root_ = nullptr;
  hMatrix location_;
  std::string fileName_;
  bool hasFileName_ = false;
  int modified_ = 0;
  int smoothSkin_ = 0;
  int visibility_ = ON;
  hcGeometry *geometry_ = nullptr;
  postureList postures_;
  materialList materials_;
  bool framesValid_ = false;
};

// ---------------------------------------------------------------------------
class hcSegment : public hcNode {
 public:
  enum segDisplayType : int {
    ON = 0, NODES, FACES, EDGES, MODE, HIGHLIGHT, FACE_ENUM, NODE_ENUM,
    FACE_NORMS, PROJS, CURVES, PATCHES, NODL
  };
  enum { wireframe = 1, shaded, transparent_shaded, transparent_wireframe };
  enum segSplitType : int { DISCONNECTED_REGIONS = 0, PREDEFINED_CSURFS = 1 };

  static constexpr int kNodes = 8;
  static constexpr int kFaces = 6;
  static constexpr int kEdges = 12;

  virtual hcFigure *getFigure();
  virtual int getModified();
  virtual void setModified(int value);
  virtual void getGlobal(hMatrix &G);
  virtual int getNJoints();
  virtual hList *getJoints();
  virtual int getNSites();
  virtual hList *getSites();
  // Moves the connected part of the figure that holds this segment rigidly
  // so that the segment's frame becomes G.
  virtual void setGlobal(hMatrix &G);
  // trans = the global frame at the segment-local point p.
  virtual void setCoordGlobal(hVector p, hMatrix &trans);
  virtual int loadMaterials();
  int setName(const char *newName) override;
  // Scales the nodes and the site positions per axis (positive factors).
  virtual void applyScale(hVector &scale, int fast = 0);
  // Scales the nodes only.
  virtual void scaleGeometry(hVector &scale);
  virtual void scaleFast(hVector &scale);
  // Product of the scale factors applied so far.
  virtual void getAbsoluteScale(hVector &vec);
  // type is a segDisplayType; subtree also sets the segments below.
  virtual void setDisplay(int type, int value, int subtree = 0);
  virtual int getDisplay(int which);
  virtual hcDisplayFlags *getDisplayFlags();
  virtual hcSegPhys *getPhysical();
  virtual hcSegPhys *newSegPhys();
  virtual int updateMassDensityVolume();
  // With override, an explicitly set mass gives way to the density again.
  virtual int updatePhysical(int override = 0);
  virtual float getMass();
  virtual float getDensity();
  virtual float getVolume();
  // Segment-local centre of mass.
  virtual void getCenterOfMass(hVector &vec);
  // 9 floats, row-major: inertia tensor about the centre of mass, segment
  // axes.
  virtual void getInertiaMatrix(float *mat);
  virtual int getHascom();
  virtual int getMassFlag();
  virtual int getDensityFlag();
  virtual void setMass(float newMass);
  virtual void setDensity(float newDensity);
  // On the geometry's faces: face k takes material k, the faces after the
  // last material that one; 0 (nothing changed) without a geometry or
  // faces, or when a material is not live.  The others act on every face,
  // one face, or the faces that carry replMat.
  virtual int setMaterials(hcMaterial **newMaterials, int newNMaterials);
  virtual int setMaterial(hcMaterial *newMaterial);
  virtual int setFaceMaterial(int face, hcMaterial *material);
  virtual int replaceMaterial(hcMaterial *replMat, hcMaterial *withMat);
  // The site through which the segment is placed (the root site, or the
  // site of the joint leading to it); null for an unlinked segment.
  virtual hcSite *getRootSite();
  // Moves a site onto this segment (keeping its local location).
  virtual void addSite(hcSite *site);
  // Destroys a site of this segment with its joints.
  virtual int delSite(hcSite *site);
  virtual hcGeometry *getGeometry();
  virtual sgSegment *getSG();
  int searchProperty(const char *name, hcValue *value) override;
  virtual void genTexCoordsFace(hcSite *camera, int face,
                                hcSegment *texSegment, int tex_face);
  // Transforms the nodes (segment-local) by M.
  virtual void transformGeometry(hMatrix M);
  // Index of the node nearest to a global point.
  virtual int getClosestNode(hVector &vector);
  virtual int getNodeGlobal(int node, hMatrix &matrix);
  // Writes the geometry (without one, the segment's box) as an OBJ file,
  // in world coordinates with global, and its materials in an MTL file
  // beside it named after it (fileName with its extension replaced).
  virtual int saveGeometryToFile(const char *fileName, int global = 1);
  // The segment takes the geometry (and owns it from then on); null takes
  // the present one off (answering 0).  A mesh's rigid segment is this one.
  virtual int setGeometry(hcGeometry *geom);
  // dist[0] = the least distance between the two node sets (global);
  // dir[0..2] = unit direction from this segment's nearest node to the
  // other's, zero when the distance is below eps.
  virtual int getMinDistance(hcSegment *toSegment, float *dist, float *dir,
                             float eps = 2e-7f);
  virtual void setNodeLocation(int node, hVector &vec);
  // Box of the nodes: in ref's frame when ref is given, else global or
  // segment-local; extend grows the given box instead of replacing it.
  virtual int getBoundingBox(hVector &bmin, hVector &bmax, int global = 1,
                             int extend = 0, hMatrix *ref = nullptr);
  virtual int getCentroid(hVector &c, int global);
  virtual void setPsurfScaleSaved();

  // Destroys the segment with its sites and joints.
  static void editRemove(hcSegment *segment);
  static hcSegment *find(hList *objs, const char *fname);
  static int editMerge(hcSegment *segment1, hcSegment *segment2);
  static int editSplit(hcSegment *segment, const char *tmpdir, int sType = 0);
  static hcSegment *resolve(hList *l);
  static hcSegment *createInMemory(hcFigure *figure, const char *name);

 protected:
  hcSegment();
  ~hcSegment() override;
  const char *className() const override { return "hcSegment"; }

 private:
  friend class hcFigure;
  friend class hcJoint;
  friend class hcSite;

  void resetBox(float size);
  // The segment on the parent side of the joint that places this one.
  hcSegment *parentSegment();
  hVector nodeGlobal(int node);
  float volumeImpl();
  void massProperties(float &volume, hVector &com, float cov[3][3]);
  float massImpl();
  float densityImpl();
  void scaleImpl(hVector &scale, bool withSites);
  void touchPhysics();

  hcFigure *figure_ = nullptr;
  hList *sites_ = nullptr;
  hList *joints_ = nullptr;
  HandedList handedSites_;
  HandedList handedJoints_;
  hVector nodes_[kNodes];
  hMatrix global_;
  hMatrix free_;
  hcJoint *parentJoint_ = nullptr;
  hcSite *hangSite_ = nullptr;
  bool placed_ = false;
  float density_ = 1000.0f;
  float mass_ = 0.0f;
  int massFlag_ = 0;
  int densityFlag_ = 0;
  hVector absScale_{1, 1, 1};
  int modified_ = 0;
  int display_[NODL + 1] = {};
  hcGeometry *geometry_ = nullptr;
};

// ---------------------------------------------------------------------------
class hcJoint : public hcNode {
 public:
  enum { NONE = 0, ROT = 1, TRANS = 2 };

  // Joins two sites of one figure (null when they are on different
  // figures, on one segment, or the same site).
  static hcJoint *createBetweenSites(hcSite *site1, hcSite *site2);
  static int destroy(hcJoint *joint);

  virtual int assignConnectivity(hcSite *site1, hcSite *site2);
  // The array arguments hold getNDOFs() floats.  Setters answer 0 (void
  // ones simply return) and change nothing when a value is not finite.
  virtual int getAngles(float *angles, int internal);
  virtual int getDOFAxis(int dofNum, hVector &axis);
  virtual int getDOFType(int dofNum);  // NONE when out of range
  virtual int clearDOFs();
  // type ROT or TRANS; the axis (non-zero) is normalised.
  virtual int appendDOF(int type, hVector &axis);
  virtual hcFigure *getFigure();
  virtual hcSite *getFromSite();  // the first site
  virtual int getFrozen();
  virtual int getLowerLimits(float *lower, int internal);
  virtual int getNDOFs();
  virtual int getUpperLimits(float *upper, int internal);
  // 1 when the frames are walked from the second site to the first.
  virtual int isReverse();
  virtual hcSite *getOtherSite(hcSite *site);
  // The site on the side nearer the figure's root.
  virtual hcSite *getRootSite();
  virtual int setAngles(float *angles, int internal);
  // Answers the number of values that had to be moved into their limits.
  virtual int clampToLimits();
  virtual int setFrozen(int temp);
  // Radians / metres.
  virtual void setLowerLimits(float *lower);
  int setName(const char *newName) override;
  virtual void setUpperLimits(float *upper);
  virtual hcSite *getToSite();  // the second site
  virtual hcSite *site(int oneOrTwo);
  virtual void getDisplacement(hMatrix &D, hMatrix &I);
  virtual int setDisplacement(hMatrix &D, hMatrix &I);
  virtual sgJoint *getSG();
  int searchProperty(const char *name, hcValue *value) override;
  virtual int setTolerance(float *value);
  virtual int getTolerance(float *value);
  virtual int setRest(float *value);
  virtual int getRest(float *value);
  virtual int setStiffness(float *value);
  virtual int getStiffness(float *value);
  virtual int setDamp(float *value);
  virtual int getDamp(float *value);
  virtual hcJointPhys *getPhysical();

  // Destroys the joint and answers the figure it belonged to.
  static hcFigure *editRemove(hcJoint *joint);
  // The joint of fig named by the first blank-delimited word of *bufp;
  // *bufp is only read, never moved.
  static hcJoint *find(hcFigure *fig, char **bufp);
  static hcJoint *resolve(hList *l);
  static hcJoint *createInMemory(hcFigure *figure, const char *name);

 protected:
  hcJoint();
  ~hcJoint() override;
  const char *className() const override { return "hcJoint"; }

 private:
  friend class hcFigure;
  friend class hcSegment;
  friend class hcSite;

  struct Dof {
    int type = NONE;
    hVector axis;
    float value = 0;
    float lower = 0;
    float upper = 0;
    float tolerance = 0;
    float rest = 0;
    float stiffness = 0;
    float damp = 0;
  };

  // Two sites a joint may link: distinct, on one figure, on different
  // segments.
  static bool linkable(hcSite *a, hcSite *b);
  hMatrix transform();  // D * T1 * ... * Tn * I
  void connect(hcSite *site1, hcSite *site2);
  void disconnect();
  void touch();
  int copyOut(float Dof::*field, float *out, int internal);
  int copyIn(float Dof::*field, const float *in, int internal);

  hcFigure *figure_ = nullptr;
  hcSite *site1_ = nullptr;
  hcSite *site2_ = nullptr;
  std::vector<Dof> dofs_;
  int frozen_ = 0;
  hMatrix displacement_;
  hMatrix displacementInv_;
  bool reversed_ = false;
};

// ---------------------------------------------------------------------------
class hcSite : public hcNode {
 public:
  virtual hcFigure *getFigure();
  virtual void getGlobal(hMatrix &M);
  // The root site and the site that places its segment move their whole
  // connected part; any other site changes its local location.
  virtual void setGlobal(hMatrix M);
  virtual void getLocation(hMatrix &M);
  virtual void setLocation(hMatrix &M);
  int setName(const char *name) override;
  virtual void setDisplay(int on, int transient = 1);
  virtual int getDisplay();
  virtual sgSite *getSG();
  virtual int getNumJoints();
  virtual hcSegment *getSegment();
  // The joint through which this site places its segment, if any.
  virtual hcJoint *getRootJoint();
  virtual hcSitePhys *getPhysical();
  virtual void setPosition(hVector p);
  virtual void getPosition(hVector &p);
  virtual void setOrientation(hVector angles);
  virtual void getOrientation(hVector &angles);
  virtual void setGlobalPosition(hVector p);
  virtual void getGlobalPosition(hVector &p);
  virtual void setGlobalOrientation(hVector angles);
  virtual void getGlobalOrientation(hVector &angles);
  int searchProperty(const char *name, hcValue *value) override;
  virtual hList *getJoints();

  static hcSite *resolve(hList *l);
  // A new site with identity location on segment (null for a null
  // argument, an empty name, or a name already used on the segment).
  static hcSite *create(const char *name, hcSegment *segment);
  // As hcJoint::find, among the sites of segment.
  static hcSite *find(hcSegment *segment, char **bufp);

 protected:
  hcSite();
  ~hcSite() override;
  const char *className() const override { return "hcSite"; }

 private:
  friend class hcFigure;
  friend class hcSegment;
  friend class hcJoint;

  hMatrix globalImpl();
  void setGlobalImpl(hMatrix &M);
  void touch();

  hcSegment *segment_ = nullptr;
  hList *joints_ = nullptr;
  HandedList handedJoints_;
  hMatrix location_;
  int display_ = 1;
};

