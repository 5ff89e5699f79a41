// SPDX-License-Identifier: MIT
// Which findings come first: the worst ones.
#ifndef TRESK_REPORT_ORDER_H
#define TRESK_REPORT_ORDER_H

#include "compare/finding.h"

#include <cstdint>

namespace report
{

// Failing pairs, then what a file lacks, then what differs, then what was not judged.
enum class FindingGroup { FAILING, MISSING, DIFFERENCE, UNJUDGED };

FindingGroup group_of(const Finding &finding);

// The place of a finding among others.
struct Rank {
    FindingGroup group;
    bool is_nan;           // a value, or the product of the errors, is no number
    double product;        // of the absolute and the relative error; 0 where it is no number
    std::int64_t sequence; // of the transcript, from 0
};

Rank rank_of(const Finding &finding, std::int64_t sequence);

// Whether a comes before b: by group, what is no number first, then the larger product of errors; equal
// ones in the order of the transcript.
bool worse(const Rank &a, const Rank &b);

} // namespace report

#endif
