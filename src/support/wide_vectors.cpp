// SPDX-License-Identifier: MIT
#include "support/wide_vectors.h"

#ifdef __x86_64__

#include <cpuid.h>

namespace
{

// Not __builtin_cpu_supports: that asks at the start of every run, which costs a comparison of small files.
bool find_avx2()
{
    unsigned a = 0;
    unsigned b = 0;
    unsigned c = 0;
    unsigned d = 0;
    if (__get_cpuid(1, &a, &b, &c, &d) == 0 || (c & bit_OSXSAVE) == 0 || (c & bit_AVX) == 0) {
        return false;
    }
    unsigned low = 0;
    unsigned high = 0;
    asm("xgetbv" : "=a"(low), "=d"(high) : "c"(0));
    constexpr unsigned kRegisters = 6; // that the system saves: those of SSE and of AVX
    return (low & kRegisters) == kRegisters && __get_cpuid_count(7, 0, &a, &b, &c, &d) != 0 &&
           (b & bit_AVX2) != 0;
}

} // namespace

bool has_wide_vectors()
{
    static const bool found = find_avx2();
    return found;
}

#endif
