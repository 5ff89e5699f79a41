// SPDX-License-Identifier: MIT
// "tresk-report pair": runs tresk and leaves a report of what it found.
#ifndef TRESK_REPORT_PAIR_H
#define TRESK_REPORT_PAIR_H

#include "report/tresk_arguments.h"

#include <cstdint>
#include <string>

namespace report
{

// Exit codes beside the grades 0 to 5 and kNoGrade.
constexpr int kWrongCall = 64;
constexpr int kNotWritten = 73; // there is a grade, but no report

struct PairOptions {
    std::string out; // folder of the report; empty: named after the regression file, in the current folder
    int figures = 50;
    std::int64_t data_bytes = std::int64_t{8} << 20; // of waveforms in a page
    std::int64_t findings = 100000;                  // at most in a report, the worst ones
    bool always = false;                             // a page also for PASS
    bool quiet = false;                              // neither transcript nor the path of the page
    TreskArguments arguments;
};

// The comparison runs in a child of its own, which writes the report while all records are there, since
// whatever ends it must not end the report: of a child that dies this process writes what it left. Prints the
// transcript on standard error as it comes, and the path of a page on standard output. Returns the exit code.
int run_pair(const PairOptions &options);

} // namespace report

#endif
