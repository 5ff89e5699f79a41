// SPDX-License-Identifier: MIT
// What a figure shows, as tables, for whoever cannot see it or wants the numbers.
#ifndef TRESK_REPORT_PAGE_NUMBERS_H
#define TRESK_REPORT_PAGE_NUMBERS_H

#include "report/figure.h"

#include <ostream>

namespace report
{

// Of waveforms their extents and the worst errors; of coefficients and of poles and zeros all of them.
void write_figure_numbers(std::ostream &out, const Figure &figure);

} // namespace report

#endif
