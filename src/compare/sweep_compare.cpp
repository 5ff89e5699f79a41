// SPDX-License-Identifier: MIT
#include "compare/sweep_compare.h"

#include "compare/fourier_compare.h"
#include "compare/phase.h"
#include "compare/tolerance.h"
#include "compare/transient_compare.h"
#include "compare/unit_check.h"
#include "compare/waveform_section.h"
#include "support/settings.h"
#include "support/transcript.h"

#include <algorithm>
#include <strings.h>

namespace
{

// What the walk over two point lists found.
struct PointFindings {
    int fails = 0;
    int compared = 0;
    double max_abs = 0.0; // of failing points only
    double max_rel = 0.0;
    const PT *ref_rest = nullptr; // points left over in the longer list
    const PT *cmp_rest = nullptr;
};

// Walks both lists to the end of the shorter one; difference(r, c) is the absolute error of a pair.
template <typename Difference>
PointFindings compare_points(const PT *ref, const PT *cmp, Difference difference)
{
    PointFindings found;
    for (; ref != nullptr && cmp != nullptr; ref = ref->next, cmp = cmp->next) {
        const double abserr = difference(ref->val, cmp->val);
        const double relerr = relative_error(abserr, ref->val);
        if (judge_errors(pair_level(ref->val, cmp->val), abserr, relerr) != PASSES) {
            ++found.fails;
            found.max_abs = std::max(found.max_abs, abserr);
            found.max_rel = std::max(found.max_rel, relerr);
        }
        ++found.compared;
    }
    found.ref_rest = ref;
    found.cmp_rest = cmp;
    return found;
}

// Absolute errors of a pair of values. Objects, not functions, so that the walk is compiled for each.
constexpr auto plain_difference = [](double ref, double cmp) {
    return std::fabs(ref - cmp);
};

constexpr auto phase_difference = [](double ref, double cmp) {
    const double distance = wrapped_distance(ref, cmp);
    const double shorter = std::min(distance, std::fabs(360.0 - distance));
    report_negative_error(shorter);
    return shorter;
};

bool is_phase(const Wform &wform)
{
    return wform.yunits != nullptr && strcasecmp(wform.yunits, "DEGREES") == 0;
}

// The marker of a result line, from a test of the maxima alone: a line of failing points may so get
// the marker of a passing test.
const char *line_marker(const PointFindings &found)
{
    const char *marker = nullptr;
    test_error_thresholds(glAbstol, found.max_abs, found.max_rel, &marker);
    return marker;
}

SignalFindings compare_ac_pair(const Wform &ref, const Wform &cmp, int code)
{
    const PointFindings found = is_phase(ref) ? compare_points(ref.pts, cmp.pts, phase_difference)
                                              : compare_points(ref.pts, cmp.pts, plain_difference);
    if (found.cmp_rest != nullptr) {
        transcript_puts(" ERROR1.\n");
    } else if (found.ref_rest != nullptr) {
        transcript_puts(" ERROR2.\n");
    }
    if (found.fails == 0) {
        return {};
    }
    print_tk_header(code);
    print_name_column(ref.name, 3, 15);
    // The width of the counts follows the last digit of the number of points, not how many it has:
    // readers of the transcript expect the columns so.
    const int width = found.compared % 10 + 1;
    transcript_printf("%*d/%-*d    ", width, found.fails, width, found.compared);
    print_error_columns("  ", found.max_abs, found.max_rel, line_marker(found));
    return {1, 0};
}

int count_points(const PT *points)
{
    int count = 0;
    for (; points != nullptr; points = points->next) {
        ++count;
    }
    return count;
}

SignalFindings compare_dc_pair(const Wform &ref, const Wform &cmp, int code)
{
    SignalFindings findings;
    if (!desert) {
        findings.bits = check_units(kSweepXUnits, code, ref.name, ref.xunits, cmp.xunits);
        findings.bits |= check_units(kWaveformYUnits, code, ref.name, ref.yunits, cmp.yunits);
    }
    const PointFindings found = compare_points(ref.pts, cmp.pts, plain_difference);
    if (found.fails > 0) {
        print_tk_header(code);
        print_name_column(ref.name, 8);
        transcript_printf("%d/%d     ", found.fails, found.compared);
        print_error_columns("  ", found.max_abs, found.max_rel, line_marker(found));
    }
    const PT *rest = found.ref_rest != nullptr ? found.ref_rest : found.cmp_rest;
    if (rest != nullptr) {
        transcript_printf("%d points missing for signal %s in %s file.\n", count_points(rest), ref.name,
                          found.ref_rest != nullptr ? "comparison" : "reference");
    }
    findings.fails = found.fails > 0 || rest != nullptr ? 1 : 0;
    return findings;
}

unsigned compare_fourier(Wform *ref, Wform *cmp, unsigned)
{
    return four_compare(ref, cmp);
}

struct AnalysisComparator {
    AnalysisCode code;
    unsigned (*compare)(Wform *, Wform *, unsigned);
};

// In the order of the transcript.
constexpr AnalysisComparator kComparators[] = {
    {TR, tr_compare},    {PSS, tr_compare},       {PAC, ac_compare}, {PXF, ac_compare}, {PNOISE, ac_compare},
    {MR, dc_compare},    {FOUR, compare_fourier}, {DC, dc_compare},  {AC, ac_compare},  {NOISE, ac_compare},
    {DISTO, ac_compare}, {XF, ac_compare},        {STB, ac_compare},
};

} // namespace

unsigned wform_compare(Wform *ref, Wform *cmp)
{
    bool present[kAnalysisCount] = {};
    for (const Wform *list : {ref, cmp}) {
        for (; list != nullptr; list = list->next) {
            present[list->analysis] = true;
        }
    }
    unsigned bits = 0;
    for (const AnalysisComparator &comparator : kComparators) {
        if (present[comparator.code]) {
            bits |= comparator.compare(ref, cmp, static_cast<unsigned>(comparator.code));
        }
    }
    return bits;
}

unsigned ac_compare(Wform *ref, Wform *cmp, unsigned code)
{
    const int analysis = static_cast<int>(code);
    return compare_section(ref, cmp, analysis, [analysis](const Wform &r, const Wform &c) {
        return compare_ac_pair(r, c, analysis);
    });
}

unsigned dc_compare(Wform *ref, Wform *cmp, unsigned code)
{
    const int analysis = static_cast<int>(code);
    return compare_section(ref, cmp, analysis, [analysis](const Wform &r, const Wform &c) {
        return compare_dc_pair(r, c, analysis);
    });
}
