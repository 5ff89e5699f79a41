// SPDX-License-Identifier: MIT
// Work that is shared out among processes.
#ifndef TRESK_REPORT_WORKERS_H
#define TRESK_REPORT_WORKERS_H

#include "report/progress.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace report
{

// Calls work(0) to work(count - 1), each once, in as many processes as there are processors. Returns what
// they return, empty where the process that was at it died. Throws std::runtime_error where none can be
// started.
std::vector<std::string> share_out(std::size_t count, const std::function<std::string(std::size_t)> &work,
                                   Progress &progress);

} // namespace report

#endif
