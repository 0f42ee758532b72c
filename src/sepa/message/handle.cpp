#include <cstdlib>
#include <initializer_list>

#include "sepa/message/rulebook.h"
#include "sepa/message/wipe.h"
#include "sepa/platform/record_arena.h"

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

void sepa_free(sepa_t* handle) {
    if (!handle) return;
    arena_free(&handle->records, wipe_block);
    for (char** text :
         {&handle->iban, &handle->bic, &handle->name, &handle->creditor_id, &handle->date, &handle->msgid})
        wipe_text(text);
    wipe_block(handle, sizeof *handle);
}
