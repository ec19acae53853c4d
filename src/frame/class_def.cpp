#include "frame/class_def.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace hk {
namespace {

bool Contains(const std::vector<NamedProc> &list, const std::string &name) {
  for (const auto &e : list)
    if (e.name == name) return true;
  return false;
}

void AppendMissing(std::vector<NamedProc> &list, const std::vector<NamedProc> &from) {
  for (const auto &e : from)
    if (!Contains(list, e.name)) list.push_back(e);
}

// "hcObject_name_get" under prefix "hcObject_" is "name_get".
std::string ShortName(const std::string &prefix, const char *name) {
  if (std::strncmp(name, prefix.c_str(), prefix.size()) == 0) return name + prefix.size();
  return name;
}

// "name_get" is the accessor of member "name".
std::string MemberOption(const std::string &shortName) {
  std::string option = "-";
  option.append(shortName, 0, shortName.size() - 4);
  return option;
}

std::string Joined(const std::vector<NamedProc> &list, const char *before, const char *after) {
  std::string text;
  for (const auto &e : list) {
    text += before;
    text += e.name;
    text += after;
  }
  return text;
}

void BuildTexts(const ClassDef &def, ClassRuntime &rt) {
  std::string m1 = Joined(rt.methods, "", " ");
  std::string m2 = Joined(rt.methods, " ", "");
  std::string r = Joined(rt.readable, "", " ");
  std::string w = Joined(rt.writable, "", " ");
  rt.methodsText = std::string(def.name) + " methods : { cget configure " + m1 + " }";
  rt.invalidMethodText = "Invalid Method. Must be { cget configure" + m2 + " }";
  rt.cgetText = "{ -this " + r + " }";
  rt.invalidCgetText = "Invalid cget option. Must be { -this " + r + " }";
  rt.configureText = "{ " + w + " }";
  rt.invalidConfigureText = "Invalid configure option. Must be { " + w + " }";
}

void OrderMethods(const ClassDef &def, ClassRuntime &rt) {
  if (def.methodOrder.empty()) return;
  std::vector<NamedProc> candidates = rt.methods;
  for (ClassDef *b = def.base; b; b = b->base) AppendMissing(candidates, b->runtime->methods);
  rt.methods.clear();
  for (const char *name : def.methodOrder) {
    for (const auto &c : candidates) {
      if (c.name == name) {
        rt.methods.push_back(c);
        break;
      }
    }
    if (rt.methods.empty() || rt.methods.back().name != name) {
      std::fprintf(stderr, "libhktcl: method %s of %s has no procedure\n", name, def.name);
      std::abort();
    }
  }
}

int Fail(Tcl_Interp *interp, const std::string &text) {
  Tcl_SetResult(interp, const_cast<char *>(text.c_str()), TCL_STATIC);
  return TCL_ERROR;
}

Tcl_CmdProc *Find(const std::vector<NamedProc> &list, const char *name) {
  for (const auto &e : list)
    if (e.name == name) return e.proc;
  return nullptr;
}

bool IsPrefixOf(const char *word, const char *full) {
  std::size_t n = std::strlen(word);
  return n >= 2 && std::strncmp(word, full, n) == 0;
}

}  // namespace

ClassRuntime &Prepare(ClassDef &def) {
  if (def.runtime) return *def.runtime;
  ClassRuntime *base = def.base ? &Prepare(*def.base) : nullptr;
  auto *rt = new ClassRuntime;
  std::string prefix = std::string(def.name) + "_";
  std::vector<std::string> ownNames;
  for (const Row &row : def.rows) {
    rt->own.push_back({row.name, row.proc});
    if (row.kind == RowKind::Ctor) {
      rt->ctor = row.proc;
      continue;
    }
    if (row.kind == RowKind::Dtor) {
      rt->destroy = row.destroy;
      continue;
    }
    std::string shortName = ShortName(prefix, row.name);
    ownNames.push_back(shortName);
    rt->visible.push_back({shortName, row.proc});
    if (row.kind == RowKind::Method) rt->methods.push_back({shortName, row.proc});
    if (row.kind == RowKind::Getter) rt->readable.push_back({MemberOption(shortName), row.proc});
    if (row.kind == RowKind::Setter) rt->writable.push_back({MemberOption(shortName), row.proc});
  }
  for (const ConstantDef &c : def.constants) rt->enumerators.push_back({c.name, c.value});
  if (base) {
    // Names declared by the class hide the base's commands of the same name.
    for (const auto &v : base->visible) {
      bool hidden = false;
      for (const auto &n : ownNames) hidden = hidden || n == v.name;
      if (hidden) continue;
      rt->visible.push_back(v);
      rt->inherited.push_back({prefix + v.name, v.proc});
    }
    AppendMissing(rt->methods, base->methods);
    AppendMissing(rt->readable, base->readable);
    AppendMissing(rt->writable, base->writable);
    rt->enumerators.insert(rt->enumerators.end(), base->enumerators.begin(), base->enumerators.end());
  }
  for (const auto &[name, value] : rt->enumerators) rt->constants.push_back({prefix + name, new int(value)});
  def.runtime = rt;
  OrderMethods(def, *rt);
  for (const auto &m : rt->methods) rt->methodIndex.emplace(m.name, m.proc);
  BuildTexts(def, *rt);
  return *rt;
}

