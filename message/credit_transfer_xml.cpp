#include "message/document.h"
#include "message/failure.h"
#include "platform/clock.h"

using namespace sepa_internal;

static constexpr document_kind_t credit_transfer = {
    &rulebook_t::transfer_schema,
    "CstmrCdtTrfInitn",
    "cti_toXML: strdup() failed",
};

static void write_transaction(document_t* document, const cti_tx_t& tx) {
    xml_writer_t* xml = &document->xml;
    xml_open(xml, 3, "CdtTrfTxInf");
    write_payment_id(document, tx);
    xml_open(xml, 4, "Amt");
    xml_instructed_amount(xml, 5, tx.amount);
    xml_close(xml, 4, "Amt");
    if (tx.bic) {
        xml_open(xml, 4, "CdtrAgt");
        xml_open(xml, 4, "FinInstnId");  // not indented, as Id in CdtrAcct: scripts and banks know these bytes
        xml_text(xml, 5, document->rulebook.bic_element, tx.bic);
        xml_close(xml, 4, "FinInstnId");
        xml_close(xml, 4, "CdtrAgt");
    }
    xml_open(xml, 4, "Cdtr");
    xml_text(xml, 5, "Nm", tx.name);
    write_postal_address(document, tx);
    xml_close(xml, 4, "Cdtr");
    xml_open(xml, 4, "CdtrAcct");
    xml_open(xml, 4, "Id");
    xml_text(xml, 5, "IBAN", tx.iban);
    xml_close(xml, 4, "Id");
    xml_close(xml, 4, "CdtrAcct");
    if (tx.purp) {
        xml_open(xml, 4, "Purp");
        xml_text(xml, 5, "Cd", tx.purp);
        xml_close(xml, 4, "Purp");
    }
    xml_open(xml, 4, "RmtInf");  // empty without `ref`; a debit has none then
    xml_text(xml, 5, "Ustrd", tx.ref);
    xml_close(xml, 4, "RmtInf");
    xml_close(xml, 3, "CdtTrfTxInf");
}

static void write_block(document_t* document, const payment_block_t& block, uint32_t number) {
    xml_writer_t* xml = &document->xml;
    write_block_start(document, block, number, "TRF");
    xml_close(xml, 3, "PmtTpInf");
    write_date(document, "ReqdExctnDt", block);
    write_own_party(document, {"Dbtr", "DbtrAcct", "DbtrAgt"});
    for (uint32_t i = 0; i < block.count; ++i)
        write_transaction(document, *static_cast<const cti_tx_t*>(block.items[i].record));
    xml_close(xml, 2, "PmtInf");
}

int cti_toXML(sepa_t* handle, xmlbuf_t* buffer) {
    document_t document = {handle, &credit_transfer, rulebook_in_force(), clock_now(), {buffer, true}};
    if (!ensure_message_id(&document) || !write_document_start(&document)) return 0;

    payment_order_t order;
    if (!payment_order_new(&order, handle)) return fail(handle, SEPA_OUT_OF_MEMORY);
    for (auto tx = static_cast<const cti_tx_t*>(handle->tx_head); tx; tx = tx->next)
        payment_order_add(&order, handle, tx->date, 0, tx->amount, tx);
    payment_order_sort(&order);
    write_blocks(order, [&](const payment_block_t& block, uint32_t number) { write_block(&document, block, number); });
    payment_order_free(&order);

    write_document_end(&document);
    return document.xml.good ? 1 : fail(handle, SEPA_OUT_OF_MEMORY);
}
