// The rulebooks. All that sets one apart from the others is in its row.
#pragma once

#include "sepa/message/sepa.h"

namespace sepa_internal {

// Sets of characters (charset.cpp), a bit each, that each level of
// sepa_check_charset allows.
enum charset_bit_t : uint8_t { set_base = 1, set_blank = 2, set_german = 4, set_austrian = 8 };
struct charsets_t {
    uint8_t strict, space, extended;
};

// The kind of postal address that transactions have.
enum address_kind_t : uint8_t { address_of_lines, address_of_parts };

// What a debtor's address must have if the debtor's bank is in the SEPA area
// outside the EEA.
enum address_need_t : uint8_t { nothing_needed, line_needed, town_and_country_needed };

// The local instrument COR1: setDDType may refuse it where a document with it,
// set under an earlier rulebook, is still written.
enum cor1_t : uint8_t { cor1_set_and_written, cor1_only_written, cor1_refused };

// The elements around the marker SMNDA, which says that the debtor has changed
// to another account.
struct smnda_place_t {
    const char *outer, *inner;
};

// The element that holds a bank's BIC.
enum bic_element_t : uint8_t { element_bic, element_bicfi };

struct rulebook_t {
    int id;                       // a sepa_rulebook
    const char* name;             // what sepa_init takes
    const char* transfer_schema;  // null in the row for no rulebook
    const char* debit_schema;
    bool names_schema_file;  // in xsi:schemaLocation
    charsets_t charsets;
    bool bic_required;  // in every transaction
    address_kind_t address;
    int mref_level;  // CHARSET_... of a mandate reference: with blanks or without
    cor1_t cor1;
    address_need_t need_outside_eea;
    smnda_place_t smnda;
    bic_element_t bic_element;
    int in_force_from;  // yyyymmdd; a process that selects none gets the latest
};

// The row of the rulebook that the process has chosen; before that, and for an
// id that there is not, one that asks for nothing and has no schema.
const rulebook_t& rulebook_in_force();

// Chooses the rulebook by the local date, unless one has been chosen.
void settle_rulebook();

}  // namespace sepa_internal
