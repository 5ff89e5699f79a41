// SPDX-License-Identifier: MIT
#include "compare/sweep_compare.h"

#include "compare/difference_lines.h"
#include "compare/missing_lines.h"
#include "compare/phase.h"
#include "compare/result_lines.h"
#include "compare/waveform_section.h"
#include "support/settings.h"

#include <algorithm>
#include <cmath>
#include <strings.h>

namespace
{

struct PlainRule {
    static double level(double ref, double cmp)
    {
        return pair_level(ref, cmp);
    }
    static double error(double ref, double cmp)
    {
        return std::fabs(ref - cmp);
    }
};

struct PhaseRule {
    static double level(double ref, double cmp)
    {
        return pair_level(ref, cmp);
    }
    static double error(double ref, double cmp)
    {
        const double distance = wrapped_distance(ref, cmp);
        return std::min(distance, std::fabs(360.0 - distance));
    }
};

bool is_phase(const Wform &wform)
{
    return wform.yunits != nullptr && strcasecmp(wform.yunits, "DEGREES") == 0;
}

// Judges all pairs of points. Returns what is left over.
template <typename Rule>
PointRest sweep_points(const Wform &ref, const Wform &cmp, const Rule &rule, SweepResult &result)
{
    SweepResult found;
    const PointRest rest =
        walk_points(ref.pts, cmp.pts, rule, [&found](const PT &, const PT &, const Judged &judged) {
            if (judged.verdict != PASSES) {
                ++found.fails;
                found.max_abs = std::max(found.max_abs, judged.abserr);
                found.max_rel = std::max(found.max_rel, judged.relerr);
            }
            ++found.compared;
        });
    result = found;
    return rest;
}

SignalFindings compare_ac_pair(const Wform &ref, const Wform &cmp, int code)
{
    SweepResult found;
    const PointRest rest = is_phase(ref) ? sweep_points(ref, cmp, PhaseRule{}, found)
                                         : sweep_points(ref, cmp, PlainRule{}, found);
    if (rest.cmp != nullptr) {
        report_point_count(ref, cmp, code, Side::REFERENCE);
    } else if (rest.ref != nullptr) {
        report_point_count(ref, cmp, code, Side::COMPARISON);
    }
    const unsigned bits = report_ac_sweep(ref, cmp, code, found);
    return {bits != 0 ? 1 : 0, bits};
}

SignalFindings compare_dc_pair(const Wform &ref, const Wform &cmp, int code)
{
    SignalFindings findings;
    if (!desert) {
        findings.bits |= check_units(kSweepXUnits, code, ref.name, ref.xunits, cmp.xunits);
        findings.bits |= check_units(kWaveformYUnits, code, ref.name, ref.yunits, cmp.yunits);
    }
    SweepResult found;
    const PointRest rest = sweep_points(ref, cmp, PlainRule{}, found);
    unsigned failures = report_dc_sweep(ref, cmp, code, found);
    failures |= report_missing_points(ref, cmp, code, rest.ref, rest.cmp);
    findings.fails = failures != 0 ? 1 : 0;
    findings.bits |= failures;
    return findings;
}

} // namespace

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

void walk_ac_points(const Wform &ref, const Wform &cmp, const PointVisitor &visit)
{
    if (is_phase(ref)) {
        walk_points(ref.pts, cmp.pts, PhaseRule{}, visit);
    } else {
        walk_points(ref.pts, cmp.pts, PlainRule{}, visit);
    }
}

void walk_dc_points(const Wform &ref, const Wform &cmp, const PointVisitor &visit)
{
    walk_points(ref.pts, cmp.pts, PlainRule{}, visit);
}
