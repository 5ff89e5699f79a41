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

constexpr std::int64_t kMostOfColumn = 5;  // first, lowest, highest, last and one that is no number
constexpr std::int64_t kNearShare = 4;     // columns of the whole view for each one near the worst place
constexpr std::int64_t kMostRead = 100000; // points kept at first, of which the needed ones are chosen

struct Columns {
    std::int64_t view;
    std::int64_t near;
};

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

template <typename Visit> void walk_all(const Curve &curve, Visit visit)
{
    for (std::size_t i = 0; i < curve.x.size(); ++i) {
        if (!visit(curve.x[i], curve.y[i], static_cast<std::int64_t>(i))) {
            return;
        }
    }
}

// Cuts by a rule for the column of a point, as long as there are no more points than that.
template <typename Source, typename Rule> Curve cut(const Source &source, Rule rule, std::int64_t most)
{
    Curve curve;
    ColumnReducer reducer([&curve](double x, double y) {
        curve.x.push_back(x);
        curve.y.push_back(y);
    });
    walk_all(source, [&](double x, double y, std::int64_t index) {
        reducer.add(rule(x, index), x, y);
        return static_cast<std::int64_t>(curve.x.size()) <= most;
    });
    reducer.flush();
    return curve;
}

template <typename Source>
Curve cut_by_x(const Source &source, const Detail &detail, const Columns &columns, std::int64_t most)
{
    ColumnFinder finder(detail.view, columns.view, {detail.near_from, detail.near_to, columns.near});
    return cut(
        source, [&finder](double x, std::int64_t) { return finder.find(x); }, most);
}

// By runs of points, whose lowest and highest stand for all of them.
Curve cut_by_index(const Wform &wform, std::int64_t most)
{
    const std::int64_t run = kMostOfColumn * wform.count / most + 1;
    return cut(
        wform, [run](double, std::int64_t index) { return index / run; }, 2 * most);
}

std::int64_t size_of(const Curve &curve)
{
    return static_cast<std::int64_t>(curve.x.size());
}

std::int64_t count_near(const Curve &curve, const Detail &detail)
{
    return std::count_if(curve.x.begin(), curve.x.end(), [&detail](double x) {
        const double place = detail.view.place(x);
        return place >= detail.near_from && place < detail.near_to;
    });
}

// Leaves fewer columns until there is room for the points.
void fit(Curve &curve, const Detail &detail, std::int64_t view)
{
    const bool all_near = count_near(curve, detail) <= detail.most_points / 3;
    while (size_of(curve) > detail.most_points && view > kFewestColumns) {
        const std::int64_t fitting = view * detail.most_points / size_of(curve);
        view = std::max(kFewestColumns, std::min(fitting, view * 9 / 10));
        curve =
            cut_by_x(curve, detail, {view, all_near ? ColumnFinder::kOneEach : view / kNearShare}, kMostRead);
    }
}

Curve read_whole(const Wform &wform)
{
    Curve curve;
    curve.x.reserve(static_cast<std::size_t>(wform.count));
    curve.y.reserve(static_cast<std::size_t>(wform.count));
    walk_all(wform, [&curve](double x, double y, std::int64_t) {
        curve.x.push_back(x);
        curve.y.push_back(y);
        return true;
    });
    return curve;
}

Curve read_cut(const Wform &wform, const Detail &detail)
{
    constexpr std::int64_t kFewest = kMostOfColumn * (kFewestColumns + kFewestColumns / kNearShare) * 2;
    const std::int64_t view = std::clamp(detail.most_points, kFewestColumns, kMostColumns);
    Curve curve = cut_by_x(wform, detail, {view, ColumnFinder::kOneEach}, kMostRead);
    if (size_of(curve) > kMostRead) {
        curve = cut_by_x(wform, detail, {view, view}, kMostRead);
    }
    const bool is_complete = size_of(curve) <= kMostRead;
    if (is_complete) {
        fit(curve, detail, view);
    }
    const std::int64_t most = std::max(detail.most_points, kFewest);
    return is_complete && size_of(curve) <= most ? curve : cut_by_index(wform, most / 2);
}

// Whether no reduction by columns of x helps to draw a line.
bool goes_to_and_fro(const Curve &curve)
{
    constexpr int kMostTurns = 20;
    int turns = 0;
    for (std::size_t i = 2; i < curve.x.size() && turns <= kMostTurns; ++i) {
        turns += (curve.x[i] < curve.x[i - 1]) != (curve.x[i - 1] < curve.x[i - 2]) ? 1 : 0;
    }
    return turns > kMostTurns;
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

Curve read_curve(const Wform &wform, const Detail &detail)
{
    constexpr std::int64_t kEasilyDrawn = 20000;
    Curve curve;
    if (wform.count <= detail.most_points) {
        curve = read_whole(wform);
        if (wform.count > kEasilyDrawn && goes_to_and_fro(curve)) {
            curve = cut_by_index(wform, kEasilyDrawn);
        }
    } else {
        curve = read_cut(wform, detail);
    }
    curve.points = wform.count;
    return curve;
}

} // namespace report
