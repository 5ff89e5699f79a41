// SPDX-License-Identifier: MIT
#include "compare/result_lines.h"

#include "compare/compare_state.h"
#include "read/read_state.h"
#include "support/real.h"
#include "support/transcript.h"

#include <algorithm>
#include <cstdio>
#include <string>

namespace
{

constexpr const char *kNames[kAnalysisCount] = {
    "Initial Operating Point",
    "Initial Transient Solution",
    "Initial PSS Solution",
    "First DC Sweep Point",
    "Last DC Sweep Point",
    "TR .FORCE",
    "PSS .FORCE",
    "AC",
    "AC DISTO",
    "AC NOISE",
    "POLE-ZERO",
    "DC",
    "TR Waveform",
    "FOURIER",
    "OP",
    "MEASURE",
    "PSS Waveform",
    "PAC",
    "PXF",
    "PNOISE",
    "XF",
    "STB",
};

// A table header: the opening line (with the analysis name), the ruler up to and behind the name
// column. The ruler is filled so that it lines up with names longer than fill_from.
struct HeaderLayout {
    const char *opening;
    const char *ruler_start;
    std::size_t fill_from;
    const char *ruler_end;
};

constexpr HeaderLayout kInitialLayout = {"\n%s comparison by node voltage, or ~device internal voltage :\n",
                                         "===signal_name=", 7, "abs========rel========abs*rel===\n"};
constexpr HeaderLayout kForceLayout = {
    "\n%s comparison by node voltage, ~device internal voltage, or *inductor current :\n",
    "===signal_name=", 7, "abs========rel========abs*rel===\n"};
constexpr HeaderLayout kSweepLayout = {"\n%s sweep comparison by signal name :\n", "===signal_name=", 9,
                                       "fails=====max abs=====max rel=====abs*rel===\n"};
constexpr HeaderLayout kSignalLayout = {"%s comparison by signal name :\n", "===signal_name=", 8,
                                        "abs========rel========abs*rel===\n"};
constexpr HeaderLayout kFourierLayout = {"Fourier results comparison by signal name :\n",
                                         "==signal_name=", 10,
                                         "coeff===freq=======abs========rel========abs*rel===\n"};

const HeaderLayout &layout_of(int code)
{
    switch (code) {
    case INOP:
    case INTR:
    case INPSS:
    case INDC1:
    case INDC2:
        return kInitialLayout;
    case TR_FORCE:
    case PSS_FORCE:
        return kForceLayout;
    case TR:
    case OP:
    case PSS:
        return kSignalLayout;
    case FOUR:
        return kFourierLayout;
    default:
        return kSweepLayout;
    }
}

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

const char *into_string(unsigned code)
{
    return code < kAnalysisCount ? kNames[code] : "Unknown";
}

void print_tk_header(int code)
{
    if (!is_analysis(code) || headerPrinted[code]) {
        return;
    }
    headerPrinted[code] = 1;
    const HeaderLayout &layout = layout_of(code);
    transcript_printf(layout.opening, into_string(static_cast<unsigned>(code)));
    transcript_puts(layout.ruler_start);
    transcript_puts(std::string(glMaxSigLen > layout.fill_from ? glMaxSigLen - layout.fill_from : 0, '='));
    transcript_puts(layout.ruler_end);
    if (&layout == &kForceLayout && new_force_time) {
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

void print_name_column(const char *name, std::size_t extra, std::size_t minimum)
{
    transcript_put_padded(name, std::max(glMaxSigLen + extra, minimum));
}

void print_error_columns(const char *gap, double abserr, double relerr, const char *marker)
{
    transcript_put_error(abserr);
    transcript_puts(gap);
    transcript_puts("(");
    transcript_put_error(relerr);
    transcript_puts(")");
    transcript_puts(gap);
    transcript_puts("[");
    transcript_put_error(static_cast<double>(Real(relerr) * Real(abserr)));
    transcript_puts("] ");
    transcript_puts(marker);
    transcript_puts("\n");
}

void print_both_files(const char *reference, const char *comparison, const char *end)
{
    transcript_printf("  Reference file : %s,  Comparison file: %s%s", reference, comparison, end);
}

void print_both_files(const char *format, double reference, double comparison)
{
    char texts[2][64];
    std::snprintf(texts[0], sizeof texts[0], format, reference);
    std::snprintf(texts[1], sizeof texts[1], format, comparison);
    print_both_files(texts[0], texts[1]);
}
