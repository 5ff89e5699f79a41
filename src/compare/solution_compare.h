// SPDX-License-Identifier: MIT
// Comparison of solutions: one value per signal (OP and .IN statements).
#ifndef TRESK_COMPARE_SOLUTION_COMPARE_H
#define TRESK_COMPARE_SOLUTION_COMPARE_H

#include "read/records.h"

// Pairs the values of two lists by name and type, tests each pair, prints the failing ones and unit
// differences, marks what was paired, and adds the failing pairs to *failcount. Values without
// partner are left to the caller. Returns the ExitBit set raised.
unsigned compare_signals(Isoln *ref, Isoln *cmp, int code, int *failcount);

// Judges one pair of values and its units, adds 1 to *failcount if the values fail. Returns an ExitBit
// set.
unsigned compare_value_pair(const Isoln &ref, const Isoln &cmp, int code, int *failcount);

// Each returns an ExitBit set. One list may be absent: that is reported.
unsigned op_compare(Isoln *ref, Isoln *cmp);
unsigned inop_compare(Isoln *ref, Isoln *cmp);
unsigned intr_compare(Isoln *ref, Isoln *cmp, int code); // INTR, or any other code for INPSS
unsigned indc_compare(INDCform *ref, INDCform *cmp);

#endif
