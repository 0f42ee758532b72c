// One SEPA payment message: the handle with its setters, the transactions of
// both kinds, and the documents they are written as.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

#include "sepa/message/xmlbuf.h"
#include "sepa/platform/record_memory.h"
#include "sepa/text/amount.h"

constexpr long SEPA_MSGTYPE_DDI = 1;  // direct debit
constexpr long SEPA_MSGTYPE_CTI = 2;  // credit transfer

constexpr long SEPA_INIT_RULEBOOK = 3;  // option of sepa_init

// Rulebook ids, the values of current_rulebook. They are not in the order of
// the versions.
enum sepa_rulebook : int {
    RULEBOOK_NONE = -1,
    RULEBOOK_DE_2_6 = 0,
    RULEBOOK_DE_2_7 = 1,
    RULEBOOK_AT_6 = 2,
    RULEBOOK_NL_6 = 3,
    RULEBOOK_DE_2_8 = 4,
    RULEBOOK_DE_2_9 = 5,
    RULEBOOK_DE_3_0 = 6,
    RULEBOOK_DE_3_1 = 7,
    RULEBOOK_DE_3_5 = 8,
    RULEBOOK_DE_3_7 = 9,
};
constexpr int RULEBOOK_COUNT = 10;

// Local instrument of a direct debit message.
enum sepa_ddtype : int { SEPA_DDTYPE_CORE = 0, SEPA_DDTYPE_COR1 = 1, SEPA_DDTYPE_B2B = 2 };

// The rulebook of the whole process, RULEBOOK_NONE until sepa_init or the
// first sepa_new chooses one. It counts at the moment of each add and output.
extern std::atomic<int> current_rulebook;

// Counts the message ids that this process has generated.
extern std::atomic<uint32_t> message_counter;

// One entry of a transaction's key list. A list ends with two null pointers.
// All texts stay the caller's.
struct kv_pair_t {
    const char* key;
    const char* value;
};

// The same with the length of the key, whose text can end before it at a NUL.
struct sepa_pair_t : kv_pair_t {
    size_t key_length;
};

// What both kinds of transaction hold of the other party. Texts are private
// copies, or null. Records belong to their message, in whose memory they and
// their texts stand, and are read-only once added.
struct sepa_party_t {
    char* id;  // end-to-end id
    char* name;
    char* iban;
    char* bic;     // in capitals
    char* addrCC;  // country of the address, two capitals
    char *addrLine1, *addrLine2;
    char *addrDept, *addrSubDept, *addrStreet, *addrNum, *addrBldg, *addrFloor, *addrPoBox;
    char *addrRoom, *addrCode, *addrTown, *addrLoc, *addrDstrct, *addrCtrySub;
};

// One credit transfer; the other party is the creditor.
struct cti_tx_t : sepa_party_t {
    char* ref;      // unstructured remittance information
    char* purp;     // purpose code
    double amount;  // euro, rounded to cents; 0 means not given
    char* date;     // requested execution date, yyyy-mm-dd
    cti_tx_t* next;
};

// Sequence types of a direct debit.
enum sepa_seq : int32_t { SEQ_FRST = 1, SEQ_RCUR = 2, SEQ_OOFF = 3, SEQ_FNAL = 4 };

// One direct debit; the other party is the debtor.
struct ddi_tx_t : sepa_party_t {
    int32_t seq;     // a sepa_seq; 0 means not given
    double amount;   // euro, rounded to cents; 0 means not given
    char* date;      // requested collection date, yyyy-mm-dd
    char* mref;      // mandate reference
    char* mdate;     // date of the mandate's signature
    char* old_mref;  // earlier mandate reference
    char* old_iban;  // debtor's earlier IBAN
    uint8_t smnda;   // 1: mandate amended to another account of the debtor
    char* ref;       // unstructured remittance information
    ddi_tx_t* next;
};

// One payment message. Texts are malloc copies owned by the handle, or null.
struct sepa_t {
    int32_t msgtype;         // SEPA_MSGTYPE_...
    const char* last_error;  // reason of the latest failure; constant, or error_buffer
    char* iban;              // the submitting party's account
    char* bic;               // in capitals
    char* name;
    char* creditor_id;  // direct debits only
    char* date;         // yyyy-mm-dd, for transactions without a date of their own
    char* msgid;        // generated at the first output if null
    char error_buffer[256];
    uint32_t tx_count;
    double ctrl_sum;        // sum of all amounts, in the order of adding; documents sum up cents
    int32_t dd_type;        // a sepa_ddtype
    uint8_t batch_booking;  // 0 or 1
    void* tx_head;          // cti_tx_t or ddi_tx_t, by msgtype
    void* tx_tail;
    sepa_internal::record_arena_t records;  // their memory
};

// The reason of a call that found no memory, where it has no text of its own.
constexpr const char* SEPA_OUT_OF_MEMORY = "Out of memory";

