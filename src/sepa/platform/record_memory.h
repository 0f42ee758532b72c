// Where the memory of records begins, which the handles of chief headers hold.
#pragma once

namespace sepa_internal {

struct arena_piece_t;

// Starts zeroed; record_arena.h has what is done with it.
struct record_arena_t {
    arena_piece_t* latest;  // the piece in use; the others hang on it
    char* at;               // free bytes of that piece
    char* end;
};

}  // namespace sepa_internal
