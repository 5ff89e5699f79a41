// SPDX-License-Identifier: MIT
#include "report/history_courses.h"

#include <algorithm>
#include <unordered_map>

namespace report
{

namespace
{

using Number = std::int64_t;

bool is_before(const RunMark &run, Number number)
{
    return run.number < number;
}

int flaps_of(const std::vector<Moment> &moments)
{
    int flaps = 0;
    Standing last = Standing::ABSENT;
    for (const Moment &moment : moments) {
        if (moment.standing == Standing::PASSED || moment.standing == Standing::FAILED) {
            flaps += last != Standing::ABSENT && last != moment.standing ? 1 : 0;
            last = moment.standing;
        }
    }
    return flaps;
}

// Columns abs_err, rel_err, first_bad and last_good of a row, from the given one on.
struct Errors {
    const Query &row;
    int column;

    Moment moment() const
    {
        return {Standing::FAILED, row.maybe_real(column), row.maybe_real(column + 1)};
    }
    Number first_bad() const
    {
        return row.integer(column + 2);
    }
    std::optional<Number> last_good() const
    {
        return row.maybe_integer(column + 3);
    }
};

// The recent runs, oldest first.
std::vector<RunMark> marks_of_recent_runs(Sqlite &database)
{
    std::vector<RunMark> runs;
    Query row(database, "SELECT run, began FROM runs ORDER BY run DESC LIMIT ?");
    row.with(Number{kRecentRuns});
    while (row.next()) {
        runs.push_back({row.integer(0), row.integer(1)});
    }
    std::reverse(runs.begin(), runs.end());
    return runs;
}

class Reader
{
  public:
    Reader(Sqlite &database, std::size_t most_signals)
        : database_(database), most_signals_(most_signals), runs_(marks_of_recent_runs(database)),
          began_(database, "SELECT began FROM runs WHERE run = ?")
    {
    }

    Courses read()
    {
        if (!runs_.empty()) {
            read_failures();
            read_visits();
            read_findings();
            finish();
        }
        return {std::move(runs_), std::move(pairs_)};
    }

  private:
    Number oldest() const
    {
        return runs_.front().number;
    }

    // Where a run is among the recent ones; nothing for a run that is none of them.
    std::optional<std::size_t> place_of(Number run) const
    {
        const auto at = std::lower_bound(runs_.begin(), runs_.end(), run, is_before);
        const bool is_recent = at != runs_.end() && at->number == run;
        return is_recent ? std::optional(static_cast<std::size_t>(at - runs_.begin())) : std::nullopt;
    }

    RunMark mark_of(Number run)
    {
        const auto [known, is_new] = marks_.try_emplace(run, RunMark{run, 0});
        if (is_new && began_.with(run).next()) {
            known->second.began = began_.integer(0);
        }
        return known->second;
    }

    void set(Course &course, std::size_t place, const Errors &errors)
    {
        course.recent[place] = errors.moment();
        if (place + 1 != runs_.size()) {
            return;
        }
        course.first_bad = mark_of(errors.first_bad());
        if (const auto last_good = errors.last_good()) {
            course.last_good = mark_of(*last_good);
        }
    }

    std::size_t new_pair(Number id)
    {
        Query path(database_, "SELECT path FROM pairs WHERE pair = ?");
        PairCourse pair;
        pair.path = path.with(id).next() ? path.text(0) : "";
        pair.grade = -1;
        pair.course.recent.resize(runs_.size());
        pairs_.push_back(std::move(pair));
        of_signals_.emplace_back(runs_.size(), Standing::ABSENT);
        return pairs_.size() - 1;
    }

    void read_failures()
    {
        Query row(database_, "SELECT pair, run, abs_err, rel_err, first_bad, last_good, grade, known_run "
                             "FROM failures WHERE run >= ?");
        row.with(oldest());
        while (row.next()) {
            const auto place = place_of(row.integer(1));
            if (!place) {
                continue;
            }
            const auto [known, is_new] = places_.try_emplace(row.integer(0), 0);
            if (is_new) {
                known->second = new_pair(row.integer(0));
            }
            PairCourse &pair = pairs_[known->second];
            set(pair.course, *place, {row, 2});
            const bool are_known = row.maybe_integer(7) == row.integer(1);
            of_signals_[known->second][*place] = are_known ? Standing::PASSED : Standing::UNKNOWN;
            if (*place + 1 == runs_.size()) {
                pair.grade = static_cast<int>(std::clamp<Number>(row.integer(6), 0, 99));
            }
        }
    }

