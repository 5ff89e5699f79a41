// SPDX-License-Identifier: MIT
#include "compare/force_compare.h"

#include "compare/analysis_table.h"
#include "compare/difference_lines.h"
#include "compare/force_partners.h"
#include "compare/missing_lines.h"
#include "compare/pair_index.h"
#include "compare/solution_compare.h"
#include "compare/table_headers.h"

#include <algorithm>
#include <utility>

namespace
{

struct ForceFindings {
    int fails = 0;
    unsigned missing = 0;
    unsigned bits = 0;
};

// The comparison of one reference statement with those that it meets. It gives what compare_signals
// and find_missing_signals would give for each pair, but looks at values that are matched already only
// where another value is matched with them.
class StatementComparison
{
  public:
    StatementComparison(ForceStatement &reference, int code, ForceFindings &findings)
        : reference_(reference), code_(code), findings_(findings)
    {
    }

    void compare_with(ForceStatement &other)
    {
        findings_.bits |= report_force_difference(*reference_.soln, *other.soln);
        if (!other.open.empty()) {
            compare_values(other);
        }
        for (const Isoln *value : reference_.open) {
            findings_.bits |= report_missing_signal(*value, code_, Side::COMPARISON);
        }
        for (const Isoln *value : other.open) {
            findings_.bits |= report_missing_signal(*value, code_, Side::REFERENCE);
        }
        findings_.missing += static_cast<unsigned>(reference_.open.size() + other.open.size());
    }

  private:
    // A value of the reference that is matched is matched again by a further statement.
    void compare_values(ForceStatement &other)
    {
        if (values_.empty()) {
            index_values();
        }
        std::vector<std::pair<std::uint32_t, const Isoln *>> pairs; // by place in the reference
        for (Isoln *value : other.open) {
            const std::uint32_t place = index_.take(*value);
            if (place != PairIndex<Isoln>::kNone) {
                pairs.emplace_back(place, value);
            }
        }
        for (auto pair = pairs.rbegin(); pair != pairs.rend(); ++pair) {
            index_.put_back(pair->first);
        }
        std::sort(pairs.begin(), pairs.end());
        for (const auto &[place, value] : pairs) {
            findings_.bits |= compare_value_pair(*values_[place], *value, code_, &findings_.fails);
        }
        reference_.drop_matched();
        other.drop_matched();
    }

    void index_values()
    {
        for (Isoln *value = reference_.soln->isoln; value != nullptr; value = value->next) {
            values_.push_back(value);
            index_.add(value);
        }
    }

    ForceStatement &reference_;
    int code_;
    ForceFindings &findings_;
    std::vector<const Isoln *> values_;
    PairIndex<Isoln> index_;
};

void compare_statement(ForceStatement &reference, ForcePartners &partners, int code, ForceFindings &findings)
{
    StatementComparison comparison(reference, code, findings);
    ForceMeetings meetings = partners.meet(reference);
    set_force_place(reference.soln->time);
    while (ForceStatement *other = meetings.next()) {
        announce_force_time(reference.soln->time);
        comparison.compare_with(*other);
    }
    if (meetings.end_quietly()) { // a pair that was passed over announces its time all the same
        announce_force_time(reference.soln->time);
    }
}

unsigned report_missing_statements(const TPsoln *list, Side lacking)
{
    unsigned count = 0;
    for (const TPsoln *statement = list; statement != nullptr; statement = statement->next) {
        if (!statement->matched) {
            ++count;
            report_missing_statement(*statement, lacking);
        }
    }
    return count;
}

} // namespace

unsigned find_missing_TPsolutions(TPsoln *ref, TPsoln *cmp)
{
    const unsigned missing = report_missing_statements(ref, Side::COMPARISON);
    return missing + report_missing_statements(cmp, Side::REFERENCE);
}

unsigned force_compare(TPsoln *ref, TPsoln *cmp)
{
    new_force_time = 0;
    ForceFindings findings;
    ForcePartners partners(cmp);
    std::size_t place = 0;
    for (TPsoln *soln = ref; soln != nullptr; soln = soln->next) {
        ForceStatement statement(*soln, place++);
        // Results go under the analysis of the first statement, also where statements differ.
        compare_statement(statement, partners, ref->analysis, findings);
    }
    set_force_place({});
    findings.missing += find_missing_TPsolutions(ref, cmp);
    const TPsoln *head = ref != nullptr ? ref : cmp;
    print_tk_summary(findings.fails, static_cast<int>(findings.missing),
                     analysis_row(head->analysis == TR_FORCE ? TR_FORCE : PSS_FORCE).label);
    return findings.bits | bits_of_missing(findings.missing);
}
