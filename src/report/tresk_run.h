// SPDX-License-Identifier: MIT
// Runs of tresk within this program.
#ifndef TRESK_REPORT_TRESK_RUN_H
#define TRESK_REPORT_TRESK_RUN_H

#include "compare/listener.h"

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace report
{

// A comparison that ended without a grade.
struct NoGrade : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Runs tresk in this process, which can run it once. Arguments without the name of the program. Returns
// its exit code.
int run_tresk_on(std::vector<std::string> arguments);

// "ended by signal 9 (Killed)" or "ended with exit code 1" of a status that waitpid gives.
std::string end_text(int wait_status);

// Runs tresk with a listener in a process of its own, without a transcript. What the listener has heard stays
// there but for the answer, which is made when the run has ended. Throws NoGrade where there is none.
std::string run_apart(const std::vector<std::string> &arguments, Listener &heard,
                      const std::function<std::string()> &answer);

} // namespace report

#endif
