#include "sepa/platform/record_arena.h"

#include <algorithm>
#include <new>

#include "sepa/platform/pages.h"

namespace sepa_internal {

// At the start of each piece.
struct alignas(16) arena_piece_t {
    arena_piece_t* before;
    size_t size;   // of all of it
    size_t ready;  // so many bytes have their pages
};

static constexpr size_t alignment = alignof(arena_piece_t);
static constexpr size_t first_size = 4096;             // ten transfers
static constexpr size_t last_small_size = 256 * 1024;  // after a thousand a huge page will be used

// Before a piece that begins at a page of 2 MB malloc leaves up to 2 MB of addresses
// unused: half of all where each piece is such a page, a ninth with eight of them.
static constexpr size_t last_size = 8 * huge_page;

static size_t next_size(const record_arena_t* arena, size_t needed) {
    size_t size = arena->latest ? std::min(arena->latest->size * 2, last_size) : first_size;
    if (size > last_small_size) size = std::max(size, huge_page);
    while (size < needed) size *= 2;
    return size;
}

static bool has_room(const record_arena_t* arena, size_t size) {
    return static_cast<size_t>(arena->end - arena->at) >= size;
}

// Gets the pages of the latest piece ready for `size` bytes more, as far as it goes.
static bool make_ready(record_arena_t* arena, size_t size) {
    arena_piece_t* piece = arena->latest;
    while (piece && !has_room(arena, size) && piece->ready < piece->size) {
        char* start = reinterpret_cast<char*>(piece);
        size_t ready = std::min(piece->ready + huge_page, piece->size);
        prepare_pages(start + piece->ready, ready - piece->ready);
        piece->ready = ready;
        arena->end = start + ready - arena_margin;
    }
    return has_room(arena, size);
}

static bool add_piece(record_arena_t* arena, size_t needed) {
    size_t least = sizeof(arena_piece_t) + needed + arena_margin, size = next_size(arena, least);
    void* block = reserve_large(size);
    // Where addresses are short there may be some for fewer pages.
    while (!block && size / 2 >= std::max(least, huge_page)) block = reserve_large(size /= 2);
    if (!block) return false;
    size_t ready = std::min(size, huge_page);
    prepare_pages(block, ready);
    arena->latest = new (block) arena_piece_t{arena->latest, size, ready};
    arena->at = static_cast<char*>(block) + sizeof(arena_piece_t);
    arena->end = static_cast<char*>(block) + ready - arena_margin;
    return make_ready(arena, needed);
}

void* arena_take(record_arena_t* arena, size_t size) {
    size = (size + alignment - 1) / alignment * alignment;
    if (!has_room(arena, size) && !make_ready(arena, size) && !add_piece(arena, size)) return nullptr;
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
