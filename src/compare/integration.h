// SPDX-License-Identifier: MIT
// Integration of a piecewise-linear waveform over a grid of equal intervals.
#ifndef TRESK_COMPARE_INTEGRATION_H
#define TRESK_COMPARE_INTEGRATION_H

#include "read/records.h"

// Adds the area under the waveform in each interval j * dx .. (j + 1) * dx to area[j + 1], for the
// entries 0 to ndiv + 1 that the array must have; the caller clears it. The offset by one is
// required: comparisons of the entries 0 to ndiv - 1 leave the last intervals out. Entry 0 is set
// to 0. Points that go back to an earlier interval are ignored; what lies outside the grid is left
// out. x and dx may be any double.
void intline(const Wform *w, double *area, double dx, int ndiv);

#endif
