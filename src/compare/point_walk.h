// SPDX-License-Identifier: MIT
// The one walk over the points of two signals that are judged pair by pair, in list order.
// Kept: x is not compared (docs/verdict.md, "Sweeps").
#ifndef TRESK_COMPARE_POINT_WALK_H
#define TRESK_COMPARE_POINT_WALK_H

#include "compare/tolerance.h"
#include "read/records.h"

#include <functional>

// What the longer of two lists has left when the shorter one ends; null for the other.
struct PointRest {
    const PT *ref;
    const PT *cmp;
};

// Judges the pairs of points up to the end of the shorter list and calls visit(reference point,
// comparison point, Judged) for each. A rule has error(reference, comparison), the absolute error of
// two values, and level(reference, comparison), by which default checking chooses its mode.
template <typename Rule, typename Visit>
PointRest walk_points(const PT *ref, const PT *cmp, const Rule &rule, Visit visit)
{
    for (; ref != nullptr && cmp != nullptr; ref = ref->next, cmp = cmp->next) {
        visit(*ref, *cmp,
              judge_pair(rule.level(ref->val, cmp->val), rule.error(ref->val, cmp->val), ref->val));
    }
    return {ref, cmp};
}

// The same for any caller outside the comparators: one walk for each kind of signal, which judges as
// the comparator of its analysis does (analysis_row(code).walk) and prints nothing.
using PointVisitor = std::function<void(const PT &ref, const PT &cmp, const Judged &judged)>;
using SignalWalk = void (*)(const Wform &ref, const Wform &cmp, const PointVisitor &visit);

#endif
