// SPDX-License-Identifier: MIT
// The frame that every comparator of swept signals hangs into: pairing, report of signals without
// partner, summary.
#ifndef TRESK_COMPARE_WAVEFORM_SECTION_H
#define TRESK_COMPARE_WAVEFORM_SECTION_H

#include "compare/exit_bits.h"
#include "compare/missing_report.h"
#include "compare/pair_index.h"
#include "compare/result_lines.h"

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

// The partners of many small signals lie all over the memory. Asks for the one that is compared a few
// pairs later, and for what a nearer one, whose record is there by now, points to.
inline void fetch_ahead(const std::vector<SignalPair> &pairs, std::size_t current)
{
    constexpr std::size_t kRecordsAhead = 8;
    constexpr std::size_t kContentsAhead = 4;
    constexpr std::size_t kCacheLine = 64;
    if (current + kRecordsAhead < pairs.size()) {
        const auto *record = reinterpret_cast<const char *>(pairs[current + kRecordsAhead].cmp);
        for (std::size_t byte = 0; byte < sizeof(Wform); byte += kCacheLine) {
            __builtin_prefetch(record + byte);
        }
        __builtin_prefetch(record + sizeof(Wform) - 1);
        const Wform &nearer = *pairs[current + kContentsAhead].cmp;
        __builtin_prefetch(nearer.pts);
        __builtin_prefetch(nearer.yunits);
    }
}

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
    std::vector<SignalPair> pairs;
    for (Wform *signal = ref; signal != nullptr; signal = signal->next) {
        if (signal->analysis != code) {
            continue;
        }
        seen = true;
        if (const Wform *partner = candidates.match(*signal)) {
            pairs.push_back({signal, partner});
        }
    }
    if (!seen) {
        return 0;
    }
    SignalFindings total;
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        fetch_ahead(pairs, i);
        const SignalFindings found = compare_pair(*pairs[i].ref, *pairs[i].cmp);
        total.fails += found.fails;
        total.bits |= found.bits;
    }
    const unsigned missing = find_missing_wforms(ref, cmp, code);
    print_tk_summary(total.fails, static_cast<int>(missing), into_string(static_cast<unsigned>(code)));
    return total.bits | (total.fails != 0 ? EXIT_TOLERANCE : 0U) | (missing != 0 ? EXIT_SIGNALS : 0U);
}

#endif
