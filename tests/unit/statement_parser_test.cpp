#include <glob.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "tests/unit/statement_dump.h"
#include "tests/unit/test_files.h"

namespace {

using handle_t = std::unique_ptr<sepa_stmt_parser_t, decltype(&sepa_stmt_parser_free)>;

// The records of a text, as a load would parse it: a heap block that ends with its NUL.
std::string parse(const std::string& text) {
    handle_t handle(sepa_stmt_parser_new(), sepa_stmt_parser_free);
    handle->parser = static_cast<mt940_state_t*>(calloc(1, sizeof(mt940_state_t)));
    handle->parser->text = static_cast<char*>(calloc(1, text.size() + 1));
    memcpy(handle->parser->text, text.data(), text.size());
    EXPECT_EQ(mt940_parse(handle.get(), handle->parser->text), text.empty() || !text[0] ? 0 : 1);
    EXPECT_STREQ(handle->error, "");
    return dump(handle.get());
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

std::string name_of(const std::string& path) {
    size_t name = path.rfind('/') + 1;
    return path.substr(name, path.size() - name - 1);
}

class StatementFile : public testing::TestWithParam<std::string> {
protected:
    std::string text = read_file(GetParam() + "sta");
};

TEST_P(StatementFile, GivesItsDump) { EXPECT_EQ(parse(text), read_file(GetParam() + "dump")); }

// Cut at every byte, and with every byte replaced. The digests were taken when
// a second parser, written apart for plainness alone, gave the same records.
TEST_P(StatementFile, GivesItsDumpsWhenDamaged) {
    const std::string whole = text;
    uint64_t cut = fnv1a(""), replaced = fnv1a("");
    for (; !text.empty(); text.pop_back()) cut = fnv1a(parse(text), cut);
    text = whole;
    for (char& byte : text) {
        const char kept = byte;
        for (char other : {':', '?', '\r', '\n', '\0', 'N', ',', '/', ' '}) {
            byte = other;
            replaced = fnv1a(parse(text), replaced);
        }
        byte = kept;
    }
    const csv_row found = {name_of(GetParam()), std::to_string(cut), std::to_string(replaced)};
    std::vector<csv_row> rows = csv_rows(TEST_DATA "/statements/damaged.csv", "name,cut,replaced");
    EXPECT_TRUE(std::count(rows.begin(), rows.end(), found)) << found[0] << "," << found[1] << "," << found[2];
}

INSTANTIATE_TEST_SUITE_P(All, StatementFile, testing::ValuesIn(cases()),
                         [](const auto& file) { return name_of(file.param); });

}  // namespace
