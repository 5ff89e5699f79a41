// SPDX-License-Identifier: MIT
// All files of a report but its transcript, which is there when they are written.
#ifndef TRESK_REPORT_REPORT_FILES_H
#define TRESK_REPORT_REPORT_FILES_H

#include "report/output_folder.h"
#include "report/pair.h"
#include "report/result.h"

namespace report
{

// Writes them beside their names. A result that passes gets a page only where one is asked for. Throws
// WriteFault.
void write_report_files(const OutputFolder &folder, const Result &result, const PairOptions &options);

} // namespace report

#endif
