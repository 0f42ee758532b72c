#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>

#include "statement/mt940.h"

namespace {

class StatementLoad : public testing::Test {
protected:
    sepa_stmt_parser_t* handle = sepa_stmt_parser_new();
    const std::string path = testing::TempDir() + "statement_load_" + std::to_string(getpid());

    ~StatementLoad() override {
        sepa_stmt_parser_free(handle);
        unlink(path.c_str());
    }
    void write(const std::string& content) {
        FILE* file = fopen(path.c_str(), "wb");
        ASSERT_TRUE(file);
        fwrite(content.data(), 1, content.size(), file);
        fclose(file);
    }
    void load(const char* file, const char* error, int format = SEPA_STMT_FORMAT_MT940) {
        handle->error[0] = '\0';
        EXPECT_EQ(sepa_stmt_parser_load(handle, format, file), !error);
        EXPECT_STREQ(handle->error, error ? error : "");
    }
    void load_anew(const char* file, const char* error) {
        sepa_stmt_parser_free(handle);
        handle = sepa_stmt_parser_new();
        load(file, error);
    }
};

TEST_F(StatementLoad, OncePerHandle) {
    write("\r\n:20:A\r\n:25:B\r\n-\r\n");
    load(path.c_str(), nullptr);
    load(path.c_str(), "Parser already used");
    EXPECT_EQ(mt940_load_file(handle, path.c_str()), 0);
    ASSERT_TRUE(handle->first);
    EXPECT_STREQ(handle->first->account, "B");
    load_anew("/no/such/file", "Can't open input file: No such file or directory");
    load(path.c_str(), "Parser already used");
}

TEST_F(StatementLoad, FormatsAndMissingState) {
    EXPECT_EQ(sepa_stmt_parser_load(nullptr, 1, path.c_str()) + mt940_load_file(nullptr, path.c_str()), 0);
    EXPECT_EQ(mt940_parse(nullptr, nullptr), 0);
    char text[] = "\r\n:20:A\r\n-";
    EXPECT_EQ(mt940_parse(handle, text), 0);
    EXPECT_STREQ(handle->error, "MT940 parser not initialized");
    EXPECT_EQ(mt940_load_file(handle, path.c_str()), 0);
    load(path.c_str(), "Format not (yet) supported", 2);
    load(path.c_str(), "Parser already used");
}

TEST_F(StatementLoad, OddFiles) {
    load(nullptr, "Can't open input file: Bad address");
    load_anew("/", "Error while reading from file: Is a directory");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    load_anew(path.c_str(), "Input file is empty");  // and does not hang without a writer
    unlink(path.c_str());
    write(std::string("\0\r\n:20:A\r\n-", 12));
    load_anew(path.c_str(), "");
    const char* shorter = "/sys/kernel/mm/transparent_hugepage/enabled";  // tells the size of a page
    if (access(shorter, R_OK) == 0) load_anew(shorter, "Error while reading from file: unexpected end of file");
}

}  // namespace
