// SPDX-License-Identifier: MIT
#include "report/axis.h"

#include "report/units.h"

#include <algorithm>
#include <cmath>

namespace report
{

namespace
{

constexpr double kFarthest = 1e300;    // sums and differences of two such values are finite
constexpr double kNarrowest = 1e-14;   // range of an axis for its values; less has no ticks of its own
constexpr std::size_t kMostTicks = 40; // in case of rounding at the edge of what a double can hold
constexpr double kSlack = 1e-9;        // of a step, for the tick that rounding puts behind the end
constexpr double kRounding = 1e-15;    // of the number of steps, that dividing may have cost
constexpr double kMostDecades = 10.0;  // with a label each
constexpr double kMostSignedDecades = 4.0;
constexpr int kMostDecimals = 6;

double transformed(double value, const Axis &axis)
{
    if (axis.scale == Scale::LOG) {
        return std::log10(value);
    }
    const double magnitude = std::fabs(value) / axis.unit;
    if (axis.scale == Scale::LINEAR || magnitude <= 1.0) {
        return axis.scale == Scale::LINEAR ? value : value / axis.unit;
    }
    return std::copysign(1.0 + std::log10(magnitude), value);
}

// Decades from low to high as powers, every nth.
std::vector<double> decades(double low, double high, double most)
{
    std::vector<double> ticks;
    const double first = std::ceil(std::log10(low) - kSlack);
    const double last = std::floor(std::log10(high) + kSlack);
    const double stride = std::floor((last - first) / most) + 1.0;
    for (double power = first; power <= last && ticks.size() < kMostTicks; power += stride) {
        ticks.push_back(std::pow(10.0, power));
    }
    return ticks;
}

double largest_of(const std::vector<double> &ticks)
{
    double largest = 0.0;
    for (const double tick : ticks) {
        largest = std::max(largest, std::fabs(tick));
    }
    return largest;
}

// The power of ten, a multiple of 3, that all labels leave to the unit.
int common_power(double largest, const Unit &unit)
{
    if (largest == 0.0) {
        return 0;
    }
    const int power = 3 * static_cast<int>(std::floor(std::log10(largest) / 3.0 + kSlack));
    return !unit.takes_prefix && power >= -3 && power <= 3 ? 0 : power;
}

std::string scaled_unit(int power, const Unit &unit)
{
    if (unit.takes_prefix && has_prefix(power)) {
        return si_prefix(power) + unit.text;
    }
    const std::string factor = power == 0 ? "" : "10^" + std::to_string(power);
    return factor.empty() || unit.text.empty() ? factor + unit.text : factor + " " + unit.text;
}

int decimals_of(double step, int power)
{
    const double scaled = step / std::pow(10.0, power);
    return scaled > 0.0 ? std::max(0, -static_cast<int>(std::floor(std::log10(scaled) + kSlack))) : 0;
}

TickLabels label_linear(const std::vector<double> &ticks, const Unit &unit)
{
    TickLabels labels;
    const double step = ticks.size() > 1 ? ticks[1] - ticks[0] : largest_of(ticks);
    double from = 0.0;
    double largest = largest_of(ticks);
    int power = common_power(largest, unit);
    if (decimals_of(step, power) > kMostDecimals) {
        from = ticks.front();
        largest = ticks.back() - from;
        power = common_power(largest, unit);
        labels.offset = with_unit(from, unit, 15);
    }
    const int decimals = std::min(decimals_of(step, power), kMostDecimals);
    for (const double tick : ticks) {
        labels.texts.push_back(fixed((tick - from) / std::pow(10.0, power), decimals));
    }
    labels.unit = scaled_unit(power, unit);
    return labels;
}

} // namespace

double Axis::place(double value) const
{
    const double begin = transformed(low, *this);
    return at_low +
           (transformed(value, *this) - begin) / (transformed(high, *this) - begin) * (at_high - at_low);
}

void Range::add(double value)
{
    if (std::isfinite(value)) {
        low = std::min(low, std::max(value, -kFarthest));
        high = std::max(high, std::min(value, kFarthest));
    }
}

Range widened(const Range &range)
{
    if (range.is_empty()) {
        return {0.0, 1.0};
    }
    const double largest = std::max(std::fabs(range.low), std::fabs(range.high));
    const double width = range.high - range.low;
    double room = 0.06 * width;
    if (width == 0.0) {
        room = largest > 0.0 ? largest / 10.0 : 1.0;
    } else if (width < kNarrowest * largest) {
        room = kNarrowest * largest;
    }
    return {range.low - room, range.high + room};
}

std::vector<double> linear_ticks(double low, double high, int want)
{
    std::vector<double> ticks;
    const double raw = (high - low) / want;
    const double power = std::pow(10.0, std::floor(std::log10(raw)));
    const double mantissa = raw / power;
    const double step = power * (mantissa < 1.5 ? 1.0 : mantissa < 3.5 ? 2.0 : mantissa < 7.5 ? 5.0 : 10.0);
    const double first = std::ceil(low / step - kSlack - kRounding * std::fabs(low / step));
    const double last = high / step + kSlack + kRounding * std::fabs(high / step);
    for (double k = first; k <= last && ticks.size() < kMostTicks; ++k) {
        ticks.push_back(k * step + 0.0); // no -0
    }
    return ticks;
}

std::vector<double> log_ticks(double low, double high, int want)
{
    std::vector<double> ticks = decades(low, high, kMostDecades);
    if (ticks.size() >= 3) {
        return ticks;
    }
    ticks.clear();
    for (double power = std::floor(std::log10(low) + kSlack); ticks.size() < kMostTicks; ++power) {
        for (const double factor : {1.0, 2.0, 5.0}) {
            const double tick = factor * std::pow(10.0, power);
            if (tick >= low * (1.0 - kSlack) && tick <= high * (1.0 + kSlack)) {
                ticks.push_back(tick);
            }
        }
        if (std::pow(10.0, power) > high) {
            break;
        }
    }
    return ticks.size() >= 3 ? ticks : linear_ticks(low, high, want);
}

std::vector<double> signed_log_ticks(double high, double unit)
{
    std::vector<double> ticks;
    for (const double tick : decades(unit, high, kMostSignedDecades)) {
        ticks.push_back(tick);
        ticks.push_back(-tick);
    }
    ticks.push_back(0.0);
    std::sort(ticks.begin(), ticks.end());
    return ticks;
}

std::vector<double> ticks_of(const Axis &axis, int want)
{
    switch (axis.scale) {
    case Scale::LOG:
        return log_ticks(axis.low, axis.high, want);
    case Scale::SIGNED_LOG:
        return signed_log_ticks(axis.high, axis.unit);
    case Scale::LINEAR:
        break;
    }
    return linear_ticks(axis.low, axis.high, want);
}

TickLabels label_ticks(const std::vector<double> &ticks, const Unit &unit, Scale scale)
{
    if (ticks.empty()) {
        return {};
    }
    if (scale == Scale::LINEAR) {
        return label_linear(ticks, unit);
    }
    TickLabels labels;
    for (const double tick : ticks) {
        labels.texts.push_back(with_unit(tick, unit));
    }
    return labels;
}

} // namespace report
