// SPDX-License-Identifier: MIT
#include "report/columns.h"

#include <algorithm>
#include <cmath>

namespace report
{

namespace
{

// Numbers of the columns in the part and of those behind it.
constexpr std::int64_t kFirstOfPart = std::int64_t{1} << 40U;
constexpr std::int64_t kBehindPart = std::int64_t{1} << 41U;

double transformed(double x, bool log)
{
    return log ? std::log(x) : x;
}

} // namespace

double View::place(double x) const
{
    const double begin = transformed(low, log);
    return (transformed(x, log) - begin) / (transformed(high, log) - begin);
}

ColumnFinder::ColumnFinder(const View &view, std::int64_t columns, const Part &part)
    : view_(view), begin_(transformed(view.low, view.log)), span_(transformed(view.high, view.log) - begin_),
      columns_(static_cast<double>(columns)), part_(part)
{
}

double ColumnFinder::value(double place) const
{
    const double there = begin_ + place * span_;
    return view_.log ? std::exp(there) : there;
}

// Rounding may put a point at an edge into either column: both draw the same.
void ColumnFinder::enter(double x)
{
    const double place = (transformed(x, view_.log) - begin_) / span_;
    each_ = 0;
    if (place >= part_.from && place < part_.to) {
        enter_part(place);
        return;
    }
    column_ = column_at(place * columns_);
    if (column_ == kNoColumn) {
        to_ = from_; // nothing lies in it
        return;
    }
    double from = static_cast<double>(column_) / columns_;
    double to = static_cast<double>(column_ + 1) / columns_;
    if (place >= part_.to) {
        from = std::max(from, part_.to);
        column_ += kBehindPart;
    } else if (place < part_.from) {
        to = std::min(to, part_.from);
    }
    from_ = value(from);
    to_ = value(to);
}

void ColumnFinder::enter_part(double place)
{
    const bool one_each = part_.columns == kOneEach;
    const double width =
        one_each ? part_.to - part_.from : (part_.to - part_.from) / static_cast<double>(part_.columns);
    const std::int64_t column = column_at((place - part_.from) / width);
    column_ = kFirstOfPart + column;
    each_ = one_each ? 1 : 0;
    from_ = value(part_.from + static_cast<double>(column) * width);
    to_ = value(std::min(part_.from + static_cast<double>(column + 1) * width, part_.to));
}

} // namespace report
