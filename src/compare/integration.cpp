// SPDX-License-Identifier: MIT
#include "compare/integration.h"

#include "compare/trace_lines.h"
#include "support/real.h"
#include "support/settings.h"

#include <algorithm>

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
    return {static_cast<double>(x), static_cast<double>(y), nullptr};
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

void integrate(const PT *points, const Grid &grid)
{
    const bool trace = debugging(DEBUG_INTEGRATION);
    PT from = *points;
    int left = grid.interval(grid.place(from.x));
    double area = grid.at(left + 1); // of the current interval; written back when it is left
    for (const PT *to = points->next; to != nullptr; to = to->next) {
        const double place = grid.place(to->x);
        // Mostly that of the point before, which is seen without a conversion.
        const int right = place >= left && place < left + 1.0 && left > 0 ? left : grid.interval(place);
        if (right < left) {
            continue; // time went backwards
        }
        if (right == left) {
            const double piece = trapezoid(from, *to);
            add(area, piece);
            if (trace) {
                trace_same(piece, from, *to, left + 1);
            }
        } else {
            grid.at(left + 1) = area;
            add_crossing(grid, from, *to, left, right);
            area = grid.at(right + 1);
        }
        from.x = to->x;
        from.val = to->val;
        left = right;
    }
    grid.at(left + 1) = area;
}

// The diagnostic variant: one running area, stored away at every boundary that is passed.
void integrate_running(const PT *points, const Grid &grid)
{
    double running = 0.0;
    PT from = *points;
    int boundary = std::max(grid.interval(grid.place(from.x)), 0) + 1; // the next one to be passed
    for (const PT *to = points->next; to != nullptr; to = to->next) {
        if (to->x == from.x) {
            continue;
        }
        const QuickReal slope = slope_between(from, *to);
        for (; boundary <= grid.ndiv && boundary * grid.dx <= to->x; ++boundary) {
            const PT end = point_at(boundary, grid.dx, from, slope);
            add(running, trapezoid(from, end));
            grid.area[boundary - 1] = running;
            running = 0.0;
            from = end;
        }
        add(running, trapezoid(from, *to));
        from = *to;
    }
}

} // namespace

void intline(const Wform *w, double *area, double dx, int ndiv)
{
    area[0] = 0.0;
    if (w->pts == nullptr) {
        return;
    }
    const Grid grid{area, dx, 1.0 / dx, ndiv};
    if (debugging(DEBUG_ALT_INTEGRATION)) {
        integrate_running(w->pts, grid);
    } else {
        integrate(w->pts, grid);
    }
}
