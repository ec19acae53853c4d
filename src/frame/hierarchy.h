// The wrapped host classes, in registration order, with their direct bases.
#pragma once

#include <cstddef>
#include <span>

namespace hk {

struct WrappedClass {
  const char *name;
  const char *base;  // direct base among the wrapped classes, or nullptr
};

// How many classes the module wraps.
inline constexpr std::size_t kWrappedClasses = 68;

// All wrapped classes, in the order of the module's class blocks.
std::span<const WrappedClass> WrappedClasses();

// The direct base of a wrapped class (nullptr for a root or an unknown name).
const char *BaseOf(const char *name);

}  // namespace hk
