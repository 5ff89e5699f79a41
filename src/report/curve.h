// SPDX-License-Identifier: MIT
// The points of a waveform for a figure: all of them, or what draws the same picture.
#ifndef TRESK_REPORT_CURVE_H
#define TRESK_REPORT_CURVE_H

#include "read/records.h"
#include "report/axis.h"
#include "report/columns.h"
#include "report/figure.h"

#include <cstdint>

namespace report
{

// The finite x of a waveform.
Range x_range(const Wform &wform);

// How much of a waveform is kept. What is near the worst place is where the view places x within near_from to
// near_to.
struct Detail {
    std::int64_t most_points = 0;
    View view;
    double near_from = 0.0;
    double near_to = 0.0;
};

// Columns of the whole view at most, and at least: below that a curve would look coarse on the page.
constexpr std::int64_t kMostColumns = 4000;
constexpr std::int64_t kFewestColumns = 200;

// Reads the points once more, in blocks, at most three times. A waveform of more points than that is cut to
// the first, lowest, highest and last of as many columns of the view as there is room for, and all near the
// worst place where these take no more than a third of the room, else those of a quarter as many columns
// there. With the fewest columns it may have more points than that, but 2500 at most. Where x goes to and fro
// in many points, these are runs of points instead of columns.
Curve read_curve(const Wform &wform, const Detail &detail);

} // namespace report

#endif
