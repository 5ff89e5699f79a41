// SPDX-License-Identifier: MIT
#include "compare/analysis_table.h"
#include "report/axis.h"
#include "report/figure_builders.h"
#include "report/units.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace report
{

namespace
{

constexpr std::size_t kMostBars = 128;
constexpr double kLogRange = 100.0; // from which on small coefficients could not be seen on a linear axis

// Failing ones first, the worst ones first; then the lowest harmonics.
bool comes_first(const Bar &a, const Bar &b)
{
    if (a.fails != b.fails) {
        return a.fails;
    }
    if (a.fails && std::isnan(a.error) != std::isnan(b.error)) {
        return std::isnan(a.error);
    }
    if (a.fails && a.error != b.error && !std::isnan(a.error)) {
        return a.error > b.error;
    }
    return a.position < b.position;
}

void keep_first(std::vector<Bar> &bars)
{
    if (bars.size() > kMostBars) {
        std::nth_element(bars.begin(), bars.begin() + kMostBars, bars.end(), comes_first);
        bars.resize(kMostBars);
    }
}

bool spread_far(const std::vector<Bar> &bars)
{
    Range range;
    for (const Bar &bar : bars) {
        range.add(bar.golden);
        range.add(bar.regression);
    }
    return range.low > 0.0 && range.high / range.low >= kLogRange;
}

} // namespace

Figure bars_figure(const FigurePlan &plan)
{
    Figure figure;
    const PanelPlan &of = plan.panels.front();
    const Wform &ref = *of.signals.ref;
    std::int64_t position = 0;
    analysis_row(FOUR).walk(
        ref, *of.signals.cmp, [&](const PT &golden, const PT &regression, const Judged &judged) {
            const int place =
                static_cast<int>(std::min<std::int64_t>(++position, std::numeric_limits<int>::max()));
            figure.bars.push_back(
                {place, golden.x, golden.val, regression.val, judged.abserr, judged.verdict != PASSES});
            if (figure.bars.size() > 2 * kMostBars) {
                keep_first(figure.bars);
            }
        });
    keep_first(figure.bars);
    std::sort(figure.bars.begin(), figure.bars.end(),
              [](const Bar &a, const Bar &b) { return a.position < b.position; });
    figure.left_out = position - static_cast<std::int64_t>(figure.bars.size());
    figure.log_y = spread_far(figure.bars);
    figure.x_name = "frequency";
    figure.x_unit = unit_of(ref.xunits != nullptr ? ref.xunits : "HERTZ");
    Panel panel;
    panel.name = ref.name != nullptr ? ref.name : "";
    panel.unit = unit_of(ref.yunits);
    panel.errors.unit = panel.unit;
    panel.errors.label = panel.unit.text == "°" ? "difference, the shorter way round" : "difference";
    panel.worst_x = std::numeric_limits<double>::quiet_NaN();
    panel.key = of.entry->key;
    if (ref.count != of.signals.cmp->count && !figure.bars.empty()) {
        const double end = figure.bars.back().x;
        const bool in_golden = ref.count > of.signals.cmp->count;
        panel.unjudged.push_back({end, end,
                                  std::to_string(std::abs(ref.count - of.signals.cmp->count)) + " more in " +
                                      (in_golden ? "golden" : "regression") + " alone"});
    }
    figure.panels.push_back(std::move(panel));
    return figure;
}

} // namespace report
