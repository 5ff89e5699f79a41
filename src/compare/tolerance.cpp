// SPDX-License-Identifier: MIT
#include "compare/tolerance.h"

#include <cstring>
#include <string_view>

int glNANflag = 0;

namespace
{

char loMarkerBuf[24]; // the longest marker has 23 characters

void set_marker(std::string_view text)
{
    std::memcpy(loMarkerBuf, text.data(), text.size());
    loMarkerBuf[text.size()] = '\0';
}

// How many times the product of the tolerances the product of the errors must exceed, and the
// marker then, its letters for the sides that exceed their tolerance.
struct MarkerGrade {
    double factor;
    std::string_view marker;
};

constexpr std::size_t kAbsoluteLetter = 3;
constexpr std::size_t kRelativeLetter = 5;

constexpr MarkerGrade kMarkerGrades[] = {
    {1e12, " <=A=R= ! ! ! ! ! ! !"},
    {1e10, " <=A=R= ! ! ! ! ! !"},
    {1e8, " <=A=R= ! ! ! ! !"},
    {1e6, " <=A=R= ! ! ! !"},
    {1e4, " <=A=R= ! ! !"},
    {100.0, " <=A=R= ! !"},
    {1.0, " <=A=R= !"},
};

void set_failure_marker(double abserr, double relerr)
{
    const char absolute = abserr > glAbstol ? 'A' : '=';
    const char relative = relerr > glReltol ? 'R' : '=';
    const double product = std::fabs(abserr * relerr);
    const double tolerance = glAbstol * glReltol;
    for (const MarkerGrade &grade : kMarkerGrades) {
        if (product > grade.factor * tolerance) {
            set_marker(grade.marker);
            loMarkerBuf[kAbsoluteLetter] = absolute;
            loMarkerBuf[kRelativeLetter] = relative;
            return;
        }
    }
    set_marker(" <=A");
    loMarkerBuf[kAbsoluteLetter] = absolute == 'A' ? absolute : relative;
}

} // namespace

const char *marker_of(const Judged &judged)
{
    if (judged.verdict == FAILS) {
        set_failure_marker(judged.abserr, judged.relerr);
    } else {
        set_marker(judged.verdict == PASSES ? " " : " <=nan= ! ! ! ! ! ! ! !");
    }
    return loMarkerBuf;
}

int test_error_thresholds(double level, double abserr, double relerr, const char **marker)
{
    const Judged judged = {level, abserr, relerr, judge_errors(level, abserr, relerr)};
    const char *text = marker_of(judged);
    if (marker != nullptr) {
        *marker = text;
    }
    return judged.verdict;
}
