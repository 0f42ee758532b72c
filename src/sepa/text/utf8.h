// Copies into fields of fixed size that do not tear a UTF-8 character.
#pragma once

#include <cstddef>

namespace sepa_internal {

// Stores the text after the first `used` bytes of `field`, with a NUL within
// its `capacity`. Where the text has to be cut inside a valid UTF-8 character,
// the whole character is left out.
void store_cut(char* field, size_t capacity, size_t used, const char* text, size_t length);

}  // namespace sepa_internal
