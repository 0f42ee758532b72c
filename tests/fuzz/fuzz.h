// What the fuzz targets share. A target is a function of a byte string that
// drives one way into the system and tells whether what comes out can be. Two
// programs run targets: engine.cpp, for a fuzzing engine, and
// fuzz_replay_test.cpp, for the corpora of the normal test run.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

// A target; defining one puts it on the list.
struct fuzz_target_t {
    using run_t = void(const uint8_t* data, size_t size);

    fuzz_target_t(const char* target_name, run_t* target_run) : name(target_name), run(target_run), next(first) {
        first = this;
    }

    const char* name;  // also the folder of its corpus
    run_t* run;
    fuzz_target_t* next;

    static fuzz_target_t* first;
};

#define FUZZ_TARGET(target)                                \
    static fuzz_target_t::run_t target;                    \
    static fuzz_target_t target##_target(#target, target); \
    static void target(const uint8_t* data, size_t size)

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

// Takes values off an input; past its end all are zero or empty.
class input_t {
public:
    input_t(const uint8_t* data, size_t size) : at_(data), left_(size) {}

    bool empty() const { return left_ == 0; }

    uint8_t byte() {
        if (!left_) return 0;
        --left_;
        return *at_++;
    }

    uint16_t word() {
        unsigned high = byte();
        return static_cast<uint16_t>(high << 8 | byte());
    }

    // Up to the next line end, which is taken and not given.
    std::string line() {
        std::string text;
        while (left_) {
            char c = static_cast<char>(byte());
            if (c == '\n') break;
            text += c;
        }
        return text;
    }

    std::string rest() {
        std::string text(reinterpret_cast<const char*>(at_), left_);
        left_ = 0;
        return text;
    }

private:
    const uint8_t* at_;
    size_t left_;
};
