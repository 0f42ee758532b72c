#include "bank_lists.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <map>

#include "sepa/account/method_codes.h"
#include "sepa/directory/directory_tables.h"
#include "sepa/iban/rules/rule_rows.h"
#include "sepa/text/ascii.h"

using namespace sepa_internal;

const char* const german_header = "valid_from,bank_code,flag,method,rule,successor,bic,name,postal_code,city,country";
const char* const national_header = "bank_id,bic,name,postal_code,city,country";
const char* const bic_header = "bic,sct,sdd,cor1,b2b,name";

namespace {

// --------------------------------------------------------------- fields ----

unsigned read_bit(const row_t& row, size_t column, const char* name) {
    const std::string& text = row.fields[column];
    if (text != "0" && text != "1") stop(row, std::string(name) + " is neither 0 nor 1");
    return text == "1";
}

unsigned read_method(const row_t& row, const std::string& text) {
    unsigned value = 0;
    for (char c : text) {
        unsigned digit = 16;
        if (is_digit(c)) digit = static_cast<unsigned>(c - '0');
        if (c >= 'A' && c <= 'F') digit = static_cast<unsigned>(c - 'A') + 10;
        if (c >= 'a' && c <= 'f') digit = static_cast<unsigned>(c - 'a') + 10;
        if (text.size() != 2 || digit == 16) stop(row, "method is not two hexadecimal digits");
        value = value * 16 + digit;
    }
    if (text.empty()) stop(row, "method is not two hexadecimal digits");
    return value;
}

unsigned read_rule(const row_t& row, const std::string& text) {
    if (text.empty()) stop(row, "rule is not a decimal number");
    unsigned value = 0;
    for (char c : text) {
        if (!is_digit(c)) stop(row, "rule is not a decimal number");
        value = value * 10 + static_cast<unsigned>(c - '0');
        if (value > 0xFFFF) stop(row, "rule does not fit in 16 bits");
    }
    return value;
}

void check_optional_bic(const row_t& row, const std::string& text) {
    if (!text.empty() && !is_bic(text)) {
        stop(row, "BIC is neither empty nor 11 capital letters and digits");
    }
}

std::string join(const row_t& row, size_t first) {
    std::string text = row.fields[first];
    for (size_t i = first + 1; i < row.fields.size(); ++i) text += "|" + row.fields[i];
    if (text.size() + 1 > BANK_TEXT_SIZE) {
        stop(row, "text of " + std::to_string(text.size()) + " bytes does not fit a record");
    }
    return text;
}

// ------------------------------------------------------------- warnings ----

void warn(directory_t* directory, const row_t& row, const std::string& reason) {
    directory->warnings.push_back(row.file + ":" + std::to_string(row.line) + ": warning: " + reason);
}

bool method_exists(unsigned method) {
#define SLOT(code) 0x##code,
    static constexpr unsigned methods[] = {SEPA_METHOD_CODES(SLOT) SEPA_BANK_METHOD_CODES(SLOT)};
#undef SLOT
    return std::find(std::begin(methods), std::end(methods), method) != std::end(methods);
}

// What is unknown of a rule word, or an empty text.
std::string unknown_in_rule(unsigned word) {
    const std::string rule = std::to_string(word / 100), version = std::to_string(word % 100);
    if (word / 100 >= IBAN_RULE_COUNT) return "rule " + rule + " does not exist";
    int known = sepa_internal::rule_versions[word / 100];
    if (known == static_cast<int>(word % 100)) return "";
    if (known == sepa_internal::unseen) return "no version of rule " + rule + " is known, this is " + version;
    return "version " + version + " of rule " + rule + " is unknown, the code has " + std::to_string(known);
}

// Tells methods and rules that the library does not have, each once.
void warn_of_codes(const list_t& list, directory_t* directory) {
    struct found_t {
        const row_t* first;
        size_t rows;
    };
    std::map<std::string, found_t> found;
    for (const row_t& row : list.rows) {
        const std::string& method = row.fields[de_method];
        if (!method_exists(read_method(row, method))) {
            found.insert({"method " + method + " does not exist", {&row, 0}}).first->second.rows++;
        }
        std::string rule = unknown_in_rule(read_rule(row, row.fields[de_rule]));
        if (!rule.empty()) found.insert({rule, {&row, 0}}).first->second.rows++;
    }
    for (const auto& [what, at] : found) {
        warn(directory, *at.first, what + " (rows: " + std::to_string(at.rows) + ")");
    }
}

// Tells a list that has no rows, and the first row that stands before its place.
void warn_of_order(const list_t& list, const std::vector<size_t>& key, directory_t* directory) {
    if (list.rows.empty()) warn(directory, {list.file, 1, {}}, "a list without banks");
    auto before = [&](const row_t& a, const row_t& b) {
        for (size_t column : key) {
            if (a.fields[column] != b.fields[column]) return a.fields[column] < b.fields[column];
        }
        return false;
    };
    auto row = std::is_sorted_until(list.rows.begin(), list.rows.end(), before);
    if (row != list.rows.end()) warn(directory, *row, "rows out of order from " + row->fields[key[0]] + " on");
}

// ---------------------------------------------------------------- dates ----

struct date_t {
    unsigned year, month, day;
};

bool is_leap_year(unsigned year) { return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0); }

