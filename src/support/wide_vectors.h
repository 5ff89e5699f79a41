// SPDX-License-Identifier: MIT
// Work on long arrays, compiled twice: for every processor, and for those with the vector instructions
// that newer ones have. Both give the same bits: the same operations in the same order, none of them fused.
#ifndef TRESK_SUPPORT_WIDE_VECTORS_H
#define TRESK_SUPPORT_WIDE_VECTORS_H

#ifdef __x86_64__

// Whether the processor, and the system for it, has AVX2.
bool has_wide_vectors();

template <typename Work> __attribute__((target("avx2"), flatten, noinline)) void do_wide(const Work &work)
{
    work();
}

// Calls work(), all of which should be inlined into it.
template <typename Work> void do_fast(const Work &work)
{
    if (has_wide_vectors()) {
        do_wide(work);
    } else {
        work();
    }
}

#else

template <typename Work> void do_fast(const Work &work)
{
    work();
}

#endif

#endif
