// SPDX-License-Identifier: MIT
// Storage for records that live until the process exits: zero-filled and handed out from large
// slabs, so that a record costs no allocator header and its neighbours in a list are its
// neighbours in memory.
#ifndef TRESK_SUPPORT_SLAB_H
#define TRESK_SUPPORT_SLAB_H

#include <cstddef>
#include <string_view>
#include <type_traits>

// A zero-filled slab of that many bytes (aligned to 2 MiB when it is that large). Ends the run when
// memory is exhausted.
void *new_slab(std::size_t bytes);

// Size of the slab that follows one of the given size: small at first so that a tiny file stays
// tiny, then doubling up to what makes page faults rare.
std::size_t next_slab_size(std::size_t bytes);

// A zero-terminated copy of text that lives until the process exits.
char *slab_text(std::string_view text);

// Hands out zero-filled records of one type.
template <typename Record> class Slab
{
    static_assert(std::is_trivially_destructible_v<Record>, "records are never destroyed");

  public:
    Record *take()
    {
        if (next_ == end_) {
            refill(1);
        }
        return next_++;
    }

    // Makes room for count records side by side, at most 2 MiB in all, and returns the first, without
    // taking any. The records left in a slab that is too full are given up.
    Record *reserve(std::size_t count)
    {
        if (static_cast<std::size_t>(end_ - next_) < count) {
            refill(count);
        }
        return next_;
    }

    // Takes the first count of the records reserved.
    void commit(std::size_t count)
    {
        next_ += count;
    }

  private:
    void refill(std::size_t count)
    {
        do {
            size_ = next_slab_size(size_);
        } while (size_ / sizeof(Record) < count);
        next_ = static_cast<Record *>(new_slab(size_));
        end_ = next_ + size_ / sizeof(Record);
    }

    Record *next_ = nullptr;
    Record *end_ = nullptr;
    std::size_t size_ = 0;
};

#endif
