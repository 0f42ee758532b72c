#include <cstring>

#include "platform/pattern.h"
#include "statement/mt940.h"

// ISO 9362, with the location codes 0 and 1 (test and passive participants)
// and the letter O left out.
static const char bic_pattern[] = "^[A-Z]{6}[A-Z2-9][A-NP-Z0-9]([A-Z0-9]{3})?$";

static regex_t bic_regex;
static first_use_t bic_regex_ready;

static bool length_within(const char* text, size_t limit) { return text && *text && strnlen(text, limit + 1) <= limit; }

int sepa_check_field(int kind, const char* text) {
    if (!bic_regex_ready.ensure([] { return compile_pattern(&bic_regex, bic_pattern); })) return 0;
    switch (kind) {
        case FIELD_BIC: return text && regexec(&bic_regex, text, 0, nullptr, 0) == 0;
        case FIELD_TEXT70: return length_within(text, 70);
        case FIELD_TEXT16: return length_within(text, 16);
        case FIELD_TEXT35: return length_within(text, 35);
        default: return 0;
    }
}
