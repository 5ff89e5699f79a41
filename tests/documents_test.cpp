// SPDX-License-Identifier: MIT
// What the documents promise: the options and their arguments, the rooms of the code, and every row of
// the page on verdicts.
#include "driver/options.h"

#include "test_support.h"

#include <array>
#include <filesystem>
#include <gtest/gtest.h>
#include <regex.h>
#include <set>

// Runs the program in a folder of its own.
class Documents : public testing::Test
{
  protected:
    ~Documents() override
    {
        std::filesystem::remove_all(folder_);
    }

    // Returns the exit code; the transcript is in transcript_.
    int run(const std::string &arguments)
    {
        const int code = run_program(folder_, "", arguments);
        transcript_ = read_file(folder_ + "/transcript");
        return code;
    }

    const std::string folder_ = make_folder();
    std::string transcript_;
};

// The matches of an extended regular expression, as the texts of its groups; "^" and "$" are the ends of
// lines.
static std::vector<std::array<std::string, 4>> matches_in(const std::string &text, const char *expression)
{
    regex_t compiled;
    EXPECT_EQ(regcomp(&compiled, expression, REG_EXTENDED | REG_NEWLINE), 0);
    std::vector<std::array<std::string, 4>> matches;
    regmatch_t groups[4];
    for (const char *rest = text.c_str(); regexec(&compiled, rest, 4, groups, 0) == 0;
         rest += groups[0].rm_eo) {
        matches.emplace_back();
        for (std::size_t i = 0; i < 4 && i <= compiled.re_nsub; ++i) {
            const auto [begin, end] = groups[i];
            matches.back()[i] = begin >= 0 ? std::string(rest + begin, rest + end) : "";
        }
    }
    regfree(&compiled);
    return matches;
}

// The options that an expression finds, sorted: its first group is the name, its second one is there
// where the option takes a value.
static std::multiset<std::string> options_in(const std::string &text, const char *expression)
{
    std::multiset<std::string> found;
    for (const auto &match : matches_in(text, expression)) {
        found.insert(match[1] + (match[2].empty() ? "" : " value"));
    }
    return found;
}

static std::string source_file(const std::string &path)
{
    return read_file(TRESK_SOURCE "/" + path);
}

TEST_F(Documents, NameTheOptionsOfTheParser)
{
    std::multiset<std::string> options;
    std::multiset<std::string> words;
    for (const OptionName &option : option_names()) {
        words.insert(option.word + 1);
        options.insert(option.word + 1 + (option.takes_value ? " value"s : ""));
    }
    EXPECT_EQ(options_in(source_file("man/tresk.1"), "^\\.It Fl ([A-Za-z]+)( Ar)?"), options);
    std::multiset<std::string> completed = options;
    completed.insert({"a value", "r value"}); // the short forms that the documents use
    words.insert({"a", "r"});
    EXPECT_EQ(options_in(source_file("contrib/completions/_tresk"), "-([A-Za-z]+)\\[[^]]*\\](:)?"),
              completed);
    EXPECT_EQ(options_in(source_file("contrib/completions/tresk.fish"), "-o ([A-Za-z]+)( -x)?"), completed);
    const std::string bash = source_file("contrib/completions/tresk.bash");
    const auto lists = matches_in(replaced(bash, "\n", " "), "words='(-[^']*)'");
    EXPECT_EQ(options_in(lists.at(0)[1], "-([A-Za-z]+)"), words);

    run("-help"); // which writes "-a[bstol] <val>"
    const std::string usage = replaced(replaced(transcript_, "[", ""), "]", "");
    std::multiset<std::string> shown = options_in(usage, "^  -([A-Za-z]+)( <val>)?");
    shown.insert({"indexscript", "indexmirel", "indexrdinp"}); // left out by intent
    EXPECT_EQ(shown, options);
}

TEST_F(Documents, NameFilesThatExist)
{
    const std::string design = source_file("docs/design.md");
    const std::multiset<std::string> rooms = options_in(design, "`([a-z0-9]+/[a-z_]+)`");
    EXPECT_GT(rooms.size(), 30U);
    for (const std::string &room : rooms) {
        const std::string file = TRESK_SOURCE "/src/" + room;
        EXPECT_TRUE(std::filesystem::exists(file + ".h") || std::filesystem::exists(file + ".cpp")) << room;
    }
}

// The bytes of a file from the cell that describes it.
static std::string file_bytes(const std::string &cell)
{
    if (cell[0] != '=' && cell[0] != 'A') { // the value of an operating point
        return file_bytes("=OP / A 0 " + cell);
    }
    std::string text;
    std::istringstream lines(replaced(cell, " / ", "\n"));
    for (std::string line; std::getline(lines, line);) {
        if (line[0] == '=') {
            std::string analysis;
            std::string rerun = "1";
            std::string temperature = "27";
            std::string modify = "0";
            std::istringstream(line.substr(1)) >> analysis >> rerun >> temperature >> modify;
            line = "* ANALYSIS " + analysis + " P V * RERUN_NUMBER " + rerun + " TEMPERATURE " + temperature +
                   " MODIFY " + modify;
        }
        text += line + "\n";
    }
    return unescaped(text.substr(0, text.find("\\c")));
}

static void make_file(const std::string &path, const std::string &cell)
{
    std::filesystem::remove_all(path);
    if (cell == "(folder)") {
        std::filesystem::create_directory(path);
    } else if (cell != "(none)") {
        std::ofstream(path, std::ios::binary) << (cell == "(empty)" ? "" : file_bytes(cell));
    }
}

class VerdictPage : public Documents
{
  protected:
    // Compares the files of a row. Returns the masked status, "-" when there is no result line, and the
    // grade, as the page has them.
    std::pair<std::string, std::string> compare(const std::string &options)
    {
        const int code = run("golden regression " + options);
        const auto results =
            matches_in(transcript_, "^ Comparison result:  ([A-Z_]+)(  \\(exit status = ([0-9]+)\\))?$");
        const std::string grade = " (" + std::to_string(code) + ")";
        return results.empty()
                   ? std::pair("-"s, "-" + grade)
                   : std::pair(results[0][3].empty() ? "0" : results[0][3], results[0][1] + grade);
    }

    void expect_marker(const std::string &mode, const std::string &wanted)
    {
        const auto result = compare(mode == "default" ? "" : mode);
        const auto marked = matches_in(transcript_, "^ A .*\\]  *(<.*)$");
        EXPECT_EQ(marked.empty() ? "pass" : marked[0][1], wanted) << mode;
        EXPECT_EQ(result, wanted == "pass"                          ? std::pair("0"s, "PASS (0)"s)
                          : wanted.find("nan") != std::string::npos ? std::pair("257"s, "FAIL_SV (5)"s)
                                                                    : std::pair("1"s, "FAIL_V (3)"s))
            << mode;
    }
};

TEST_F(VerdictPage, EveryRowHolds)
{
    const std::vector<TableRow> rows = rows_of("docs/verdict.md");
    EXPECT_GT(rows.size(), 100U);
    for (const TableRow &row : rows) {
        SCOPED_TRACE(row.place);
        make_file(folder_ + "/golden", row["golden"]);
        make_file(folder_ + "/regression", row["regression"]);
        if (row.cells.count("options") == 0) {
            for (const std::string mode : {"default", "-Aonly", "-Ronly", "-AorR", "-AandR"}) {
                expect_marker(mode, row[mode]);
            }
        } else {
            EXPECT_EQ(compare(row["options"]), std::pair(row["status"], row["grade"]));
            EXPECT_NE(transcript_.find(row["the transcript says"]), std::string::npos) << transcript_;
        }
    }
}
