// Host library: the bridge to the host's embedded script interpreter.
//
// hcPy runs source text in the embedded Python interpreter, started on first
// use; all evaluations share the __main__ module.
//   evalSimple     runs statements: 0, or -1 when they raised.
//   evalString     evaluates an expression (statements are refused) and
//                  answers the value, kept alive by the host; null on error.
//   asString       str() of a value evalString answered (null for any other
//                  pointer); evalToString str() of an expression's value.
//   evalToVector   three numbers; evalToMatrix sixteen numbers in storage
//                  order (row after row) or four rows of four.  The vectors
//                  and matrices answered stay the host's.
//   evalTo<Class>  a handle of that class from the built-in module hc.
// Texts answered stay valid until the next call.  Every exception is
// reported as an error message (hcKit::sendMsg, type 0) naming its type and
// text.  The built-in module hc has findFigure, findSegment, findJoint and
// findSite (by name in the current scene: a handle whose name attribute is
// the object's current name, or None; a handle whose object was destroyed
// answers None for its name) and sendMsg(text, type).
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
