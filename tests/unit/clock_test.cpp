// The machine's own clock, which all other tests replace.
#include "sepa/platform/clock.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <tuple>

using namespace sepa_internal;

namespace {

struct tm local_time(time_t seconds) {
    struct tm out;
    clock_local(seconds, &out);
    return out;
}

// Web servers set the zone of a worker after the process has read its own.
TEST(Clock, ZoneThatChangesBetweenReadings) {
    constexpr time_t noon = 1714996800;  // 2024-05-06 12:00 UTC
    for (const auto& [zone, day, hour] : {std::tuple{"UTC0", 6, 12}, {"EAST-14", 7, 2}, {"WEST+11:30", 6, 0}}) {
        setenv("TZ", zone, 1);
        struct tm local = local_time(noon);
        EXPECT_EQ(local.tm_mday, day) << zone;
        EXPECT_EQ(local.tm_hour, hour) << zone;
        struct tm utc;
        clock_utc(noon, &utc);
        EXPECT_EQ(utc.tm_hour, 12) << zone;
    }
}

TEST(Clock, YearBeyondTheSystems) {
    if (sizeof(time_t) < sizeof(int64_t)) return;
    EXPECT_EQ(local_time(static_cast<time_t>(INT64_MAX)).tm_mday, 0);
}

}  // namespace
