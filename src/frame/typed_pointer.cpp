#include "frame/typed_pointer.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <string_view>
#include <unordered_map>

#include "frame/hierarchy.h"

namespace hk {
namespace {

// One record of the map: a head of the table, or a node of a head's chain.
struct MapEntry {
  const char *name;
  int len;
  CastFn cast;
  MapEntry *next;
};

constexpr int kNameBuffer = 256;  // longest type name a lookup compares
constexpr int kCacheSlots = 8;

struct CacheEntry {
  int hits;
  MapEntry *node;
  char expected[kNameBuffer];
  char given[kNameBuffer];
};

MapEntry *heads = nullptr;
int headCount = 0;
int headCapacity = 64;
bool sorted = false;
int startIndex[256];
CacheEntry cache[kCacheSlots];
int cacheInsert = 0;
int cacheProbe = 0;
int registrations = 0;
// Where each head's name sits in heads, so that registering finds a head
// without scanning the table.
std::unordered_map<std::string_view, int> headIndex;

int CompareHeads(const void *a, const void *b) {
  return std::strcmp(static_cast<const MapEntry *>(a)->name,
                     static_cast<const MapEntry *>(b)->name);
}

void SortHeads() {
  std::qsort(heads, headCount, sizeof(MapEntry), CompareHeads);
  headIndex.clear();
  for (int i = 0; i < headCount; ++i) headIndex.emplace(heads[i].name, i);
  for (int &s : startIndex) s = headCount;
  for (int i = headCount - 1; i >= 0; --i)
    startIndex[static_cast<unsigned char>(heads[i].name[1])] = i;
  for (int i = 255; i >= 1; --i)
    if (startIndex[i - 1] > startIndex[i]) startIndex[i - 1] = startIndex[i];
  sorted = true;
  for (auto &c : cache) c.hits = 0;
}

// Copies src into a cache field; false when it does not fit.
bool CacheCopy(char (&dst)[kNameBuffer], const char *src) {
  std::size_t n = std::strlen(src);
  if (n >= kNameBuffer) return false;
  std::memcpy(dst, src, n + 1);
  return true;
}

// The value of each hexadecimal digit, -1 for every other character.
constexpr auto kHexValue = [] {
  std::array<signed char, 256> t{};
  for (auto &v : t) v = -1;
  for (int i = 0; i < 10; ++i) t['0' + i] = static_cast<signed char>(i);
  for (int i = 0; i < 6; ++i) t['a' + i] = t['A' + i] = static_cast<signed char>(10 + i);
  return t;
}();

void *ApplyCast(MapEntry *node, void *addr) {
  return node->cast ? node->cast(addr) : addr;
}

}  // namespace

int MakePointer(char *dst, const void *addr, const char *type) {
  auto value = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(addr));
  if (value == 0) {
    std::memcpy(dst, "NULL", 5);
    return 4;
  }
  static constexpr char kDigits[] = "0123456789abcdef";
  const int n = (67 - __builtin_clzll(value)) / 4;  // hex digits without leading zeros
  dst[0] = '_';
  for (int i = n; i > 0; --i, value >>= 4) dst[i] = kDigits[value & 0xf];
  const int out = n + 1;
  std::size_t room = kMaxPointerString - 1 - static_cast<std::size_t>(out);
  std::size_t tlen = std::strlen(type);
  if (tlen > room) tlen = room;
  std::memcpy(dst + out, type, tlen);
  dst[out + tlen] = '\0';
  return out + static_cast<int>(tlen);
}

std::string MakePointerString(const void *addr, const char *type) {
  if (!addr) return "NULL";
  char head[kMaxPointerString];
  MakePointer(head, addr, "");
  return std::string(head) + type;
}

