// SPDX-License-Identifier: MIT
// Builders of the figures, one for each kind; the caller gives them their id, title and group.
#ifndef TRESK_REPORT_FIGURE_BUILDERS_H
#define TRESK_REPORT_FIGURE_BUILDERS_H

#include "report/figure.h"
#include "report/figure_plan.h"
#include "report/result.h"

namespace report
{

Figure wave_figure(const FigurePlan &plan);
Figure bars_figure(const FigurePlan &plan);
Figure plane_figure(const Result &result, const FigurePlan &plan);

} // namespace report

#endif
