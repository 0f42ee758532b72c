// Runs every target over its corpus, in which the inputs of past findings
// stand too, and over inputs that differ from those a little. Needs no fuzzing
// engine.
#include <gtest/gtest.h>

#include <filesystem>
#include <random>

#include "tests/fuzz/fuzz.h"
#include "tests/unit/test_files.h"

void fuzz_fault(const char* what) { ADD_FAILURE() << what; }

namespace {

// Replaces, takes out, puts in or repeats some bytes.
std::string changed(std::string input, std::mt19937& random) {
    for (auto changes = 1 + random() % 4; changes && !input.empty(); --changes) {
        size_t at = random() % input.size(), length = random() % 8;
        std::string part = input.substr(random() % input.size(), length);
        switch (random() % 4) {
            case 0: input[at] = static_cast<char>(random()); break;
            case 1: input.erase(at, length); break;
            case 2: input.insert(at, part); break;
            default: input.replace(at, part.size(), part);
        }
    }
    return input;
}

void replay(fuzz_target_t* target, const std::string& name) {
    std::mt19937 random(20261123);
    size_t inputs = 0;
    auto run = [&](const std::string& input) { target(reinterpret_cast<const uint8_t*>(input.data()), input.size()); };
    for (const auto& entry : std::filesystem::directory_iterator(FUZZ_CORPUS "/" + name)) {
        SCOPED_TRACE(entry.path());
        std::string input = read_file(entry.path());
        run(input);
        for (int i = 0; i < 1000 && !testing::Test::HasFailure(); ++i) run(changed(input, random));
        ++inputs;
    }
    EXPECT_GE(inputs, 3u);
    run("");
}

TEST(Replay, BankLists) { replay(fuzz_bank_lists, "bank_lists"); }
TEST(Replay, Message) { replay(fuzz_message, "message"); }
TEST(Replay, Statement) { replay(fuzz_statement, "statement"); }

}  // namespace
