#include "message/document.h"
#include "platform/clock.h"

using namespace sepa_internal;

static constexpr document_kind_t credit_transfer = {
    &rulebook_t::transfer_schema,
    "CstmrCdtTrfInitn",
    "cti_toXML: strdup() failed",
};

template <typename Out>
static void write_transaction(Out& out, const rulebook_t& rulebook, const cti_tx_t& tx) {
    xml_open(out, 3, "CdtTrfTxInf");
    write_payment_id(out, tx);
    xml_open(out, 4, "Amt");
    write_instructed_amount(out, 5, tx.amount);
    xml_close(out, 4, "Amt");
    if (tx.bic) {
        xml_open(out, 4, "CdtrAgt");
        xml_open(out, 4, "FinInstnId");  // not indented, as Id in CdtrAcct: scripts and banks know these bytes
        xml_text(out, 5, rulebook.bic_element, record_text(tx.bic));
        xml_close(out, 4, "FinInstnId");
        xml_close(out, 4, "CdtrAgt");
    }
    xml_open(out, 4, "Cdtr");
    xml_text(out, 5, "Nm", record_text(tx.name));
    write_postal_address(out, rulebook, tx);
    xml_close(out, 4, "Cdtr");
    xml_open(out, 4, "CdtrAcct");
    xml_open(out, 4, "Id");
    xml_text(out, 5, "IBAN", record_text(tx.iban));
    xml_close(out, 4, "Id");
    xml_close(out, 4, "CdtrAcct");
    if (tx.purp) {
        xml_open(out, 4, "Purp");
        xml_text(out, 5, "Cd", record_text(tx.purp));
        xml_close(out, 4, "Purp");
    }
    xml_open(out, 4, "RmtInf");  // empty without `ref`; a debit has none then
    xml_text(out, 5, "Ustrd", record_text(tx.ref));
    xml_close(out, 4, "RmtInf");
    xml_close(out, 3, "CdtTrfTxInf");
}

static constexpr auto write_each = [](auto& out, const rulebook_t& rulebook, const cti_tx_t& tx) {
    write_transaction(out, rulebook, tx);
};

template <typename Out>
static void write_block(Out& out, const document_t& document, const payment_block_t& block) {
    write_block_start(out, document, block, "TRF");
    xml_close(out, 3, "PmtTpInf");
    write_date(out, "ReqdExctnDt", block);
    write_own_party(out, document, {"Dbtr", "DbtrAcct", "DbtrAgt"});
    write_transactions<cti_tx_t>(out, document, block, write_each);
    xml_close(out, 2, "PmtInf");
}

template <typename Out>
static void write_all(Out& out, const document_t& document) {
    write_document_start(out, document);
    for (uint32_t i = 0; i < document.blocks.count; ++i) write_block(out, document, document.blocks.blocks[i]);
    write_document_end(out, document);
}

int sepa_internal::write_credit_transfer(sepa_t* handle, std::string_view head, const sepa_room_t& room) {
    document_t document = {handle, credit_transfer, rulebook_in_force(), clock_now(), head, {}, {}};
    auto check = [](const cti_tx_t&) -> const char* { return nullptr; };
    if (!gather_transactions<cti_tx_t>(&document, check, write_each) || !prepare_document(&document)) return 0;
    return write_out(&document, room, [](auto& out, const document_t& ready) { write_all(out, ready); });
}

int cti_toXML(sepa_t* handle, xmlbuf_t* buffer) { return write_credit_transfer(handle, "", room_in(buffer)); }
