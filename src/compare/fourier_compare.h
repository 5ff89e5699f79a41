// SPDX-License-Identifier: MIT
// Comparison of Fourier results: waveforms whose points are coefficients, x the frequency of the
// harmonic and y its magnitude or phase.
#ifndef TRESK_COMPARE_FOURIER_COMPARE_H
#define TRESK_COMPARE_FOURIER_COMPARE_H

#include "compare/point_walk.h"
#include "read/records.h"

// Compares all Fourier signals coefficient by coefficient. Returns an ExitBit set.
unsigned four_compare(Wform *ref, Wform *cmp);

// The walk that it judges by.
void walk_coefficients(const Wform &ref, const Wform &cmp, const PointVisitor &visit);

#endif
