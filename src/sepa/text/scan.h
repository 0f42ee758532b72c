// Numbers at a place in a text, read as sscanf reads them in the "C" locale.
// sscanf itself measures the whole rest of its text on every call, which in a
// loop over a large text is a square.
#pragma once

#include <cstdint>

namespace sepa_internal {

// Whether the text at `at` begins with `start`.
inline bool begins_with(const char* at, const char* start) {
    for (; *start; ++at, ++start)
        if (*at != *start) return false;
    return true;
}

// The scans give what sscanf gives for "%<width>d" and "%u": white space is
// skipped, line ends included, and a sign counts as part of the width; "%u"
// takes a sign too, saturates at 64 bits and keeps the low 32. On success `at`
// is after the number; otherwise false, and nothing is stored.
bool scan_number(const char** at, int width, int32_t* out);
bool scan_unsigned(const char** at, uint32_t* out);

}  // namespace sepa_internal
