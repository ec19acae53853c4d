// hVector: three-component float vectors.
#include "convert/list_forms.h"
#include "frame/class_def.h"

namespace {
using namespace hk;

float *VectorStorage(hVector &v) { return v.v; }
int VectorEqual(hVector &a, hVector &b) { return a == b; }

const Row kRows[] = {
    getter<"hVector_v_get", "{ hVector * } ", &hVector::v>,
    ctor<"new_hVector", "", hVector>,
    dtor<"delete_hVector", "{ hVector * } ", hVector>,
    fn<"hVector_copy", "{ hVector * } V ", &hVector::copy>,
    fn<"hVector_get", "{ hVector * } index ", &hVector::get>,
    fn<"hVector_set", "{ hVector * } index val ", &hVector::set>,
    fn<"hVector_sub", "{ hVector * } a ", &hVector::sub>,
    fn<"hVector_add", "{ hVector * } a ", &hVector::add>,
    fn<"hVector_mag", "{ hVector * } ", &hVector::mag>,
    fn<"hVector_dotProd", "{ hVector * } a ", &hVector::dotProd>,
    fn<"hVector_cross", "{ hVector * } vect ", &hVector::cross>,
    fn<"hVector_normalize", "{ hVector * } ", &hVector::normalize>,
    fn<"hVector_xform", "{ hVector * } mat ", &hVector::xform>,
    fn<"hVector_scale", "{ hVector * } n ", &hVector::scale>,
    fn<"hVector_rise", "{ hVector * } ", &hVector::rise>,
    fn<"hVector_run", "{ hVector * } ", &hVector::run>,
    fn<"hVector_horizontal", "{ hVector * } ", &hVector::horizontal>,
    fn<"hVector_angle", "{ hVector * } { hVector * } ", &hVector::angle>,
    method<"hVector_vec", "{ hVector * } ", &VectorStorage>,
    custom(RowKind::Method, "hVector_getList", &VectorGetList),
    custom(RowKind::Method, "hVector_setList", &VectorSetList),
    method<"hVector_eq", "{ hVector * } other ", &VectorEqual>,
};

}  // namespace

HK_CLASS(hVector, nullptr, kRows, kNoConstants);
