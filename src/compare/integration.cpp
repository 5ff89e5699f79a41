// SPDX-License-Identifier: MIT
#include "compare/integration.h"

#include "compare/trace_lines.h"
#include "read/point_blocks.h"
#include "support/double_pair.h"
#include "support/real.h"
#include "support/settings.h"
#include "support/wide_vectors.h"

#include <algorithm>
#include <cstdint>
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

PT point_of(const PointBlock &block, std::size_t i)
{
    return {block.x[i], block.val[i]};
}

// The curve as it is followed from point to point.
struct Curve {
    PT from;     // end of the last segment
    int left;    // its interval
    double area; // of that interval; written back when it is left
};

// Segments that are looked at together: as many as a walk through a file hands out points.
constexpr std::size_t kSegments = 512;

using Four = double __attribute__((vector_size(32))); // two registers, or a wide one
using FourInts = std::int32_t __attribute__((vector_size(16)));
using FourFloats = float __attribute__((vector_size(16)));
constexpr std::size_t kFour = 4;
constexpr std::size_t kWordBits = 64;
constexpr std::size_t kManySegments = 8; // at least, or it does not pay

struct Segments {
    double area[kSegments + kFour];
    int interval[1 + kSegments + kFour]; // that the first one begins in, then those that they end in
    // A bit each: whether it ends in another interval than it begins in.
    std::uint64_t crossing[kSegments / kWordBits];
};

template <typename Vector, typename Value> void load(Vector &vector, const Value *values)
{
    std::memcpy(&vector, values, sizeof vector);
}

// A bit for each that is not 0.
std::uint64_t bits_of(const FourInts &values)
{
    const FourInts found = values != 0;
#ifdef __SSE__
    return static_cast<unsigned>(__builtin_ia32_movmskps(reinterpret_cast<FourFloats>(found)));
#else
    const FourInts bits = found & FourInts{1, 2, 4, 8};
    return static_cast<unsigned>(bits[0] | bits[1] | bits[2] | bits[3]);
#endif
}

// Areas of the count segments that end at the points from i > 0 on, and the intervals that they end in: -1
// for what lies below -1 and what is no number, ndiv + 1 for all that lies behind the grid.
void cut_segments(const Grid &grid, const PointBlock &block, std::size_t i, std::size_t count,
                  Segments &segments)
{
    const double *x = block.x + i;
    const double *val = block.val + i;
    int *interval = segments.interval + 1;
    const double last = grid.ndiv + 1;
    const Four before = Four{} - 1.0;
    const Four behind = Four{} + last;
    std::size_t k = 0;
    for (; k + kFour <= count; k += kFour) {
        Four from_x;
        Four from_val;
        Four to_x;
        Four to_val;
        load(from_x, x + k - 1);
        load(from_val, val + k - 1);
        load(to_x, x + k);
        load(to_val, val + k);
        const Four areas = ((to_val - from_val) * 0.5 + from_val) * (to_x - from_x);
        const Four places = to_x * grid.per_dx;
        const Four low = places > before ? places : before;
        const Four bounded = low < behind ? low : behind;
        const auto intervals = __builtin_convertvector(bounded, FourInts);
        std::memcpy(segments.area + k, &areas, sizeof areas);
        std::memcpy(interval + k, &intervals, sizeof intervals);
    }
    for (; k < count; ++k) {
        const double place = grid.place(x[k]);
        const double low = place > -1.0 ? place : -1.0;
        interval[k] = static_cast<int>(low < last ? low : last);
        segments.area[k] = trapezoid(point_of(block, i + k - 1), point_of(block, i + k));
    }
    std::fill_n(segments.area + count, kFour, 0.0);
    std::fill_n(interval + count, kFour, interval[count - 1]);
}

// Finds the segments that cross a boundary. False if one goes back or lies before all of them.
bool find_crossings(Segments &segments, std::size_t count)
{
    FourInts signs{};
    for (std::size_t first = 0; first < count; first += kWordBits) {
        const std::size_t end = std::min(count, first + kWordBits);
        std::uint64_t crossing = 0;
        for (std::size_t k = first; k < end; k += kFour) {
            FourInts left;
            FourInts right;
            load(left, segments.interval + k);
            load(right, segments.interval + k + 1);
            const FourInts steps = right - left;
            signs |= steps;
            crossing |= bits_of(steps) << k % kWordBits;
        }
        segments.crossing[first / kWordBits] = crossing;
    }
    return (signs[0] | signs[1] | signs[2] | signs[3]) >= 0;
}

