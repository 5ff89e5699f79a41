// SPDX-License-Identifier: MIT
// Comparison of time-domain waveforms, which two runs rarely sample at the same times: by the areas
// under both curves over a common grid.
#ifndef TRESK_COMPARE_TRANSIENT_COMPARE_H
#define TRESK_COMPARE_TRANSIENT_COMPARE_H

#include "read/records.h"

// Combined extent of the pair being compared.
extern double xmin;
extern double xmax;
extern double ymin;
extern double ymax;
extern int maxpts;

// Compares all signals of analysis code (TR or PSS). Returns an ExitBit set.
unsigned tr_compare(Wform *ref, Wform *cmp, unsigned code);

#endif
