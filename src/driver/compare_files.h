// SPDX-License-Identifier: MIT
// The comparison of two files as a whole.
#ifndef TRESK_DRIVER_COMPARE_FILES_H
#define TRESK_DRIVER_COMPARE_FILES_H

#include "read/records.h"

// Reads both files and compares them. Returns the exit status, an ExitBit set. Does not return from a
// data format that does not exist or from exhausted memory.
unsigned compare_files(PF *ref, PF *com);

#endif
