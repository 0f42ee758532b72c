#include "sepa/message/direct_debit_xml.h"

#include "sepa/message/document.h"
#include "sepa/message/failure.h"
#include "sepa/message/xmlbuf_room.h"
#include "sepa/platform/clock.h"

using namespace sepa_internal;

static constexpr document_kind_t direct_debit = {
    &rulebook_t::debit_schema,
    "CstmrDrctDbtInitn",
    "ddi_toXML: strdup() failed",
};

// Scheme codes by sepa_seq.
static constexpr std::string_view sequence_codes[] = {"", "FRST", "RCUR", "OOFF", "FNAL"};

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
        case SEPA_DDTYPE_COR1: return rulebook.cor1 == cor1_refused ? nullptr : "COR1";
        case SEPA_DDTYPE_B2B: return "B2B";
        default: return nullptr;
    }
}

// An add takes a transaction without mandate data; no document leaves with one.
static const char* missing_of_mandate(const ddi_tx_t& tx) {
    if (!tx.mref) return "Mandate reference missing";
    return tx.mdate ? nullptr : "Mandate signature date missing";
}

template <typename Out>
static void write_smnda(Out& out, const smnda_place_t& place) {
    xml_open(out, 7, place.outer);
    xml_open(out, 8, place.inner);
    xml_open(out, 9, "Othr");
    xml_line(out, 10, "Id", "SMNDA"sv);
    xml_close(out, 9, "Othr");
    xml_close(out, 8, place.inner);
    xml_close(out, 7, place.outer);
}

template <typename Out>
static void write_amendment(Out& out, const rulebook_t& rulebook, const ddi_tx_t& tx) {
    if (!tx.old_mref && !tx.old_iban && !tx.smnda) return;
    xml_line(out, 6, "AmdmntInd", "true"sv);
    xml_open(out, 6, "AmdmntInfDtls");
    xml_text(out, 7, "OrgnlMndtId", record_text(tx, &ddi_tx_t::old_mref));
    if (tx.smnda) {
        write_smnda(out, rulebook.smnda);
    } else if (tx.old_iban) {
        xml_open(out, 7, "OrgnlDbtrAcct");
        xml_open(out, 8, "Id");
        xml_text(out, 9, "IBAN", record_text(tx, &ddi_tx_t::old_iban));
        xml_close(out, 8, "Id");
        xml_close(out, 7, "OrgnlDbtrAcct");
    }
    xml_close(out, 6, "AmdmntInfDtls");
}

template <typename Out>
static void write_debtor_agent(Out& out, const rulebook_t& rulebook, const ddi_tx_t& tx) {
    out.put(
        "\t\t\t\t<DbtrAgt>\n"
        "\t\t\t\t\t<FinInstnId>\n"sv);
    if (tx.bic) {
        write_bic(out, 6, rulebook, record_text(tx, &ddi_tx_t::bic));
    } else {
        out.put(
            "\t\t\t\t\t\t<Othr>\n"
            "\t\t\t\t\t\t\t<Id>NOTPROVIDED</Id>\n"
            "\t\t\t\t\t\t</Othr>\n"sv);
    }
    out.put(
        "\t\t\t\t\t</FinInstnId>\n"
        "\t\t\t\t</DbtrAgt>\n"sv);
}

