// SPDX-License-Identifier: MIT
// Readers of named single values: .IN statements, OP analyses and .FORCE statements.
#ifndef TRESK_READ_SOLUTION_READER_H
#define TRESK_READ_SOLUTION_READER_H

#include "read/codes.h"
#include "read/records.h"
#include "support/punch_stream.h"

// Reads the values of an .IN statement of kind INOP to INDC2. Returns them in file order, null when
// there are none.
Isoln *tk_read_isoln(PunchStream &stream, AnalysisCode kind);

// Reads one text OP line, or a run of binary ones, in front of the values in list. Returns the new
// head: the newest value comes first. An unknown data format ends the run with status 1.
Isoln *tk_read_op(PunchStream &stream, Isoln *list);

// Reads a .FORCE statement met in the given analysis. Returns null, after a warning, when its time
// line is malformed; the line is skipped then.
TPsoln *tk_read_TPsoln(PunchStream &stream, int analysis);

#endif
