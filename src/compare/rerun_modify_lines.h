// SPDX-License-Identifier: MIT
// The lines about whole files, reruns and modifies. Those that report a finding print it, pass it on to
// the listener if there is one, and return the ExitBit set that it raises.
#ifndef TRESK_COMPARE_RERUN_MODIFY_LINES_H
#define TRESK_COMPARE_RERUN_MODIFY_LINES_H

#include "compare/events.h"

// Titles of two reruns that are not the same. An absent one counts as an empty one.
unsigned report_titles(const RERUNform &ref, const RERUNform &cmp);

// The banner of two modifies.
void begin_modify_pair(int rerun, const MODIFYform &ref, const MODIFYform &cmp);

// The temperature of both modifies, or both temperatures where they differ.
unsigned report_temperatures(const MODIFYform &ref, const MODIFYform &cmp);

// A file with both binary formats.
unsigned report_mixed_format(const PF &file, Side side);

// Files of different data formats.
unsigned report_formats(const PF &ref, const PF &cmp);

#endif
