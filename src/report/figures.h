// SPDX-License-Identifier: MIT
// The figures of a result: which findings get one, and how much of their waveforms.
#ifndef TRESK_REPORT_FIGURES_H
#define TRESK_REPORT_FIGURES_H

#include "report/figure.h"
#include "report/result.h"

#include <cstdint>
#include <vector>

namespace report
{

// Figures of the failing signals, worst first, at most `most`: one for each waveform, for each family of
// magnitude and phase over frequency, and for each block of poles and zeros. Results that are tables on the
// page (values, waveforms of one point) have none. Waveforms are cut to what draws the same picture where
// the data and the drawings of all figures would take more than budget_bytes of the page.
// Reads points again from the files, each waveform a fixed number of times; memory is bounded by the budget.
std::vector<Figure> make_figures(const Result &result, int most, std::int64_t budget_bytes);

} // namespace report

#endif
