// SPDX-License-Identifier: MIT
#include "driver/exit_grade.h"

#include "compare/events.h"
#include "support/exit_bits.h"
#include "support/settings.h"
#include "support/transcript.h"

namespace
{

// Kept: removes more than the help text promises, reruns and analysis types too (docs/verdict.md, "Which
// finding decides").
constexpr int kDesertMask = EXIT_SIGNALS | EXIT_VARIANTS | EXIT_ANALYSES | EXIT_UNITS | EXIT_FORMAT;

struct GradeRule {
    int bits;
    ExitGrade grade;
};

// The first rule of which any bit is set decides.
constexpr GradeRule kGradeRules[] = {
    {EXIT_NAN, GRADE_FAIL_SV},
    {EXIT_UNITS | EXIT_FORMAT, GRADE_FAIL_I},
    {EXIT_SIGNALS, GRADE_FAIL_PV},
    {EXIT_TOLERANCE, GRADE_FAIL_V},
    {EXIT_VARIANTS | EXIT_ANALYSES, GRADE_FAIL_PSV},
};

constexpr const char *kGradeNames[] = {"PASS", "FAIL_I", "FAIL_PV", "FAIL_V", "FAIL_PSV", "FAIL_SV"};

} // namespace

int masked_status(unsigned exit_status, const ExitMasks &masks)
{
    const auto status = static_cast<int>(exit_status);
    if (debugging(DEBUG_MASKS)) {
        transcript_printf(" exit status before masks = %d\n", status);
        transcript_printf("    pem = %d, nem = %d\n", masks.positive, masks.negative);
    }
    int masked = status & masks.positive & ~masks.negative;
    if (desert) {
        if (debugging(DEBUG_MASKS)) {
            transcript_printf("    desert nem = %d\n", kDesertMask);
        }
        masked &= ~kDesertMask;
    }
    return masked;
}

ExitGrade exit_grade(int masked)
{
    if (masked == 0) {
        return GRADE_PASS;
    }
    for (const GradeRule &rule : kGradeRules) {
        if ((masked & rule.bits) != 0) {
            return rule.grade;
        }
    }
    return GRADE_FAIL_SV;
}

const char *grade_name(ExitGrade grade)
{
    return kGradeNames[grade];
}

ExitGrade report_grade(unsigned exit_status, const ExitMasks &masks)
{
    const int masked = masked_status(exit_status, masks);
    const ExitGrade grade = exit_grade(masked);
    transcript_printf("\n Comparison result:  %s", grade_name(grade));
    if (grade == GRADE_PASS) {
        transcript_puts("\n\n");
    } else {
        transcript_printf("  (exit status = %d)\n\n", masked);
    }
    note_end({exit_status, masked, grade});
    return grade;
}
