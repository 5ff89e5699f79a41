// SPDX-License-Identifier: MIT
#include "report/curve.h"

#include "read/point_blocks.h"
#include "report/reduce.h"

#include <algorithm>
#include <cmath>

namespace report
{

namespace
{

// Around the worst place, as a part of the view: five of up to 1000 intervals on each side, and its own.
constexpr double kNearPart = 0.011;
constexpr std::int64_t kPointsOfColumn = 4;
constexpr std::int64_t kMostOfColumn = 5; // with one that is no number

// Calls visit(x, y, index) for each point, until it returns false.
template <typename Visit> void walk_all(const Wform &wform, Visit visit)
{
    BlockWalk walk(wform);
    std::int64_t index = 0;
    for (PointBlock block = walk.next(); block.count != 0; block = walk.next()) {
        for (std::size_t i = 0; i < block.count; ++i) {
            if (!visit(block.x[i], block.val[i], index++)) {
                return;
            }
        }
    }
}

// Columns that are narrow near the worst place: as many there as in the whole view.
std::int64_t column_of(double x, const Detail &detail)
{
    const double place = detail.view.place(x);
    const auto columns = static_cast<double>(detail.columns);
    if (place >= detail.near_from && place <= detail.near_to) {
        const double part = (place - detail.near_from) / (detail.near_to - detail.near_from);
        return column_at((2.0 + part) * columns);
    }
    const std::int64_t column = column_at(place * columns);
    // One that the near part divides is two.
    return place > detail.near_to && column != INT64_MIN ? column + 4 * detail.columns : column;
}

// Cuts by columns of x; false if x goes to and fro so often that too many points would be left.
bool cut_by_x(const Wform &wform, const Detail &detail, Curve &curve)
{
    const auto most = static_cast<std::size_t>(4 * kMostOfColumn * detail.columns);
    const auto emit = [&curve](double x, double y) {
        curve.x.push_back(x);
        curve.y.push_back(y);
    };
    ColumnReducer reducer(emit);
    walk_all(wform, [&](double x, double y, std::int64_t) {
        reducer.add(column_of(x, detail), x, y);
        return curve.x.size() <= most;
    });
    reducer.flush();
    return curve.x.size() <= most;
}

// Cuts by runs of points, whose lowest and highest stand for all of them.
void cut_by_index(const Wform &wform, std::int64_t columns, Curve &curve)
{
    const std::int64_t run = wform.count / (2 * columns) + 1;
    curve.x.clear();
    curve.y.clear();
    const auto emit = [&curve](double x, double y) {
        curve.x.push_back(x);
        curve.y.push_back(y);
    };
    ColumnReducer reducer(emit);
    walk_all(wform, [&](double x, double y, std::int64_t index) {
        reducer.add(index / run, x, y);
        return true;
    });
    reducer.flush();
}

} // namespace

Range x_range(const Wform &wform)
{
    Range range;
    if (std::isfinite(wform.xmin) && std::isfinite(wform.xmax) && wform.xmin <= wform.xmax) {
        range.add(wform.xmin);
        range.add(wform.xmax);
        return range;
    }
    walk_all(wform, [&range](double x, double, std::int64_t) {
        range.add(x);
        return true;
    });
    return range;
}

std::int64_t expected_points(std::int64_t count, std::int64_t columns)
{
    const std::int64_t most = kPointsOfColumn * columns;
    const auto near = static_cast<std::int64_t>(kNearPart * static_cast<double>(count));
    return columns == 0 ? count : std::min(count, most + std::min(near, most));
}

Curve read_curve(const Wform &wform, const Detail &detail)
{
    Curve curve;
    curve.points = wform.count;
    if (detail.columns > 0 && wform.count > kPointsOfColumn * detail.columns) {
        if (!cut_by_x(wform, detail, curve)) {
            cut_by_index(wform, detail.columns, curve);
        }
        return curve;
    }
    curve.x.reserve(static_cast<std::size_t>(wform.count));
    curve.y.reserve(static_cast<std::size_t>(wform.count));
    walk_all(wform, [&curve](double x, double y, std::int64_t) {
        curve.x.push_back(x);
        curve.y.push_back(y);
        return true;
    });
    return curve;
}

} // namespace report
