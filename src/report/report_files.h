// SPDX-License-Identifier: MIT
// All files of a report but its transcript, which is there when they are written.
#ifndef TRESK_REPORT_REPORT_FILES_H
#define TRESK_REPORT_REPORT_FILES_H

#include "report/figure.h"
#include "report/output_folder.h"
#include "report/pair.h"
#include "report/result.h"

#include <vector>

namespace report
{

// The figures of the page, if there is to be one: a result that passes gets it only where it is asked for.
std::vector<Figure> page_figures(const Result &result, const PairOptions &options);

// Writes the files beside their names. Throws WriteFault.
void write_report_files(const OutputFolder &folder, const Result &result, std::vector<Figure> figures,
                        const PairOptions &options);

} // namespace report

#endif
