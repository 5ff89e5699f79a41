// SPDX-License-Identifier: MIT
// Fewer points that draw the same line: of all points in one column of a drawing, the first, lowest, highest
// and last. A line through these covers the same pixels as one through all points.
#ifndef TRESK_REPORT_REDUCE_H
#define TRESK_REPORT_REDUCE_H

#include <cmath>
#include <cstdint>
#include <utility>

namespace report
{

// Of a point without a place.
constexpr std::int64_t kNoColumn = INT64_MIN;

// Takes points in their order and passes on those that are needed: of each run of points in one column the
// first, lowest, highest and last finite one (of equal ones the first), and the first that has a coordinate
// that is no finite number, each once, in their order.
template <typename Emit> class ColumnReducer
{
  public:
    explicit ColumnReducer(Emit emit) : emit_(emit)
    {
    }

    void add(std::int64_t column, double x, double y)
    {
        if (column != column_) {
            flush();
            column_ = column;
        }
        const Point point{x, y, order_++};
        if (!std::isfinite(x) || !std::isfinite(y)) {
            if (break_.order < 0) {
                break_ = point;
            }
            return;
        }
        if (last_.order < 0) {
            first_ = lowest_ = highest_ = point;
        } else if (y < lowest_.y) {
            lowest_ = point;
        } else if (y > highest_.y) {
            highest_ = point;
        }
        last_ = point;
    }

    // Passes on what is left. Once, behind the last point.
    void flush()
    {
        if (highest_.order < lowest_.order) {
            std::swap(lowest_, highest_);
        }
        std::int64_t before = kNone;
        for (const Point *point : {&first_, &lowest_, &highest_, &last_}) { // in their order by now
            if (break_.order < point->order) {
                emit_break();
            }
            if (point->order > before) {
                emit_(point->x, point->y);
                before = point->order;
            }
        }
        emit_break();
        first_ = lowest_ = highest_ = last_ = Point{};
    }

  private:
    static constexpr std::int64_t kNone = -1;
    struct Point {
        double x = 0.0;
        double y = 0.0;
        std::int64_t order = kNone;
    };

    void emit_break()
    {
        if (break_.order >= 0) {
            emit_(break_.x, break_.y);
            break_ = Point{};
        }
    }

    Emit emit_;
    Point first_;
    Point lowest_;
    Point highest_;
    Point last_;
    Point break_;
    std::int64_t column_ = kNoColumn;
    std::int64_t order_ = 0;
};

// A part of a column that its left edge gives away: what stands just at an edge, but for rounding or for
// numbers of four bytes in the page's data, is in the same column wherever it is computed.
constexpr double kColumnEdge = 1.0 / 1024.0;

// The number of the column that a place falls into; kNoColumn of a place that is no finite number.
inline std::int64_t column_at(double place)
{
    return std::fabs(place) < 1e15 ? static_cast<std::int64_t>(std::floor(place + kColumnEdge)) : kNoColumn;
}

} // namespace report

#endif
