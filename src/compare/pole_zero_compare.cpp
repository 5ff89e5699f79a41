// SPDX-License-Identifier: MIT
#include "compare/pole_zero_compare.h"

#include "compare/analysis_table.h"
#include "compare/difference_lines.h"
#include "compare/missing_lines.h"
#include "compare/result_lines.h"
#include "compare/table_headers.h"
#include "support/real.h"
#include "support/settings.h"

#include <cmath>

namespace
{

double norm(Real a, Real b)
{
    const auto square = static_cast<double>(a * a + b * b);
    return square == square ? std::sqrt(square) : square; // not every root keeps the sign of a NaN
}

// A root on the axis agrees with either side.
// Kept: no tolerance helps across the sides (docs/verdict.md, "Fourier results, poles and zeros").
bool on_different_sides(const TRI &ref, const TRI &cmp)
{
    return (ref.mag > 0.0 && cmp.mag < 0.0) || (ref.mag < 0.0 && cmp.mag > 0.0);
}

unsigned compare_roots(const TRI &ref, const TRI &cmp, int kind, int position)
{
    const double distance = norm(Real(ref.mag) - Real(cmp.mag), Real(ref.phase) - Real(cmp.phase));
    // A level at the absolute threshold makes default checking judge absolutely.
    const Judged judged = judge_pair(glAbstol, distance, norm(Real(ref.mag), Real(ref.phase)));
    return report_root(ref, cmp, kind, position, judged, on_different_sides(ref, cmp));
}

unsigned report_missing_roots(const TRI *rest, int kind, int position, Side lacking)
{
    unsigned bits = 0;
    for (; rest != nullptr; rest = rest->next, ++position) {
        bits |= report_missing_root(*rest, kind, position, lacking);
    }
    return bits;
}

} // namespace

unsigned compare_pz_signals(const TRI *ref, const TRI *cmp, int kind, int *failcount)
{
    unsigned bits = 0;
    int position = 1;
    for (; ref != nullptr && cmp != nullptr; ref = ref->next, cmp = cmp->next, ++position) {
        const unsigned failure = compare_roots(*ref, *cmp, kind, position);
        *failcount += failure != 0 ? 1 : 0;
        bits |= failure;
    }
    bits |= report_missing_roots(ref, kind, position, Side::COMPARISON);
    bits |= report_missing_roots(cmp, kind, position, Side::REFERENCE);
    return bits;
}

unsigned pzform_compare(const PZform *ref, const PZform *cmp)
{
    static const PZform kEmpty = {};
    unsigned bits = 0;
    if (ref == nullptr) {
        bits = report_missing_pole_zeros(*cmp, Side::REFERENCE);
        ref = &kEmpty;
    } else if (cmp == nullptr) {
        bits = report_missing_pole_zeros(*ref, Side::COMPARISON);
        cmp = &kEmpty;
    } else {
        bits = report_block_difference(*ref, *cmp);
    }
    int fails = 0;
    bits |= compare_pz_signals(ref->poles, cmp->poles, POLE, &fails);
    bits |= compare_pz_signals(ref->zeros, cmp->zeros, ZERO, &fails);
    bits |= compare_pz_signals(ref->cpoles, cmp->cpoles, CANCELLED_POLE, &fails);
    bits |= compare_pz_signals(ref->czeros, cmp->czeros, CANCELLED_ZERO, &fails);
    print_tk_summary(fails, 0, analysis_row(PZ).label);
    return bits;
}
