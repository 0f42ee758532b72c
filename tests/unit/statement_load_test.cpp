// A file that is leased; tests/phpt/statement_errors.phpt has those that cannot
// be read.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <fstream>
#include <string>

#include "sepa/statement/mt940.h"

namespace {

std::string name;
int leased;
bool pipe_comes;

// The system asks for the lease; a pipe may take the file's name before it is given back.
void give_back(int) {
    if (pipe_comes && unlink(name.c_str()) == 0) mkfifo(name.c_str(), 0600);
    fcntl(leased, F_SETLEASE, F_UNLCK);
}

TEST(Load, WaitsForALease) {
    name = testing::TempDir() + "leased." + std::to_string(getpid());
    signal(SIGIO, give_back);
    for (bool comes : {false, true}) {
        pipe_comes = comes;
        std::ofstream(name) << "\r\n:20:A\r\n-";
        leased = open(name.c_str(), O_RDWR);
        if (fcntl(leased, F_SETLEASE, F_WRLCK) != 0) GTEST_SKIP() << "the file system has no leases";
        sepa_stmt_parser_t* handle = sepa_stmt_parser_new();
        EXPECT_EQ(sepa_stmt_parser_load(handle, SEPA_STMT_FORMAT_MT940, name.c_str()), comes ? 0 : 1);
        EXPECT_STREQ(comes ? handle->error : handle->first->ref, comes ? "Input file is empty" : "A");
        sepa_stmt_parser_free(handle);
        close(leased);
    }
    unlink(name.c_str());
}

}  // namespace