const char *CheckPointer(const char *text, void **addr, const char *expected) {
  if (*text != '_') {
    *addr = nullptr;
    return std::strcmp(text, "NULL") == 0 ? nullptr : text;
  }
  const char *c = text + 1;
  std::uint64_t value = 0;
  for (int d; (d = kHexValue[static_cast<unsigned char>(*c)]) >= 0; ++c) value = value * 16 + static_cast<unsigned>(d);
  const char *given = c;
  void *raw = reinterpret_cast<void *>(static_cast<std::uintptr_t>(value));
  if (!expected || std::strcmp(given, expected) == 0) {
    *addr = raw;
    return nullptr;
  }
  if (!heads) {
    *addr = raw;
    return given;
  }
  if (!sorted) SortHeads();

  for (int probed = 0; probed < kCacheSlots; ++probed) {
    CacheEntry &entry = cache[cacheProbe];
    if (entry.hits && std::strcmp(entry.expected, expected) == 0 &&
        std::strcmp(entry.given, given) == 0) {
      ++entry.hits;
      *addr = ApplyCast(entry.node, raw);
      return nullptr;
    }
    cacheProbe = (cacheProbe + 1) % kCacheSlots;
  }

  auto key = static_cast<unsigned char>(expected[0] ? expected[1] : 0);
  int first = startIndex[key];
  int last = key < 255 ? startIndex[key + 1] : headCount;
  int h = first;
  while (h < last && std::strncmp(heads[h].name, expected, heads[h].len) != 0) ++h;
  if (h >= last) {
    *addr = raw;
    return given;
  }
  for (; h < headCount && std::strncmp(heads[h].name, expected, heads[h].len) == 0; ++h) {
    const char *suffix = expected + heads[h].len;
    for (MapEntry *node = heads[h].next; node; node = node->next) {
      if (node->len >= kNameBuffer - 1) return given;
      char candidate[kNameBuffer];
      std::memcpy(candidate, node->name, node->len);
      std::size_t room = kNameBuffer - 1 - node->len;
      std::size_t slen = std::strlen(suffix);
      if (slen > room) slen = room;
      std::memcpy(candidate + node->len, suffix, slen);
      candidate[node->len + slen] = '\0';
      if (std::strcmp(candidate, given) != 0) continue;
      CacheEntry &slot = cache[cacheInsert];
      if (CacheCopy(slot.given, given) && CacheCopy(slot.expected, expected)) {
        slot.hits = 1;
        slot.node = node;
      } else {
        slot.hits = 0;
      }
      // The insertion index is masked but never advanced: every new entry
      // lands in the first slot and replaces the previous one.
      cacheInsert &= kCacheSlots - 1;
      *addr = ApplyCast(node, raw);
      return nullptr;
    }
  }
  *addr = raw;
  return given;
}

void RegisterType(const char *expected, const char *substitute, CastFn cast) {
  ++registrations;
  if (!heads) {
    heads = static_cast<MapEntry *>(std::malloc(headCapacity * sizeof(MapEntry)));
    headCount = 0;
  }
  if (headCount >= headCapacity) {
    headCapacity *= 2;
    heads = static_cast<MapEntry *>(std::realloc(heads, headCapacity * sizeof(MapEntry)));
  }
  MapEntry *head = nullptr;
  if (auto found = headIndex.find(expected); found != headIndex.end()) head = &heads[found->second];
  if (!head) {
    headIndex.emplace(expected, headCount);
    head = &heads[headCount++];
    *head = {expected, static_cast<int>(std::strlen(expected)), nullptr, nullptr};
    sorted = false;
  }
  // The last node of the chain is never compared, so registering the same
  // pair twice can append a second, harmless node.
  MapEntry *record = head;
  while (record->next) {
    if (std::strcmp(record->name, substitute) == 0) {
      if (cast) record->cast = cast;
      return;
    }
    record = record->next;
  }
  record->next = new MapEntry{substitute, static_cast<int>(std::strlen(substitute)), cast, nullptr};
  sorted = false;
}

namespace {

// Every wrapped class has a single base at the start of its layout, so an
// upcast keeps the address.
void *UpcastSameAddress(void *p) { return p; }

const char *Keep(std::string s) {
  static std::deque<std::string> names;
  names.push_back(std::move(s));
  return names.back().c_str();
}

}  // namespace

