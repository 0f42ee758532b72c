// Runs every target over its corpus, in which the inputs of past findings
// stand too. Needs no fuzzing engine.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "tests/fuzz/fuzz.h"

fuzz_target_t* fuzz_target_t::first;

void fuzz_fault(const char* what) { ADD_FAILURE() << what; }

namespace {

std::vector<fuzz_target_t*> all_targets() {
    std::vector<fuzz_target_t*> targets;
    for (fuzz_target_t* target = fuzz_target_t::first; target; target = target->next) targets.push_back(target);
    std::sort(targets.begin(), targets.end(), [](auto a, auto b) { return strcmp(a->name, b->name) < 0; });
    return targets;
}

std::string bytes_of(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

class Replay : public testing::TestWithParam<fuzz_target_t*> {};

TEST_P(Replay, Corpus) {
    std::filesystem::path folder = std::filesystem::path(FUZZ_CORPUS) / GetParam()->name;
    ASSERT_TRUE(is_directory(folder)) << folder;
    size_t inputs = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        SCOPED_TRACE(entry.path());
        std::string input = bytes_of(entry.path());
        GetParam()->run(reinterpret_cast<const uint8_t*>(input.data()), input.size());
        ++inputs;
    }
    EXPECT_GE(inputs, 3u);
    GetParam()->run(reinterpret_cast<const uint8_t*>(""), 0);
}

INSTANTIATE_TEST_SUITE_P(Fuzz, Replay, testing::ValuesIn(all_targets()),
                         [](const auto& test) { return std::string(test.param->name); });

}  // namespace
