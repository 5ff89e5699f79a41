// SPDX-License-Identifier: MIT
// Integration of a piecewise-linear waveform over a grid of equal intervals.
#ifndef TRESK_COMPARE_INTEGRATION_H
#define TRESK_COMPARE_INTEGRATION_H

#include "read/records.h"

// Adds the area under the waveform in each interval j * dx .. (j + 1) * dx to area[j + 1], for the
// entries 0 to ndiv + 1 that the array must have. The caller clears all of them that it reads; entry 0,
// which takes the last interval below 0, is set to 0 first. Points that go back to an earlier interval
// are ignored; what lies outside the entries is left out. x and dx may be any double.
// Kept: with the offset by one, comparisons of the entries 0 to ndiv - 1 leave the last intervals out
// (docs/verdict.md, "Waveforms over time").
void intline(const Wform *w, double *area, double dx, int ndiv);

#endif
