// SPDX-License-Identifier: MIT
#include "read/point_columns.h"

#include "support/memory.h"
#include "support/slab.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace
{

constexpr std::size_t kFirstRoom = 1024; // in points
constexpr std::size_t kRangeStep = 512;  // in points: still in the nearest cache when the range is taken
constexpr std::size_t kOwnMemory = std::size_t{1}
                                   << 17; // values of a column that are handed over, not copied

double *resize(double *column, std::size_t values)
{
    return static_cast<double *>(f_realloc_large(column, values * sizeof(double)));
}

// The column as it will stay: copied side by side with others, or, where that would cost, as it is.
const double *settle(double *&column, std::size_t count)
{
    if (count >= kOwnMemory) {
        return resize(std::exchange(column, nullptr), count);
    }
    static Slab<double> slab;
    double *copy = slab.reserve(count);
    slab.commit(count);
    std::copy_n(column, count, copy);
    return copy;
}

} // namespace

void PointColumns::pass_limit()
{
    widen_ranges();
    const bool full = count_ == capacity_;
    if (full) {
        capacity_ = std::max(capacity_ * 2, kFirstRoom);
    }
    if (full || x_ == nullptr || val_ == nullptr) { // or handed over
        x_ = resize(x_, capacity_);
        val_ = resize(val_, capacity_);
    }
    limit_ = std::min(capacity_, count_ + kRangeStep);
}

void PointColumns::widen_ranges()
{
    x_range_.widen(x_ + ranged_, count_ - ranged_);
    y_range_.widen(val_ + ranged_, count_ - ranged_);
    ranged_ = count_;
}

void PointColumns::give_to(Wform &wform)
{
    widen_ranges();
    set_range(wform, x_range_, y_range_);
    set_count(wform, count_);
    if (count_ == 0) {
        return;
    }
    if (count_ != last_count_ || std::memcmp(last_x_, x_, count_ * sizeof(double)) != 0) {
        last_x_ = settle(x_, count_);
        last_count_ = count_;
    }
    wform.x = last_x_;
    wform.val = settle(val_, count_);
}
