// SPDX-License-Identifier: MIT
// Adding a run to a history.
#ifndef TRESK_REPORT_HISTORY_ADD_H
#define TRESK_REPORT_HISTORY_ADD_H

#include "report/history.h"
#include "report/sqlite.h"

namespace report
{

// As History::add().
Added add_run(Sqlite &database, const Run &run);

} // namespace report

#endif
