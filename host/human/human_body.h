// Stand-in host: the standard adult body a human is built on.  Private to
// the stand-in.
#pragma once

#include "host/figure.h"
#include "host/human.h"

namespace hcbody {

// Builds the standard adult (body_data.h) into an empty figure: segments,
// jointed eyes, finger joints, the landmark sites and joints a human names,
// masses, limits; standing with its soles on y = 0, facing +z, its left side
// towards +x.  False, leaving the figure alone, when it is not empty.
bool buildStandardAdult(hcFigure *figure);

// The name of each landmark site and joint, indexed by hcHuman's
// landmarkSite and landmarkJoint values.
extern const char *const kLandmarkSites[14];
extern const char *const kLandmarkJoints[6];

// True when figure has a segment, site or joint a human body names: the
// figures a human can be made of besides empty ones.
bool looksHuman(hcFigure *figure);

// The most recently made live human of figure, or null.
hcHuman *humanOf(hcFigure *figure);

// Joint names of the standard adult used by the behaviours.
const char *sideName(int side, const char *part);  // "left" + "Shoulder"

}  // namespace hcbody
