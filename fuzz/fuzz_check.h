#pragma once
// A broken promise stops the fuzzer like a crash does, with the reason, so
// that the input is saved and can be replayed.
#include <cstdio>
#include <cstdlib>

#define FUZZ_REQUIRE(condition)                                                                    \
    do {                                                                                           \
        if (!(condition)) {                                                                        \
            std::fprintf(stderr, "broken promise at %s:%d: %s\n", __FILE__, __LINE__, #condition); \
            std::abort();                                                                          \
        }                                                                                          \
    } while (false)
