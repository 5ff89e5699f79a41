// SPDX-License-Identifier: MIT
// What belongs to a finding in the records of the files.
#ifndef TRESK_REPORT_COMPANIONS_H
#define TRESK_REPORT_COMPANIONS_H

#include "compare/finding.h"
#include "report/result.h"

#include <string>

namespace report
{

// Of a magnitude or phase over frequency, by its name: "VDB(OUT)", "VM(OUT)" and "VP(OUT)" are one family.
// Any other signal is a family of its own.
struct FamilyName {
    enum Role { DECIBELS, MAGNITUDE, PHASE, NONE };
    Role role = NONE;
    std::string family; // "V(OUT)"
};

FamilyName family_of(const Wform &wform);

// Whether signals of an analysis are small-signal results over frequency.
bool is_over_frequency(int analysis);

// The phase to a magnitude and the other way round, of both files: the signals of that family that stand in
// the same modifies as the given ones. Null where a file has none, or more than one of that name.
Both<Wform> find_companion(const Result &result, const Both<Wform> &signals);

// The pole-zero blocks that were compared with each other where a root or block was found to differ.
Both<PZform> find_blocks(const Result &result, const Finding &finding);

} // namespace report

#endif
