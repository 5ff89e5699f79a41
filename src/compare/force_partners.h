// SPDX-License-Identifier: MIT
// Which .FORCE statements meet. Every reference statement meets every comparison statement of its time,
// in list order, and a NaN is neither less nor greater than any time, so that it equals all of them.
// Pairs of which nothing can be reported any more are passed over, whole runs of them in one step: so
// many statements of one time cost no more than what is reported of them.
#ifndef TRESK_COMPARE_FORCE_PARTNERS_H
#define TRESK_COMPARE_FORCE_PARTNERS_H

#include "read/records.h"

#include <cstddef>
#include <deque>
#include <map>
#include <vector>

// A .FORCE statement with those of its values that are not matched yet.
struct ForceStatement {
    ForceStatement(TPsoln &statement, std::size_t place_in_list);

    // Takes out the values that were matched since.
    void drop_matched();

    TPsoln *soln;
    std::size_t place;
    std::vector<Isoln *> open;
};

// Whether nothing can be reported of a pair: neither has open values, and only values differ.
bool are_quiet(const ForceStatement &a, const ForceStatement &b);

// Comparison statements, in list order.
class StatementGroup
{
  public:
    void add(ForceStatement &statement);
    void mark_matched();

    // The first index from the given one on whose statement is not quiet with the reference; the size
    // when there is none.
    std::size_t next_loud(std::size_t index, const ForceStatement &reference);

    ForceStatement &operator[](std::size_t index) const
    {
        return *statements_[index];
    }
    std::size_t size() const
    {
        return statements_.size();
    }

  private:
    std::size_t end_of_run(std::size_t index);

    std::vector<ForceStatement *> statements_;
    std::vector<std::size_t> run_ends_; // of the quiet twins that begin at each index, as far as known
    bool marked_ = false;
};

// The statements that one reference statement meets.
class ForceMeetings
{
  public:
    ForceMeetings(ForceStatement &reference, StatementGroup *same_time, StatementGroup *timeless);

    // The next one that is not quiet with it; null at the end.
    ForceStatement *next();

    // Whether any was passed over behind the last one that next returned.
    bool end_quietly() const;

  private:
    ForceStatement &reference_;
    StatementGroup *groups_[2];
    std::size_t next_[2] = {0, 0};
    const ForceStatement *last_ = nullptr;
};

// The statements of a comparison list by time.
class ForcePartners
{
  public:
    explicit ForcePartners(TPsoln *list);

    // Marks the reference and all that it meets as matched.
    ForceMeetings meet(ForceStatement &reference);

  private:
    std::deque<ForceStatement> statements_;
    std::map<double, StatementGroup> by_time_;
    StatementGroup timeless_; // those whose time is a NaN
    StatementGroup all_;
    StatementGroup none_;
};

#endif
