#include "tests/unit/fixed_clock.h"

#include "sepa/platform/clock.h"

time_t fixed_now = 1714972089;
long fixed_local_offset = 7200;
unsigned fixed_process_id = 1234;

namespace sepa_internal {

time_t clock_now() { return fixed_now; }

void clock_local(time_t seconds, struct tm* out) { clock_utc(seconds + fixed_local_offset, out); }

void clock_utc(time_t seconds, struct tm* out) { gmtime_r(&seconds, out); }

unsigned process_id() { return fixed_process_id; }

}  // namespace sepa_internal
