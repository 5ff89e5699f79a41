// SPDX-License-Identifier: MIT
#include "compare/missing_report.h"

#include "compare/missing_lines.h"

namespace
{

bool belongs_to(const Isoln &, int)
{
    return true;
}

bool belongs_to(const Wform &wform, int code)
{
    return wform.analysis == code;
}

template <typename Record> unsigned report_list(const Record *list, int code, Side lacking)
{
    unsigned count = 0;
    for (const Record *record = list; record != nullptr; record = record->next) {
        if (belongs_to(*record, code) && !record->matched) {
            ++count;
            report_missing_signal(*record, code, lacking);
        }
    }
    return count;
}

} // namespace

unsigned find_missing_wforms(Wform *ref, Wform *cmp, int code)
{
    const unsigned missing = report_list(ref, code, Side::COMPARISON);
    return missing + report_list(cmp, code, Side::REFERENCE);
}

unsigned find_missing_signals(Isoln *ref, Isoln *cmp, int code)
{
    const unsigned missing = report_list(ref, code, Side::COMPARISON);
    return missing + report_list(cmp, code, Side::REFERENCE);
}
