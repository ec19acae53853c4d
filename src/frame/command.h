// Flat commands: one declarative row per command.
//
// A row names the command, its usage tail and the host operation; the
// templates here derive from the operation's C++ signature the accepted word
// counts, each word's conversion and the way the result is written:
//
//   fn<"hcType_getName", "{ hcType * } ", &hcType::getName>
//   fn<"hcFigure_saveToFile", "{ hcFigure * } filename ?withMaterials? ?withDisplacements? ",
//      &hcFigure::saveToFile, 1, 0>          // trailing values: defaults of optional words
//
// Every row becomes its own command procedure, so a procedure needs no client
// data: its name, usage text and defaults are part of the procedure itself.
//
// Words are converted by the parameter's type:
//   signed integers, integer enumerations  atol, narrowed
//   bool                                   atol, non-zero is true
//   unsigned integers                      strtoul with base 0
//   float, double                          atof
//   char *, const char *                   the word itself
//   T *                                    typed pointer check against "_T_p"; NULL allowed
//   T &, by-value T                        typed pointer check; NULL refused
// Results are written by the return type: "%ld", "%lu", Tcl's double format,
// a copied string, a typed pointer string, or a heap copy of a by-value
// object answered as a typed pointer string.
#pragma once

#include <tcl.h>

#include "frame/format.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <new>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>

#include "frame/blocks.h"
#include "frame/host_names.h"
#include "frame/typed_pointer.h"

