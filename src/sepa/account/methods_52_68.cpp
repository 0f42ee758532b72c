#include <array>
#include <cstdint>
#include <cstring>

#include "sepa/account/account_check.h"
#include "sepa/account/weighted_sum.h"

using namespace sepa_internal;

// Methods 52 and 53 check the number as it once was, the work string: four
// digits of the bank code, a leading digit, the check digit at place 6 and up
// to six more digits. Its digits take these weights from the right end.
static constexpr int solve_weights[] = {2, 4, 8, 5, 10, 9, 7, 3, 6, 1, 2, 4};
static constexpr int check_place = 6;
static constexpr int longest_tail = 6;

namespace {
struct work_string_t {
    char digits[check_place + longest_tail];
    int count;
};
}  // namespace

// The check digit must bring the sum to remainder 10. 11 is a prime and no
// weight a multiple of it, so there is never more than one such digit.
int solve_check(const char* work, int n, int check_digit) {
    int sum = 0;
    for (int i = 0; i < n; ++i) sum += (work[n - 1 - i] - '0') * solve_weights[i];
    return verdict((sum + check_digit * solve_weights[n - check_place]) % 11 == 10);
}

// Appends the digits from `position` to the end of the account form, without
// the zeros they begin with. At most longest_tail digits may be left.
static bool append_tail(work_string_t* work, const char* form, int position) {
    while (position <= 10 && digit(form, position) == 0) ++position;
    if (10 - position + 1 > longest_tail) return false;
    for (; position <= 10; ++position) work->digits[work->count++] = form[position - 1];
    return true;
}

int method_52(const char* form, const char* bank_code) {
    if (digit(form, 1) == 9) return method_20(form);
    int first = 1;
    while (first <= 10 && digit(form, first) == 0) ++first;
    if (first > 9) return -1;  // no room for a check digit
    work_string_t work = {{bank_code[4], bank_code[5], bank_code[6], bank_code[7], form[first - 1], '0'}, check_place};
    if (!append_tail(&work, form, first + 2)) return -1;
    return solve_check(work.digits, work.count, digit(form, first + 1));
}

int method_53(const char* form, const char* bank_code) {
    if (digit(form, 1) == 9) return method_20(form);
    work_string_t work = {{bank_code[4], bank_code[5], form[2], bank_code[7], form[1], '0'}, check_place};
    append_tail(&work, form, 5);  // six digits at most
    return solve_check(work.digits, work.count, digit(form, 4));
}

int method_55(const char* form) { return check_sum(form, {mod11_zero, 10, from(9, {2, 3, 4, 5, 6, 7, 8, 7, 8})}); }

// The remainders 0 and 1 ask for 11 and 10, which no digit is.
int method_56(const char* form) {
    int r = weighted_sum(form, from(9, {2, 3, 4, 5, 6, 7, 2, 3, 4})) % 11;
    return verdict(11 - r == digit(form, 10));
}

// Method 57 goes by the number that the first two digits form.
namespace {
enum class treatment_t : uint8_t { fails, not_checked, by_date, last_digit, third_digit };

struct treatment_range_t {
    int first, last;
    treatment_t what;
};
}  // namespace

static constexpr treatment_range_t treatment_ranges[] = {
    {0, 0, treatment_t::fails},         {51, 51, treatment_t::last_digit},  {55, 55, treatment_t::last_digit},
    {61, 61, treatment_t::last_digit},  {64, 66, treatment_t::last_digit},  {70, 70, treatment_t::last_digit},
    {73, 82, treatment_t::last_digit},  {88, 88, treatment_t::last_digit},  {94, 95, treatment_t::last_digit},
    {32, 39, treatment_t::third_digit}, {41, 49, treatment_t::third_digit}, {52, 54, treatment_t::third_digit},
    {56, 60, treatment_t::third_digit}, {62, 63, treatment_t::third_digit}, {67, 69, treatment_t::third_digit},
    {71, 72, treatment_t::third_digit}, {83, 87, treatment_t::third_digit}, {89, 90, treatment_t::third_digit},
    {92, 93, treatment_t::third_digit}, {96, 98, treatment_t::third_digit}, {40, 40, treatment_t::not_checked},
    {50, 50, treatment_t::not_checked}, {91, 91, treatment_t::not_checked}, {99, 99, treatment_t::not_checked},
    {1, 31, treatment_t::by_date},
};

