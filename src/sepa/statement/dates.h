// Dates as statements write them.
#pragma once

#include <cstdint>
#include <ctime>

namespace sepa_internal {

// Scans YYMMDD and keeps the year as it stands there, in two digits. Returns
// false, with nothing stored, unless all three numbers convert.
bool scan_date(const char* from, int32_t* year, struct tm* date);

// tm_year of a two-digit year: 80 to 99 lie in the last century.
int32_t calendar_year(int32_t year);

}  // namespace sepa_internal
