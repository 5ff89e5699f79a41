// SPDX-License-Identifier: MIT
#include "driver/tk_rerun.h"

#include "driver/number_index.h"
#include "driver/tk_modify.h"
#include "support/settings.h"

#include <cstring>

namespace
{

constexpr int kNoRerun = -1;

// Titles are told, not judged: a difference raises no bit. An absent title counts as an empty one.
void compare_titles(const RERUNform &ref, const RERUNform &com)
{
    if (ref.title == nullptr && com.title == nullptr) {
        return;
    }
    if (ref.title == nullptr) {
        transcript_printf("Reference file has missing title for rerun %d\n", ref.number);
    } else if (com.title == nullptr) {
        transcript_printf("Comparison file has missing title for rerun %d\n", ref.number);
    }
    const char *ref_title = ref.title != nullptr ? ref.title : "";
    const char *com_title = com.title != nullptr ? com.title : "";
    if (std::strcmp(ref_title, com_title) != 0) {
        transcript_printf("Run titles for rerun %d are different\n", ref.number);
        transcript_printf("Reference file title:\n%s\n", ref_title);
        transcript_printf("Comparison file title:\n%s\n", com_title);
    }
}

} // namespace

unsigned tk_rerun(PF *ref, PF *com)
{
    unsigned bits = 0;
    const NumberIndex<RERUNform> partners(com->rerun, kNoRerun);
    for (RERUNform *rerun = ref->rerun; rerun != nullptr; rerun = rerun->next) {
        RERUNform *partner = partners.find(rerun->number);
        if (partner == nullptr) {
            continue;
        }
        rerun->matched = 1;
        partner->matched = 1;
        if (!desert) {
            compare_titles(*rerun, *partner);
        }
        bits |= tk_modify(rerun, partner, rerun->number);
    }
    bits |= report_unmatched(ref->rerun, "rerun", "comparison");
    return bits | report_unmatched(com->rerun, "rerun", "reference");
}
