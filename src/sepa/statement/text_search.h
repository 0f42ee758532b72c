// Searches in a NUL-terminated statement text.
#pragma once

#include <cstddef>

namespace sepa_internal {

// The CR of the first CR LF that begins in [from, end), or null. `end[0]` must
// be readable. A lone LF or CR ends no line.
char* find_line_end(char* from, const char* end);

// The first place of a fixed text, for questions that come with rising `from`
// and reach to the end of a long text. What was searched once is not searched
// again. The text may lose occurrences between two questions, and may become
// shorter, but must not gain occurrences after `from`.
class first_place_t {
public:
    explicit first_place_t(const char* wanted);

    // The first occurrence in [from, end), or `end`.
    char* find(char* from, char* end);

private:
    const char* wanted_;
    size_t length_;
    const char* since_ = nullptr;  // no occurrence begins in [since_, place_)
    char* place_ = nullptr;
};

}  // namespace sepa_internal
