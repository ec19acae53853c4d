// Helpers shared by the geometry sources of the stand-in host.
#pragma once

#include <vector>

#include "host/core.h"

namespace hcgeometry_detail {

// The area of a planar polygon through pts, in order.
float faceArea(const std::vector<hVector> &pts);

}  // namespace hcgeometry_detail
