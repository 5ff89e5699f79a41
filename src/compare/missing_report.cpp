// SPDX-License-Identifier: MIT
#include "compare/missing_report.h"

#include "compare/result_lines.h"
#include "support/transcript.h"

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

template <typename Record> unsigned report_list(const Record *list, int code, const char *other_file)
{
    unsigned count = 0;
    for (const Record *record = list; record != nullptr; record = record->next) {
        if (belongs_to(*record, code) && !record->matched) {
            ++count;
            print_tk_header(code);
            transcript_printf("Warning : signal %s  is not present in the %s file.\n", record->name,
                              other_file);
        }
    }
    return count;
}

} // namespace

unsigned find_missing_wforms(Wform *ref, Wform *cmp, int code)
{
    const unsigned missing = report_list(ref, code, "comparison");
    return missing + report_list(cmp, code, "reference");
}

unsigned find_missing_signals(Isoln *ref, Isoln *cmp, int code)
{
    const unsigned missing = report_list(ref, code, "comparison");
    return missing + report_list(cmp, code, "reference");
}
