#include "platform/pattern.h"

#include <locale.h>

bool compile_pattern(regex_t* out, const char* pattern) {
    locale_t c_locale = newlocale(LC_ALL_MASK, "C", nullptr);
    if (!c_locale) return false;
    locale_t previous = uselocale(c_locale);
    bool compiled = regcomp(out, pattern, REG_EXTENDED) == 0;
    uselocale(previous);
    freelocale(c_locale);
    return compiled;
}
