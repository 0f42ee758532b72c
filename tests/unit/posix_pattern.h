// POSIX extended regular expressions: the published form of IBANs and BICs, and
// the reference for the library's own matching.
#pragma once

#include <regex.h>

#include <cstdlib>
#include <string>

class posix_pattern {
public:
    // Only under the "C" locale, which every program starts with, is [A-Z] 26 letters.
    explicit posix_pattern(const char* pattern) {
        if (regcomp(&compiled_, pattern, REG_EXTENDED) != 0) abort();
    }
    ~posix_pattern() { regfree(&compiled_); }
    posix_pattern(const posix_pattern&) = delete;
    posix_pattern& operator=(const posix_pattern&) = delete;

    bool matches(const std::string& text) const { return regexec(&compiled_, text.c_str(), 0, nullptr, 0) == 0; }

private:
    regex_t compiled_;
};
