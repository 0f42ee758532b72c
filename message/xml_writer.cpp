#include "message/xml_writer.h"

#include <cstdio>
#include <cstring>

#include "text/amount.h"

namespace sepa_internal {

static constexpr size_t max_tabs = 16;  // more than any document has
static constexpr char tab_text[max_tabs + 1] = "\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t";

// Appends what `fill` writes from the place it is given on, at most `n` bytes;
// it returns the end. An xmlbuf_t grows by what it needs; a document asks for
// half of what it has, so that its cost stays linear. No other function beside
// xmlbuf.cpp moves a buffer's fields.
template <typename Fill>
static void append(xml_writer_t* xml, size_t n, Fill fill) {
    xmlbuf_t* buffer = xml->buffer;
    if (!xml->good) return;
    if (buffer->capacity - buffer->used <= n) {
        size_t generous = n + 1 > buffer->used / 2 ? n + 1 : buffer->used / 2;
        xml->good = xmlbuf_reserve(buffer, generous) || xmlbuf_reserve(buffer, n + 1);
        if (!xml->good) return;
    }
    char* end = fill(buffer->text + (buffer->used ? buffer->used - 1 : 0));
    *end = '\0';
    buffer->used = static_cast<size_t>(end - buffer->text) + 1;
}

static char* put(char* at, std::string_view text) {
    memcpy(at, text.data(), text.size());
    return at + text.size();
}

// Needs room for max_tabs bytes, which one copy of a fixed size fills.
static char* put_tabs(char* at, unsigned tabs) {
    memcpy(at, tab_text, max_tabs);
    return at + tabs;
}

void xml_plain(xml_writer_t* xml, std::string_view text) {
    append(xml, text.size(), [&](char* at) { return put(at, text); });
}

// A line that is one tag.
static void tag_line(xml_writer_t* xml, unsigned tabs, std::string_view opening, std::string_view name) {
    append(xml, max_tabs + sizeof "</>\n" + name.size(),
           [&](char* at) { return put(put(put(put_tabs(at, tabs), opening), name), ">\n"); });
}

void xml_open(xml_writer_t* xml, unsigned tabs, std::string_view name) { tag_line(xml, tabs, "<", name); }

void xml_close(xml_writer_t* xml, unsigned tabs, std::string_view name) { tag_line(xml, tabs, "</", name); }

// A line with content that needs no escaping; `attribute` belongs to the tag.
static void content_line(xml_writer_t* xml, unsigned tabs, std::string_view name, std::string_view attribute,
                         std::string_view value) {
    append(xml, max_tabs + sizeof "<></>\n" + 2 * name.size() + attribute.size() + value.size(), [&](char* at) {
        at = put(put(put_tabs(at, tabs), "<"), name);
        at = put(put(at, attribute), ">");
        at = put(put(put(at, value), "</"), name);
        return put(at, ">\n");
    });
}

void xml_fixed(xml_writer_t* xml, unsigned tabs, std::string_view name, std::string_view value) {
    content_line(xml, tabs, name, "", value);
}

static void start_line(xml_writer_t* xml, unsigned tabs, std::string_view name) {
    xml_plain(xml, {tab_text, tabs});
    xml_plain(xml, "<");
    xml_plain(xml, name);
    xml_plain(xml, ">");
}

static void end_line(xml_writer_t* xml, std::string_view name) {
    xml_plain(xml, "</");
    xml_plain(xml, name);
    xml_plain(xml, ">\n");
}

static void escaped(xml_writer_t* xml, const char* value) {
    if (xml->good) xml->good = xmlbuf_append_escaped(xml->buffer, value);
}

void xml_text(xml_writer_t* xml, unsigned tabs, std::string_view name, const char* value) {
    if (!value) return;
    size_t clean = strcspn(value, "<>&");
    if (!value[clean]) {
        content_line(xml, tabs, name, "", {value, clean});
        return;
    }
    start_line(xml, tabs, name);
    escaped(xml, value);
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
    content_line(xml, tabs, "InstdAmt", " Ccy=\"EUR\"", text);
}

void xml_numbered_id(xml_writer_t* xml, unsigned tabs, std::string_view name, const char* value, uint32_t number) {
    start_line(xml, tabs, name);
    escaped(xml, value);
    xml_plain(xml, "-P");
    xml_plain(xml, number_text(number).text);
    end_line(xml, name);
}

}  // namespace sepa_internal
