// hcPy without an embedded interpreter: every evaluation fails.
#include "host/pybridge.h"
#include "figure/figure_detail.h"

using namespace hcfigure_detail;

int hcPy::evalSimple(const char *source) {
  OpRecord rec("hcPy::evalSimple", source);
  return -1;
}

PyObject *hcPy::evalString(const char *source) {
  OpRecord rec("hcPy::evalString", source);
  return nullptr;
}

const char *hcPy::asString(PyObject *obj) {
  OpRecord rec("hcPy::asString", obj);
  return nullptr;
}

const char *hcPy::evalToString(const char *source) {
  OpRecord rec("hcPy::evalToString", source);
  return nullptr;
}

hMatrix *hcPy::evalToMatrix(const char *source) {
  OpRecord rec("hcPy::evalToMatrix", source);
  return nullptr;
}

hVector *hcPy::evalToVector(const char *source) {
  OpRecord rec("hcPy::evalToVector", source);
  return nullptr;
}

hcFigure *hcPy::evalToFigure(const char *source) {
  OpRecord rec("hcPy::evalToFigure", source);
  return nullptr;
}

hcJoint *hcPy::evalToJoint(const char *source) {
  OpRecord rec("hcPy::evalToJoint", source);
  return nullptr;
}

hcSegment *hcPy::evalToSegment(const char *source) {
  OpRecord rec("hcPy::evalToSegment", source);
  return nullptr;
}

hcSite *hcPy::evalToSite(const char *source) {
  OpRecord rec("hcPy::evalToSite", source);
  return nullptr;
}
