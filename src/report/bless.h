// SPDX-License-Identifier: MIT
// "tresk-report bless": regression files become the new golden ones.
#ifndef TRESK_REPORT_BLESS_H
#define TRESK_REPORT_BLESS_H

#include <string>
#include <vector>

namespace report
{

struct BlessOptions {
    std::string reason;
    std::string list; // file of paths; "-" is standard input
    std::string keep; // folder for the old golden files
    std::string out;  // that of the kit
    std::vector<std::string> paths;
    bool yes = false;
    bool even_nan = false;
};

// Prints on standard output what is done, or could be, and on standard error what is refused and why. Returns
// the exit code: 0, 1 when something is refused, kWrongCall.
int run_bless(const BlessOptions &options);

} // namespace report

#endif
