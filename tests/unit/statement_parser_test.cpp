#include <glob.h>
#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "tests/unit/statement_dump.h"
#include "tests/unit/statement_naive.h"

namespace {

using handle_t = std::unique_ptr<sepa_stmt_parser_t, decltype(&sepa_stmt_parser_free)>;

// A handle as a load leaves it in front of the parse. Its text is a heap block
// that ends behind `padding` NULs.
handle_t handle_with(const std::string& text, size_t padding) {
    handle_t handle(sepa_stmt_parser_new(), sepa_stmt_parser_free);
    handle->parser = static_cast<mt940_state_t*>(calloc(1, sizeof(mt940_state_t)));
    handle->parser->text = static_cast<char*>(calloc(1, text.size() + padding));
    memcpy(handle->parser->text, text.data(), text.size());
    return handle;
}

// Two readings of the same text.
std::string parse(const std::string& text) {
    handle_t handle = handle_with(text, 1);
    EXPECT_EQ(mt940_parse(handle.get(), handle->parser->text), text.empty() || !text[0] ? 0 : 1);
    EXPECT_STREQ(handle->error, "");
    return dump(handle.get());
}

std::string parse_naively(const std::string& text) {
    handle_t handle = handle_with(text.c_str(), 16);
    naive_parser_t(handle.get()).parse(handle->parser->text);
    return dump(handle.get());
}

std::string read_file(const std::string& path) {
    char content[1 << 16];
    FILE* file = fopen(path.c_str(), "rb");
    if (!file) return "no file " + path;
    size_t length = fread(content, 1, sizeof content, file);
    fclose(file);
    return std::string(content, length);
}

// The statement files, without their "sta".
std::vector<std::string> cases() {
    std::vector<std::string> paths;
    glob_t found;
    if (glob(TEST_DATA "/statements/*.sta", 0, nullptr, &found) != 0) return paths;
    for (size_t i = 0; i < found.gl_pathc; ++i)
        paths.emplace_back(found.gl_pathv[i], strlen(found.gl_pathv[i]) - strlen("sta"));
    globfree(&found);
    return paths;
}

class StatementFile : public testing::TestWithParam<std::string> {
protected:
    std::string text = read_file(GetParam() + "sta");
};

TEST_P(StatementFile, GivesItsDump) {
    const std::string expected = read_file(GetParam() + "dump");
    EXPECT_EQ(parse(text), expected);
    EXPECT_EQ(parse_naively(text), expected);
}

TEST_P(StatementFile, CutAtEveryByte) {
    for (; !text.empty(); text.pop_back()) ASSERT_EQ(parse(text), parse_naively(text)) << text.size();
    ASSERT_EQ(parse(text), "");
}

TEST_P(StatementFile, EveryByteFlipped) {
    for (char& byte : text) {
        const char kept = byte;
        for (char flipped : {':', '?', '\r', '\n', '\0', 'N', ',', '/', ' '}) {
            byte = flipped;
            ASSERT_EQ(parse(text), parse_naively(text)) << &byte - text.data() << " " << int{flipped};
        }
        byte = kept;
    }
}

INSTANTIATE_TEST_SUITE_P(All, StatementFile, testing::ValuesIn(cases()), [](const auto& file) {
    size_t name = file.param.rfind('/') + 1;
    return file.param.substr(name, file.param.size() - name - 1);
});

}  // namespace
