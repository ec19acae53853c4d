// hcPy: the embedded Python interpreter.
#define PY_SSIZE_T_CLEAN
#include <Python.h>

#include <dlfcn.h>

#include <cstring>
#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

#include "host/kit.h"
#include "host/pybridge.h"
#include "host/scene.h"
#include "figure/figure_detail.h"

using namespace hcfigure_detail;

namespace {

// ---------------------------------------------------------------------------
// Handles: Python objects naming a figure, segment, joint or site.  A handle
// watches its object and forgets it when it is destroyed.

enum Kind { FIGURE, SEGMENT, JOINT, SITE };
const char *const kKindNames[] = {"figure", "segment", "joint", "site"};

struct Handle;

class Watch : public hcObserver {
 public:
  Watch(Handle *handle, hcObject *object)
      : hcObserver("hcPy", "hcObserver", object, hcObserver::DESTROY), handle_(handle), object_(object) {}
  void update(int protocol) override;
  hcObject *object() const { return object_; }
  void release() { handle_ = nullptr; }

 private:
  Handle *handle_;
  hcObject *object_;
};

struct Handle {
  PyObject_HEAD
  int kind;
  Watch *watch;  // null once the object is gone
};

void Watch::update(int protocol) {
  if (protocol != hcObserver::DESTROY) return;
  if (handle_) handle_->watch = nullptr;
  // The subject skips observers that are gone by the time it reaches them.
  delete this;
}

hcObject *objectOf(Handle *h) { return h->watch ? h->watch->object() : nullptr; }

void handleDealloc(PyObject *self) {
  auto *h = reinterpret_cast<Handle *>(self);
  if (h->watch) {
    h->watch->release();
    hccore::Quiet quiet;
    delete h->watch;
  }
  Py_TYPE(self)->tp_free(self);
}

PyObject *handleName(PyObject *self, void *) {
  hcObject *o = objectOf(reinterpret_cast<Handle *>(self));
  const char *name = o ? o->getName() : nullptr;
  if (!name) Py_RETURN_NONE;
  return PyUnicode_DecodeUTF8(name, static_cast<Py_ssize_t>(std::strlen(name)), "replace");
}

PyObject *handleKind(PyObject *self, void *) {
  return PyUnicode_FromString(kKindNames[reinterpret_cast<Handle *>(self)->kind]);
}

PyObject *handleRepr(PyObject *self) {
  auto *h = reinterpret_cast<Handle *>(self);
  hcObject *o = objectOf(h);
  const char *name = o ? o->getName() : nullptr;
  return PyUnicode_FromFormat("<hc %s %s>", kKindNames[h->kind], name ? name : "(destroyed)");
}

PyGetSetDef handleGetSet[] = {
    {"name", handleName, nullptr, "the object's current name, or None once it is destroyed", nullptr},
    {"kind", handleKind, nullptr, "figure, segment, joint or site", nullptr},
    {nullptr, nullptr, nullptr, nullptr, nullptr},
};

PyTypeObject handleType = [] {
  PyTypeObject t{};
  t.ob_base.ob_base.ob_refcnt = 1;  // a static type is never freed
  t.tp_name = "hc.Handle";
  t.tp_basicsize = sizeof(Handle);
  t.tp_dealloc = handleDealloc;
  t.tp_repr = handleRepr;
  t.tp_flags = Py_TPFLAGS_DEFAULT;
  t.tp_doc = "A figure, segment, joint or site of the host.";
  t.tp_getset = handleGetSet;
  return t;
}();

PyObject *makeHandle(int kind, hcObject *object) {
  if (!object) Py_RETURN_NONE;
  Handle *h = PyObject_New(Handle, &handleType);
  if (!h) return nullptr;
  h->kind = kind;
  hccore::Quiet quiet;
  h->watch = new Watch(h, object);
  return reinterpret_cast<PyObject *>(h);
}

// ---------------------------------------------------------------------------
// The built-in module hc.

template <int K>
PyObject *find(PyObject *, PyObject *args) {
  const char *name = nullptr;
  if (!PyArg_ParseTuple(args, "s", &name)) return nullptr;
  hcScene *scene = hcscene;
  if (!scene) Py_RETURN_NONE;
  hccore::Quiet quiet;
  hcObject *found = nullptr;
  if constexpr (K == FIGURE) found = scene->findFigure(name);
  if constexpr (K == SEGMENT) found = scene->findSegment(name);
  if constexpr (K == JOINT) found = scene->findJoint(name);
  if constexpr (K == SITE) found = scene->findSite(name);
  return makeHandle(K, found);
}

PyObject *sendMsg(PyObject *, PyObject *args) {
  const char *text = nullptr;
  int type = 0;
  if (!PyArg_ParseTuple(args, "si", &text, &type)) return nullptr;
  return PyLong_FromLong(hcKit::sendMsg(text, type));
}

PyMethodDef hcMethods[] = {
    {"findFigure", find<FIGURE>, METH_VARARGS, "The figure of the current scene named name, or None."},
    {"findSegment", find<SEGMENT>, METH_VARARGS, "The segment of the current scene named name, or None."},
    {"findJoint", find<JOINT>, METH_VARARGS, "The joint of the current scene named name, or None."},
    {"findSite", find<SITE>, METH_VARARGS, "The site of the current scene named name, or None."},
    {"sendMsg", sendMsg, METH_VARARGS, "Sends text as a host message of type (0 to 3)."},
    {nullptr, nullptr, 0, nullptr},
};

PyModuleDef hcModule = {PyModuleDef_HEAD_INIT, "hc", "The host's objects.", -1, hcMethods,
                        nullptr, nullptr, nullptr, nullptr};

PyObject *initHcModule() {
  if (PyType_Ready(&handleType) < 0) return nullptr;
  PyObject *m = PyModule_Create(&hcModule);
  if (!m) return nullptr;
  Py_INCREF(&handleType);
  if (PyModule_AddObject(m, "Handle", reinterpret_cast<PyObject *>(&handleType)) < 0) {
    Py_DECREF(&handleType);
    Py_DECREF(m);
    return nullptr;
  }
  return m;
}

// ---------------------------------------------------------------------------
// The interpreter.

PyObject *mainDict = nullptr;

// Starts the interpreter on first use.  The interpreter library is made
// global first, so that extension modules it loads find its symbols even
// though this library was loaded into its process with local symbols.
bool started() {
  static bool tried = false;
  if (tried) return mainDict != nullptr;
  tried = true;
  Dl_info info;
  if (dladdr(reinterpret_cast<void *>(&Py_InitializeEx), &info) && info.dli_fname)
    dlopen(info.dli_fname, RTLD_NOW | RTLD_GLOBAL | RTLD_NOLOAD);
  if (!Py_IsInitialized()) {
    PyImport_AppendInittab("hc", initHcModule);
    Py_InitializeEx(0);  // the host process keeps its signal handlers
  }
  PyObject *main = PyImport_AddModule("__main__");  // borrowed
  if (!main) return false;
  mainDict = PyModule_GetDict(main);  // borrowed, lives as long as __main__
  PyObject *hc = PyImport_ImportModule("hc");
  if (hc) {
    PyDict_SetItemString(mainDict, "hc", hc);
    Py_DECREF(hc);
  }
  PyErr_Clear();
  return true;
}

// Reports the pending exception, if any, as an error message naming its
// type and text, and clears it.
void reportError() {
  if (!PyErr_Occurred()) return;
  PyObject *type = nullptr, *value = nullptr, *trace = nullptr;
  PyErr_Fetch(&type, &value, &trace);
  PyErr_NormalizeException(&type, &value, &trace);
  std::string text = type ? reinterpret_cast<PyTypeObject *>(type)->tp_name : "Exception";
  if (value) {
    if (PyObject *s = PyObject_Str(value)) {
      if (const char *utf8 = PyUnicode_AsUTF8(s)) text = text + ": " + utf8;
      Py_DECREF(s);
    }
  }
  Py_XDECREF(type);
  Py_XDECREF(value);
  Py_XDECREF(trace);
  PyErr_Clear();
  hccore::Quiet quiet;
  hcKit::sendMsg(text.c_str(), 0);
}

// The value of an expression (new reference), or null with the error
// reported.
PyObject *evaluate(const char *source) {
  if (!source || !started()) return nullptr;
  PyObject *value = PyRun_String(source, Py_eval_input, mainDict, mainDict);
  if (!value) reportError();
  return value;
}

// Values handed out by evalString: they stay alive, and asString reads only
// these.
std::unordered_set<PyObject *> &keptValues() {
  static auto *kept = new std::unordered_set<PyObject *>;
  return *kept;
}

template <class T>
T *keep(std::unique_ptr<T> made) {
  static auto *kept = new std::vector<std::unique_ptr<T>>;
  kept->push_back(std::move(made));
  return kept->back().get();
}

// str() of value into the answer buffer; null when str() fails.
const char *text(PyObject *value) {
  static auto *answer = new std::string;
  PyObject *s = value ? PyObject_Str(value) : nullptr;
  const char *utf8 = s ? PyUnicode_AsUTF8(s) : nullptr;
  if (!utf8) {
    Py_XDECREF(s);
    reportError();
    return nullptr;
  }
  *answer = utf8;
  Py_DECREF(s);
  return answer->c_str();
}

// The numbers of a flat sequence of n numbers; false (no error pending)
// for anything else.
bool numbers(PyObject *value, Py_ssize_t n, std::vector<double> &out) {
  if (!value || !PySequence_Check(value) || PyUnicode_Check(value) || PyBytes_Check(value)) return false;
  PyObject *seq = PySequence_Fast(value, "");
  if (!seq) {
    PyErr_Clear();
    return false;
  }
  bool ok = PySequence_Fast_GET_SIZE(seq) == n;
  for (Py_ssize_t i = 0; ok && i < n; ++i) {
    PyObject *item = PySequence_Fast_GET_ITEM(seq, i);
    ok = PyNumber_Check(item) && !PyBool_Check(item);
    if (ok) {
      out.push_back(PyFloat_AsDouble(item));
      if (PyErr_Occurred()) {
        PyErr_Clear();
        ok = false;
      }
    }
  }
  Py_DECREF(seq);
  return ok;
}

template <class T>
T *handleObject(const char *source, int kind) {
  PyObject *value = evaluate(source);
  if (!value) return nullptr;
  T *object = nullptr;
  if (Py_TYPE(value) == &handleType) {
    auto *h = reinterpret_cast<Handle *>(value);
    if (h->kind == kind) object = static_cast<T *>(objectOf(h));
  }
  Py_DECREF(value);
  return object;
}

}  // namespace

