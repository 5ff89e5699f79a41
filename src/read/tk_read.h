// SPDX-License-Identifier: MIT
// Reader of a whole punch file.
#ifndef TRESK_READ_TK_READ_H
#define TRESK_READ_TK_READ_H

#include "read/records.h"

enum ReadResult : int {
    READ_GOOD = 0,      // perhaps with warnings
    READ_SYNTAX = -1,   // malformed; the tree holds what was read before
    READ_MISSING = -2,  // there is no such file
    READ_UNOPENED = -3, // the file could not be opened for another reason
};

// Reads the file called file->name into the tree below file, up to its end or its index table. In
// the index modes, writes the index table as it goes. Faults are reported on the transcript.
int readfile(PF *file);

#endif