static constexpr bool each_number_once() {
    for (int number = 0; number < 100; ++number) {
        int found = 0;
        for (const treatment_range_t& range : treatment_ranges) found += number >= range.first && number <= range.last;
        if (found != 1) return false;
    }
    return true;
}
static_assert(each_number_once());

static constexpr std::array<treatment_t, 100> treatments_by_number() {
    std::array<treatment_t, 100> treatments{};
    for (const treatment_range_t& range : treatment_ranges) {
        for (int number = range.first; number <= range.last; ++number)
            treatments[static_cast<size_t>(number)] = range.what;
    }
    return treatments;
}
static constexpr std::array<treatment_t, 100> treatments = treatments_by_number();

// No check digit: the digits hold a date of birth, of which the month and the
// serial number are tested. One number passes against the rule.
static int check_date(const char* form) {
    if (memcmp(form, "0185125434", account_length) == 0) return 1;
    int month = digit(form, 3) * 10 + digit(form, 4);
    int serial = digit(form, 7) * 100 + digit(form, 8) * 10 + digit(form, 9);
    return verdict(month >= 1 && month <= 12 && serial < 500);
}

int method_57(const char* form) {
    if (!is_account_form(form)) return -1;
    int number = digit(form, 1) * 10 + digit(form, 2);
    switch (treatments[static_cast<size_t>(number)]) {
        case treatment_t::fails: return -1;
        case treatment_t::not_checked: return 0;
        case treatment_t::by_date: return check_date(form);
        case treatment_t::last_digit:
            if (memcmp(form, "777777", 6) == 0 || memcmp(form, "888888", 6) == 0) return 0;
            return check_cross_sum(form, 10, 10, from(9, {1, 2, 1, 2, 1, 2, 1, 2, 1}));
        case treatment_t::third_digit: break;
    }
    return check_cross_sum(form, 10, 3, from(10, {1, 2, 1, 2, 1, 2, 1, 0, 2, 1}));
}

int method_58(const char* form) { return check_mod11(form, 0, 0, 0, 0); }
int method_59(const char* form) { return digits_zero(form, 1, 2) ? 0 : method_00(form); }
int method_60(const char* form) { return check_cross_sum(form, 10, 10, from(9, {2, 1, 2, 1, 2, 1, 2})); }

// The two digits after the check digit count only with the mark of the
// method at position 9.
static int check_marked(const char* form, int mark) {
    if (digit(form, 9) == mark) return check_cross_sum(form, 10, 8, from(10, {2, 1, 0, 2, 1, 2, 1, 2, 1, 2}));
    return check_cross_sum(form, 10, 8, from(7, {2, 1, 2, 1, 2, 1, 2}));
}

int method_61(const char* form) { return check_marked(form, 8); }

int method_63(const char* form) {
    if (digit(form, 1) != 0) return -1;
    if (check_cross_sum(form, 10, 8, from(7, {2, 1, 2, 1, 2, 1})) == 1) return 1;
    if (!digits_zero(form, 2, 3)) return -1;
    return check_cross_sum(form, 10, 10, from(9, {2, 1, 2, 1, 2, 1}));
}

int method_64(const char* form) { return check_sum(form, {mod11_zero, 7, from(6, {2, 4, 8, 5, 10, 9})}); }
int method_65(const char* form) { return check_marked(form, 9); }

// Remainder 0 asks for a 1 here, unlike everywhere else.
int method_66(const char* form) {
    if (digit(form, 1) != 0) return -1;
    if (digit(form, 2) == 9) return 0;
    int r = weighted_sum(form, from(9, {2, 3, 4, 5, 6, 0, 0, 7})) % 11;
    int asked = r == 0 ? 1 : r == 1 ? 0 : 11 - r;
    return verdict(asked == digit(form, 10));
}

int method_67(const char* form) { return check_cross_sum(form, 10, 8, from(7, {2, 1, 2, 1, 2, 1, 2})); }

int method_68(const char* form) {
    if (digit(form, 1) != 0) {
        if (digit(form, 4) != 9) return -1;
        return check_cross_sum(form, 10, 10, from(9, {2, 1, 2, 1, 2, 1}));
    }
    if (digit(form, 2) == 4) return 0;
    if (digits_zero(form, 1, 5)) return -1;
    if (check_cross_sum(form, 10, 10, from(9, {2, 1, 2, 1, 2, 1, 2, 1})) == 1) return 1;
    return check_cross_sum(form, 10, 10, from(9, {2, 1, 2, 1, 2, 0, 0, 1}));
}
