// SPDX-License-Identifier: MIT
// Process-wide state of the comparison room.
#ifndef TRESK_COMPARE_COMPARE_STATE_H
#define TRESK_COMPARE_COMPARE_STATE_H

#include "read/codes.h"

// 1 once the table header of an analysis was printed for the current modify pair. Cleared by the
// dispatcher, set by print_tk_header.
extern int headerPrinted[kAnalysisCount];

// 1 once the tolerance test met a value that is no number; never cleared, so that every later
// modify pair of the run counts as touched by it. Written by the tolerance test.
extern int glNANflag;

// Time of the .FORCE statement about to be reported, in seconds, and whether the next .FORCE header
// is to show it. Written by force_compare; the flag is cleared by print_tk_header.
extern double force_time;
extern int new_force_time;

// Combined extent of the transient pair being compared. Written by tr_compare.
extern double xmin;
extern double xmax;
extern double ymin;
extern double ymax;
extern int maxpts;

#endif
