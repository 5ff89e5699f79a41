// SPDX-License-Identifier: MIT
// How the comparison reaches its listener. All of these do nothing when nobody listens.
#ifndef TRESK_COMPARE_EVENTS_H
#define TRESK_COMPARE_EVENTS_H

#include "compare/listener.h"

inline bool listening()
{
    return __builtin_expect(listener != nullptr, 0);
}

// Whether a pair leaves no trace: it passes, and nobody listens.
inline bool goes_unreported(const Judged &judged)
{
    return judged.verdict == PASSES && !listening();
}

void note_start(const RunStart &start);
void note_file_read(const PF &file, Side side, int result);
void note_end(const RunEnd &end);

// Where the comparison has got to: the place of the findings that follow.
void note_rerun_pair(const RERUNform &ref, const RERUNform &cmp);
void note_modify_pair(int rerun, const MODIFYform &ref, const MODIFYform &cmp);
void leave_modifies();
void leave_reruns();
void set_force_place(std::optional<double> time);

// A finding at that place, still without all that its kind has of its own.
Finding finding_here(FindingKind kind, int analysis, const char *name, unsigned bits);

void pass_on(const Finding &finding);

#endif
