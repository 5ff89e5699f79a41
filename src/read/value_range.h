// SPDX-License-Identifier: MIT
// The range of the coordinates of a waveform. One rule for all: a smaller value or a NaN replaces the
// minimum, a larger value the maximum; so a NaN stays as the minimum until another NaN comes, and of equal
// values (-0 and 0) the first one stays.
#ifndef TRESK_READ_VALUE_RANGE_H
#define TRESK_READ_VALUE_RANGE_H

#include "read/records.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdint>

// Of two values or vectors of values, of which the first came earlier. Not for NaN.
template <typename Values> Values lesser(Values earlier, Values later)
{
    return later < earlier ? later : earlier;
}

template <typename Values> Values greater(Values earlier, Values later)
{
    return later > earlier ? later : earlier;
}

// Range of one coordinate.
struct ValueRange {
    double lowest = 1e30; // without values, as in the record of a waveform without points
    double highest = -1e30;

    void widen(double value)
    {
        if (value < lowest || value != value) {
            lowest = value;
        }
        highest = greater(highest, value);
    }

    void widen(const double *values, std::size_t count)
    {
        double low = lowest;
        double high = highest;
        double sum = 0.0; // shows, without a branch for each value, whether there may be a NaN
        for (std::size_t i = 0; i < count; ++i) {
            low = lesser(low, values[i]);
            high = greater(high, values[i]);
            sum += values[i];
        }
        if (sum == sum) {
            lowest = low;
            highest = high;
            return;
        }
        for (std::size_t i = 0; i < count; ++i) {
            widen(values[i]);
        }
    }
};

// The count of points, as it is and as it is printed.
inline void set_count(Wform &wform, std::uint64_t count)
{
    wform.count = static_cast<std::int64_t>(count);
    wform.numpts = static_cast<int>(std::min<std::uint64_t>(count, INT_MAX));
}

inline void set_range(Wform &wform, const ValueRange &x, const ValueRange &y)
{
    wform.xmin = x.lowest;
    wform.xmax = x.highest;
    wform.ymin = y.lowest;
    wform.ymax = y.highest;
}

#endif