// Lines that are always there stand as one text, as in a transfer.
static constexpr auto write_transaction = [](auto& out, const rulebook_t& rulebook, const ddi_tx_t& tx) {
    out.put("\t\t\t<DrctDbtTxInf>\n"sv);
    write_payment_id(out, tx);
    put_all(out, "\t\t\t\t<InstdAmt Ccy=\"EUR\">"sv, amount_text_t(tx.amount).text(),
            "</InstdAmt>\n"
            "\t\t\t\t<DrctDbtTx>\n"
            "\t\t\t\t\t<MndtRltdInf>\n"sv);
    xml_text(out, 6, "MndtId", record_text(tx, &ddi_tx_t::mref));
    xml_text(out, 6, "DtOfSgntr", record_text(tx, &ddi_tx_t::mdate));
    write_amendment(out, rulebook, tx);
    out.put(
        "\t\t\t\t\t</MndtRltdInf>\n"
        "\t\t\t\t</DrctDbtTx>\n"sv);
    write_debtor_agent(out, rulebook, tx);
    put_all(out,
            "\t\t\t\t<Dbtr>\n"
            "\t\t\t\t\t<Nm>"sv,
            record_text(tx, &ddi_tx_t::name),  // there even if empty; a transfer has none then
            "</Nm>\n"sv);
    write_postal_address(out, rulebook, tx);
    out.put(
        "\t\t\t\t</Dbtr>\n"
        "\t\t\t\t<DbtrAcct>\n"
        "\t\t\t\t\t<Id>\n"sv);
    xml_text(out, 6, "IBAN", record_text(tx, &ddi_tx_t::iban));
    out.put(
        "\t\t\t\t\t</Id>\n"
        "\t\t\t\t</DbtrAcct>\n"sv);
    if (tx.ref) {  // a transfer has RmtInf all the same, empty
        put_all(out,
                "\t\t\t\t<RmtInf>\n"
                "\t\t\t\t\t<Ustrd>"sv,
                record_text(tx, &ddi_tx_t::ref),
                "</Ustrd>\n"
                "\t\t\t\t</RmtInf>\n"sv);
    }
    out.put("\t\t\t</DrctDbtTxInf>\n"sv);
};

template <typename Out>
static void write_creditor_scheme_id(Out& out, const document_t& document) {
    xml_open(out, 3, "CdtrSchmeId");
    xml_open(out, 4, "Id");
    xml_open(out, 5, "PrvtId");
    xml_open(out, 6, "Othr");
    xml_text(out, 7, "Id", measured(document.handle->creditor_id));
    xml_open(out, 7, "SchmeNm");
    xml_line(out, 8, "Prtry", "SEPA"sv);
    xml_close(out, 7, "SchmeNm");
    xml_close(out, 6, "Othr");
    xml_close(out, 5, "PrvtId");
    xml_close(out, 4, "Id");
    xml_close(out, 3, "CdtrSchmeId");
}

template <typename Out>
static void write_block(Out& out, const document_t& document, const payment_block_t& block,
                        std::string_view instrument) {
    write_block_start(out, document, block, "DD");
    xml_open(out, 4, "LclInstrm");
    xml_line(out, 5, "Cd", instrument);
    xml_close(out, 4, "LclInstrm");
    xml_line(out, 4, "SeqTp", sequence_codes[block.sequence]);
    xml_close(out, 3, "PmtTpInf");
    write_date(out, "ReqdColltnDt", block);
    write_own_party(out, document, {"Cdtr", "CdtrAcct", "CdtrAgt"});
    write_creditor_scheme_id(out, document);
    write_transactions<ddi_tx_t>(out, document, block, write_transaction);
    xml_close(out, 2, "PmtInf");
}

template <typename Out>
static void write_all(Out& out, const document_t& document, std::string_view instrument) {
    write_document_start(out, document);
    for (uint32_t i = 0; i < document.blocks.count; ++i)
        write_block(out, document, document.blocks.blocks[i], instrument);
    write_document_end(out, document);
}

int sepa_internal::write_direct_debit(sepa_t* handle, std::string_view head, const sepa_room_t& room) {
    document_t document = {handle, direct_debit, rulebook_in_force(), clock_now(), head, {}, {}};
    if (!check_complete(handle)) return 0;
    const char* instrument = local_instrument(handle->dd_type, document.rulebook);
    if (!instrument) return fail(handle, unknown_instrument);
    if (!gather_transactions<ddi_tx_t>(&document, missing_of_mandate, write_transaction) ||
        !prepare_document(&document))
        return 0;
    return write_out(&document, room,
                     [instrument](auto& out, const document_t& ready) { write_all(out, ready, instrument); });
}

int ddi_toXML(sepa_t* handle, xmlbuf_t* buffer) { return write_direct_debit(handle, "", room_in(buffer)); }
