#include <cstdarg>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "sepa/message/xml_lines.h"
#include "sepa/message/xmlbuf_room.h"

using namespace sepa_internal;

static constexpr size_t growth = 256;

int xmlbuf_reserve(xmlbuf_t* buffer, size_t n) {
    if (buffer->capacity - buffer->used >= n) return 1;
    if (n > SIZE_MAX - growth - buffer->used) return 0;
    size_t needed = buffer->used + n;
    size_t capacity = needed - needed % growth + growth;
    auto text = static_cast<char*>(realloc(buffer->text, capacity));
    if (!text) return 0;
    buffer->text = text;
    buffer->capacity = capacity;
    return 1;
}

// Where the next text goes: over the NUL of the one before.
static char* append_position(xmlbuf_t* buffer) { return buffer->text + (buffer->used ? buffer->used - 1 : 0); }

int xmlbuf_append(xmlbuf_t* buffer, const char* text) {
    if (!text) return 1;
    size_t n = strlen(text) + 1;
    if (!xmlbuf_reserve(buffer, n)) return 0;
    memcpy(append_position(buffer), text, n);
    buffer->used += buffer->used ? n - 1 : n;
    return 1;
}

int xmlbuf_append_list(xmlbuf_t* buffer, ...) {
    va_list texts;
    va_start(texts, buffer);
    int done = 1;
    while (const char* text = va_arg(texts, const char*)) {
        done = xmlbuf_append(buffer, text);
        if (!done) break;
    }
    va_end(texts);
    return done;
}

int xmlbuf_append_escaped(xmlbuf_t* buffer, const char* text) {
    if (!text) return 1;
    text_t whole = measured(text);
    xml_counter_t counter;
    counter.put(whole);
    sepa_room_t room = room_in(buffer);
    char* at = room.take(room.context, counter.size);
    if (!at) return 0;
    xml_cursor_t cursor = {at};
    cursor.put(whole);
    return 1;
}
