#include <dirent.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <vector>

#include "tests/unit/statement_dump.h"
#include "tests/unit/statement_naive.h"

namespace {

using handle_t = std::unique_ptr<sepa_stmt_parser_t, decltype(&sepa_stmt_parser_free)>;

handle_t new_handle() { return handle_t(sepa_stmt_parser_new(), sepa_stmt_parser_free); }

// A handle as a load leaves it in front of the parse. It owns the text.
handle_t handle_with(char* text) {
    handle_t handle = new_handle();
    handle->parser = static_cast<mt940_state_t*>(calloc(1, sizeof(mt940_state_t)));
    handle->parser->text = text;
    return handle;
}

// The text in a heap block that ends behind `padding` NULs.
char* block_of(const std::string& text, size_t padding) {
    auto* block = static_cast<char*>(calloc(1, text.size() + padding));
    memcpy(block, text.data(), text.size());
    return block;
}

// Two readings of the same text.
std::string parse(const std::string& text) {
    handle_t handle = handle_with(block_of(text, 1));
    int result = mt940_parse(handle.get(), handle->parser->text);
    EXPECT_EQ(result, text.empty() || !text[0] ? 0 : 1);
    EXPECT_STREQ(handle->error, "");
    return dump(handle.get());
}

std::string parse_naively(const std::string& text) {
    handle_t handle = handle_with(block_of(text.c_str(), 16));
    naive_parser_t(handle.get()).parse(handle->parser->text);
    return dump(handle.get());
}

std::string read_file(const std::string& path) {
    std::string content;
    FILE* file = fopen(path.c_str(), "rb");
    if (!file) return content;
    char part[4096];
    while (size_t count = fread(part, 1, sizeof part, file)) content.append(part, count);
    fclose(file);
    return content;
}

// The statement files, without their ".sta".
std::vector<std::string> cases() {
    std::vector<std::string> names;
    DIR* folder = opendir(TEST_DATA "/statements");
    while (dirent* entry = folder ? readdir(folder) : nullptr) {
        std::string name = entry->d_name;
        if (name.size() > 4 && name.substr(name.size() - 4) == ".sta")
            names.push_back(TEST_DATA "/statements/" + name.substr(0, name.size() - 4));
    }
    if (folder) closedir(folder);
    std::sort(names.begin(), names.end());
    return names;
}

class StatementFile : public testing::TestWithParam<std::string> {};

TEST_P(StatementFile, GivesItsDump) {
    handle_t handle = new_handle();
    EXPECT_EQ(sepa_stmt_parser_load(handle.get(), SEPA_STMT_FORMAT_MT940, (GetParam() + ".sta").c_str()), 1);
    EXPECT_EQ(dump(handle.get()), read_file(GetParam() + ".dump"));
    EXPECT_EQ(dump(handle.get()), parse_naively(read_file(GetParam() + ".sta")));
}

TEST_P(StatementFile, CutAtEveryByte) {
    const std::string text = read_file(GetParam() + ".sta");
    for (size_t length = 0; length < text.size(); ++length) {
        std::string cut = text.substr(0, length);
        ASSERT_EQ(parse(cut), parse_naively(cut)) << length;
    }
}

TEST_P(StatementFile, EveryByteFlipped) {
    std::string text = read_file(GetParam() + ".sta");
    for (char& byte : text) {
        const char kept = byte;
        for (char flipped : {':', '?', '\r', '\n', '\0', 'N', ',', '/', ' '}) {
            byte = flipped;
            ASSERT_EQ(parse(text), parse_naively(text)) << &byte - text.data() << " " << int{flipped};
        }
        byte = kept;
    }
}

INSTANTIATE_TEST_SUITE_P(All, StatementFile, testing::ValuesIn(cases()),
                         [](const auto& file) { return file.param.substr(file.param.rfind('/') + 1); });

}  // namespace
