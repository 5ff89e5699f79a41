// SPDX-License-Identifier: MIT
#include "compare/force_compare.h"

#include "compare/compare_state.h"
#include "compare/exit_bits.h"
#include "compare/missing_report.h"
#include "compare/result_lines.h"
#include "compare/solution_compare.h"
#include "support/transcript.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace
{

// The statements of a list by time. A NaN is neither less nor greater than any time, so it counts as
// equal to all of them.
class TimeIndex
{
  public:
    explicit TimeIndex(TPsoln *list)
    {
        for (TPsoln *point = list; point != nullptr; point = point->next) {
            in_order_.push_back(point);
            has_nan_ = has_nan_ || point->time != point->time;
        }
        if (!has_nan_) {
            by_time_ = in_order_;
            std::stable_sort(by_time_.begin(), by_time_.end(), earlier);
            find_runs();
        }
    }

    // Calls visit for every statement of the same time, in list order.
    template <typename Visit> void for_each_at(TPsoln *point, Visit visit) const
    {
        if (has_nan_ || point->time != point->time) {
            for (TPsoln *other : in_order_) {
                if (!earlier(other, point) && !earlier(point, other)) {
                    visit(other);
                }
            }
            return;
        }
        const auto [first, last] = std::equal_range(by_time_.begin(), by_time_.end(), point, earlier);
        const auto end = static_cast<std::size_t>(last - by_time_.begin());
        for (auto i = static_cast<std::size_t>(first - by_time_.begin()); i < end;) {
            // Twins without values are all matched together: one of them stands for all from then on.
            const bool done = by_time_[i]->matched && are_empty_twins(point, by_time_[i]);
            visit(by_time_[i]);
            i = done ? run_end_[i] : i + 1;
        }
    }

  private:
    static bool earlier(const TPsoln *a, const TPsoln *b)
    {
        return a->time < b->time;
    }

    static bool are_empty_twins(const TPsoln *a, const TPsoln *b)
    {
        return a->isoln == nullptr && b->isoln == nullptr && a->time == b->time && a->tshift == b->tshift &&
               a->analysis == b->analysis;
    }

    void find_runs()
    {
        run_end_.resize(by_time_.size());
        for (std::size_t i = by_time_.size(); i-- > 0;) {
            const bool goes_on = i + 1 < by_time_.size() && are_empty_twins(by_time_[i], by_time_[i + 1]);
            run_end_[i] = goes_on ? run_end_[i + 1] : i + 1;
        }
    }

    std::vector<TPsoln *> in_order_;
    std::vector<TPsoln *> by_time_;
    std::vector<std::size_t> run_end_; // of each in by_time_: index behind the empty twins that follow
    bool has_nan_ = false;
};

struct ForceFindings {
    int fails = 0;
    unsigned missing = 0;
    unsigned bits = 0;
};

// Names the analysis by the code of a transient analysis, not of its .FORCE statements, and so tells
// "PSS" for both kinds: kept as harnesses know it.
const char *difference_name(const TPsoln &point)
{
    return point.analysis == TR ? "TR" : "PSS";
}

bool all_matched(const Isoln *values)
{
    while (values != nullptr && values->matched) {
        values = values->next;
    }
    return values == nullptr;
}

void compare_pair(TPsoln &ref, TPsoln &cmp, int code, ForceFindings &findings)
{
    ref.matched = 1;
    cmp.matched = 1;
    new_force_time = 1;
    force_time = ref.time;
    if (ref.tshift != cmp.tshift) {
        transcript_puts("\nTSHIFT for .FORCE statement is different.\n");
        print_both_files("%11.6E", ref.tshift, cmp.tshift);
        findings.bits |= EXIT_ANALYSES;
    }
    if (ref.analysis != cmp.analysis) {
        transcript_puts("\nAnalysis type for .FORCE statement is different.\n");
        print_both_files(difference_name(ref), difference_name(cmp));
        findings.bits |= EXIT_ANALYSES;
    }
    if (all_matched(ref.isoln) && all_matched(cmp.isoln)) {
        return; // statements of one time meet again and again; these have nothing left to tell
    }
    findings.bits |= compare_signals(ref.isoln, cmp.isoln, code, &findings.fails);
    findings.missing += find_missing_signals(ref.isoln, cmp.isoln, code);
}

unsigned report_missing_points(const TPsoln *list, const char *other_file)
{
    unsigned count = 0;
    for (const TPsoln *point = list; point != nullptr; point = point->next) {
        if (!point->matched) {
            print_tk_header(point->analysis);
            ++count;
            transcript_printf("Warning : %s .FORCE statement at time %11.6E is not present in the %s file.\n",
                              point->analysis == TR_FORCE ? "TR" : "PSS", point->time, other_file);
        }
    }
    return count;
}

} // namespace

unsigned find_missing_TPsolutions(TPsoln *ref, TPsoln *cmp)
{
    const unsigned missing = report_missing_points(ref, "comparison");
    return missing + report_missing_points(cmp, "reference");
}

unsigned force_compare(TPsoln *ref, TPsoln *cmp)
{
    new_force_time = 0;
    ForceFindings findings;
    const TimeIndex comparison_points(cmp);
    for (TPsoln *point = ref; point != nullptr; point = point->next) {
        // Results go under the analysis of the first statement, also where statements differ.
        comparison_points.for_each_at(
            point, [&](TPsoln *other) { compare_pair(*point, *other, ref->analysis, findings); });
    }
    findings.missing += find_missing_TPsolutions(ref, cmp);
    const TPsoln *head = ref != nullptr ? ref : cmp;
    print_tk_summary(findings.fails, static_cast<int>(findings.missing),
                     head->analysis == TR_FORCE ? ".FORCE TR" : ".FORCE PSS");
    return findings.missing != 0 ? findings.bits | EXIT_SIGNALS : findings.bits;
}
