// SPDX-License-Identifier: MIT
// Reader of ANALYSIS headers, which open the analysis blocks of a punch file.
#ifndef TRESK_READ_ANALYSIS_HEADER_H
#define TRESK_READ_ANALYSIS_HEADER_H

#include "read/tree_place.h"
#include "support/punch_stream.h"

// Reads the header behind the word ANALYSIS, usually two lines:
//   * ANALYSIS = TR  PROGRAM = ...  DATE = ...  TIME = ...
//   * RERUN_NUMBER = 1, TEMPERATURE = 27.0, MODIFY = 0
// and makes the rerun and modify it names current. A header of the current modify only replaces its
// temperature. Returns false, after a message, when the header is malformed.
// Kept: a number that comes back after another one opens a second rerun or modify of that number
// (docs/punch-format.md, "Analysis header").
bool read_analysis_header(PunchStream &stream, TreePlace &place);

#endif
