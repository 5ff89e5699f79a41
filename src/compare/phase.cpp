// SPDX-License-Identifier: MIT
#include "compare/phase.h"

#include "support/transcript.h"

#include <cmath>

double wrap_phase(double degrees)
{
    if (!std::isfinite(degrees) || (degrees >= -180.0 && degrees <= 180.0)) {
        return degrees;
    }
    // The remainder is exact, like every step of the additions it stands for, and takes no loop,
    // which at 1e300 would have no end. Adding 0 turns -0 into the 0 that the additions give.
    const double rest = std::fmod(degrees, 360.0) + 0.0;
    if (rest < -180.0) {
        return rest + 360.0;
    }
    return rest > 180.0 ? rest - 360.0 : rest;
}

double wrapped_distance(double a, double b)
{
    return std::fabs(wrap_phase(a) - wrap_phase(b));
}

void report_negative_error(double abserr)
{
    if (abserr < 0.0) {
        transcript_puts(" problem with ABS macro.\n");
    }
}
