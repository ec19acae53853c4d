// Class blocks: a wrapped class's rows, constants and object protocol.
//
// A family declares each class once:
//
//   HK_CLASS(hcObject, &hcSubject_class, kRows, kConstants);
//
// From the rows and the base class the module derives everything else: the
// commands the class re-registers from its bases (the bases' visible commands
// minus those its own rows hide), the constants it links again under its own
// prefix, its object command's method table (own instance methods, then the
// base's list without names already present), its cget and configure options,
// and the fixed texts of the object protocol.
#pragma once

#include <tcl.h>

#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "frame/command.h"

namespace hk {

struct ConstantDef {
  const char *name;  // the enumerator, without the class prefix
  int value;
};

struct NamedProc {
  std::string name;
  Tcl_CmdProc *proc;
};

// What the module derives from a class block, once per process.
struct ClassRuntime {
  std::vector<NamedProc> own;        // commands created under the class's own rows
  std::vector<NamedProc> visible;    // short name -> procedure, as derived classes see them
  std::vector<NamedProc> inherited;  // full name -> base procedure, re-registered here
  std::vector<NamedProc> methods;    // object command method table, in order
  std::unordered_map<std::string_view, Tcl_CmdProc *> methodIndex;
  std::vector<NamedProc> readable;   // "-member" -> _get procedure
  std::vector<NamedProc> writable;   // "-member" -> _set procedure
  std::vector<std::pair<std::string, int *>> constants;  // full name -> storage
  std::vector<std::pair<const char *, int>> enumerators;  // own and inherited, short names
  Tcl_CmdProc *ctor = nullptr;
  void (*destroy)(void *) = nullptr;
  std::string methodsText, invalidMethodText;
  std::string cgetText, invalidCgetText;
  std::string configureText, invalidConfigureText;
  // The typed pointer text of the object whose command ran last: scripts
  // tend to call one object many times in a row.
  const void *lastObject = nullptr;
  int lastSelfLength = 0;
  char lastSelf[kMaxPointerString] = {};
  // The method entry found last, tried before the index for the same reason.
  const decltype(methodIndex)::value_type *lastMethod = nullptr;
};

struct ClassDef {
  const char *name;
  ClassDef *base;
  std::span<const Row> rows;
  std::span<const ConstantDef> constants;
  const char *typeString;
  Tcl_CmdProc *classProc;
  Tcl_CmdProc *objectProc;
  // Set only where the method list does not follow the derivation rule.
  std::span<const char *const> methodOrder = {};
  ClassRuntime *runtime = nullptr;
};

// Builds (once) and answers the derived data of a class.
ClassRuntime &Prepare(ClassDef &def);

// Creates the class's commands, links its constants and creates its class
// command, in block order.
void RegisterClass(Tcl_Interp *interp, ClassDef &def);

int ClassCommandProc(ClassDef &def, Tcl_Interp *interp, int argc, const char *argv[]);
int ObjectCommandProc(ClassDef &def, ClientData object, Tcl_Interp *interp, int argc, const char *argv[]);

template <ClassDef &D>
int ClassCommand(ClientData, Tcl_Interp *interp, int argc, const char *argv[]) {
  return ClassCommandProc(D, interp, argc, argv);
}
template <ClassDef &D>
int ObjectCommand(ClientData object, Tcl_Interp *interp, int argc, const char *argv[]) {
  return ObjectCommandProc(D, object, interp, argc, argv);
}

inline constexpr std::span<const ConstantDef> kNoConstants{};

}  // namespace hk

// Defines the class block variable <Type>_class.  Extra arguments: an
// explicit method order (a span of names) where the derived one does not hold.
#define HK_CLASS(Type, basePtr, rows, constants, ...)                                                   \
  ::hk::ClassDef Type##_class {                                                                        \
    #Type, basePtr, rows, constants, ::hk::TypeString<Type *>(), &::hk::ClassCommand<Type##_class>,   \
        &::hk::ObjectCommand<Type##_class> __VA_OPT__(, ) __VA_ARGS__                                  \
  }
