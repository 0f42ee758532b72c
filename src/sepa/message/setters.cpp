#include <cstdlib>
#include <cstring>

#include "sepa/iban/iban.h"
#include "sepa/message/failure.h"
#include "sepa/message/rulebook.h"
#include "sepa/message/value.h"
#include "sepa/message/wipe.h"
#include "sepa/text/field_check.h"
#include "sepa/text/mod97.h"
#include "sepa/text/scan.h"

using namespace sepa_internal;

// Replaces a field by a copy of `value`; the field is null if that fails.
static int store(sepa_t* handle, char** field, const char* value, const char* no_memory = "strdup() failed") {
    char* copy = strdup(value);
    wipe_text(field);
    *field = copy;
    return copy ? 1 : fail(handle, no_memory);
}

int sepa_setIBAN(sepa_t* handle, const char* iban) {
    const char* reason = nullptr;
    if (IBAN_check(iban, &reason) != 1) {
        if (!iban) iban = "(null)";
        return reason ? fail_with(handle, "%s (%s)", reason, iban) : fail_with(handle, "invalid IBAN (%s)", iban);
    }
    return store(handle, &handle->iban, iban);
}

static int set_bic(sepa_t* handle, const char* bic, bic_text_t& capitals) {
    if (!bic_in_capitals(bic, capitals)) return fail(handle, "sepa_setBIC: invalid BIC");
    if (!sepa_check_field(FIELD_BIC, capitals)) return fail(handle, "sepa_setBIC: invalid BIC format");
    return store(handle, &handle->bic, capitals, "sepa_setBIC: strdup() failed");
}

int sepa_setBIC(sepa_t* handle, const char* bic) {
    bic_text_t capitals;
    int done = set_bic(handle, bic, capitals);
    wipe(capitals, sizeof capitals);
    return done;
}

// Two of the texts name a function that there is not. Scripts compare them.
int sepa_setName(sepa_t* handle, const char* name) {
    constexpr size_t max_length = 70;
    char bad;
    if (!name || !*name) return fail(handle, "sepa_setAccount: Name too short");
    if (!length_within(name, 1, max_length)) return fail(handle, "sepa_setAccount: Name too long");
    if (!sepa_check_charset(name, &bad, CHARSET_EXTENDED))
        return fail_with(handle, "sepa_setName: invalid character '%c' in name", bad);
    return store(handle, &handle->name, name, "sepa_setName: strdup() failed");
}

int sepa_setCreditorIdentifier(sepa_t* handle, const char* identifier) {
    // The creditor's business code in bytes 4 to 6 has no part in the check digits.
    constexpr size_t min_length = 7, max_length = 35, proper_identifier = 7;
    size_t length = identifier ? strnlen(identifier, max_length + 1) : 0;
    if (length < min_length) return fail(handle, "Creditor Identifier too short");
    if (length > max_length) return fail(handle, "Creditor Identifier too long");
    int remainder = mod97(identifier, proper_identifier, length);
    if (remainder < 0) return fail(handle, "Invalid character in Creditor Identifier");
    if (remainder != 1) return fail(handle, "Invalid Creditor Identifier checksum");
    return store(handle, &handle->creditor_id, identifier);
}

// What the scan "%04u-%02u-%02u" accepts; text after the day is not looked at.
static bool scans_as_date(const char* p) {
    int32_t number;
    return scan_number(&p, 4, &number) && *p++ == '-' && scan_number(&p, 2, &number) && *p++ == '-' &&
           scan_number(&p, 2, &number);
}

int sepa_setDate(sepa_t* handle, const char* date) {
    if (!length_within(date, date_length, date_length)) return fail(handle, "Invalid date");
    if (!scans_as_date(date)) return fail(handle, "Invalid date format");
    return store(handle, &handle->date, date);
}

int sepa_setDDType(sepa_t* handle, long type) {
    if (handle->msgtype != SEPA_MSGTYPE_DDI) return fail(handle, "Not a direct debit message");
    if (type == SEPA_DDTYPE_COR1 && rulebook_in_force().cor1 != cor1_set_and_written)
        return fail(handle, "COR1 is not allowed with selected SEPA rulebook");
    if (type != SEPA_DDTYPE_CORE && type != SEPA_DDTYPE_COR1 && type != SEPA_DDTYPE_B2B)
        return fail(handle, unknown_instrument);
    handle->dd_type = static_cast<int32_t>(type);
    return 1;
}

int sepa_setBatchBooking(sepa_t* handle, bool batch_booking) {
    handle->batch_booking = batch_booking ? 1 : 0;
    return 1;
}

int sepa_setMessageId(sepa_t* handle, const char* msgid) {
    if (!sepa_check_message_id(msgid)) return fail(handle, "Invalid message id");
    char* copy = strdup(msgid);
    if (!copy) return fail(handle, SEPA_OUT_OF_MEMORY);
    wipe_text(&handle->msgid);
    handle->msgid = copy;
    return 1;
}
