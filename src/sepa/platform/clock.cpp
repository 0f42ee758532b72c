#include "sepa/platform/clock.h"

#include <unistd.h>

namespace sepa_internal {

time_t clock_now() { return time(nullptr); }

void clock_local(time_t seconds, struct tm* out) {
    *out = {};
    tzset();  // a web server sets a worker's zone late, and localtime_r need not look again
    if (!localtime_r(&seconds, out)) *out = {};
}

void clock_utc(time_t seconds, struct tm* out) {
    *out = {};
    if (!gmtime_r(&seconds, out)) *out = {};
}

unsigned process_id() { return static_cast<unsigned>(getpid()); }

}  // namespace sepa_internal
