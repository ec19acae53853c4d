// Host library: the bridge to the host's embedded script interpreter.
//
// hcPy runs source text in the embedded interpreter and converts the value
// to a string, a matrix, a vector or a host object.  This stand-in has no
// embedded interpreter: nothing runs, evalSimple answers -1 (the
// interpreter's status for source that failed to run; 0 would mean it ran),
// and every other operation answers null.  Script objects (PyObject) are
// opaque: asString never reads through its argument.
//
#pragma once

#include "host/core.h"
#include "host/figure.h"

class hcPy {
 public:
  static int evalSimple(const char *source);
  static PyObject *evalString(const char *source);
  static const char *asString(PyObject *obj);
  static const char *evalToString(const char *source);
  static hMatrix *evalToMatrix(const char *source);
  static hVector *evalToVector(const char *source);
  static hcFigure *evalToFigure(const char *source);
  static hcJoint *evalToJoint(const char *source);
  static hcSegment *evalToSegment(const char *source);
  static hcSite *evalToSite(const char *source);
};
