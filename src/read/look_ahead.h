// SPDX-License-Identifier: MIT
// Looking ahead in the header of a signal: what its words mean shows only some words further on. The
// scanner is left anywhere: mark the place before, and go back. A bus range of the names looked at stays
// pending, without the elements that they were, as if the names had been read.
//
// All looking ahead together costs a bounded number of passes over the file, however names run on over line
// ends. What a name finds behind the end of a line depends on the line and on how it was left, and on
// nothing in front; what it finds behind an opening bracket, on the place of the bracket. Both are remembered
// and not read again. There are few ways to leave a line. What is read again is in the lines where looking
// ahead and its second name begin, and the reader behind it goes on at least to the end of the first of them.
// Only a header that names a bus range may leave the rest of its line to further headers; these begin within
// that range, behind brackets that are remembered.
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
