#include "tools/bank_lists.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <map>

namespace {

// Room for one text in a bank record, and what a BIC entry's record holds in
// it besides the name: BIC and country, each with a NUL, and the name's own.
constexpr size_t TEXT_SIZE = 168;
constexpr size_t BIC_TEXT_REST = 12 + 1 + 3;

// ---------------------------------------------------------------- lists ----

struct row_t {
    size_t line;
    std::vector<std::string> fields;
};

struct list_t {
    std::string file;
    std::vector<row_t> rows;
};

// Length of the UTF-8 character at `at`, or 0 if there is none: overlong
// forms, surrogates and anything above U+10FFFF are none.
size_t utf8_length(const std::string& text, size_t at) {
    auto byte = [&](size_t i) { return at + i < text.size() ? static_cast<unsigned char>(text[at + i]) : 0u; };
    auto follows = [&](size_t i, unsigned low = 0x80, unsigned high = 0xBF) {
        return byte(i) >= low && byte(i) <= high;
    };
    unsigned first = byte(0);
    if (first < 0x80) return 1;
    if (first >= 0xC2 && first <= 0xDF) return follows(1) ? 2 : 0;
    if (first >= 0xE0 && first <= 0xEF) {
        unsigned low = first == 0xE0 ? 0xA0 : 0x80;
        unsigned high = first == 0xED ? 0x9F : 0xBF;
        return follows(1, low, high) && follows(2) ? 3 : 0;
    }
    if (first >= 0xF0 && first <= 0xF4) {
        unsigned low = first == 0xF0 ? 0x90 : 0x80;
        unsigned high = first == 0xF4 ? 0x8F : 0xBF;
        return follows(1, low, high) && follows(2) && follows(3) ? 4 : 0;
    }
    return 0;
}

// Refuses what no field may hold: broken UTF-8, control characters, and the
// bar that separates the fields of an entry.
void check_characters(const std::string& file, size_t line, const std::string& text) {
    for (size_t at = 0; at < text.size();) {
        size_t length = utf8_length(text, at);
        if (length == 0) stop(file, line, "invalid UTF-8");
        auto first = static_cast<unsigned char>(text[at]);
        bool c1_control = first == 0xC2 && static_cast<unsigned char>(text[at + 1]) < 0xA0;
        if (first < 0x20 || first == 0x7F || c1_control) stop(file, line, "control character in a text");
        if (first == '|') stop(file, line, "vertical bar in a text");
        at += length;
    }
}

std::vector<std::string> split_fields(const std::string& file, size_t line, const std::string& text) {
    std::vector<std::string> fields;
    for (size_t at = 0;; at++) {
        std::string field;
        if (at < text.size() && text[at] == '"') {
            for (at++;; at++) {
                if (at >= text.size()) stop(file, line, "bad quoting: no closing quote");
                if (text[at] != '"') {
                    field += text[at];
                    continue;
                }
                if (at + 1 >= text.size() || text[at + 1] != '"') break;
                field += text[at++];
            }
            at++;
            if (at < text.size() && text[at] != ',') stop(file, line, "bad quoting: text behind the closing quote");
        } else {
            for (; at < text.size() && text[at] != ','; at++) {
                if (text[at] == '"') stop(file, line, "bad quoting: quote inside a field without quotes");
                field += text[at];
            }
        }
        fields.push_back(field);
        if (at >= text.size()) return fields;
    }
}

// Reads a list whose first line is `header`. A line is a row: a quoted line
// break would be a control character, which no text may hold.
list_t read_list(const list_text_t& text_of_list, const std::string& header) {
    const auto& [file, content] = text_of_list;
    size_t width = static_cast<size_t>(std::count(header.begin(), header.end(), ',')) + 1;
    list_t list{file, {}};
    size_t line = 0;
    for (size_t at = 0; at < content.size(); line++) {
        size_t end = content.find('\n', at);
        if (end == std::string::npos) stop(file, line + 1, "the last line has no line end");
        std::string text = content.substr(at, end - at);
        at = end + 1;
        if (line == 0) {
            if (text != header) stop(file, 1, "wrong header, expected " + header);
            continue;
        }
        check_characters(file, line + 1, text);
        list.rows.push_back({line + 1, split_fields(file, line + 1, text)});
        if (list.rows.back().fields.size() != width) {
            stop(file, line + 1, "wrong number of fields, expected " + std::to_string(width));
        }
    }
    if (line == 0) stop(file, 1, "wrong header, expected " + header);
    return list;
}

// --------------------------------------------------------------- fields ----

bool is_digit(char c) { return c >= '0' && c <= '9'; }

bool is_digits(const std::string& text, size_t width) {
    return text.size() == width && std::all_of(text.begin(), text.end(), is_digit);
}

bool is_bic(const std::string& text) {
    auto allowed = [](char c) { return is_digit(c) || (c >= 'A' && c <= 'Z'); };
    return text.size() == 11 && std::all_of(text.begin(), text.end(), allowed);
}

unsigned read_bit(const list_t& list, const row_t& row, size_t column, const char* name) {
    const std::string& text = row.fields[column];
    if (text != "0" && text != "1") stop(list.file, row.line, std::string(name) + " is neither 0 nor 1");
    return text == "1";
}

unsigned read_method(const list_t& list, const row_t& row, const std::string& text) {
    unsigned value = 0;
    for (char c : text) {
        unsigned digit = 16;
        if (is_digit(c)) digit = static_cast<unsigned>(c - '0');
        if (c >= 'A' && c <= 'F') digit = static_cast<unsigned>(c - 'A') + 10;
        if (c >= 'a' && c <= 'f') digit = static_cast<unsigned>(c - 'a') + 10;
        if (text.size() != 2 || digit == 16) stop(list.file, row.line, "method is not two hexadecimal digits");
        value = value * 16 + digit;
    }
    if (text.empty()) stop(list.file, row.line, "method is not two hexadecimal digits");
    return value;
}

unsigned read_rule(const list_t& list, const row_t& row, const std::string& text) {
    if (text.empty()) stop(list.file, row.line, "rule is not a decimal number");
    unsigned value = 0;
    for (char c : text) {
        if (!is_digit(c)) stop(list.file, row.line, "rule is not a decimal number");
        value = value * 10 + static_cast<unsigned>(c - '0');
        if (value > 0xFFFF) stop(list.file, row.line, "rule does not fit in 16 bits");
    }
    return value;
}

void check_optional_bic(const list_t& list, const row_t& row, const std::string& text) {
    if (!text.empty() && !is_bic(text)) {
        stop(list.file, row.line, "BIC is neither empty nor 11 capital letters and digits");
    }
}

std::string join(const list_t& list, const row_t& row, size_t first) {
    std::string text = row.fields[first];
    for (size_t i = first + 1; i < row.fields.size(); i++) text += "|" + row.fields[i];
    if (text.size() + 1 > TEXT_SIZE) {
        stop(list.file, row.line, "text of " + std::to_string(text.size()) + " bytes does not fit a record");
    }
    return text;
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
    for (unsigned month = 1; month < date.month; month++) days += days_in_month(date.year, month);
    for (unsigned year = 1970; year < date.year; year++) days += is_leap_year(year) ? 366 : 365;
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
date_t read_date(const list_t& list, const row_t& row, const std::string& text) {
    bool formed = text.size() == 10 && is_digits(text.substr(0, 4), 4) && text[4] == '-' &&
                  is_digits(text.substr(5, 2), 2) && text[7] == '-' && is_digits(text.substr(8, 2), 2);
    auto number = [&](size_t at, size_t width) {
        return static_cast<unsigned>(strtoul(text.substr(at, width).c_str(), nullptr, 10));
    };
    date_t date = formed ? date_t{number(0, 4), number(5, 2), number(8, 2)} : date_t{};
    bool exists = date.year >= 1996 && date.month >= 1 && date.month <= 12 && date.day >= 1 &&
                  date.day <= days_in_month(date.year, date.month);
    if (!exists) stop(list.file, row.line, "bad valid_from, expected a date yyyy-mm-dd from 1996 on");
    return date;
}

// -------------------------------------------------------------- entries ----

// Appends the entries of one kind, ascending by key. Returns their number.
size_t append_sorted(std::vector<entry_t>& entries, const std::map<std::string, std::string>& bodies) {
    for (const auto& [key, body] : bodies) entries.push_back({key, body});
    return bodies.size();
}

std::map<std::string, std::string> read_bics(const list_text_t& text) {
    list_t list = read_list(text, "bic,sct,sdd,cor1,b2b,name");
    std::map<std::string, std::string> bodies;
    for (const row_t& row : list.rows) {
        const std::string& bic = row.fields[0];
        const std::string& name = row.fields[5];
        if (!is_bic(bic)) stop(list.file, row.line, "BIC is not 11 capital letters and digits");
        unsigned flags = read_bit(list, row, 1, "sct") | read_bit(list, row, 2, "sdd") << 1 |
                         read_bit(list, row, 3, "cor1") << 2 | read_bit(list, row, 4, "b2b") << 3;
        if (name.size() + BIC_TEXT_REST > TEXT_SIZE) {
            stop(list.file, row.line, "name of " + std::to_string(name.size()) + " bytes does not fit a record");
        }
        std::string body = static_cast<char>(flags) + name + '\0';
        if (!bodies.emplace(bic, body).second) stop(list.file, row.line, "duplicate BIC " + bic);
    }
    return bodies;
}

std::map<std::string, std::string> read_national(const list_text_t& text, const std::string& prefix) {
    list_t list = read_list(text, "bank_id,bic,name,postal_code,city,country");
    std::map<std::string, std::string> bodies;
    for (const row_t& row : list.rows) {
        const std::string& id = row.fields[0];
        if (!is_digits(id, 5)) stop(list.file, row.line, "bank id is not 5 digits");
        check_optional_bic(list, row, row.fields[1]);
        std::string body = join(list, row, 1) + '\0';
        if (!bodies.emplace(prefix + id, body).second) stop(list.file, row.line, "duplicate bank id " + id);
    }
    return bodies;
}

// What a German bank code has in one period. `line` is 0 if it has nothing.
struct period_t {
    size_t line = 0;
    std::string successor;
    std::string record;  // the sub-record without its terminator
};

using german_banks_t = std::map<std::string, std::array<period_t, 2>>;

period_t read_period(const list_t& list, const row_t& row) {
    unsigned flag = read_bit(list, row, 2, "flag");
    unsigned method = read_method(list, row, row.fields[3]);
    unsigned rule = read_rule(list, row, row.fields[4]);
    const std::string& successor = row.fields[5];
    if (!successor.empty() && !is_digits(successor, 8)) {
        stop(list.file, row.line, "successor is neither empty nor 8 digits");
    }
    check_optional_bic(list, row, row.fields[6]);
    std::string record{static_cast<char>(flag), static_cast<char>(method), static_cast<char>(rule >> 8),
                       static_cast<char>(rule & 0xFF)};
    return {row.line, successor, record + join(list, row, 5)};
}

// The distinct values of valid_from, earlier first; at most two of them.
std::map<std::string, date_t> find_periods(const list_t& list) {
    std::map<std::string, date_t> dates;
    for (const row_t& row : list.rows) {
        dates.emplace(row.fields[0], read_date(list, row, row.fields[0]));
        if (dates.size() > 2) stop(list.file, row.line, "third valid_from");
    }
    return dates;
}

// A successor has to be in the directory, and following successors has to come
// to an end, in each period by itself.
void check_successors(const std::string& file, const german_banks_t& banks, size_t period, bool warn_only) {
    auto report = [&](size_t line, const std::string& reason) {
        if (!warn_only) stop(file, line, reason);
        fprintf(stderr, "%s:%zu: warning: %s\n", file.c_str(), line, reason.c_str());
    };
    auto at = [&](const german_banks_t::const_iterator& bank) -> const period_t& {
        return bank->second[bank->second[period].line ? period : 1];
    };
    for (auto bank = banks.begin(); bank != banks.end(); ++bank) {
        const period_t& start = at(bank);
        size_t steps = 0;
        for (auto next = bank; next != banks.end() && !at(next).successor.empty(); steps++) {
            if (steps > banks.size()) {
                report(start.line, "successor " + start.successor + " leads in a circle");
                break;
            }
            next = banks.find(at(next).successor);
            if (next == banks.end() && steps == 0) {
                report(start.line, "successor " + start.successor + " is not in the list");
            }
        }
    }
}

// Reads the German list, leaving the bank codes of the later period. `later`
// gets that period's beginning, or stays if there is one period alone.
german_banks_t read_german(const list_text_t& text, bool allow_bad_successors, int64_t* later) {
    list_t list = read_list(text, "valid_from,bank_code,flag,method,rule,successor,bic,name,postal_code,city,country");
    std::map<std::string, date_t> dates = find_periods(list);
    if (dates.size() == 2) *later = german_midnight(dates.rbegin()->second);
    german_banks_t banks;
    for (const row_t& row : list.rows) {
        const std::string& code = row.fields[1];
        if (!is_digits(code, 8)) stop(list.file, row.line, "bank code is not 8 digits");
        size_t period = row.fields[0] == dates.rbegin()->first ? 1 : 0;
        period_t& place = banks[code][period];
        if (place.line) stop(list.file, row.line, "duplicate bank code " + code);
        place = read_period(list, row);
    }
    size_t all = banks.size();
    for (auto bank = banks.begin(); bank != banks.end();) {
        bank = bank->second[1].line ? std::next(bank) : banks.erase(bank);
    }
    for (size_t period = 0; period < 2; period++) check_successors(list.file, banks, period, allow_bad_successors);
    if (banks.size() < all) {
        printf("%s: bank codes that end with the earlier period: %zu\n", list.file.c_str(), all - banks.size());
    }
    return banks;
}

std::map<std::string, std::string> german_bodies(const german_banks_t& banks) {
    std::map<std::string, std::string> bodies;
    for (const auto& [code, periods] : banks) {
        const auto& [earlier, later] = periods;
        bool changed = earlier.line && earlier.record != later.record;
        bodies["_DE" + code] = (changed ? earlier.record + '|' : std::string()) + later.record + '\0';
    }
    return bodies;
}

}  // namespace

directory_t read_directory(const list_texts_t& lists, bool allow_bad_successors) {
    directory_t directory{};
    german_banks_t german = read_german(lists.de, allow_bad_successors, &directory.switch_time);
    directory.bic_count = append_sorted(directory.entries, read_bics(lists.bic));
    directory.at_count = append_sorted(directory.entries, read_national(lists.at, "_AT"));
    directory.ch_count = append_sorted(directory.entries, read_national(lists.ch, "_CH"));
    directory.de_count = append_sorted(directory.entries, german_bodies(german));
    return directory;
}
