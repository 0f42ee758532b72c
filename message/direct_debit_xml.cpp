#include "message/document.h"
#include "message/failure.h"
#include "platform/clock.h"

using namespace sepa_internal;

static constexpr document_kind_t direct_debit = {
    &rulebook_t::debit_schema,
    "CstmrDrctDbtInitn",
    "ddi_toXML: strdup() failed",
};

// Scheme codes by sepa_seq.
static constexpr const char* sequence_codes[] = {nullptr, "FRST", "RCUR", "OOFF", "FNAL"};

static int check_complete(sepa_t* handle) {
    if (!handle->iban) return fail(handle, "Missing creditor IBAN");
    if (!handle->bic) return fail(handle, "Missing creditor BIC");
    if (!handle->name) return fail(handle, "Missing creditor name");
    if (!handle->creditor_id) return fail(handle, "Missing creditor identifier");
    return handle->tx_count ? 1 : fail(handle, "No transactions available");
}

// The scheme's code of the local instrument, or null where the rulebook has none.
static const char* local_instrument(int dd_type, const rulebook_t& rulebook) {
    switch (dd_type) {
        case SEPA_DDTYPE_CORE: return "CORE";
        case SEPA_DDTYPE_COR1: return rulebook.cor1 == COR1_REFUSED ? nullptr : "COR1";
        case SEPA_DDTYPE_B2B: return "B2B";
        default: return nullptr;
    }
}

// An add takes a transaction without mandate data; no document leaves with one.
static int check_mandates(sepa_t* handle) {
    for (auto tx = static_cast<const ddi_tx_t*>(handle->tx_head); tx; tx = tx->next) {
        if (!tx->mref) return fail(handle, "Mandate reference missing");
        if (!tx->mdate) return fail(handle, "Mandate signature date missing");
    }
    return 1;
}

static void write_smnda(xml_writer_t* xml, const smnda_place_t& place) {
    xml_open(xml, 7, place.outer);
    xml_open(xml, 8, place.inner);
    xml_open(xml, 9, "Othr");
    xml_fixed(xml, 10, "Id", "SMNDA");
    xml_close(xml, 9, "Othr");
    xml_close(xml, 8, place.inner);
    xml_close(xml, 7, place.outer);
}

static void write_amendment(document_t* document, const ddi_tx_t& tx) {
    if (!tx.old_mref && !tx.old_iban && !tx.smnda) return;
    xml_writer_t* xml = &document->xml;
    xml_fixed(xml, 6, "AmdmntInd", "true");
    xml_open(xml, 6, "AmdmntInfDtls");
    xml_text(xml, 7, "OrgnlMndtId", tx.old_mref);
    if (tx.smnda) {
        write_smnda(xml, document->rulebook.smnda);
    } else if (tx.old_iban) {
        xml_open(xml, 7, "OrgnlDbtrAcct");
        xml_open(xml, 8, "Id");
        xml_text(xml, 9, "IBAN", tx.old_iban);
        xml_close(xml, 8, "Id");
        xml_close(xml, 7, "OrgnlDbtrAcct");
    }
    xml_close(xml, 6, "AmdmntInfDtls");
}

static void write_mandate(document_t* document, const ddi_tx_t& tx) {
    xml_writer_t* xml = &document->xml;
    xml_open(xml, 4, "DrctDbtTx");
    xml_open(xml, 5, "MndtRltdInf");
    xml_text(xml, 6, "MndtId", tx.mref);
    xml_text(xml, 6, "DtOfSgntr", tx.mdate);
    write_amendment(document, tx);
    xml_close(xml, 5, "MndtRltdInf");
    xml_close(xml, 4, "DrctDbtTx");
}

static void write_debtor_agent(document_t* document, const ddi_tx_t& tx) {
    xml_writer_t* xml = &document->xml;
    xml_open(xml, 4, "DbtrAgt");
    xml_open(xml, 5, "FinInstnId");
    if (tx.bic) {
        xml_text(xml, 6, document->rulebook.bic_element, tx.bic);
    } else {
        xml_open(xml, 6, "Othr");
        xml_fixed(xml, 7, "Id", "NOTPROVIDED");
        xml_close(xml, 6, "Othr");
    }
    xml_close(xml, 5, "FinInstnId");
    xml_close(xml, 4, "DbtrAgt");
}

