// SPDX-License-Identifier: MIT
#include "report/tree_change.h"

#include <algorithm>
#include <array>
#include <string>
#include <unordered_map>

namespace report
{

namespace
{

// Less or more of it is the same.
constexpr double kHundredth = 0.01;

Change change_of_bad(const TreePair &before, const TreePair &after)
{
    const double was = std::max(error_product(before), 0.0);
    const double is = std::max(error_product(after), 0.0);
    if (before.grade != after.grade) {
        return after.grade > before.grade ? Change::WORSE : Change::BETTER;
    }
    if (is > was * (1.0 + kHundredth)) {
        return Change::WORSE;
    }
    return was > is * (1.0 + kHundredth) ? Change::BETTER : Change::STILL;
}

Change change_of(const TreePair *before, const TreePair &after, unsigned accepted)
{
    const auto is_bad = [accepted](const TreePair &pair) {
        return pair.grade != 0 && (accepted >> static_cast<unsigned>(pair.grade) & 1U) == 0;
    };
    const bool was_bad = before != nullptr && is_bad(*before);
    if (is_bad(after)) {
        return was_bad ? change_of_bad(*before, after) : Change::NEW;
    }
    return was_bad ? Change::MENDED : Change::NONE;
}

} // namespace

std::string_view change_word(Change change)
{
    static constexpr std::array<std::string_view, 6> kWords = {"new",    "worse",  "still",
                                                               "better", "mended", ""};
    return kWords[static_cast<std::size_t>(change)];
}

TreeChanges changes_between(const TreeRun &before, const TreeRun &after, unsigned accepted)
{
    std::unordered_map<std::string_view, const TreePair *> old;
    for (const TreePair &pair : before.pairs) {
        old.emplace(pair.path, &pair);
    }
    TreeChanges changes;
    for (const TreePair &pair : after.pairs) {
        const auto found = old.find(pair.path);
        const TreePair *was = found != old.end() ? found->second : nullptr;
        changes.pairs.push_back({change_of(was, pair, accepted), was != nullptr ? was->grade : -1});
        old.erase(pair.path);
    }
    for (const TreePair &pair : before.pairs) {
        if (old.count(pair.path) != 0) {
            changes.gone.push_back(pair);
        }
    }
    return changes;
}

} // namespace report
