// SPDX-License-Identifier: MIT
// The one test that judges a pair of values against the absolute and the relative tolerance.
#ifndef TRESK_COMPARE_TOLERANCE_H
#define TRESK_COMPARE_TOLERANCE_H

#include "support/settings.h"

#include <cmath>

// 1 once the tolerance test met a value that is no number; never cleared, so that every later modify
// pair of the run counts as touched by it.
extern int glNANflag;

enum Verdict : int { PASSES = 0, FAILS = 1, NOT_A_NUMBER = 2 };

// |abserr / reference|; of a zero reference, 1 when there is any difference and 0 when there is none.
inline double relative_error(double abserr, double reference)
{
    if (reference != 0.0) {
        return std::fabs(abserr / reference);
    }
    return abserr != 0.0 ? 1.0 : 0.0;
}

// The smaller value of a pair, with its sign: the level by which default checking chooses a mode.
inline double pair_level(double reference, double comparison)
{
    return comparison < reference ? comparison : reference;
}

// The verdict on a pair with the given level, absolute and relative error. Default checking judges
// absolutely at a level of 0 or up to the absolute threshold and relatively above; it leaves its choice
// in the mode flags. Sets glNANflag on a NaN.
// Kept: every negative level is up to the threshold, and -AorR fails on the absolute side alone, like
// -Aonly (docs/verdict.md, "Value pairs").
inline Verdict judge_errors(double level, double abserr, double relerr)
{
    if (level != level || abserr != abserr || relerr != relerr) {
        glNANflag = 1;
        return NOT_A_NUMBER;
    }
    if (glDefaultChecking) {
        glAonly = level == 0.0;
        glAorR = !glAonly && level <= glAbstol;
        glRonly = !glAonly && !glAorR;
        glAandR = 0;
    }
    const bool over_abstol = abserr > glAbstol;
    const bool over_reltol = relerr > glReltol;
    bool fails = false;
    if (glAonly || glAorR) {
        fails = over_abstol;
    } else if (glAandR) {
        fails = over_abstol && over_reltol;
    }
    return fails || (glRonly && over_reltol) ? FAILS : PASSES;
}

// A pair's errors and what the test makes of them.
struct Judged {
    double level;
    double abserr;
    double relerr;
    Verdict verdict;
};

// Judges a pair by its absolute error, which is relative to the reference.
inline Judged judge_pair(double level, double abserr, double reference)
{
    const double relerr = relative_error(abserr, reference);
    return {level, abserr, relerr, judge_errors(level, abserr, relerr)};
}

// The text that grades how far a judged pair is off, valid until the next call.
const char *marker_of(const Judged &judged);

// judge_errors; when marker is not null it receives the text of marker_of.
int test_error_thresholds(double level, double abserr, double relerr, const char **marker);

#endif
