// SPDX-License-Identifier: MIT
// Reader of one swept signal: its name, its header (units, time shift, data format) and its points.
#ifndef TRESK_READ_WAVEFORM_READER_H
#define TRESK_READ_WAVEFORM_READER_H

#include "read/records.h"
#include "support/punch_stream.h"

// Data format of the run so far, and 1 once both binary formats were met.
// Kept: neither is reset between the two files, so the second file's format reports on both
// (docs/verdict.md, "What is not a value").
extern int fsDataFormat;
extern int fsFormatErr;

// Reads the signal whose line the scanner stands on, in the given analysis, counts it, and returns
// it; never null. In the index modes the points are counted, not kept. A data format that does not
// exist ends the run with status 1, an analysis without swept signals with status -1.
Wform *tk_read_wform(PunchStream &stream, int analysis);

#endif
