// hcDisplayFlags: how a geometry is drawn and highlighted.
#include "frame/classes.h"

namespace {
using namespace hk;

// Selectors and values are forwarded unchecked.
const Row kRows[] = {
    fn<"hcDisplayFlags_set", "{ hcDisplayFlags * } type value ", &hcDisplayFlags::set>,
    fn<"hcDisplayFlags_get", "{ hcDisplayFlags * } which ", &hcDisplayFlags::get>,
};

// Render styles first, then the flag selectors.
const ConstantDef kConstants[] = {
    {"WIREFRAME", hcDisplayFlags::WIREFRAME},
    {"SHADED", hcDisplayFlags::SHADED},
    {"TRANSPARENT_SHADED", hcDisplayFlags::TRANSPARENT_SHADED},
    {"TRANSPARENT_WIREFRAME", hcDisplayFlags::TRANSPARENT_WIREFRAME},
    {"VISIBLE", hcDisplayFlags::VISIBLE},
    {"NODE_HIGHLIGHT", hcDisplayFlags::NODE_HIGHLIGHT},
    {"FACE_HIGHLIGHT", hcDisplayFlags::FACE_HIGHLIGHT},
    {"EDGE_HIGHLIGHT", hcDisplayFlags::EDGE_HIGHLIGHT},
    {"RENDER_STYLE", hcDisplayFlags::RENDER_STYLE},
    {"HIGHLIGHT", hcDisplayFlags::HIGHLIGHT},
    {"FACE_ENUM", hcDisplayFlags::FACE_ENUM},
    {"NODE_ENUM", hcDisplayFlags::NODE_ENUM},
    {"FACE_NORMS", hcDisplayFlags::FACE_NORMS},
};

}  // namespace

HK_CLASS(hcDisplayFlags, nullptr, kRows, kConstants);
