// SPDX-License-Identifier: MIT
// Which column of a view a value of x falls into.
#ifndef TRESK_REPORT_COLUMNS_H
#define TRESK_REPORT_COLUMNS_H

#include "report/reduce.h"

#include <cstdint>

namespace report
{

// The whole of the x that a figure shows.
struct View {
    double low = 0.0;
    double high = 1.0; // above low
    bool log = false;  // low is above 0

    // Where x is, from 0 at low to 1 at high; NaN of what a log view cannot show.
    double place(double x) const;
};

// So many columns in the whole of a view, and so many others in a part of it, which lies between two places.
// Most points lie in the column of the point before them, which costs two comparisons.
class ColumnFinder
{
  public:
    // Columns of the part: one for each point.
    static constexpr std::int64_t kOneEach = 0;

    struct Part {
        double from;
        double to;
        std::int64_t columns;
    };

    ColumnFinder(const View &view, std::int64_t columns, const Part &part);

    // The same number for all points of a column, other numbers for its neighbours. Columns of the view have
    // numbers from 0 on, but behind the part: a column that it divides is two. kNoColumn of an x that has no
    // place.
    std::int64_t find(double x)
    {
        if (x >= from_ && x < to_) {
            column_ += each_;
        } else {
            enter(x);
        }
        return column_;
    }

  private:
    void enter(double x);
    void enter_part(double place);
    double value(double place) const;

    View view_;
    double begin_; // of the view, as its logarithm where it is log
    double span_;
    double columns_;
    Part part_;
    std::int64_t column_ = kNoColumn;
    std::int64_t each_ = 0; // 1 where each point has its own column
    double from_ = 1.0;     // edges of the column in x; none yet
    double to_ = 0.0;
};

} // namespace report

#endif
