// SPDX-License-Identifier: MIT
// "tresk-report tune": the smallest tolerances that let pass what fails.
#ifndef TRESK_REPORT_TUNE_H
#define TRESK_REPORT_TUNE_H

#include "report/tresk_arguments.h"

namespace report
{

struct TuneOptions {
    int digits = 2; // of what is proposed
    // Two files and options of tresk; or no second file, and a folder of the kit in place of the first.
    TreskArguments arguments;
};

// Prints on standard output. Returns the exit code: 0 when every signal that fails can be made to pass, 1
// when one cannot, kNoGrade, kWrongCall.
int run_tune(const TuneOptions &options);

// The parts of it.
int tune_pair(const TuneOptions &options);
int tune_tree(const TuneOptions &options);

} // namespace report

#endif
