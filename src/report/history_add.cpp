// SPDX-License-Identifier: MIT
#include "report/history_add.h"

#include <algorithm>

namespace report
{

namespace
{

using Number = std::int64_t;

// So that a night on which everything fails neither takes minutes nor fills the disk.
constexpr std::size_t kMostFindings = 200000; // of a run
constexpr std::size_t kMostOfPair = 1000;
constexpr std::size_t kFewestOfPair = 10; // even then

std::size_t most_of_pair(const Run &run)
{
    std::size_t failing = 1;
    for (const RunPair &pair : run.pairs) {
        failing += pair.findings.empty() ? 0 : 1;
    }
    return std::clamp(kMostFindings / failing, kFewestOfPair, kMostOfPair);
}

// What is known of a pair before this run.
struct Before {
    std::optional<Number> run;       // newest one that had it
    std::optional<Number> known_run; // newest one of which all findings are known
    std::optional<Number> first_bad; // of the run above, where the pair did not pass
    std::optional<Number> last_good; // of the same
};

class Adder
{
  public:
    Adder(Sqlite &database, Number number, std::size_t most_findings)
        : number_(number), most_findings_(most_findings),
          find_pair_(database, "SELECT pair FROM pairs WHERE path = ?"),
          add_pair_(database, "INSERT INTO pairs(path) VALUES(?) RETURNING pair"),
          last_visit_(database, "SELECT last_run, first_run FROM visits WHERE pair = ? "
                                "ORDER BY first_run DESC LIMIT 1"),
          extend_visit_(database, "UPDATE visits SET last_run = ? WHERE pair = ? AND first_run = ?"),
          add_visit_(database, "INSERT INTO visits VALUES(?, ?, ?)"),
          find_failure_(database, "SELECT known_run, first_bad, last_good FROM failures "
                                  "WHERE run = ? AND pair = ?"),
          add_failure_(database, "INSERT OR IGNORE INTO failures VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?)"),
          find_signal_(database, "SELECT signal FROM signals WHERE pair = ? AND key = ?"),
          add_signal_(database, "INSERT INTO signals(pair, key, analysis, name) VALUES(?, ?, ?, ?) "
                                "RETURNING signal"),
          find_finding_(database, "SELECT run, first_bad, last_good FROM findings "
                                  "WHERE signal = ? AND run < ? ORDER BY run DESC LIMIT 1"),
          add_finding_(database, "INSERT OR IGNORE INTO findings VALUES(?, ?, ?, ?, ?, ?)")
    {
    }

    void add(const RunPair &pair)
    {
        const Number id = id_of(find_pair_.with(pair.path), add_pair_, pair.path);
        const Before before = visit(id);
        if (pair.grade == 0) {
            return;
        }
        const std::size_t kept = std::min(pair.findings.size(), most_findings_);
        const bool are_all_known = pair.has_findings && pair.finding_count <= static_cast<Number>(kept);
        const std::optional<Number> known_run = are_all_known ? number_ : before.known_run;
        const RunFinding worst = kept == 0 ? RunFinding() : pair.findings[0];
        add_failure_
            .with(number_, id, Number{pair.grade}, pair.finding_count, worst.abs_err, worst.rel_err,
                  before.first_bad.value_or(number_), before.first_bad ? before.last_good : before.run,
                  known_run)
            .finish();
        for (std::size_t i = 0; i < kept; ++i) {
            add(id, pair.findings[i], before);
        }
    }

  private:
    // The number of what was looked for, which is added where it is not there.
    template <typename... Values> static Number id_of(Query &found, Query &adding, const Values &...values)
    {
        if (found.next()) {
            return found.integer(0);
        }
        adding.with(values...).next();
        const Number id = adding.integer(0);
        adding.finish();
        return id;
    }

    // Notes that the pair was part of the run.
    Before visit(Number pair)
    {
        Before before;
        if (!last_visit_.with(pair).next()) {
            add_visit_.with(pair, number_, number_).finish();
            return before;
        }
        const Number last_run = last_visit_.integer(0);
        const Number first_run = last_visit_.integer(1);
        last_visit_.finish();
        before.run = before.known_run = last_run;
        if (last_run + 1 == number_) {
            extend_visit_.with(number_, pair, first_run).finish();
        } else if (last_run < number_) {
            add_visit_.with(pair, number_, number_).finish();
        }
        if (find_failure_.with(last_run, pair).next()) {
            before.known_run = find_failure_.maybe_integer(0);
            before.first_bad = find_failure_.integer(1);
            before.last_good = find_failure_.maybe_integer(2);
        }
        return before;
    }

    void add(Number pair, const RunFinding &finding, const Before &before)
    {
        const Number signal = id_of(find_signal_.with(pair, finding.key), add_signal_, pair, finding.key,
                                    finding.analysis, finding.name);
        Number first_bad = number_;
        std::optional<Number> last_good = before.known_run;
        // It goes on failing unless a run behind the last one in which it failed is known to be without it.
        if (find_finding_.with(signal, number_).next() &&
            find_finding_.integer(0) >= before.known_run.value_or(0)) {
            first_bad = find_finding_.integer(1);
            last_good = find_finding_.maybe_integer(2);
        }
        find_finding_.finish();
        add_finding_.with(number_, signal, finding.abs_err, finding.rel_err, first_bad, last_good).finish();
    }

    Number number_;
    std::size_t most_findings_;
    Query find_pair_;
    Query add_pair_;
    Query last_visit_;
    Query extend_visit_;
    Query add_visit_;
    Query find_failure_;
    Query add_failure_;
    Query find_signal_;
    Query add_signal_;
    Query find_finding_;
    Query add_finding_;
};

// Takes the newest run out again.
void remove_newest(Sqlite &database, Number run)
{
    Query(database, "DELETE FROM findings WHERE run = ?").with(run).finish();
    Query(database, "DELETE FROM failures WHERE run = ?").with(run).finish();
    Query(database, "DELETE FROM visits WHERE first_run = ?").with(run).finish();
    Query(database, "UPDATE visits SET last_run = last_run - 1 WHERE last_run = ?").with(run).finish();
    Query(database, "DELETE FROM runs WHERE run = ?").with(run).finish();
}

Number newest_run(const Sqlite &database)
{
    Query newest(database, "SELECT max(run) FROM runs");
    return newest.next() ? newest.maybe_integer(0).value_or(0) : 0;
}

} // namespace

Added add_run(Sqlite &database, const Run &run)
{
    Transaction transaction(database, "BEGIN IMMEDIATE");
    Number number = newest_run(database) + 1;
    {
        Query known(database, "SELECT run FROM runs WHERE out = ? AND began = ?");
        if (known.with(run.out, run.began).next()) {
            if (known.integer(0) != number - 1) {
                return Added::OLDER;
            }
            --number;
        }
    }
    const bool is_new = number > newest_run(database);
    if (!is_new) {
        remove_newest(database, number);
    }
    const auto passed = std::count_if(run.pairs.begin(), run.pairs.end(),
                                      [](const RunPair &pair) { return pair.grade == 0; });
    Query(database, "INSERT INTO runs VALUES(?, ?, ?, ?, ?, ?)")
        .with(number, run.began, run.out, run.arguments, static_cast<Number>(run.pairs.size()),
              static_cast<Number>(passed))
        .finish();
    Adder adder(database, number, most_of_pair(run));
    for (const RunPair &pair : run.pairs) {
        adder.add(pair);
    }
    transaction.commit();
    return is_new ? Added::NEW : Added::REPLACED;
}

} // namespace report
