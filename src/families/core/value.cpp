// hcValue and hcPropertyList: tagged values and named property maps.
#include "frame/class_def.h"

namespace {
using namespace hk;

// Each getter reads into a variable of its kind; a kind mismatch leaves the
// variable at its starting value (0, an empty text, a null pointer).
template <class T>
T Get(hcValue &value) {
  T item{};
  value.get(item);
  return item;
}
const char *GetString(hcValue &value) {
  char *text = nullptr;
  value.get(text);
  return text;
}
// Matrices and vectors are read into a fresh object the script owns, unless
// the host answers one of its own.
template <class T>
T *GetObject(hcValue &value) {
  T *item = new T;
  value.get(item);
  return item;
}

template <class T>
constexpr auto Set = static_cast<void (hcValue::*)(T)>(&hcValue::set);

const Row kValueRows[] = {
    ctor<"new_hcValue", "", hcValue>,
    dtor<"delete_hcValue", "{ hcValue * } ", hcValue>,
    fn<"hcValue_nil", "{ hcValue * } ", &hcValue::nil>,
    fn<"hcValue_copy", "{ hcValue * } ", &hcValue::copy>,
    fn<"hcValue_destroy", "val ", &hcValue::destroy>,
    fn<"hcValue_getType", "{ hcValue * } ", &hcValue::getType>,
    fn<"hcValue_getTypeName", "{ hcValue * } ", &hcValue::getTypeName>,
    fn<"hcValue_tessprint", "{ hcValue * } ", &hcValue::tessprint>,
    fn<"hcValue_setNumber", "{ hcValue * } f ", Set<float>>,
    fn<"hcValue_setString", "{ hcValue * } f ", Set<const char *>>,
    fn<"hcValue_setFigure", "{ hcValue * } f ", Set<hcFigure *>>,
    fn<"hcValue_setSegment", "{ hcValue * } f ", Set<hcSegment *>>,
    fn<"hcValue_setSite", "{ hcValue * } f ", Set<hcSite *>>,
    fn<"hcValue_setJoint", "{ hcValue * } f ", Set<hcJoint *>>,
    fn<"hcValue_setMaterial", "{ hcValue * } f ", Set<hcMaterial *>>,
    fn<"hcValue_setConstraint", "{ hcValue * } f ", Set<hcConstraint *>>,
    fn<"hcValue_setTexture", "{ hcValue * } f ", Set<hcTexture *>>,
    fn<"hcValue_setDOF", "{ hcValue * } f ", Set<hcDOF *>>,
    fn<"hcValue_setMatrix", "{ hcValue * } f ", Set<hMatrix *>>,
    fn<"hcValue_setVector", "{ hcValue * } f ", Set<hVector *>>,
    method<"hcValue_getNumber", "{ hcValue * } ", &Get<float>>,
    method<"hcValue_getString", "{ hcValue * } ", &GetString>,
    method<"hcValue_getFigure", "{ hcValue * } ", &Get<hcFigure *>>,
    method<"hcValue_getSegment", "{ hcValue * } ", &Get<hcSegment *>>,
    method<"hcValue_getSite", "{ hcValue * } ", &Get<hcSite *>>,
    method<"hcValue_getJoint", "{ hcValue * } ", &Get<hcJoint *>>,
    method<"hcValue_getMaterial", "{ hcValue * } ", &Get<hcMaterial *>>,
    method<"hcValue_getConstraint", "{ hcValue * } ", &Get<hcConstraint *>>,
    method<"hcValue_getTexture", "{ hcValue * } ", &Get<hcTexture *>>,
    method<"hcValue_getDOF", "{ hcValue * } ", &Get<hcDOF *>>,
    method<"hcValue_getMatrix", "{ hcValue * } ", &GetObject<hMatrix>>,
    method<"hcValue_getVector", "{ hcValue * } ", &GetObject<hVector>>,
};

const ConstantDef kValueConstants[] = {
    {"V_UNDEF", hcValue::V_UNDEF},
    {"V_UNSUPPLIED", hcValue::V_UNSUPPLIED},
    {"V_VARIABLE", hcValue::V_VARIABLE},
    {"V_OP", hcValue::V_OP},
    {"V_IGNORE", hcValue::V_IGNORE},
    {"V_NUMBER", hcValue::V_NUMBER},
    {"V_MATRIX", hcValue::V_MATRIX},
    {"V_STRING", hcValue::V_STRING},
    {"V_DOF", hcValue::V_DOF},
    {"V_VECTOR", hcValue::V_VECTOR},
    {"V_FUNCALL", hcValue::V_FUNCALL},
    {"V_FIGURE", hcValue::V_FIGURE},
    {"V_SEGMENT", hcValue::V_SEGMENT},
    {"V_LIGHT", hcValue::V_LIGHT},
    {"V_SITE", hcValue::V_SITE},
    {"V_JOINT", hcValue::V_JOINT},
    {"V_CONSTRAINT", hcValue::V_CONSTRAINT},
    {"V_NODE", hcValue::V_NODE},
    {"V_EDGE", hcValue::V_EDGE},
    {"V_FACE", hcValue::V_FACE},
    {"V_CURVE", hcValue::V_CURVE},
    {"V_PATCH", hcValue::V_PATCH},
    {"V_ATTRIBUTE", hcValue::V_ATTRIBUTE},
    {"V_TEXTURE", hcValue::V_TEXTURE},
    {"V_NUMBERPTR", hcValue::V_NUMBERPTR},
    {"V_TRANSFORMPTR", hcValue::V_TRANSFORMPTR},
    {"V_JOINTANGLE", hcValue::V_JOINTANGLE},
    {"V_JOINTCOUPLE", hcValue::V_JOINTCOUPLE},
    {"V_DEFNODE", hcValue::V_DEFNODE},
    {"V_DEFEDGE", hcValue::V_DEFEDGE},
    {"V_DEFFACE", hcValue::V_DEFFACE},
    {"V_DYNSTRING", hcValue::V_DYNSTRING},
    {"V_GLYPH", hcValue::V_GLYPH},
    {"V_SCENE", hcValue::V_SCENE},
};

const Row kPropertyListRows[] = {
    ctor<"new_hcPropertyList", "", hcPropertyList>,
    dtor<"delete_hcPropertyList", "{ hcPropertyList * } ", hcPropertyList>,
    fn<"hcPropertyList_get", "{ hcPropertyList * } property value ", &hcPropertyList::get>,
    fn<"hcPropertyList_set", "{ hcPropertyList * } property value ", &hcPropertyList::set>,
    fn<"hcPropertyList_remove", "{ hcPropertyList * } property ", &hcPropertyList::remove>,
    fn<"hcPropertyList_names", "{ hcPropertyList * } ", &hcPropertyList::names>,
};

}  // namespace

HK_CLASS(hcValue, nullptr, kValueRows, kValueConstants);
HK_CLASS(hcPropertyList, nullptr, kPropertyListRows, kNoConstants);