    // In runs that had the pair and in which it did not fail it passed, and all of its signals.
    void read_visits()
    {
        Query row(database_, "SELECT pair, first_run, last_run FROM visits WHERE last_run >= ?");
        row.with(oldest());
        while (row.next()) {
            const auto pair = places_.find(row.integer(0));
            if (pair == places_.end()) {
                continue;
            }
            Course &course = pairs_[pair->second].course;
            const Number last = row.integer(2);
            auto run = std::lower_bound(runs_.begin(), runs_.end(), row.integer(1), is_before);
            for (; run != runs_.end() && run->number <= last; ++run) {
                const auto place = static_cast<std::size_t>(run - runs_.begin());
                if (course.recent[place].standing == Standing::ABSENT) {
                    course.recent[place].standing = Standing::PASSED;
                    of_signals_[pair->second][place] = Standing::PASSED;
                }
            }
        }
    }

    struct SignalPlace {
        std::size_t pair = 0;
        std::size_t signal = 0;
        bool is_shown = false;
    };

    // Where the course of a signal goes; it is not shown when there are too many.
    SignalPlace new_signal(Number id)
    {
        SignalPlace place;
        Query signal(database_, "SELECT pair, key, analysis, name FROM signals WHERE signal = ?");
        if (most_signals_ == 0 || !signal.with(id).next()) {
            return place;
        }
        const auto pair = places_.find(signal.integer(0));
        if (pair == places_.end()) {
            return place;
        }
        --most_signals_;
        SignalCourse course = {signal.text(1), signal.text(2), signal.text(3), {}};
        for (const Standing standing : of_signals_[pair->second]) {
            course.course.recent.push_back({standing, {}, {}});
        }
        auto &signals = pairs_[pair->second].signals;
        signals.push_back(std::move(course));
        return {pair->second, signals.size() - 1, true};
    }

    // The newest run first, and of a run the signals that were found first: what is left out is the rest.
    void read_findings()
    {
        std::unordered_map<Number, SignalPlace> signals;
        Query row(database_, "SELECT signal, abs_err, rel_err, first_bad, last_good FROM findings "
                             "WHERE run = ? ORDER BY signal");
        for (std::size_t place = runs_.size(); place-- > 0;) {
            row.with(runs_[place].number);
            while (row.next()) {
                const auto [known, is_new] = signals.try_emplace(row.integer(0));
                if (is_new) {
                    known->second = new_signal(row.integer(0));
                }
                const SignalPlace &signal = known->second;
                if (signal.is_shown) {
                    set(pairs_[signal.pair].signals[signal.signal].course, place, {row, 1});
                }
            }
        }
    }

    void finish()
    {
        for (PairCourse &pair : pairs_) {
            pair.course.flaps = flaps_of(pair.course.recent);
            if (pair.course.recent.back().standing == Standing::PASSED) {
                pair.grade = 0;
            }
            for (SignalCourse &signal : pair.signals) {
                signal.course.flaps = flaps_of(signal.course.recent);
            }
            std::sort(pair.signals.begin(), pair.signals.end(),
                      [](const SignalCourse &a, const SignalCourse &b) { return a.key < b.key; });
        }
        std::sort(pairs_.begin(), pairs_.end(),
                  [](const PairCourse &a, const PairCourse &b) { return a.path < b.path; });
    }

    Sqlite &database_;
    std::size_t most_signals_;
    std::vector<RunMark> runs_;
    Query began_;
    std::unordered_map<Number, RunMark> marks_;
    std::vector<PairCourse> pairs_;
    std::vector<std::vector<Standing>> of_signals_;  // of each pair: what a signal is that did not fail
    std::unordered_map<Number, std::size_t> places_; // of pairs
};

} // namespace

Courses read_courses(Sqlite &database, std::size_t most_signals)
{
    const Transaction snapshot(database, "BEGIN"); // another process may be adding a run
    return Reader(database, most_signals).read();
}

} // namespace report
