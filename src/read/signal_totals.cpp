// SPDX-License-Identifier: MIT
#include "read/signal_totals.h"

#include "read/read_state.h"
#include "support/settings.h"
#include "support/transcript.h"

namespace
{

struct StatementTotal {
    int &statements;
    const int &values;
    const char *name;
};

struct SignalTotal {
    int &signals;
    const char *name;
};

const StatementTotal kInTotals[] = {
    {INOPcnt, INOPsigcnt, "OP"},
    {INTRcnt, INTRsigcnt, "TR"},
    {INPSScnt, INPSSsigcnt, "PSS"},
    {INDCcnt, INDCsigcnt, "DC"},
};

const StatementTotal kForceTotals[] = {
    {TRFORCEcnt, TRFORCEsigcnt, "TR"},
    {PSSFORCEcnt, PSSFORCEsigcnt, "PSS"},
};

const SignalTotal kSignalTotals[] = {
    {OPcnt, "OP"},         {TRcnt, "TR"},         {PSScnt, "PSS"},    {PACcnt, "PAC"}, {PXFcnt, "PXF"},
    {PNOISEcnt, "PNOISE"}, {MRcnt, "MEASURE"},    {FOcnt, "Fourier"}, {DCcnt, "DC"},   {ACcnt, "AC"},
    {NOcnt, "NOISE"},      {DIcnt, "DISTORTION"}, {XFcnt, "XF"},      {PZcnt, "PZ"},   {STBcnt, "STB"},
};

// Takes the count of a total, leaving 0 behind.
int take(int &count)
{
    const int taken = count;
    count = 0;
    return taken;
}

} // namespace

void print_signal_totals()
{
    if (indexmirel || indexrdinp) {
        return;
    }
    bool found = false;
    for (const StatementTotal &total : kInTotals) {
        if (take(total.statements) != 0) {
            transcript_printf("    Found .IN %s statement with %d signal(s)\n", total.name, total.values);
            found = true;
        }
    }
    for (const StatementTotal &total : kForceTotals) {
        if (const int count = take(total.statements)) {
            transcript_printf("    Found %d %s .FORCE statement(s) with %d signal(s)\n", count, total.name,
                              total.values);
            found = true;
        }
    }
    for (const SignalTotal &total : kSignalTotals) {
        if (const int count = take(total.signals)) {
            transcript_printf("    Found %d %s signal(s)\n", count, total.name);
            found = true;
        }
    }
    if (!found) {
        transcript_puts("  WARNING : No signals found in file...\n");
    }
    transcript_puts("\n");
}
