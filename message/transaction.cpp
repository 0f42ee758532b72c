#include "message/transaction.h"

#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <initializer_list>

#include "iban/iban.h"
#include "message/charset.h"
#include "statement/mt940.h"

using namespace sepa_internal;

static constexpr text_rule_t name_rule = {1, 70, "Invalid name (must be 1-70 characters)", CHARSET_EXTENDED, nullptr};
static constexpr text_rule_t line1_rule = {1, 70, "Invalid address line 1 (must be 1-70 chars)", CHARSET_EXTENDED,
                                           "address line 1"};
static constexpr text_rule_t line2_rule = {1, 70, "Invalid address line 2 (must be 1-70 chars)", CHARSET_EXTENDED,
                                           "address line 2"};
static constexpr text_rule_t ref_rule = {0, 140,
                                         "Invalid unstructured remittance information (must be 0-140 characters)",
                                         CHARSET_EXTENDED, "unstructured remittance information"};
static constexpr text_rule_t id_rule = {1, 35, "Invalid end-to-end ID (must be 1-35 characters)", CHARSET_SPACE,
                                        "end-to-end ID"};

// Structured address, in the order of the record's fields.
static const struct {
    const char* key;
    int kind;
    char* sepa_party_t::*field;
} address_keys[] = {
    {"addrDept", FIELD_TEXT70, &sepa_party_t::addrDept},
    {"addrSubDept", FIELD_TEXT70, &sepa_party_t::addrSubDept},
    {"addrStreet", FIELD_TEXT70, &sepa_party_t::addrStreet},
    {"addrNum", FIELD_TEXT16, &sepa_party_t::addrNum},
    {"addrBldg", FIELD_TEXT35, &sepa_party_t::addrBldg},
    {"addrFloor", FIELD_TEXT70, &sepa_party_t::addrFloor},
    {"addrPoBox", FIELD_TEXT16, &sepa_party_t::addrPoBox},
    {"addrRoom", FIELD_TEXT70, &sepa_party_t::addrRoom},
    {"addrCode", FIELD_TEXT16, &sepa_party_t::addrCode},
    {"addrTown", FIELD_TEXT35, &sepa_party_t::addrTown},
    {"addrLoc", FIELD_TEXT35, &sepa_party_t::addrLoc},
    {"addrDstrct", FIELD_TEXT35, &sepa_party_t::addrDstrct},
    {"addrCtrySub", FIELD_TEXT35, &sepa_party_t::addrCtrySub},
};

static tx_key_result refuse(sepa_t* handle, const char* text) {
    fail(handle, text);
    return KEY_REFUSED;
}

// A later value replaces an earlier one.
static tx_key_result store(sepa_t* handle, const char* value, char** field) {
    char* copy = strdup(value);
    if (!copy) return refuse(handle, out_of_memory);
    wipe_text(field);
    *field = copy;
    return KEY_STORED;
}

static bool within(const char* value, size_t min_bytes, size_t max_bytes) {
    if (!value) return false;
    size_t length = strnlen(value, max_bytes + 1);
    return length >= min_bytes && length <= max_bytes;
}

tx_key_result take_text(const tx_draft_t& draft, const text_rule_t& rule, const char* value, char** field) {
    sepa_t* handle = draft.handle;
    char bad;
    if (!within(value, rule.min_bytes, rule.max_bytes)) return refuse(handle, rule.length_error);
    if (!check_charset(draft.rulebook, value, &bad, rule.level)) {
        fail_with(handle, "Invalid character '%c' in %s", bad, rule.noun);
        return KEY_REFUSED;
    }
    return store(handle, value, field);
}

tx_key_result take_iban(sepa_t* handle, const char* value, char** field) {
    if (IBAN_check(value, &handle->last_error) != 1) return KEY_REFUSED;
    return store(handle, value, field);
}

tx_key_result take_exact(sepa_t* handle, size_t bytes, const char* error, const char* value, char** field) {
    if (!within(value, bytes, bytes)) return refuse(handle, error);
    return store(handle, value, field);
}

static tx_key_result take_bic(sepa_t* handle, const char* value, char** field) {
    char capitals[max_bic_length + 1];
    if (!bic_in_capitals(value, capitals)) return refuse(handle, "Invalid BIC");
    if (!sepa_check_field(FIELD_BIC, capitals)) return refuse(handle, "Invalid BIC format");
    return store(handle, capitals, field);
}

