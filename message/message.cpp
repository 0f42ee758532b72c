#include <cstdlib>
#include <cstring>
#include <initializer_list>

#include "iban/iban.h"
#include "message/handle.h"
#include "message/rulebook.h"
#include "statement/mt940.h"

using namespace sepa_internal;

std::atomic<uint32_t> message_counter{0};

sepa_t* sepa_new(long msgtype) {
    settle_rulebook();
    if (msgtype != SEPA_MSGTYPE_DDI && msgtype != SEPA_MSGTYPE_CTI) return nullptr;
    auto handle = static_cast<sepa_t*>(calloc(1, sizeof(sepa_t)));
    if (!handle) return nullptr;
    handle->msgtype = static_cast<int32_t>(msgtype);
    handle->batch_booking = 1;
    return handle;
}

template <typename Record>
static void free_list(void* head, void (*release)(Record*)) {
    for (auto record = static_cast<Record*>(head); record;) {
        Record* next = record->next;
        release(record);
        record = next;
    }
}

void sepa_free(sepa_t* handle) {
    if (!handle) return;
    if (handle->msgtype == SEPA_MSGTYPE_DDI)
        free_list<ddi_tx_t>(handle->tx_head, ddi_free);
    else
        free_list<cti_tx_t>(handle->tx_head, cti_free);
    for (char** text :
         {&handle->iban, &handle->bic, &handle->name, &handle->creditor_id, &handle->date, &handle->msgid})
        wipe_text(text);
    wipe_record(handle, sizeof *handle);
}

// Replaces a field by a copy of `value`; the field is null if that fails.
static int store(sepa_t* handle, char** field, const char* value, const char* no_memory) {
    char* copy = strdup(value);
    free(*field);
    *field = copy;
    return copy ? 1 : fail(handle, no_memory);
}

int sepa_setIBAN(sepa_t* handle, const char* iban) {
    const char* reason = nullptr;
    if (IBAN_check(iban, &reason) != 1) {
        if (!iban) iban = "(null)";
        return reason ? fail_with(handle, "%s (%s)", reason, iban) : fail_with(handle, "invalid IBAN (%s)", iban);
    }
    return store(handle, &handle->iban, iban, "strdup() failed");
}

int sepa_setBIC(sepa_t* handle, const char* bic) {
    char capitals[max_bic_length + 1];
    if (!bic_in_capitals(bic, capitals)) return fail(handle, "sepa_setBIC: invalid BIC");
    if (!sepa_check_field(FIELD_BIC, capitals)) return fail(handle, "sepa_setBIC: invalid BIC format");
    return store(handle, &handle->bic, capitals, "sepa_setBIC: strdup() failed");
}

int sepa_setName(sepa_t* handle, const char* name) {
    constexpr size_t max_length = 70;
    char bad;
    if (!name || !*name) return fail(handle, "sepa_setAccount: Name too short");
    if (strnlen(name, max_length + 1) > max_length) return fail(handle, "sepa_setAccount: Name too long");
    if (!sepa_check_charset(name, &bad, CHARSET_EXTENDED))
        return fail_with(handle, "sepa_setName: invalid character '%c' in name", bad);
    return store(handle, &handle->name, name, "sepa_setName: strdup() failed");
}

// Remainder by 97 of the identifier proper (behind the creditor's business
// code in bytes 4 to 6), country code and check digits; -1 for a byte that is
// neither a digit nor a capital letter.
static int creditor_id_remainder(const char* identifier, size_t length) {
    unsigned remainder = 0;
    for (size_t i = 7; i < length + 4; ++i) {
        char c = identifier[i < length ? i : i - length];
        if (c >= '0' && c <= '9')
            remainder = (remainder * 10 + static_cast<unsigned>(c - '0')) % 97;
        else if (c >= 'A' && c <= 'Z')
            remainder = (remainder * 100 + static_cast<unsigned>(c - 'A') + 10) % 97;
        else
            return -1;
    }
    return static_cast<int>(remainder);
}

int sepa_setCreditorIdentifier(sepa_t* handle, const char* identifier) {
    constexpr size_t min_length = 7, max_length = 35;
    size_t length = identifier ? strnlen(identifier, max_length + 1) : 0;
    if (length < min_length) return fail(handle, "Creditor Identifier too short");
    if (length > max_length) return fail(handle, "Creditor Identifier too long");
    int remainder = creditor_id_remainder(identifier, length);
    if (remainder < 0) return fail(handle, "Invalid character in Creditor Identifier");
    if (remainder != 1) return fail(handle, "Invalid Creditor Identifier checksum");
    return store(handle, &handle->creditor_id, identifier, "strdup() failed");
}

// Steps over one unsigned number as the scan "%<width>u" does: white space in
// front is skipped, a sign counts as one of the `width` characters. Returns
// null if there is no digit.
static const char* skip_number(const char* p, int width) {
    while (*p == ' ' || (*p >= '\t' && *p <= '\r')) ++p;
    if (*p == '-' || *p == '+') {
        ++p;
        --width;
    }
    const char* digits = p;
    while (width-- > 0 && *p >= '0' && *p <= '9') ++p;
    return p == digits ? nullptr : p;
}

// What the scan "%04u-%02u-%02u" accepts; text behind the day is not looked at.
static bool scans_as_date(const char* p) {
    p = skip_number(p, 4);
    if (!p || *p++ != '-') return false;
    p = skip_number(p, 2);
    if (!p || *p++ != '-') return false;
    return skip_number(p, 2) != nullptr;
}

int sepa_setDate(sepa_t* handle, const char* date) {
    if (!date || strnlen(date, date_length + 1) != date_length) return fail(handle, "Invalid date");
    if (!scans_as_date(date)) return fail(handle, "Invalid date format");
    return store(handle, &handle->date, date, "strdup() failed");
}
