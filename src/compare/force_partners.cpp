// SPDX-License-Identifier: MIT
#include "compare/force_partners.h"

#include <algorithm>
#include <cmath>

ForceStatement::ForceStatement(TPsoln &statement, std::size_t place_in_list)
    : soln(&statement), place(place_in_list)
{
    for (Isoln *value = statement.isoln; value != nullptr; value = value->next) {
        open.push_back(value);
    }
    drop_matched();
}

void ForceStatement::drop_matched()
{
    const auto is_matched = [](const Isoln *value) {
        return value->matched != 0;
    };
    open.erase(std::remove_if(open.begin(), open.end(), is_matched), open.end());
}

bool are_quiet(const ForceStatement &a, const ForceStatement &b)
{
    return a.open.empty() && b.open.empty() && a.soln->tshift == b.soln->tshift &&
           a.soln->analysis == b.soln->analysis;
}

void StatementGroup::add(ForceStatement &statement)
{
    statements_.push_back(&statement);
    run_ends_.push_back(statements_.size());
}

void StatementGroup::mark_matched()
{
    if (!marked_) {
        marked_ = true;
        for (ForceStatement *statement : statements_) {
            statement->soln->matched = 1;
        }
    }
}

std::size_t StatementGroup::next_loud(std::size_t index, const ForceStatement &reference)
{
    while (index < size() && are_quiet(*statements_[index], reference)) {
        index = end_of_run(index);
    }
    return index;
}

// A run grows when the values of the statement behind it are matched. What is found is kept for all
// runs on the way, so that none is stepped through twice.
std::size_t StatementGroup::end_of_run(std::size_t index)
{
    std::size_t end = run_ends_[index];
    while (end < size() && are_quiet(*statements_[end], *statements_[index])) {
        end = run_ends_[end];
    }
    for (std::size_t inner = index; inner < end;) {
        const std::size_t following = run_ends_[inner];
        run_ends_[inner] = end;
        inner = following;
    }
    return end;
}

ForceMeetings::ForceMeetings(ForceStatement &reference, StatementGroup *same_time, StatementGroup *timeless)
    : reference_(reference), groups_{same_time, timeless}
{
}

ForceStatement *ForceMeetings::next()
{
    ForceStatement *first = nullptr;
    std::size_t *taken = nullptr;
    for (int i = 0; i < 2; ++i) {
        const StatementGroup &group = *groups_[i];
        next_[i] = groups_[i]->next_loud(next_[i], reference_);
        if (next_[i] < group.size() && (first == nullptr || group[next_[i]].place < first->place)) {
            first = &group[next_[i]];
            taken = &next_[i];
        }
    }
    if (first != nullptr) {
        last_ = first;
        ++*taken;
    }
    return first;
}

bool ForceMeetings::end_quietly() const
{
    return std::any_of(std::begin(groups_), std::end(groups_), [this](const StatementGroup *group) {
        return group->size() > 0 && (last_ == nullptr || (*group)[group->size() - 1].place > last_->place);
    });
}

ForcePartners::ForcePartners(TPsoln *list)
{
    for (TPsoln *soln = list; soln != nullptr; soln = soln->next) {
        ForceStatement &statement = statements_.emplace_back(*soln, statements_.size());
        (std::isnan(soln->time) ? timeless_ : by_time_[soln->time]).add(statement);
        all_.add(statement);
    }
}

ForceMeetings ForcePartners::meet(ForceStatement &reference)
{
    const double time = reference.soln->time;
    StatementGroup *same_time = &all_;
    StatementGroup *timeless = &none_;
    if (!std::isnan(time)) {
        const auto found = by_time_.find(time);
        same_time = found != by_time_.end() ? &found->second : &none_;
        timeless = &timeless_;
    }
    same_time->mark_matched();
    timeless->mark_matched();
    if (same_time->size() + timeless->size() > 0) {
        reference.soln->matched = 1;
    }
    return {reference, same_time, timeless};
}
