#include "sepa/message/document.h"

#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "sepa/message/failure.h"
#include "sepa/platform/clock.h"

namespace sepa_internal {

// Calendar numbers within the width that the texts below give them.
struct calendar_t {
    unsigned year, month, day, hour, minute, second;
};

static calendar_t calendar_of(const struct tm& time) {
    auto number = [](int value, unsigned limit) { return static_cast<unsigned>(value) % limit; };
    return {number(time.tm_year + 1900, 10000), number(time.tm_mon + 1, 100), number(time.tm_mday, 100),
            number(time.tm_hour, 100),          number(time.tm_min, 100),     number(time.tm_sec, 100)};
}

static calendar_t local_calendar(time_t now) {
    struct tm local;
    clock_local(now, &local);
    return calendar_of(local);
}

static calendar_t utc_calendar(time_t now) {
    struct tm utc;
    clock_utc(now, &utc);
    return calendar_of(utc);
}

int ensure_date(sepa_t* handle) {
    if (handle->date) return 1;
    auto date = static_cast<char*>(malloc(date_length + 1));
    if (!date) return fail(handle, "malloc() failed");
    calendar_t today = local_calendar(clock_now());
    snprintf(date, date_length + 1, "%04u-%02u-%02u", today.year, today.month, today.day);
    handle->date = date;
    return 1;
}

// A message without an id gets one.
static int ensure_message_id(document_t* document) {
    sepa_t* handle = document->handle;
    if (handle->msgid) return 1;
    uint32_t tail = (process_id() * 100U + message_counter.fetch_add(1)) % 10000000U;
    char id[36];
    calendar_t local = local_calendar(document->now);
    snprintf(id, sizeof id, "SEPA-%04u%02u%02u%02u%02u%02u-%07" PRIu32, local.year, local.month, local.day, local.hour,
             local.minute, local.second, tail);
    handle->msgid = strdup(id);
    return handle->msgid ? 1 : fail(handle, document->kind.no_msgid_memory);
}

static int check_schema(const document_t& document) {
    if (document.rulebook.*document.kind.schema) return 1;
    return fail(document.handle, "unknown/unsupported SEPA rulebook selected");
}

static int check_blocks(const document_t& document) {
    return document.blocks.no_memory ? fail(document.handle, SEPA_OUT_OF_MEMORY) : 1;
}

int prepare_document(document_t* document) {
    if (ensure_message_id(document) && check_schema(*document) && check_blocks(*document)) return 1;
    payment_blocks_free(&document->blocks);
    return 0;
}

created_t created_at(time_t now) {
    created_t created;
    calendar_t utc = utc_calendar(now);
    snprintf(created.text, sizeof created.text, "%04u-%02u-%02uT%02u:%02u:%02uZ", utc.year, utc.month, utc.day,
             utc.hour, utc.minute, utc.second);
    return created;
}

}  // namespace sepa_internal
