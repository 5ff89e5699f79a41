// SPDX-License-Identifier: MIT
// The frame that every comparator of swept signals hangs into: pairing, report of signals without
// partner, summary.
#ifndef TRESK_COMPARE_WAVEFORM_SECTION_H
#define TRESK_COMPARE_WAVEFORM_SECTION_H

#include "compare/exit_bits.h"
#include "compare/missing_report.h"
#include "compare/pair_index.h"
#include "compare/result_lines.h"

// What the comparison of one pair of signals found.
struct SignalFindings {
    int fails = 0; // what the summary counts: signals, or Fourier coefficients
    unsigned bits = 0;
};

// Compares the signals of analysis code: pairs them by name and calls compare_pair(reference,
// comparison) for each pair, which returns SignalFindings. Prints nothing when neither list holds
// such a signal. Returns an ExitBit set.
template <typename ComparePair>
unsigned compare_section(Wform *ref, Wform *cmp, int code, ComparePair compare_pair)
{
    bool seen = false;
    PairIndex<Wform> candidates;
    for (Wform *signal = cmp; signal != nullptr; signal = signal->next) {
        if (signal->analysis == code) {
            seen = true;
            if (!signal->matched) {
                candidates.add(signal);
            }
        }
    }
    SignalFindings total;
    for (Wform *signal = ref; signal != nullptr; signal = signal->next) {
        if (signal->analysis != code) {
            continue;
        }
        seen = true;
        if (const Wform *partner = candidates.match(*signal)) {
            const SignalFindings found = compare_pair(*signal, *partner);
            total.fails += found.fails;
            total.bits |= found.bits;
        }
    }
    if (!seen) {
        return 0;
    }
    const unsigned missing = find_missing_wforms(ref, cmp, code);
    print_tk_summary(total.fails, static_cast<int>(missing), into_string(static_cast<unsigned>(code)));
    return total.bits | (total.fails != 0 ? EXIT_TOLERANCE : 0U) | (missing != 0 ? EXIT_SIGNALS : 0U);
}

#endif
