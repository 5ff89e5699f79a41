// SPDX-License-Identifier: MIT
// The walk over the points of a waveform, in blocks, wherever they are: in memory, or in the punch file,
// from where they are decoded once more. It is the only way to the points.
#ifndef TRESK_READ_POINT_BLOCKS_H
#define TRESK_READ_POINT_BLOCKS_H

#include "read/records.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

// Points side by side, in two columns of count values.
struct PointBlock {
    const double *x;
    const double *val;
    std::size_t count; // 0 at the end of a walk
};

class BlockWalk
{
  public:
    explicit BlockWalk(const Wform &wform);
    ~BlockWalk();
    BlockWalk(const BlockWalk &) = delete;
    BlockWalk &operator=(const BlockWalk &) = delete;

    // The next points, valid until the next call. A file that cannot be read any more ends the walk early;
    // is_unchanged (support/file_bytes.h) reports that.
    PointBlock next()
    {
        if (room_ != nullptr) {
            return next_in_file();
        }
        return {wform_.x, wform_.val, static_cast<std::size_t>(std::exchange(left_, 0))};
    }

    struct Room; // bytes and columns of a walk through a file

  private:
    PointBlock next_in_file();

    const Wform &wform_;
    Room *room_;        // null where the points are in memory
    std::int64_t left_; // points not yet handed out
};

// Whether points could not be read from the file again: a walk has ended early.
bool points_are_lost(const Wform &wform);

// The first point of a waveform that has one.
PT first_point(const Wform &wform);

// Walks both waveforms to the end of the shorter one: visit(ref, cmp, n) gets the next n points of each.
template <typename Visit> void walk_blocks(const Wform &ref, const Wform &cmp, Visit visit)
{
    BlockWalk ref_walk(ref);
    BlockWalk cmp_walk(cmp);
    PointBlock r = ref_walk.next();
    PointBlock c = cmp_walk.next();
    while (r.count != 0 && c.count != 0) {
        const std::size_t n = std::min(r.count, c.count);
        visit(r, c, n);
        r = n < r.count ? PointBlock{r.x + n, r.val + n, r.count - n} : ref_walk.next();
        c = n < c.count ? PointBlock{c.x + n, c.val + n, c.count - n} : cmp_walk.next();
    }
}

#endif
