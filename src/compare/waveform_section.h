// SPDX-License-Identifier: MIT
// The frame that every comparator of swept signals hangs into: pairing, report of signals without
// partner, summary.
#ifndef TRESK_COMPARE_WAVEFORM_SECTION_H
#define TRESK_COMPARE_WAVEFORM_SECTION_H

#include "compare/analysis_table.h"
#include "compare/missing_lines.h"
#include "compare/missing_report.h"
#include "compare/pair_index.h"
#include "compare/table_headers.h"

#include <cstddef>
#include <vector>

// What the comparison of one pair of signals found.
struct SignalFindings {
    int fails = 0; // what the summary counts: signals, or Fourier coefficients
    unsigned bits = 0;
};

// A signal of the reference file and its partner.
struct SignalPair {
    const Wform *ref;
    const Wform *cmp;
};

// The partners of many small signals lie all over the memory. Asks for the record of one that is compared
// some pairs later, and for the values of a nearer one, whose record is there by now.
inline void fetch_ahead(const std::vector<SignalPair> &pairs, std::size_t current)
{
    constexpr std::size_t kAhead = 8;
    if (current + 2 * kAhead < pairs.size()) {
        const Wform *record = pairs[current + 2 * kAhead].cmp;
        __builtin_prefetch(record);
        __builtin_prefetch(&record->next); // in the second of its two cache lines
        __builtin_prefetch(pairs[current + kAhead].cmp->val);
    }
}

// The signals of analysis code in both lists, paired by name.
struct SignalPairs {
    std::vector<SignalPair> pairs;
    bool seen = false; // whether either list holds such a signal
};

inline SignalPairs pair_signals(Wform *ref, Wform *cmp, int code)
{
    SignalPairs found;
    PairIndex<Wform> candidates;
    for (Wform *signal = cmp; signal != nullptr; signal = signal->next) {
        if (signal->analysis == code) {
            found.seen = true;
            if (!signal->matched) {
                candidates.add(signal);
            }
        }
    }
    for (Wform *signal = ref; signal != nullptr; signal = signal->next) {
        if (signal->analysis != code) {
            continue;
        }
        found.seen = true;
        if (const Wform *partner = candidates.match(*signal)) {
            found.pairs.push_back({signal, partner});
        }
    }
    return found;
}

// Compares the signals of analysis code: pairs them by name and calls compare_pair(reference,
// comparison) for each pair, which returns SignalFindings. Prints nothing when neither list holds
// such a signal. Returns an ExitBit set.
template <typename ComparePair>
unsigned compare_section(Wform *ref, Wform *cmp, int code, ComparePair compare_pair)
{
    const SignalPairs signals = pair_signals(ref, cmp, code);
    if (!signals.seen) {
        return 0;
    }
    SignalFindings total;
    for (std::size_t i = 0; i < signals.pairs.size(); ++i) {
        fetch_ahead(signals.pairs, i);
        const SignalFindings found = compare_pair(*signals.pairs[i].ref, *signals.pairs[i].cmp);
        total.fails += found.fails;
        total.bits |= found.bits;
    }
    const unsigned missing = find_missing_wforms(ref, cmp, code);
    print_tk_summary(total.fails, static_cast<int>(missing), analysis_row(code).label);
    return total.bits | bits_of_missing(missing);
}

#endif
