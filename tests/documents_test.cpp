// SPDX-License-Identifier: MIT
// What the documents promise: the options and their arguments, the rooms of the code, and every row of
// the page on verdicts.
#include "driver/options.h"

#include "test_support.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <regex>
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

// The options that a pattern finds in a text, sorted: its first group is the name, its second one is
// there where the option takes a value.
static std::multiset<std::string> options_in(const std::string &text, const std::string &pattern)
{
    const std::regex option(pattern);
    std::multiset<std::string> found;
    for (std::sregex_iterator match(text.begin(), text.end(), option), end; match != end; ++match) {
        found.insert(match->str(1) + (match->length(2) > 0 ? " value" : ""));
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
    EXPECT_EQ(options_in(source_file("man/tresk.1"), "\n\\.It Fl ([A-Za-z]+)( Ar)?"), options);
    std::multiset<std::string> completed = options;
    completed.insert({"a value", "r value"}); // the short forms that the documents use
    words.insert({"a", "r"});
    EXPECT_EQ(options_in(source_file("contrib/completions/_tresk"), "-([A-Za-z]+)\\[[^\\]]*\\](:)?"),
              completed);
    EXPECT_EQ(options_in(source_file("contrib/completions/tresk.fish"), "-o ([A-Za-z]+)( -x)?"), completed);
    const std::string bash = source_file("contrib/completions/tresk.bash");
    std::smatch list;
    std::regex_search(bash, list, std::regex("words='(-[^']*)'"));
    EXPECT_EQ(options_in(list.str(1), "-([A-Za-z]+)"), words);

    run("-help"); // which writes "-a[bstol] <val>"
    const std::string usage = std::regex_replace(transcript_, std::regex("[\\[\\]]"), "");
    std::multiset<std::string> shown = options_in(usage, "\n  -([A-Za-z]+)( <val>)?");
    shown.insert({"indexscript", "indexmirel", "indexrdinp"}); // left out by intent
    EXPECT_EQ(shown, options);
}

TEST_F(Documents, NameFilesThatExist)
{
    const std::string design = source_file("docs/design.md");
    const std::multiset<std::string> rooms = options_in(design, "`([a-z]+/[a-z_]+)`");
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
    std::string lines = std::regex_replace(cell, std::regex("=([A-Z]+)( /|$)"), "=$1 1 27 0$2");
    lines = std::regex_replace(lines, std::regex("=([A-Z]+) (\\S+) (\\S+) (\\S+)"),
                               "* ANALYSIS $1 P V * RERUN_NUMBER $2 TEMPERATURE $3 MODIFY $4");
    lines = replaced(lines, " / ", "\n");
    const std::size_t cut = lines.find("\\c");
    return cut == std::string::npos ? unescaped(lines + "\n") : unescaped(lines.substr(0, cut));
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
        std::smatch result;
        const bool ended =
            std::regex_search(transcript_, result,
                              std::regex(" Comparison result:  ([A-Z_]+)(  \\(exit status = (\\d+)\\))?\n"));
        const std::string status = !ended ? "-" : result.length(3) > 0 ? result.str(3) : "0";
        return {status, (ended ? result.str(1) : "-") + " (" + std::to_string(code) + ")"};
    }

    void expect_marker(const std::string &mode, const std::string &wanted)
    {
        const auto result = compare(mode == "default" ? "" : mode);
        std::smatch line;
        const bool marked = std::regex_search(transcript_, line, std::regex("\n A .*\\]  *(<.*)\n"));
        EXPECT_EQ(marked ? line.str(1) : "pass", wanted) << mode;
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
