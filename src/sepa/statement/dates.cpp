#include "sepa/statement/dates.h"

#include "sepa/text/scan.h"

namespace sepa_internal {

static constexpr int32_t last_year_of_2000s = 79;

int32_t calendar_year(int32_t year) { return year <= last_year_of_2000s ? year + 100 : year; }

bool scan_date(const char* from, int32_t* year, struct tm* date) {
    int32_t yy, month, day;
    if (!scan_number(&from, 2, &yy) || !scan_number(&from, 2, &month) || !scan_number(&from, 2, &day)) return false;
    *year = yy;
    date->tm_year = calendar_year(yy);
    date->tm_mon = month - 1;
    date->tm_mday = day;
    return true;
}

}  // namespace sepa_internal