namespace hk {

// ---------------------------------------------------------------------------
// Messages.

// Installs the fixed usage message of a command and answers TCL_ERROR.  The
// text must outlive the interpreter's use of it (see UsageText).
int UsageError(Tcl_Interp *interp, const std::string &usage);
// The same message, built from a command name and usage tail.
int WrongArgs(Tcl_Interp *interp, const char *cmd, const char *tail);
// "Type error in argument N of <cmd>. Expected <type>, received <word>".
int TypeError(Tcl_Interp *interp, int index, const char *cmd, const char *type, const char *word);

template <Text Name, Text Tail>
const std::string &UsageText() {
  static const std::string text = std::string("Wrong # args. ") + Name.value + " " + Tail.value;
  return text;
}

// ---------------------------------------------------------------------------
// Result writers.

// Sets the result to length bytes of text.
void SetText(Tcl_Interp *interp, const char *text, int length);
// Numbers: the text a script reads is the decimal or Tcl_PrintDouble text of
// the value at the call, made when the result is first read where it cannot
// differ from the text made at once.
void SetLong(Tcl_Interp *interp, long value);
void SetUnsigned(Tcl_Interp *interp, unsigned long value);
void SetDouble(Tcl_Interp *interp, double value);
void SetString(Tcl_Interp *interp, const char *text);
void SetPointer(Tcl_Interp *interp, const void *addr, const char *type);

template <class T>
concept IntegerEnum = std::is_enum_v<T> && !Named<T>;
template <class T>
concept ByValueObject = (std::is_class_v<T> || std::is_enum_v<T>) && Named<T>;

template <class R>
struct Result;

template <class R>
  requires(std::is_same_v<R, bool>)
struct Result<R> {
  static void write(Tcl_Interp *interp, R v) { SetLong(interp, v ? 1 : 0); }
};
template <class R>
  requires((std::is_integral_v<R> && std::is_signed_v<R>) || IntegerEnum<R>)
struct Result<R> {
  static void write(Tcl_Interp *interp, R v) { SetLong(interp, static_cast<long>(v)); }
};
template <class R>
  requires(std::is_integral_v<R> && std::is_unsigned_v<R> && !std::is_same_v<R, bool>)
struct Result<R> {
  static void write(Tcl_Interp *interp, R v) { SetUnsigned(interp, static_cast<unsigned long>(v)); }
};
template <class R>
  requires std::is_floating_point_v<R>
struct Result<R> {
  static void write(Tcl_Interp *interp, R v) { SetDouble(interp, static_cast<double>(v)); }
};
template <>
struct Result<char *> {
  static void write(Tcl_Interp *interp, const char *v) { SetString(interp, v); }
};
template <>
struct Result<const char *> {
  static void write(Tcl_Interp *interp, const char *v) { SetString(interp, v); }
};
template <class T>
struct Result<T *> {
  static void write(Tcl_Interp *interp, const T *v) { SetPointer(interp, v, TypeString<T *>()); }
};
template <ByValueObject T>
struct Result<T> {
  // The script owns the copy; delete_<Class> releases it.
  static void write(Tcl_Interp *interp, T v) {
    SetPointer(interp, new (std::nothrow) T(std::move(v)), TypeString<T *>());
  }
};

// ---------------------------------------------------------------------------
// Argument converters: parse a word into Stored, then get() the parameter.

template <class P>
struct Arg;

template <class P>
  requires(std::is_same_v<P, bool>)
struct Arg<P> {
  using Stored = bool;
  static constexpr const char *type = nullptr;
  static bool parse(const char *w, Stored &s) {
    s = ParseLong(w) != 0;
    return true;
  }
  static P get(Stored s) { return s; }
};
template <class P>
  requires((std::is_integral_v<P> && std::is_signed_v<P>) || IntegerEnum<P>)
struct Arg<P> {
  using Stored = P;
  static constexpr const char *type = nullptr;
  static bool parse(const char *w, Stored &s) {
    s = static_cast<P>(ParseLong(w));
    return true;
  }
  static P get(Stored s) { return s; }
};
template <class P>
  requires(std::is_integral_v<P> && std::is_unsigned_v<P> && !std::is_same_v<P, bool>)
struct Arg<P> {
  using Stored = P;
  static constexpr const char *type = nullptr;
  static bool parse(const char *w, Stored &s) {
    s = static_cast<P>(std::strtoul(w, nullptr, 0));
    return true;
  }
  static P get(Stored s) { return s; }
};
template <class P>
  requires std::is_floating_point_v<P>
struct Arg<P> {
  using Stored = P;
  static constexpr const char *type = nullptr;
  static bool parse(const char *w, Stored &s) {
    s = static_cast<P>(std::atof(w));
    return true;
  }
  static P get(Stored s) { return s; }
};
template <class P>
  requires(std::is_same_v<P, char *> || std::is_same_v<P, const char *>)
struct Arg<P> {
  using Stored = P;
  static constexpr const char *type = nullptr;
  // The host may not keep the word beyond the call.
  static bool parse(const char *w, Stored &s) {
    s = const_cast<P>(w);
    return true;
  }
  static P get(Stored s) { return s; }
};

// Pointer words: checked against the type string; "NULL" gives nullptr.
template <class T>
  requires(!std::is_same_v<std::remove_cv_t<T>, char>)
struct Arg<T *> {
  using Stored = T *;
  static const char *type() { return TypeString<std::remove_cv_t<T> *>(); }
  static bool parse(const char *w, Stored &s) {
    void *addr = nullptr;
    if (CheckPointer(w, &addr, type())) return false;
    s = static_cast<T *>(addr);
    return true;
  }
  static T *get(Stored s) { return s; }
};

// Words that must name an object: references and by-value objects.  The
// check is the pointer check, and "NULL" is refused with the same message,
// since the operation would have to read through it.
template <class T>
struct RequiredObject {
  using Stored = T *;
  static const char *type() { return TypeString<std::remove_cv_t<T> *>(); }
  static bool parse(const char *w, Stored &s) {
    void *addr = nullptr;
    if (CheckPointer(w, &addr, type()) || !addr) return false;
    s = static_cast<T *>(addr);
    return true;
  }
};
template <class T>
struct Arg<T &> : RequiredObject<T> {
  static T &get(T *s) { return *s; }
};
template <ByValueObject T>
struct Arg<T> : RequiredObject<T> {
  static T get(T *s) { return *s; }  // the host receives its own copy
};

// A parameter that takes a pointer of any type (callback data, channel
// parameters): a row's host operation names it as AnyPointer and passes
// .address on.  Only the word's form is checked, "NULL" gives nullptr, and a
// malformed word is reported against "_void_p".
struct AnyPointer {
  void *address;
};
template <>
struct Arg<AnyPointer> {
  using Stored = void *;
  static const char *type() { return "_void_p"; }
  static bool parse(const char *w, Stored &s) { return CheckPointer(w, &s, nullptr) == nullptr; }
  static AnyPointer get(Stored s) { return {s}; }
};

// ---------------------------------------------------------------------------
// Plain arrays given to the host (float *, double *, int * and the like,
// and arrays of pointers: hcMaterial **, hList **, char **).
//
// A bare pointer carries no length, so an operation states how many elements
// it reads or writes through each such parameter: one, unless the operation
// has an entry
//
//   template <> struct hk::ArrayUse<&hcJoint::setAngles> {
//     static long count(std::size_t param, hcJoint &j, float *, int) { return j.getNDOFs(); }
//   };
//
// (param is the parameter's position, the object first; count receives the
// converted arguments).  When the word names memory the module allocated
// (ptrcreate, the _array commands), a block too short for the count is
// refused before the call; other addresses reach the host unchecked.
template <auto F>
struct ArrayUse {
  static constexpr bool none = true;  // the primary: one element each
};

template <class P>
concept PlainArray =
    std::is_pointer_v<P> &&
    ((std::is_arithmetic_v<std::remove_cv_t<std::remove_pointer_t<P>>> &&
      !std::is_same_v<std::remove_cv_t<std::remove_pointer_t<P>>, char>) ||
     std::is_pointer_v<std::remove_pointer_t<P>>);

// "cmd: argument N holds H elements, the operation uses U" and TCL_ERROR.
int ArrayTooShort(Tcl_Interp *interp, const char *cmd, int index, long holds, long uses);

// ---------------------------------------------------------------------------
// Signatures.

template <class... A>
struct TypeList {
  static constexpr std::size_t size = sizeof...(A);
};
template <std::size_t I, class L>
struct At;
template <std::size_t I, class... A>
struct At<I, TypeList<A...>> {
  using type = std::tuple_element_t<I, std::tuple<A...>>;
};

// Member functions take their object as a leading reference parameter.
template <class F>
struct Signature;
template <class R, class... A>
struct Signature<R (*)(A...)> {
  using Ret = R;
  using Params = TypeList<A...>;
  static constexpr bool member = false;
};
template <class R, class C, class... A>
struct Signature<R (C::*)(A...)> {
  using Ret = R;
  using Params = TypeList<C &, A...>;
  static constexpr bool member = true;
};
template <class R, class C, class... A>
struct Signature<R (C::*)(A...) const> {
  using Ret = R;
  using Params = TypeList<C &, A...>;
  static constexpr bool member = true;
};

// ---------------------------------------------------------------------------
// Rows.

enum class RowKind { Method, Static, Ctor, Dtor, Getter, Setter };

struct Row {
  RowKind kind;
  const char *name;           // the command name
  Tcl_CmdProc *proc;
  void (*destroy)(void *);    // destructors: releases a constructed object
};

template <class P>
const char *ArgType() {
  if constexpr (requires { P::type(); }) return P::type();
  else return P::type;
}

template <Text Name, Text Tail, auto F, auto... Defaults>
struct Command {
  using S = Signature<decltype(F)>;
  using Params = typename S::Params;
  static constexpr int P = Params::size;
  static constexpr int O = sizeof...(Defaults);
  static constexpr int R = P - O;
  static_assert(O <= P, "more defaults than parameters");

