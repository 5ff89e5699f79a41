// SPDX-License-Identifier: MIT
#include "compare/fourier_compare.h"

#include "compare/difference_lines.h"
#include "compare/phase.h"
#include "compare/result_lines.h"
#include "compare/waveform_section.h"
#include "support/settings.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace
{

bool is_phase(const Wform &wform)
{
    constexpr std::string_view kSuffix = ".PHASE.FOURIER";
    const std::string_view name = wform.name;
    return name.size() >= kSuffix.size() && name.substr(name.size() - kSuffix.size()) == kSuffix;
}

// A level at the absolute threshold makes default checking judge absolutely.
struct CoefficientRule {
    bool phase;

    static double level(double, double)
    {
        return glAbstol;
    }
    double error(double ref, double cmp) const
    {
        if (!phase) {
            return std::fabs(ref - cmp);
        }
        // Kept: below 0 where one phase is infinite (docs/verdict.md, "Fourier results, poles and zeros").
        const double distance = wrapped_distance(ref, cmp);
        return std::min(distance, 360.0 - distance);
    }
};

SignalFindings compare_pair(const Wform &ref, const Wform &cmp)
{
    SignalFindings findings;
    if (!desert) {
        findings.bits |= check_units(kFourierXUnits, FOUR, ref.name, ref.xunits, cmp.xunits);
        findings.bits |= check_units(kWaveformYUnits, FOUR, ref.name, ref.yunits, cmp.yunits);
    }
    findings.bits |= report_coefficient_count(ref, cmp);
    std::int64_t position = 0;
    const auto report = [&](const PT &ref_point, const PT &cmp_point, const Judged &judged) {
        ++position;
        if (judged.abserr < 0.0) {
            findings.bits |= report_negative_error(ref, cmp, FOUR, judged.abserr);
        }
        if (goes_unreported(judged)) {
            return;
        }
        const unsigned bits =
            report_coefficient(ref, cmp, ref_point, cmp_point, static_cast<int>(position), judged);
        findings.bits |= bits;
        findings.fails += bits != 0 ? 1 : 0;
    };
    walk_points(ref, cmp, CoefficientRule{is_phase(ref)}, report);
    return findings;
}

} // namespace

unsigned four_compare(Wform *ref, Wform *cmp)
{
    return compare_section(ref, cmp, FOUR, compare_pair);
}

void walk_coefficients(const Wform &ref, const Wform &cmp, const PointVisitor &visit)
{
    walk_points(ref, cmp, CoefficientRule{is_phase(ref)}, visit);
}
