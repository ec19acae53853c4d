// hMatrix: 4 by 4 float matrices.
#include "convert/list_forms.h"
#include "frame/class_def.h"

namespace {
using namespace hk;

int MatrixEqual(hMatrix &a, hMatrix &b) { return a == b; }

const Row kRows[] = {
    getter<"hMatrix_m_get", "{ hMatrix * } ", &hMatrix::m>,
    ctor<"new_hMatrix", "", hMatrix>,
    dtor<"delete_hMatrix", "{ hMatrix * } ", hMatrix>,
    fn<"hMatrix_copy", "{ hMatrix * } M ", &hMatrix::copy>,
    fn<"hMatrix_setTranslation", "{ hMatrix * } v ", &hMatrix::setTranslation>,
    fn<"hMatrix_getTranslation", "{ hMatrix * } ", &hMatrix::getTranslation>,
    fn<"hMatrix_getAxis", "{ hMatrix * } ax ", &hMatrix::getAxis>,
    fn<"hMatrix_setAxis", "{ hMatrix * } ax v ", &hMatrix::setAxis>,
    fn<"hMatrix_getXYZ", "{ hMatrix * } ", &hMatrix::getXYZ>,
    fn<"hMatrix_getRot", "{ hMatrix * } { char * } ", &hMatrix::getRot>,
    fn<"hMatrix_inverse", "{ hMatrix * } ", &hMatrix::inverse>,
    fn<"hMatrix_orthoInverse", "{ hMatrix * } ", &hMatrix::orthoInverse>,
    fn<"hMatrix_mult", "{ hMatrix * } a ", &hMatrix::mult>,
    fn<"hMatrix_scale", "{ hMatrix * } s ", &hMatrix::scale>,
    fn<"hMatrix_orthoMult", "{ hMatrix * } a ", &hMatrix::orthoMult>,
    fn<"hMatrix_sub", "{ hMatrix * } a ", &hMatrix::sub>,
    fn<"hMatrix_add", "{ hMatrix * } a ", &hMatrix::add>,
    fn<"hMatrix_id", "{ hMatrix * } ", &hMatrix::id>,
    fn<"hMatrix_setRotation", "{ hMatrix * } v ", &hMatrix::setRotation>,
    fn<"hMatrix_toAxisAngle", "{ hMatrix * } axis ", &hMatrix::toAxisAngle>,
    fn<"hMatrix_fromAxisAngle", "{ hMatrix * } v theta ", &hMatrix::fromAxisAngle>,
    fn<"hMatrix_transpose", "{ hMatrix * } ", &hMatrix::transpose>,
    fn<"hMatrix_interp", "{ hMatrix * } a b t ", &hMatrix::interp>,
    fn<"hMatrix_homogenize", "{ hMatrix * } ", &hMatrix::homogenize>,
    fn<"hMatrix_rotateAround", "{ hMatrix * } ax angle ", &hMatrix::rotateAround>,
    fn<"hMatrix_rotateAroundAxis", "{ hMatrix * } axis angle ", &hMatrix::rotateAroundAxis>,
    fn<"hMatrix_rotateAroundFrame", "{ hMatrix * } frame ax angle ", &hMatrix::rotateAroundFrame>,
    custom(RowKind::Method, "hMatrix_getList", &MatrixGetList),
    custom(RowKind::Method, "hMatrix_setList", &MatrixSetList),
    method<"hMatrix_eq", "{ hMatrix * } other ", &MatrixEqual>,
};

}  // namespace

HK_CLASS(hMatrix, nullptr, kRows, kNoConstants);
