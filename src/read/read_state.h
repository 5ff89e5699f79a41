// SPDX-License-Identifier: MIT
// Process-wide state of the reading room. It carries over from the first file of a run into the
// second.
#ifndef TRESK_READ_READ_STATE_H
#define TRESK_READ_READ_STATE_H

#include "read/records.h"

#include <cstddef>
#include <cstdint>

// Both files of the run; made by the driver.
extern PF *ref_file; // golden
extern PF *com_file; // regression

// Length of the longest signal or value name of either file: the width of the name column of every
// result table. Raised by every reader through note_name_length.
extern std::uint64_t glMaxSigLen;

// Date and time of the last DATE header; written by the header reader, for the index table.
extern char *rundate;
extern char *runtime;

// Offset at which the index table of the file being read begins; 0 outside the index modes.
// Written when the file is opened.
extern std::int64_t file_end;

// Data format of the run so far, and whether both binary formats were met. Never reset between the
// two files: a mix across the pair is what the second file's format reports. Written by the
// waveform reader.
extern int fsDataFormat;
extern int fsFormatErr;

// Results read since the totals were last printed, by kind. Raised by the readers, printed and
// cleared by print_signal_totals.
extern int ACcnt, DCcnt, TRcnt, NOcnt, DIcnt, FOcnt, MRcnt, PSScnt, PACcnt, PXFcnt, PNOISEcnt, XFcnt, STBcnt;
extern int OPcnt, PZcnt;
extern int INOPcnt, INTRcnt, INPSScnt; // statements
extern int INDCcnt;                    // lists, two per complete statement
extern int TRFORCEcnt, PSSFORCEcnt;    // statements

// Values in the last statement of each kind; set to 0 where such a statement begins.
extern int INOPsigcnt, INTRsigcnt, INPSSsigcnt, INDCsigcnt, TRFORCEsigcnt, PSSFORCEsigcnt;

inline void note_name_length(std::size_t length)
{
    if (length > glMaxSigLen) {
        glMaxSigLen = length;
    }
}

#endif
