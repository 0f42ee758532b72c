// Reading of a NUL-terminated statement text in place. Nothing here depends on
// the process's locale, and nothing reads behind the NUL.
#pragma once

#include <cstddef>
#include <cstdint>

constexpr bool is_digit(char c) { return c >= '0' && c <= '9'; }
constexpr bool is_letter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

// Whether the text at `at` begins with `start`.
bool begins_with(const char* at, const char* start);

// The CR of the first CR LF that begins in [from, end), or null. `end[0]` must
// be readable. A lone LF or CR ends no line.
char* find_line_end(char* from, const char* end);

// The scans give what sscanf gives for "%<width>d" and "%u": white space is
// skipped, line ends included, and a sign counts as part of the width; "%u"
// takes a sign too, saturates at 64 bits and keeps the low 32. On success `at`
// is behind the number; otherwise false, and nothing is stored. (sscanf itself
// measures the whole rest of its text on every call.)
bool scan_number(const char** at, int width, int32_t* out);
bool scan_unsigned(const char** at, uint32_t* out);

// The first place of a fixed text, for questions that come with rising `from`
// and reach to the end of a long text. What was searched once is not searched
// again. The text may lose occurrences between two questions, and may become
// shorter, but must not gain occurrences behind `from`.
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
