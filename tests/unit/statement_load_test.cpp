// What a load needs a second process for; tests/phpt/statement_errors.phpt has
// the files that cannot be read.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <fstream>
#include <string>

#include "statement/mt940.h"

namespace {

// Takes a lease on the file, and gives it back a while after the system asks
// for it; before that, with `pipe_comes`, a pipe takes the file's name.
[[noreturn]] void hold_lease(const std::string& name, int ready, bool pipe_comes) {
    sigset_t asked;
    sigemptyset(&asked);
    sigaddset(&asked, SIGIO);
    sigprocmask(SIG_BLOCK, &asked, nullptr);
    int file = open(name.c_str(), O_RDWR);
    char held = fcntl(file, F_SETLEASE, F_WRLCK) == 0;
    if (write(ready, &held, 1) != 1 || !held) _exit(1);
    int signal;
    sigwait(&asked, &signal);
    if (pipe_comes && (unlink(name.c_str()) < 0 || mkfifo(name.c_str(), 0600) < 0)) _exit(1);
    usleep(100000);
    _exit(0);
}

std::string load_under_lease(bool pipe_comes) {
    std::string name = testing::TempDir() + "leased" + std::to_string(getpid()) + ".sta";
    std::ofstream(name) << "\r\n:20:A\r\n-";
    int ready[2];
    EXPECT_EQ(pipe(ready), 0);
    pid_t holder = fork();
    if (holder == 0) hold_lease(name, ready[1], pipe_comes);
    char held = 0;
    EXPECT_EQ(read(ready[0], &held, 1), 1);
    sepa_stmt_parser_t* handle = sepa_stmt_parser_new();
    std::string result = !held                                                                      ? "no lease"
                         : sepa_stmt_parser_load(handle, SEPA_STMT_FORMAT_MT940, name.c_str()) == 1 ? handle->first->ref
                                                                                                    : handle->error;
    sepa_stmt_parser_free(handle);
    int status = 1;
    EXPECT_EQ(waitpid(holder, &status, 0), holder);
    EXPECT_TRUE(!held || status == 0);
    for (int end : ready) close(end);
    unlink(name.c_str());
    return result;
}

TEST(Load, WaitsForALease) {
    std::string result = load_under_lease(false);
    if (result == "no lease") GTEST_SKIP() << "the file system has no leases";
    EXPECT_EQ(result, "A");
    EXPECT_EQ(load_under_lease(true), "Input file is empty");
}

}  // namespace
