// SPDX-License-Identifier: MIT
// Looking ahead in the header of a signal: what its words mean shows only some words further on. The
// scanner is left anywhere: mark the place before, and go back. A bus range of the names looked at stays
// pending, without the elements that they were, as if the names had been read.
//
// Looking ahead costs a bounded number of passes over the file, however its names run on over line ends.
// What comes behind the end of a line depends on the line and on how it was left alone, as what comes
// behind an opening bracket in a section does on its place. Both are remembered, and never read again. What
// is not is a part of the line where looking ahead begins, and the reader goes on to the end of that line
// or, behind a word that names a bus range, over that word.
#ifndef TRESK_READ_LOOK_AHEAD_H
#define TRESK_READ_LOOK_AHEAD_H

#include "support/punch_stream.h"

// Whether the second signal name from here is PWL.
bool tk_lookAheadForPwl(PunchStream &stream);

// Whether a signal name DELAY comes here, and behind it a field that is not PWL.
bool tk_lookAheadForDelay(PunchStream &stream);

// Whether a signal name comes here that is the word of a binary data format.
bool tk_lookAheadForFormat(PunchStream &stream);

#endif
