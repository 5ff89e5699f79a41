// SPDX-License-Identifier: MIT
// What a history answers.
#ifndef TRESK_REPORT_HISTORY_COURSES_H
#define TRESK_REPORT_HISTORY_COURSES_H

#include "report/history.h"
#include "report/sqlite.h"

namespace report
{

// As History::courses().
Courses read_courses(Sqlite &database, std::size_t most_signals);

} // namespace report

#endif
