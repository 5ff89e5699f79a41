// SPDX-License-Identifier: MIT
#include "compare/analysis_table.h"

#include "compare/fourier_compare.h"
#include "compare/sweep_compare.h"
#include "compare/transient_compare.h"

namespace
{

// A waveform goes under one name everywhere.
constexpr AnalysisRow waveform(AnalysisCode code, const char *name, const HeaderLayout &layout,
                               SignalComparator comparator, SignalWalk walk)
{
    return {code, name, name, &layout, comparator, walk};
}

constexpr AnalysisRow solution(AnalysisCode code, const char *name, const char *label,
                               const HeaderLayout &layout)
{
    return {code, name, label, &layout, nullptr, nullptr};
}

unsigned compare_fourier(Wform *ref, Wform *cmp, unsigned)
{
    return four_compare(ref, cmp);
}

constexpr AnalysisTable kAnalyses = {{
    solution(INOP, "Initial Operating Point", "INOP", kInitialLayout),
    solution(INTR, "Initial Transient Solution", "INTR", kInitialLayout),
    solution(INPSS, "Initial PSS Solution", "INPSS", kInitialLayout),
    solution(INDC1, "First DC Sweep Point", "first INDC point", kInitialLayout),
    solution(INDC2, "Last DC Sweep Point", "last INDC point", kInitialLayout),
    solution(TR_FORCE, "TR .FORCE", ".FORCE TR", kForceLayout),
    solution(PSS_FORCE, "PSS .FORCE", ".FORCE PSS", kForceLayout),
    solution(OP, "OP", "OP", kSignalLayout),
    waveform(TR, "TR Waveform", kSignalLayout, tr_compare, nullptr),
    waveform(PSS, "PSS Waveform", kSignalLayout, tr_compare, nullptr),
    waveform(PAC, "PAC", kSweepLayout, ac_compare, walk_ac_points),
    waveform(PXF, "PXF", kSweepLayout, ac_compare, walk_ac_points),
    waveform(PNOISE, "PNOISE", kSweepLayout, ac_compare, walk_ac_points),
    waveform(MR, "MEASURE", kSweepLayout, dc_compare, walk_dc_points),
    waveform(FOUR, "FOURIER", kFourierLayout, compare_fourier, walk_coefficients),
    waveform(DC, "DC", kSweepLayout, dc_compare, walk_dc_points),
    waveform(AC, "AC", kSweepLayout, ac_compare, walk_ac_points),
    waveform(NOISE, "AC NOISE", kSweepLayout, ac_compare, walk_ac_points),
    waveform(DISTO, "AC DISTO", kSweepLayout, ac_compare, walk_ac_points),
    waveform(XF, "XF", kSweepLayout, ac_compare, walk_ac_points),
    waveform(STB, "STB", kSweepLayout, ac_compare, walk_ac_points),
    solution(PZ, "POLE-ZERO", "pole/zero", kSweepLayout),
}};

constexpr int kNoRow = -1;
using RowNumbers = std::array<int, kAnalysisCount>;

// The place of each code in the table; kNoRow for a code without a row or with two.
constexpr RowNumbers row_numbers()
{
    RowNumbers numbers = {};
    for (int code = 0; code < kAnalysisCount; ++code) {
        int rows = 0;
        for (int row = 0; row < kAnalysisCount; ++row) {
            if (kAnalyses[static_cast<std::size_t>(row)].code == code) {
                numbers[static_cast<std::size_t>(code)] = row;
                ++rows;
            }
        }
        if (rows != 1) {
            numbers[static_cast<std::size_t>(code)] = kNoRow;
        }
    }
    return numbers;
}

constexpr RowNumbers kRowNumbers = row_numbers();

constexpr bool is_complete()
{
    for (const int row : kRowNumbers) {
        if (row == kNoRow) {
            return false;
        }
    }
    return true;
}

static_assert(is_complete(), "every analysis has one row");

} // namespace

const AnalysisTable &analysis_table()
{
    return kAnalyses;
}

const AnalysisRow &analysis_row(int code)
{
    return kAnalyses[static_cast<std::size_t>(kRowNumbers[static_cast<std::size_t>(code)])];
}

const char *into_string(unsigned code)
{
    return code < kAnalysisCount ? analysis_row(static_cast<int>(code)).name : "Unknown";
}
