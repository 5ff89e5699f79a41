// SPDX-License-Identifier: MIT
#include "compare/solution_compare.h"

#include "compare/analysis_table.h"
#include "compare/difference_lines.h"
#include "compare/missing_lines.h"
#include "compare/missing_report.h"
#include "compare/pair_index.h"
#include "compare/result_lines.h"
#include "compare/table_headers.h"

#include <cmath>

namespace
{

// Compares two lists that are both there, up to the summary.
unsigned compare_solution(Isoln *ref, Isoln *cmp, int code)
{
    int fails = 0;
    const unsigned bits = compare_signals(ref, cmp, code, &fails);
    const unsigned missing = find_missing_signals(ref, cmp, code);
    print_tk_summary(fails, static_cast<int>(missing), analysis_row(code).label);
    return bits | bits_of_missing(missing);
}

// The side that is null where the other is not.
Side lacking_side(const void *ref, const void *cmp)
{
    if ((ref == nullptr) == (cmp == nullptr)) {
        return Side::NEITHER;
    }
    return ref == nullptr ? Side::REFERENCE : Side::COMPARISON;
}

unsigned compare_or_report(Isoln *ref, Isoln *cmp, int code)
{
    const Side lacking = lacking_side(ref, cmp);
    return lacking != Side::NEITHER ? report_missing_solution(code, analysis_row(code).label, lacking)
                                    : compare_solution(ref, cmp, code);
}

// One of the two points of an INDC sweep.
unsigned compare_indc_point(Isoln *ref, Isoln *cmp, int code, const char *place)
{
    const Side lacking = lacking_side(ref, cmp);
    return lacking != Side::NEITHER ? report_missing_indc_point(code, place, lacking)
                                    : compare_solution(ref, cmp, code);
}

} // namespace

unsigned compare_signals(Isoln *ref, Isoln *cmp, int code, int *failcount)
{
    if (ref == nullptr) {
        return 0;
    }
    PairIndex<Isoln> candidates;
    for (Isoln *value = cmp; value != nullptr; value = value->next) {
        if (!value->matched) {
            candidates.add(value);
        }
    }
    unsigned bits = 0;
    for (Isoln *value = ref; value != nullptr; value = value->next) {
        if (const Isoln *partner = candidates.match(*value)) {
            bits |= compare_value_pair(*value, *partner, code, failcount);
        }
    }
    return bits;
}

unsigned compare_value_pair(const Isoln &ref, const Isoln &cmp, int code, int *failcount)
{
    const Judged judged =
        judge_pair(pair_level(ref.value, cmp.value), std::fabs(ref.value - cmp.value), ref.value);
    unsigned bits = 0;
    if (!goes_unreported(judged)) {
        bits = report_value(ref, cmp, code, judged);
        *failcount += bits != 0 ? 1 : 0;
    }
    return bits | check_units(kValueYUnits, code, ref.name, ref.yunits, cmp.yunits);
}

unsigned op_compare(Isoln *ref, Isoln *cmp)
{
    return compare_or_report(ref, cmp, OP);
}

unsigned inop_compare(Isoln *ref, Isoln *cmp)
{
    return compare_or_report(ref, cmp, INOP);
}

unsigned intr_compare(Isoln *ref, Isoln *cmp, int code)
{
    return compare_or_report(ref, cmp, code == INTR ? INTR : INPSS);
}

unsigned indc_compare(INDCform *ref, INDCform *cmp)
{
    const Side lacking = lacking_side(ref, cmp);
    if (lacking != Side::NEITHER) {
        return report_missing_solution(INDC1, "INDC", lacking);
    }
    if (ref->first == nullptr && cmp->first == nullptr) {
        // Kept: the last points are not looked at then (docs/verdict.md, "What only one file has").
        return report_empty_indc();
    }
    const unsigned first = compare_indc_point(ref->first, cmp->first, INDC1, "FIRST POINT");
    return first | compare_indc_point(ref->second, cmp->second, INDC2, "LAST POINT");
}
