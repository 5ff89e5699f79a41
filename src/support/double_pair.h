// SPDX-License-Identifier: MIT
// Two doubles in a register of the processor. Plain vector types of the compiler: a processor without such
// registers takes more steps.
#ifndef TRESK_SUPPORT_DOUBLE_PAIR_H
#define TRESK_SUPPORT_DOUBLE_PAIR_H

#include <cstdint>
#include <cstring>

using DoublePair = double __attribute__((vector_size(16)));
using PairMask = std::int64_t __attribute__((vector_size(16))); // -1 where something holds, else 0

inline DoublePair load_pair(const double *values)
{
    DoublePair pair;
    std::memcpy(&pair, values, sizeof pair);
    return pair;
}

inline void store_pair(double *values, const DoublePair &pair)
{
    std::memcpy(values, &pair, sizeof pair);
}

inline DoublePair both(double value)
{
    return DoublePair{value, value};
}

inline bool holds_for_both(const PairMask &mask)
{
    return (mask[0] & mask[1]) != 0;
}

// The values where mask holds, others elsewhere.
inline DoublePair choose(const PairMask &mask, const DoublePair &values, const DoublePair &others)
{
    return reinterpret_cast<DoublePair>((reinterpret_cast<PairMask>(values) & mask) |
                                        (reinterpret_cast<PairMask>(others) & ~mask));
}

inline DoublePair magnitude(const DoublePair &values)
{
    return reinterpret_cast<DoublePair>(reinterpret_cast<PairMask>(values) & PairMask{INT64_MAX, INT64_MAX});
}

#endif
