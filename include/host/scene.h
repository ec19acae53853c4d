// Host library: the scene.
//
// A scene (hcScene) holds what has been loaded or built and carries the
// scene-wide settings.  The host's current scene is the global hcscene.
//
// Current scene.  The host makes its current scene (named "scene") when the
// library is loaded, so hcscene is null only while a host operation has set
// it to null.  The scene is never destroyed by the host; when a script
// deletes it, a new empty current scene takes its place.
//
// What a scene holds:
//   * figures, added with addFigure or read by load.  The scene owns them:
//     clear() destroys them, delFigure hands a figure back without
//     destroying it;
//   * segments, joints and sites: those of its figures, followed by any
//     added one by one (addSegment, addJoint, addSite).  Parts added one by
//     one stay their figure's; clear() and the del operations only forget
//     them.  A part that is in the scene only through its figure cannot be
//     removed on its own (del answers 0);
//   * humans, materials and constraints: those its figures hand out
//     (hcFigure::getHuman, getMaterialList, getConstraints).
// The scene watches every object it holds (an observer attached for the
// DESTROY protocol): an object destroyed by other means leaves the scene.
//
// Lists.  The get operations answer a new list at every call, a snapshot
// that later changes of the scene leave alone; an empty list is null.  The
// caller may destroy it (hList::destroy); the host keeps the address of
// every list it handed out, so that one the caller keeps is never lost.
//
// Finding.  The find operations compare the name and the full name of the
// objects the matching get operation lists ("arm", "arm.upper",
// "arm.upper.tip"); the first match wins, null when none.  findHuman answers
// the human of the figure of that name.  Constraints are not looked into:
// findConstraint answers null.
//
// Settings.  Gravity (default 9.81), the units (distance "meters",
// "centimeters", "millimeters", "inches" or "feet"; angle "radians" or
// "degrees"; mass "kilograms", "grams" or "pounds"; an unknown text leaves
// the setting alone), the clean-tree flag (default 0) and the modified flag
// (set by additions and removals, cleared by save and load).
//
// Scene files (load, save) are blank-separated words:
//   hcscene 1
//   gravity <number>
//   units <distance> <angle> <mass>
//   cleantree <0 or 1>
//   figure <figure file>          (once per figure)
//   end
// A figure file is hcFigure's own format; a relative name is taken relative
// to the directory of the scene file.  save writes figure N of the scene to
// "<scene file>.<N>.fig" and names it without its directory.  load reads
// every figure before it changes anything: a scene file that is unreadable,
// malformed or names an unreadable figure file answers 0 and leaves the
// scene as it was; otherwise the figures join the scene (nothing is cleared)
// and the file's settings replace the scene's.
//
// savePositions writes "hcscenepositions 1", one "figure <name> <file>" line
// per figure and "end"; each figure's positions go to "<file>.<N>.pos"
// through hcFigure::savePositions.  saveFigureState writes the positions of
// one figure.  Names in these files are written with blanks, '%' and
// control characters as %XX.
//
// Not modelled, answering failure values (0, null, nothing stored): the
// world segment and the root site, psurf files, motion files, archives,
// exchange-format objects, channel sets and inverse-dynamics force trees.
//
// Null or out-of-range arguments never fail harder than a failure value.
#pragma once

#include <string>
#include <vector>

#include "host/core.h"
#include "host/figure.h"

// Classes of other families that the scene only passes on.
class hcHuman;
class hcMaterial;
class hcConstraint;
class hcASDXMLObject;  // exchange-format object
class InvDynamics;     // inverse-dynamics force tree

// ---------------------------------------------------------------------------
class hcScene : public hcObject {
 public:
  // Flags of saveToArchive; they combine by addition or bitwise or.
  enum archiveFlags : int {
    archInstalled = 0x1,
    archSubdirs = 0x2,
    archMotions = 0x8,
    archMotionQS = 0x10,
    archToFile = 0x80,
    archToDir = 0x100,
    archDefault = 0x182,  // archToDir + archToFile + archSubdirs
    archAll = 0xFF
  };
  // Units.  The enumerations are int-sized cells that may hold any value,
  // so that a value read from a script's cell is never out of range.
  enum distUnits : int { METERS = 0, CENTIMETERS, MILLIMETERS, INCHES, FEET };
  enum angleUnits : int { RADIANS = 0, DEGREES };
  enum massUnits : int { KILOGRAMS = 0, GRAMS, POUNDS };

  explicit hcScene(const char *name = "scene");
  ~hcScene() override;  // destroys the figures it holds

  static hcType *getClassType();

