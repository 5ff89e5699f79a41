// SPDX-License-Identifier: MIT
#include "report/figures.h"

#include "compare/analysis_table.h"
#include "report/figure_builders.h"
#include "report/figure_plan.h"

#include <algorithm>

namespace report
{

namespace
{

std::string group_of(const FigurePlan &plan)
{
    std::string group = analysis_row(plan.analysis).name;
    if (plan.place.rerun) {
        group += ", rerun " + std::to_string(*plan.place.rerun);
    }
    if (plan.place.modify) {
        group += ", modify " + std::to_string(*plan.place.modify);
    }
    return group;
}

std::string title_of(const Figure &figure)
{
    std::string names;
    for (const Panel &panel : figure.panels) {
        names += (names.empty() ? "" : ", ") + panel.name;
    }
    return names + " - " + figure.group;
}

Figure build(const Result &result, const FigurePlan &plan)
{
    switch (plan.kind) {
    case FigureKind::BARS:
        return bars_figure(plan);
    case FigureKind::PLANE:
        return plane_figure(result, plan);
    case FigureKind::WAVES:
        break;
    }
    return wave_figure(plan);
}

} // namespace

std::vector<Figure> make_figures(const Result &result, int most, std::int64_t budget_bytes)
{
    std::vector<FigurePlan> plans = plan_figures(result, static_cast<std::size_t>(std::max(most, 0)));
    share_budget(plans, static_cast<double>(budget_bytes));
    double left = 0.0; // over by figures that did not need their share
    std::vector<Figure> figures;
    figures.reserve(plans.size());
    for (FigurePlan &plan : plans) {
        plan.bytes += left;
        Figure figure = build(result, plan);
        left = std::max(0.0, plan.bytes - used_bytes(figure));
        figure.kind = plan.kind;
        figure.id = "f" + std::to_string(figures.size() + 1);
        figure.group = group_of(plan);
        figure.title = title_of(figure);
        figure.findings = plan.findings;
        figures.push_back(std::move(figure));
    }
    return figures;
}

} // namespace report
