#include "sepa/text/field_check.h"

#include <cstring>

#include "sepa/text/ascii.h"

using namespace sepa_internal;

static bool is_either(char c) { return is_capital(c) || is_digit(c); }

// ^[A-Z]{6}[A-Z2-9][A-NP-Z0-9]([A-Z0-9]{3})?$: without the location codes 0
// and 1 (test and passive participants) and the letter O.
static bool is_bic(const char* text) {
    for (int i = 0; i < 6; ++i)
        if (!is_capital(text[i])) return false;
    if (!is_either(text[6]) || text[6] == '0' || text[6] == '1') return false;
    if (!is_either(text[7]) || text[7] == 'O') return false;
    if (!text[8]) return true;
    return is_either(text[8]) && is_either(text[9]) && is_either(text[10]) && !text[11];
}

static bool length_within(const char* text, size_t limit) { return text && *text && strnlen(text, limit + 1) <= limit; }

int sepa_check_field(int kind, const char* text) {
    switch (kind) {
        case FIELD_BIC: return text && is_bic(text);
        case FIELD_TEXT70: return length_within(text, 70);
        case FIELD_TEXT16: return length_within(text, 16);
        case FIELD_TEXT35: return length_within(text, 35);
        default: return 0;
    }
}
