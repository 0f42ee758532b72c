// Eight characters at a time, against one after the other.
#include "sepa/text/words.h"

#include <gtest/gtest.h>

#include <string>

#include "sepa/text/ascii.h"

using namespace sepa_internal;

namespace {

// Both halves of a word are read alike and apart from each other.
TEST(Words, ValueOfEveryHalf) {
    for (uint32_t half = 0; half < 10000; ++half) {
        std::string digits = std::to_string(10000 + half).substr(1);
        EXPECT_EQ(word_value(load_word(("7341" + digits).c_str())), 73410000 + half);
        EXPECT_EQ(word_value(load_word((digits + "9058").c_str())), half * 10000 + 9058);
    }
}

// Each pair of neighbours, so that no byte hides behind what the one before it
// carries over.
TEST(Words, ClassesOfPairs) {
    for (size_t at = 0; at < 8; ++at)
        for (int value = 0; value < 65536; ++value) {
            std::string text = "09090909";
            char& first = text[at] = static_cast<char>(value & 0xFF);
            char& second = text[(at + 1) % 8] = static_cast<char>(value >> 8);
            uint64_t word = load_word(text.c_str());
            ASSERT_EQ(word_is_digits(word), is_digit(first) && is_digit(second)) << testing::PrintToString(text);
            bool good = (is_digit(first) || is_letter(first)) && (is_digit(second) || is_letter(second));
            first = ascii_upper(first);
            second = ascii_upper(second);
            ASSERT_EQ(word_upper(word), good ? load_word(text.c_str()) : 0) << testing::PrintToString(text);
        }
}

}  // namespace
