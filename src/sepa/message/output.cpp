#include <cstdlib>

#include "sepa/message/credit_transfer_xml.h"
#include "sepa/message/direct_debit_xml.h"
#include "sepa/message/document.h"
#include "sepa/message/wipe.h"
#include "sepa/message/xmlbuf_room.h"

using namespace sepa_internal;

static constexpr const char* head_line = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

int sepa_write_document(sepa_t* handle, const sepa_room_t& room) {
    if (!ensure_date(handle)) return 0;
    return handle->msgtype == SEPA_MSGTYPE_DDI ? write_direct_debit(handle, head_line, room)
                                               : write_credit_transfer(handle, head_line, room);
}

char* sepa_toXML(sepa_t* handle) {
    auto buffer = static_cast<xmlbuf_t*>(calloc(1, sizeof(xmlbuf_t)));
    if (!buffer) return nullptr;
    char* document = nullptr;
    if (sepa_write_document(handle, room_in(buffer))) {
        document = buffer->text;
        buffer->text = nullptr;
    }
    wipe_block(buffer->text, buffer->used);
    free(buffer);
    return document;
}
