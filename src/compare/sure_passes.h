// SPDX-License-Identifier: MIT
// Points that pass beyond doubt, many at a time. Most pairs of a regression do, and only their number is
// asked for; what could be otherwise is judged one by one (compare/tolerance.h).
#ifndef TRESK_COMPARE_SURE_PASSES_H
#define TRESK_COMPARE_SURE_PASSES_H

#include "support/double_pair.h"
#include "support/settings.h"
#include "support/wide_vectors.h"

#include <cfloat>
#include <cstddef>

constexpr std::size_t kSureStep = 8; // pairs that are looked at together

// What default checking accepts, a little less where it judges relatively.
struct SureLimits {
    DoublePair abstol;
    DoublePair reltol;
};

// Whether the tolerances are such that nothing below can be lost to rounding near the ends of the range of
// doubles, and default checking is in force.
inline bool can_be_sure()
{
    constexpr double kTiny = 1e-250;
    return glDefaultChecking && glAbstol > kTiny && glAbstol < DBL_MAX && glReltol > kTiny &&
           glReltol < 1.0 / kTiny && glAbstol * glReltol > kTiny;
}

inline SureLimits sure_limits()
{
    constexpr double kBelow = 1.0 - 0x1p-50; // more than a product and a quotient can be rounded by
    return {both(glAbstol), both(glReltol * kBelow)};
}

// Whether both pairs of values are sure to pass with these errors. A NaN is not.
inline PairMask surely_pass(const SureLimits &limits, const DoublePair &ref, const DoublePair &cmp,
                            const DoublePair &errors)
{
    const DoublePair level = cmp < ref ? cmp : ref;
    const DoublePair limit = choose(level <= limits.abstol, limits.abstol, magnitude(ref) * limits.reltol);
    return (errors <= limit) & (errors <= both(DBL_MAX));
}

// How many of the count pairs of values, from the first on, are sure to pass; some of those behind may do so,
// too. Rule::sure_errors(ref, cmp, sure) gives the absolute errors of two pairs, and clears sure where it
// cannot.
template <typename Rule>
std::size_t count_sure_passes(const double *ref, const double *cmp, std::size_t count, const Rule &rule)
{
    std::size_t i = 0;
    do_fast(count, [&] {
        const SureLimits limits = sure_limits();
        for (; i + kSureStep <= count; i += kSureStep) {
            PairMask sure = {-1, -1};
            for (std::size_t k = i; k < i + kSureStep; k += 2) {
                const DoublePair r = load_pair(ref + k);
                const DoublePair c = load_pair(cmp + k);
                const DoublePair errors = rule.sure_errors(r, c, sure);
                sure &= surely_pass(limits, r, c, errors);
            }
            if (!holds_for_both(sure)) {
                break;
            }
        }
    });
    return i;
}

#endif
