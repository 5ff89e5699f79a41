// SPDX-License-Identifier: MIT
// Fewer points that draw the same line: of all points in one column of a drawing, the first, lowest, highest
// and last. A line through these covers the same pixels as one through all points.
#ifndef TRESK_REPORT_REDUCE_H
#define TRESK_REPORT_REDUCE_H

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

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
            set_once(BREAK, point);
            return;
        }
        set_once(FIRST, point);
        if (!is_set_[LOWEST] || y < points_[LOWEST].y) {
            set(LOWEST, point);
        }
        if (!is_set_[HIGHEST] || y > points_[HIGHEST].y) {
            set(HIGHEST, point);
        }
        set(LAST, point);
    }

    // Passes on what is left. Once, behind the last point.
    void flush()
    {
        std::int64_t last = -1;
        for (std::size_t i = 0; i < kRoles; ++i) {
            const Point *next = nullptr;
            for (std::size_t role = 0; role < kRoles; ++role) {
                const Point &point = points_[role];
                if (is_set_[role] && point.order > last && (next == nullptr || point.order < next->order)) {
                    next = &point;
                }
            }
            if (next == nullptr) {
                break;
            }
            emit_(next->x, next->y);
            last = next->order;
        }
        is_set_ = {};
    }

  private:
    enum Role : std::size_t { FIRST, LOWEST, HIGHEST, LAST, BREAK, kRoles };
    struct Point {
        double x;
        double y;
        std::int64_t order;
    };

    void set(Role role, const Point &point)
    {
        points_[role] = point;
        is_set_[role] = true;
    }
    void set_once(Role role, const Point &point)
    {
        if (!is_set_[role]) {
            set(role, point);
        }
    }

    Emit emit_;
    std::array<Point, kRoles> points_ = {};
    std::array<bool, kRoles> is_set_ = {};
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
