// Character set and message id against a plainer reading, and escaping against
// its way back. Input: rulebook, level, text.
#include "message/xmlbuf.h"
#include "tests/fuzz/fuzz.h"
#include "tests/unit/charset_reading.h"

// The text that an escaped one stands for.
static std::string unescaped(const std::string& text) {
    std::string plain;
    for (size_t at = 0; at < text.size(); ++at) {
        plain += text[at];
        for (const auto& [entity, character] : {std::pair{"&lt;", '<'}, {"&gt;", '>'}, {"&amp;", '&'}}) {
            if (text.compare(at, strlen(entity), entity) != 0) continue;
            plain.back() = character;
            at += strlen(entity) - 1;
            break;
        }
    }
    return plain;
}

FUZZ_TARGET(charset) {
    input_t input(data, size);
    current_rulebook = input.byte() % RULEBOOK_COUNT;
    int level = input.byte() % 3;
    exact_text_t exact(input.rest().c_str());
    const std::string text = exact.get();

    size_t at = first_bad(allowed_characters(current_rulebook, level), text);
    bool good = at == std::string::npos;
    char bad = '?';
    expect(sepa_check_charset(exact.get(), &bad, level) == good, "the character set is another");
    expect(bad == (good ? '?' : text[at]), "another bad byte");
    bool id = first_bad(allowed_characters(RULEBOOK_DE_3_7, CHARSET_SPACE), text) == std::string::npos;
    expect(sepa_check_message_id(exact.get()) == (id && !text.empty() && text.size() <= 35), "the message id");

    xmlbuf_t buffer = {};
    for (int i = 0; i < 3; ++i) expect(xmlbuf_append_escaped(&buffer, exact.get()) == 1, "an append");
    expect(buffer.used == strlen(buffer.text) + 1 && buffer.used <= buffer.capacity, "the buffer counts");
    expect(strcspn(buffer.text, "<>") + 1 == buffer.used, "a mark is not escaped");
    expect(unescaped(buffer.text) == text + text + text, "the text is another after its escaping");
    free(buffer.text);
}
