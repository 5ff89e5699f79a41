// SPDX-License-Identifier: MIT
#include "compare/phase.h"

#include <cmath>

namespace
{

constexpr double kTurn = 360.0;

}

double wrap_phase(double degrees)
{
    if (!std::isfinite(degrees) || (degrees >= -180.0 && degrees <= 180.0)) {
        return degrees;
    }
    // Whole turns are taken off in strides that halve, each of which is exact, like every single turn
    // of the plain loop that this stands for; at 1e300 that loop would have no end.
    double rest = std::fabs(degrees);
    double stride = kTurn;
    while (stride <= rest / 2.0) {
        stride *= 2.0;
    }
    while (stride >= kTurn) {
        if (rest >= stride) {
            rest -= stride;
        }
        stride /= 2.0;
    }
    const double wrapped = rest > kTurn / 2.0 ? rest - kTurn : rest;
    return degrees < 0.0 ? 0.0 - wrapped : wrapped;
}

double wrapped_distance(double a, double b)
{
    return std::fabs(wrap_phase(a) - wrap_phase(b));
}
