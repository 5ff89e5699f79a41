// SPDX-License-Identifier: MIT
#include "report/signal_courses.h"

#include "report/file_text.h"

#include <cmath>
#include <limits>
#include <string_view>

namespace report
{

namespace
{

// What is wrong, of "r1m0/TR/missing signal in golden/V(OUT)": a key has it behind the second slash.
std::string what_of(const std::string &key)
{
    constexpr std::string_view kMissing = "missing ";
    constexpr std::string_view kDifference = "difference ";
    std::string_view rest = key;
    take_field(rest, '/');
    take_field(rest, '/');
    std::string_view kind = take_field(rest, '/');
    const std::size_t side = kind.rfind(" in ");
    if (kind.substr(0, kMissing.size()) == kMissing && side != std::string_view::npos) {
        return std::string(kind.substr(kMissing.size(), side - kMissing.size())) + " missing" +
               std::string(kind.substr(side));
    }
    if (kind.substr(0, kDifference.size()) == kDifference) {
        return std::string(kind.substr(kDifference.size(), side - kDifference.size())) + " differ";
    }
    return "fails";
}

// Of moments of one run the worse one.
bool is_worse(const Moment &a, const Moment &b)
{
    const auto rank = [](const Moment &moment) {
        return moment.standing == Standing::FAILED    ? 3
               : moment.standing == Standing::UNKNOWN ? 2
               : moment.standing == Standing::PASSED  ? 1
                                                      : 0;
    };
    const auto product = [](const Moment &moment) {
        const double value = moment.abs_err.value_or(0.0) * moment.rel_err.value_or(0.0);
        return std::isnan(value) ? std::numeric_limits<double>::infinity() : value;
    };
    return rank(a) != rank(b) ? rank(a) > rank(b) : product(a) > product(b);
}

void add_course(Course &all, const Course &one)
{
    for (std::size_t i = 0; i < all.recent.size() && i < one.recent.size(); ++i) {
        if (is_worse(one.recent[i], all.recent[i])) {
            all.recent[i] = one.recent[i];
        }
    }
    if (one.first_bad && (!all.first_bad || one.first_bad->number < all.first_bad->number)) {
        all.first_bad = one.first_bad;
        all.last_good = one.last_good;
    }
}

// Of a signal that fails now other pairs may have failed before, so that the row of failures is longer than
// that of any pair.
void join_failures(Course &course, const std::vector<RunMark> &runs)
{
    std::size_t first = runs.size();
    std::optional<RunMark> passed;
    for (std::size_t i = runs.size(); i-- > 0 && course.first_bad && !passed;) {
        if (course.recent[i].standing == Standing::FAILED) {
            first = i;
        } else if (course.recent[i].standing == Standing::PASSED) {
            passed = runs[i];
        }
    }
    if (first < runs.size() && (passed || runs[first].number < course.first_bad->number)) {
        course.first_bad = runs[first];
        course.last_good = passed;
    }
}

} // namespace

std::string signal_id(const std::string &analysis, const std::string &name, const std::string &what)
{
    return analysis + '\t' + name + '\t' + what;
}

std::unordered_map<std::string, Course> courses_of_signals(const Courses &courses)
{
    std::unordered_map<std::string, Course> all;
    for (const PairCourse &pair : courses.pairs) {
        for (const SignalCourse &signal : pair.signals) {
            Course &course = all[signal_id(signal.analysis, signal.name, what_of(signal.key))];
            course.recent.resize(courses.runs.size());
            add_course(course, signal.course);
        }
    }
    for (auto &[id, course] : all) {
        join_failures(course, courses.runs);
    }
    return all;
}

} // namespace report
