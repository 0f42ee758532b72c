#include <cstdlib>
#include <cstring>

#include "sepa/statement/dates.h"
#include "sepa/statement/parse_run.h"
#include "sepa/statement/parser_handle.h"
#include "sepa/text/amount.h"
#include "sepa/text/ascii.h"

namespace sepa_internal {

static constexpr int january = 0, december = 11;

static sepa_stmt_tx_t* append_transaction(sepa_stmt_parser_t* handle, sepa_statement_t* statement) {
    auto* tx = new_record<sepa_stmt_tx_t>(handle);
    if (!tx) return nullptr;
    (statement->tx_last ? statement->tx_last->next : statement->tx_first) = tx;
    statement->tx_last = tx;
    return tx;
}

static int32_t two_digits(const char* at) { return (at[0] - '0') * 10 + (at[1] - '0'); }

// The booking date has no year of its own: it is the value date's, or its
// neighbour around the turn of the year.
static void read_booking_date(parse_run_t* run, int32_t year) {
    const char* at = run->at;
    if (!is_digit(at[0]) || !is_digit(at[1]) || !is_digit(at[2]) || !is_digit(at[3])) return;
    sepa_stmt_tx_t* tx = run->tx;
    tx->booked.tm_mon = two_digits(at) - 1;
    tx->booked.tm_mday = two_digits(at + 2);
    if (tx->valuta.tm_mon == december && tx->booked.tm_mon == january) ++year;
    if (tx->valuta.tm_mon == january && tx->booked.tm_mon == december) --year;
    tx->booked.tm_year = calendar_year(year);
    run->at = run->ahead(4);
}

// Reads "R", mark and the currency's letter; the mark is returned.
static char read_marks(parse_run_t* run) {
    if (*run->at == 'R') {
        run->tx->reversal = 1;
        run->at = run->ahead(1);
    }
    char mark = *run->at;
    run->at = run->ahead(1);
    if (is_letter(*run->at)) run->at = run->ahead(1);
    return mark;
}

static void read_amount(parse_run_t* run, char mark, const char* type) {
    char* comma = run->comma.find(run->at, run->end);
    if (comma < type) *comma = '.';
    run->tx->amount = parse_amount(run->at, nullptr) * (mark == 'D' ? -1.0 : 1.0);
}

// The two slashes in the reference, or null. Only a code that stands after the
// line's end makes the rest of the text count as the reference.
static char* find_bank_reference(parse_run_t* run, char* ref) {
    if (run->line_end && ref <= run->line_end)
        return static_cast<char*>(memmem(ref, static_cast<size_t>(run->line_end - ref), "//", 2));
    char* found = run->slashes.find(ref, run->end);
    return found < run->end ? found : nullptr;
}

static void read_references(parse_run_t* run, char* type) {
    sepa_stmt_tx_t* tx = run->tx;
    run->at = type;
    for (size_t i = 0; i < 3; ++i) tx->code[i] = *run->ahead(1 + i);
    char* ref = run->ahead(4);
    if (run->line_end) *run->line_end = '\0';
    char* slashes = find_bank_reference(run, ref);
    tx->ref = ref;
    if (!slashes) return;
    tx->bankref = slashes + 2;
    *slashes = '\0';
    // After the line's end the cut is the end of the text that is left to read.
    if (!run->line_end || slashes > run->line_end) run->end = slashes;
}

bool read_transaction(parse_run_t* run) {
    run->tx = append_transaction(run->handle, run->statement);
    if (!run->tx) {
        run->out_of_memory = true;
        return false;
    }
    run->at = run->ahead(4);
    int32_t year;
    if (!scan_date(run->at, &year, &run->tx->valuta)) return false;
    run->at = run->ahead(6);
    read_booking_date(run, year);
    char mark = read_marks(run);
    char* type = run->type.find(run->at, run->end);
    if (type == run->end) return false;
    read_amount(run, mark, type);
    read_references(run, type);
    return true;
}

}  // namespace sepa_internal
