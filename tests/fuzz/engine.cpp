// The entry of a fuzzing engine, in a program for each target.
#include <cstdio>

#include "tests/fuzz/fuzz.h"

void fuzz_fault(const char* what) {
    fprintf(stderr, "%s\n", what);
    __builtin_trap();
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FUZZ_TARGET(data, size);
    return 0;
}
