// SPDX-License-Identifier: MIT
// Point-by-point comparison of swept signals, in list order, whatever their x values are.
#ifndef TRESK_COMPARE_SWEEP_COMPARE_H
#define TRESK_COMPARE_SWEEP_COMPARE_H

#include "compare/point_walk.h"
#include "read/records.h"

// Compare the signals of one analysis: small-signal analyses, DC sweeps and measure results. Phases
// (units DEGREES) of small-signal analyses are compared the shorter way round. Return an ExitBit set.
unsigned ac_compare(Wform *ref, Wform *cmp, unsigned code);
unsigned dc_compare(Wform *ref, Wform *cmp, unsigned code);

// The walks that they judge by.
void walk_ac_points(const Wform &ref, const Wform &cmp, const PointVisitor &visit);
void walk_dc_points(const Wform &ref, const Wform &cmp, const PointVisitor &visit);

#endif
