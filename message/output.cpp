#include <cstdlib>

#include "message/document.h"
#include "message/failure.h"
#include "message/wipe.h"

using namespace sepa_internal;

static int write_message(sepa_t* handle, xmlbuf_t* buffer) {
    if (!xmlbuf_append(buffer, "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n")) return fail(handle, SEPA_OUT_OF_MEMORY);
    return handle->msgtype == SEPA_MSGTYPE_DDI ? ddi_toXML(handle, buffer) : cti_toXML(handle, buffer);
}

char* sepa_toXML(sepa_t* handle) {
    auto buffer = static_cast<xmlbuf_t*>(calloc(1, sizeof(xmlbuf_t)));
    if (!buffer) return nullptr;
    char* document = nullptr;
    if (ensure_date(handle) && write_message(handle, buffer)) {
        document = buffer->text;
        buffer->text = nullptr;
    }
    wipe_block(buffer->text, buffer->used);
    free(buffer);
    return document;
}
