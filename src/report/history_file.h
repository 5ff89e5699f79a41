// SPDX-License-Identifier: MIT
// The file of a history: made whole, and looked at before anything in it is believed.
#ifndef TRESK_REPORT_HISTORY_FILE_H
#define TRESK_REPORT_HISTORY_FILE_H

#include "report/history.h"
#include "report/sqlite.h"

#include <memory>
#include <string>

namespace report
{

// Makes an empty history. Another process may do so at the same time: one file stays, and both go on with it.
// Throws HistoryFault.
void make_history(const std::string &path);

// Opens a history and checks it. Throws HistoryFault when it is none, of another version, or damaged; the
// file is as it was then. All of it is read before it is opened for writing; for reading, damage shows when
// it is met.
std::unique_ptr<Sqlite> open_history(const std::string &path, History::Access access);

} // namespace report

#endif
