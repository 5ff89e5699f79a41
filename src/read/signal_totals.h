// SPDX-License-Identifier: MIT
// The totals of what was read, printed after every modify and file, and the counters behind them.
#ifndef TRESK_READ_SIGNAL_TOTALS_H
#define TRESK_READ_SIGNAL_TOTALS_H

#include <vector>

// Results read since the totals were last taken, by kind. Raised by the readers.
extern int ACcnt, DCcnt, TRcnt, NOcnt, DIcnt, FOcnt, MRcnt, PSScnt, PACcnt, PXFcnt, PNOISEcnt, XFcnt, STBcnt;
extern int OPcnt, PZcnt;
extern int INOPcnt, INTRcnt, INPSScnt; // statements
extern int INDCcnt;                    // lists, two per complete statement
extern int TRFORCEcnt, PSSFORCEcnt;    // statements

// Values in the last statement of each kind; set to 0 where such a statement begins.
extern int INOPsigcnt, INTRsigcnt, INPSSsigcnt, INDCsigcnt, TRFORCEsigcnt, PSSFORCEsigcnt;

// What was read of one kind.
struct SignalTotal {
    int analysis;     // AnalysisCode; INDC1 stands for both lists of .IN DC
    const char *name; // as printed: "TR", "MEASURE"
    int statements;   // of .IN and .FORCE, 0 for other kinds
    int signals;      // of .IN and .FORCE, those of the last statement; of AC perhaps below 0
};

// The totals that are not 0, in the order of the transcript. Sets their counters to 0.
std::vector<SignalTotal> take_signal_totals();

// Takes the totals and prints a line for each. Silent in the MIREL and rdinp index modes, where the
// counters are left alone.
void print_signal_totals();

#endif
