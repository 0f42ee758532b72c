// Bank statements in SWIFT MT940 form.
#pragma once

#include <cstdint>
#include <ctime>

#include "sepa/platform/record_memory.h"
#include "sepa/text/amount.h"
#include "sepa/text/field_check.h"

// Statement formats that sepa_stmt_parser_load takes.
enum sepa_stmt_format : int {
    SEPA_STMT_FORMAT_MT940 = 1,
};

// All texts of the records point into the parser's text and live as long as
// the parser; they are null where the file does not have the field. Dates have
// nothing but tm_year, tm_mon and tm_mday, are not checked, and are all zero
// where the file has none. Amounts are negative for a debit.

// One transaction: a ":61:" line and the ":86:" fields after it.
struct sepa_stmt_tx_t {
    struct tm valuta;  // value date
    struct tm booked;  // booking date
    uint8_t reversal;  // 1 for a reversal, whose amount keeps its sign; scripts do not see it, C++ programs may use it
    double amount;
    char code[4];         // booking code, the three characters after "N"
    const char* ref;      // reference for the account owner
    const char* bankref;  // reference of the bank
    const char* txtext;   // booking text
    const char* primanota;
    int32_t gvc;          // business transaction code
    int32_t extcode;      // extension code
    char bank[13];        // other party's bank
    char account[35];     // other party's account
    char name[56];        // other party's name
    const char* purpose;  // purpose text without keywords, lines parted by "\n"
    const char* eref;     // end-to-end reference
    const char* kref;     // customer reference
    const char* mref;     // mandate reference
    const char* cred;     // creditor identifier
    const char* debt;     // debtor identifier
    const char* purp;     // purpose code
    const char* coam;     // compensation amount, with decimal point
    const char* oamt;     // amount before conversion, with decimal point
    const char* svwz;     // remittance text
    const char* abwa;     // deviating ordering party
    const char* abwe;     // deviating beneficiary
    sepa_stmt_tx_t* next;
};

// One statement of a file.
struct sepa_statement_t {
    const char* ref;      // transaction reference number
    const char* account;  // account identification, as the bank wrote it
    uint32_t number;      // statement number, 0 if absent
    uint32_t page;        // sequence number, 0 if absent
    struct tm open_date;
    struct tm close_date;
    double open_saldo;  // balances
    double close_saldo;
    char open_currency[4];
    char close_currency[4];
    sepa_stmt_tx_t* tx_first;
    sepa_stmt_tx_t* tx_last;
    sepa_statement_t* next;
};

// What the MT940 format keeps beside the records. C++ programs that call
// mt940_load_file or mt940_parse themselves put one, zeroed, into the handle.
struct mt940_state_t {
    char* text;  // the file, cut in place; owned, null until a file has been parsed
};

// The handle of one statement file. Owns all it points at.
struct sepa_stmt_parser_t {
    char error[256];          // why the last call failed; "" if nothing is to be said about it
    int32_t format;           // 0 until the first load
    mt940_state_t* parser;    // null until a load of SEPA_STMT_FORMAT_MT940
    sepa_statement_t* first;  // the statements, in file order; null if there are none
    sepa_statement_t* last;
    sepa_internal::record_arena_t records;  // their memory
};

// Returns an empty handle, or null if memory is short.
sepa_stmt_parser_t* sepa_stmt_parser_new();

// Releases the handle with all its records. Null is accepted.
void sepa_stmt_parser_free(sepa_stmt_parser_t* handle);

// Reads the statements of the file into the handle. A handle takes one load,
// whatever comes of it. Returns 1, also for a file without a statement, or 0
// with the reason in `error`.
int sepa_stmt_parser_load(sepa_stmt_parser_t* handle, int format, const char* filename);

// The two inner steps of a load, for a handle whose `parser` stands: read the
// file and parse it; parse a writable NUL-terminated text, which is changed,
// stays the caller's and must outlive the records. Both return 1 or 0. A text
// that is empty, and memory that runs out, give 0 and no error text; after the
// latter the handle has no records.
int mt940_load_file(sepa_stmt_parser_t* handle, const char* filename);
int mt940_parse(sepa_stmt_parser_t* handle, char* text);