int hcPy::evalSimple(const char *source) {
  OpRecord rec("hcPy::evalSimple", source);
  if (!source || !started()) return -1;
  PyObject *result = PyRun_String(source, Py_file_input, mainDict, mainDict);
  if (!result) {
    reportError();
    return -1;
  }
  Py_DECREF(result);
  return 0;
}

PyObject *hcPy::evalString(const char *source) {
  OpRecord rec("hcPy::evalString", source);
  PyObject *value = evaluate(source);
  if (value) keptValues().insert(value);
  return value;
}

const char *hcPy::asString(PyObject *obj) {
  OpRecord rec("hcPy::asString", obj);
  if (!obj || !keptValues().count(obj)) return nullptr;
  return text(obj);
}

const char *hcPy::evalToString(const char *source) {
  OpRecord rec("hcPy::evalToString", source);
  PyObject *value = evaluate(source);
  if (!value) return nullptr;
  const char *answer = text(value);
  Py_DECREF(value);
  return answer;
}

hMatrix *hcPy::evalToMatrix(const char *source) {
  OpRecord rec("hcPy::evalToMatrix", source);
  PyObject *value = evaluate(source);
  if (!value) return nullptr;
  std::vector<double> v;
  bool ok = numbers(value, 16, v);
  if (!ok && PySequence_Check(value) && !PyUnicode_Check(value) && PySequence_Size(value) == 4) {
    ok = true;
    for (Py_ssize_t r = 0; ok && r < 4; ++r) {
      PyObject *row = PySequence_GetItem(value, r);
      ok = numbers(row, 4, v);
      Py_XDECREF(row);
    }
  }
  PyErr_Clear();
  Py_DECREF(value);
  if (!ok) return nullptr;
  auto m = std::make_unique<hMatrix>();
  for (int i = 0; i < 16; ++i) m->m[i / 4][i % 4] = static_cast<float>(v[i]);
  return keep(std::move(m));
}

hVector *hcPy::evalToVector(const char *source) {
  OpRecord rec("hcPy::evalToVector", source);
  PyObject *value = evaluate(source);
  if (!value) return nullptr;
  std::vector<double> v;
  bool ok = numbers(value, 3, v);
  Py_DECREF(value);
  if (!ok) return nullptr;
  return keep(std::make_unique<hVector>(static_cast<float>(v[0]), static_cast<float>(v[1]),
                                        static_cast<float>(v[2])));
}

hcFigure *hcPy::evalToFigure(const char *source) {
  OpRecord rec("hcPy::evalToFigure", source);
  return handleObject<hcFigure>(source, FIGURE);
}

hcJoint *hcPy::evalToJoint(const char *source) {
  OpRecord rec("hcPy::evalToJoint", source);
  return handleObject<hcJoint>(source, JOINT);
}

hcSegment *hcPy::evalToSegment(const char *source) {
  OpRecord rec("hcPy::evalToSegment", source);
  return handleObject<hcSegment>(source, SEGMENT);
}

hcSite *hcPy::evalToSite(const char *source) {
  OpRecord rec("hcPy::evalToSite", source);
  return handleObject<hcSite>(source, SITE);
}