// Adds count areas to a sum in their order; four can be read from each on.
double sum_up(double sum, const double *area, std::size_t count)
{
    for (; count >= kFour; count -= kFour, area += kFour) {
        sum += area[0];
        sum += area[1];
        sum += area[2];
        sum += area[3];
    }
    // Without a branch on how many are left: -0 changes no sum.
    constexpr DoublePair kNothing = {-0.0, -0.0};
    static constexpr std::int64_t kTaken[] = {-1, -1, -1, -1, 0, 0, 0, 0};
    PairMask taken;
    load(taken, kTaken + 4 - count);
    const DoublePair first = choose(taken, load_pair(area), kNothing);
    load(taken, kTaken + 6 - count);
    const DoublePair second = choose(taken, load_pair(area + 2), kNothing);
    sum += first[0];
    sum += first[1];
    sum += second[0];
    return sum;
}

// Lets a curve cross boundaries to a point in interval right, which the caller makes its end.
void cross(const Grid &grid, Curve &curve, const PT &to, int right)
{
    // The most frequent case, with nothing to be looked up.
    if (right == curve.left + 1 && curve.left >= 0 && !debugging(DEBUG_INTEGRATION)) {
        const PT boundary = point_at(right, grid.dx, curve.from, slope_between(curve.from, to));
        add(curve.area, trapezoid(curve.from, boundary));
        grid.at(right) = curve.area;
        curve.area = grid.at(right + 1);
        add(curve.area, trapezoid(boundary, to));
    } else {
        grid.at(curve.left + 1) = curve.area;
        add_crossing(grid, curve.from, to, curve.left, right);
        curve.area = grid.at(right + 1);
    }
    curve.left = right;
}

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
        cross(grid, curve, to, right);
    }
    curve.from = to;
    return true;
}

// Adds the count segments to the points from i > 0 on, which are looked at together. False, and nothing is
// added, if one of them goes back or lies before the grid.
bool add_segments(const Grid &grid, const PointBlock &block, std::size_t i, std::size_t count, Curve &result)
{
    static Segments segments;
    segments.interval[0] = result.left;
    cut_segments(grid, block, i, count, segments);
    if (!find_crossings(segments, count)) {
        return false;
    }
    Curve curve = result;
    std::size_t begin = 0;
    for (std::size_t first = 0; first < count; first += kWordBits) {
        for (std::uint64_t crossing = segments.crossing[first / kWordBits]; crossing != 0;
             crossing &= crossing - 1) {
            const std::size_t end = first + static_cast<std::size_t>(__builtin_ctzll(crossing));
            curve.area = sum_up(curve.area, segments.area + begin, end - begin);
            curve.from = point_of(block, i + end - 1);
            cross(grid, curve, point_of(block, i + end), segments.interval[1 + end]);
            begin = end + 1;
        }
    }
    curve.area = sum_up(curve.area, segments.area + begin, count - begin);
    curve.from = point_of(block, i + count - 1);
    result = curve;
    return true;
}

void integrate(const Wform &wform, const Grid &grid)
{
    BlockWalk walk(wform);
    PointBlock block = walk.next();
    if (block.count == 0) {
        return; // a file that cannot be read any more
    }
    const bool one_by_one = !kRealIsPlain || debugging(DEBUG_INTEGRATION);
    Curve curve{point_of(block, 0), grid.interval(grid.place(block.x[0])), 0.0};
    curve.area = grid.at(curve.left + 1);
    for (std::size_t i = 1; block.count != 0; block = walk.next(), i = 0) {
        bool from_before = i > 0; // the last segment ends at the point before i
        while (i < block.count) {
            const std::size_t count = from_before ? std::min(block.count - i, kSegments) : 1;
            bool added = false;
            if (count >= kManySegments && curve.left >= 0 && !one_by_one) {
                do_fast(count, [&] { added = add_segments(grid, block, i, count, curve); });
            }
            const std::size_t end = i + count;
            for (; i < end && !added; ++i) {
                from_before = add_segment(grid, curve, point_of(block, i));
            }
            i = end;
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
