// SPDX-License-Identifier: MIT
// The files of a report that programs read. All are made of the result alone.
#ifndef TRESK_REPORT_WRITERS_H
#define TRESK_REPORT_WRITERS_H

#include "report/result.h"

#include <ostream>

namespace report
{

// result.json, as result-1.schema.json describes it; one finding a line.
void write_result_json(std::ostream &out, const Result &result);

// findings.csv: a heading and a row for each finding, worst first, as RFC 4180 has it.
void write_findings_csv(std::ostream &out, const Result &result);

// summary.tsv: one line of grade, masked status, failing, missing, differences, worst analysis, signal, abs,
// rel, seconds, SHA-256 of the golden and of the regression file. Fields without a value are empty.
void write_summary_tsv(std::ostream &out, const Result &result);

} // namespace report

#endif
