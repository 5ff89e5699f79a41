// SPDX-License-Identifier: MIT
// Pairing of the modifies of two reruns.
#ifndef TRESK_DRIVER_TK_MODIFY_H
#define TRESK_DRIVER_TK_MODIFY_H

#include "read/records.h"

// Compares every modify with the other rerun's first one of its number, in the order of the
// reference, and reports those without partner. Returns an ExitBit set.
unsigned tk_modify(RERUNform *ref_rerun, RERUNform *com_rerun, int rerun_number);

#endif
