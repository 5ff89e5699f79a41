// SPDX-License-Identifier: MIT
#include "compare/fourier_compare.h"

#include "compare/phase.h"
#include "compare/tolerance.h"
#include "compare/unit_check.h"
#include "compare/waveform_section.h"
#include "support/transcript.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace
{

bool is_phase(const Wform &wform)
{
    constexpr std::string_view kSuffix = ".PHASE.FOURIER";
    const std::string_view name = wform.name;
    return name.size() >= kSuffix.size() && name.substr(name.size() - kSuffix.size()) == kSuffix;
}

double coefficient_error(double ref, double cmp, bool phase)
{
    if (!phase) {
        return std::fabs(ref - cmp);
    }
    const double distance = wrapped_distance(ref, cmp);
    return std::min(distance, 360.0 - distance);
}

unsigned check_signal(const Wform &ref, const Wform &cmp)
{
    unsigned bits = 0;
    if (!desert) {
        bits |= check_units(kFourierXUnits, FOUR, ref.name, ref.xunits, cmp.xunits);
        bits |= check_units(kWaveformYUnits, FOUR, ref.name, ref.yunits, cmp.yunits);
    }
    // Raises no bit by itself: the surplus coefficients do.
    if (ref.numpts != cmp.numpts) {
        print_tk_header(FOUR);
        transcript_printf("Wrong number of coefficients for signal %s.\n", ref.name);
        print_both_files(std::to_string(ref.numpts).c_str(), std::to_string(cmp.numpts).c_str());
    }
    return bits;
}

SignalFindings compare_pair(const Wform &ref, const Wform &cmp)
{
    SignalFindings findings;
    findings.bits = check_signal(ref, cmp);
    const bool phase = is_phase(ref);
    const PT *r = ref.pts;
    const PT *c = cmp.pts;
    for (int coefficient = 1; r != nullptr && c != nullptr; r = r->next, c = c->next, ++coefficient) {
        const double abserr = coefficient_error(r->val, c->val, phase);
        report_negative_error(abserr);
        const double relerr = relative_error(abserr, r->val);
        const char *marker = nullptr;
        if (test_error_thresholds(glAbstol, abserr, relerr, &marker) == PASSES) {
            continue;
        }
        print_tk_header(FOUR);
        print_name_column(ref.name, 3);
        transcript_printf(" %2d   %9.3e  ", coefficient, r->x);
        print_error_columns(" ", abserr, relerr, marker);
        ++findings.fails;
    }
    if (r != nullptr || c != nullptr) {
        findings.bits |= EXIT_ANALYSES;
    }
    return findings;
}

} // namespace

unsigned four_compare(Wform *ref, Wform *cmp)
{
    return compare_section(ref, cmp, FOUR, compare_pair);
}
