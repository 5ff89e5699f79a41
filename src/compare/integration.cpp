// SPDX-License-Identifier: MIT
#include "compare/integration.h"

#include "compare/trace_lines.h"
#include "read/point_blocks.h"
#include "support/real.h"
#include "support/settings.h"

#include <algorithm>
#include <cstring>

namespace
{

struct Grid {
    double *area;
    double dx;
    double per_dx; // 1 / dx
    int ndiv;

    // x in intervals.
    double place(double x) const
    {
        return x * per_dx;
    }

    // Number of the interval that holds a place, by truncation towards 0. What lies behind the last
    // entry shares ndiv + 1; what is out of all bounds or no number is taken as before everything else.
    int interval(double place) const
    {
        constexpr int kLowest = -1000000000;
        if (place > kLowest && place < ndiv + 1) {
            return static_cast<int>(place);
        }
        return place > 0.0 ? ndiv + 1 : kLowest;
    }

    // The area of an entry; one for all that lies outside the grid.
    double &at(int entry) const
    {
        static double outside = 0.0;
        return static_cast<unsigned>(entry) <= static_cast<unsigned>(ndiv + 1) ? area[entry] : outside;
    }
};

double trapezoid(const PT &from, const PT &to)
{
    const QuickReal height = (QuickReal(to.val) - QuickReal(from.val)) * QuickReal(0.5) + QuickReal(from.val);
    return static_cast<double>(height * (QuickReal(to.x) - QuickReal(from.x)));
}

void add(double &area, double piece)
{
    area = static_cast<double>(QuickReal(area) + QuickReal(piece));
}

QuickReal slope_between(const PT &from, const PT &to)
{
    return (QuickReal(to.val) - QuickReal(from.val)) / (QuickReal(to.x) - QuickReal(from.x));
}

// The place of a boundary and the value there, on a line through a point.
PT point_at(int boundary, double dx, const PT &from, QuickReal slope)
{
    const QuickReal x = QuickReal(boundary) * QuickReal(dx);
    const QuickReal y = QuickReal(from.val) + slope * (x - QuickReal(from.x));
    return {static_cast<double>(x), static_cast<double>(y)};
}

// Adds a segment that crosses the boundaries left + 1 to right, piece by piece. Below 0 as many of them
// are walked as the grid has intervals: what lies further left is one piece, which no entry takes.
void add_crossing(const Grid &grid, const PT &from, const PT &to, int left, int right)
{
    const QuickReal slope = slope_between(from, to);
    PT start = from;
    for (int boundary = std::max(left + 1, -grid.ndiv); boundary <= right; ++boundary) {
        const PT end = point_at(boundary, grid.dx, start, slope);
        const double piece = trapezoid(start, end);
        add(grid.at(boundary), piece);
        if (debugging(DEBUG_INTEGRATION)) {
            trace_boundary(piece, start, end, boundary, left, right);
        }
        start = end;
    }
    const double piece = trapezoid(start, to);
    add(grid.at(right + 1), piece);
    if (debugging(DEBUG_INTEGRATION)) {
        trace_right(piece, start, to, right + 1);
    }
}

using Pair = double __attribute__((vector_size(16)));

Pair load(const double *values)
{
    Pair pair;
    std::memcpy(&pair, values, sizeof pair);
    return pair;
}

// Whether both places lie in the interval from low to high.
bool both_inside(const Pair &places, const Pair &low, const Pair &high)
{
    const auto inside = (places >= low) & (places < high);
    return (inside[0] & inside[1]) != 0;
}

// Areas of the two segments that begin at the points from on, as of trapezoid.
Pair trapezoids(const double *x, const double *val)
{
    const Pair height = (load(val + 1) - load(val)) * Pair{0.5, 0.5} + load(val);
    return height * (load(x + 1) - load(x));
}

PT point_of(const PointBlock &block, std::size_t i)
{
    return {block.x[i], block.val[i]};
}

// Adds the segments to the points from i > 0 on, as far as they end in the interval (>= 0) that the point
// before them is in: four at a time, but summed up in their order. Returns the first point that is left.
std::size_t add_inside(const Grid &grid, const PointBlock &block, std::size_t i, int interval, double &area)
{
    const Pair low{static_cast<double>(interval), static_cast<double>(interval)};
    const Pair high = low + Pair{1.0, 1.0};
    const Pair per_dx{grid.per_dx, grid.per_dx};
    double sum = area;
    for (; kRealIsPlain && i + 4 <= block.count; i += 4) {
        if (!both_inside(load(block.x + i) * per_dx, low, high) ||
            !both_inside(load(block.x + i + 2) * per_dx, low, high)) {
            break;
        }
        const Pair first = trapezoids(block.x + i - 1, block.val + i - 1);
        const Pair second = trapezoids(block.x + i + 1, block.val + i + 1);
        sum += first[0];
        sum += first[1];
        sum += second[0];
        sum += second[1];
    }
    for (; i < block.count; ++i) {
        const double place = grid.place(block.x[i]);
        if (!(place >= low[0] && place < high[0])) {
            break;
        }
        add(sum, trapezoid(point_of(block, i - 1), point_of(block, i)));
    }
    area = sum;
    return i;
}

// The curve as it is followed from point to point.
struct Curve {
    PT from;     // end of the last segment
    int left;    // its interval
    double area; // of that interval; written back when it is left
};

// Adds the segment to a point. False if time went backwards, and the point was left out.
bool add_segment(const Grid &grid, Curve &curve, const PT &to)
{
    const int right = grid.interval(grid.place(to.x));
    if (right < curve.left) {
        return false;
    }
    if (right == curve.left) {
        const double piece = trapezoid(curve.from, to);
        add(curve.area, piece);
        if (debugging(DEBUG_INTEGRATION)) {
            trace_same(piece, curve.from, to, curve.left + 1);
        }
    } else {
        grid.at(curve.left + 1) = curve.area;
        add_crossing(grid, curve.from, to, curve.left, right);
        curve.area = grid.at(right + 1);
    }
    curve.from = to;
    curve.left = right;
    return true;
}

void integrate(const Wform &wform, const Grid &grid)
{
    BlockWalk walk(wform);
    PointBlock block = walk.next();
    if (block.count == 0) {
        return; // a file that cannot be read any more
    }
    Curve curve{point_of(block, 0), grid.interval(grid.place(block.x[0])), 0.0};
    curve.area = grid.at(curve.left + 1);
    for (std::size_t i = 1; block.count != 0; block = walk.next(), i = 0) {
        bool from_before = i > 0; // the last segment ends at the point before i
        while (i < block.count) {
            if (from_before && curve.left >= 0 && !debugging(DEBUG_INTEGRATION)) {
                i = add_inside(grid, block, i, curve.left, curve.area);
                curve.from = point_of(block, i - 1);
                if (i == block.count) {
                    break;
                }
            }
            from_before = add_segment(grid, curve, point_of(block, i));
            ++i;
        }
    }
    grid.at(curve.left + 1) = curve.area;
}

// The diagnostic variant: one running area, stored away at every boundary that is passed.
void integrate_running(const Wform &wform, const Grid &grid)
{
    double running = 0.0;
    BlockWalk walk(wform);
    PointBlock block = walk.next();
    if (block.count == 0) {
        return; // a file that cannot be read any more
    }
    PT from = point_of(block, 0);
    int boundary = std::max(grid.interval(grid.place(from.x)), 0) + 1; // the next one to be passed
    for (std::size_t first = 1; block.count != 0; block = walk.next(), first = 0) {
        for (std::size_t i = first; i < block.count; ++i) {
            const PT to = point_of(block, i);
            if (to.x == from.x) {
                continue;
            }
            const QuickReal slope = slope_between(from, to);
            for (; boundary <= grid.ndiv && boundary * grid.dx <= to.x; ++boundary) {
                const PT end = point_at(boundary, grid.dx, from, slope);
                add(running, trapezoid(from, end));
                grid.area[boundary - 1] = running;
                running = 0.0;
                from = end;
            }
            add(running, trapezoid(from, to));
            from = to;
        }
    }
}

} // namespace

void intline(const Wform *w, double *area, double dx, int ndiv)
{
    area[0] = 0.0;
    if (w->count == 0) {
        return;
    }
    const Grid grid{area, dx, 1.0 / dx, ndiv};
    if (debugging(DEBUG_ALT_INTEGRATION)) {
        integrate_running(*w, grid);
    } else {
        integrate(*w, grid);
    }
}
