// SPDX-License-Identifier: MIT
// Which figures a result gets, before any point is read.
#ifndef TRESK_REPORT_FIGURE_PLAN_H
#define TRESK_REPORT_FIGURE_PLAN_H

#include "report/figure.h"
#include "report/result.h"

#include <cstdint>
#include <vector>

namespace report
{

struct PanelPlan {
    Both<Wform> signals;
    const Entry *entry = nullptr; // the finding that the panel shows; null for a companion that passes
};

struct FigurePlan {
    FigureKind kind = FigureKind::WAVES;
    int analysis = kNoAnalysis;
    Place place;
    std::vector<PanelPlan> panels;     // of WAVES and BARS; magnitude before phase
    Both<PZform> blocks;               // of PLANE
    std::vector<std::size_t> findings; // indices into Result::findings, worst first
    std::int64_t columns = 0;          // that waveforms are cut to; 0 keeps all points
};

// Plans of the figures, worst first, with whole waveforms.
std::vector<FigurePlan> plan_figures(const Result &result, std::size_t most);

// Sets to how many columns the waveforms of each figure are cut, so that the data of all figures and
// their drawings take about so many bytes on a page. Figures that are small stay whole; the others share
// what is left.
void share_budget(std::vector<FigurePlan> &plans, std::int64_t bytes);

} // namespace report

#endif
