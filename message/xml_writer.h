// Writes the lines of a document into an xmlbuf_t. Every line begins with a
// number of tabs and ends with a newline. A failed append is remembered and
// makes all later calls do nothing, so that only the end has to look.
#pragma once

#include <cstdint>
#include <string_view>

#include "message/xmlbuf.h"

namespace sepa_internal {

struct xml_writer_t {
    xmlbuf_t* buffer;
    bool good;  // false once memory has run out
};

// Appends text as it is.
void xml_plain(xml_writer_t* xml, std::string_view text);

// Opening and closing tag of an element with children, a line each.
void xml_open(xml_writer_t* xml, unsigned tabs, std::string_view name);
void xml_close(xml_writer_t* xml, unsigned tabs, std::string_view name);

// One line `<name>value</name>`. xml_text escapes the value and writes no line
// at all for null; xml_fixed takes texts of the system's own.
void xml_text(xml_writer_t* xml, unsigned tabs, std::string_view name, const char* value);
void xml_fixed(xml_writer_t* xml, unsigned tabs, std::string_view name, std::string_view value);
void xml_count(xml_writer_t* xml, unsigned tabs, std::string_view name, uint32_t value);
void xml_amount(xml_writer_t* xml, unsigned tabs, std::string_view name, double euro);

// The line InstdAmt with its currency.
void xml_instructed_amount(xml_writer_t* xml, unsigned tabs, double euro);

// `value`, "-P" and `number` in one line.
void xml_numbered_id(xml_writer_t* xml, unsigned tabs, std::string_view name, const char* value, uint32_t number);

}  // namespace sepa_internal
