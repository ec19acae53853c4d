// hcType: run-time type descriptors.
#include "frame/class_def.h"

namespace {
using namespace hk;

const Row kRows[] = {
    fn<"hcType_getName", "{ hcType * } ", &hcType::getName>,
    fn<"hcType_getAncestor", "{ hcType * } ", &hcType::getAncestor>,
    fn<"hcType_getNumAncestors", "{ hcType * } ", &hcType::getNumAncestors>,
    fn<"hcType_isDerivedFrom", "{ hcType * } t ", &hcType::isDerivedFrom>,
    fn<"hcType_getNumDescendents", "{ hcType * } ", &hcType::getNumDescendents>,
    fn<"hcType_getDescendent", "{ hcType * } i ", &hcType::getDescendent>,
    fn<"hcType_getType", "name ", &hcType::getType>,
    fn<"hcType_getNumTypes", "", &hcType::getNumTypes>,
};

}  // namespace

HK_CLASS(hcType, nullptr, kRows, kNoConstants);
