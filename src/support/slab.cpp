// SPDX-License-Identifier: MIT
#include "support/slab.h"

#include "support/memory.h"

#include <cstdint>
#include <sys/mman.h>

namespace
{

constexpr std::size_t kFirstSlab =
    std::size_t{2} * 1024; // touched as a whole, and each kind of record has one
constexpr std::size_t kHugePage = std::size_t{2} * 1024 * 1024;
constexpr std::size_t kLargestSlab = 16 * kHugePage;

} // namespace

std::size_t next_slab_size(std::size_t bytes)
{
    if (bytes == 0) {
        return kFirstSlab;
    }
    return bytes < kLargestSlab ? bytes * 2 : kLargestSlab;
}

void *new_slab(std::size_t bytes)
{
    if (bytes < kHugePage) {
        return f_calloc(1, static_cast<int>(bytes));
    }
    // Mapped one huge page larger and used from the first aligned byte, so that the kernel can
    // back it with huge pages; what lies before is address space only.
    void *map = mmap(nullptr, bytes + kHugePage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (map == MAP_FAILED) {
        return f_calloc(1, static_cast<int>(bytes));
    }
    const auto start = reinterpret_cast<std::uintptr_t>(map);
    const std::uintptr_t aligned = (start + kHugePage - 1) / kHugePage * kHugePage;
    auto *slab = static_cast<char *>(map) + (aligned - start);
    madvise(slab, bytes, MADV_HUGEPAGE); // a hint: pages of the usual size serve as well
    return slab;
}

char *slab_text(std::string_view text)
{
    static Slab<char> characters;
    const std::size_t bytes = text.size() + 1;
    char *copy = nullptr;
    if (bytes > kFirstSlab) { // would not fit every slab
        copy = static_cast<char *>(f_realloc_large(nullptr, bytes));
    } else {
        copy = characters.reserve(bytes);
        characters.commit(bytes);
    }
    text.copy(copy, text.size());
    copy[text.size()] = '\0';
    return copy;
}
