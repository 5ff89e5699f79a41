// SPDX-License-Identifier: MIT
// Keys of findings: what deep links, lists and comparisons of two reports find a finding by.
#ifndef TRESK_REPORT_KEYS_H
#define TRESK_REPORT_KEYS_H

#include "compare/finding.h"

#include <string>
#include <string_view>

namespace report
{

// The same from run to run, as clean UTF-8: place, analysis, kind and name ("r1m0/TR/area/V(OUT)"). The time
// of a .FORCE statement and the position of a coefficient stand behind the name ("M@4e-09", "V(OUT)#2"), what
// is missing where behind the kind ("missing signal in regression"). Two findings of a run may share it.
std::string key_of(const Finding &finding);

// What a finding is, in keys and data: "value", "sweep" ... of judged pairs, "missing", "difference".
std::string_view kind_word(FindingKind kind);

// What is missing or differs ("signal", "x units" ...); empty for pairs that were judged.
std::string_view subject_word(FindingKind kind);

// "INOP", "TR" ...; empty outside all tables.
std::string_view analysis_word(int code);

// "golden", "regression" or "".
std::string_view side_word(Side side);

} // namespace report

#endif
