// SPDX-License-Identifier: MIT
// The totals of what was read, printed after every modify and file.
#ifndef TRESK_READ_SIGNAL_TOTALS_H
#define TRESK_READ_SIGNAL_TOTALS_H

// Prints a line for every counter that is not 0 and sets it to 0. Silent in the MIREL and rdinp
// index modes, where the counters are left alone.
void print_signal_totals();

#endif
