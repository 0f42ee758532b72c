#include "sepa/message/xmlbuf_room.h"

#include <cstdint>

namespace sepa_internal {

// Room for `size` bytes after the text, which then ends after them.
static char* take_room(void* context, size_t size) {
    auto buffer = static_cast<xmlbuf_t*>(context);
    if (size == SIZE_MAX || !xmlbuf_reserve(buffer, size + 1)) return nullptr;
    size_t length = buffer->used ? buffer->used - 1 : 0;  // over the NUL of the text before
    char* at = buffer->text + length;
    at[size] = '\0';
    buffer->used = length + size + 1;
    return at;
}

sepa_room_t room_in(xmlbuf_t* buffer) { return {take_room, buffer}; }

}  // namespace sepa_internal
