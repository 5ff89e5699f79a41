// SPDX-License-Identifier: MIT
// What changed between two runs of a tree.
#ifndef TRESK_REPORT_TREE_CHANGE_H
#define TRESK_REPORT_TREE_CHANGE_H

#include "report/tree_run.h"

#include <string_view>
#include <vector>

namespace report
{

// In the order in which they are shown. A pair is bad when it has a grade that is neither PASS nor accepted.
enum class Change {
    NEW,    // bad, and was not, or was not there
    WORSE,  // bad as before, with a higher grade or larger errors
    STILL,  // bad as before
    BETTER, // bad as before, with a lower grade or smaller errors
    MENDED, // not bad any more
    NONE
};

std::string_view change_word(Change change);

struct PairChange {
    Change change = Change::NONE;
    int grade = -1; // of the pair before; -1 where there was none
};

struct TreeChanges {
    std::vector<PairChange> pairs; // as TreeRun::pairs of the later run
    std::vector<TreePair> gone;    // what the later run has no pair or missing file of, worst first
};

// Errors count as larger or smaller from a hundredth of their product on. accepted: a bit for each grade.
TreeChanges changes_between(const TreeRun &before, const TreeRun &after, unsigned accepted);

} // namespace report

#endif
