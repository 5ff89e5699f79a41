// SPDX-License-Identifier: MIT
// From a rawfile to a punch file.
#ifndef RAW2PUNCH_CONVERTER_H
#define RAW2PUNCH_CONVERTER_H

#include "raw2punch/plot_kind.h"
#include "raw2punch/point_format.h"
#include "raw2punch/raw_data.h"
#include "raw2punch/report.h"
#include "raw2punch/signals.h"

#include <optional>
#include <string>
#include <vector>

// What plots of a name become.
struct PlotRule {
    std::string name; // in lower case, what the name of the plot holds
    Analysis analysis = Analysis::SKIPPED;
};

struct Options {
    std::string input;
    std::string output;
    PunchFormat format = PunchFormat::TEXT;
    std::vector<Function> functions = {Function::DECIBELS, Function::DEGREES};
    std::optional<std::string> log;
    std::vector<double> temperatures; // of the runs in turn, or one of all
    std::optional<std::string> title;
    int first_rerun = 1;
    int first_modify = 0;
    std::vector<PlotRule> rules; // the first that fits counts
    DataHints hints;
};

// Reads the rawfile and writes the punch file. Throws Fault, and leaves nothing, when it cannot.
void convert(const Options &options, Report &report);

#endif
