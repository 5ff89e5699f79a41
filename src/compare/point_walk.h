// SPDX-License-Identifier: MIT
// The one walk over the points of two signals that are judged pair by pair, in their order.
// Kept: x is not compared (docs/verdict.md, "Sweeps").
#ifndef TRESK_COMPARE_POINT_WALK_H
#define TRESK_COMPARE_POINT_WALK_H

#include "compare/tolerance.h"
#include "read/point_blocks.h"

#include <functional>

// Judges two values by a rule, which has error(reference, comparison), the absolute error of two values, and
// level(reference, comparison), by which default checking chooses its mode.
template <typename Rule> Judged judge_values(const Rule &rule, double ref, double cmp)
{
    return judge_pair(rule.level(ref, cmp), rule.error(ref, cmp), ref);
}

// Judges the pairs of points up to the end of the shorter signal and calls visit(reference point,
// comparison point, Judged) for each.
template <typename Rule, typename Visit>
void walk_points(const Wform &ref, const Wform &cmp, const Rule &rule, Visit visit)
{
    walk_blocks(ref, cmp, [&](const PointBlock &r, const PointBlock &c, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            visit(PT{r.x[i], r.val[i]}, PT{c.x[i], c.val[i]}, judge_values(rule, r.val[i], c.val[i]));
        }
    });
}

// The same for any caller outside the comparators: one walk for each kind of signal, which judges as
// the comparator of its analysis does (analysis_row(code).walk) and prints nothing.
using PointVisitor = std::function<void(const PT &ref, const PT &cmp, const Judged &judged)>;
using SignalWalk = void (*)(const Wform &ref, const Wform &cmp, const PointVisitor &visit);

#endif
