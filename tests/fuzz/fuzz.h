// What the fuzz targets share. A target is a function of a byte string that
// drives one way into the system and tells whether what comes out can be. Two
// programs run targets: engine.cpp, for a fuzzing engine, and
// fuzz_replay_test.cpp, for the corpora of the normal test run.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>

using fuzz_target_t = void(const uint8_t* data, size_t size);

fuzz_target_t fuzz_bank_lists, fuzz_message, fuzz_statement;

// Reports that an input has shown a fault. The engine's ends the process.
void fuzz_fault(const char* what);

inline void expect(bool good, const char* what) {
    if (!good) fuzz_fault(what);
}

// A NUL-terminated text in a heap block of exactly its size, so that an
// address sanitizer sees the first byte read after it.
class exact_text_t {
public:
    exact_text_t(const void* bytes, size_t size) : block_(new char[size + 1]()) {
        if (size) memcpy(block_.get(), bytes, size);
    }
    explicit exact_text_t(const std::string& text) : exact_text_t(text.data(), text.size()) {}
    char* get() const { return block_.get(); }

private:
    std::unique_ptr<char[]> block_;
};
