#include "message/document.h"

#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "message/failure.h"
#include "platform/clock.h"

namespace sepa_internal {

// Names of the ISO 20022 schemas. The Austrian and Dutch rulebooks name no
// schema file.
static constexpr const char* schema_namespace = "urn:iso:std:iso:20022:tech:xsd:";
static constexpr const char* instance_namespace = "http://www.w3.org/2001/XMLSchema-instance";

// Calendar numbers within the width that the texts below give them.
struct calendar_t {
    unsigned year, month, day, hour, minute, second;
};

static calendar_t calendar_of(const struct tm& time) {
    auto number = [](int value, unsigned limit) { return static_cast<unsigned>(value) % limit; };
    return {number(time.tm_year + 1900, 10000), number(time.tm_mon + 1, 100), number(time.tm_mday, 100),
            number(time.tm_hour, 100),          number(time.tm_min, 100),     number(time.tm_sec, 100)};
}

static calendar_t local_calendar(time_t now) {
    struct tm local;
    clock_local(now, &local);
    return calendar_of(local);
}

static calendar_t utc_calendar(time_t now) {
    struct tm utc;
    clock_utc(now, &utc);
    return calendar_of(utc);
}

int ensure_date(sepa_t* handle) {
    if (handle->date) return 1;
    auto date = static_cast<char*>(malloc(date_length + 1));
    if (!date) return fail(handle, "malloc() failed");
    calendar_t today = local_calendar(clock_now());
    snprintf(date, date_length + 1, "%04u-%02u-%02u", today.year, today.month, today.day);
    handle->date = date;
    return 1;
}

int ensure_message_id(document_t* document) {
    sepa_t* handle = document->handle;
    if (handle->msgid) return 1;
    uint32_t tail = (process_id() * 100U + message_counter.fetch_add(1)) % 10000000U;
    char id[36];
    calendar_t local = local_calendar(document->now);
    snprintf(id, sizeof id, "SEPA-%04u%02u%02u%02u%02u%02u-%07" PRIu32, local.year, local.month, local.day, local.hour,
             local.minute, local.second, tail);
    handle->msgid = strdup(id);
    return handle->msgid ? 1 : fail(handle, document->kind->no_msgid_memory);
}

static void write_head(xml_writer_t* xml, const char* schema, bool with_location) {
    xml_plain(xml, "<Document xmlns=\"");
    xml_plain(xml, schema_namespace);
    xml_plain(xml, schema);
    xml_plain(xml, "\" xmlns:xsi=\"");
    xml_plain(xml, instance_namespace);
    if (with_location) {
        xml_plain(xml, "\" xsi:schemaLocation=\"");
        xml_plain(xml, schema_namespace);
        xml_plain(xml, schema);
        xml_plain(xml, " ");
        xml_plain(xml, schema);
        xml_plain(xml, ".xsd");
    }
    xml_plain(xml, "\">\n");
}

static void write_group_header(document_t* document) {
    xml_writer_t* xml = &document->xml;
    sepa_t* handle = document->handle;
    calendar_t utc = utc_calendar(document->now);
    char created[sizeof "0000-00-00T00:00:00Z"];
    snprintf(created, sizeof created, "%04u-%02u-%02uT%02u:%02u:%02uZ", utc.year, utc.month, utc.day, utc.hour,
             utc.minute, utc.second);
    xml_open(xml, 2, "GrpHdr");
    xml_text(xml, 3, "MsgId", handle->msgid);
    xml_fixed(xml, 3, "CreDtTm", created);
    xml_count(xml, 3, "NbOfTxs", handle->tx_count);
    xml_amount(xml, 3, "CtrlSum", handle->ctrl_sum);
    xml_open(xml, 3, "InitgPty");
    xml_text(xml, 4, "Nm", handle->name);
    xml_close(xml, 3, "InitgPty");
    xml_close(xml, 2, "GrpHdr");
}

int write_document_start(document_t* document) {
    const char* schema = document->rulebook.*document->kind->schema;
    if (!schema) return fail(document->handle, "unknown/unsupported SEPA rulebook selected");
    write_head(&document->xml, schema, document->rulebook.names_schema_file);
    xml_open(&document->xml, 1, document->kind->root);
    write_group_header(document);
    return 1;
}

void write_document_end(document_t* document) {
    xml_close(&document->xml, 1, document->kind->root);
    xml_close(&document->xml, 0, "Document");
}

void write_block_start(document_t* document, const payment_block_t& block, uint32_t number, const char* method) {
    xml_writer_t* xml = &document->xml;
    xml_open(xml, 2, "PmtInf");
    xml_numbered_id(xml, 3, "PmtInfId", document->handle->msgid, number);
    xml_fixed(xml, 3, "PmtMtd", method);
    xml_fixed(xml, 3, "BtchBookg", document->handle->batch_booking ? "true" : "false");
    xml_count(xml, 3, "NbOfTxs", block.count);
    xml_amount(xml, 3, "CtrlSum", block.sum);
    xml_open(xml, 3, "PmtTpInf");
    xml_open(xml, 4, "SvcLvl");
    xml_fixed(xml, 5, "Cd", "SEPA");
    xml_close(xml, 4, "SvcLvl");
}

void write_date(document_t* document, const char* name, const payment_block_t& block) {
    char date[date_length + 1] = {};
    memcpy(date, block.items->date, date_length);
    xml_text(&document->xml, 3, name, date);
}

void write_own_party(document_t* document, const own_party_names_t& names) {
    xml_writer_t* xml = &document->xml;
    const sepa_t* handle = document->handle;
    xml_open(xml, 3, names.party);
    xml_text(xml, 4, "Nm", handle->name);
    xml_close(xml, 3, names.party);
    xml_open(xml, 3, names.account);
    xml_open(xml, 4, "Id");
    xml_text(xml, 5, "IBAN", handle->iban);
    xml_close(xml, 4, "Id");
    xml_close(xml, 3, names.account);
    xml_open(xml, 3, names.agent);
    xml_open(xml, 4, "FinInstnId");
    xml_text(xml, 5, document->rulebook.bic_element, handle->bic);
    xml_close(xml, 4, "FinInstnId");
    xml_close(xml, 3, names.agent);
    xml_fixed(xml, 3, "ChrgBr", "SLEV");
}

static void write_structured_address(xml_writer_t* xml, const sepa_party_t& party) {
    xml_text(xml, 6, "Dept", party.addrDept);
    xml_text(xml, 6, "SubDept", party.addrSubDept);
    xml_text(xml, 6, "StrtNm", party.addrStreet);
    xml_text(xml, 6, "BldgNb", party.addrNum);
    xml_text(xml, 6, "BldgNm", party.addrBldg);
    xml_text(xml, 6, "Flr", party.addrFloor);
    xml_text(xml, 6, "PstBx", party.addrPoBox);
    xml_text(xml, 6, "Room", party.addrRoom);
    xml_text(xml, 6, "PstCd", party.addrCode);
    xml_text(xml, 6, "TwnNm", party.addrTown);
    xml_text(xml, 6, "TwnLctnNm", party.addrLoc);
    xml_text(xml, 6, "DstrctNm", party.addrDstrct);
    xml_text(xml, 6, "CtrySubDvsn", party.addrCtrySub);
    xml_text(xml, 6, "Ctry", party.addrCC);
}

static void write_address_lines(xml_writer_t* xml, const sepa_party_t& party) {
    xml_text(xml, 6, "Ctry", party.addrCC);
    xml_text(xml, 6, "AdrLine", party.addrLine1);
    xml_text(xml, 6, "AdrLine", party.addrLine2);
}

void write_postal_address(document_t* document, const sepa_party_t& party) {
    if (!party.addrCC && !party.addrTown && !party.addrLine1 && !party.addrLine2) return;
    xml_writer_t* xml = &document->xml;
    xml_open(xml, 5, "PstlAdr");
    if (document->rulebook.address == ADDRESS_OF_PARTS)
        write_structured_address(xml, party);
    else
        write_address_lines(xml, party);
    xml_close(xml, 5, "PstlAdr");
}

void write_payment_id(document_t* document, const sepa_party_t& party) {
    xml_writer_t* xml = &document->xml;
    xml_open(xml, 4, "PmtId");
    xml_text(xml, 5, "EndToEndId", party.id ? party.id : "NOTPROVIDED");
    xml_close(xml, 4, "PmtId");
}

}  // namespace sepa_internal
