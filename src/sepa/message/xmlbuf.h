// The growing text buffer into which cti_toXML, ddi_toXML and sepa_toXML write a
// document, for scripts it goes straight into the engine's memory.
#pragma once

#include <cstddef>

// Starts zeroed. Once anything has been appended, `text` is NUL-terminated
// and belongs to the buffer until somebody takes it out and frees it.
struct xmlbuf_t {
    char* text;       // null while nothing has been appended
    size_t used;      // bytes in use, the NUL included
    size_t capacity;  // bytes allocated
};

// Each returns 1, or 0 if memory ran out; the text so far then stays valid.

// Makes room for `n` further bytes.
int xmlbuf_reserve(xmlbuf_t* buffer, size_t n);

// Appends `text`; null appends nothing.
int xmlbuf_append(xmlbuf_t* buffer, const char* text);

// Appends texts from a list that ends at the first null pointer. For C++
// programs; nothing here calls it.
int xmlbuf_append_list(xmlbuf_t* buffer, ...) __attribute__((sentinel));

// Appends `text` with <, > and & escaped; null appends nothing.
int xmlbuf_append_escaped(xmlbuf_t* buffer, const char* text);
