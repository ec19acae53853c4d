#include "frame/blocks.h"

#include <cstdint>
#include <map>
#include <string>

namespace hk {
namespace {

// Keyed by start address; blocks never overlap, so the block an address may
// lie in is the one with the greatest start not above it.
std::map<std::uintptr_t, Block> &Blocks() {
  static auto *blocks = new std::map<std::uintptr_t, Block>;
  return *blocks;
}

std::uintptr_t Address(const void *p) { return reinterpret_cast<std::uintptr_t>(p); }

}  // namespace

void RememberBlock(const void *start, std::size_t bytes, std::size_t readable, std::size_t elemSize,
                   BlockOrigin origin) {
  Blocks()[Address(start)] = Block{static_cast<const char *>(start), bytes, readable, elemSize, origin};
}

void ForgetBlock(const void *start) { Blocks().erase(Address(start)); }

const Block *FindBlock(const void *address) {
  auto &blocks = Blocks();
  auto it = blocks.upper_bound(Address(address));
  if (it == blocks.begin()) return nullptr;
  --it;
  const Block &block = it->second;
  if (Address(address) - it->first > block.readable) return nullptr;
  return &block;
}

bool ElementsInside(const Block &block, const void *address, long index, std::size_t size,
                    bool write, std::size_t count) {
  // Wide arithmetic: index * size cannot overflow, whatever the index.
  __int128 offset = static_cast<__int128>(Address(address) - Address(block.start));
  __int128 first = offset + static_cast<__int128>(index) * static_cast<__int128>(size);
  __int128 end = first + static_cast<__int128>(size) * static_cast<__int128>(count);
  return first >= 0 && end <= static_cast<__int128>(write ? block.bytes : block.readable);
}

int OutsideBlock(Tcl_Interp *interp, const char *cmd, long index, const Block &block) {
  std::size_t count = block.elemSize ? block.bytes / block.elemSize : block.bytes;
  std::string message = std::string(cmd) + ": index " + std::to_string(index) +
                        " is outside the block of " + std::to_string(count) +
                        (count == 1 ? " element" : " elements");
  Tcl_SetResult(interp, const_cast<char *>(message.c_str()), TCL_VOLATILE);
  return TCL_ERROR;
}

}  // namespace hk
