// The text buffer: growth to the byte, what is appended, what is escaped.
#include "sepa/message/xmlbuf.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

struct Xmlbuf : testing::Test {
    xmlbuf_t buffer{};

    void TearDown() override { free(buffer.text); }

    // Fills an empty buffer up to `used` bytes, the NUL included.
    void fill(size_t used) {
        free(buffer.text);
        buffer = {};
        ASSERT_EQ(xmlbuf_append(&buffer, std::string(used - 1, 'x').c_str()), 1);
        ASSERT_EQ(buffer.used, used);
    }
};

// To the next multiple of 256 above; every append counts a NUL of its own.
TEST_F(Xmlbuf, Grows) {
    const struct {
        size_t used;
        int (*append)(xmlbuf_t*, const char*);
        const char* text;
        size_t used_then, capacity;
    } rows[] = {{255, xmlbuf_append, "", 255, 256},          {255, xmlbuf_append, "y", 256, 512},
                {256, xmlbuf_append, "", 256, 512},          {512, xmlbuf_append, "", 512, 768},
                {255, xmlbuf_append_escaped, "<", 259, 512}, {251, xmlbuf_append_escaped, "<", 255, 256},
                {250, xmlbuf_append_escaped, "&", 255, 256}, {251, xmlbuf_append_escaped, "&", 256, 512}};
    for (const auto& row : rows) {
        fill(row.used);
        ASSERT_EQ(row.append(&buffer, row.text), 1);
        EXPECT_EQ(buffer.used, row.used_then) << row.text;
        EXPECT_EQ(buffer.capacity, row.capacity) << row.text;
    }
}

TEST_F(Xmlbuf, RefusesHugeSizes) {
    fill(10);
    for (size_t huge : {SIZE_MAX, SIZE_MAX - 10, SIZE_MAX - 265}) EXPECT_EQ(xmlbuf_reserve(&buffer, huge), 0);
    EXPECT_STREQ(buffer.text, "xxxxxxxxx");
    EXPECT_EQ(buffer.used + buffer.capacity, 10u + 256u);
}

TEST_F(Xmlbuf, AppendsInARow) {
    EXPECT_TRUE(xmlbuf_append_escaped(&buffer, nullptr) && xmlbuf_append_list(&buffer, nullptr) && !buffer.text);
    EXPECT_TRUE(xmlbuf_append_escaped(&buffer, "") && xmlbuf_append_escaped(&buffer, "a<>&b") &&
                xmlbuf_append(&buffer, "<&>") && xmlbuf_append_list(&buffer, "1", "", "2", nullptr, "3", nullptr) &&
                xmlbuf_append_escaped(&buffer, "\"'\xC3\xA4\xFF\t"));
    EXPECT_STREQ(buffer.text, "a&lt;&gt;&amp;b<&>12\"'\xC3\xA4\xFF\t");
    EXPECT_EQ(buffer.used, std::string(buffer.text).size() + 1);
}

// Markup at every place of texts of every length, the search for which takes
// several bytes at a time.
TEST_F(Xmlbuf, Escapes) {
    const std::string entities[] = {"&lt;", "&gt;", "&amp;", "\xC3", "*", "x"};
    for (size_t length = 1; length < 50; ++length)
        for (size_t at = 0; at < length; ++at)
            for (size_t i = 0; i < 6; ++i) {
                std::string before(at, 'a'), after(length - at - 1, 'z');
                fill(1);
                ASSERT_EQ(xmlbuf_append_escaped(&buffer, (before + "<>&\xC3*x"[i] + after).c_str()), 1);
                ASSERT_EQ(buffer.text, before + entities[i] + after);
            }
}

}  // namespace
