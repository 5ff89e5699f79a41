// SPDX-License-Identifier: MIT
#include "compare/result_lines.h"
#include "report/figure_builders.h"

#include <algorithm>
#include <limits>
#include <map>
#include <utility>

namespace report
{

namespace
{

constexpr std::size_t kMostRoots = 400;
constexpr std::size_t kMostPassing = 200; // so that a failing one behind them has a place
constexpr double kNoError = std::numeric_limits<double>::quiet_NaN();

using FailingRoots = std::map<std::pair<int, int>, const Finding *>; // by kind and position

FailingRoots failing_roots(const Result &result, const FigurePlan &plan)
{
    FailingRoots failing;
    for (const std::size_t index : plan.findings) {
        const Finding &finding = result.findings[index].finding;
        failing.emplace(std::pair(finding.root_kind, finding.position), &finding);
    }
    return failing;
}

PlaneRoot root_of(const TRI *ref, const TRI *cmp, int kind, int position, const FailingRoots &failing)
{
    PlaneRoot root = {kind, position, ref != nullptr, cmp != nullptr, 0.0,  0.0,
                      0.0,  0.0,      kNoError,       false,          false};
    if (ref != nullptr) {
        root.golden_real = ref->mag;
        root.golden_imaginary = ref->phase;
    }
    if (cmp != nullptr) {
        root.regression_real = cmp->mag;
        root.regression_imaginary = cmp->phase;
    }
    const auto found = failing.find({kind, position});
    if (found != failing.end()) {
        const Finding &finding = *found->second;
        root.fails = true;
        root.error = finding.kind == FindingKind::ROOT ? finding.judged.abserr : kNoError;
        root.half_planes_differ = finding.half_planes_differ;
    }
    return root;
}

// Adds the roots of two lists, pair by pair: the failing ones, and of the others the first.
void add_roots(Figure &figure, const TRI *ref, const TRI *cmp, int kind, const FailingRoots &failing)
{
    for (int position = 1; ref != nullptr || cmp != nullptr; ++position) {
        const PlaneRoot root = root_of(ref, cmp, kind, position, failing);
        if (figure.roots.size() < (root.fails ? kMostRoots : kMostPassing)) {
            figure.roots.push_back(root);
        } else {
            ++figure.left_out;
        }
        ref = ref != nullptr ? ref->next : nullptr;
        cmp = cmp != nullptr ? cmp->next : nullptr;
    }
}

} // namespace

Figure plane_figure(const Result &result, const FigurePlan &plan)
{
    static const PZform kEmpty = {};
    const PZform &ref = plan.blocks.ref != nullptr ? *plan.blocks.ref : kEmpty;
    const PZform &cmp = plan.blocks.cmp != nullptr ? *plan.blocks.cmp : kEmpty;
    const FailingRoots failing = failing_roots(result, plan);
    Figure figure;
    add_roots(figure, ref.poles, cmp.poles, POLE, failing);
    add_roots(figure, ref.zeros, cmp.zeros, ZERO, failing);
    add_roots(figure, ref.cpoles, cmp.cpoles, CANCELLED_POLE, failing);
    add_roots(figure, ref.czeros, cmp.czeros, CANCELLED_ZERO, failing);
    Panel panel;
    panel.name = "Poles and zeros";
    panel.worst_x = kNoError;
    panel.key = result.findings[plan.findings.front()].key;
    figure.panels.push_back(std::move(panel));
    return figure;
}

} // namespace report
