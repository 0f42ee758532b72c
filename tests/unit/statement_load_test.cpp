#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>

#include "statement/mt940.h"

// Record allocations that still succeed; negative for all of them. The library
// takes its zeroed records from here.
static thread_local long allocations_left = -1;

extern "C" void* calloc(size_t count, size_t size) noexcept {
    if (allocations_left == 0) {
        errno = ENOMEM;
        return nullptr;
    }
    if (allocations_left > 0) --allocations_left;
    void* block = malloc(count * size);
    if (block) explicit_bzero(block, count * size);
    return block;
}

namespace {

class StatementLoad : public testing::Test {
protected:
    sepa_stmt_parser_t* handle = sepa_stmt_parser_new();
    std::string path = testing::TempDir() + "statement_load_" + std::to_string(getpid());

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
    int load() { return sepa_stmt_parser_load(handle, SEPA_STMT_FORMAT_MT940, path.c_str()); }
};

TEST_F(StatementLoad, OncePerHandle) {
    write("\r\n:20:A\r\n:25:B\r\n-\r\n");
    EXPECT_EQ(load(), 1);
    EXPECT_STREQ(handle->error, "");
    EXPECT_EQ(load(), 0);
    EXPECT_STREQ(handle->error, "Parser already used");
    EXPECT_EQ(mt940_load_file(handle, path.c_str()), 0);
    ASSERT_TRUE(handle->first);
    EXPECT_STREQ(handle->first->account, "B");
}

TEST_F(StatementLoad, FailuresUseTheHandleUp) {
    EXPECT_EQ(load(), 0);
    EXPECT_STREQ(handle->error, "Can't open input file: No such file or directory");
    write("\r\n:20:A\r\n-");
    EXPECT_EQ(load(), 0);
    EXPECT_STREQ(handle->error, "Parser already used");
}

TEST_F(StatementLoad, FormatsAndMissingState) {
    EXPECT_EQ(sepa_stmt_parser_load(nullptr, 1, path.c_str()), 0);
    EXPECT_EQ(mt940_load_file(nullptr, path.c_str()), 0);
    EXPECT_EQ(mt940_parse(nullptr, nullptr), 0);
    sepa_stmt_parser_free(nullptr);

    char text[] = "\r\n:20:A\r\n-";
    EXPECT_EQ(mt940_parse(handle, text), 0);
    EXPECT_STREQ(handle->error, "MT940 parser not initialized");
    handle->error[0] = '\0';
    EXPECT_EQ(mt940_load_file(handle, path.c_str()), 0);
    EXPECT_STREQ(handle->error, "MT940 parser not initialized");
    EXPECT_EQ(sepa_stmt_parser_load(handle, 2, path.c_str()), 0);
    EXPECT_STREQ(handle->error, "Format not (yet) supported");
    EXPECT_EQ(handle->format, 2);
    EXPECT_EQ(load(), 0);
    EXPECT_STREQ(handle->error, "Parser already used");
}

TEST_F(StatementLoad, WithoutStatements) {
    write("\n:20:A\n:25:B\n-\n");
    EXPECT_EQ(load(), 1);
    EXPECT_FALSE(handle->first);
}

TEST_F(StatementLoad, Empty) {
    write("");
    EXPECT_EQ(load(), 0);
    EXPECT_STREQ(handle->error, "Input file is empty");
}

TEST_F(StatementLoad, NulFirst) {
    write(std::string("\0\r\n:20:A\r\n-", 12));
    EXPECT_EQ(load(), 0);
    EXPECT_STREQ(handle->error, "");
}

TEST_F(StatementLoad, Directory) {
    path = testing::TempDir();
    EXPECT_EQ(load(), 0);
    EXPECT_STREQ(handle->error, "Error while reading from file: Is a directory");
}

TEST_F(StatementLoad, PipeWithoutWriterDoesNotHang) {
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(load(), 0);
    EXPECT_STREQ(handle->error, "Input file is empty");
}

TEST_F(StatementLoad, NoFileName) {
    EXPECT_EQ(sepa_stmt_parser_load(handle, SEPA_STMT_FORMAT_MT940, nullptr), 0);
    EXPECT_STREQ(handle->error, "Can't open input file: Bad address");
}

#ifndef __SANITIZE_ADDRESS__  // whose malloc stops the process instead
TEST_F(StatementLoad, LargerThanMemory) {
    write("x");
    ASSERT_EQ(truncate(path.c_str(), 1L << 43), 0);
    EXPECT_EQ(load(), 0);
    EXPECT_STREQ(handle->error, "Failed to allocate 8796093022208 bytes");
}
#endif

TEST_F(StatementLoad, ShorterThanItsSize) {
    path = "/sys/kernel/mm/transparent_hugepage/enabled";  // tells the size of a page
    struct stat info;
    if (stat(path.c_str(), &info) != 0 || info.st_size < 1000) GTEST_SKIP();
    EXPECT_EQ(load(), 0);
    EXPECT_STREQ(handle->error, "Error while reading from file: unexpected end of file");
    path.clear();
}

TEST_F(StatementLoad, MemoryRunsOut) {
    write("\r\n:20:A\r\n:61:240101C1,00N\r\n-\r\n:20:B\r\n:61:240101C1,00N\r\n-\r\n");
    allocations_left = 0;
    EXPECT_EQ(load(), 0);
    EXPECT_STREQ(handle->error, "Error while allocating 8 bytes: Cannot allocate memory");
    // The state, then two statements with a transaction each.
    for (long enough = 1; enough < 5; ++enough) {
        sepa_stmt_parser_free(handle);
        allocations_left = -1;
        handle = sepa_stmt_parser_new();
        allocations_left = enough;
        EXPECT_EQ(load(), 0);
        EXPECT_STREQ(handle->error, "");
        EXPECT_FALSE(handle->first);
        EXPECT_FALSE(handle->last);
        EXPECT_FALSE(handle->parser->text);
    }
    allocations_left = -1;
}

}  // namespace
