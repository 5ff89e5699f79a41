// SPDX-License-Identifier: MIT
#include "compare/sweep_compare.h"

#include "compare/difference_lines.h"
#include "compare/missing_lines.h"
#include "compare/phase.h"
#include "compare/result_lines.h"
#include "compare/sure_passes.h"
#include "compare/waveform_section.h"
#include "support/settings.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
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
    static DoublePair sure_errors(const DoublePair &ref, const DoublePair &cmp, PairMask &)
    {
        return magnitude(ref - cmp);
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
    // Of phases that need no wrapping.
    static DoublePair sure_errors(const DoublePair &ref, const DoublePair &cmp, PairMask &sure)
    {
        sure &= (magnitude(ref) <= both(180.0)) & (magnitude(cmp) <= both(180.0));
        const DoublePair distance = magnitude(ref - cmp);
        const DoublePair rest = magnitude(both(360.0) - distance);
        return rest < distance ? rest : distance;
    }
};

bool is_phase(const Wform &wform)
{
    return wform.yunits != nullptr && strcasecmp(wform.yunits, "DEGREES") == 0;
}

// Judges all pairs of points. The last one of a block is always judged by itself: it leaves its mode behind.
template <typename Rule> SweepResult sweep_points(const Wform &ref, const Wform &cmp, const Rule &rule)
{
    SweepResult found;
    const bool may_skip = can_be_sure();
    walk_blocks(ref, cmp, [&](const PointBlock &r, const PointBlock &c, std::size_t count) {
        std::size_t i = 0;
        while (i < count) {
            i += may_skip ? count_sure_passes(r.val + i, c.val + i, count - i - 1, rule) : 0;
            for (const std::size_t end = std::min(count, i + kSureStep); i < end; ++i) {
                const Judged judged = judge_values(rule, r.val[i], c.val[i]);
                if (judged.verdict != PASSES) {
                    ++found.fails;
                    found.max_abs = std::max(found.max_abs, judged.abserr);
                    found.max_rel = std::max(found.max_rel, judged.relerr);
                }
            }
        }
        found.compared += static_cast<std::int64_t>(count);
    });
    return found;
}

SignalFindings compare_ac_pair(const Wform &ref, const Wform &cmp, int code)
{
    const SweepResult found =
        is_phase(ref) ? sweep_points(ref, cmp, PhaseRule{}) : sweep_points(ref, cmp, PlainRule{});
    if (ref.count < cmp.count) {
        report_point_count(ref, cmp, code, Side::REFERENCE);
    } else if (ref.count > cmp.count) {
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
    unsigned failures = report_dc_sweep(ref, cmp, code, sweep_points(ref, cmp, PlainRule{}));
    failures |= report_missing_points(ref, cmp, code);
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
        walk_points(ref, cmp, PhaseRule{}, visit);
    } else {
        walk_points(ref, cmp, PlainRule{}, visit);
    }
}

void walk_dc_points(const Wform &ref, const Wform &cmp, const PointVisitor &visit)
{
    walk_points(ref, cmp, PlainRule{}, visit);
}
