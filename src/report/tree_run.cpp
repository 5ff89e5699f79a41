// SPDX-License-Identifier: MIT
#include "report/tree_run.h"

#include "report/file_text.h"
#include "report/output_folder.h"
#include "report/progress.h"
#include "report/text.h"
#include "report/words.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <sys/stat.h>
#include <unistd.h>
#include <unordered_map>
#include <utility>

namespace report
{

namespace
{

constexpr std::size_t kMostRecord = 1 << 16;  // of a grade or a summary: one line with a path
constexpr std::size_t kMostList = 1ULL << 30; // of what is one line a pair

bool exists(const std::string &path)
{
    return access(path.c_str(), F_OK) == 0;
}

std::int64_t read_count(std::string_view text)
{
    std::int64_t count = 0;
    std::from_chars(text.data(), text.data() + text.size(), count);
    return count;
}

// ":.gz" behind size and times.
std::string suffix_of(std::string_view stamp)
{
    const std::size_t colon = stamp.find(':');
    return colon == std::string_view::npos ? "" : std::string(stamp.substr(colon + 1));
}

// Seconds that parallel measured for lines of its list. Its log has the number of the line first.
std::unordered_map<std::string, double> read_joblog(const std::string &out)
{
    const std::string list = read_text(out + "/todo", kMostList).value_or("");
    const std::string log = read_text(out + "/joblog", kMostList).value_or("");
    const std::vector<std::string_view> todo = lines_of(list);
    std::unordered_map<std::string, double> seconds;
    for (std::string_view line : lines_of(log)) {
        const std::int64_t number = read_count(take_field(line, '\t'));
        take_field(line, '\t'); // host
        take_field(line, '\t'); // start
        std::string_view runtime = take_field(line, '\t');
        runtime.remove_prefix(std::min(runtime.find_first_not_of(' '), runtime.size()));
        const std::optional<double> value = read_number(runtime);
        if (value && number >= 1 && static_cast<std::size_t>(number) <= todo.size()) {
            seconds[std::string(todo[static_cast<std::size_t>(number) - 1])] = *value;
        }
    }
    return seconds;
}

// "golden: /path" and so on, a line each.
void read_arguments(TreeRun &run)
{
    const std::string text = read_text(run.out + "/arguments", kMostList).value_or("");
    for (std::string_view line : lines_of(text)) {
        const std::string_view name = take_field(line, ':');
        line.remove_prefix(line.empty() ? 0 : 1);
        if (name == "golden") {
            run.golden = line;
        } else if (name == "regression") {
            run.regression = line;
        } else if (name == "options") {
            run.options = line;
        }
    }
}

// Grade, exit status, remark and the line of the list that they are of.
void read_grade(const TreeRun &run, std::string_view line, TreePair &pair)
{
    pair.status = "-";
    pair.remark = "(not run)";
    const auto text = read_text(run.out + "/grades/" + pair.path + ".grade", kMostRecord);
    if (!text) {
        return;
    }
    std::string_view rest = *text;
    const int grade = read_tree_grade(take_field(rest, '\t'));
    const std::string_view status = take_field(rest, '\t');
    const std::string_view remark = take_field(rest, '\t');
    if (take_field(rest, '\n') == line) {
        pair.grade = grade >= 0 ? grade : kNoGrade;
        pair.status = status;
        pair.remark = remark;
    }
}

void read_summary(const TreeRun &run, TreePair &pair)
{
    const std::string folder = run.report_folder(pair) + '/';
    const auto text = read_text(folder + kSummaryFile, kMostRecord);
    if (!text) {
        return;
    }
    std::string_view rest = *text;
    const auto next = [&rest] {
        return take_field(rest, '\t');
    };
    next(); // the grade, as tresk gave it
    next(); // its exit status
    pair.failing = read_count(next());
    pair.missing = read_count(next());
    pair.differences = read_count(next());
    pair.analysis = next();
    pair.signal = next();
    pair.abs = read_number(next());
    pair.rel = read_number(next());
    if (const auto seconds = read_number(next())) {
        pair.seconds = seconds;
    }
    pair.golden_sha256 = next();
    pair.regression_sha256 = take_field(rest, '\n');
    pair.has_report = true;
    pair.has_page = exists(folder + kPageFile);
}

TreePair read_pair(const TreeRun &run, std::string_view line)
{
    TreePair pair;
    std::string_view rest = line;
    pair.options = take_field(rest, '\t');
    take_field(rest, '\t'); // options for all
    pair.golden_suffix = suffix_of(take_field(rest, '\t'));
    pair.regression_suffix = suffix_of(take_field(rest, '\t'));
    pair.path = rest;
    read_grade(run, line, pair);
    pair.has_transcript = exists(run.transcript(pair));
    return pair;
}

void read_missing(TreeRun &run)
{
    const std::string text = read_text(run.out + "/missing", kMostList).value_or("");
    for (std::string_view line : lines_of(text)) {
        TreePair pair;
        pair.lacks = take_field(line, '\t');
        pair.path = line;
        pair.grade = 5; // as of a file that is not there
        pair.status = "-";
        pair.remark = "(missing in " + pair.lacks + ")";
        run.pairs.push_back(std::move(pair));
    }
}

} // namespace

std::string_view tree_grade_word(int grade)
{
    return grade == kNoDataGrade ? "NO_DATA" : grade_word(grade);
}

int read_tree_grade(std::string_view text)
{
    for (int grade = 0; grade < kTreeGrades; ++grade) {
        if (text == tree_grade_word(grade) || text == std::to_string(grade)) {
            return grade;
        }
    }
    return -1;
}

std::string TreeRun::report_folder(const TreePair &pair) const
{
    return out + "/report/" + pair.path;
}

std::string TreeRun::transcript(const TreePair &pair) const
{
    return out + "/transcripts/" + pair.path + ".txt";
}

TreeRun read_tree(const std::string &out)
{
    TreeRun run;
    run.out = out;
    const auto list = read_text(out + "/pairs", kMostList);
    struct stat status {
    };
    if (!list || list->empty() || stat((out + "/pairs").c_str(), &status) != 0) {
        throw NoTree("no list of pairs in " + terminal_line(out));
    }
    run.began = status.st_mtime;
    read_arguments(run);
    const std::vector<std::string_view> lines = lines_of(*list);
    const auto joblog = read_joblog(out);
    Progress progress("pairs read", lines.size());
    for (const std::string_view line : lines) {
        TreePair pair = read_pair(run, line);
        if (pair.path.empty()) {
            throw NoTree("a line without a path in the list of pairs in " + terminal_line(out));
        }
        const auto measured = joblog.find(std::string(line));
        if (measured != joblog.end()) {
            pair.seconds = measured->second;
        }
        read_summary(run, pair);
        run.pairs.push_back(std::move(pair));
        progress.show(run.pairs.size());
    }
    read_missing(run);
    for (const TreePair &pair : run.pairs) {
        ++run.counts[static_cast<std::size_t>(pair.grade)];
    }
    std::sort(run.pairs.begin(), run.pairs.end(), worse_pair);
    return run;
}

double error_product(const TreePair &pair)
{
    if (!pair.abs || !pair.rel) {
        return -1.0;
    }
    const double product = *pair.abs * *pair.rel;
    return std::isnan(product) ? std::numeric_limits<double>::infinity() : product;
}

bool worse_pair(const TreePair &a, const TreePair &b)
{
    const double product_a = error_product(a);
    const double product_b = error_product(b);
    const std::int64_t found_a = a.failing + a.missing + a.differences;
    const std::int64_t found_b = b.failing + b.missing + b.differences;
    if (a.grade != b.grade) {
        return a.grade > b.grade;
    }
    if (product_a != product_b) {
        return product_a > product_b;
    }
    return found_a != found_b ? found_a > found_b : a.path < b.path;
}

int worst_grade(const TreeRun &run, unsigned accepted)
{
    for (int grade = kTreeGrades - 1; grade > 0; --grade) {
        const bool is_accepted = (accepted >> static_cast<unsigned>(grade) & 1U) != 0;
        if (run.counts[static_cast<std::size_t>(grade)] != 0 && !is_accepted) {
            return grade;
        }
    }
    return 0;
}

} // namespace report
