#include "sepa/message/credit_transfer_xml.h"

#include "sepa/message/document.h"
#include "sepa/message/xmlbuf_room.h"
#include "sepa/platform/clock.h"

using namespace sepa_internal;

static constexpr document_kind_t credit_transfer = {
    &rulebook_t::transfer_schema,
    "CstmrCdtTrfInitn",
    "cti_toXML: strdup() failed",
};

// Lines that are always there stand as one text: a few wide copies instead of
// one for each tab and bracket.
static constexpr auto write_transaction = [](auto& out, const rulebook_t& rulebook, const cti_tx_t& tx) {
    out.put("\t\t\t<CdtTrfTxInf>\n"sv);
    write_payment_id(out, tx);
    put_all(out,
            "\t\t\t\t<Amt>\n"
            "\t\t\t\t\t<InstdAmt Ccy=\"EUR\">"sv,
            amount_text_t(tx.amount).text(),
            "</InstdAmt>\n"
            "\t\t\t\t</Amt>\n"sv);
    if (tx.bic) {
        out.put(
            "\t\t\t\t<CdtrAgt>\n"
            "\t\t\t\t<FinInstnId>\n"sv);  // not indented, as Id in CdtrAcct: scripts and banks know these bytes
        write_bic(out, 5, rulebook, record_text(tx, &cti_tx_t::bic));
        out.put(
            "\t\t\t\t</FinInstnId>\n"
            "\t\t\t\t</CdtrAgt>\n"sv);
    }
    out.put("\t\t\t\t<Cdtr>\n"sv);
    xml_text(out, 5, "Nm", record_text(tx, &cti_tx_t::name));
    write_postal_address(out, rulebook, tx);
    out.put(
        "\t\t\t\t</Cdtr>\n"
        "\t\t\t\t<CdtrAcct>\n"
        "\t\t\t\t<Id>\n"sv);
    xml_text(out, 5, "IBAN", record_text(tx, &cti_tx_t::iban));
    out.put(
        "\t\t\t\t</Id>\n"
        "\t\t\t\t</CdtrAcct>\n"sv);
    if (tx.purp) {
        xml_open(out, 4, "Purp");
        xml_text(out, 5, "Cd", record_text(tx, &cti_tx_t::purp));
        xml_close(out, 4, "Purp");
    }
    out.put("\t\t\t\t<RmtInf>\n"sv);  // empty without `ref`; a debit has none then
    xml_text(out, 5, "Ustrd", record_text(tx, &cti_tx_t::ref));
    out.put(
        "\t\t\t\t</RmtInf>\n"
        "\t\t\t</CdtTrfTxInf>\n"sv);
};

template <typename Out>
static void write_block(Out& out, const document_t& document, const payment_block_t& block) {
    write_block_start(out, document, block, "TRF");
    xml_close(out, 3, "PmtTpInf");
    write_date(out, "ReqdExctnDt", block);
    write_own_party(out, document, {"Dbtr", "DbtrAcct", "DbtrAgt"});
    write_transactions<cti_tx_t>(out, document, block, write_transaction);
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
    if (!gather_transactions<cti_tx_t>(&document, check, write_transaction) || !prepare_document(&document)) return 0;
    return write_out(&document, room, [](auto& out, const document_t& ready) { write_all(out, ready); });
}

int cti_toXML(sepa_t* handle, xmlbuf_t* buffer) { return write_credit_transfer(handle, "", room_in(buffer)); }
