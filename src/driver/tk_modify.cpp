// SPDX-License-Identifier: MIT
#include "driver/tk_modify.h"

#include "compare/missing_lines.h"
#include "compare/rerun_modify_lines.h"
#include "compare/tk_compare.h"
#include "driver/number_index.h"

namespace
{

constexpr int kNoModify = -10;

unsigned compare_modifies(MODIFYform &ref, MODIFYform &com, int rerun_number)
{
    ref.matched = 1;
    com.matched = 1;
    begin_modify_pair(rerun_number, ref, com);
    const unsigned bits = report_temperatures(ref, com);
    return bits | tk_compare_all(&ref, &com);
}

unsigned report_missing_modifies(const MODIFYform *list, Side lacking)
{
    return report_unmatched(
        list, [lacking](const MODIFYform &modify) { return report_missing_modify(modify, lacking); });
}

} // namespace

unsigned tk_modify(RERUNform *ref_rerun, RERUNform *com_rerun, int rerun_number)
{
    unsigned bits = 0;
    const NumberIndex<MODIFYform> partners(com_rerun->modify, kNoModify);
    for (MODIFYform *modify = ref_rerun->modify; modify != nullptr; modify = modify->next) {
        if (MODIFYform *partner = partners.find(modify->number)) {
            bits |= compare_modifies(*modify, *partner, rerun_number);
        }
    }
    leave_modifies();
    bits |= report_missing_modifies(ref_rerun->modify, Side::COMPARISON);
    return bits | report_missing_modifies(com_rerun->modify, Side::REFERENCE);
}
