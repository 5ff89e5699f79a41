// SPDX-License-Identifier: MIT
// Comparisons that are run for tuning, each in a process of its own.
#ifndef TRESK_REPORT_TUNING_H
#define TRESK_REPORT_TUNING_H

#include "report/tuner.h"

#include <cstdint>
#include <string>
#include <vector>

namespace report
{

// What a comparison found, with the arguments of tresk. Throws NoGrade where it comes to none.
TuneResult tune_comparison(const std::vector<std::string> &arguments);

// A result as text, and back.
std::string packed(const TuneResult &result);
TuneResult unpacked(const std::string &text);

struct Confirmation {
    int grade = 0;
    std::int64_t failing = 0; // findings that raise the bits of tolerances or of no numbers
};

// What tresk itself says to a proposal. Throws NoGrade.
Confirmation confirm(const std::vector<std::string> &arguments);

// From which part of a value on a tolerance hardly judges it any more.
constexpr double kLargeShare = 0.5;

// Whether a tolerance is such a part of the values of a signal or pair, as far as the error that needs the
// smallest one lets that be known.
bool hardly_judges(Knob knob, double tolerance, const FailSet &fails);

// "-a 8.8e-09   250" : what a number for a knob lets pass.
struct Step {
    std::string number;
    std::size_t passing = 0;
    std::size_t unjudged = 0; // of those that fail now, such that the number hardly judges
};

// The numbers, rounded up to so many digits, at which more of the failing sets pass, in rising order and at
// most so many of them, the last one included. Those that pass now are counted as long as they do.
std::vector<Step> staircase(Knob knob, const std::vector<const FailSet *> &failing,
                            const std::vector<const FailSet *> &passing, int digits, std::size_t most);

} // namespace report

#endif
