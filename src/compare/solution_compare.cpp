// SPDX-License-Identifier: MIT
#include "compare/solution_compare.h"

#include "compare/exit_bits.h"
#include "compare/missing_report.h"
#include "compare/pair_index.h"
#include "compare/result_lines.h"
#include "compare/tolerance.h"
#include "compare/unit_check.h"
#include "support/transcript.h"

namespace
{

const char *type_mark(int type)
{
    switch (type) {
    case NODE:
        return " ";
    case INTERNAL:
        return "~";
    case IND:
        return "*";
    default:
        return "+";
    }
}

// Tests a pair and prints it when it fails. Returns whether it does.
bool value_pair_fails(const Isoln &ref, const Isoln &cmp, int code)
{
    const double abserr = std::fabs(ref.value - cmp.value);
    const double relerr = relative_error(abserr, ref.value);
    const char *marker = nullptr;
    if (test_error_thresholds(pair_level(ref.value, cmp.value), abserr, relerr, &marker) == PASSES) {
        return false;
    }
    print_tk_header(code);
    transcript_puts(type_mark(ref.type));
    print_name_column(ref.name, 3);
    transcript_puts(" ");
    print_error_columns(" ", abserr, relerr, marker);
    return true;
}

// Compares two lists that are both there, up to the summary.
unsigned compare_solution(Isoln *ref, Isoln *cmp, int code, const char *label)
{
    int fails = 0;
    unsigned bits = compare_signals(ref, cmp, code, &fails);
    const unsigned missing = find_missing_signals(ref, cmp, code);
    print_tk_summary(fails, static_cast<int>(missing), label);
    return missing != 0 ? bits | EXIT_SIGNALS : bits;
}

// Reports a solution that one file lacks. Returns EXIT_ANALYSES then, else 0.
unsigned report_missing_solution(const void *ref, const void *cmp, const char *label)
{
    if (ref != nullptr && cmp != nullptr) {
        return 0;
    }
    transcript_printf("Missing %s solution from %s file.\n", label,
                      ref == nullptr ? "reference" : "comparison");
    return EXIT_ANALYSES;
}

unsigned compare_or_report(Isoln *ref, Isoln *cmp, int code, const char *label)
{
    const unsigned missing = report_missing_solution(ref, cmp, label);
    return missing != 0 ? missing : compare_solution(ref, cmp, code, label);
}

// One of the two points of an INDC sweep. A point that one file lacks is reported.
unsigned compare_indc_point(Isoln *ref, Isoln *cmp, int code, const char *place, const char *label)
{
    if ((ref == nullptr) != (cmp == nullptr)) {
        transcript_printf("Missing INDC solution [%s] in %s file.\n", place,
                          ref == nullptr ? "reference" : "comparison");
        return EXIT_ANALYSES;
    }
    return compare_solution(ref, cmp, code, label);
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
    int fails = 0;
    for (Isoln *value = ref; value != nullptr; value = value->next) {
        const Isoln *partner = candidates.match(*value);
        if (partner == nullptr) {
            continue;
        }
        if (value_pair_fails(*value, *partner, code)) {
            ++fails;
            bits |= EXIT_TOLERANCE;
        }
        bits |= check_units(kValueYUnits, code, value->name, value->yunits, partner->yunits);
    }
    *failcount += fails;
    return bits;
}

unsigned op_compare(Isoln *ref, Isoln *cmp)
{
    return compare_or_report(ref, cmp, OP, "OP");
}

unsigned inop_compare(Isoln *ref, Isoln *cmp)
{
    return compare_or_report(ref, cmp, INOP, "INOP");
}

unsigned intr_compare(Isoln *ref, Isoln *cmp, int code)
{
    return code == INTR ? compare_or_report(ref, cmp, INTR, "INTR")
                        : compare_or_report(ref, cmp, INPSS, "INPSS");
}

unsigned indc_compare(INDCform *ref, INDCform *cmp)
{
    if (const unsigned missing = report_missing_solution(ref, cmp, "INDC")) {
        return missing;
    }
    if (ref->first == nullptr && cmp->first == nullptr) {
        // The last points are not looked at then, whatever they hold: a short cut kept for harnesses.
        transcript_puts("No INDC signals in either file.\n");
        return 0;
    }
    const unsigned first =
        compare_indc_point(ref->first, cmp->first, INDC1, "FIRST POINT", "first INDC point");
    return first | compare_indc_point(ref->second, cmp->second, INDC2, "LAST POINT", "last INDC point");
}
