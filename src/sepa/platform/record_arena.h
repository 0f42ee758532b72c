// Memory of many records that end together: blocks side by side in pieces that
// grow up to 16 MB. A block of malloc for each would be freed and wiped by itself,
// and its pages would be cleared 4 KB at a time; a piece gets its pages ready as
// blocks reach them, 2 MB at once where the system gives such pages. A quarter of
// the time of a payroll.
#pragma once

#include <cstddef>

#include "sepa/platform/record_memory.h"

namespace sepa_internal {

// Bytes after each block that can be read, whatever is in them.
constexpr size_t arena_margin = 16;

// A block of `size` bytes for a record, aligned for any member and not
// zeroed. Null without memory. It belongs to the arena.
void* arena_take(record_arena_t* arena, size_t size);

// Ends all blocks. `release` frees a piece, of which no more than the first
// `size` bytes have been used.
void arena_free(record_arena_t* arena, void (*release)(void* piece, size_t size));

}  // namespace sepa_internal
