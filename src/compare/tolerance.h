// SPDX-License-Identifier: MIT
// The one test that judges a pair of values against the absolute and the relative tolerance.
#ifndef TRESK_COMPARE_TOLERANCE_H
#define TRESK_COMPARE_TOLERANCE_H

#include "compare/compare_state.h"
#include "support/settings.h"

#include <cmath>

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
// absolutely at a level of 0 or up to the absolute threshold (every negative level included) and
// relatively above; it leaves its choice in the mode flags. -AorR fails on the absolute side alone,
// like -Aonly: harnesses are tuned to it. Sets glNANflag on a NaN.
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

// The same verdict; when marker is not null it receives the text that grades how far the pair is
// off, valid until the next call.
int test_error_thresholds(double level, double abserr, double relerr, const char **marker);

#endif
