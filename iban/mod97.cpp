#include "iban/mod97.h"

#include <cstdint>

// A value below this takes two more decimal digits without leaving 64 bits,
// so that most characters need no division.
static constexpr uint64_t reduce_at = 100000000000000000;

static bool take(uint64_t* value, char c) {
    unsigned digit = static_cast<unsigned char>(c) - unsigned{'0'};
    if (digit <= 9) {
        *value = *value * 10 + digit;
    } else {
        unsigned letter = (static_cast<unsigned char>(c) | 0x20U) - unsigned{'a'};
        if (letter >= 26) return false;
        *value = *value * 100 + letter + 10;
    }
    if (*value >= reduce_at) *value %= 97;
    return true;
}

int iban_mod97(const char* iban) {
    uint64_t value = 0;
    for (const char* p = iban + 4; *p; ++p)
        if (!take(&value, *p)) return -1;
    for (const char* p = iban; p < iban + 4; ++p)
        if (!take(&value, *p)) return -1;
    return static_cast<int>(value % 97);
}
