#include "message/handle.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

int fail(sepa_t* handle, const char* text) {
    handle->last_error = text;
    return 0;
}

int fail_with(sepa_t* handle, const char* format, ...) {
    va_list values;
    va_start(values, format);
    vsnprintf(handle->error_buffer, sizeof handle->error_buffer, format, values);
    va_end(values);
    handle->last_error = handle->error_buffer;
    return 0;
}

void wipe_text(char** text) {
    if (!*text) return;
    explicit_bzero(*text, strlen(*text));
    free(*text);
    *text = nullptr;
}

void wipe_record(void* record, size_t size) {
    explicit_bzero(record, size);
    free(record);
}

char ascii_upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

bool same_text(const char* a, const char* b) {
    for (; ascii_upper(*a) == ascii_upper(*b); ++a, ++b)
        if (!*a) return true;
    return false;
}

bool bic_in_capitals(const char* bic, char (&out)[max_bic_length + 1]) {
    if (!bic || strnlen(bic, max_bic_length + 1) > max_bic_length) return false;
    char* p = out;
    for (; *bic; ++bic) *p++ = ascii_upper(*bic);
    *p = '\0';
    return true;
}
