// SPDX-License-Identifier: MIT
#include "compare/tolerance.h"

#include <cstdio>

namespace
{

char loMarkerBuf[32]; // the longest marker has 23 characters

// How many times the product of the tolerances the product of the errors must exceed, and the
// exclamation marks that follow the letters then.
struct MarkerGrade {
    double factor;
    const char *marks;
};

constexpr MarkerGrade kMarkerGrades[] = {
    {1e12, " ! ! ! ! ! ! !"}, {1e10, " ! ! ! ! ! !"}, {1e8, " ! ! ! ! !"}, {1e6, " ! ! ! !"},
    {1e4, " ! ! !"},          {100.0, " ! !"},        {1.0, " !"},
};

void make_failure_marker(double abserr, double relerr)
{
    const char absolute = abserr > glAbstol ? 'A' : '=';
    const char relative = relerr > glReltol ? 'R' : '=';
    const double product = std::fabs(abserr * relerr);
    const double tolerance = glAbstol * glReltol;
    for (const MarkerGrade &grade : kMarkerGrades) {
        if (product > grade.factor * tolerance) {
            std::snprintf(loMarkerBuf, sizeof loMarkerBuf, " <=%c=%c=%s", absolute, relative, grade.marks);
            return;
        }
    }
    std::snprintf(loMarkerBuf, sizeof loMarkerBuf, " <=%c", absolute == 'A' ? absolute : relative);
}

} // namespace

int test_error_thresholds(double level, double abserr, double relerr, const char **marker)
{
    const Verdict verdict = judge_errors(level, abserr, relerr);
    if (verdict == FAILS) {
        make_failure_marker(abserr, relerr);
    } else {
        std::snprintf(loMarkerBuf, sizeof loMarkerBuf, "%s",
                      verdict == PASSES ? " " : " <=nan= ! ! ! ! ! ! ! !");
    }
    if (marker != nullptr) {
        *marker = loMarkerBuf;
    }
    return verdict;
}
