// Character set, message id, escaping and the text buffer, each against a
// reading in plain words. Input: rulebook, level, text.
#include "message/sepa.h"
#include "tests/fuzz/fuzz.h"

namespace {

const std::string base = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789'()+,-./:?";

bool is_in(const std::string& set, char c) { return set.find(c) != std::string::npos; }

// Bytes of the allowed character at `at`, or 0.
size_t allowed_at(const std::string& text, size_t at, int rulebook, int level) {
    if (rulebook == RULEBOOK_DE_2_6 && level == CHARSET_EXTENDED) level = CHARSET_SPACE;
    char c = text[at];
    if (is_in(base, c)) return 1;
    if (level >= CHARSET_SPACE && c == ' ') return 1;
    if (level >= CHARSET_EXTENDED) {
        if (is_in("$%&*", c)) return 1;
        for (const char* form : {"Ä", "Ö", "Ü", "ä", "ö", "ü", "ß"})
            if (text.compare(at, 2, form) == 0) return 2;
    }
    if (rulebook == RULEBOOK_AT_6) {
        if (is_in("!\"#;<=>@[]^_{|}~", c)) return 1;
        if (text.compare(at, 3, "€") == 0) return 3;
    }
    return 0;
}

void check_charset(const std::string& text, int rulebook, int level) {
    exact_text_t exact(text);
    size_t at = 0;
    while (at < text.size()) {
        size_t length = allowed_at(text, at, rulebook, level);
        if (!length) break;
        at += length;
    }
    char bad = 'x';
    int result = sepa_check_charset(exact.get(), &bad, level);
    expect(result == (at == text.size()), "the character set is another");
    expect(result ? bad == 'x' : bad == text[at], "another bad byte");
    expect(sepa_check_charset(exact.get(), nullptr, level) == result, "asking for the byte makes no difference");
}

void check_message_id(const std::string& text) {
    bool good = !text.empty() && text.size() <= 35 && text.find_first_not_of(base + " ") == std::string::npos;
    expect(sepa_check_message_id(exact_text_t(text).get()) == good, "the message id is judged otherwise");
}

std::string escape(const std::string& text) {
    std::string escaped;
    for (char c : text) {
        if (c == '<')
            escaped += "&lt;";
        else if (c == '>')
            escaped += "&gt;";
        else if (c == '&')
            escaped += "&amp;";
        else
            escaped += c;
    }
    return escaped;
}

// Appends every piece between two line ends in turn by one of three ways.
void check_buffer(const std::string& text) {
    xmlbuf_t buffer = {};
    std::string expected;
    input_t pieces(reinterpret_cast<const uint8_t*>(text.data()), text.size());
    for (unsigned way = 0; !pieces.empty(); ++way) {
        std::string piece = pieces.line();
        exact_text_t exact(piece);
        if (way % 3 == 0) {
            expect(xmlbuf_append_escaped(&buffer, exact.get()) == 1, "an append");
            expected += escape(piece);
        } else if (way % 3 == 1) {
            expect(xmlbuf_append(&buffer, exact.get()) == 1, "an append");
            expected += piece;
        } else {
            expect(xmlbuf_append_list(&buffer, exact.get(), "|", exact.get(), nullptr) == 1, "an append");
            expected += piece + "|" + piece;
        }
        expect(buffer.used == expected.size() + 1 && buffer.used <= buffer.capacity, "the buffer counts");
        expect(memcmp(buffer.text, expected.c_str(), buffer.used) == 0, "the buffer holds another text");
    }
    free(buffer.text);
}

}  // namespace

FUZZ_TARGET(charset) {
    input_t input(data, size);
    int rulebook = input.byte() % RULEBOOK_COUNT, level = input.byte() % 3;
    std::string text = input.rest().c_str();
    current_rulebook = rulebook;
    check_charset(text, rulebook, level);
    check_message_id(text);
    check_buffer(text);
}
