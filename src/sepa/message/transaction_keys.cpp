// The keys of transactions, a row each. What fills, copies and wipes the texts
// of a record goes by the rows: a text that has none is never set.
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <string_view>

#include "sepa/iban/iban.h"
#include "sepa/message/charset.h"
#include "sepa/message/failure.h"
#include "sepa/message/key_index.h"
#include "sepa/message/transaction.h"
#include "sepa/message/wipe.h"
#include "sepa/text/amount.h"
#include "sepa/text/field_check.h"

namespace sepa_internal {

struct key_row_t;
using take_t = int(draft_t* draft, const key_row_t& row, const kv_pair_t& pair);

// The kinds of transaction that take a key, and where each keeps its text,
// unless what it keeps is no text.
struct key_place_t {
    bool in_transfers, in_debits;
    char* cti_tx_t::*transfer;
    char* ddi_tx_t::*debit;
};

struct key_row_t {
    std::string_view key;
    take_t* take;
    key_place_t place;
    // What the tests of texts need:
    size_t min_bytes = 0, max_bytes = 0;
    const char* length_failure = nullptr;
    int level = CHARSET_STRICT;
    const char* noun = nullptr;  // in "Invalid character '?' in <noun>"; null: any character will do
};

static constexpr key_place_t in_both(char* sepa_party_t::*party) { return {true, true, party, party}; }
static constexpr key_place_t in_both(char* cti_tx_t::*transfer, char* ddi_tx_t::*debit) {
    return {true, true, transfer, debit};
}
static constexpr key_place_t in_transfers(char* cti_tx_t::*transfer) { return {true, false, transfer, nullptr}; }
static constexpr key_place_t in_debits(char* ddi_tx_t::*debit) { return {false, true, nullptr, debit}; }

// A later value replaces an earlier one.
static int keep(draft_t* draft, const key_row_t& row, const text_t& text);

static int take_limited(draft_t* draft, const key_row_t& row, const char* value, int level, const char* noun) {
    char bad;
    text_t text = {value, value ? strnlen(value, row.max_bytes + 1) : 0, 0};
    if (!value || text.length < row.min_bytes || text.length > row.max_bytes)
        return fail(draft->handle, row.length_failure);
    if (noun && !check_charset(draft->rulebook, &text, &bad, level))
        return fail_with(draft->handle, "Invalid character '%c' in %s", bad, noun);
    if (!noun) text = measured(text.bytes, text.length);
    return keep(draft, row, text);
}

static int take_text(draft_t* draft, const key_row_t& row, const kv_pair_t& pair) {
    return take_limited(draft, row, pair.value, row.level, row.noun);
}

static int take_name(draft_t* draft, const key_row_t& row, const kv_pair_t& pair) {
    return take_limited(draft, row, pair.value, row.level, draft->debit ? "debtor name" : "creditor name");
}

static int take_mref(draft_t* draft, const key_row_t& row, const kv_pair_t& pair) {
    return take_limited(draft, row, pair.value, draft->rulebook.mref_level, row.noun);
}

// Texts that the tests leave no markup in.
static int keep_plain(draft_t* draft, const key_row_t& row, const char* text) {
    return keep(draft, row, {text, strlen(text), 0});
}

static int take_iban(draft_t* draft, const key_row_t& row, const kv_pair_t& pair) {
    return IBAN_check(pair.value, &draft->handle->last_error) == 1 ? keep_plain(draft, row, pair.value) : 0;
}

static int take_bic(draft_t* draft, const key_row_t& row, const kv_pair_t& pair) {
    if (sepa_check_field(FIELD_BIC, pair.value)) return keep_plain(draft, row, pair.value);
    if (!bic_in_capitals(pair.value, draft->bic)) return fail(draft->handle, "Invalid BIC");
    if (!sepa_check_field(FIELD_BIC, draft->bic)) return fail(draft->handle, "Invalid BIC format");
    return keep_plain(draft, row, draft->bic);
}

static int take_country(draft_t* draft, const key_row_t& row, const kv_pair_t& pair) {
    const char* country = pair.value;
    if (!length_within(country, 2, 2) || !is_capital(country[0]) || !is_capital(country[1]))
        return fail(draft->handle, "Invalid country code");
    return keep_plain(draft, row, country);
}

static int take_address_line(draft_t* draft, const key_row_t& row, const kv_pair_t& pair) {
    if (draft->rulebook.address == address_of_parts)
        return fail(draft->handle, "selected SEPA rulebook requires structured address data");
    return take_text(draft, row, pair);
}

// A transfer ignores keys that it does not know.
static int take_unknown(draft_t* draft, const char* key) {
    return draft->transfer ? 1 : fail_with(draft->handle, "Invalid transaction property '%s'", key);
}

// The parts of an address are tested for their lengths alone. Where addresses
// are lines they are unknown, but for the first, which tells a debit why.
static int take_address_part(draft_t* draft, const key_row_t& row, const kv_pair_t& pair) {
    if (draft->rulebook.address == address_of_lines) {
        if (draft->debit && row.key == "addrDept")
            return fail(draft->handle, "selected SEPA rulebook does not support structured address data");
        return take_unknown(draft, pair.key);
    }
    if (!length_within(pair.value, row.min_bytes, row.max_bytes))
        return fail_with(draft->handle, "Invalid format for '%s'", pair.key);
    return keep(draft, row, measured(pair.value));
}

// Whether sepa_format_amount can write it: its cents fit a signed 64-bit integer.
static bool is_writable(double amount) {
    constexpr double two_to_63 = 9223372036854775808.0;
    return std::isfinite(amount) && fabs(amount * 100) < two_to_63;  // numbers near it are whole
}

static int take_amount(draft_t* draft, const key_row_t&, const kv_pair_t& pair) {
    constexpr const char* invalid = "Invalid amount";
    sepa_t* handle = draft->handle;
    if (!pair.value) return fail(handle, invalid);
    const char* end;
    errno = 0;
    double amount = parse_amount(pair.value, &end);
    if (*end) return fail(handle, invalid);
    if (errno == ERANGE && (amount == 0 || !std::isfinite(amount))) return fail(handle, invalid);
    if (amount == 0) return fail(handle, "Empty amount not allowed");
    if (amount < 0) return fail(handle, "Negative or zero amount not allowed");
    if (!is_writable(amount)) return fail(handle, invalid);
    amount = round(amount * 100) / 100;
    if (!is_writable(handle->ctrl_sum + amount)) return fail(handle, invalid);
    *amount_of(*draft) = amount;
    return 1;
}

static int take_sequence(draft_t* draft, const key_row_t&, const kv_pair_t& pair) {
    constexpr const char* codes[] = {"frst", "rcur", "ooff", "fnal"};  // from SEQ_FRST on
    for (int32_t i = 0; pair.value && i < SEQ_FNAL; ++i) {
        if (!same_text(pair.value, codes[i])) continue;
        draft->debit->seq = SEQ_FRST + i;
        return 1;
    }
    return fail(draft->handle, "Invalid/unknown sequence type");
}

static int take_smnda(draft_t* draft, const key_row_t&, const kv_pair_t& pair) {
    const char* value = pair.value ? pair.value : "(null)";
    if (strcmp(value, "1") != 0) return fail_with(draft->handle, "Invalid value '%s' for SMNDA flag", value);
    draft->debit->smnda = 1;
    return 1;
}

static constexpr key_row_t key_rows[] = {
    {"iban", take_iban, in_both(&sepa_party_t::iban)},
    {"amount", take_amount, in_both(nullptr, nullptr)},
    {"name", take_name, in_both(&sepa_party_t::name), 1, 70, "Invalid name (must be 1-70 characters)",
     CHARSET_EXTENDED},
    {"bic", take_bic, in_both(&sepa_party_t::bic)},
    {"date", take_text, in_both(&cti_tx_t::date, &ddi_tx_t::date), date_length, date_length,
     "Invalid execution date (format: yyyy-mm-dd)"},
    {"id", take_text, in_both(&sepa_party_t::id), 1, 35, "Invalid end-to-end ID (must be 1-35 characters)",
     CHARSET_SPACE, "end-to-end ID"},
    {"ref", take_text, in_both(&cti_tx_t::ref, &ddi_tx_t::ref), 0, 140,
     "Invalid unstructured remittance information (must be 0-140 characters)", CHARSET_EXTENDED,
     "unstructured remittance information"},
    {"purp", take_text, in_transfers(&cti_tx_t::purp), 4, 4, "Invalid purpose (must be 4 characters)"},

    {"seq", take_sequence, in_debits(nullptr)},
    {"mref", take_mref, in_debits(&ddi_tx_t::mref), 1, 35, "Invalid mandate reference (must be 1-35 characters)",
     CHARSET_STRICT, "mandate reference"},
    {"mdate", take_text, in_debits(&ddi_tx_t::mdate), date_length, date_length,
     "Invalid mandate signature date (format: yyyy-mm-dd)"},
    {"old_mref", take_text, in_debits(&ddi_tx_t::old_mref), 1, 35,
     "Invalid old mandate reference (must be 1-35 characters)", CHARSET_STRICT, "old mandate reference"},
    {"old_iban", take_iban, in_debits(&ddi_tx_t::old_iban)},
    {"smnda", take_smnda, in_debits(nullptr)},

    {"addrCC", take_country, in_both(&sepa_party_t::addrCC)},
    {"addrLine1", take_address_line, in_both(&sepa_party_t::addrLine1), 1, 70,
     "Invalid address line 1 (must be 1-70 chars)", CHARSET_EXTENDED, "address line 1"},
    {"addrLine2", take_address_line, in_both(&sepa_party_t::addrLine2), 1, 70,
     "Invalid address line 2 (must be 1-70 chars)", CHARSET_EXTENDED, "address line 2"},
    {"addrDept", take_address_part, in_both(&sepa_party_t::addrDept), 1, 70},
    {"addrSubDept", take_address_part, in_both(&sepa_party_t::addrSubDept), 1, 70},
    {"addrStreet", take_address_part, in_both(&sepa_party_t::addrStreet), 1, 70},
    {"addrNum", take_address_part, in_both(&sepa_party_t::addrNum), 1, 16},
    {"addrBldg", take_address_part, in_both(&sepa_party_t::addrBldg), 1, 35},
    {"addrFloor", take_address_part, in_both(&sepa_party_t::addrFloor), 1, 70},
    {"addrPoBox", take_address_part, in_both(&sepa_party_t::addrPoBox), 1, 16},
    {"addrRoom", take_address_part, in_both(&sepa_party_t::addrRoom), 1, 70},
    {"addrCode", take_address_part, in_both(&sepa_party_t::addrCode), 1, 16},
    {"addrTown", take_address_part, in_both(&sepa_party_t::addrTown), 1, 35},
    {"addrLoc", take_address_part, in_both(&sepa_party_t::addrLoc), 1, 35},
    {"addrDstrct", take_address_part, in_both(&sepa_party_t::addrDstrct), 1, 35},
    {"addrCtrySub", take_address_part, in_both(&sepa_party_t::addrCtrySub), 1, 35},
};

static_assert(std::size(key_rows) <= max_key_rows);

static constexpr bool texts_fit_their_heads() {
    for (const key_row_t& row : key_rows)
        if (row.max_bytes > max_record_text) return false;
    return true;
}
static_assert(texts_fit_their_heads());

static constexpr auto key_index = make_key_index(key_rows);
static_assert(key_index.good, "a key is too short or too long, or there have to be more cells");

// The row of a key in any case, or null.
static const key_row_t* find_row(const char* key, size_t length) {
    const key_cell_t* cell = find_key(key_index, key, length);
    return cell ? &key_rows[cell->row] : nullptr;
}

int take_key(draft_t* draft, const kv_pair_t& pair, size_t key_length) {
    const key_row_t* row = find_row(pair.key, key_length);
    if (!row) row = find_row(pair.key, strnlen(pair.key, key_length));
    if (!row || !(draft->transfer ? row->place.in_transfers : row->place.in_debits))
        return take_unknown(draft, pair.key);
    return row->take(draft, *row, pair);
}

static int keep(draft_t* draft, const key_row_t& row, const text_t& text) {
    auto index = static_cast<size_t>(&row - key_rows);
    auto bytes = const_cast<char*>(text.bytes);
    draft->texts[index] = text;
    draft->kept |= uint32_t{1} << index;
    if (draft->transfer) {
        draft->transfer->*row.place.transfer = bytes;
    } else {
        draft->debit->*row.place.debit = bytes;
    }
    return 1;
}

// Calls `visit` with each row that has a text, and the text.
template <typename Visit>
static void each_text(const draft_t& draft, Visit visit) {
    for (uint32_t left = draft.kept; left; left &= left - 1) {
        auto index = static_cast<size_t>(__builtin_ctz(left));
        visit(key_rows[index], draft.texts[index]);
    }
}

size_t texts_size(const draft_t& draft) {
    size_t size = 0;
    each_text(draft, [&](const key_row_t&, const text_t& text) { size += record_text_size(text); });
    return size;
}

static constexpr char* cti_tx_t::*place_in(const key_row_t& row, const cti_tx_t*) { return row.place.transfer; }
static constexpr char* ddi_tx_t::*place_in(const key_row_t& row, const ddi_tx_t*) { return row.place.debit; }

template <typename Record>
static void copy_each(const draft_t& draft, Record* record, char* at) {
    each_text(draft, [&](const key_row_t& row, const text_t& text) {
        record->*place_in(row, record) = put_record_text(at, text);
        at += record_text_size(text);
    });
}

template <typename Record>
static void wipe_each(Record* record) {
    for (const key_row_t& row : key_rows)
        if (auto place = place_in(row, record)) wipe_record_text(*record, place);
}

void copy_texts(const draft_t& draft, cti_tx_t* record, char* at) { copy_each(draft, record, at); }
void copy_texts(const draft_t& draft, ddi_tx_t* record, char* at) { copy_each(draft, record, at); }

void wipe_texts(cti_tx_t* record) { wipe_each(record); }
void wipe_texts(ddi_tx_t* record) { wipe_each(record); }

}  // namespace sepa_internal
