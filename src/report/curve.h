// SPDX-License-Identifier: MIT
// The points of a waveform for a figure: all of them, or what draws the same picture.
#ifndef TRESK_REPORT_CURVE_H
#define TRESK_REPORT_CURVE_H

#include "read/records.h"
#include "report/axis.h"
#include "report/figure.h"

#include <cstdint>

namespace report
{

// The finite x of a waveform.
Range x_range(const Wform &wform);

// How much of a waveform is kept.
struct Detail {
    std::int64_t columns = 0; // of the whole view, and as many more near the worst place; 0 keeps all points
    Axis view;                // the whole view; what is near is where it places x within near_from to near_to
    double near_from = 0.0;
    double near_to = 0.0;
};

// About how many points of so many are kept.
std::int64_t expected_points(std::int64_t count, std::int64_t columns);

// Reads the points once more, in blocks. Cut, the curve has at most 20 points for each of the columns,
// whatever the order of x is.
Curve read_curve(const Wform &wform, const Detail &detail);

} // namespace report

#endif
