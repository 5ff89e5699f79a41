// SPDX-License-Identifier: MIT
// Pairing of the reruns of two punch files.
#ifndef TRESK_DRIVER_TK_RERUN_H
#define TRESK_DRIVER_TK_RERUN_H

#include "read/records.h"

// Compares every rerun with the comparison file's first one of its number, in the order of the
// reference, and reports those without partner. Returns an ExitBit set.
unsigned tk_rerun(PF *ref, PF *com);

#endif
