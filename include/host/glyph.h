// Host library: display glyphs.
//
// A glyph is a display-only node attached to a part of a figure: a view
// cone at one of a human's eyes, a marker at a site, a trace of a segment, a
// ghost or the axis projections of a figure.  The host keeps every glyph in
// one registry, in creation order (getGlyphList, find).
//
// A glyph follows its part: when the part is destroyed the glyph stays, but
// answers null for the part, is no longer displayed, and refuses to be
// displayed again.  The view cone keeps its human only to answer getHuman;
// it follows the eye site it was made at.
//
// Names.  A glyph is named after its kind and its part: "viewCone_<eye
// site>", "siteGlyph_<site>", "trace_<segment>", "ghost_<figure>",
// "projection_<figure>".
//
// Geometry.  The view cone's apex is its eye site's global position; its
// base lies length units away along the site's z axis, with the radius
// length * tan(angle / 2) (angle in degrees).  getScale answers the
// factors that size the unit cone of getGeometry: (2 * radius, 2 * radius,
// length).  Cones accept angles strictly between 0 and 180 and
// positive lengths.  The ghost's createGhost records the global frame of
// every segment of the figure as it stands.  The descriptions written by
// tessprint show these.
//
// Projections.  Each axis (axisX, axisY, axisZ: single bits that combine)
// has a figure mode (off, on, mixed); a segment of the figure can be
// projected on a set of axes of its own.
//
// Operations the stand-in does not model answer null: the cone's geometry
// object.
#pragma once

#include <cstddef>
#include <list>
#include <map>
#include <string>
#include <vector>

#include "host/core.h"
#include "host/figure.h"
#include "host/human.h"

class hcGeometry;

namespace hcmaterial_detail {
class Watch;
}

class hcGlyph;

// ---------------------------------------------------------------------------
class hcGlyph : public hcNode {
 public:
  struct glyphList : std::list<hcGlyph *> {};

  static hcType *getClassType();
  // The glyph whose name (or full name) is name; null when none.
  static hcGlyph *find(const char *name);
  // Every glyph in creation order; null when there is none.
  static glyphList *getGlyphList();

  // 1 while displayed.  setDisplay answers 1, or 0 (and stays hidden) when
  // asked to display a glyph whose part has gone.
  virtual int getDisplay();
  virtual int setDisplay(int on);

  void tessprint(char *buffer, int level, std::size_t size) override;

 protected:
  hcGlyph(const char *kind, hcSubject *part, const char *partName);
  ~hcGlyph() override;
  const char *className() const override { return "hcGlyph"; }
  // The part the glyph is attached to; null once it has been destroyed.
  hcSubject *part();
  // Class-specific text appended to the description.
  virtual std::string details();

 private:
  hcmaterial_detail::Watch *part_;
  int display_ = 1;
};

// ---------------------------------------------------------------------------
class hcViewConeGlyph : public hcGlyph {
 public:
  enum whichEye : int { leftEye = 0, rightEye = 1 };

  static hcType *getClassType();
  // Null for a null human, another eye value, a human without that eye
  // site, or parameters setParams would refuse.
  static hcViewConeGlyph *create(hcHuman *h, int eye, float length = 200.0f,
                                 float angle = 40.0f);
  static void destroy(hcViewConeGlyph *glyph);

  // 1, or 0 (nothing changed) for an angle outside (0, 180) or a length
  // that is not positive.
  int setParams(float angle, float length);
  float getAngle();
  float getLength();
  hcHuman *getHuman();
  hcSite *getEyeSite();
  void getScale(hVector &scale);
  // The cone, closed by its base, in unit space: apex at the origin, base
  // of diameter 1 at z = 1 (box [-0.5, 0.5] in x and y); getScale gives its
  // size.  Owned by the glyph.
  hcGeometry *getGeometry();
  int getDisplay() override;
  int setDisplay(int on) override;

  // The apex (the eye site's global position); 0 when the site has gone.
  int getApex(hVector &apex);

