// A clock and a process id that a test sets by hand.
#pragma once

#include <ctime>

extern time_t fixed_now;           // seconds of the epoch; starts at 2024-05-06 05:08:09 UTC
extern long fixed_local_offset;    // seconds that local time is ahead of UTC; starts at 7200
extern unsigned fixed_process_id;  // starts at 1234
