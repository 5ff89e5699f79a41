// SPDX-License-Identifier: MIT
#include "report/history_table.h"

#include "report/pair.h"
#include "report/text.h"
#include "report/words.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iomanip>
#include <iostream>
#include <limits>

namespace report
{

namespace
{

constexpr int kNoData = 7;
constexpr int kTimeWidth = 16; // as run_time_text() has it

constexpr const char *kBars[] = {"▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"};
constexpr double kHighest = 7.0; // of these
constexpr const char *kMiddleBar = "▄";

// The logarithm of the product of both errors. Nothing where it has no finite value.
std::optional<double> height_of(const Moment &moment)
{
    if (moment.standing != Standing::FAILED || !moment.abs_err || !moment.rel_err) {
        return std::nullopt;
    }
    const double height = std::log(*moment.abs_err) + std::log(*moment.rel_err);
    return std::isfinite(height) ? std::optional(height) : std::nullopt;
}

const char *mark_of(const Moment &moment, double lowest, double highest)
{
    switch (moment.standing) {
    case Standing::ABSENT:
        return " ";
    case Standing::UNKNOWN:
        return "?";
    case Standing::PASSED:
        return ".";
    default:
        break;
    }
    const auto height = height_of(moment);
    if (!height) {
        return "!";
    }
    const double part = (*height - lowest) / (highest - lowest);
    return highest > lowest ? kBars[std::lround(part * kHighest)] : kMiddleBar;
}

std::string grade_now(int grade)
{
    return grade == kNoData ? "NO_DATA" : grade < 0 ? "-" : std::string(grade_word(grade));
}

std::string signal_now(const Course &course)
{
    switch (course.recent.back().standing) {
    case Standing::FAILED:
        return "fails";
    case Standing::PASSED:
        return "passes";
    case Standing::UNKNOWN:
        return "?";
    default:
        return "-";
    }
}

std::string time_or_dash(const std::optional<RunMark> &run)
{
    return run ? run_time_text(*run) : "-";
}

void write_line(std::ostream &out, const std::string &now, const Course &course, const std::string &what)
{
    const auto bad = std::count_if(course.recent.begin(), course.recent.end(),
                                   [](const Moment &moment) { return moment.standing == Standing::FAILED; });
    out << std::left << std::setw(8) << now << "  " << std::setw(kTimeWidth) << time_or_dash(course.first_bad)
        << "  " << std::setw(kTimeWidth) << time_or_dash(course.last_good) << std::right << std::setw(5)
        << bad << std::setw(7) << course.flaps << "  " << course_line(course.recent) << "  " << what << '\n';
}

bool is_shown_before(const PairCourse *a, const PairCourse *b)
{
    const auto since = [](const PairCourse *pair) {
        return pair->course.first_bad ? pair->course.first_bad->number : 0;
    };
    return since(a) > since(b);
}

void write_heading(std::ostream &out, const std::vector<RunMark> &runs)
{
    out << "Runs " << runs.front().number << " to " << runs.back().number << ": "
        << run_time_text(runs.front()) << " to " << run_time_text(runs.back()) << " UTC\n\n"
        << "now       fails since       last good           bad  flaps  " << std::left
        << std::setw(static_cast<int>(runs.size())) << "course"
        << "  what\n";
}

} // namespace

std::string course_line(const std::vector<Moment> &moments)
{
    double lowest = std::numeric_limits<double>::infinity();
    double highest = -lowest;
    for (const Moment &moment : moments) {
        if (const auto height = height_of(moment)) {
            lowest = std::min(lowest, *height);
            highest = std::max(highest, *height);
        }
    }
    std::string line;
    for (const Moment &moment : moments) {
        line += mark_of(moment, lowest, highest);
    }
    return line;
}

void write_history_table(std::ostream &out, const Courses &courses)
{
    if (courses.runs.empty()) {
        out << "No runs yet\n";
        return;
    }
    write_heading(out, courses.runs);
    std::vector<const PairCourse *> pairs;
    for (const PairCourse &pair : courses.pairs) {
        pairs.push_back(&pair);
    }
    std::stable_sort(pairs.begin(), pairs.end(), is_shown_before);
    for (const PairCourse *pair : pairs) {
        write_line(out, grade_now(pair->grade), pair->course, terminal_line(pair->path));
        for (const SignalCourse &signal : pair->signals) {
            write_line(out, signal_now(signal.course), signal.course, "  " + terminal_line(signal.key));
        }
    }
}

int print_history(const std::string &path)
{
    try {
        write_history_table(std::cout, History(path, History::Access::READ).courses());
    } catch (const HistoryFault &fault) {
        std::fprintf(stderr, "tresk-report: %s\n", fault.what());
        return kWrongCall;
    }
    if (!std::cout.flush()) {
        std::perror("tresk-report: cannot print the history");
        return kNotWritten;
    }
    return 0;
}

} // namespace report
