// SPDX-License-Identifier: MIT
// Reader of pole-zero result blocks.
#ifndef TRESK_READ_POLE_ZERO_READER_H
#define TRESK_READ_POLE_ZERO_READER_H

#include "read/records.h"
#include "support/punch_stream.h"

// Reads the block whose first line the scanner stands on. A block that does not follow the layout is
// skipped up to the next ANALYSIS header, with a warning; the result is null then.
PZform *tk_read_pzform(PunchStream &stream);

// Reads poles or zeros (three numbers each) up to the next "*" line. Returns them in file order,
// null when there are none.
TRI *tk_read_TRI_list(PunchStream &stream);

#endif
