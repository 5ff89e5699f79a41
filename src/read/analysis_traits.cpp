// SPDX-License-Identifier: MIT
#include "read/analysis_traits.h"

#include "read/signal_totals.h"

#include <array>
#include <cstring>
#include <iterator>

namespace
{

constexpr auto kNone = SignalHeader::NO_SIGNALS;
constexpr auto kUnits = SignalHeader::UNITS;
constexpr auto kKind = SignalHeader::KIND_UNITS;
constexpr auto kShift = SignalHeader::SHIFT_AND_UNITS;

constexpr IndexTraits kNotIndexed = {"NULL", "NULL", DefaultYUnits::UNKNOWN};
constexpr auto kLetter = DefaultYUnits::BY_LETTER;
constexpr auto kLetters = DefaultYUnits::BY_TWO_LETTERS;

constexpr char kHertz[] = "frequency(Hz)";

// clang-format off
constexpr AnalysisTraits kAnalyses[] = {
    {INOP, "INOP", nullptr, {0, "OP", INOPcnt, &INOPsigcnt}, kNone, kNotIndexed},
    {INTR, "INTR", nullptr, {1, "TR", INTRcnt, &INTRsigcnt}, kNone, kNotIndexed},
    {INPSS, "INPSS", nullptr, {2, "PSS", INPSScnt, &INPSSsigcnt}, kNone, kNotIndexed},
    {INDC1, "INDC1", nullptr, {3, "DC", INDCcnt, &INDCsigcnt}, kNone, kNotIndexed},
    {INDC2, "INDC2", nullptr, {kNoTotalsLine, "DC", INDCcnt, &INDCsigcnt}, kNone, kNotIndexed},
    {TR_FORCE, "TR FORCE", nullptr, {4, "TR", TRFORCEcnt, &TRFORCEsigcnt}, kNone, kNotIndexed},
    {PSS_FORCE, "PSS FORCE", nullptr, {5, "PSS", PSSFORCEcnt, &PSSFORCEsigcnt}, kNone, kNotIndexed},
    {AC, "AC", "AC", {15, "AC", ACcnt, nullptr}, kKind, {kHertz, "LINEAR", kLetters}},
    {DISTO, "DISTO", nullptr, {17, "DISTORTION", DIcnt, nullptr}, kNone, {"NULL", "NULL", kLetters}},
    {NOISE, "NOISE", "NOISE", {16, "NOISE", NOcnt, nullptr}, kKind, {"NULL", "NULL", kLetters}},
    {PZ, "PZ", "PZ", {19, "PZ", PZcnt, nullptr}, kNone, {"NULL", "NULL", DefaultYUnits::EMPTY}},
    {DC, "DC", "DC", {14, "DC", DCcnt, nullptr}, kUnits, {"NULL", "LINEAR", kLetter}},
    {TR, "TR", "TR", {7, "TR", TRcnt, nullptr}, kShift, {"SECONDS", "NULL", kLetter}},
    {FOUR, "FOUR", nullptr, {13, "Fourier", FOcnt, nullptr}, kUnits, {"NULL", "NULL", kLetter}},
    {OP, "OP", "OP", {6, "OP", OPcnt, nullptr}, kNone, {"NULL", "NULL", kLetter}},
    {MR, "MR", "MR", {12, "MEASURE", MRcnt, nullptr}, kShift, {"NULL", "NULL", DefaultYUnits::MEASURE}},
    {PSS, "PSS", "PSS", {8, "PSS", PSScnt, nullptr}, kShift, {"SECONDS", "NULL", kLetter}},
    {PAC, "PAC", "PAC", {9, "PAC", PACcnt, nullptr}, kKind, {kHertz, "NULL", kLetters}},
    {PXF, "PXF", "PXF", {10, "PXF", PXFcnt, nullptr}, kKind, {kHertz, "NULL", kLetters}},
    {PNOISE, "PNOISE", "PNOISE", {11, "PNOISE", PNOISEcnt, nullptr}, kKind, {kHertz, "NULL", kLetters}},
    {XF, "XF", "XF", {18, "XF", XFcnt, nullptr}, kKind, {kHertz, "LINEAR", kLetters}},
    // Kept: no Y units are known for STB signals (docs/punch-format.md, "Index table").
    {STB, "STB", "STB", {20, "STB", STBcnt, nullptr}, kKind, {"NULL", "NULL", DefaultYUnits::UNKNOWN}},
};
// clang-format on

constexpr bool rows_are_in_order()
{
    int code = 0;
    for (const AnalysisTraits &row : kAnalyses) {
        if (row.code != code++) {
            return false;
        }
    }
    return code == kAnalysisCount;
}

constexpr bool rows_are_filled()
{
    bool filled = true;
    for (const AnalysisTraits &row : kAnalyses) {
        filled = filled && row.name != nullptr && row.totals.name != nullptr && row.index.xunits != nullptr &&
                 row.index.xfunc != nullptr;
    }
    return filled;
}

using TotalsLines = std::array<const AnalysisTraits *, kTotalsLines>;

constexpr TotalsLines totals_lines()
{
    TotalsLines lines{};
    for (const AnalysisTraits &row : kAnalyses) {
        if (row.totals.line != kNoTotalsLine) {
            lines[static_cast<std::size_t>(row.totals.line)] = &row;
        }
    }
    return lines;
}

constexpr bool lines_are_filled(const TotalsLines &lines)
{
    bool filled = true;
    for (const AnalysisTraits *line : lines) {
        filled = filled && line != nullptr;
    }
    return filled;
}

constexpr TotalsLines kLines = totals_lines();

static_assert(rows_are_in_order(), "one row for each analysis, in the order of the codes");
static_assert(rows_are_filled(), "no row with a missing column");
static_assert(lines_are_filled(kLines), "each line of the totals belongs to a row");

} // namespace

const AnalysisTraits &traits_of(int code)
{
    return kAnalyses[code];
}

const AnalysisTraits &traits_of_totals_line(int line)
{
    return *kLines[static_cast<std::size_t>(line)];
}

const char *analysis_name(int code)
{
    return is_analysis(code) ? traits_of(code).name : "UNKNOWN";
}

int analysis_of_header_word(const char *word)
{
    for (const AnalysisTraits &row : kAnalyses) {
        if (row.header_word != nullptr && std::strcmp(word, row.header_word) == 0) {
            return row.code;
        }
    }
    return kNoAnalysis;
}
