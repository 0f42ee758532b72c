#include "message/xmlbuf.h"

#include <cstdarg>
#include <cstdint>
#include <cstdlib>
#include <cstring>

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

static const char* entity(char c) {
    switch (c) {
        case '<': return "&lt;";
        case '>': return "&gt;";
        case '&': return "&amp;";
        default: return nullptr;
    }
}

int xmlbuf_append_escaped(xmlbuf_t* buffer, const char* text) {
    if (!text) return 1;
    if (!strpbrk(text, "<>&")) return xmlbuf_append(buffer, text);
    size_t length = 0;
    for (const char* p = text; *p; ++p) {
        const char* replacement = entity(*p);
        length += replacement ? strlen(replacement) : 1;
    }
    if (!xmlbuf_reserve(buffer, length + 1)) return 0;
    char* out = append_position(buffer);
    for (; *text; ++text) {
        const char* replacement = entity(*text);
        if (replacement) {
            size_t n = strlen(replacement);
            memcpy(out, replacement, n);
            out += n;
        } else {
            *out++ = *text;
        }
    }
    *out++ = '\0';
    buffer->used = static_cast<size_t>(out - buffer->text);
    return 1;
}
