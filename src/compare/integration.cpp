// SPDX-License-Identifier: MIT
#include "compare/integration.h"

#include "compare/trace_lines.h"
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

double trapezoid(double x0, double y0, double x1, double y1)
{
    return (x1 - x0) * (y0 + (y1 - y0) * 0.5);
}

// Adds a segment that crosses the boundaries left + 1 to right, piece by piece. Below 0 as many of them
// are walked as the grid has intervals: what lies further left is one piece, which no entry takes.
void add_crossing(const Grid &grid, const PT &from, const PT &to, int left, int right)
{
    const double slope = (to.val - from.val) / (to.x - from.x);
    PT start = from;
    for (int boundary = std::max(left + 1, -grid.ndiv); boundary <= right; ++boundary) {
        const double x = boundary * grid.dx;
        const double y = (x - start.x) * slope + start.val;
        const double piece = trapezoid(start.x, start.val, x, y);
        grid.at(boundary) += piece;
        if (debugging(DEBUG_INTEGRATION)) {
            trace_boundary(piece, start, {x, y, nullptr}, boundary, left, right);
        }
        start.x = x;
        start.val = y;
    }
    const double piece = trapezoid(start.x, start.val, to.x, to.val);
    grid.at(right + 1) += piece;
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
            const double piece = trapezoid(from.x, from.val, to->x, to->val);
            area += piece;
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
        const double slope = (to->val - from.val) / (to->x - from.x);
        for (; boundary <= grid.ndiv && boundary * grid.dx <= to->x; ++boundary) {
            const double x = boundary * grid.dx;
            const double y = (x - from.x) * slope + from.val;
            grid.area[boundary - 1] = running + trapezoid(from.x, from.val, x, y);
            running = 0.0;
            from.x = x;
            from.val = y;
        }
        running += trapezoid(from.x, from.val, to->x, to->val);
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