static bool is_capital(char c) { return c >= 'A' && c <= 'Z'; }

static tx_key_result take_country(sepa_t* handle, const char* value, char** field) {
    if (!within(value, 2, 2) || !is_capital(value[0]) || !is_capital(value[1]))
        return refuse(handle, "Invalid country code");
    return store(handle, value, field);
}

static tx_key_result take_address_line(const tx_draft_t& draft, const text_rule_t& rule, const char* value,
                                       char** field) {
    if (draft.rulebook.address == ADDRESS_OF_PARTS)
        return refuse(draft.handle, "selected SEPA rulebook requires structured address data");
    return take_text(draft, rule, value, field);
}

// Whether sepa_format_amount can write it: its cents fit a signed 64-bit integer.
static bool is_writable(double amount) {
    constexpr double two_to_63 = 9223372036854775808.0;
    return std::isfinite(amount) && fabs(round(amount * 100)) < two_to_63;
}

static tx_key_result take_amount(const tx_draft_t& draft, const char* value) {
    constexpr const char* invalid = "Invalid amount";
    sepa_t* handle = draft.handle;
    if (!value) return refuse(handle, invalid);
    const char* end;
    errno = 0;
    double amount = parse_amount(value, &end);
    if (*end) return refuse(handle, invalid);
    if (errno == ERANGE && (amount == 0 || !std::isfinite(amount))) return refuse(handle, invalid);
    if (amount == 0) return refuse(handle, "Empty amount not allowed");
    if (amount < 0) return refuse(handle, "Negative or zero amount not allowed");
    if (!is_writable(amount)) return refuse(handle, invalid);
    amount = round(amount * 100) / 100;
    if (!is_writable(handle->ctrl_sum + amount)) return refuse(handle, invalid);
    *draft.amount = amount;
    return KEY_STORED;
}

tx_key_result take_shared_key(const tx_draft_t& draft, const char* key, const char* value) {
    sepa_t* handle = draft.handle;
    sepa_party_t* party = draft.party;
    if (draft.rulebook.address == ADDRESS_OF_PARTS) {
        for (const auto& address : address_keys) {
            if (!same_key(key, address.key)) continue;
            if (sepa_check_field(address.kind, value)) return store(handle, value, &(party->*address.field));
            fail_with(handle, "Invalid format for '%s'", key);
            return KEY_REFUSED;
        }
    }
    if (same_key(key, "name")) {
        text_rule_t rule = name_rule;
        rule.noun = draft.name_noun;
        return take_text(draft, rule, value, &party->name);
    }
    if (same_key(key, "iban")) return take_iban(handle, value, &party->iban);
    if (same_key(key, "bic")) return take_bic(handle, value, &party->bic);
    if (same_key(key, "addrCC")) return take_country(handle, value, &party->addrCC);
    if (same_key(key, "addrLine1")) return take_address_line(draft, line1_rule, value, &party->addrLine1);
    if (same_key(key, "addrLine2")) return take_address_line(draft, line2_rule, value, &party->addrLine2);
    if (same_key(key, "ref")) return take_text(draft, ref_rule, value, draft.ref);
    if (same_key(key, "amount")) return take_amount(draft, value);
    if (same_key(key, "date"))
        return take_exact(handle, date_length, "Invalid execution date (format: yyyy-mm-dd)", value, draft.date);
    if (same_key(key, "id")) return take_text(draft, id_rule, value, &party->id);
    return KEY_UNKNOWN;
}

int check_party_complete(const tx_draft_t& draft) {
    if (!draft.party->iban) return fail(draft.handle, "IBAN missing");
    if (!draft.party->bic && draft.rulebook.bic_required) return fail(draft.handle, "BIC missing");
    return 1;
}

int check_amount_given(const tx_draft_t& draft) {
    return *draft.amount == 0 ? fail(draft.handle, "Amount missing") : 1;
}

void wipe_party(sepa_party_t* party) {
    for (char** text :
         {&party->id, &party->name, &party->iban, &party->bic, &party->addrCC, &party->addrLine1, &party->addrLine2})
        wipe_text(text);
    for (const auto& address : address_keys) wipe_text(&(party->*address.field));
}
