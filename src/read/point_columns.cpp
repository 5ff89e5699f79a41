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
constexpr std::size_t kOwnMemory = std::size_t{1}
                                   << 17; // values: a column of so many is handed over, not copied

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

void PointColumns::clear()
{
    count_ = 0;
    x_range_ = y_range_ = ValueRange{};
}

void PointColumns::append(const double *values, std::size_t points)
{
    if (capacity_ - count_ < points || x_ == nullptr || val_ == nullptr) {
        grow(points);
    }
    double *x = x_ + count_;
    double *val = val_ + count_;
    for (std::size_t i = 0; i < points; ++i) {
        x[i] = values[2 * i];
        val[i] = values[2 * i + 1];
    }
    x_range_.widen(x, points);
    y_range_.widen(val, points);
    count_ += points;
}

// Also makes columns again that were handed over.
void PointColumns::grow(std::size_t points)
{
    if (capacity_ - count_ < points) {
        capacity_ = std::max({capacity_ * 2, count_ + points, kFirstRoom});
    }
    x_ = resize(x_, capacity_);
    val_ = resize(val_, capacity_);
}

void PointColumns::give_to(Wform &wform)
{
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