  virtual hList *getFigures();
  virtual hList *getHumans();
  virtual hList *getJoints();
  virtual hList *getSegments();
  virtual hList *getSites();
  virtual hList *getMaterials();
  virtual hList *getConstraints();
  // Every channel set (hcChannelSet) there is, in the order they were made.
  virtual hList *getChannelSets();
  virtual hList *getASDXMLObjects();
  // 1 when the scene file was read, 0 otherwise (nothing changed).
  virtual int load(const char *filename);
  // Destroys the figures and forgets everything else; answers 1.
  virtual int clear();
  // Postures are not modelled: withPostures adds nothing to the files.
  virtual int save(const char *filename, int withPostures = 0);
  virtual int saveToPsurf(const char *filename);
  // No figure is a camera here, so docamera adds nothing; allAttachments is
  // handed to each figure's savePositions.
  virtual int savePositions(const char *filename, int docamera,
                            int allAttachments = 0);
  virtual int saveMotions(const char *filename, const char *mode = "w",
                          int timeline = 1, int title = 1);
  virtual int saveFigureState(const char *filename, hcFigure *figure);
  virtual int saveToArchive(const char *filename, int flag = archDefault);
  virtual hcFigure *findFigure(const char *name);
  virtual hcHuman *findHuman(const char *name);
  virtual hcSegment *findSegment(const char *name);
  virtual hcSite *findSite(const char *name);
  virtual hcJoint *findJoint(const char *name);
  virtual hcConstraint *findConstraint(const char *name);
  virtual hcASDXMLObject *findASDXMLObject(const char *name);
  virtual hcSegment *getWorld();
  virtual int destroyAllForceTreesID();
  virtual void addForceTreeID(InvDynamics *tree);
  virtual int delForceTreeID(InvDynamics *tree);
  virtual hList *getForceTreesID();
  virtual void addJoint(hcJoint *joint);
  virtual void addFigure(hcFigure *figure);
  virtual void addSegment(hcSegment *segment);
  virtual void addSite(hcSite *site);
  virtual void addASDXMLObject(hcASDXMLObject *object);
  // 1 when the object was removed from the scene, 0 otherwise.
  virtual int delFigure(hcFigure *figure);
  virtual int delJoint(hcJoint *joint);
  virtual int delSegment(hcSegment *segment);
  virtual int delSite(hcSite *site);
  virtual int delASDXMLObject(hcASDXMLObject *object);
  virtual hcSite *getRootSite();
  virtual void setCleanTree(int value);
  virtual int isCleanTree();
  virtual void setModified(int value);
  virtual float getGravity();
  virtual void setGravity(float newGravity);
  virtual void setDistanceUnits(const char *str);
  virtual void setAngleUnits(const char *str);
  virtual void setMassUnits(const char *str);
  // 1 while the scene reads a scene file.
  virtual int getInParser();

  // Host-side state without an operation of its own.
  int getModified() const { return modified_; }
  distUnits getDistUnits() const { return dist_; }
  angleUnits getAngleUnits() const { return angle_; }
  massUnits getMassUnits() const { return mass_; }

  hcScene(const hcScene &) = delete;
  hcScene &operator=(const hcScene &) = delete;

 protected:
  const char *className() const override { return "hcScene"; }

 private:
  class Watch;
  enum Kind : int { FIGURE, SEGMENT, JOINT, SITE };
  struct Held {
    Kind kind;
    hcNode *object;
    Watch *watch;
  };

  // Registers object (unless held already as kind) and watches it.
  bool hold(Kind kind, hcNode *object);
  // Forgets the registration of object as kind; false when there is none.
  bool release(Kind kind, hcNode *object);
  // Called by a watch whose object is going away.
  void watchedGone(Watch *watch);
  // Drops registrations whose watch no longer follows its object.
  void prune();
  std::vector<hcFigure *> figures();
  // The parts of kind: those of the figures, then those added one by one.
  std::vector<hcNode *> parts(Kind kind);
  // The list answered by one getter, rewritten with items.
  enum AnswerSlot : int { kFigureList, kHumanList, kJointList, kSegmentList, kSiteList, kMaterialList,
                    kConstraintList, kChannelSetList, kAnswerSlots };
  static hList *answer(int slot, const std::vector<void *> &items);
  hcNode *findPart(Kind kind, const char *name);
  int readScene(const char *filename);
  int writeScene(const char *filename);
  int writePositions(const char *filename, int allAttachments);

  std::vector<Held> held_;
  float gravity_ = 9.81f;
  distUnits dist_ = METERS;
  angleUnits angle_ = RADIANS;
  massUnits mass_ = KILOGRAMS;
  int cleanTree_ = 0;
  int modified_ = 0;
  int inParser_ = 0;
};

// The host's current scene.
extern hcScene *hcscene;
