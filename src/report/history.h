// SPDX-License-Identifier: MIT
// The history of a tree of comparisons: a file, an SQLite database, that keeps what the runs found, so that
// it can be asked since when something fails. docs/history.md describes its tables.
#ifndef TRESK_REPORT_HISTORY_H
#define TRESK_REPORT_HISTORY_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace report
{

class Sqlite;

constexpr int kRecentRuns = 30; // of which the course of the errors is known

// What a run found, as it is added to a history.

// One judged finding of a pair: a signal that fails, or something that is missing or differs.
struct RunFinding {
    std::string key;               // as in result.json: the same from run to run
    std::string analysis;          // "TR" ...; may be empty
    std::string name;              // of the signal; may be empty
    std::optional<double> abs_err; // NaN and infinities too; nothing where no error was judged
    std::optional<double> rel_err;
};

struct RunPair {
    std::string path; // below the tree: the same from run to run; any bytes
    int grade = 0;    // 0 (PASS) to 5, 6 (no grade) or 7 (no data)
    // Whether it has a report. A PASS needs none; the signals of others are not known then.
    bool has_findings = false;
    std::int64_t finding_count = 0;   // those judged, also beyond the list below
    std::vector<RunFinding> findings; // worst first
};

struct Run {
    std::string out;            // the folder of the run, absolute
    std::int64_t began = 0;     // seconds since 1970, UTC. A run is known by this and its folder.
    std::string arguments;      // of the comparisons, one line
    std::vector<RunPair> pairs; // no path twice
};

// What a history answers.

struct RunMark {
    std::int64_t number = 0; // 1 for the first run of the history
    std::int64_t began = 0;  // seconds since 1970, UTC
};

enum class Standing {
    ABSENT, // the pair was not part of the run
    // Of a signal: the pair did not pass, and has no report or more findings than are kept.
    UNKNOWN,
    PASSED,
    FAILED // of a pair: any grade but PASS
};

// What a pair, by its worst finding, or a signal was in a run.
struct Moment {
    Standing standing = Standing::ABSENT;
    std::optional<double> abs_err; // of FAILED only, as far as an error was judged
    std::optional<double> rel_err;
};

// How a pair or signal came to where it is.
struct Course {
    // The run since when it fails without a pass between, runs without it or without knowledge of it left
    // aside. Nothing when it does not fail in the newest run.
    std::optional<RunMark> first_bad;
    // The last run before that which it passed. Nothing when there is none.
    std::optional<RunMark> last_good;
    std::vector<Moment> recent; // in Courses::runs
    int flaps = 0;              // changes between PASSED and FAILED in recent
};

// Something that flaps changed this often in the recent runs: went wrong, was mended and went wrong again, or
// the other way round.
constexpr int kFlapping = 3;

struct SignalCourse {
    std::string key;
    std::string analysis;
    std::string name;
    Course course;
};

struct PairCourse {
    std::string path;
    int grade = 0; // in the newest run; -1 where it is not part of it
    Course course;
    std::vector<SignalCourse> signals; // that failed in a recent run, by key
};

struct Courses {
    std::vector<RunMark> runs;     // the last kRecentRuns, oldest first, the newest last
    std::vector<PairCourse> pairs; // that did not pass in one of them, by path
};

// The history cannot be used: no file, no history, damaged, locked, a full disk. The text says which, and
// starts with the path. What the file held before, it holds still.
struct HistoryFault : std::runtime_error {
    using std::runtime_error::runtime_error;
};

enum class Added {
    NEW,      // the run is the newest one now
    REPLACED, // it was the newest one already: what was known of it has been replaced
    OLDER     // it is an older one that is known already: left as it is
};

class History
{
  public:
    enum class Access {
        READ, // the file has to be there, and is not changed
        WRITE // a file that is not there is made
    };

    // Opens the history. A file that is no whole history of this program is refused before anything is
    // written. Throws HistoryFault.
    History(const std::string &path, Access access);
    ~History();
    History(const History &) = delete;
    History &operator=(const History &) = delete;

    // Adds a run: all of it or, when it throws HistoryFault, nothing. Waits for another process that adds
    // one. Of a pair the worst 1000 findings are kept, fewer where a run would have more than 200000.
    Added add(const Run &run);

    // What happened in the recent runs, with at most so many signals in all: those of the newest runs.
    // Throws HistoryFault.
    Courses courses(std::size_t most_signals = 50000);

  private:
    std::unique_ptr<Sqlite> database_;
};

// "2026-11-21 22:22" in UTC: how pages and tables name a run.
std::string run_time_text(const RunMark &run);

} // namespace report

#endif
