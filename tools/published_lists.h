// Reads the bank lists as their publishers hand them out: text in ISO-8859-1,
// lines ended by LF or CR LF, and JSON in UTF-8. What comes out are the rows of a release, ascending
// by key, each with the file and line that it was read from. The first fault
// goes to stop; what a row of a release may hold is make_directory's to judge.
#pragma once

#include <string>

#include "list_text.h"

// The German central bank's list of bank codes: records of 168 bytes, of 174
// with the IBAN rule, or CSV with a header line. The main record of each bank
// code becomes a row; its rule is empty where the list has none.
list_t read_german_banks(const list_text_t& text, const std::string& valid_from);

// The German central bank's directory of reachable payment service providers,
// as CSV. A BIC may stand there with 8 and with 11 characters: that is one row
// with the first name, in all schemes that either is in.
list_t read_providers(const list_text_t& text);

// The Austrian central bank's SEPA directory, as CSV.
list_t read_austrian_banks(const list_text_t& text);

// The Swiss bank master: its version 3.0, which is JSON, or the records of 298
// bytes that it had until November 2025. Branches of these make no rows.
list_t read_swiss_banks(const list_text_t& text);
