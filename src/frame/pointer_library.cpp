// The pointer library (ptrcast ptrvalue ptrset ptrcreate ptrfree ptradd
// ptrmap) and the typed array commands (int_, double_, float_ and string_
// with array, destroy, get and set).
//
// Scripts use these to obtain, fill, read and release plain memory that host
// operations take as pointers.  ptrcreate memory comes from the C allocator
// and goes back through ptrfree; _array memory comes from new[] and goes back
// through the matching _destroy.
#include <cctype>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <type_traits>
#include <unordered_set>
#include <vector>

#include "frame/blocks.h"
#include "frame/command.h"
#include "frame/registry.h"
#include "frame/typed_pointer.h"

namespace hk {
namespace {

// Largest block any command here allocates; larger or negative requests are
// answered as out of memory instead of reaching the allocator.
constexpr std::size_t kMaxBytes = INT_MAX;

// ---------------------------------------------------------------------------
// Result and message helpers.

int Fail(Tcl_Interp *interp, const char *message) {
  Tcl_SetResult(interp, const_cast<char *>(message), TCL_STATIC);
  return TCL_ERROR;
}

// Pointer text for an address that may be zero: zero keeps the type as
// "_0" + type instead of becoming "NULL".
void SetRelabelled(Tcl_Interp *interp, std::uintptr_t addr, const char *type) {
  if (addr == 0)
    SetString(interp, (std::string("_0") + type).c_str());
  else
    SetPointer(interp, reinterpret_cast<const void *>(addr), type);
}

// Integer words: decimal with optional sign and leading blanks, trailing
// junk ignored, non-numbers 0.  strtol clamps where atol would overflow.
long WordToLong(const char *word) { return ParseLong(word); }
double WordToDouble(const char *word) { return std::strtod(word, nullptr); }

// Converted values that the interpreter rejected are stored as 0; its
// conversion message stays in the result.
int ScriptInt(Tcl_Interp *interp, const char *word) {
  int value = 0;
  if (Tcl_GetInt(interp, word, &value) != TCL_OK) value = 0;
  return value;
}

double ScriptDouble(Tcl_Interp *interp, const char *word) {
  double value = 0.0;
  if (Tcl_GetDouble(interp, word, &value) != TCL_OK) value = 0.0;
  return value;
}

// "int *" -> "_int_p": blanks become "_", "*" and "&" become "p".
std::string ConvertTypeName(const char *name) {
  std::string out = "_";
  for (const char *c = name; *c; ++c) {
    if (std::isspace(static_cast<unsigned char>(*c)))
      out += '_';
    else if (*c == '*' || *c == '&')
      out += 'p';
    else
      out += *c;
  }
  return out;
}

bool Checks(const char *text, const char *type) {
  void *ignored;
  return CheckPointer(text, &ignored, type) == nullptr;
}

// Byte count of n elements of elem bytes plus extra elements, or false when
// n is negative or the block would exceed kMaxBytes.
bool BlockSize(long n, std::size_t elem, long extra, std::size_t *bytes) {
  if (n < 0) return false;
  if (static_cast<unsigned long>(n) > kMaxBytes / elem - extra) return false;
  *bytes = elem * static_cast<std::size_t>(n + extra);
  return true;
}

// ---------------------------------------------------------------------------
// Element types of the pointer library.  "long" cells are 4 bytes wide, as
// their stride and allocation size are.

using IntCell = std::int32_t;
using ShortCell = std::int16_t;
using LongCell = std::int32_t;

// Element type named by a pointer string's own type, tried in this order.
const char *InferType(const char *ptr) {
  static const char *const kOrder[][2] = {
      {"_int_p", "int"},     {"_double_p", "double"}, {"_short_p", "short"},
      {"_long_p", "long"},   {"_float_p", "float"},   {"_char_p", "char"},
      {"_char_pp", "char *"},
  };
  for (const auto &entry : kOrder)
    if (Checks(ptr, entry[0])) return entry[1];
  return nullptr;
}

// Size of one element of a pointer-library type name; 0 for unknown names.
std::size_t ElementSize(const char *type) {
  static const struct {
    const char *name;
    std::size_t size;
  } kSizes[] = {
      {"int", sizeof(IntCell)},  {"short", sizeof(ShortCell)}, {"long", sizeof(LongCell)},
      {"double", sizeof(double)}, {"float", sizeof(float)},     {"char", 1},
      {"char *", sizeof(char *)},
  };
  if (!type) return 0;
  for (const auto &entry : kSizes)
    if (std::strcmp(type, entry.name) == 0) return entry.size;
  return 0;
}

// Bounds of an element access through addr: TCL_OK when addr lies in no
// block the module allocated (host memory is not checked) or the element
// lies inside the block it does lie in.
int CheckElement(Tcl_Interp *interp, const char *cmd, const void *addr, long index,
                 std::size_t size, bool write) {
  const Block *block = FindBlock(addr);
  if (!block || !size || ElementsInside(*block, addr, index, size, write)) return TCL_OK;
  return OutsideBlock(interp, cmd, index, *block);
}

// Texts this library put into char * cells.  A cell may also hold a pointer
// the host wrote there (a text of its own, or a place inside a text it was
// given): only the library's own texts are ever released.
std::unordered_set<const void *> &OwnedTexts() {
  // Never destroyed: texts may be released while the process exits.
  static auto *texts = new std::unordered_set<const void *>;
  return *texts;
}

// A C-allocator copy of text, released with ReleaseText.
char *MallocCopy(const char *text) {
  std::size_t n = std::strlen(text) + 1;
  auto *copy = static_cast<char *>(std::malloc(n));
  if (copy) {
    std::memcpy(copy, text, n);
    OwnedTexts().insert(copy);
  }
  return copy;
}

void ReleaseText(char *text) {
  if (text && OwnedTexts().erase(text)) std::free(text);
}

bool Is(const char *type, const char *name) { return type && std::strcmp(type, name) == 0; }

// Keeps converted type strings for the life of the process: the type map
// holds on to them.  The store itself is never destroyed.
const char *KeepTypeString(const std::string &text) {
  static auto *kept = new std::vector<char *>;
  for (char *s : *kept)
    if (text == s) return s;
  char *copy = new char[text.size() + 1];
  std::memcpy(copy, text.c_str(), text.size() + 1);
  kept->push_back(copy);
  return copy;
}

// ---------------------------------------------------------------------------
// Pointer library.

// ptrcast ptr type: relabels an address (an integer or a pointer string).
int PtrCast(ClientData, Tcl_Interp *interp, int argc, const char *argv[]) {
  if (argc != 3) return WrongArgs(interp, "ptrcast", "ptr type ");
  std::string type = ConvertTypeName(argv[2]);
  std::uintptr_t addr;
  int number;
  if (Tcl_GetInt(nullptr, argv[1], &number) == TCL_OK) {
    addr = static_cast<std::uintptr_t>(static_cast<std::intptr_t>(number));
  } else {
    void *p;
    if (CheckPointer(argv[1], &p, nullptr))
      return Fail(interp, "Type error in ptrcast. Argument is not a valid pointer value.");
    addr = reinterpret_cast<std::uintptr_t>(p);
  }
  SetRelabelled(interp, addr, type.c_str());
  return TCL_OK;
}

// ptrvalue ptr ?index? ?type?: reads one element.
int PtrValue(ClientData, Tcl_Interp *interp, int argc, const char *argv[]) {
  if (argc < 2 || argc > 4) return WrongArgs(interp, "ptrvalue", "ptr ?index? ?type? ");
  long index = argc > 2 ? WordToLong(argv[2]) : 0;
  const char *type = argc > 3 && argv[3][0] ? argv[3] : nullptr;
  void *addr;
  if (CheckPointer(argv[1], &addr, nullptr))
    return Fail(interp, "Type error in ptrvalue. Argument is not a valid pointer value.");
  if (!type) type = InferType(argv[1]);
  if (!addr) return Fail(interp, "Unable to dereference NULL pointer.");
  if (CheckElement(interp, "ptrvalue", addr, index, ElementSize(type), false) != TCL_OK) return TCL_ERROR;

  if (Is(type, "int")) {
    SetLong(interp, static_cast<IntCell *>(addr)[index]);
  } else if (Is(type, "short")) {
    SetLong(interp, static_cast<ShortCell *>(addr)[index]);
  } else if (Is(type, "long")) {
    SetLong(interp, static_cast<LongCell *>(addr)[index]);
  } else if (Is(type, "double")) {
    SetDouble(interp, static_cast<double *>(addr)[index]);
  } else if (Is(type, "float")) {
    SetDouble(interp, static_cast<float *>(addr)[index]);
  } else if (Is(type, "char")) {
    const char *text = static_cast<char *>(addr) + index;
    if (const Block *block = FindBlock(addr)) {
      // Text in a module block ends at its first zero byte or at the block's end.
      std::size_t room = block->readable - static_cast<std::size_t>(text - block->start);
      SetString(interp, std::string(text, strnlen(text, room)).c_str());
    } else {
      SetString(interp, text);
    }
  } else if (Is(type, "char *")) {
    const char *element = static_cast<char **>(addr)[index];
    SetString(interp, element ? element : "NULL");
  } else {
    return Fail(interp, "Unable to dereference unsupported datatype.");
  }
  return TCL_OK;
}

// ptrset ptr value ?index? ?type?: writes one element.
int PtrSet(ClientData, Tcl_Interp *interp, int argc, const char *argv[]) {
  if (argc < 3 || argc > 5) return WrongArgs(interp, "ptrset", "ptr value ?index? ?type? ");
  const char *value = argv[2];
  long index = argc > 3 ? WordToLong(argv[3]) : 0;
  void *addr;
  if (CheckPointer(argv[1], &addr, nullptr))
    return Fail(interp, "Type error in ptrset. Argument is not a valid pointer value.");
  // An empty type word is taken as given (and so is unsupported).
  const char *type = argc > 4 ? argv[4] : InferType(argv[1]);
  if (!addr) return Fail(interp, "Unable to set NULL pointer.");
  // A text written into a char block needs room for its terminating zero.
  std::size_t count = Is(type, "char") ? std::strlen(value) + 1 : 1;
  if (const Block *block = FindBlock(addr); block && ElementSize(type) &&
      !ElementsInside(*block, addr, index, ElementSize(type), true, count)) {
    if (count > 1 && ElementsInside(*block, addr, index, 1, true))
      return Fail(interp, "ptrset: the text does not fit in the block");
    return OutsideBlock(interp, "ptrset", index, *block);
  }

  if (Is(type, "int")) {
    static_cast<IntCell *>(addr)[index] = ScriptInt(interp, value);
  } else if (Is(type, "short")) {
    static_cast<ShortCell *>(addr)[index] = static_cast<ShortCell>(ScriptInt(interp, value));
  } else if (Is(type, "long")) {
    static_cast<LongCell *>(addr)[index] = ScriptInt(interp, value);
  } else if (Is(type, "double")) {
    static_cast<double *>(addr)[index] = ScriptDouble(interp, value);
  } else if (Is(type, "float")) {
    static_cast<float *>(addr)[index] = static_cast<float>(ScriptDouble(interp, value));
  } else if (Is(type, "char")) {
    std::strcpy(static_cast<char *>(addr) + index, value);
  } else if (Is(type, "char *")) {
    char *&slot = static_cast<char **>(addr)[index];
    ReleaseText(slot);
    slot = std::strcmp(value, "NULL") == 0 ? nullptr : MallocCopy(value);
  } else {
    return Fail(interp, "Unable to set unsupported datatype.");
  }
  return TCL_OK;
}

// ptrcreate type ?value? ?nitems?: allocates (zero-filled) C-allocator
// memory, optionally filled with value.
int PtrCreate(ClientData, Tcl_Interp *interp, int argc, const char *argv[]) {
  if (argc < 2 || argc > 4) return WrongArgs(interp, "ptrcreate", "type ?value? ?nitems? ");
  struct Kind {
    const char *name;
    const char *typeString;
    std::size_t size;
  };
  static const Kind kKinds[] = {
      {"int", "_int_p", sizeof(IntCell)},      {"short", "_short_p", sizeof(ShortCell)},
      {"long", "_long_p", sizeof(LongCell)},   {"double", "_double_p", sizeof(double)},
      {"float", "_float_p", sizeof(float)},    {"char", "_char_p", 1},
      {"char *", "_char_pp", sizeof(char *)},  {"void", "_void_p", 1},
  };
  const char *type = argv[1];
  const char *value = argc > 2 ? argv[2] : nullptr;
  long nitems = argc > 3 ? WordToLong(argv[3]) : 1;

  const Kind *kind = nullptr;
  for (const Kind &k : kKinds)
    if (Is(type, k.name)) kind = &k;
  if (!kind) return Fail(interp, "Unable to create unknown datatype.");
  bool table = Is(type, "char *");  // one extra slot holds the terminating null

  std::size_t bytes;
  if (!BlockSize(nitems, kind->size, table ? 1 : 0, &bytes))
    return Fail(interp, "Out of memory in ptrcreate.");
  void *block = std::calloc(bytes ? bytes : 1, 1);
  if (!block) return Fail(interp, "Out of memory in ptrcreate.");

  if (value) {
    if (Is(type, "int") || Is(type, "long")) {
      IntCell v = ScriptInt(interp, value);
      for (long i = 0; i < nitems; ++i) static_cast<IntCell *>(block)[i] = v;
    } else if (Is(type, "short")) {
      auto v = static_cast<ShortCell>(ScriptInt(interp, value));
      for (long i = 0; i < nitems; ++i) static_cast<ShortCell *>(block)[i] = v;
    } else if (Is(type, "double")) {
      double v = ScriptDouble(interp, value);
      for (long i = 0; i < nitems; ++i) static_cast<double *>(block)[i] = v;
    } else if (Is(type, "float")) {
      auto v = static_cast<float>(ScriptDouble(interp, value));
      for (long i = 0; i < nitems; ++i) static_cast<float *>(block)[i] = v;
    } else if (Is(type, "char")) {
      // At most nitems - 1 characters; the zero-filled last byte ends the text.
      if (nitems > 0) std::strncpy(static_cast<char *>(block), value, nitems - 1);
    } else if (table) {
      for (long i = 0; i < nitems; ++i) static_cast<char **>(block)[i] = MallocCopy(value);
    }
  }
  RememberBlock(block, kind->size * static_cast<std::size_t>(nitems), bytes, kind->size,
                BlockOrigin::kPtrCreate);
  SetPointer(interp, block, kind->typeString);
  return TCL_OK;
}

// ptrfree ptr: releases ptrcreate memory (and a string table's strings).
int PtrFree(ClientData, Tcl_Interp *interp, int argc, const char *argv[]) {
  if (argc != 2) return WrongArgs(interp, "ptrfree", "ptr ");
  void *addr;
  if (CheckPointer(argv[1], &addr, nullptr))
    return Fail(interp, "Type error in ptrfree. Argument is not a valid pointer value.");
  if (const Block *block = FindBlock(addr)) {
    if (block->start != addr || block->origin != BlockOrigin::kPtrCreate)
      return Fail(interp, "ptrfree: the address is not the start of a block made by ptrcreate");
    ForgetBlock(addr);
  }
  if (addr && Checks(argv[1], "_char_pp"))
    for (char **slot = static_cast<char **>(addr); *slot; ++slot) ReleaseText(*slot);
  std::free(addr);
  return TCL_OK;
}

// ptradd ptr offset: moves an address by offset elements of the pointer's
// own type (bytes for types without a known element size).
int PtrAdd(ClientData, Tcl_Interp *interp, int argc, const char *argv[]) {
  if (argc != 3) return WrongArgs(interp, "ptradd", "ptr offset ");
  const char *ptr = argv[1];
  long offset = WordToLong(argv[2]);
  // "NULL" checks but has no type part to keep, so it is refused as well.
  void *addr;
  if (ptr[0] != '_' || CheckPointer(ptr, &addr, nullptr))
    return Fail(interp, "Type error in ptradd. Argument is not a valid pointer value.");
  static const struct {
    const char *type;
    unsigned long stride;
  } kStrides[] = {
      {"_int_p", sizeof(IntCell)},  {"_double_p", sizeof(double)}, {"_short_p", sizeof(ShortCell)},
      {"_long_p", sizeof(LongCell)}, {"_float_p", sizeof(float)},   {"_char_p", 1},
  };
  unsigned long stride = 1;
  for (const auto &s : kStrides) {
    if (Checks(ptr, s.type)) {
      stride = s.stride;
      break;
    }
  }
  const char *given = ptr + 1;
  while (std::isxdigit(static_cast<unsigned char>(*given))) ++given;
  if (const Block *block = FindBlock(addr)) {
    // Within a module block, the result stays inside it or one past its end.
    __int128 at = static_cast<__int128>(static_cast<const char *>(addr) - block->start) +
                  static_cast<__int128>(offset) * static_cast<__int128>(stride);
    if (at < 0 || at > static_cast<__int128>(block->readable)) {
      std::size_t count = block->elemSize ? block->bytes / block->elemSize : block->bytes;
      std::string message = "ptradd: offset " + std::to_string(offset) +
                            " is outside the block of " + std::to_string(count) +
                            (count == 1 ? " element" : " elements");
      SetString(interp, message.c_str());
      return TCL_ERROR;
    }
  }
  // Unsigned arithmetic: the address wraps instead of overflowing.
  std::uintptr_t moved = reinterpret_cast<std::uintptr_t>(addr) +
                         static_cast<std::uintptr_t>(offset) * stride;
  SetRelabelled(interp, moved, given);
  return TCL_OK;
}

// ptrmap type1 type2: lets each type stand for the other from now on.
int PtrMap(ClientData, Tcl_Interp *interp, int argc, const char *argv[]) {
  if (argc != 3) return WrongArgs(interp, "ptrmap", "type1 type2 ");
  const char *first = KeepTypeString(ConvertTypeName(argv[1]));
  const char *second = KeepTypeString(ConvertTypeName(argv[2]));
  RegisterType(first, second, nullptr);
  RegisterType(second, first, nullptr);
  return TCL_OK;
}

// ---------------------------------------------------------------------------
// Typed arrays.  A kind names its commands, its element and its type string;
// the string kind owns its texts and keeps one terminating null slot past
// the last element, so the release walk always ends inside the array.

struct IntArray {
  using Element = IntCell;
  static constexpr const char *kType = "_int_p";
  static constexpr const char *kArray = "int_array", *kDestroy = "int_destroy",
                              *kGet = "int_get", *kSet = "int_set";
};
struct DoubleArray {
  using Element = double;
  static constexpr const char *kType = "_double_p";
  static constexpr const char *kArray = "double_array", *kDestroy = "double_destroy",
                              *kGet = "double_get", *kSet = "double_set";
};
struct FloatArray {
  using Element = float;
  static constexpr const char *kType = "_float_p";
  static constexpr const char *kArray = "float_array", *kDestroy = "float_destroy",
                              *kGet = "float_get", *kSet = "float_set";
};
struct StringArray {
  using Element = char *;
  static constexpr const char *kType = "_char_pp";
  static constexpr const char *kArray = "string_array", *kDestroy = "string_destroy",
                              *kGet = "string_get", *kSet = "string_set";
};

template <class K>
constexpr bool kOwnsText = std::is_same_v<typename K::Element, char *>;

template <class K>
void SetElement(Tcl_Interp *interp, typename K::Element value) {
  if constexpr (kOwnsText<K>)
    SetString(interp, value);
  else if constexpr (std::is_integral_v<typename K::Element>)
    SetLong(interp, value);
  else
    SetDouble(interp, value);
}

// Checks the array word of a destroy, get or set command.
template <class K>
int CheckArray(Tcl_Interp *interp, const char *cmd, const char *word,
               typename K::Element **array) {
  void *addr;
  if (CheckPointer(word, &addr, K::kType)) return TypeError(interp, 1, cmd, K::kType, word);
  if (!addr) return Fail(interp, "Received a NULL Pointer");
  *array = static_cast<typename K::Element *>(addr);
  return TCL_OK;
}

template <class K>
int ArrayNew(ClientData, Tcl_Interp *interp, int argc, const char *argv[]) {
  if (argc != 2) return WrongArgs(interp, K::kArray, "nitems ");
  long nitems = WordToLong(argv[1]);
  using E = typename K::Element;
  long extra = kOwnsText<K> ? 1 : 0;
  std::size_t bytes;
  if (!BlockSize(nitems, sizeof(E), extra, &bytes)) return Fail(interp, "Out of memory.");
  E *array = new (std::nothrow) E[nitems + extra]();
  if (!array) return Fail(interp, "Out of memory.");
  RememberBlock(array, sizeof(E) * static_cast<std::size_t>(nitems), bytes, sizeof(E),
                BlockOrigin::kArray);
  SetPointer(interp, array, K::kType);
  return TCL_OK;
}

template <class K>
int ArrayDestroy(ClientData, Tcl_Interp *interp, int argc, const char *argv[]) {
  if (argc != 2) return WrongArgs(interp, K::kDestroy, "array ");
  typename K::Element *array = nullptr;
  if (CheckArray<K>(interp, K::kDestroy, argv[1], &array) != TCL_OK) return TCL_ERROR;
  if (const Block *block = FindBlock(array)) {
    if (block->start != reinterpret_cast<const char *>(array) ||
        block->origin != BlockOrigin::kArray || block->elemSize != sizeof(*array)) {
      std::string message = std::string(K::kDestroy) + ": the address is not the start of a block made by " + K::kArray;
      SetString(interp, message.c_str());
      return TCL_ERROR;
    }
    ForgetBlock(array);
  }
  if constexpr (kOwnsText<K>)
    for (char **slot = array; *slot; ++slot) ReleaseText(*slot);
  delete[] array;
  return TCL_OK;
}

template <class K>
int ArrayGet(ClientData, Tcl_Interp *interp, int argc, const char *argv[]) {
  if (argc != 3) return WrongArgs(interp, K::kGet, "array index ");
  typename K::Element *array = nullptr;
  if (CheckArray<K>(interp, K::kGet, argv[1], &array) != TCL_OK) return TCL_ERROR;
  long index = WordToLong(argv[2]);
  if (CheckElement(interp, K::kGet, array, index, sizeof(*array), false) != TCL_OK) return TCL_ERROR;
  SetElement<K>(interp, array[index]);
  return TCL_OK;
}

template <class K>
int ArraySet(ClientData, Tcl_Interp *interp, int argc, const char *argv[]) {
  if (argc != 4) return WrongArgs(interp, K::kSet, "array index value ");
  typename K::Element *array = nullptr;
  if (CheckArray<K>(interp, K::kSet, argv[1], &array) != TCL_OK) return TCL_ERROR;
  long index = WordToLong(argv[2]);
  if (CheckElement(interp, K::kSet, array, index, sizeof(*array), true) != TCL_OK) return TCL_ERROR;
  auto &slot = array[index];
  const char *value = argv[3];
  if constexpr (kOwnsText<K>) {
    ReleaseText(slot);
    slot = *value ? MallocCopy(value) : nullptr;
  } else if constexpr (std::is_integral_v<typename K::Element>) {
    slot = static_cast<typename K::Element>(WordToLong(value));
  } else {
    slot = static_cast<typename K::Element>(WordToDouble(value));
  }
  SetElement<K>(interp, slot);
  return TCL_OK;
}

template <class K>
void AddArrayCommands(std::vector<CommandEntry> &out) {
  out.push_back({K::kArray, ArrayNew<K>});
  out.push_back({K::kDestroy, ArrayDestroy<K>});
  out.push_back({K::kGet, ArrayGet<K>});
  out.push_back({K::kSet, ArraySet<K>});
}

std::vector<CommandEntry> BuildCommands() {
  std::vector<CommandEntry> out = {
      {"ptrcast", PtrCast}, {"ptrvalue", PtrValue}, {"ptrset", PtrSet},
      {"ptrcreate", PtrCreate}, {"ptrfree", PtrFree}, {"ptradd", PtrAdd},
      {"ptrmap", PtrMap},
  };
  AddArrayCommands<IntArray>(out);
  AddArrayCommands<DoubleArray>(out);
  AddArrayCommands<FloatArray>(out);
  AddArrayCommands<StringArray>(out);
  return out;
}

}  // namespace

const std::vector<CommandEntry> &PointerLibraryCommands() {
  static const std::vector<CommandEntry> commands = BuildCommands();
  return commands;
}

}  // namespace hk
