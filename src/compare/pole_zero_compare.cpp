// SPDX-License-Identifier: MIT
#include "compare/pole_zero_compare.h"

#include "compare/exit_bits.h"
#include "compare/result_lines.h"
#include "compare/tolerance.h"
#include "support/real.h"
#include "support/transcript.h"

#include <cmath>
#include <cstring>
#include <string>

namespace
{

constexpr const char *kRootLabels[] = {"", "pole", "zero", "cancelled pole", "cancelled zero"};

std::string root_name(int kind, int position)
{
    return std::string(kRootLabels[kind]) + " " + std::to_string(position);
}

double norm(Real a, Real b)
{
    const auto square = static_cast<double>(a * a + b * b);
    return square == square ? std::sqrt(square) : square; // not every root keeps the sign of a NaN
}

// A root on the axis agrees with either side.
bool on_different_sides(const TRI &ref, const TRI &cmp)
{
    return (ref.mag > 0.0 && cmp.mag < 0.0) || (ref.mag < 0.0 && cmp.mag > 0.0);
}

const char *half_plane(const TRI &root)
{
    return root.mag < 0.0 ? "LHP" : "RHP";
}

// Tests a pair and prints it when it fails. Returns whether it does.
bool root_pair_fails(const TRI &ref, const TRI &cmp, int kind, int position)
{
    const double abserr = norm(Real(ref.mag) - Real(cmp.mag), Real(ref.phase) - Real(cmp.phase));
    const double relerr = relative_error(abserr, norm(Real(ref.mag), Real(ref.phase)));
    const char *marker = nullptr;
    const int verdict = test_error_thresholds(glAbstol, abserr, relerr, &marker);
    if (verdict == PASSES && !on_different_sides(ref, cmp)) {
        return false;
    }
    print_tk_header(PZ);
    print_name_column(root_name(kind, position).c_str(), 3);
    transcript_printf(" %-7s %-7s ", half_plane(ref), half_plane(cmp));
    print_error_columns("  ", abserr, relerr, marker);
    return true;
}

void report_missing_roots(const TRI *rest, int kind, int position, const char *file)
{
    for (; rest != nullptr; rest = rest->next, ++position) {
        transcript_printf("%-19s missing in %s file\n", root_name(kind, position).c_str(), file);
    }
}

bool texts_differ(const char *a, const char *b)
{
    return std::strcmp(a, b) != 0;
}

const char *type_name(const PZform &block)
{
    return block.pztype == 1 ? "VOL" : "CUR";
}

unsigned compare_descriptions(const PZform &ref, const PZform &cmp)
{
    unsigned bits = 0;
    if (texts_differ(ref.iport, cmp.iport)) {
        transcript_puts("Pole-Zero input port names are different.\n");
        print_both_files(ref.iport, cmp.iport);
        bits = EXIT_UNITS;
    }
    if (texts_differ(ref.oport, cmp.oport)) {
        transcript_puts("Pole-Zero output port names are different.\n");
        print_both_files(ref.oport, cmp.oport);
        bits = EXIT_UNITS;
    }
    if (ref.pztype != cmp.pztype) {
        transcript_puts("Pole-Zero transfer function types are different.\n");
        print_both_files(type_name(ref), type_name(cmp));
        bits = EXIT_UNITS;
    }
    if (ref.tpunch_time != cmp.tpunch_time) {
        transcript_puts("Pole-Zero transient tpunch times are different.\n");
        print_both_files("%g", ref.tpunch_time, cmp.tpunch_time);
        bits = EXIT_UNITS;
    }
    return bits;
}

} // namespace

unsigned compare_pz_signals(const TRI *ref, const TRI *cmp, int kind, int *failcount)
{
    unsigned bits = 0;
    int position = 1;
    for (; ref != nullptr && cmp != nullptr; ref = ref->next, cmp = cmp->next, ++position) {
        if (root_pair_fails(*ref, *cmp, kind, position)) {
            ++*failcount;
            bits |= EXIT_TOLERANCE;
        }
    }
    if (ref != nullptr || cmp != nullptr) {
        bits |= EXIT_SIGNALS;
    }
    report_missing_roots(ref, kind, position, "comparison");
    report_missing_roots(cmp, kind, position, "reference");
    return bits;
}

unsigned pzform_compare(const PZform *ref, const PZform *cmp)
{
    static const PZform kEmpty = {};
    unsigned bits = 0;
    if (ref == nullptr) {
        transcript_puts("Reference file missing pole-zero results\n");
        bits = EXIT_ANALYSES;
        ref = &kEmpty;
    } else if (cmp == nullptr) {
        transcript_puts("Comparison file missing pole-zero results\n");
        bits = EXIT_ANALYSES;
        cmp = &kEmpty;
    } else {
        bits = compare_descriptions(*ref, *cmp);
    }
    int fails = 0;
    bits |= compare_pz_signals(ref->poles, cmp->poles, POLE, &fails);
    bits |= compare_pz_signals(ref->zeros, cmp->zeros, ZERO, &fails);
    bits |= compare_pz_signals(ref->cpoles, cmp->cpoles, CANCELLED_POLE, &fails);
    bits |= compare_pz_signals(ref->czeros, cmp->czeros, CANCELLED_ZERO, &fails);
    print_tk_summary(fails, 0, "pole/zero");
    return bits;
}
