#include <cstring>
#include <set>
#include <string>

#include "tests/unit/message_helpers.h"

namespace {

// The character set once more: every allowed character, written out, in place
// of the library's bit sets.
std::set<std::string> allowed_characters(int rulebook, int level) {
    std::set<std::string> allowed;
    auto single = [&](const char* characters) {
        for (; *characters; ++characters) allowed.insert(std::string(1, *characters));
    };
    single("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789'()+,-./:?");
    if (level >= CHARSET_SPACE) single(" ");
    if (level == CHARSET_EXTENDED && rulebook != RULEBOOK_DE_2_6) {
        single("$%&*");
        for (const char* german : {"Ä", "Ö", "Ü", "ä", "ö", "ü", "ß"}) allowed.insert(german);
    }
    if (rulebook == RULEBOOK_AT_6) {
        single("!\"#;<=>@[]^_{|}~");
        allowed.insert("€");
    }
    return allowed;
}

// Byte at which the walk over `text` stops, or npos.
size_t first_bad(const std::set<std::string>& allowed, const std::string& text) {
    for (size_t at = 0; at < text.size();) {
        size_t length = 1;
        while (length <= 3 && !allowed.count(text.substr(at, length))) ++length;
        if (length > 3) return at;
        at += length;
    }
    return std::string::npos;
}

using text_t = std::unique_ptr<char, decltype(&free)>;

// All bytes and pairs, and what looks like a character of several bytes.
TEST(Charset, EveryRule) {
    std::vector<std::string> texts = {"", "ABC 1 \xC3\xA4\xC3\x9F & \xE2\x82\xAC \xC3"};
    for (int first = 1; first < 256; ++first) {
        std::string byte(1, static_cast<char>(first));
        texts.push_back(byte);
        for (int second = 1; second < 256; ++second) texts.push_back(byte + static_cast<char>(second));
        for (const char* around : {"\xE2\x82", "\xE2", "\xC3", "\xC3\xA4", "A"})
            for (const char* after : {"\xAC", "\x82\xAC", "\xC3", "z"}) texts.push_back(around + byte + after);
        texts.push_back("\xE2\x82" + byte);
        for (size_t size : {4U, 6U, 12U, 33U})  // 16 bytes are tested at a time, or two halves
            for (size_t at : {0U, 1U, 4U, 8U, 12U, 14U, 15U, 16U, 31U, 33U})
                if (at <= size) texts.push_back(std::string(at, 'a') + byte + "\xA4 z" + std::string(size - at, '9'));
    }
    for (int rulebook = 0; rulebook < RULEBOOK_COUNT; ++rulebook)
        for (int level : {CHARSET_STRICT, CHARSET_SPACE, CHARSET_EXTENDED}) {
            current_rulebook = rulebook;
            auto allowed = allowed_characters(rulebook, level);
            for (const std::string& text : texts) {
                size_t at = first_bad(allowed, text);
                bool good = at == std::string::npos;
                char bad = '?';
                text_t exact(strdup(text.c_str()), free);  // an address sanitizer sees reads after its end
                int result = sepa_check_charset(exact.get(), &bad, level);
                // An EXPECT for each of two million texts takes too long.
                if (result == good && bad == (good ? '?' : text[at])) continue;
                ADD_FAILURE() << testing::PrintToString(text) << " level " << level << " rulebook " << rulebook;
            }
            EXPECT_EQ(sepa_check_charset(nullptr, nullptr, level), 1);
            EXPECT_EQ(sepa_check_charset("\\", nullptr, level), 0);
        }
}

}  // namespace