  template <std::size_t I>
  using Param = typename At<I, Params>::type;

  static int Proc(ClientData, Tcl_Interp *interp, int argc, const char *argv[]) {
    if (argc < R + 1 || argc > P + 1) return UsageError(interp, UsageText<Name, Tail>());
    return Run(interp, argc, argv, std::make_index_sequence<P>{});
  }

 private:
  template <std::size_t I>
  static bool Take(Tcl_Interp *interp, int argc, const char *argv[], auto &slot) {
    if constexpr (I >= static_cast<std::size_t>(R)) {
      if (argc <= static_cast<int>(I) + 1) {
        constexpr auto value = std::get<I - R>(std::make_tuple(Defaults...));
        slot = static_cast<std::remove_reference_t<decltype(slot)>>(value);
        return true;
      }
    }
    using A = Arg<Param<I>>;
    if (A::parse(argv[I + 1], slot)) return true;
    TypeError(interp, static_cast<int>(I) + 1, Name.value, ArgType<A>(), argv[I + 1]);
    return false;
  }

  template <std::size_t... I>
  static int Run(Tcl_Interp *interp, [[maybe_unused]] int argc, [[maybe_unused]] const char *argv[],
                 std::index_sequence<I...>) {
    std::tuple<typename Arg<Param<I>>::Stored...> stored{};
    bool ok = true;
    ((ok = ok && Take<I>(interp, argc, argv, std::get<I>(stored))), ...);
    if (!ok) return TCL_ERROR;
    ((ok = ok && ArrayFits<I>(interp, stored)), ...);
    if (!ok) return TCL_ERROR;
    using Ret = typename S::Ret;
    if constexpr (std::is_void_v<Ret>) {
      std::invoke(F, Arg<Param<I>>::get(std::get<I>(stored))...);
    } else {
      Result<std::remove_cv_t<Ret>>::write(interp, std::invoke(F, Arg<Param<I>>::get(std::get<I>(stored))...));
    }
    return TCL_OK;
  }

