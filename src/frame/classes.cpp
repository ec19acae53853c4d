#include "frame/classes.h"

namespace hk {

std::span<ClassDef *const> ClassBlocks() {
  static ClassDef *const blocks[] = {
      &hcType_class,
      &hVector_class,
  };
  return blocks;
}

}  // namespace hk
