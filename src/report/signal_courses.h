// SPDX-License-Identifier: MIT
// How signals came to where they are, over all pairs of a tree.
#ifndef TRESK_REPORT_SIGNAL_COURSES_H
#define TRESK_REPORT_SIGNAL_COURSES_H

#include "report/history.h"

#include <string>
#include <unordered_map>

namespace report
{

// What a signal is known by where its pairs do not matter: analysis, name, and what is wrong with it, "fails"
// or "signal missing in golden".
std::string signal_id(const std::string &analysis, const std::string &name, const std::string &what);

// In each run the worst of all pairs: failed in any, not known in any, passed. It fails since the first run
// of the pair that fails for longest. Flaps are not counted.
std::unordered_map<std::string, Course> courses_of_signals(const Courses &courses);

} // namespace report

#endif
