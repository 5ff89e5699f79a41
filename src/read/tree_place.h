// SPDX-License-Identifier: MIT
// The place in the tree of a punch file where results are hung while it is read, and what the
// headers above them have announced. Local to one call of readfile.
#ifndef TRESK_READ_TREE_PLACE_H
#define TRESK_READ_TREE_PLACE_H

#include "read/codes.h"
#include "read/list_tail.h"
#include "read/records.h"

struct TreePlace {
    explicit TreePlace(PF *root) : file(root), reruns(root->rerun)
    {
    }

    PF *file;
    RERUNform *rerun = nullptr; // current rerun and modify; both set or both null
    MODIFYform *modify = nullptr;

    ListTail<RERUNform> reruns;
    ListTail<MODIFYform> modifies; // of the current rerun
    ListTail<TPsoln> trforces;     // of the current modify, as the two below
    ListTail<TPsoln> pssforces;
    ListTail<Wform> signals;
    ListTail<PZform> blocks;

    int analysis = kNoAnalysis; // of the last ANALYSIS header
    bool first_header = true;   // no header has opened a modify yet
    char *xunits = nullptr;     // pending XUNITS and X_FUNCTION, copied to every signal read
    char *xfunc = nullptr;
    double force_time = 0.0; // pending transient time of the next pole-zero block
};

// Appends a rerun with one modify, and makes both current.
void open_rerun(TreePlace &place, int rerun_number, int modify_number, double temperature);

// Appends a modify to the current rerun, and makes it current.
void open_modify(TreePlace &place, int modify_number, double temperature);

// Makes rerun 0, modify 0 when something to be kept comes before any header.
void require_modify(TreePlace &place);

#endif
