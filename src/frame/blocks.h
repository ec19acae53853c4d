// Blocks of plain memory that the pointer library and the typed array
// commands allocated, remembered until they are released, so that element
// reads and writes through addresses inside them can be bounds-checked.
// Addresses outside every remembered block (host memory) are not checked.
#pragma once

#include <tcl.h>

#include <cstddef>

namespace hk {

// How a block was allocated: ptrcreate (C allocator, released by ptrfree) or
// one of the _array commands (new[], released by the matching _destroy).
enum class BlockOrigin { kPtrCreate, kArray };

struct Block {
  const char *start;
  std::size_t bytes;     // the elements a script may write
  std::size_t readable;  // those plus a terminating null slot, if the block has one
  std::size_t elemSize;  // the size of the element type it was made for
  BlockOrigin origin;
};

void RememberBlock(const void *start, std::size_t bytes, std::size_t readable, std::size_t elemSize,
                   BlockOrigin origin);
void ForgetBlock(const void *start);

// The remembered block that address lies in, or the block that address is
// one past the end of; null for addresses of no remembered block.
const Block *FindBlock(const void *address);

// True when count elements of size bytes starting index elements of that
// size after address lie inside block: inside its writable part for a write,
// inside its readable part (terminating slot included) for a read.
bool ElementsInside(const Block &block, const void *address, long index, std::size_t size,
                    bool write, std::size_t count = 1);

// Installs "cmd: index I is outside the block of N elements" (N counted in
// the block's own element type) and answers TCL_ERROR.
int OutsideBlock(Tcl_Interp *interp, const char *cmd, long index, const Block &block);

}  // namespace hk