unsigned days_in_month(unsigned year, unsigned month) {
    static const unsigned days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return days[month - 1] + (month == 2 && is_leap_year(year) ? 1 : 0);
}

// Days from 1 January 1970, a Thursday.
int64_t epoch_days(date_t date) {
    int64_t days = date.day - 1;
    for (unsigned month = 1; month < date.month; ++month) days += days_in_month(date.year, month);
    for (unsigned year = 1970; year < date.year; ++year) days += is_leap_year(year) ? 366 : 365;
    return days;
}

int64_t last_sunday(unsigned year, unsigned month) {
    int64_t last = epoch_days({year, month, days_in_month(year, month)});
    return last - (last + 4) % 7;
}

// Seconds of the epoch at which the day begins in Germany. Summer time starts
// and ends on the last Sundays of March and October (the rule since 1996), in
// both cases some hours after that day's beginning.
int64_t german_midnight(date_t date) {
    int64_t day = epoch_days(date);
    bool summer = day > last_sunday(date.year, 3) && day <= last_sunday(date.year, 10);
    return day * 86400 - (summer ? 7200 : 3600);
}

// A yyyy-mm-dd text of a year for which the rule above holds.
date_t read_date(const row_t& row, const std::string& text) {
    bool formed = text.size() == 10 && is_digits(text.substr(0, 4), 4) && text[4] == '-' &&
                  is_digits(text.substr(5, 2), 2) && text[7] == '-' && is_digits(text.substr(8, 2), 2);
    auto number = [&](size_t at, size_t width) {
        return static_cast<unsigned>(strtoul(text.substr(at, width).c_str(), nullptr, 10));
    };
    date_t date = formed ? date_t{number(0, 4), number(5, 2), number(8, 2)} : date_t{};
    bool exists = date.year >= 1996 && date.month >= 1 && date.month <= 12 && date.day >= 1 &&
                  date.day <= days_in_month(date.year, date.month);
    if (!exists) stop(row, "bad valid_from, expected a date yyyy-mm-dd from 1996 on");
    return date;
}

// -------------------------------------------------------------- entries ----

// Appends the entries of one kind, ascending by key. Returns their number.
size_t append_sorted(std::vector<entry_t>& entries, const std::map<std::string, std::string>& bodies) {
    for (const auto& [key, body] : bodies) entries.push_back({key, body});
    return bodies.size();
}

std::map<std::string, std::string> bic_bodies(const list_t& list) {
    std::map<std::string, std::string> bodies;
    for (const row_t& row : list.rows) {
        const std::string& bic = row.fields[bics_bic];
        const std::string& name = row.fields[bics_name];
        if (!is_bic(bic)) stop(row, "BIC is not 11 capital letters and digits");
        unsigned flags = read_bit(row, bics_sct, "sct") | read_bit(row, bics_sdd, "sdd") << 1 |
                         read_bit(row, bics_cor1, "cor1") << 2 | read_bit(row, bics_b2b, "b2b") << 3;
        if (name.size() + 1 > directory_name_size) {
            stop(row, "name of " + std::to_string(name.size()) + " bytes does not fit a record");
        }
        std::string body = static_cast<char>(flags) + name + '\0';
        if (!bodies.emplace(bic, body).second) stop(row, "duplicate BIC " + bic);
    }
    return bodies;
}

std::map<std::string, std::string> national_bodies(const list_t& list, const std::string& prefix) {
    std::map<std::string, std::string> bodies;
    for (const row_t& row : list.rows) {
        const std::string& id = row.fields[national_id];
        if (!is_digits(id, 5)) stop(row, "bank id is not 5 digits");
        check_optional_bic(row, row.fields[national_bic]);
        std::string body = join(row, national_bic) + '\0';
        if (!bodies.emplace(prefix + id, body).second) stop(row, "duplicate bank id " + id);
    }
    return bodies;
}

// What a German bank code has in one period. `row` is null if it has nothing.
struct period_t {
    const row_t* row = nullptr;
    std::string successor;
    std::string record;  // the sub-record without its terminator
};

using german_banks_t = std::map<std::string, std::array<period_t, 2>>;

