// The pieces that both kinds of document are made of. The two writers stand on
// them, and sepa_toXML (output.cpp) on the writers.
#pragma once

#include <ctime>

#include "message/payment_blocks.h"
#include "message/rulebook.h"
#include "message/xml_writer.h"

namespace sepa_internal {

// The names by which the two kinds of document differ in shared pieces.
struct document_kind_t {
    const char* rulebook_t::*schema;
    const char* root;             // child of Document
    const char* no_msgid_memory;  // failure text
};

// A document under way.
struct document_t {
    sepa_t* handle;
    const document_kind_t* kind;
    const rulebook_t& rulebook;
    time_t now;  // of CreDtTm and a generated message id; a generated date has a reading of its own
    xml_writer_t xml;
};

// Today's date for a message without one. Returns 1, or 0 with last_error.
int ensure_date(sepa_t* handle);

// Generates the message id if there is none. Returns 1, or 0 with last_error.
int ensure_message_id(document_t* document);

// Document, its root and GrpHdr. Returns 0 with last_error for an unknown
// rulebook.
int write_document_start(document_t* document);
void write_document_end(document_t* document);

// A PmtInf from its start to SvcLvl; PmtTpInf stays open.
void write_block_start(document_t* document, const payment_block_t& block, uint32_t number, const char* method);

// The line with the date of a block.
void write_date(document_t* document, const char* name, const payment_block_t& block);

// The elements of the message's own party: "Dbtr" or "Cdtr" and those after it.
struct own_party_names_t {
    const char *party, *account, *agent;
};

// Name, account and agent of the message's own party, and who bears the charges.
void write_own_party(document_t* document, const own_party_names_t& names);

// `EndToEndId` of a transaction, in its PmtId.
void write_payment_id(document_t* document, const sepa_party_t& party);

// Writes all blocks of a sorted order; `write_block` gets each with its number.
template <typename WriteBlock>
void write_blocks(const payment_order_t& order, WriteBlock write_block) {
    uint32_t number = 0;
    for (uint32_t first = 0; first < order.count;) {
        payment_block_t block = payment_block_at(&order, first);
        write_block(block, ++number);
        first += block.count;
    }
}

// PstlAdr, unless the party has none of the fields that call for one.
void write_postal_address(document_t* document, const sepa_party_t& party);

}  // namespace sepa_internal