static void write_transaction(document_t* document, const ddi_tx_t& tx) {
    xml_writer_t* xml = &document->xml;
    xml_open(xml, 3, "DrctDbtTxInf");
    write_payment_id(document, tx);
    xml_instructed_amount(xml, 4, tx.amount);
    write_mandate(document, tx);
    write_debtor_agent(document, tx);
    xml_open(xml, 4, "Dbtr");
    xml_text(xml, 5, "Nm", tx.name ? tx.name : "");  // there even if empty; a transfer has none then
    write_postal_address(document, tx);
    xml_close(xml, 4, "Dbtr");
    xml_open(xml, 4, "DbtrAcct");
    xml_open(xml, 5, "Id");
    xml_text(xml, 6, "IBAN", tx.iban);
    xml_close(xml, 5, "Id");
    xml_close(xml, 4, "DbtrAcct");
    if (tx.ref) {  // a transfer has RmtInf all the same, empty
        xml_open(xml, 4, "RmtInf");
        xml_text(xml, 5, "Ustrd", tx.ref);
        xml_close(xml, 4, "RmtInf");
    }
    xml_close(xml, 3, "DrctDbtTxInf");
}

static void write_creditor_scheme_id(document_t* document) {
    xml_writer_t* xml = &document->xml;
    xml_open(xml, 3, "CdtrSchmeId");
    xml_open(xml, 4, "Id");
    xml_open(xml, 5, "PrvtId");
    xml_open(xml, 6, "Othr");
    xml_text(xml, 7, "Id", document->handle->creditor_id);
    xml_open(xml, 7, "SchmeNm");
    xml_fixed(xml, 8, "Prtry", "SEPA");
    xml_close(xml, 7, "SchmeNm");
    xml_close(xml, 6, "Othr");
    xml_close(xml, 5, "PrvtId");
    xml_close(xml, 4, "Id");
    xml_close(xml, 3, "CdtrSchmeId");
}

static void write_block(document_t* document, const payment_block_t& block, uint32_t number, const char* instrument) {
    xml_writer_t* xml = &document->xml;
    write_block_start(document, block, number, "DD");
    xml_open(xml, 4, "LclInstrm");
    xml_fixed(xml, 5, "Cd", instrument);
    xml_close(xml, 4, "LclInstrm");
    xml_fixed(xml, 4, "SeqTp", sequence_codes[block.items->sequence]);
    xml_close(xml, 3, "PmtTpInf");
    write_date(document, "ReqdColltnDt", block);
    write_own_party(document, {"Cdtr", "CdtrAcct", "CdtrAgt"});
    write_creditor_scheme_id(document);
    for (uint32_t i = 0; i < block.count; ++i)
        write_transaction(document, *static_cast<const ddi_tx_t*>(block.items[i].record));
    xml_close(xml, 2, "PmtInf");
}

int ddi_toXML(sepa_t* handle, xmlbuf_t* buffer) {
    document_t document = {handle, &direct_debit, rulebook_in_force(), clock_now(), {buffer, true}};
    if (!check_complete(handle)) return 0;
    const char* instrument = local_instrument(handle->dd_type, document.rulebook);
    if (!instrument) return fail(handle, unknown_instrument);
    if (!check_mandates(handle) || !ensure_message_id(&document) || !write_document_start(&document)) return 0;

    payment_order_t order;
    if (!payment_order_new(&order, handle)) return fail(handle, SEPA_OUT_OF_MEMORY);
    for (auto tx = static_cast<const ddi_tx_t*>(handle->tx_head); tx; tx = tx->next)
        payment_order_add(&order, handle, tx->date, static_cast<uint8_t>(tx->seq), tx->amount, tx);
    payment_order_sort(&order);
    write_blocks(order, [&](const payment_block_t& block, uint32_t number) {
        write_block(&document, block, number, instrument);
    });
    payment_order_free(&order);

    write_document_end(&document);
    return document.xml.good ? 1 : fail(handle, SEPA_OUT_OF_MEMORY);
}
