// Host library: materials, landmarks and display flags.
//
// Materials (hcMaterial) carry a colour with ambient, diffuse, specular and
// transparency terms, a glossiness and an optional texture.  Every material
// lives in one process-wide registry (create, find, list, count, destroy).
// A material is either shared (no owner) or local to one owner object;
// materials remember their owners themselves, and an owner that is
// destroyed leaves its local materials shared.
//   * The colour is the base of the lighting terms: the ambient and diffuse
//     terms are kAmbient and kDiffuse times the colour (0.2 and 0.8 for a new
//     material).  setColor keeps both coefficients and recomputes the two
//     terms; setAmbient and setDiffuse store their vectors as given, and the
//     coefficients follow as mean(term) / mean(colour) (0 for a black
//     colour).
//   * find(name, owner) looks among the materials local to owner first, then
//     among the shared ones; without an owner, among the shared ones only.
//   * A figure uses a material that is local to the figure or to one of its
//     segments, sites or joints (isUsedBy).
//   * Textures are remembered by file name, type and repetitions;
//     getTexturePath answers the directory part of the file name ("." when
//     it has none).  Texture objects, scene-graph counterparts and the user
//     palette file are not modelled: getTextures and getSG answer null and
//     loadUserPalette answers 0.
//
// Landmarks (hcLandmark) are named frames on a body.  hcLandmark is the
// abstract interface; hcLandmarkImpl, its implementation, follows up to
// kMaxInfluences segments with weights:
//   * the T-pose matrix is the landmark's global frame in the reference
//     pose; initialize() takes each influence's offset as the T-pose frame
//     relative to its segment's current global frame;
//   * the global frame is the weighted mean of segment global * offset over
//     the influences whose segment still exists: the translation is the
//     weighted mean, the rotation that of the heaviest influence.  Without
//     such an influence (or with a zero total weight) getGlobal leaves the
//     matrix alone.
//
// Display flags (hcDisplayFlags) hold one integer per selector VISIBLE ..
// FACE_NORMS; the RENDER_STYLE selector holds one of the render styles.
// Selectors outside the range are ignored by set and read as 0.
//
#pragma once

#include <list>
#include <string>
#include <vector>

#include "host/core.h"
#include "host/figure.h"

class sgMaterial;
class sgLandmark;

namespace hcmaterial_detail {
class Watch;
}

// ---------------------------------------------------------------------------
class hcMaterial : public hcObject {
 public:
  // 0 for a null name or one that another material of the same owner (or,
  // for a shared material, another shared material) bears.
  int setName(const char *newName) override;
  virtual void setColor(hVector &color);
  virtual void getColor(hVector &color);
  virtual void getAmbient(hVector &ambient);
  virtual void getDiffuse(hVector &diffuse);
  virtual void getSpecular(hVector &specular);
  virtual void getTransparent(hVector &trans);
  virtual void setAmbient(hVector &ambient);
  virtual void setDiffuse(hVector &diffuse);
  virtual void setSpecular(hVector &specular);
  virtual void setTransparent(hVector &trans);
  // A null filename removes the texture.
  virtual void setTexture(const char *filename, const char *type, int nreps);
  virtual const char *getTextureFile();  // null without a texture
  virtual const char *getTexturePath();  // null without a texture
  virtual int getGlossiness();
  virtual void setGlossiness(int n);
  virtual sgMaterial *getSG();
  virtual hList *getTextures();
  virtual float getKAmbient();
  virtual float getKDiffuse();
  virtual int isOwner(hcObject *o);     // 1 when the material is local to o
  virtual int isUsedBy(hcFigure *f);
  // Makes the material local to o: 1, or 0 for null or a name clash there.
  virtual int makeLocal(hcObject *o);
  // Makes a local material shared: 1, or 0 when it is shared already or a
  // shared material bears its name.
  virtual int makeShared();

  // A new shared material (an unnamed one for a null name); null when a
  // shared material bears the name already.
  static hcMaterial *create(const char *newName = nullptr);
  static hcMaterial *resolve(hList *l);
  static int count();
  static hcMaterial *find(const char *name, hcObject *owner = nullptr);
  // The materials local to object (for a figure, also those of its parts);
  // a list owned by the host, rebuilt on each call; null when there are none.
  static hList *getMaterials(hcObject *object);
  // Every material, in creation order (a host list, rebuilt on each call).
  static hList *list();
  static int loadUserPalette();
  // With a material: destroys it when it is local to owner, or shared and
  // owner is null (1), else 0.  Without one: destroys every material local
  // to owner and answers how many.
  static int destroy(hcObject *owner, hcMaterial *material = nullptr);

