// SPDX-License-Identifier: MIT
// What the reading room knows of each analysis: a table with one row for each.
#ifndef TRESK_READ_ANALYSIS_TRAITS_H
#define TRESK_READ_ANALYSIS_TRAITS_H

#include "read/codes.h"

// What may stand between the name of a signal and its points.
enum class SignalHeader {
    NO_SIGNALS,     // no reader of signals is called with this analysis
    UNITS,          // YUNITS
    KIND_UNITS,     // YUNITS, by which noise and distortion signals are known
    SHIFT_AND_UNITS // the time shift of a piecewise-linear source, YUNITS
};

// The Y units that the index table gives a signal without YUNITS.
enum class DefaultYUnits {
    UNKNOWN, // VOLTS, after a message
    EMPTY,
    MEASURE,
    BY_LETTER,     // by the first letter of the name
    BY_TWO_LETTERS // by the first letter, or the second one of voltages
};

// The line of the signal totals.
struct TotalsTraits {
    int line;         // its place among the lines, from 0; kNoTotalsLine where another row has it
    const char *name; // as printed
    int &counter;     // of signals, or of .IN lists and .FORCE statements
    int *values;      // .IN and .FORCE: counter of the values of the last statement; null otherwise
};

// What the index table gives a signal that lacks it.
struct IndexTraits {
    const char *xunits;
    const char *xfunc;
    DefaultYUnits yunits;
};

struct AnalysisTraits {
    AnalysisCode code;
    const char *name;        // in the debug dump and the index table
    const char *header_word; // in ANALYSIS headers; null where no header names the analysis
    TotalsTraits totals;
    SignalHeader signal_header;
    IndexTraits index;
};

constexpr int kTotalsLines = kAnalysisCount - 1; // the two lists of .IN DC have one between them
constexpr int kNoTotalsLine = -1;

// The row of a code, for which is_analysis must hold.
const AnalysisTraits &traits_of(int code);

// The row whose totals are printed in a line, from 0 to kTotalsLines - 1.
const AnalysisTraits &traits_of_totals_line(int line);

// Name used by the debug dump and the index table ("TR FORCE"); "UNKNOWN" for what is no code.
const char *analysis_name(int code);

// Code of the analysis word of a header ("TR"), kNoAnalysis for any other word.
int analysis_of_header_word(const char *word);

#endif
