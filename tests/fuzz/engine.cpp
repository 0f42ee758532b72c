// The entry of a fuzzing engine. A program of this kind holds one target.
#include <cstdio>

#include "tests/fuzz/fuzz.h"

fuzz_target_t* fuzz_target_t::first;

void fuzz_fault(const char* what) {
    fprintf(stderr, "%s: %s\n", fuzz_target_t::first->name, what);
    __builtin_trap();
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    fuzz_target_t::first->run(data, size);
    return 0;
}
