// Typed pointer strings and the module-wide type-equivalence map.
//
// A typed pointer string is "_" + lower-case hex address + type string
// ("_1f2a3b40_hcFigure_p"), or "NULL" for a null address.  A type string is
// "_" + type name + one "_p" per level of indirection.
//
// The map records which type strings may stand for which others: a head per
// expected-side type name, each with a chain of substitutes and their cast
// functions.  Lookups sort the heads once, keep start indexes by the second
// character, and remember the most recent substitution in a one-slot cache.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace hk {

using CastFn = void *(*)(void *);

// Writes the typed pointer string of addr into dst, which must hold at least
// kMaxPointerString bytes when the type string is shorter than 200 characters.
// Longer type strings are cut so that dst never overflows.  Answers the
// length written.
constexpr std::size_t kMaxPointerString = 256;
int MakePointer(char *dst, const void *addr, const char *type);

// Same, for type strings of any length.
std::string MakePointerString(const void *addr, const char *type);

// Checks text against the expected type string (or accepts any type when
// expected is null).  Returns nullptr on success, with *addr set to the
// (cast) address; on failure returns a pointer into text: to the given type
// that follows the hex digits, or to text itself when it does not begin
// with "_".  *addr is written in every case but one: a chain name of 255 or
// more characters fails without writing it.
const char *CheckPointer(const char *text, void **addr, const char *expected);

// Records that a pointer of type substitute (plus any "_p" suffix) may stand
// where expected (plus the same suffix) is wanted, applying cast if given.
// The strings are not copied and must live for the process.
void RegisterType(const char *expected, const char *substitute, CastFn cast);

// Registers the fixed content of the map: the class hierarchy with its casts,
// the "_class_" forms and the type-name equivalences.
void RegisterBuiltinTypes();

// Introspection for unit tests.
namespace typemap_debug {
struct CacheEntry {
  int hits;
  std::string expected;
  std::string given;
};
int HeadCount();
int RegistrationCount();  // calls of RegisterType so far
int ChainLength(const char *head);  // nodes after the head, -1 if no head
CacheEntry Cache(int slot);
int CacheSlots();
void Reset();  // drops every registration (tests only)
}  // namespace typemap_debug

}  // namespace hk
