// SPDX-License-Identifier: MIT
// Reader of the statements that begin with "." in a punch file: .IN and .FORCE.
#ifndef TRESK_READ_CONTROL_STATEMENTS_H
#define TRESK_READ_CONTROL_STATEMENTS_H

#include "read/tree_place.h"
#include "support/punch_stream.h"

// Reads the statement at which the scanner stands, into the current modify. An unknown statement is
// skipped with a warning.
// Kept: the warning names the file, not the statement (docs/punch-format.md, "What the transcript
// shows").
void read_control_statement(PunchStream &stream, TreePlace &place);

#endif
