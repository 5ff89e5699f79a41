// SPDX-License-Identifier: MIT
#include "driver/exit_grade.h"

#include "compare/exit_bits.h"
#include "support/settings.h"
#include "support/transcript.h"

namespace
{

// Removes more than the help text promises (reruns and analysis types too); harnesses rely on it.
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

int masked_status(int exit_status, const ExitMasks &masks)
{
    if (debugging(DEBUG_MASKS)) {
        transcript_printf(" exit status before masks = %d\n", exit_status);
        transcript_printf("    pem = %d, nem = %d\n", masks.positive, masks.negative);
    }
    int masked = exit_status & masks.positive & ~masks.negative;
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

void end_with_grade(int exit_status, const ExitMasks &masks)
{
    const int masked = masked_status(exit_status, masks);
    const ExitGrade grade = exit_grade(masked);
    transcript_printf("\n Comparison result:  %s", kGradeNames[grade]);
    if (grade == GRADE_PASS) {
        transcript_puts("\n\n");
    } else {
        transcript_printf("  (exit status = %d)\n\n", masked);
    }
    end_run(grade);
}
