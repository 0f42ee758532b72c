#include <cstdlib>
#include <cstring>

#include "sepa/statement/dates.h"
#include "sepa/statement/parse_run.h"
#include "sepa/statement/parser_handle.h"
#include "sepa/text/amount.h"
#include "sepa/text/scan.h"

namespace sepa_internal {

// Columns of a balance line, counted from the tag's first colon.
static constexpr size_t mark_column = 5;
static constexpr size_t date_column = 6;
static constexpr size_t currency_column = 12;
static constexpr size_t amount_column = 15;
static constexpr size_t amount_width = 15;

static bool read_account(parse_run_t* run) {
    run->statement->account = run->at + 4;
    if (!run->line_end) return false;
    *run->line_end = '\0';
    return true;
}

static bool read_number(parse_run_t* run) {
    run->at += run->at[3] == 'C' ? 5 : 4;
    const char* from = run->at;
    bool has_page = run->line_end && memchr(from, '/', static_cast<size_t>(run->line_end - from));
    if (!scan_unsigned(&from, &run->statement->number)) return false;
    if (!has_page) {
        run->statement->page = 0;
        return true;
    }
    if (*from != '/') return false;
    ++from;
    return scan_unsigned(&from, &run->statement->page);
}

// Makes the decimal comma of a balance a point, if it stands on the balance's line.
static void point_for_comma(const parse_run_t* run) {
    char* amount = run->ahead(amount_column);
    auto width = static_cast<size_t>(run->ahead(amount_column + amount_width) - amount);
    auto* comma = static_cast<char*>(memchr(amount, ',', width));
    if (comma && run->line_end && comma <= run->line_end) *comma = '.';
}

static bool read_balance(parse_run_t* run, struct tm* date, char* currency, double* saldo) {
    int32_t year;
    if (!scan_date(run->ahead(date_column), &year, date)) return false;
    for (size_t i = 0; i < 3; ++i) currency[i] = *run->ahead(currency_column + i);
    point_for_comma(run);
    *saldo = parse_amount(run->ahead(amount_column), nullptr);
    if (*run->ahead(mark_column) == 'D') *saldo *= -1.0;
    return true;
}

static bool read_opening(parse_run_t* run) {
    sepa_statement_t* to = run->statement;
    return read_balance(run, &to->open_date, to->open_currency, &to->open_saldo);
}

static bool read_closing(parse_run_t* run) {
    sepa_statement_t* to = run->statement;
    return read_balance(run, &to->close_date, to->close_currency, &to->close_saldo);
}

static bool end_statement(parse_run_t*) { return false; }

namespace {
struct line_rule_t {
    const char* start;
    bool (*read)(parse_run_t* run);
};
}  // namespace

// The first that matches counts, so that the most frequent stand first; lines
// that match none are skipped.
static const line_rule_t line_rules[] = {
    {":61:", read_transaction}, {":86:", read_details},  {":25:", read_account},  {":28C:", read_number},
    {":28:", read_number},      {":60F:", read_opening}, {":60M:", read_opening}, {":62F:", read_closing},
    {":62M:", read_closing},    {"-", end_statement},
};

static bool read_line(parse_run_t* run) {
    for (const line_rule_t& rule : line_rules)
        if (begins_with(run->at, rule.start)) return rule.read(run);
    return true;
}

// Reads lines from the cursor on and leaves the cursor where the statement ended.
static void read_statement(parse_run_t* run) {
    for (;;) {
        run->line_end = find_line_end(run->at, run->end);
        if (!read_line(run) || !run->line_end) return;
        run->at = run->line_end + 2;
    }
}

static sepa_statement_t* append_statement(sepa_stmt_parser_t* handle) {
    auto* statement = new_record<sepa_statement_t>(handle);
    if (!statement) return nullptr;
    (handle->last ? handle->last->next : handle->first) = statement;
    handle->last = statement;
    return statement;
}

// The reference of the next statement, after its tag, or null. A tag counts
// only after a line end, hence not at the very start of a file.
static char* find_statement(const parse_run_t* run) {
    char* line_end = find_line_end(run->at, run->end);
    while (line_end && !begins_with(line_end + 2, ":20:")) line_end = find_line_end(line_end + 2, run->end);
    return line_end ? line_end + 2 + strlen(":20:") : nullptr;
}

// Returns false when memory ran out.
static bool read_statements(parse_run_t* run) {
    while (char* ref = find_statement(run)) {
        char* ref_end = find_line_end(ref, run->end);
        if (!ref_end) return true;
        run->statement = append_statement(run->handle);
        if (!run->statement) return false;
        run->statement->ref = ref;
        *ref_end = '\0';
        run->at = ref_end + 2;
        read_statement(run);
        if (run->out_of_memory) return false;
    }
    return true;
}

}  // namespace sepa_internal

using namespace sepa_internal;

int mt940_parse(sepa_stmt_parser_t* handle, char* text) {
    if (!handle) return 0;
    if (!handle->parser) return parser_error(handle, "MT940 parser not initialized");
    if (!text || !*text) return 0;
    parse_run_t run{};
    run.handle = handle;
    run.at = text;
    run.end = text + strlen(text);
    if (read_statements(&run)) return 1;
    drop_statements(handle);
    return 0;
}