  // The owner of a local material; null for a shared one.
  hcObject *getOwner();

 protected:
  explicit hcMaterial(const char *name);
  ~hcMaterial() override;
  const char *className() const override { return "hcMaterial"; }

 private:
  static hcMaterial *findIn(hcObject *owner, const char *name);
  void refreshCoefficients();

  hVector color_{0.8f, 0.8f, 0.8f};
  hVector ambient_{0.16f, 0.16f, 0.16f};
  hVector diffuse_{0.64f, 0.64f, 0.64f};
  hVector specular_;
  hVector transparent_;
  float kAmbient_ = 0.2f;
  float kDiffuse_ = 0.8f;
  int glossiness_ = 0;
  bool hasTexture_ = false;
  std::string textureFile_;
  std::string texturePath_;
  std::string textureType_;
  int textureReps_ = 0;
  hcmaterial_detail::Watch *owner_;
};

// ---------------------------------------------------------------------------
// The interface of a landmark.  The base answers failure values: matrices
// are left alone and there is no scene-graph counterpart.
class hcLandmark : public hcObject {
 public:
  virtual void getTPoseMatrix(hMatrix &mat);
  virtual void getGlobal(hMatrix &mat);
  virtual void setVisibility(int on);
  virtual int getVisibility();
  virtual sgLandmark *getSG();

 protected:
  hcLandmark();
  ~hcLandmark() override;
  const char *className() const override { return "hcLandmark"; }

  int visible_ = 1;
};

// ---------------------------------------------------------------------------
class hcLandmarkImpl : public hcLandmark {
 public:
  static constexpr int kMaxInfluences = 8;

  // segList holds segment pointers up to the first null one (at most
  // kMaxInfluences are read); weights, when given, one weight per segment,
  // else every weight is 1.  Null for a null or empty name; a landmark
  // without influences is allowed.
  static hcLandmarkImpl *create(const char *name, hMatrix mat,
                                hcSegment **segList, float *weights);
  static void destroy(hcLandmarkImpl *ptr);

  void setTPoseMatrix(hMatrix mat);
  void initialize();
  void getTPoseMatrix(hMatrix &mat) override;
  void getGlobal(hMatrix &mat) override;
  // Null / 0 for an index out of range or a segment that no longer exists.
  hcSegment *getInfluenceSegment(int index);
  float getInfluenceWeight(int index);
  // Leaves mat alone for an index out of range.
  void getInfluenceOffset(int index, hMatrix &mat);
  // index below the count replaces that influence, index == count appends
  // one (up to kMaxInfluences); the offset is taken from the segment's
  // current global frame.  Ignored for a null segment or another index.
  void setInfluence(int index, hcSegment *seg, float weight);
  void setVisibility(int on) override;
  int getVisibility() override;
  sgLandmark *getSG() override;

  int getNumInfluences();

 protected:
  hcLandmarkImpl();
  ~hcLandmarkImpl() override;
  const char *className() const override { return "hcLandmarkImpl"; }

 private:
  struct Influence;
  hcSegment *segmentOf(int index);

  hMatrix tpose_;
  std::vector<Influence *> influences_;
};

// ---------------------------------------------------------------------------
class hcDisplayFlags {
 public:
  enum renderStyle : int {
    WIREFRAME = 1, SHADED = 2, TRANSPARENT_SHADED = 3, TRANSPARENT_WIREFRAME = 4
  };
  enum flagType : int {
    VISIBLE = 0, NODE_HIGHLIGHT = 1, FACE_HIGHLIGHT = 2, EDGE_HIGHLIGHT = 3,
    RENDER_STYLE = 4, HIGHLIGHT = 5, FACE_ENUM = 6, NODE_ENUM = 7,
    FACE_NORMS = 8
  };

  // Visible, shaded, nothing highlighted or enumerated.
  hcDisplayFlags();
  virtual ~hcDisplayFlags();
  virtual void set(int type, int value);
  virtual int get(int which);

 private:
  int flags_[FACE_NORMS + 1] = {};
};
