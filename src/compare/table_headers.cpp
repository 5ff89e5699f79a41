// SPDX-License-Identifier: MIT
#include "compare/table_headers.h"

#include "compare/analysis_table.h"
#include "read/name_length.h"
#include "read/records.h"
#include "support/transcript.h"

#include <algorithm>
#include <string>

int headerPrinted[kAnalysisCount] = {};
double force_time = 0.0;
int new_force_time = 0;

const HeaderLayout kInitialLayout = {"\n%s comparison by node voltage, or ~device internal voltage :\n",
                                     "===signal_name=", 7, "abs========rel========abs*rel===\n", false};
const HeaderLayout kForceLayout = {
    "\n%s comparison by node voltage, ~device internal voltage, or *inductor current :\n",
    "===signal_name=", 7, "abs========rel========abs*rel===\n", true};
const HeaderLayout kSignalLayout = {"%s comparison by signal name :\n", "===signal_name=", 8,
                                    "abs========rel========abs*rel===\n", false};
const HeaderLayout kSweepLayout = {"\n%s sweep comparison by signal name :\n", "===signal_name=", 9,
                                   "fails=====max abs=====max rel=====abs*rel===\n", false};
const HeaderLayout kFourierLayout = {"Fourier results comparison by signal name :\n", "==signal_name=", 10,
                                     "coeff===freq=======abs========rel========abs*rel===\n", false};

namespace
{

void print_force_time()
{
    if (force_time == kUnknownTime) {
        transcript_puts(".FORCE at time = UNKNOWN:\n");
    } else {
        transcript_printf(".FORCE at time = %g:\n", force_time);
    }
    new_force_time = 0;
}

} // namespace

void begin_tables()
{
    std::fill_n(headerPrinted, kAnalysisCount, 0);
    transcript_puts("\n");
}

void announce_force_time(double time)
{
    new_force_time = 1;
    force_time = time;
}

void print_tk_header(int code)
{
    if (!is_analysis(code) || headerPrinted[code]) {
        return;
    }
    headerPrinted[code] = 1;
    const HeaderLayout &layout = *analysis_row(code).layout;
    transcript_printf(layout.opening, into_string(static_cast<unsigned>(code)));
    transcript_puts(layout.ruler_start);
    transcript_puts(std::string(glMaxSigLen > layout.fill_from ? glMaxSigLen - layout.fill_from : 0, '='));
    transcript_puts(layout.ruler_end);
    if (layout.shows_force_time && new_force_time) {
        print_force_time();
    }
}

void print_tk_summary(int fails, int missing, const char *label)
{
    if (fails > 0) {
        transcript_printf("\nFound %d %s signal(s) with absolute and relative errors over the thresholds.\n",
                          fails, label);
    }
    if (missing > 0) {
        transcript_printf("\nFound %d %s signal(s) without counterpart(s) in the compared files.\n", missing,
                          label);
    }
    transcript_puts("\n");
}
