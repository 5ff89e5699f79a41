// SPDX-License-Identifier: MIT
// What a history answers.
#ifndef TRESK_REPORT_HISTORY_COURSES_H
#define TRESK_REPORT_HISTORY_COURSES_H

#include "report/history.h"
#include "report/sqlite.h"

namespace report
{

// As History::recent_runs().
std::vector<RunMark> marks_of_recent_runs(Sqlite &database);

// As History::courses().
std::vector<PairCourse> read_courses(Sqlite &database, std::size_t most_signals);

} // namespace report

#endif