void RegisterBuiltinTypes() {
  static const char *plain[kWrappedClasses];
  static const char *klass[kWrappedClasses];
  static bool made = false;
  auto classes = WrappedClasses();
  if (!made) {
    for (std::size_t i = 0; i < classes.size(); ++i) {
      plain[i] = Keep(std::string("_") + classes[i].name);
      klass[i] = Keep(std::string("_class_") + classes[i].name);
    }
    made = true;
  }
  auto indexOf = [&](const char *name) {
    for (std::size_t i = 0; i < classes.size(); ++i)
      if (std::strcmp(classes[i].name, name) == 0) return i;
    return classes.size();
  };
  for (std::size_t i = 0; i < classes.size(); ++i) {
    RegisterType(plain[i], klass[i], nullptr);
    RegisterType(klass[i], plain[i], nullptr);
  }
  for (std::size_t d = 0; d < classes.size(); ++d) {
    for (const char *a = classes[d].base; a; a = BaseOf(a)) {
      std::size_t ai = indexOf(a);
      RegisterType(plain[ai], klass[d], UpcastSameAddress);
      RegisterType(plain[ai], plain[d], UpcastSameAddress);
      RegisterType(klass[ai], klass[d], UpcastSameAddress);
      RegisterType(klass[ai], plain[d], UpcastSameAddress);
    }
  }
  static const char *const kEquivalent[][2] = {
      {"_signed_long", "_Boolean"},
      {"_signed_long", "_long"},
      {"_long", "_Boolean"},
      {"_long", "_unsigned_long"},
      {"_Boolean", "_unsigned_long"},
      {"_signed_int", "_int"},
      {"_unsigned_int", "_int"},
      {"_signed_short", "_short"},
      {"_unsigned_short", "_short"},
      {"_Vector", "_float_p"},
      {"_ListJoint", "_hList_p"},
      {"_ListJoint", "_List"},
      {"_List", "_hList_p"},
      {"_meshList", "_list<_hcMeshGeometry*_>"},
      {"_segList", "_list<_hcSegment*_>"},
      {"_landmarkList", "_list<_hcLandmarkImpl*_>"},
      {"_intList", "_list<_int_>"},
      {"_vertexList", "_STLLIST<_int_>"},
      {"_twistBoneList", "_STLLIST<_hcTwistBone*_>"},
      {"_twistLinkList", "_STLLIST<_hcTwistLink*_>"},
      {"_vertexMap", "_map<_hcMeshGeometry*,vertexList_>"},
      {"_boneIndexMap", "_map<_hcTwistBone*,int_>"},
      {"_intArray", "_map<_int,int_>"},
      {"_hcBoundChannelSet", "_BoundChannelSet"},
      {"_class_hcBoundChannelSet", "_BoundChannelSet"},
  };
  for (const auto &pair : kEquivalent) {
    RegisterType(pair[0], pair[1], nullptr);
    RegisterType(pair[1], pair[0], nullptr);
  }
}

namespace typemap_debug {

int HeadCount() { return headCount; }
int RegistrationCount() { return registrations; }

int ChainLength(const char *head) {
  for (int i = 0; i < headCount; ++i) {
    if (std::strcmp(heads[i].name, head) != 0) continue;
    int n = 0;
    for (MapEntry *e = heads[i].next; e; e = e->next) ++n;
    return n;
  }
  return -1;
}

hk::typemap_debug::CacheEntry Cache(int slot) {
  const auto &c = cache[slot];
  if (!c.hits) return {0, "", ""};
  return {c.hits, c.expected, c.given};
}

int CacheSlots() { return kCacheSlots; }

void Reset() {
  for (int i = 0; i < headCount; ++i) {
    for (MapEntry *e = heads[i].next; e;) {
      MapEntry *next = e->next;
      delete e;
      e = next;
    }
  }
  std::free(heads);
  heads = nullptr;
  headIndex.clear();
  headCount = 0;
  headCapacity = 64;
  sorted = false;
  cacheInsert = cacheProbe = 0;
  registrations = 0;
  for (auto &c : cache) c.hits = 0;
}

}  // namespace typemap_debug
}  // namespace hk
