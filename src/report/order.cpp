// SPDX-License-Identifier: MIT
#include "report/order.h"

#include <tuple>

namespace report
{

FindingGroup group_of(const Finding &finding)
{
    if (!finding.is_judged) {
        return FindingGroup::UNJUDGED;
    }
    if (finding.kind <= FindingKind::ROOT) {
        return FindingGroup::FAILING;
    }
    return finding.kind <= FindingKind::MISSING_RERUN ? FindingGroup::MISSING : FindingGroup::DIFFERENCE;
}

Rank rank_of(const Finding &finding, std::int64_t sequence)
{
    const double product = finding.judged.abserr * finding.judged.relerr;
    const bool is_nan = finding.met_nan || product != product;
    return {group_of(finding), is_nan, is_nan ? 0.0 : product, sequence};
}

bool worse(const Rank &a, const Rank &b)
{
    const auto key = [](const Rank &rank) {
        return std::make_tuple(rank.group, !rank.is_nan, -rank.product, rank.sequence);
    };
    return key(a) < key(b);
}

} // namespace report
