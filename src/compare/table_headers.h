// SPDX-License-Identifier: MIT
// The headers and ends of the tables of the transcript.
#ifndef TRESK_COMPARE_TABLE_HEADERS_H
#define TRESK_COMPARE_TABLE_HEADERS_H

#include "read/codes.h"

#include <cstddef>

// 1 once the table header of an analysis was printed for the current modify pair. Cleared by
// begin_tables, set by print_tk_header.
extern int headerPrinted[kAnalysisCount];

// Time of the .FORCE statement about to be reported, in seconds, and whether the next .FORCE header
// is to show it. Set by announce_force_time; the flag is cleared by print_tk_header.
extern double force_time;
extern int new_force_time;

// A table header: the opening line (with the analysis name), the ruler up to and behind the name
// column. The ruler is filled so that it lines up with names longer than fill_from.
struct HeaderLayout {
    const char *opening;
    const char *ruler_start;
    std::size_t fill_from;
    const char *ruler_end;
    bool shows_force_time;
};

extern const HeaderLayout kInitialLayout; // .IN statements
extern const HeaderLayout kForceLayout;   // .FORCE statements
extern const HeaderLayout kSignalLayout;  // one error a signal
extern const HeaderLayout kSweepLayout;   // counts and largest errors of points
extern const HeaderLayout kFourierLayout; // coefficients

// Begins the tables of a modify pair, below an empty line.
void begin_tables();

// Lets the next .FORCE header show this time, in seconds.
void announce_force_time(double time);

// Prints the table header of an analysis, unless it was printed for this modify pair already.
void print_tk_header(int code);

// The two lines that end a section, each only when its count is above 0, and an empty line.
void print_tk_summary(int fails, int missing, const char *label);

#endif
