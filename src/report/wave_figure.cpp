// SPDX-License-Identifier: MIT
#include "compare/analysis_table.h"
#include "read/point_blocks.h"
#include "report/axis.h"
#include "report/columns.h"
#include "report/companions.h"
#include "report/curve.h"
#include "report/facts.h"
#include "report/figure_builders.h"
#include "report/units.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <strings.h>

namespace report
{

namespace
{

constexpr double kLogRange = 100.0; // from which on frequencies are shown on a log axis unasked
constexpr double kIntervals = 1000.0;
constexpr double kNearIntervals = 5.0; // on each side of the worst one
constexpr double kNowhere = std::numeric_limits<double>::quiet_NaN();

bool asks_for_log(const Wform &wform)
{
    return wform.xfunc != nullptr && strncasecmp(wform.xfunc, "LOG", 3) == 0;
}

bool is_over_time(int analysis)
{
    return analysis == TR || analysis == PSS;
}

Range view_of(const FigurePlan &plan)
{
    Range range;
    for (const PanelPlan &panel : plan.panels) {
        for (const Wform *wform : {panel.signals.ref, panel.signals.cmp}) {
            const Range x = x_range(*wform);
            range.add(x.low);
            range.add(x.high);
        }
    }
    return range.low < range.high ? range : widened(range);
}

bool is_log(const FigurePlan &plan, const Range &view)
{
    if (is_over_time(plan.analysis) || view.low <= 0.0) {
        return false;
    }
    return asks_for_log(*plan.panels.front().signals.ref) ||
           (is_over_frequency(plan.analysis) && view.high / view.low >= kLogRange);
}

const char *x_name(int analysis)
{
    if (is_over_time(analysis)) {
        return "time";
    }
    if (is_over_frequency(analysis)) {
        return "frequency";
    }
    return analysis == MR ? "run" : "sweep";
}

Unit x_unit(int analysis, const Wform &wform)
{
    if (analysis == MR) {
        return {};
    }
    const bool defaults = wform.xunits == nullptr;
    return unit_of(!defaults                     ? wform.xunits
                   : is_over_time(analysis)      ? "SECONDS"
                   : is_over_frequency(analysis) ? "HERTZ"
                                                 : nullptr);
}

// A panel with the same scale for both axes of the view and the worst place.
Detail detail_of(const FigurePlan &plan, const Figure &figure, double worst_x)
{
    Detail detail;
    detail.most_points = plan.is_whole ? std::numeric_limits<std::int64_t>::max() : most_points(plan);
    detail.view = {figure.x_low, figure.x_high, figure.log_x};
    const double worst = detail.view.place(worst_x);
    detail.near_from = worst - kNearIntervals / kIntervals; // no place at all of NaN
    detail.near_to = worst + (kNearIntervals + 1.0) / kIntervals;
    return detail;
}

ErrorStrip area_errors(const Entry &entry, const Unit &unit)
{
    ErrorStrip strip;
    strip.unit = times_seconds(unit);
    strip.label = "difference of areas, in intervals of " + with_unit(entry.interval, {"s", true});
    const std::size_t count = std::min(entry.golden_areas.size(), entry.regression_areas.size());
    for (std::size_t j = 0; j < count; ++j) {
        const double end = static_cast<double>(j) * entry.interval;
        strip.from.push_back(end - entry.interval);
        strip.to.push_back(end);
        strip.error.push_back(std::fabs(entry.regression_areas[j] - entry.golden_areas[j]));
    }
    return strip;
}

// The worst error of each column, or all where there are few.
class PointErrors
{
  public:
    // A strip for more points than there is room for has a slot for each column.
    PointErrors(const Detail &detail, std::int64_t points)
        : columns_(points > detail.most_points ? std::clamp(detail.most_points, kFewestColumns, kMostColumns)
                                               : 0),
          finder_(detail.view, columns_, {kNowhere, kNowhere, 1}), slots_(static_cast<std::size_t>(columns_))
    {
    }

    void add(const PT &point, const Judged &judged)
    {
        const Slot slot{point.x, judged.abserr, judged.verdict != PASSES, true};
        if (slots_.empty()) {
            put(slot);
            return;
        }
        const std::int64_t column = std::clamp<std::int64_t>(finder_.find(point.x), 0, columns_ - 1);
        Slot &worst = slots_[static_cast<std::size_t>(column)];
        if (!worst.used || is_worse(slot, worst)) {
            worst = slot;
        }
    }

    ErrorStrip take()
    {
        for (const Slot &slot : slots_) {
            if (slot.used) {
                put(slot);
            }
        }
        return std::move(strip_);
    }

  private:
    struct Slot {
        double x = 0.0;
        double error = 0.0;
        bool fails = false;
        bool used = false;
    };

