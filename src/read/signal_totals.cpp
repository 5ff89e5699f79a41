// SPDX-License-Identifier: MIT
#include "read/signal_totals.h"

#include "read/analysis_traits.h"
#include "support/settings.h"
#include "support/transcript.h"

#include <utility>

int ACcnt, DCcnt, TRcnt, NOcnt, DIcnt, FOcnt, MRcnt, PSScnt, PACcnt, PXFcnt, PNOISEcnt, XFcnt, STBcnt;
int OPcnt, PZcnt;
int INOPcnt, INTRcnt, INPSScnt;
int INDCcnt;
int TRFORCEcnt, PSSFORCEcnt;
int INOPsigcnt, INTRsigcnt, INPSSsigcnt, INDCsigcnt, TRFORCEsigcnt, PSSFORCEsigcnt;

namespace
{

void print_total(const SignalTotal &total)
{
    if (total.statements == 0) {
        transcript_printf("    Found %d %s signal(s)\n", total.signals, total.name);
    } else if (total.analysis == TR_FORCE || total.analysis == PSS_FORCE) {
        transcript_printf("    Found %d %s .FORCE statement(s) with %d signal(s)\n", total.statements,
                          total.name, total.signals);
    } else {
        transcript_printf("    Found .IN %s statement with %d signal(s)\n", total.name, total.signals);
    }
}

} // namespace

std::vector<SignalTotal> take_signal_totals()
{
    std::vector<SignalTotal> totals;
    for (int line = 0; line < kTotalsLines; ++line) {
        const AnalysisTraits &traits = traits_of_totals_line(line);
        if (const int count = std::exchange(traits.totals.counter, 0)) {
            const int *values = traits.totals.values;
            totals.push_back({traits.code, traits.totals.name, values != nullptr ? count : 0,
                              values != nullptr ? *values : count});
        }
    }
    return totals;
}

void print_signal_totals()
{
    if (indexmirel || indexrdinp) {
        return;
    }
    const std::vector<SignalTotal> totals = take_signal_totals();
    for (const SignalTotal &total : totals) {
        print_total(total);
    }
    if (totals.empty()) {
        transcript_puts("  WARNING : No signals found in file...\n");
    }
    transcript_puts("\n");
}
