// SPDX-License-Identifier: MIT
#include "report/plane_places.h"

#include <algorithm>
#include <cmath>

namespace report
{

namespace
{

constexpr double kMostDecades = 9.0;

// The powers of ten that the signed-log axes reach to and are linear up to.
struct Decades {
    double high = 1.0;
    double unit = 1e-3;
};

Decades decades_of(const Figure &figure)
{
    Range powers;
    for (const PlaneRoot &root : figure.roots) {
        for (const double value :
             {root.golden_real, root.golden_imaginary, root.regression_real, root.regression_imaginary}) {
            if (value != 0.0) { // of a coordinate that is no number neither
                powers.add(std::log10(std::fabs(value)));
            }
        }
    }
    if (powers.is_empty()) {
        return {};
    }
    const double high = std::ceil(std::min(powers.high, 300.0) + 0.02);
    const double low = std::max(std::floor(powers.low), high - kMostDecades);
    return {std::pow(10.0, high), std::pow(10.0, std::min(low, high - 1.0))};
}

} // namespace

Spot PlaneAxes::golden(const PlaneRoot &root) const
{
    return {real.place(root.golden_real), imaginary.place(root.golden_imaginary)};
}

Spot PlaneAxes::regression(const PlaneRoot &root) const
{
    return {real.place(root.regression_real), imaginary.place(root.regression_imaginary)};
}

PlaneAxes plane_axes(const Figure &figure, double left, double top, double side)
{
    const Decades decades = decades_of(figure);
    const double high = decades.high;
    return {{-high, high, left, left + side, Scale::SIGNED_LOG, decades.unit},
            {-high, high, top + side, top, Scale::SIGNED_LOG, decades.unit}};
}

} // namespace report
