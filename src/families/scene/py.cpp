// hcPy: evaluation of source text by the host's embedded script interpreter.
// Every command is static; the source text is one word, passed as it stands.
#include "frame/classes.h"
#include "host/pybridge.h"

namespace {
using namespace hk;

const Row kRows[] = {
    fn<"hcPy_evalSimple", "{ char * } ", &hcPy::evalSimple>,
    fn<"hcPy_evalString", "{ char * } ", &hcPy::evalString>,
    fn<"hcPy_asString", "obj ", &hcPy::asString>,
    fn<"hcPy_evalToString", "{ char * } ", &hcPy::evalToString>,
    fn<"hcPy_evalToMatrix", "{ char * } ", &hcPy::evalToMatrix>,
    fn<"hcPy_evalToVector", "{ char * } ", &hcPy::evalToVector>,
    fn<"hcPy_evalToFigure", "{ char * } ", &hcPy::evalToFigure>,
    fn<"hcPy_evalToJoint", "{ char * } ", &hcPy::evalToJoint>,
    fn<"hcPy_evalToSegment", "{ char * } ", &hcPy::evalToSegment>,
    fn<"hcPy_evalToSite", "{ char * } ", &hcPy::evalToSite>,
};

}  // namespace

HK_CLASS(hcPy, nullptr, kRows, kNoConstants);
