// SPDX-License-Identifier: MIT
#include "report/companions.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <strings.h>

namespace report
{

namespace
{

struct RolePrefix {
    const char *prefix; // behind the letter of the quantity
    FamilyName::Role role;
};

constexpr std::array<RolePrefix, 3> kPrefixes = {
    {{"DB(", FamilyName::DECIBELS}, {"M(", FamilyName::MAGNITUDE}, {"P(", FamilyName::PHASE}}};

// The first modify of a file that a test holds for; null if there is none.
template <typename Test> const MODIFYform *find_modify(const PF *file, Test test)
{
    for (const RERUNform *rerun = file != nullptr ? file->rerun : nullptr; rerun != nullptr;
         rerun = rerun->next) {
        for (const MODIFYform *modify = rerun->modify; modify != nullptr; modify = modify->next) {
            if (test(*rerun, *modify)) {
                return modify;
            }
        }
    }
    return nullptr;
}

template <typename Record> bool holds(const Record *list, const Record *wanted)
{
    while (list != nullptr && list != wanted) {
        list = list->next;
    }
    return list != nullptr;
}

// The signal that completes a family, in the modify of one that is known.
const Wform *companion_in(const PF *file, const Wform &known)
{
    const MODIFYform *modify = find_modify(file, [&known](const RERUNform &, const MODIFYform &candidate) {
        return holds<Wform>(candidate.wform, &known);
    });
    const FamilyName name = family_of(known);
    if (modify == nullptr || name.role == FamilyName::NONE) {
        return nullptr;
    }
    std::array<const Wform *, FamilyName::NONE> found = {};
    std::array<int, FamilyName::NONE> count = {};
    for (const Wform *wform = modify->wform; wform != nullptr; wform = wform->next) {
        const FamilyName other = family_of(*wform);
        if (wform->analysis == known.analysis && other.role != FamilyName::NONE &&
            other.family == name.family) {
            found[other.role] = wform;
            ++count[other.role];
        }
    }
    FamilyName::Role wanted = FamilyName::PHASE;
    if (name.role == FamilyName::PHASE) {
        wanted = count[FamilyName::DECIBELS] > 0 ? FamilyName::DECIBELS : FamilyName::MAGNITUDE;
    }
    return count[wanted] == 1 ? found[wanted] : nullptr;
}

const PZform *block_in(const PF *file, const TRI *root, const Place &place)
{
    const MODIFYform *modify = find_modify(file, [&](const RERUNform &rerun, const MODIFYform &candidate) {
        const PZform *block = candidate.pzform;
        if (root == nullptr) {
            return rerun.number == place.rerun && candidate.number == place.modify;
        }
        return block != nullptr && (holds<TRI>(block->poles, root) || holds<TRI>(block->zeros, root) ||
                                    holds<TRI>(block->cpoles, root) || holds<TRI>(block->czeros, root));
    });
    return modify != nullptr ? modify->pzform : nullptr;
}

} // namespace

FamilyName family_of(const Wform &wform)
{
    const std::string_view name = wform.name != nullptr ? wform.name : "";
    if (!name.empty() && is_over_frequency(wform.analysis)) {
        for (const RolePrefix &prefix : kPrefixes) {
            const std::string_view word = prefix.prefix;
            if (strncasecmp(name.data() + 1, word.data(), word.size()) == 0) {
                return {prefix.role, std::string(1, name[0]).append(name.substr(word.size()))};
            }
        }
    }
    return {FamilyName::NONE, std::string(name)};
}

bool is_over_frequency(int analysis)
{
    constexpr std::array<int, 8> kOverFrequency = {AC, DISTO, NOISE, PAC, PXF, PNOISE, XF, STB};
    return std::find(kOverFrequency.begin(), kOverFrequency.end(), analysis) != kOverFrequency.end();
}

Both<Wform> find_companion(const Result &result, const Both<Wform> &signals)
{
    const Both<Wform> found = {companion_in(result.golden.file, *signals.ref),
                               companion_in(result.regression.file, *signals.cmp)};
    const bool pairs =
        found.ref != nullptr && found.cmp != nullptr && std::string_view(found.ref->name) == found.cmp->name;
    return pairs ? found : Both<Wform>{};
}

Both<PZform> find_blocks(const Result &result, const Finding &finding)
{
    return {block_in(result.golden.file, finding.roots.ref, finding.place),
            block_in(result.regression.file, finding.roots.cmp, finding.place)};
}

} // namespace report
