// SPDX-License-Identifier: MIT
// Comparison of pole-zero results.
#ifndef TRESK_COMPARE_POLE_ZERO_COMPARE_H
#define TRESK_COMPARE_POLE_ZERO_COMPARE_H

#include "read/records.h"

// Compares ports, type, time and the four root lists of two blocks. Either may be absent, not both.
// Returns an ExitBit set.
unsigned pzform_compare(const PZform *ref, const PZform *cmp);

// Compares two root lists, each root with the one at the same place, as points (mag, phase) of a
// plane; a pair on different sides of mag = 0 fails too. Prints the failing pairs, adds their number
// to *failcount, and reports roots without partner. kind is a RootKind. Returns an ExitBit set.
unsigned compare_pz_signals(const TRI *ref, const TRI *cmp, int kind, int *failcount);

#endif
