// SPDX-License-Identifier: MIT
// The process of a comparison.
#ifndef TRESK_REPORT_COMPARISON_H
#define TRESK_REPORT_COMPARISON_H

#include "report/handover.h"
#include "report/output_folder.h"
#include "report/pair.h"

namespace report
{

// The ends that the two processes have of each other.
struct ChildEnds {
    int transcript; // where to write it
    int go;         // where a byte comes when it is in its file
};

// Compares, waits until the parent has the transcript, and writes the report where there is a folder for it.
// Ends the process.
[[noreturn]] void compare_and_end(const PairOptions &options, const OutputFolder *folder,
                                  const ChildEnds &ends, Handover &handover);

// A result gets what the command line gives.
void put_arguments(const TreskArguments &arguments, Result &result);

} // namespace report

#endif
