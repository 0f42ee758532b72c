// The readings of the machine that the library depends on. They stand apart
// so that a test can link its own: a program that defines all four functions
// itself never pulls clock.cpp out of the static library.
#pragma once

#include <ctime>

namespace sepa_internal {

// Seconds of the Unix epoch.
time_t clock_now();

// Breaks `seconds` down into local or UTC calendar time. `out` is all zero
// where the system cannot (a year beyond int).
void clock_local(time_t seconds, struct tm* out);
void clock_utc(time_t seconds, struct tm* out);

// The id of this process.
unsigned process_id();

}  // namespace sepa_internal
