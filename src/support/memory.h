// SPDX-License-Identifier: MIT
// Checked allocation: these functions never return failure. A bad request or an exhausted heap is
// reported on the transcript and ends the run with exit code 1, which lies outside the grades 0..5
// on purpose: an out-of-memory run has no grade. operator new is replaced by one that keeps to this,
// so that it holds for the containers of the standard library too. The string functions are part of the
// interface, called by nothing here.
#ifndef TRESK_SUPPORT_MEMORY_H
#define TRESK_SUPPORT_MEMORY_H

#include <cstddef>

extern const char *const outOfHeap; // text of every out-of-memory report
extern char memError[];             // the last illegal-argument report

// count elements of size bytes, zero-filled; null when count is 0. count < 0 or size < 1 ends the run.
void *f_calloc(int count, int size);

// Like f_calloc without the zero fill. The product is formed in 32 bits, as callers rely on.
void *f_malloc(int count, int size);

// Resizes block, or allocates it when it is null. size < 1 ends the run.
void *f_realloc(void *block, int size);

// The same for blocks whose size does not fit the 32-bit interface (line buffers, record slabs).
void *f_realloc_large(void *block, std::size_t size);

// A copy of text; null for null.
char *f_strdup(const char *text);

// A new string of the first length bytes of text; null for null text or length < 1.
char *f_strndup(const char *text, int length);

// All texts up to the closing null pointer, joined. Without texts: an empty string.
char *f_strcat(const char *first, ...) __attribute__((sentinel));

// Like f_strcat; takes ownership of the first text and releases it.
char *f_strappend(char *owned, ...) __attribute__((sentinel));

// path without trailing "/" and without its last n components; "." when nothing is left.
char *f_remove_trailing_components(const char *path, int n);

// Decimal text of value, in a static buffer that the next call overwrites.
const char *f_itoa(int value);

#endif