void RegisterClass(Tcl_Interp *interp, ClassDef &def) {
  ClassRuntime &rt = Prepare(def);
  for (const auto &c : rt.own) Tcl_CreateCommand(interp, c.name.c_str(), c.proc, nullptr, nullptr);
  for (const auto &[name, storage] : rt.constants)
    Tcl_LinkVar(interp, name.c_str(), reinterpret_cast<char *>(storage), TCL_LINK_INT | TCL_LINK_READ_ONLY);
  for (const auto &c : rt.inherited) Tcl_CreateCommand(interp, c.name.c_str(), c.proc, nullptr, nullptr);
  Tcl_CreateCommand(interp, def.name, def.classProc, nullptr, nullptr);
}

int ClassCommandProc(ClassDef &def, Tcl_Interp *interp, int argc, const char *argv[]) {
  ClassRuntime &rt = Prepare(def);
  const char *name = nullptr;
  int first = -1;   // construct: index of the word that stands as the constructor's name
  int pointer = -1; // bind: index of the pointer word
  if (argc == 1) {
    first = 0;
  } else if (std::strcmp(argv[1], "-this") == 0) {
    pointer = 2;
  } else if (std::strcmp(argv[1], "-args") == 0) {
    first = 1;
  } else if (argc == 2) {
    first = 1;
    name = argv[1];
  } else {
    name = argv[1];
    if (std::strcmp(argv[2], "-this") == 0)
      pointer = 3;
    else
      first = 1;
  }

  void *object = nullptr;
  Tcl_CmdDeleteProc *deleteProc = nullptr;
  std::string commandName;
  if (first >= 0) {
    if (!rt.ctor) {
      Tcl_SetResult(interp, const_cast<char *>("No constructor available."), TCL_STATIC);
      return TCL_ERROR;
    }
    int code = rt.ctor(nullptr, interp, argc - first, argv + first);
    if (code != TCL_OK) return code;
    std::string made = Tcl_GetStringResult(interp);
    CheckPointer(made.c_str(), &object, def.typeString);
    deleteProc = rt.destroy;
    commandName = name ? name : made;
  } else {
    if (pointer >= argc) {
      Tcl_SetResult(interp, const_cast<char *>("wrong # args."), TCL_STATIC);
      return TCL_ERROR;
    }
    if (CheckPointer(argv[pointer], &object, def.typeString)) {
      std::string text = std::string("Type error. not a ") + def.name + " object.";
      Tcl_SetResult(interp, const_cast<char *>(text.c_str()), TCL_VOLATILE);
      return TCL_ERROR;
    }
    commandName = name ? name : argv[pointer];
    Tcl_SetResult(interp, const_cast<char *>(argv[pointer]), TCL_VOLATILE);
  }

  Tcl_CmdInfo info;
  if (Tcl_GetCommandInfo(interp, commandName.c_str(), &info)) {
    // An unnamed construction reports an empty name: the name was the result
    // text, which the message replaces.
    std::string shown = (first >= 0 && !name) ? "" : commandName;
    std::string text = "Object " + shown + " already exists!";
    Tcl_SetResult(interp, const_cast<char *>(text.c_str()), TCL_VOLATILE);
    return TCL_ERROR;
  }
  Tcl_CreateCommand(interp, commandName.c_str(), def.objectProc, object, deleteProc);
  return TCL_OK;
}

int ObjectCommandProc(ClassDef &def, ClientData object, Tcl_Interp *interp, int argc, const char *argv[]) {
  ClassRuntime &rt = *def.runtime;
  if (argc < 2) return Fail(interp, rt.methodsText);
  char self[kMaxPointerString];
  if (object != rt.lastObject || !rt.lastSelfLength) {
    rt.lastSelfLength = MakePointer(rt.lastSelf, object, def.typeString);
    rt.lastObject = object;
  }
  std::memcpy(self, rt.lastSelf, static_cast<std::size_t>(rt.lastSelfLength) + 1);

  const auto *hit = rt.lastMethod;
  if (!hit || std::strcmp(argv[1], hit->first.data()) != 0) {
    auto found = rt.methodIndex.find(argv[1]);
    hit = found == rt.methodIndex.end() ? nullptr : &*found;
  }
  if (hit) {
    rt.lastMethod = hit;
    const char *saved = argv[1];
    argv[1] = self;
    int code = hit->second(object, interp, argc, argv);
    argv[1] = saved;
    return code;
  }

  const char *word = argv[1];
  if (word[0] == 'c' && IsPrefixOf(word, "configure")) {
    int i = 2;
    for (; i + 1 < argc; i += 2) {
      Tcl_CmdProc *set = Find(rt.writable, argv[i]);
      if (!set) return Fail(interp, rt.invalidConfigureText);
      const char *saved = argv[i];
      argv[i] = self;
      int code = set(object, interp, 3, argv + i - 1);
      argv[i] = saved;
      if (code != TCL_OK) return code;
    }
    if (i < argc || i == 2) return Fail(interp, rt.configureText);
    return TCL_OK;
  }
  if (word[0] == 'c' && IsPrefixOf(word, "cget")) {
    if (argc != 3) return Fail(interp, rt.cgetText);
    if (Tcl_CmdProc *get = Find(rt.readable, argv[2])) {
      const char *saved = argv[2];
      argv[2] = self;
      int code = get(object, interp, 2, argv + 1);
      argv[2] = saved;
      return code;
    }
    if (std::strcmp(argv[2], "-this") == 0) {
      Tcl_SetResult(interp, self, TCL_VOLATILE);
      return TCL_OK;
    }
    return Fail(interp, rt.invalidCgetText);
  }
  return Fail(interp, rt.invalidMethodText);
}

}  // namespace hk
