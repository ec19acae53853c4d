// hcLandmark and hcLandmarkImpl: named frames on a body that follow
// weighted segments.
#include "frame/classes.h"

namespace {
using namespace hk;

const Row kLandmarkRows[] = {
    fn<"hcLandmark_getTPoseMatrix", "{ hcLandmark * } mat ", &hcLandmark::getTPoseMatrix>,
    fn<"hcLandmark_getGlobal", "{ hcLandmark * } mat ", &hcLandmark::getGlobal>,
    fn<"hcLandmark_setVisibility", "{ hcLandmark * } on ", &hcLandmark::setVisibility>,
    fn<"hcLandmark_getVisibility", "{ hcLandmark * } ", &hcLandmark::getVisibility>,
    fn<"hcLandmark_getSG", "{ hcLandmark * } ", &hcLandmark::getSG>,
};

// The implementation declares the interface's operations again, so none of
// hcLandmark's own commands is registered under its prefix.  Matrices the
// host stores travel by value: it receives a copy of the script's matrix.
const Row kLandmarkImplRows[] = {
    fn<"hcLandmarkImpl_create", "name mat segList weights ", &hcLandmarkImpl::create>,
    fn<"hcLandmarkImpl_destroy", "ptr ", &hcLandmarkImpl::destroy>,
    fn<"hcLandmarkImpl_setTPoseMatrix", "{ hcLandmarkImpl * } { hMatrix * } ", &hcLandmarkImpl::setTPoseMatrix>,
    fn<"hcLandmarkImpl_initialize", "{ hcLandmarkImpl * } ", &hcLandmarkImpl::initialize>,
    fn<"hcLandmarkImpl_getTPoseMatrix", "{ hcLandmarkImpl * } mat ", &hcLandmarkImpl::getTPoseMatrix>,
    fn<"hcLandmarkImpl_getGlobal", "{ hcLandmarkImpl * } mat ", &hcLandmarkImpl::getGlobal>,
    fn<"hcLandmarkImpl_getInfluenceSegment", "{ hcLandmarkImpl * } index ", &hcLandmarkImpl::getInfluenceSegment>,
    fn<"hcLandmarkImpl_getInfluenceWeight", "{ hcLandmarkImpl * } index ", &hcLandmarkImpl::getInfluenceWeight>,
    fn<"hcLandmarkImpl_getInfluenceOffset", "{ hcLandmarkImpl * } index mat ", &hcLandmarkImpl::getInfluenceOffset>,
    fn<"hcLandmarkImpl_setInfluence", "{ hcLandmarkImpl * } index seg weight ", &hcLandmarkImpl::setInfluence>,
    fn<"hcLandmarkImpl_setVisibility", "{ hcLandmarkImpl * } on ", &hcLandmarkImpl::setVisibility>,
    fn<"hcLandmarkImpl_getVisibility", "{ hcLandmarkImpl * } ", &hcLandmarkImpl::getVisibility>,
    fn<"hcLandmarkImpl_getSG", "{ hcLandmarkImpl * } ", &hcLandmarkImpl::getSG>,
};

}  // namespace

HK_CLASS(hcLandmark, &hcObject_class, kLandmarkRows, kNoConstants);
HK_CLASS(hcLandmarkImpl, &hcLandmark_class, kLandmarkImplRows, kNoConstants);
