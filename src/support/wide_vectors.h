// SPDX-License-Identifier: MIT
// Work on long arrays, compiled twice: for every processor, and for those with the vector instructions
// that newer ones have. Both give the same bits: the same operations in the same order, none of them fused.
#ifndef TRESK_SUPPORT_WIDE_VECTORS_H
#define TRESK_SUPPORT_WIDE_VECTORS_H

#include <cstddef>

#ifdef __x86_64__

// Whether the processor, and the system for it, has AVX2.
bool has_wide_vectors();

// Whether work on count values is done with them. Asking the processor takes as long as a small comparison,
// so nobody asks for a few.
inline bool goes_wide(std::size_t count)
{
    constexpr std::size_t kFew = 64;
    return count > kFew && has_wide_vectors();
}

template <typename Work> __attribute__((target("avx2"), flatten, noinline)) void do_wide(const Work &work)
{
    work();
}

// Calls work(), which is about count values; all of it should be inlined.
template <typename Work> void do_fast(std::size_t count, const Work &work)
{
    if (goes_wide(count)) {
        do_wide(work);
    } else {
        work();
    }
}

#else

template <typename Work> void do_fast(std::size_t, const Work &work)
{
    work();
}

#endif

#endif
