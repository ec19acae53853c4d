// Helpers shared by the scene sources.
#pragma once

#include <cstddef>
#include <cstring>

#include "host/scene.h"

namespace hcscene_detail {

// The index of str among names, stored into out as E; false (out unchanged)
// when str is null or not one of them.
template <class E, std::size_t N>
bool lookUp(const char *str, const char *const (&names)[N], E &out) {
  if (!str) return false;
  for (std::size_t i = 0; i < N; ++i)
    if (std::strcmp(str, names[i]) == 0) {
      out = static_cast<E>(i);
      return true;
    }
  return false;
}

// Unit names as scene files and setDistanceUnits, setAngleUnits and
// setMassUnits spell them ("" for a value that names no unit); unitNamed
// also knows their symbols (m cm mm in ft, rad deg, kg g lb).
const char *unitName(hcScene::distUnits u);
const char *unitName(hcScene::angleUnits u);
const char *unitName(hcScene::massUnits u);
bool unitNamed(const char *str, hcScene::distUnits &out);
bool unitNamed(const char *str, hcScene::angleUnits &out);
bool unitNamed(const char *str, hcScene::massUnits &out);

}  // namespace hcscene_detail
