// SPDX-License-Identifier: MIT
// The points of a swept signal in text. This is where a run on text spends its reading time.
#ifndef TRESK_READ_TEXT_POINTS_H
#define TRESK_READ_TEXT_POINTS_H

#include "read/records.h"
#include "support/punch_stream.h"

#include <functional>

// Reads text points up to the end of the logical line, x and y alternating; first_x converts the
// token already taken. Of an odd number of values the last x is dropped. Numbers, ranges and points go
// to wform; in the index modes only their number.
void read_text_points(PunchStream &stream, Wform &wform, const std::function<double()> &first_x);

#endif