// --- Handle and setters

// Makes an empty message of kind `msgtype`, or gives null for another kind or
// without memory. The first call of a process chooses the rulebook by the
// local date if sepa_init has not. Free with sepa_free.
sepa_t* sepa_new(long msgtype);

// Wipes and releases a message with all its transactions. Null is accepted.
void sepa_free(sepa_t* handle);

// Sets an option of the process: SEPA_INIT_RULEBOOK with a rulebook's text,
// "DE-3.7" for instance. Returns 1; 0 for anything unknown, changing nothing.
int sepa_init(long option, const char* value);

// Setters of the submitting party's data. Each returns 1, or 0 with the
// reason in last_error and the field as it was (null if only the copy could
// not be allocated). The text is copied.
int sepa_setIBAN(sepa_t* handle, const char* iban);
int sepa_setBIC(sepa_t* handle, const char* bic);
int sepa_setName(sepa_t* handle, const char* name);                      // 1 to 70 bytes
int sepa_setCreditorIdentifier(sepa_t* handle, const char* identifier);  // EPC262-08
int sepa_setDate(sepa_t* handle, const char* date);                      // yyyy-mm-dd, no calendar check

// Settings of the message. Each returns 1, or 0 with the reason in last_error
// and the setting as it was. The message id is copied.
int sepa_setDDType(sepa_t* handle, long type);  // a sepa_ddtype; direct debits only
int sepa_setBatchBooking(sepa_t* handle, bool batch_booking);
int sepa_setMessageId(sepa_t* handle, const char* msgid);

// --- Character set

// Levels of sepa_check_charset; each allows what the one before does.
enum sepa_charset_level : int {
    CHARSET_STRICT = 0,    // the base set
    CHARSET_SPACE = 1,     // and the blank
    CHARSET_EXTENDED = 2,  // and the German extras
};

// Tests UTF-8 `text` against the SEPA character set of the current rulebook.
// Returns 1 if every character is allowed, also for null and empty; else 0,
// with the first byte of the first bad character in `bad` unless it is null.
int sepa_check_charset(const char* text, char* bad, int level);

// Tells whether `text` can be a message id: 1 to 35 bytes of the base set and
// the blank, under every rulebook.
bool sepa_check_message_id(const char* text);

// --- Transactions

// Appends the transaction that `list` describes to a message of the kind.
// Keys are matched without regard to ASCII case. Returns 1, or 0 with the
// reason in last_error and the message's transactions unchanged. The keys, whose
// values docs/messages.md tells:
//     both       iban amount name bic date id ref
//     transfers  purp
//     debits     seq mref mdate old_mref old_iban smnda
//     addresses  addrCC addrLine1 addrLine2; under DE-3.7 addrCC addrTown addrCode
//                addrStreet addrNum addrDept addrSubDept addrBldg addrFloor
//                addrPoBox addrRoom addrLoc addrDstrct addrCtrySub
// A transfer passes over keys that it does not know; a debit refuses them.
int cti_add(sepa_t* handle, const kv_pair_t* list);

int ddi_add(sepa_t* handle, const kv_pair_t* list);

// The one of them that the message's kind needs, for a caller who knows the lengths
// of the keys, which then are not measured.
int sepa_add_pairs(sepa_t* handle, const sepa_pair_t* pairs, size_t count);

// Wipes a record and its texts; the memory stays the message's until sepa_free,
// and so does the record's place in the list. For a message that is done with: a
// document of it would count the record and show an empty one.
void cti_free(cti_tx_t* record);
void ddi_free(ddi_tx_t* record);

// Tells by its country code whether a bank lies in the SEPA area outside the
// EEA: 1 or 0; -1 for a text of fewer than 8 bytes.
int is_non_eea_bic(const char* bic);

// --- Documents

// Writes the message as a document of the current rulebook. Returns malloc
// text that the caller frees, or null with the reason in last_error; a null of
// its very first allocation brings no new reason. Date and message id are
// generated if unset, and stay. A document that fails is wiped.
char* sepa_toXML(sepa_t* handle);

// Memory that somebody else has for a document: `take` gives exactly `size`
// bytes, or null. `context` is the provider's.
struct sepa_room_t {
    char* (*take)(void* context, size_t size);
    void* context;
};

// As sepa_toXML, into memory that is taken once, when the document's size is
// known. No NUL is added. Returns 1, or 0 with the reason in last_error, which
// is SEPA_OUT_OF_MEMORY where `take` gave null.
int sepa_write_document(sepa_t* handle, const sepa_room_t& room);

// Writes a credit transfer message as pain.001 into `buffer`, which holds the
// XML head line. Returns 1, or 0 with the reason in last_error.
int cti_toXML(sepa_t* handle, xmlbuf_t* buffer);

// The same for a direct debit message, as pain.008.
int ddi_toXML(sepa_t* handle, xmlbuf_t* buffer);
