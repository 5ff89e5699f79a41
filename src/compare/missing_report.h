// SPDX-License-Identifier: MIT
// Reports of signals that found no partner.
#ifndef TRESK_COMPARE_MISSING_REPORT_H
#define TRESK_COMPARE_MISSING_REPORT_H

#include "read/records.h"

// Warns, under the table header of code, of every signal of that analysis that is unmatched in
// either list. Returns their number.
unsigned find_missing_wforms(Wform *ref, Wform *cmp, int code);

// The same for values, whatever their analysis.
unsigned find_missing_signals(Isoln *ref, Isoln *cmp, int code);

#endif
