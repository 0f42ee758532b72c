// What held payment data is overwritten before it is freed. Compilers delete a
// memset before a free, so that it takes explicit_bzero, here and nowhere else.
#pragma once

#include <cstddef>

namespace sepa_internal {

// Overwrites memory that stays where it is.
void wipe(void* bytes, size_t size);

// Overwrites and frees a block. Null is accepted.
void wipe_block(void* block, size_t size);

// The same for a text, over its length; clears the pointer.
void wipe_text(char** text);

}  // namespace sepa_internal
