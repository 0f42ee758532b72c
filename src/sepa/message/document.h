// The pieces that both kinds of document are made of. The two writers stand on
// them, and sepa_toXML (output.cpp) on the writers.
#pragma once

#include <ctime>

#include "sepa/message/failure.h"
#include "sepa/message/payment_blocks.h"
#include "sepa/message/rulebook.h"
#include "sepa/message/xml_lines.h"
#include "sepa/platform/pages.h"
#include "sepa/text/number_text.h"

namespace sepa_internal {

using namespace std::literals::string_view_literals;

// The names by which the two kinds of document differ in shared pieces.
struct document_kind_t {
    const char* rulebook_t::*schema;
    std::string_view root;        // child of Document
    const char* no_msgid_memory;  // failure text
};

// A document under way.
struct document_t {
    sepa_t* handle;
    const document_kind_t& kind;
    const rulebook_t& rulebook;
    time_t now;             // of CreDtTm and a generated message id; a generated date has a reading of its own
    std::string_view head;  // what comes before the document element
    payment_blocks_t blocks;
    xml_counter_t transactions;  // all lines of all transactions
};

// Today's date for a message without one. Returns 1, or 0 with last_error.
int ensure_date(sepa_t* handle);

// Puts the transactions into blocks, and counts what `write` writes of them: in
// one walk, since a large message is in no cache. `check` gives null, or the reason to stop. Returns 1, or 0 with
// last_error. That memory ran out is told by prepare_document.
template <typename Record, typename Check, typename Write>
int gather_transactions(document_t* document, Check check, Write write) {
    sepa_t* handle = document->handle;
    payment_blocks_start(&document->blocks, handle);
    for (auto tx = static_cast<const Record*>(handle->tx_head); tx; tx = tx->next) {
        if (const char* reason = check(*tx)) {
            payment_blocks_free(&document->blocks);
            return fail(handle, reason);
        }
        payment_blocks_take(&document->blocks, transaction_of(handle, *tx));
        write(document->transactions, document->rulebook, *tx);
    }
    payment_blocks_end(&document->blocks, handle);
    return 1;
}

// What else a document needs before its first line: message id, schema, and
// memory for the blocks, asked for in this order. Returns 1, or 0 with last_error
// and without the blocks.
int prepare_document(document_t* document);

// The transactions of a block, which the counter has from gathering them.
template <typename Record, typename Write>
void write_transactions(xml_counter_t&, const document_t&, const payment_block_t&, Write) {}

// Those of one block lie apart from each other in memory, and no processor
// foresees where; so it is told.
constexpr size_t usual_texts = 160;  // bytes after a record
template <typename Record, typename Write>
[[gnu::flatten]] void write_transactions(xml_cursor_t& out, const document_t& document, const payment_block_t& block,
                                         Write write) {
    xml_cursor_t cursor = out;  // which no other function knows: it stays in a register
    for (const block_entry_t* entry = block.first; entry; entry = entry->next) {
        const block_entry_t* ahead = entry->next ? entry->next->next : nullptr;
        if (ahead) prefetch(ahead->record, sizeof(Record) + usual_texts);
        write(cursor, document.rulebook, *static_cast<const Record*>(entry->record));
    }
    out = cursor;
}

// Measures what `write` writes, takes the room and writes it; ends the document.
// Returns 1, or 0 with last_error.
template <typename Write>
int write_out(document_t* document, const sepa_room_t& room, Write write) {
    xml_counter_t counter = document->transactions;
    write(counter, *document);
    char* at = room.take(room.context, counter.size);
    if (at) {
        xml_cursor_t cursor = {at};
        write(cursor, *document);
    }
    payment_blocks_free(&document->blocks);
    return at ? 1 : fail(document->handle, SEPA_OUT_OF_MEMORY);
}

struct created_t {
    char text[sizeof "0000-00-00T00:00:00Z"];
};

// The clock reading as CreDtTm has it, in UTC.
created_t created_at(time_t now);

// Names of the ISO 20022 schemas. The Austrian and Dutch rulebooks name no
// schema file.
constexpr std::string_view schema_namespace = "urn:iso:std:iso:20022:tech:xsd:";
constexpr std::string_view instance_namespace = "http://www.w3.org/2001/XMLSchema-instance";

template <typename Out>
void write_schema(Out& out, std::string_view schema, bool names_file) {
    put_all(out, "<Document xmlns=\""sv, schema_namespace, schema, "\" xmlns:xsi=\""sv, instance_namespace);
    if (names_file) put_all(out, "\" xsi:schemaLocation=\""sv, schema_namespace, schema, " "sv, schema, ".xsd"sv);
    out.put("\">\n"sv);
}

template <typename Out>
void write_group_header(Out& out, const document_t& document) {
    const sepa_t* handle = document.handle;
    xml_open(out, 2, "GrpHdr");
    xml_text(out, 3, "MsgId", measured(handle->msgid));
    xml_line(out, 3, "CreDtTm", std::string_view(created_at(document.now).text));
    xml_line(out, 3, "NbOfTxs", number_text_t(handle->tx_count).text());
    xml_line(out, 3, "CtrlSum", cents_text_t(sum_of_blocks(document.blocks)).text());
    xml_open(out, 3, "InitgPty");
    xml_text(out, 4, "Nm", measured(handle->name));
    xml_close(out, 3, "InitgPty");
    xml_close(out, 2, "GrpHdr");
}

// All up to the end of GrpHdr.
template <typename Out>
void write_document_start(Out& out, const document_t& document) {
    out.put(document.head);
    write_schema(out, document.rulebook.*document.kind.schema, document.rulebook.names_schema_file);
    xml_open(out, 1, document.kind.root);
    write_group_header(out, document);
}

template <typename Out>
void write_document_end(Out& out, const document_t& document) {
    xml_close(out, 1, document.kind.root);
    xml_close(out, 0, "Document");
}

// A PmtInf from its start to SvcLvl; PmtTpInf stays open. Blocks count from 1.
template <typename Out>
void write_block_start(Out& out, const document_t& document, const payment_block_t& block, std::string_view method) {
    const sepa_t* handle = document.handle;
    auto number = static_cast<uint32_t>(&block - document.blocks.blocks) + 1;
    xml_open(out, 2, "PmtInf");
    xml_line(out, 3, "PmtInfId", measured(handle->msgid), "-P"sv, number_text_t(number).text());
    xml_line(out, 3, "PmtMtd", method);
    xml_line(out, 3, "BtchBookg", handle->batch_booking ? "true"sv : "false"sv);
    xml_line(out, 3, "NbOfTxs", number_text_t(block.count).text());
    xml_line(out, 3, "CtrlSum", cents_text_t(block.sum).text());
    xml_open(out, 3, "PmtTpInf");
    xml_open(out, 4, "SvcLvl");
    xml_line(out, 5, "Cd", "SEPA"sv);
    xml_close(out, 4, "SvcLvl");
}

// The line with the date of a block.
template <typename Out>
void write_date(Out& out, std::string_view name, const payment_block_t& block) {
    xml_line(out, 3, name, measured(block.date, date_length));
}

template <typename Out, typename Text>
void write_bic(Out& out, unsigned tabs, const rulebook_t& rulebook, const Text& bic) {
    if (rulebook.bic_element == element_bicfi) {
        xml_text(out, tabs, "BICFI", bic);
    } else {
        xml_text(out, tabs, "BIC", bic);
    }
}

// The elements of the message's own party: "Dbtr" or "Cdtr" and those after it.
struct own_party_names_t {
    std::string_view party, account, agent;
};

// Name, account and agent of the message's own party, and who bears the charges.
template <typename Out>
void write_own_party(Out& out, const document_t& document, const own_party_names_t& names) {
    const sepa_t* handle = document.handle;
    xml_open(out, 3, names.party);
    xml_text(out, 4, "Nm", measured(handle->name));
    xml_close(out, 3, names.party);
    xml_open(out, 3, names.account);
    xml_open(out, 4, "Id");
    xml_text(out, 5, "IBAN", measured(handle->iban));
    xml_close(out, 4, "Id");
    xml_close(out, 3, names.account);
    xml_open(out, 3, names.agent);
    xml_open(out, 4, "FinInstnId");
    write_bic(out, 5, document.rulebook, measured(handle->bic));
    xml_close(out, 4, "FinInstnId");
    xml_close(out, 3, names.agent);
    xml_line(out, 3, "ChrgBr", "SLEV"sv);
}

template <typename Out>
void write_structured_address(Out& out, const sepa_party_t& party) {
    xml_text(out, 6, "Dept", record_text(party, &sepa_party_t::addrDept));
    xml_text(out, 6, "SubDept", record_text(party, &sepa_party_t::addrSubDept));
    xml_text(out, 6, "StrtNm", record_text(party, &sepa_party_t::addrStreet));
    xml_text(out, 6, "BldgNb", record_text(party, &sepa_party_t::addrNum));
    xml_text(out, 6, "BldgNm", record_text(party, &sepa_party_t::addrBldg));
    xml_text(out, 6, "Flr", record_text(party, &sepa_party_t::addrFloor));
    xml_text(out, 6, "PstBx", record_text(party, &sepa_party_t::addrPoBox));
    xml_text(out, 6, "Room", record_text(party, &sepa_party_t::addrRoom));
    xml_text(out, 6, "PstCd", record_text(party, &sepa_party_t::addrCode));
    xml_text(out, 6, "TwnNm", record_text(party, &sepa_party_t::addrTown));
    xml_text(out, 6, "TwnLctnNm", record_text(party, &sepa_party_t::addrLoc));
    xml_text(out, 6, "DstrctNm", record_text(party, &sepa_party_t::addrDstrct));
    xml_text(out, 6, "CtrySubDvsn", record_text(party, &sepa_party_t::addrCtrySub));
    xml_text(out, 6, "Ctry", record_text(party, &sepa_party_t::addrCC));
}

template <typename Out>
void write_address_lines(Out& out, const sepa_party_t& party) {
    xml_text(out, 6, "Ctry", record_text(party, &sepa_party_t::addrCC));
    xml_text(out, 6, "AdrLine", record_text(party, &sepa_party_t::addrLine1));
    xml_text(out, 6, "AdrLine", record_text(party, &sepa_party_t::addrLine2));
}

// PstlAdr, unless the party has none of the fields that call for one.
template <typename Out>
void write_postal_address(Out& out, const rulebook_t& rulebook, const sepa_party_t& party) {
    if (!party.addrCC && !party.addrTown && !party.addrLine1 && !party.addrLine2) return;
    xml_open(out, 5, "PstlAdr");
    if (rulebook.address == address_of_parts) {
        write_structured_address(out, party);
    } else {
        write_address_lines(out, party);
    }
    xml_close(out, 5, "PstlAdr");
}

// `EndToEndId` of a transaction, in its PmtId.
template <typename Out>
void write_payment_id(Out& out, const sepa_party_t& party) {
    out.put(
        "\t\t\t\t<PmtId>\n"
        "\t\t\t\t\t<EndToEndId>"sv);
    if (party.id) {
        out.put(record_text(party, &sepa_party_t::id));
    } else {
        out.put("NOTPROVIDED"sv);
    }
    out.put(
        "</EndToEndId>\n"
        "\t\t\t\t</PmtId>\n"sv);
}

}  // namespace sepa_internal
