// SPDX-License-Identifier: MIT
// Comparison of .FORCE statements: solutions at points of time.
#ifndef TRESK_COMPARE_FORCE_COMPARE_H
#define TRESK_COMPARE_FORCE_COMPARE_H

#include "read/records.h"

// Compares every reference statement with every comparison statement of the same time. Either list
// may be absent, not both. Returns an ExitBit set.
unsigned force_compare(TPsoln *ref, TPsoln *cmp);

// Warns of every statement that is unmatched in either list. Returns their number.
unsigned find_missing_TPsolutions(TPsoln *ref, TPsoln *cmp);

#endif
