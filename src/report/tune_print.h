// SPDX-License-Identifier: MIT
// What both kinds of tuning print.
#ifndef TRESK_REPORT_TUNE_PRINT_H
#define TRESK_REPORT_TUNE_PRINT_H

#include "report/tuning.h"

#include <cstddef>
#include <string>
#include <vector>

namespace report
{

constexpr std::size_t kMostSteps = 12;

// "default mode, -a 1e-12, -r 0.01".
std::string settings_text(const TuneResult &result);

// "97 % of the value" where the smallest tolerance that passes is such a part; else nothing.
std::string share_text(const Tuned &tuned);

// The steps of a knob, with a heading.
void print_steps(Knob knob, const std::vector<Step> &steps, std::size_t all, const char *what);

} // namespace report

#endif
