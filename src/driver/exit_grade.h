// SPDX-License-Identifier: MIT
// From the exit status, a set of ExitBit categories, to the one grade that the process exits with.
#ifndef TRESK_DRIVER_EXIT_GRADE_H
#define TRESK_DRIVER_EXIT_GRADE_H

enum ExitGrade : int {
    GRADE_PASS = 0,
    GRADE_FAIL_I = 1,   // informational
    GRADE_FAIL_PV = 2,  // possible violation
    GRADE_FAIL_V = 3,   // violation
    GRADE_FAIL_PSV = 4, // possible severe violation
    GRADE_FAIL_SV = 5   // severe violation
};

// Categories that the user wants to see (-pem) and not to see (-nem).
struct ExitMasks {
    int positive = 65535;
    int negative = 0;
};

// What is left of the exit status behind the masks, that of -desert included.
int masked_status(unsigned exit_status, const ExitMasks &masks);

// The grade of a masked status. A NaN outranks everything.
// Kept: then informational differences win over violations: the order decides, not the grade numbers
// (docs/verdict.md, "Which finding decides").
ExitGrade exit_grade(int masked);

// "PASS", "FAIL_I" ...
const char *grade_name(ExitGrade grade);

// Prints the result of a run. Returns its grade.
ExitGrade report_grade(unsigned exit_status, const ExitMasks &masks);

#endif
