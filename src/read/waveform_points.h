// SPDX-License-Identifier: MIT
// The points of a swept signal, in text and both binary formats. This is where a run spends its
// reading time.
#ifndef TRESK_READ_WAVEFORM_POINTS_H
#define TRESK_READ_WAVEFORM_POINTS_H

#include "read/records.h"
#include "support/punch_stream.h"

#include <functional>

// Reads text points up to the end of the logical line, x and y alternating; first_x converts the
// token already taken. Of an odd number of values the last x is dropped. Numbers, ranges and points go
// to wform; in the index modes only their number.
void read_text_points(PunchStream &stream, Wform &wform, const std::function<double()> &first_x);

// Reads the binary points of wform.format from the stream, up to and including the end mark.
// Data layout: x, y, x, y ...; one byte to be dropped after every 10th point; the end mark in place
// of an x.
void read_binary_points(PunchStream &stream, Wform &wform);

#endif
