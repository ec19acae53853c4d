// Helpers shared by the geometry sources of the stand-in host.
#pragma once

#include <string>
#include <vector>

#include "host/core.h"

namespace hcgeometry_detail {

// The area of a planar polygon through pts, in order.
float faceArea(const std::vector<hVector> &pts);

// Polygon-surface text: "psurf <nodes> <faces> <nodeOffset>", one line per
// node, then per face its node count and nodes (numbered from nodeOffset).
// Faces of area at most discardTolerance are left out; with split, faces
// of more than three nodes are written as fans of triangles.
std::string psurfText(const std::vector<hVector> &points, const std::vector<std::vector<int>> &faces,
                      int nodeOffset, float discardTolerance, bool split);

}  // namespace hcgeometry_detail
