// SPDX-License-Identifier: MIT
// The findings of a report that was written before, as a history keeps them.
#ifndef TRESK_REPORT_RUN_FINDINGS_H
#define TRESK_REPORT_RUN_FINDINGS_H

#include "report/history.h"

#include <istream>

namespace report
{

// Reads the judged findings of a result.json into a pair, one by one: memory is that of what is kept, the
// worst 1000. False when it is no such file, or one of a later schema; the pair is as it was then.
bool read_run_findings(std::istream &json, RunPair &pair);

} // namespace report

#endif