period_t read_period(const row_t& row) {
    unsigned flag = read_bit(row, de_flag, "flag");
    unsigned method = read_method(row, row.fields[de_method]);
    unsigned rule = read_rule(row, row.fields[de_rule]);
    const std::string& successor = row.fields[de_successor];
    if (!successor.empty() && !is_digits(successor, 8)) {
        stop(row, "successor is neither empty nor 8 digits");
    }
    check_optional_bic(row, row.fields[de_bic]);
    std::string record{static_cast<char>(flag), static_cast<char>(method), static_cast<char>(rule >> 8),
                       static_cast<char>(rule & 0xFF)};
    return {&row, successor, record + join(row, de_successor)};
}

// The distinct values of valid_from, earlier first; at most two of them.
std::map<std::string, date_t> find_periods(const list_t& list) {
    std::map<std::string, date_t> dates;
    for (const row_t& row : list.rows) {
        dates.emplace(row.fields[de_valid_from], read_date(row, row.fields[de_valid_from]));
        if (dates.size() > 2) stop(row, "third valid_from");
    }
    return dates;
}

// A successor has to be in the directory, and following successors has to come
// to an end, in each period by itself. A walk ends where another one came by.
void check_successors(const german_banks_t& banks, size_t period) {
    auto at = [&](const german_banks_t::const_iterator& bank) -> const period_t& {
        return bank->second[bank->second[period].row ? period : 1];
    };
    std::map<std::string, size_t> walks;  // by bank code, the one that came by first
    size_t walk = 0;
    for (auto bank = banks.begin(); bank != banks.end(); ++bank, ++walk) {
        const period_t& start = at(bank);
        if (!start.successor.empty() && !banks.count(start.successor)) {
            stop(*start.row, "successor " + start.successor + " is not in the list");
        }
        auto next = bank;
        while (next != banks.end() && !at(next).successor.empty() && walks.emplace(next->first, walk).second) {
            next = banks.find(at(next).successor);
        }
        auto passed = next == banks.end() ? walks.end() : walks.find(next->first);
        if (passed != walks.end() && passed->second == walk) {
            stop(*start.row, "successor " + start.successor + " leads in a circle");
        }
    }
}

// The German banks, leaving the bank codes of the later period. Sets what the
// directory keeps of the periods.
german_banks_t german_banks(const list_t& list, bool allow_bad_successors, directory_t* directory) {
    std::map<std::string, date_t> dates = find_periods(list);
    if (dates.size() == 2) directory->switch_time = german_midnight(dates.rbegin()->second);
    german_banks_t banks;
    for (const row_t& row : list.rows) {
        const std::string& code = row.fields[de_code];
        if (!is_digits(code, 8)) stop(row, "bank code is not 8 digits");
        size_t period = row.fields[de_valid_from] == dates.rbegin()->first ? 1 : 0;
        period_t& place = banks[code][period];
        if (place.row) stop(row, "duplicate bank code " + code);
        place = read_period(row);
    }
    size_t all = banks.size();
    for (auto bank = banks.begin(); bank != banks.end();) {
        bank = bank->second[1].row ? std::next(bank) : banks.erase(bank);
    }
    for (size_t period = 0; period < 2 && !allow_bad_successors; ++period) check_successors(banks, period);
    directory->ended_de_count = all - banks.size();
    return banks;
}

std::map<std::string, std::string> german_bodies(const german_banks_t& banks) {
    std::map<std::string, std::string> bodies;
    for (const auto& [code, periods] : banks) {
        const auto& [earlier, later] = periods;
        bool changed = earlier.row && earlier.record != later.record;
        bodies["_DE" + code] = (changed ? earlier.record + '|' : std::string()) + later.record + '\0';
    }
    return bodies;
}

}  // namespace

lists_t read_lists(const list_texts_t& texts) {
    return {read_list(texts.de, german_header), read_list(texts.bic, bic_header), read_list(texts.at, national_header),
            read_list(texts.ch, national_header)};
}

directory_t make_directory(const lists_t& lists, bool allow_bad_successors) {
    directory_t directory{};
    german_banks_t german = german_banks(lists.de, allow_bad_successors, &directory);
    directory.bic_count = append_sorted(directory.entries, bic_bodies(lists.bic));
    directory.at_count = append_sorted(directory.entries, national_bodies(lists.at, "_AT"));
    directory.ch_count = append_sorted(directory.entries, national_bodies(lists.ch, "_CH"));
    directory.de_count = append_sorted(directory.entries, german_bodies(german));
    warn_of_codes(lists.de, &directory);
    warn_of_order(lists.de, {de_code, de_valid_from}, &directory);
    warn_of_order(lists.bic, {bics_bic}, &directory);
    for (const list_t* list : {&lists.at, &lists.ch}) warn_of_order(*list, {national_id}, &directory);
    return directory;
}
