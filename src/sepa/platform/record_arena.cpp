#include "sepa/platform/record_arena.h"

#include "sepa/platform/pages.h"

namespace sepa_internal {

// At the start of each piece.
struct alignas(16) arena_piece_t {
    arena_piece_t* before;
    size_t size;  // of all of it
};

static constexpr size_t alignment = alignof(arena_piece_t);
static constexpr size_t first_size = 4096;             // ten transfers
static constexpr size_t last_small_size = 256 * 1024;  // after a thousand a huge page will be used
static constexpr size_t last_size = size_t{2} << 20;   // a huge page

static size_t next_size(const record_arena_t* arena, size_t needed) {
    size_t size = arena->latest ? arena->latest->size * 2 : first_size;
    if (size > last_small_size) size = last_size;
    while (size < needed) size *= 2;
    return size;
}

static bool add_piece(record_arena_t* arena, size_t needed) {
    size_t size = next_size(arena, sizeof(arena_piece_t) + needed + arena_margin);
    auto piece = static_cast<arena_piece_t*>(allocate_large(size));
    if (!piece) return false;
    *piece = {arena->latest, size};
    arena->latest = piece;
    arena->at = reinterpret_cast<char*>(piece + 1);
    arena->end = reinterpret_cast<char*>(piece) + size - arena_margin;
    return true;
}

void* arena_take(record_arena_t* arena, size_t size) {
    size = (size + alignment - 1) / alignment * alignment;
    if (static_cast<size_t>(arena->end - arena->at) < size && !add_piece(arena, size)) return nullptr;
    void* block = arena->at;
    arena->at += size;
    return block;
}

void arena_free(record_arena_t* arena, void (*release)(void* piece, size_t size)) {
    while (arena_piece_t* piece = arena->latest) {
        arena->latest = piece->before;
        // The free bytes of the latest piece have never held anything.
        release(piece, arena->at ? static_cast<size_t>(arena->at - reinterpret_cast<char*>(piece)) : piece->size);
        arena->at = nullptr;
    }
    *arena = {};
}

}  // namespace sepa_internal