 protected:
  hcViewConeGlyph(hcHuman *h, int eye, hcSite *site, float length, float angle);
  ~hcViewConeGlyph() override;
  const char *className() const override { return "hcViewConeGlyph"; }
  std::string details() override;

 private:
  hcHuman *human_;
  int eye_;
  float length_;
  float angle_;
  hcGeometry *cone_ = nullptr;
};

// ---------------------------------------------------------------------------
class hcSiteGlyph : public hcGlyph {
 public:
  static hcType *getClassType();
  static hcSiteGlyph *create(hcSite *site);  // null for null
  static void destroy(hcSiteGlyph *glyph);

  hcSite *getSite();
  int getDisplay() override;
  int setDisplay(int on) override;

 protected:
  explicit hcSiteGlyph(hcSite *site);
  ~hcSiteGlyph() override;
  const char *className() const override { return "hcSiteGlyph"; }
};

// ---------------------------------------------------------------------------
class hcSegmentTraceGlyph : public hcGlyph {
 public:
  static hcType *getClassType();
  static hcSegmentTraceGlyph *create(hcSegment *segment);  // null for null
  static void destroy(hcSegmentTraceGlyph *glyph);

  hcSegment *getSegment();
  int getDisplay() override;
  int setDisplay(int on) override;
  void setActive(int active);  // any non-zero value activates
  int isActive();

 protected:
  explicit hcSegmentTraceGlyph(hcSegment *segment);
  ~hcSegmentTraceGlyph() override;
  const char *className() const override { return "hcSegmentTraceGlyph"; }
  std::string details() override;

 private:
  int active_ = 0;
};

// ---------------------------------------------------------------------------
class hcGhostGlyph : public hcGlyph {
 public:
  static hcType *getClassType();
  static hcGhostGlyph *create(hcFigure *figure);  // null for null
  static void destroy(hcGhostGlyph *glyph);

  hcFigure *getFigure();
  int getDisplay() override;
  int setDisplay(int on) override;
  // Records the figure's segment frames: 1, or 0 when the figure has gone.
  int createGhost();

  // The frames recorded by the last createGhost (segment order).
  const std::vector<hMatrix> &getGhostFrames() const { return frames_; }

 protected:
  explicit hcGhostGlyph(hcFigure *figure);
  ~hcGhostGlyph() override;
  const char *className() const override { return "hcGhostGlyph"; }
  std::string details() override;

 private:
  std::vector<hMatrix> frames_;
};

// ---------------------------------------------------------------------------
class hcProjectionGlyph : public hcGlyph {
 public:
  enum figureMode : int { off = 0, on = 1, mixed = 2 };
  enum axisType : int { none = 0, axisX = 1, axisY = 2, axisZ = 4 };

  static hcType *getClassType();
  static hcProjectionGlyph *create(hcFigure *figure);  // null for null
  static void destroy(hcProjectionGlyph *glyph);

  hcFigure *getFigure();
  int getDisplay() override;
  int setDisplay(int on) override;
  // The mode of the axes named: their common mode, mixed when they differ,
  // off for none or bits outside the three axes.
  int getMode(int axis);
  // Sets the mode of every axis named: 1, or 0 (nothing changed) for a mode
  // that is not a figureMode or an axis value that names no axis or has
  // other bits.
  int setMode(int mode, int axis);
  // The axes a segment of the figure is projected on (none removes it): 1,
  // or 0 for a null segment, a segment of another figure or a bad axis value.
  int setSegmentMode(hcSegment *segment, int axis);
  int getSegmentMode(hcSegment *segment);  // none when not set

 protected:
  explicit hcProjectionGlyph(hcFigure *figure);
  ~hcProjectionGlyph() override;
  const char *className() const override { return "hcProjectionGlyph"; }
  std::string details() override;

 private:
  // Drops the segment entries whose segment has left the figure.
  void pruneSegments();

  int modes_[3] = {off, off, off};
  std::map<hcSegment *, int> segmentAxes_;
};
