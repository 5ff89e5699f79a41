// SPDX-License-Identifier: MIT
// Debug dump of parsed records (debug bits 1 and 2). Each dump ends with an empty line.
#ifndef TRESK_READ_RECORD_DUMP_H
#define TRESK_READ_RECORD_DUMP_H

#include "read/records.h"

// A list of values, labelled with the given AnalysisCode.
void print_isoln(const RERUNform *rerun, const MODIFYform *modify, const Isoln *values, int analysis);

void print_tpsoln(const RERUNform *rerun, const MODIFYform *modify, const TPsoln *solution);
void print_wform(const RERUNform *rerun, const MODIFYform *modify, const Wform *wform);
void print_pzform(const RERUNform *rerun, const MODIFYform *modify, const PZform *block);

// The whole file.
void print_all(const PF *file);

#endif