    static bool is_worse(const Slot &a, const Slot &b)
    {
        if (a.fails != b.fails) {
            return a.fails;
        }
        return std::isnan(a.error) ? !std::isnan(b.error) : a.error > b.error;
    }

    void put(const Slot &slot)
    {
        strip_.from.push_back(slot.x);
        strip_.to.push_back(slot.x);
        strip_.error.push_back(slot.error);
        strip_.fails.push_back(slot.fails ? 1 : 0);
    }

    std::int64_t columns_;
    ColumnFinder finder_;
    std::vector<Slot> slots_;
    ErrorStrip strip_;
};

ErrorStrip point_errors(const FigurePlan &plan, const Both<Wform> &signals, const Detail &detail,
                        const Unit &unit)
{
    PointErrors errors(detail, std::min(signals.ref->count, signals.cmp->count));
    if (const SignalWalk walk = analysis_row(plan.analysis).walk) {
        walk(*signals.ref, *signals.cmp,
             [&errors](const PT &ref, const PT &, const Judged &judged) { errors.add(ref, judged); });
    }
    ErrorStrip strip = errors.take();
    strip.unit = unit;
    strip.label = unit.text == "°" && is_over_frequency(plan.analysis) ? "difference, the shorter way round"
                                                                       : "difference, point by point";
    return strip;
}

// Times before those of the first interval, and the last interval, which no verdict looks at.
std::vector<Unjudged> unjudged_times(const Entry &entry, const Figure &figure)
{
    std::vector<Unjudged> unjudged;
    if (figure.x_low < -entry.interval) {
        unjudged.push_back({figure.x_low, -entry.interval, "before the first interval"});
    }
    const double judged_to = (static_cast<double>(entry.golden_areas.size()) - 1.0) * entry.interval;
    if (!entry.golden_areas.empty() && judged_to < figure.x_high) {
        unjudged.push_back({judged_to, figure.x_high, "last interval"});
    }
    return unjudged;
}

// Points that only one file has.
std::vector<Unjudged> unjudged_points(const Both<Wform> &signals)
{
    const std::int64_t judged = std::min(signals.ref->count, signals.cmp->count);
    if (signals.ref->count == signals.cmp->count) {
        return {};
    }
    const bool in_golden = signals.ref->count > judged;
    Range range;
    BlockWalk walk(in_golden ? *signals.ref : *signals.cmp);
    std::int64_t before = 0;
    for (PointBlock block = walk.next(); block.count != 0; block = walk.next()) {
        const std::int64_t skipped =
            std::clamp<std::int64_t>(judged - 1 - before, 0, static_cast<std::int64_t>(block.count));
        std::for_each(block.x + skipped, block.x + block.count, [&range](double x) { range.add(x); });
        before += static_cast<std::int64_t>(block.count);
    }
    if (range.is_empty()) {
        return {};
    }
    return {{range.low, range.high, in_golden ? "points of golden alone" : "points of regression alone"}};
}

Panel panel_of(const FigurePlan &plan, const PanelPlan &of, const Figure &figure)
{
    const Wform &ref = *of.signals.ref;
    Panel panel;
    panel.name = ref.name != nullptr ? ref.name : "";
    panel.unit = unit_of(ref.yunits);
    const bool has_place = of.entry != nullptr && of.entry->finding.worst.index >= 0;
    panel.worst_x = has_place ? worst_at(of.entry->finding).value_or(kNowhere) : kNowhere;
    panel.key = of.entry != nullptr ? of.entry->key : "";
    const Detail detail = detail_of(plan, figure, panel.worst_x);
    panel.golden = read_curve(ref, detail);
    panel.regression = read_curve(*of.signals.cmp, detail);
    if (is_over_time(plan.analysis)) {
        panel.errors = area_errors(*of.entry, panel.unit); // no family, no companion over time
        panel.unjudged = unjudged_times(*of.entry, figure);
    } else {
        panel.errors = point_errors(plan, of.signals, detail, panel.unit);
        panel.unjudged = unjudged_points(of.signals);
    }
    return panel;
}

bool is_cut(const Curve &curve)
{
    return static_cast<std::int64_t>(curve.x.size()) < curve.points;
}

} // namespace

Figure wave_figure(const FigurePlan &plan)
{
    Figure figure;
    const Range view = view_of(plan);
    figure.x_low = view.low;
    figure.x_high = view.high;
    figure.log_x = is_log(plan, view);
    figure.x_name = x_name(plan.analysis);
    figure.x_unit = x_unit(plan.analysis, *plan.panels.front().signals.ref);
    for (const PanelPlan &panel : plan.panels) {
        figure.panels.push_back(panel_of(plan, panel, figure));
        figure.cut =
            figure.cut || is_cut(figure.panels.back().golden) || is_cut(figure.panels.back().regression);
    }
    return figure;
}

} // namespace report
