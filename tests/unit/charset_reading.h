// The character set once more: every allowed character, written out, in place
// of the library's bit sets.
#pragma once

#include <set>
#include <string>

#include "message/sepa.h"

inline std::set<std::string> allowed_characters(int rulebook, int level) {
    std::set<std::string> allowed;
    auto single = [&](const char* characters) {
        for (; *characters; ++characters) allowed.insert(std::string(1, *characters));
    };
    single("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789'()+,-./:?");
    if (level >= CHARSET_SPACE) single(" ");
    if (level == CHARSET_EXTENDED && rulebook != RULEBOOK_DE_2_6) {
        single("$%&*");
        for (const char* german : {"Ä", "Ö", "Ü", "ä", "ö", "ü", "ß"}) allowed.insert(german);
    }
    if (rulebook == RULEBOOK_AT_6) {
        single("!\"#;<=>@[]^_{|}~");
        allowed.insert("€");
    }
    return allowed;
}

// Byte at which the walk over `text` stops, or npos.
inline size_t first_bad(const std::set<std::string>& allowed, const std::string& text) {
    for (size_t at = 0; at < text.size();) {
        size_t length = 1;
        while (length <= 3 && !allowed.count(text.substr(at, length))) ++length;
        if (length > 3) return at;
        at += length;
    }
    return std::string::npos;
}
