#include "message/xml_writer.h"

#include <cstdio>
#include <cstring>

#include "message/sepa.h"

static constexpr std::string_view tab_text = "\t\t\t\t\t\t\t\t\t\t";

// Room for `n` bytes and a NUL. The buffer itself grows by what it needs; a
// document asks for half of what it has, so that its cost stays linear.
static bool make_room(xml_writer_t* xml, size_t n) {
    xmlbuf_t* buffer = xml->buffer;
    if (!xml->good || buffer->capacity - buffer->used > n) return xml->good;
    size_t generous = n + 1 > buffer->used / 2 ? n + 1 : buffer->used / 2;
    xml->good = xmlbuf_reserve(buffer, generous) || xmlbuf_reserve(buffer, n + 1);
    return xml->good;
}

void xml_plain(xml_writer_t* xml, std::string_view text) {
    if (!make_room(xml, text.size())) return;
    xmlbuf_t* buffer = xml->buffer;
    if (!buffer->used) buffer->used = 1;
    char* at = buffer->text + buffer->used - 1;
    memcpy(at, text.data(), text.size());
    at[text.size()] = '\0';
    buffer->used += text.size();
}

static void start_line(xml_writer_t* xml, unsigned tabs, std::string_view opening, std::string_view name) {
    xml_plain(xml, tab_text.substr(0, tabs));
    xml_plain(xml, opening);
    xml_plain(xml, name);
}

static void end_line(xml_writer_t* xml, std::string_view name) {
    xml_plain(xml, "</");
    xml_plain(xml, name);
    xml_plain(xml, ">\n");
}

void xml_open(xml_writer_t* xml, unsigned tabs, std::string_view name) {
    start_line(xml, tabs, "<", name);
    xml_plain(xml, ">\n");
}

void xml_close(xml_writer_t* xml, unsigned tabs, std::string_view name) {
    start_line(xml, tabs, "</", name);
    xml_plain(xml, ">\n");
}

static void escaped(xml_writer_t* xml, const char* value) {
    if (xml->good) xml->good = xmlbuf_append_escaped(xml->buffer, value);
}

void xml_text(xml_writer_t* xml, unsigned tabs, std::string_view name, const char* value) {
    if (!value) return;
    start_line(xml, tabs, "<", name);
    xml_plain(xml, ">");
    escaped(xml, value);
    end_line(xml, name);
}

void xml_fixed(xml_writer_t* xml, unsigned tabs, std::string_view name, std::string_view value) {
    start_line(xml, tabs, "<", name);
    xml_plain(xml, ">");
    xml_plain(xml, value);
    end_line(xml, name);
}

struct number_text_t {
    char text[11];
};

static number_text_t number_text(uint32_t value) {
    number_text_t number;
    snprintf(number.text, sizeof number.text, "%u", value);
    return number;
}

void xml_count(xml_writer_t* xml, unsigned tabs, std::string_view name, uint32_t value) {
    xml_fixed(xml, tabs, name, number_text(value).text);
}

void xml_amount(xml_writer_t* xml, unsigned tabs, std::string_view name, double euro) {
    char text[128];
    sepa_format_amount(text, euro);
    xml_fixed(xml, tabs, name, text);
}

void xml_instructed_amount(xml_writer_t* xml, unsigned tabs, double euro) {
    char text[128];
    sepa_format_amount(text, euro);
    start_line(xml, tabs, "<", "InstdAmt");
    xml_plain(xml, " Ccy=\"EUR\">");
    xml_plain(xml, text);
    end_line(xml, "InstdAmt");
}

void xml_numbered_id(xml_writer_t* xml, unsigned tabs, std::string_view name, const char* value, uint32_t number) {
    start_line(xml, tabs, "<", name);
    xml_plain(xml, ">");
    escaped(xml, value);
    xml_plain(xml, "-P");
    xml_plain(xml, number_text(number).text);
    end_line(xml, name);
}
