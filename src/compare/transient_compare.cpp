// SPDX-License-Identifier: MIT
#include "compare/transient_compare.h"

#include "compare/compare_state.h"
#include "compare/integration.h"
#include "compare/tolerance.h"
#include "compare/unit_check.h"
#include "compare/waveform_section.h"
#include "support/transcript.h"

#include <algorithm>
#include <cmath>

namespace
{

constexpr int kMaxGridPoints = 1001;

// Areas of the intervals, offset by one; two more entries take what lies at and behind the end.
double ref_area[kMaxGridPoints + 1];
double cmp_area[kMaxGridPoints + 1];

void print_failure(const Wform &ref, int code, double abserr, double relerr, const char *marker)
{
    print_tk_header(code);
    print_name_column(ref.name, 3);
    transcript_puts(" ");
    print_error_columns(" ", abserr, relerr, marker);
}

// Takes over the larger extent of both signals.
void set_extent(const Wform &ref, const Wform &cmp)
{
    xmin = std::min(ref.xmin, cmp.xmin);
    xmax = std::max(ref.xmax, cmp.xmax);
    ymin = std::min(ref.ymin, cmp.ymin);
    ymax = std::max(ref.ymax, cmp.ymax);
    maxpts = std::max(ref.numpts, cmp.numpts);
}

// Tests one coordinate of two single points and prints it when it fails.
bool coordinate_fails(const Wform &ref, int code, double reference, double comparison)
{
    const double abserr = std::fabs(reference - comparison);
    const double relerr = relative_error(abserr, reference);
    const char *marker = nullptr;
    if (test_error_thresholds(pair_level(reference, comparison), abserr, relerr, &marker) == PASSES) {
        return false;
    }
    print_failure(ref, code, abserr, relerr, marker);
    return true;
}

// Compares signals of which one has fewer than two points, and so no area. The time of a single
// point is looked at only when its value passes.
bool short_signal_fails(const Wform &ref, const Wform &cmp, int code)
{
    if (maxpts != 1 || ref.pts == nullptr || cmp.pts == nullptr) {
        print_failure(ref, code, 1.0, 1.0, " <=A=R= ! ! ! ! ! ! !");
        return true;
    }
    return coordinate_fails(ref, code, ref.pts->val, cmp.pts->val) ||
           coordinate_fails(ref, code, ref.pts->x, cmp.pts->x);
}

double sum_of_areas(int ndiv)
{
    double sum = 0.0;
    for (int i = 0; i < ndiv; ++i) {
        sum += std::fabs(ref_area[i]);
    }
    return sum;
}

double sum_of_differences(int ndiv)
{
    double sum = 0.0;
    for (int i = 0; i < ndiv; ++i) {
        const double difference = std::fabs(cmp_area[i] - ref_area[i]);
        if (debugging(DEBUG_TRANSIENT)) {
            transcript_printf("%d dif=%g ref=%g val=%g\n", i, difference, ref_area[i], cmp_area[i]);
        }
        sum += difference;
    }
    return sum;
}

// Compares the areas under both curves over a grid from time 0 to the last time of either.
bool waveform_fails(const Wform &ref, const Wform &cmp, int code)
{
    const int ndiv = std::min(maxpts, kMaxGridPoints) - 1;
    const double dx = xmax / ndiv;
    if (debugging(DEBUG_TRANSIENT)) {
        transcript_printf("maxpts = %d  ndiv = %d\n", maxpts, ndiv);
    }
    std::fill_n(ref_area, ndiv, 0.0);
    std::fill_n(cmp_area, ndiv, 0.0);
    intline(&ref, ref_area, dx, ndiv);
    const double total = sum_of_areas(ndiv);
    if (debugging(DEBUG_TRANSIENT)) {
        transcript_puts("\n\n beginning matching waveform integration.....\n");
    }
    intline(&cmp, cmp_area, dx, ndiv);
    const double abserr = sum_of_differences(ndiv);
    const double relerr = relative_error(abserr, total);
    const char *marker = nullptr;
    // A level at the absolute threshold makes default checking judge the area absolutely.
    if (test_error_thresholds(glAbstol, abserr, relerr, &marker) == PASSES) {
        return false;
    }
    print_failure(ref, code, abserr, relerr, marker);
    return true;
}

SignalFindings compare_pair(const Wform &ref, const Wform &cmp, int code)
{
    SignalFindings findings;
    if (!desert) {
        findings.bits = check_units(kWaveformYUnits, code, ref.name, ref.yunits, cmp.yunits);
    }
    set_extent(ref, cmp);
    const bool fails = ref.numpts < 2 || cmp.numpts < 2 ? short_signal_fails(ref, cmp, code)
                                                        : waveform_fails(ref, cmp, code);
    findings.fails = fails ? 1 : 0;
    return findings;
}

} // namespace

unsigned tr_compare(Wform *ref, Wform *cmp, unsigned code)
{
    const int analysis = static_cast<int>(code);
    return compare_section(ref, cmp, analysis, [analysis](const Wform &r, const Wform &c) {
        return compare_pair(r, c, analysis);
    });
}
