// SPDX-License-Identifier: MIT
// The dispatcher of the comparison: runs every comparator on one pair of modifies.
#ifndef TRESK_COMPARE_TK_COMPARE_H
#define TRESK_COMPARE_TK_COMPARE_H

#include "read/records.h"

// Compares all results of two modifies (never null). Returns an ExitBit set.
unsigned tk_compare_all(MODIFYform *ref, MODIFYform *cmp);

#endif
