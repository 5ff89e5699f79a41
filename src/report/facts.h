// SPDX-License-Identifier: MIT
// What is said of a finding besides its errors, for all that is written of it.
#ifndef TRESK_REPORT_FACTS_H
#define TRESK_REPORT_FACTS_H

#include "report/result.h"

#include <optional>
#include <string>

namespace report
{

// Units of the signal or value as the golden file has them; empty where there are none.
std::string units_of(const Finding &finding);

// x of the worst place: of a point or coefficient its own, of an area the end of its interval.
std::optional<double> worst_at(const Finding &finding);

// Whether the finding has both values in ref_value and cmp_value; of a sweep those of its worst point.
bool has_values(const Finding &finding);

// Whether it has what both sides say in ref_text and cmp_text, empty for a side that says nothing.
bool has_texts(const Finding &finding);

// A short remark in words: "12 of 40 points", "signal missing in regression", "x units: S, HZ". Bytes of the
// files may be in it.
std::string note_of(const Finding &finding);

} // namespace report

#endif
