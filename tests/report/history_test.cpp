// SPDX-License-Identifier: MIT
#include "../test_support.h"
#include "report/history.h"
#include "report/history_table.h"
#include "report/signal_courses.h"

#include <cmath>
#include <filesystem>
#include <gtest/gtest.h>

namespace
{

using namespace report;

constexpr std::int64_t kDay = 86400;

RunFinding signal(const std::string &name, double error = 1e-3)
{
    return {"-/TR/area/" + name, "TR", name, error, error};
}

// A run as a letter of the table says, of a pair with bytes that are no text.
Run run_of(char letter, std::int64_t number)
{
    Run run{"/out", number * kDay, "-a 1", {{"other", 0, false, 0, {}}}};
    RunPair pair{"a\xFF'b.pun", letter == '.' ? 0 : 3, letter != 'n', 1, {}};
    if (letter == 'c') {
        pair.finding_count = 2;
    }
    if (letter != '.' && letter != 'n') {
        pair.findings = {signal(letter == 'B' ? "B" : "A")};
    }
    if (letter != '-') {
        run.pairs.push_back(pair);
    }
    return run;
}

std::string text_of(const Course &course)
{
    const auto number = [](const std::optional<RunMark> &run) {
        EXPECT_TRUE(!run || run->began == run->number * kDay);
        return run ? std::to_string(run->number) : "-";
    };
    return number(course.first_bad) + ',' + number(course.last_good) + ',' + std::to_string(course.flaps);
}

std::string line_of(const Course &course)
{
    std::string line;
    for (const Moment &moment : course.recent) {
        line += "-?.x"[static_cast<int>(moment.standing)];
    }
    return line;
}

TEST(History, AnswersSinceWhen)
{
    const std::string folder = make_folder();
    int number = 0;
    for (const TableRow &row : rows_of("tests/report/history_cases.md")) {
        History history(folder + "/" + std::to_string(++number), History::Access::WRITE);
        std::int64_t night = 0;
        for (const char letter : unescaped(row["runs"])) {
            history.add(run_of(letter, ++night));
            history.add(run_of('B', night)); // the newest run may be replaced
            EXPECT_EQ(history.add(run_of(letter, night)), Added::REPLACED) << row.place;
        }
        EXPECT_TRUE(night < 2 || history.add(run_of('A', 1)) == Added::OLDER);
        const Courses courses = history.courses();
        if (row["pair"] == "none") {
            EXPECT_TRUE(courses.pairs.empty()) << row.place;
            continue;
        }
        ASSERT_EQ(courses.pairs.size(), 1U) << row.place;
        const PairCourse &pair = courses.pairs[0];
        EXPECT_EQ(pair.path, "a\xFF'b.pun");
        EXPECT_EQ(text_of(pair.course), row["pair"]) << row.place;
        EXPECT_EQ(line_of(pair.course), row["pair's line"]) << row.place;
        EXPECT_EQ(pair.signals.at(0).key, "-/TR/area/A");
        EXPECT_EQ(text_of(pair.signals[0].course), row["A"]) << row.place;
        EXPECT_EQ(line_of(pair.signals[0].course), row["A's line"]) << row.place;
    }
    std::filesystem::remove_all(folder);
}

TEST(History, KeepsErrorsAndBounds)
{
    const std::string folder = make_folder();
    History history(folder + "/h", History::Access::WRITE);
    RunPair pair{"p", 5, true, 1002, {}};
    pair.findings = {signal("nan", kNan), signal("inf", kInf), {"missing", "", "", {}, {}}};
    for (int i = 0; i < 999; ++i) {
        pair.findings.push_back(signal("V" + std::to_string(i)));
    }
    for (int night = 0; night < kRecentRuns + 3; ++night) {
        history.add({"/out", night, "", {pair}});
    }
    const Courses courses = history.courses(500);
    EXPECT_EQ(courses.runs.size(), std::size_t{kRecentRuns});
    const auto &signals = courses.pairs.at(0).signals;
    EXPECT_EQ(signals.size(), 500U);
    EXPECT_EQ(courses.pairs[0].course.first_bad->number, 1);
    EXPECT_EQ(history.courses().pairs[0].signals.size(), 1000U); // of 1002
    const auto error_of = [&signals](const std::string &key) {
        for (const SignalCourse &course : signals) {
            if (course.key == key) {
                return course.course.recent[0].rel_err;
            }
        }
        return std::optional(-1.0);
    };
    EXPECT_TRUE(std::isnan(error_of("-/TR/area/nan").value()));
    EXPECT_EQ(error_of("-/TR/area/inf"), kInf);
    EXPECT_EQ(error_of("missing"), std::nullopt);
    std::filesystem::remove_all(folder);
}

TEST(History, DrawsErrorsAsALine)
{
    const auto fails = [](double error) {
        return Moment{Standing::FAILED, error, error};
    };
    EXPECT_EQ(
        course_line({{}, {Standing::UNKNOWN, {}, {}}, {Standing::PASSED, {}, {}}, fails(1e-9), fails(1e-2)}),
        " ?.▁█");
    EXPECT_EQ(
        course_line({fails(3), fails(3), fails(kNan), fails(kInf), fails(0), {Standing::FAILED, {}, {}}}),
        "▄▄!!!!");
}

// Whatever bytes are changed, the history is refused or answers; it is not written to before it was found
// whole.
TEST(History, SurvivesDamage)
{
    const std::string folder = make_folder();
    const std::string path = folder + "/h";
    {
        History history(path, History::Access::WRITE);
        for (int night = 1; night < 20; ++night) {
            history.add(run_of(night % 3 == 0 ? 'A' : '.', night));
        }
    }
    const std::string whole = read_file(path);
    int refused = 0;
    for (std::size_t at = 0; at < whole.size(); at += at < 112 ? 3 : 397) {
        std::string bytes = whole;
        for (std::size_t i = at; i < std::min(at + 3, bytes.size()); ++i) {
            bytes[i] = static_cast<char>(~bytes[i]);
        }
        std::ofstream(path, std::ios::binary) << bytes;
        try {
            History(path, History::Access::READ).courses();
            History(path, History::Access::WRITE).add(run_of('A', 50));
        } catch (const HistoryFault &fault) {
            EXPECT_EQ(std::string(fault.what()).rfind(path + ": ", 0), 0U);
            EXPECT_EQ(read_file(path), bytes) << fault.what();
            ++refused;
        }
        std::filesystem::remove(path + "-wal");
        std::filesystem::remove(path + "-shm");
    }
    EXPECT_GT(refused, 20);
    std::filesystem::remove_all(folder);
}

TEST(History, JoinsTheCoursesOfASignal)
{
    const auto course = [](const std::string &line, RunMark bad, std::optional<RunMark> good) {
        Course made{bad, good, {}, 0};
        for (const char letter : line) {
            made.recent.push_back({static_cast<Standing>(std::string("-?.x").find(letter)), {}, {}});
        }
        return made;
    };
    const RunMark runs[] = {{1, kDay}, {2, 2 * kDay}, {3, 3 * kDay}, {4, 4 * kDay}};
    const auto joined = [&](const std::string &a, int bad_a, const std::string &b, int bad_b) {
        const SignalCourse first{"-/TR/missing signal in golden/S", "TR", "S", course(a, runs[bad_a], {})};
        const SignalCourse second{"r1m0/TR/missing signal in golden/S", "TR", "S",
                                  course(b, runs[bad_b], runs[0])};
        const Courses courses{{runs, runs + 4}, {{"p", 2, {}, {first}}, {"q", 2, {}, {second}}}};
        const Course found = courses_of_signals(courses).at(signal_id("TR", "S", "signal missing in golden"));
        return line_of(found) + ' ' + text_of(found);
    };
    EXPECT_EQ(joined("..xx", 2, ".?.x", 3), ".?xx 3,1,0"); // in run 2 it may have failed
    EXPECT_EQ(joined("x..x", 3, ".xxx", 1), "xxxx 1,-,0"); // by turns
    EXPECT_EQ(joined("---x", 3, "..-x", 3), "..-x 4,2,0");
}

} // namespace
