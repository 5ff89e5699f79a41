// SPDX-License-Identifier: MIT
// Point-by-point comparison of swept signals, in list order, whatever their x values are.
#ifndef TRESK_COMPARE_SWEEP_COMPARE_H
#define TRESK_COMPARE_SWEEP_COMPARE_H

#include "read/records.h"

// Compares all swept signals of a modify pair, analysis by analysis in a fixed order. Returns an
// ExitBit set.
unsigned wform_compare(Wform *ref, Wform *cmp);

// Compare the signals of one analysis: small-signal analyses, DC sweeps and measure results. Phases
// (units DEGREES) of small-signal analyses are compared the shorter way round. Return an ExitBit set.
unsigned ac_compare(Wform *ref, Wform *cmp, unsigned code);
unsigned dc_compare(Wform *ref, Wform *cmp, unsigned code);

#endif
