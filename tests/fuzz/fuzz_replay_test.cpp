// Runs every target over its corpus, in which the inputs of past findings
// stand too, and over inputs that differ from those a little. Needs no fuzzing
// engine.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>
#include <vector>

#include "tests/fuzz/fuzz.h"
#include "tests/unit/test_files.h"

fuzz_target_t* fuzz_target_t::first;

void fuzz_fault(const char* what) { ADD_FAILURE() << what; }

namespace {

std::vector<fuzz_target_t*> all_targets() {
    std::vector<fuzz_target_t*> targets;
    for (fuzz_target_t* target = fuzz_target_t::first; target; target = target->next) targets.push_back(target);
    std::sort(targets.begin(), targets.end(), [](auto a, auto b) { return strcmp(a->name, b->name) < 0; });
    return targets;
}

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

class Replay : public testing::TestWithParam<fuzz_target_t*> {};

TEST_P(Replay, Corpus) {
    std::filesystem::path folder = std::filesystem::path(FUZZ_CORPUS) / GetParam()->name;
    ASSERT_TRUE(is_directory(folder)) << folder;
    std::mt19937 random(20261123);
    size_t inputs = 0;
    auto run = [](const std::string& input) {
        GetParam()->run(reinterpret_cast<const uint8_t*>(input.data()), input.size());
    };
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        SCOPED_TRACE(entry.path());
        std::string input = read_file(entry.path());
        run(input);
        for (int i = 0; i < 1000 && !HasFailure(); ++i) run(changed(input, random));
        ++inputs;
    }
    EXPECT_GE(inputs, 3u);
    run("");
}

INSTANTIATE_TEST_SUITE_P(Fuzz, Replay, testing::ValuesIn(all_targets()),
                         [](const auto& test) { return std::string(test.param->name); });

}  // namespace
