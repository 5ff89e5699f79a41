// SPDX-License-Identifier: MIT
#include "report/tuner.h"

#include "compare/analysis_table.h"
#include "read/point_blocks.h"
#include "report/keys.h"
#include "support/exit_bits.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace report
{

namespace
{

constexpr std::size_t kMostSignals = 100000;

bool is_failure(const Finding &finding)
{
    return (finding.bits & (EXIT_TOLERANCE | EXIT_NAN)) != 0;
}

bool is_about_errors(const Finding &finding)
{
    return finding.kind <= FindingKind::ROOT || finding.kind == FindingKind::MISSING_POINTS;
}

Errors errors_of(const Finding &finding)
{
    const bool level_is_abstol = finding.kind == FindingKind::AREA ||
                                 finding.kind == FindingKind::COEFFICIENT ||
                                 finding.kind == FindingKind::ROOT;
    return {finding.judged.level, finding.judged.abserr, finding.judged.relerr, level_is_abstol};
}

// Of two single points whose values fail, the times, which count as soon as the values pass.
Errors time_errors(const Wform &ref, const Wform &cmp)
{
    const double r = first_point(ref).x;
    const double c = first_point(cmp).x;
    const double abserr = std::fabs(r - c);
    return {pair_level(r, c), abserr, relative_error(abserr, r), false};
}

void set_reason(Tuned &tuned, WhyNot why)
{
    if (tuned.why == WhyNot::NONE || why == WhyNot::NAN_VALUE) {
        tuned.why = why;
    }
}

bool is_hopeless(const TunedKnobs &knobs)
{
    return std::none_of(knobs.begin(), knobs.end(),
                        [](const Tuned &tuned) { return tuned.fails.smallest_passing().has_value(); });
}

void add_to(Tuned &all, const Tuned &one)
{
    all.fails.add(one.fails);
    if (one.why != WhyNot::NONE) {
        set_reason(all, one.why);
    }
}

} // namespace

void FailureCounter::file_read(const FileRead &)
{
}

void FailureCounter::rerun_pair(const RERUNform &, const RERUNform &)
{
}

void FailureCounter::modify_pair(int, const MODIFYform &, const MODIFYform &)
{
}

void FailureCounter::finding(const Finding &finding)
{
    failing_ += is_failure(finding) ? 1 : 0;
}

void FailureCounter::passed(const Finding &)
{
}

void FailureCounter::ended(const RunEnd &end)
{
    grade_ = end.grade;
}

void Tuner::started(const RunStart &start)
{
    result_.abstol = start.abstol;
    result_.reltol = start.reltol;
    result_.mode = start.mode;
}

void Tuner::modify_pair(int, const MODIFYform &, const MODIFYform &)
{
    close();
}

void Tuner::finding(const Finding &finding)
{
    FailureCounter::finding(finding);
    if (is_about_errors(finding)) {
        open(finding);
        fails_ = fails_ || is_failure(finding);
        take(finding);
    }
}

void Tuner::passed(const Finding &finding)
{
    open(finding);
    take(finding);
}

void Tuner::ended(const RunEnd &end)
{
    close();
    FailureCounter::ended(end);
    result_.grade = grade();
    result_.failing = failing();
    result_.status = end.status;
}

// Begins a signal, unless the finding is about the one that was begun.
void Tuner::open(const Finding &finding)
{
    const Wform *wform = finding.signals.ref;
    if (is_open_ && wform != nullptr && wform == wform_) {
        return;
    }
    close();
    signal_.key = key_of(finding);
    wform_ = wform;
    is_open_ = true;
}

void Tuner::close()
{
    if (!is_open_) {
        return;
    }
    for (std::size_t i = 0; i < kKnobCount; ++i) {
        add_to(result_.all[i], signal_.knobs[i]);
    }
    result_.hopeless += fails_ && is_hopeless(signal_.knobs) ? 1 : 0;
    if (fails_ && result_.signals.size() < kMostSignals) {
        result_.signals.push_back(std::move(signal_));
    } else if (fails_) {
        ++result_.left_out;
    }
    signal_ = {};
    is_open_ = false;
    fails_ = false;
}

void Tuner::take(const Finding &finding)
{
    const Judge judge;
    const auto &[ref, cmp] = finding.signals;
    if (finding.kind == FindingKind::FEW_POINTS || finding.kind == FindingKind::MISSING_POINTS) {
        block(WhyNot::POINTS_MISSING);
    } else if (finding.kind == FindingKind::SWEEP) {
        analysis_row(finding.analysis).walk(*ref, *cmp, [&](const PT &, const PT &, const Judged &judged) {
            take_errors(judge, {judged.level, judged.abserr, judged.relerr, false});
        });
        if (points_are_lost(*ref) || points_are_lost(*cmp)) {
            block(WhyNot::POINTS_MISSING);
        }
    } else {
        take_errors(judge, errors_of(finding));
        if (finding.half_planes_differ) {
            block(WhyNot::HALF_PLANE);
        }
        if (finding.kind == FindingKind::SINGLE_VALUE && is_failure(finding)) {
            take_errors(judge, time_errors(*ref, *cmp));
        }
    }
}

void Tuner::take_errors(const Judge &judge, const Errors &errors)
{
    for (std::size_t i = 0; i < kKnobCount; ++i) {
        Tuned &tuned = signal_.knobs[i];
        if (judge.add_failures(kKnobs[i], errors, tuned.fails) && tuned.why != WhyNot::NAN_VALUE) {
            set_reason(tuned, judge.why_not(kKnobs[i], errors));
        }
    }
}

void Tuner::block(WhyNot why)
{
    for (Tuned &tuned : signal_.knobs) {
        tuned.fails.add({0.0, FailSet::kNever, 0.0});
        set_reason(tuned, why);
    }
}

} // namespace report
