// SPDX-License-Identifier: MIT
#include "driver/tk_rerun.h"

#include "compare/missing_lines.h"
#include "compare/rerun_modify_lines.h"
#include "driver/number_index.h"
#include "driver/tk_modify.h"
#include "support/settings.h"

namespace
{

constexpr int kNoRerun = -1;

unsigned compare_reruns(RERUNform &ref, RERUNform &com)
{
    ref.matched = 1;
    com.matched = 1;
    note_rerun_pair(ref, com);
    const unsigned bits = desert ? 0 : report_titles(ref, com);
    return bits | tk_modify(&ref, &com, ref.number);
}

unsigned report_missing_reruns(const RERUNform *list, Side lacking)
{
    return report_unmatched(
        list, [lacking](const RERUNform &rerun) { return report_missing_rerun(rerun, lacking); });
}

} // namespace

unsigned tk_rerun(PF *ref, PF *com)
{
    unsigned bits = 0;
    const NumberIndex<RERUNform> partners(com->rerun, kNoRerun);
    for (RERUNform *rerun = ref->rerun; rerun != nullptr; rerun = rerun->next) {
        if (RERUNform *partner = partners.find(rerun->number)) {
            bits |= compare_reruns(*rerun, *partner);
        }
    }
    leave_reruns();
    bits |= report_missing_reruns(ref->rerun, Side::COMPARISON);
    return bits | report_missing_reruns(com->rerun, Side::REFERENCE);
}
