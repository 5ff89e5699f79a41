// SPDX-License-Identifier: MIT
// The traits of all analyses that the comparison knows, a row each.
#ifndef TRESK_COMPARE_ANALYSIS_TABLE_H
#define TRESK_COMPARE_ANALYSIS_TABLE_H

#include "compare/point_walk.h"
#include "compare/table_headers.h"
#include "read/codes.h"
#include "read/records.h"

#include <array>

// Compares all signals of an analysis. Returns an ExitBit set.
using SignalComparator = unsigned (*)(Wform *ref, Wform *cmp, unsigned code);

struct AnalysisRow {
    AnalysisCode code;
    const char *name;  // in table headers
    const char *label; // in the lines below a table
    const HeaderLayout *layout;
    SignalComparator comparator; // null for what is no waveform; tk_compare_all calls these
    SignalWalk walk;             // null where no points are judged
};

// In the order of the transcript.
using AnalysisTable = std::array<AnalysisRow, kAnalysisCount>;
const AnalysisTable &analysis_table();

// The row of a valid code.
const AnalysisRow &analysis_row(int code);

// Analysis name used in headers ("TR Waveform"); "Unknown" outside 0 to 21.
const char *into_string(unsigned code);

#endif