  template <std::size_t J, std::size_t... I>
  static long Uses(auto &stored, std::index_sequence<I...>) {
    if constexpr (requires { ArrayUse<F>::none; }) {
      return 1;
    } else {
      return ArrayUse<F>::count(J, Arg<Param<I>>::get(std::get<I>(stored))...);
    }
  }

  template <std::size_t J>
  static bool ArrayFits(Tcl_Interp *interp, auto &stored) {
    if constexpr (!PlainArray<Param<J>>) {
      return true;
    } else {
      const auto *p = std::get<J>(stored);
      const Block *block = p ? FindBlock(p) : nullptr;
      if (!block) return true;
      long uses = Uses<J>(stored, std::make_index_sequence<P>{});
      constexpr std::size_t size = sizeof(*p);
      if (uses <= 0 || ElementsInside(*block, p, 0, size, true, static_cast<std::size_t>(uses))) return true;
      long offset = static_cast<long>(reinterpret_cast<const char *>(p) - block->start);
      long holds = offset >= 0 && static_cast<std::size_t>(offset) < block->bytes
                       ? static_cast<long>((block->bytes - static_cast<std::size_t>(offset)) / size)
                       : 0;
      ArrayTooShort(interp, Name.value, static_cast<int>(J) + 1, holds, uses);
      return false;
    }
  }
};

// A host operation: a method when F is a member function, a static method or
// module function otherwise.
template <Text Name, Text Tail, auto F, auto... Defaults>
constexpr Row fn{Signature<decltype(F)>::member ? RowKind::Method : RowKind::Static, Name.value,
                 &Command<Name, Tail, F, Defaults...>::Proc, nullptr};

// A command registered again under another name with the original's
// wrapper, so that its messages name the original:
//   again<"hcMeshGeometry_read", "hcGeometry_read", "fileName ?scale? ", &hcGeometry::read, nullptr>
template <Text Name, Text Original, Text Tail, auto F, auto... Defaults>
constexpr Row again{Signature<decltype(F)>::member ? RowKind::Method : RowKind::Static, Name.value,
                    &Command<Original, Tail, F, Defaults...>::Proc, nullptr};

// A free function standing in for a method: its first parameter (a reference)
// is the object.
template <Text Name, Text Tail, auto F, auto... Defaults>
constexpr Row method{RowKind::Method, Name.value, &Command<Name, Tail, F, Defaults...>::Proc, nullptr};

// A base class's operation run on an object of derived class D, so that the
// object word is checked against D:
//   method<"hcMeshGeometry_getNumNodes", "{ hcMeshGeometry * } ",
//          on<hcMeshGeometry, &hcGeometry::getNumNodes>>
template <class D, auto F>
struct On;
template <class D, class R, class C, class... A, R (C::*F)(A...)>
struct On<D, F> {
  static R call(D &object, A... a) { return (object.*F)(a...); }
};
template <class D, auto F>
constexpr auto on = &On<D, F>::call;

// Constructor new_<Class>: T's constructor with the parameters A.
template <class T, class... A>
T *Construct(A... a) {
  return new T(a...);
}
template <Text Name, Text Tail, class T, class Sig, auto... Defaults>
struct CtorRow;
template <Text Name, Text Tail, class T, class... A, auto... Defaults>
struct CtorRow<Name, Tail, T, void(A...), Defaults...> {
  static constexpr Row row{RowKind::Ctor, Name.value, &Command<Name, Tail, &Construct<T, A...>, Defaults...>::Proc,
                           nullptr};
};
template <Text Name, Text Tail, class T, class Sig = void(), auto... Defaults>
constexpr Row ctor = CtorRow<Name, Tail, T, Sig, Defaults...>::row;

// Destructor delete_<Class>: "NULL" is accepted and does nothing.
template <class T>
void Destroy(void *p) {
  delete static_cast<T *>(p);
}
template <class T>
void DestroyChecked(T *p) {
  if (p) delete p;
}
template <Text Name, Text Tail, class T>
constexpr Row dtor{RowKind::Dtor, Name.value, &Command<Name, Tail, &DestroyChecked<T>>::Proc, &Destroy<T>};

// ---------------------------------------------------------------------------
// Member accessors <Class>_<member>_get and <Class>_<member>_set.

template <class M>
struct MemberOf;
template <class C, class T>
struct MemberOf<T C::*> {
  using Class = C;
  using Type = T;
};

template <class C, class T>
void WriteMember(Tcl_Interp *interp, T &member) {
  if constexpr (std::is_array_v<T>) {
    // An array member is answered as a pointer to its own storage.
    using E = std::remove_all_extents_t<T>;
    SetPointer(interp, reinterpret_cast<E *>(&member), TypeString<E *>());
  } else {
    Result<T>::write(interp, member);
  }
}

template <Text Name, Text Tail, auto M>
struct Getter {
  using C = typename MemberOf<decltype(M)>::Class;
  static int Proc(ClientData, Tcl_Interp *interp, int argc, const char *argv[]) {
    if (argc != 2) return UsageError(interp, UsageText<Name, Tail>());
    C *obj = nullptr;
    if (!Arg<C &>::parse(argv[1], obj)) return TypeError(interp, 1, Name.value, Arg<C &>::type(), argv[1]);
    WriteMember<C>(interp, obj->*M);
    return TCL_OK;
  }
};

template <Text Name, Text Tail, auto M>
struct Setter {
  using C = typename MemberOf<decltype(M)>::Class;
  using T = typename MemberOf<decltype(M)>::Type;
  static int Proc(ClientData, Tcl_Interp *interp, int argc, const char *argv[]) {
    if (argc != 3) return UsageError(interp, UsageText<Name, Tail>());
    C *obj = nullptr;
    if (!Arg<C &>::parse(argv[1], obj)) return TypeError(interp, 1, Name.value, Arg<C &>::type(), argv[1]);
    if constexpr (std::is_same_v<T, char *>) {
      // Text members own a copy of the word.
      delete[] (obj->*M);
      std::size_t n = std::strlen(argv[2]);
      obj->*M = new char[n + 1];
      std::memcpy(obj->*M, argv[2], n + 1);
      SetString(interp, argv[2]);
    } else {
      typename Arg<T>::Stored value{};
      if (!Arg<T>::parse(argv[2], value)) return TypeError(interp, 2, Name.value, ArgType<Arg<T>>(), argv[2]);
      obj->*M = Arg<T>::get(value);
      WriteMember<C>(interp, obj->*M);
    }
    return TCL_OK;
  }
};

template <Text Name, Text Tail, auto M>
constexpr Row getter{RowKind::Getter, Name.value, &Getter<Name, Tail, M>::Proc, nullptr};
template <Text Name, Text Tail, auto M>
constexpr Row setter{RowKind::Setter, Name.value, &Setter<Name, Tail, M>::Proc, nullptr};

// A hand-written procedure.
constexpr Row custom(RowKind kind, const char *name, Tcl_CmdProc *proc) { return Row{kind, name, proc, nullptr}; }

// Parses the object word of a hand-written method: false (with the type
// error installed) when it does not name an object of the class.
template <class C>
bool TakeObject(Tcl_Interp *interp, const char *cmd, const char *word, C *&obj) {
  if (Arg<C &>::parse(word, obj)) return true;
  TypeError(interp, 1, cmd, Arg<C &>::type(), word);
  return false;
}

}  // namespace hk
