// SPDX-License-Identifier: MIT
// Axes of the figures: from values to places in the drawing, where ticks stand, and how they are labelled.
// The script of the page computes the same, step by step.
#ifndef TRESK_REPORT_AXIS_H
#define TRESK_REPORT_AXIS_H

#include "report/figure.h"

#include <limits>
#include <string>
#include <vector>

namespace report
{

enum class Scale {
    LINEAR,
    LOG,        // low and high are above 0
    SIGNED_LOG, // linear from -unit to unit, logarithmic beyond: t(v) = v / unit up to there, then
                // sign(v) * (1 + log10(|v| / unit))
};

// place(v) = at_low + (t(v) - t(low)) / (t(high) - t(low)) * (at_high - at_low), t by the scale.
struct Axis {
    double low = 0.0;
    double high = 1.0; // above low
    double at_low = 0.0;
    double at_high = 1.0;
    Scale scale = Scale::LINEAR;
    double unit = 1.0; // of SIGNED_LOG

    double place(double value) const;
};

// The range of values that an axis has to show, within -1e300 to 1e300; values that are no finite numbers are
// passed over.
struct Range {
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();

    void add(double value);
    bool is_empty() const
    {
        return low > high;
    }
};

// With room at both ends: 6 % of the range; of a single value v |v| / 10 (of 0, 1); of none 0 to 1; of a
// range below 1e-14 of its largest value, that.
Range widened(const Range &range);

// Multiples of a round step within low and high: raw = (high - low) / want, p = 10^floor(log10(raw)),
// m = raw / p, step = p * (m < 1.5 ? 1 : m < 3.5 ? 2 : m < 7.5 ? 5 : 10); k * step for all whole k from
// l - 1e-9 - |l| * 1e-15 to h + 1e-9 + |h| * 1e-15, l = low / step, h = high / step. At most 40.
std::vector<double> linear_ticks(double low, double high, int want);

// Whole decades, every nth of them where there are more than 10: n = floor(decades / 10) + 1. If there are
// fewer than three, also their doubles and fivefolds; if that leaves fewer than three, linear ticks.
std::vector<double> log_ticks(double low, double high, int want);

// Of a signed-log axis: 0 and both signs of unit * 10^k up to high, every nth k where there are more than 4.
std::vector<double> signed_log_ticks(double high, double unit);

std::vector<double> ticks_of(const Axis &axis, int want);

struct TickLabels {
    std::vector<std::string> texts;
    std::string unit;   // with the prefix that holds for all labels: "ns", "dB", "10^-9 FOO"
    std::string offset; // "0.7500001 V" where labels are counted from there; else empty
};

// Linear ticks share one power of ten: e = 3 * floor(log10(largest |tick|) / 3 + 1e-9), and 0 where the unit
// takes no prefix and e is from -3 to 3. It is a prefix, or "10^e" where there is none for it. They have as
// many decimals as their step needs; where that are more than 6, labels are counted from the first tick. On a
// log axis each label is a with_unit() of its own.
TickLabels label_ticks(const std::vector<double> &ticks, const Unit &unit, Scale scale);

} // namespace report

#endif
