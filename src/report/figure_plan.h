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
    bool is_whole = true;              // whether all points of its waveforms are kept
    double bytes = 0.0;                // of the page, that it may take
};

// Plans of the figures, worst first, with whole waveforms.
std::vector<FigurePlan> plan_figures(const Result &result, std::size_t most);

// Sets how many bytes of a page each figure may take, so that all of them take about so many. Figures that
// are small stay whole; the others share what is left.
void share_budget(std::vector<FigurePlan> &plans, double bytes);

// How many points each curve of a figure, and its errors, may have.
std::int64_t most_points(const FigurePlan &plan);

// About what a figure takes of the page.
double used_bytes(const Figure &figure);

} // namespace report

#endif
