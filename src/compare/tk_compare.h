// SPDX-License-Identifier: MIT
// The dispatcher of the comparison: runs every comparator on one pair of modifies.
#ifndef TRESK_COMPARE_TK_COMPARE_H
#define TRESK_COMPARE_TK_COMPARE_H

#include "read/records.h"

// Compares all results of two modifies (never null). Returns an ExitBit set.
unsigned tk_compare_all(MODIFYform *ref, MODIFYform *cmp);

// Compares all swept signals of a modify pair, analysis by analysis in the order of the analysis table.
// Returns an ExitBit set.
unsigned wform_compare(Wform *ref, Wform *cmp);

#endif
