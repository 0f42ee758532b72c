#include <cstdlib>
#include <initializer_list>

#include "message/rulebook.h"
#include "message/wipe.h"

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
    wipe_block(handle, sizeof *handle);
}
