// SPDX-License-Identifier: MIT
// The binary points of a waveform: groups of ten, with a byte to be dropped behind each, and an end mark in
// place of an x. The reading pass only looks over them; their values are decoded when they are needed.
#ifndef TRESK_READ_BINARY_POINTS_H
#define TRESK_READ_BINARY_POINTS_H

#include "read/records.h"
#include "support/punch_stream.h"

#include <cstddef>

constexpr std::size_t kGroupPoints = 10; // points between two bytes to be dropped

// Bytes that the first count points of a DataFormat take, BINARY or BINARY_DBL.
std::size_t binary_length(int format, std::size_t count);

// Reads over the points of wform.format, up to and including the end mark; sets their count, their range and
// where they are. In the index modes the count alone.
void read_binary_points(PunchStream &stream, Wform &wform);

// Decodes count points that begin a group, into two columns.
void decode_points(int format, const char *bytes, double *x, double *val, std::size_t count);

#endif
