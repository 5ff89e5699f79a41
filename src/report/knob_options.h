// SPDX-License-Identifier: MIT
// Options of tresk that turn a knob.
#ifndef TRESK_REPORT_KNOB_OPTIONS_H
#define TRESK_REPORT_KNOB_OPTIONS_H

#include "report/judge.h"

#include <string>
#include <vector>

namespace report
{

// The smallest decimal number of so many digits (1 to 17) that is not below the value (>= 0).
std::string rounded_up(double value, int digits);

// "-a", "-r" or "-Ronly -r".
const char *knob_text(Knob knob);

// Options with a knob set to a number behind all others, since of what is set twice the last one counts.
std::vector<std::string> with_knob(const std::vector<std::string> &options, Knob knob,
                                   const std::string &number);

// Whether options set what the knob would.
bool turn_knob(const std::vector<std::string> &options, Knob knob);

// The number that is proposed for a knob: the smallest one that passes, rounded up, or exact where that would
// fail. Empty where there is none.
std::string proposal(const FailSet &fails, int digits);

} // namespace report

#endif
