// SPDX-License-Identifier: MIT
// What the reader of one punch file knows while it reads: the place in the tree that results are
// hung on, and what headers have announced. Local to one call of readfile.
#ifndef TRESK_READ_READER_STATE_H
#define TRESK_READ_READER_STATE_H

#include "read/codes.h"
#include "read/records.h"
#include "support/punch_stream.h"

struct ReaderState {
    PunchStream *stream = nullptr;
    PF *file = nullptr;
    int analysis = kNoAnalysis; // of the last ANALYSIS header
    RERUNform *rerun = nullptr; // current rerun and modify; both set or both null
    MODIFYform *modify = nullptr;
    Wform *last_signal = nullptr; // of the current modify, once it has one
    PZform *last_block = nullptr;
    TPsoln *last_trforce = nullptr; // of the current modify
    TPsoln *last_pssforce = nullptr;
    bool new_modify = false;  // the next signal is the first of its modify
    bool first_header = true; // no header has opened a modify yet
    char *xunits = nullptr;   // pending XUNITS and X_FUNCTION, copied to every signal read
    char *xfunc = nullptr;
    double force_time = 0.0; // pending transient time of the next pole-zero block
};

// Appends a rerun with one modify, and makes both current.
void open_rerun(ReaderState &state, int rerun_number, int modify_number, double temperature);

// Appends a modify to the current rerun, and makes it current.
void open_modify(ReaderState &state, int modify_number, double temperature);

// Makes rerun 0, modify 0 when something to be kept comes before any header.
void require_modify(ReaderState &state);

#endif
