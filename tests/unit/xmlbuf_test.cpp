// The text buffer: growth to the byte, what is appended, what is escaped.
#include "message/xmlbuf.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

struct Xmlbuf : testing::Test {
    xmlbuf_t buffer{};

    void TearDown() override { free(buffer.text); }

    void empty() {
        free(buffer.text);
        buffer = {};
    }

    // Fills up to `used` bytes, the NUL included.
    void fill(size_t used) {
        empty();
        ASSERT_EQ(xmlbuf_append(&buffer, std::string(used - 1, 'x').c_str()), 1);
        ASSERT_EQ(buffer.used, used);
    }
};

TEST_F(Xmlbuf, GrowsToTheNextMultipleAbove) {
    const struct {
        size_t used, capacity;
    } rows[] = {{1, 256},   {255, 256}, {256, 512},       {257, 512},
                {511, 512}, {512, 768}, {100000, 100096}, {99999, 100096}};
    for (const auto& row : rows) {
        fill(row.used);
        EXPECT_EQ(buffer.capacity, row.capacity) << row.used;
        EXPECT_EQ(buffer.text[row.used - 1], '\0');
    }
}

TEST_F(Xmlbuf, RoomCountsANulOfItsOwn) {
    fill(255);
    ASSERT_EQ(xmlbuf_append(&buffer, ""), 1);  // needs 1, and 1 is left
    EXPECT_EQ(buffer.capacity, 256u);
    ASSERT_EQ(xmlbuf_append(&buffer, "y"), 1);  // needs 2
    EXPECT_EQ(buffer.capacity, 512u);
    EXPECT_EQ(buffer.used, 256u);
    EXPECT_EQ(std::string(buffer.text), std::string(254, 'x') + "y");

    fill(255);
    ASSERT_EQ(xmlbuf_append_escaped(&buffer, "<"), 1);  // needs 5
    EXPECT_EQ(buffer.capacity, 512u);
    EXPECT_EQ(buffer.used, 259u);
    fill(251);
    ASSERT_EQ(xmlbuf_append_escaped(&buffer, "<"), 1);
    EXPECT_EQ(buffer.capacity, 256u);
    fill(250);
    ASSERT_EQ(xmlbuf_append_escaped(&buffer, "&"), 1);  // needs 6
    EXPECT_EQ(buffer.capacity, 256u);
    fill(251);
    ASSERT_EQ(xmlbuf_append_escaped(&buffer, "&"), 1);
    EXPECT_EQ(buffer.capacity, 512u);
}

TEST_F(Xmlbuf, Reserve) {
    ASSERT_EQ(xmlbuf_reserve(&buffer, 0), 1);
    EXPECT_EQ(buffer.capacity, 0u);
    ASSERT_EQ(xmlbuf_reserve(&buffer, 256), 1);
    EXPECT_EQ(buffer.capacity, 512u);
    EXPECT_EQ(buffer.used, 0u);
    ASSERT_EQ(xmlbuf_reserve(&buffer, 512), 1);
    EXPECT_EQ(buffer.capacity, 512u);
    ASSERT_EQ(xmlbuf_reserve(&buffer, 513), 1);
    EXPECT_EQ(buffer.capacity, 768u);

    fill(10);
    xmlbuf_t before = buffer;
    for (size_t huge : {SIZE_MAX, SIZE_MAX - 10, SIZE_MAX - 265}) EXPECT_EQ(xmlbuf_reserve(&buffer, huge), 0);
    EXPECT_EQ(buffer.text, before.text);
    EXPECT_EQ(buffer.used, before.used);
    EXPECT_EQ(buffer.capacity, before.capacity);
}

TEST_F(Xmlbuf, AppendsInARow) {
    ASSERT_EQ(xmlbuf_append(&buffer, nullptr), 1);
    ASSERT_EQ(xmlbuf_append_escaped(&buffer, nullptr), 1);
    ASSERT_EQ(xmlbuf_append_list(&buffer, nullptr), 1);
    EXPECT_EQ(buffer.text, nullptr);
    EXPECT_EQ(buffer.used, 0u);

    ASSERT_EQ(xmlbuf_append_escaped(&buffer, "a<>&b"), 1);
    EXPECT_EQ(buffer.used, 16u);
    ASSERT_EQ(xmlbuf_append_escaped(&buffer, ""), 1);
    ASSERT_EQ(xmlbuf_append(&buffer, "<&>"), 1);
    ASSERT_EQ(xmlbuf_append_list(&buffer, "1", "", "2", nullptr, "3", nullptr), 1);
    ASSERT_EQ(xmlbuf_append_escaped(&buffer, "\"'\xC3\xA4\xFF\t"), 1);
    EXPECT_STREQ(buffer.text, "a&lt;&gt;&amp;b<&>12\"'\xC3\xA4\xFF\t");
    EXPECT_EQ(buffer.used, std::string(buffer.text).size() + 1);
}

TEST_F(Xmlbuf, FirstTextMayBeEmpty) {
    ASSERT_EQ(xmlbuf_append(&buffer, ""), 1);
    EXPECT_EQ(buffer.used, 1u);
    EXPECT_STREQ(buffer.text, "");
    empty();
    ASSERT_EQ(xmlbuf_append_escaped(&buffer, ""), 1);
    EXPECT_EQ(buffer.used, 1u);
    EXPECT_STREQ(buffer.text, "");
}

}  // namespace
