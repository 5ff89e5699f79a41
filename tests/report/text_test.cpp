// SPDX-License-Identifier: MIT
#include "../test_support.h"
#include "report/digest.h"
#include "report/text.h"
#include "report/tresk_arguments.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace
{

using namespace report;

TEST(Text, IsSafeWhereItStands)
{
    const std::string bad = "\xEF\xBF\xBD";
    for (const TableRow &row : rows_of("tests/report/text_cases.md")) {
        const std::string bytes = unescaped(row["bytes"]);
        const auto wanted = [&](const char *column) {
            return replaced(unescaped(row[column]), "?", bad);
        };
        const std::string html = wanted("html");
        EXPECT_EQ(html_text(bytes), html) << row.place;
        EXPECT_EQ(html_attribute(bytes), html) << row.place;
        EXPECT_EQ(script_json(json_text(bytes)), wanted("json in a script")) << row.place;
        EXPECT_EQ(csv_field(bytes), wanted("csv")) << row.place;
        EXPECT_EQ(url_bytes(bytes), row["url"]) << row.place;
    }
    EXPECT_EQ(html_lines("a\n\t<\r\x1B\n"), "a\n\t&lt;" + bad + bad + "\n");
    EXPECT_EQ(terminal_line("\x1B[2Ja\tb\n"), bad + "[2Ja" + bad + "b" + bad);
}

TEST(Text, HoldsNumbersExactly)
{
    for (const auto &[value, text] : std::map<double, std::string>{{0.1, "0.1"},
                                                                   {1e-12, "1e-12"},
                                                                   {5e-324, "5e-324"},
                                                                   {kInf, "inf"},
                                                                   {-kInf, "-inf"},
                                                                   {-0.0, "-0"}}) {
        EXPECT_EQ(number_text(value), text);
        EXPECT_EQ(json_number(value), value - value == 0.0 ? text : '"' + text + '"');
    }
    EXPECT_EQ(number_text(-kNan), "nan");
}

TEST(Digest, IsThatOfTheFile)
{
    const std::string folder = make_folder();
    const auto digest = [&folder](const std::string &name) {
        FileDigest made(folder + "/" + name);
        while (made.step()) {
        }
        return std::to_string(made.size()) + " " + made.sha256().substr(0, 16);
    };
    std::ofstream(folder + "/empty");
    std::ofstream(folder + "/abc") << "abc";
    std::ofstream(folder + "/long") << std::string(1000000, 'a');
    mkfifo((folder + "/pipe").c_str(), 0600);
    EXPECT_EQ(digest("empty"), "0 e3b0c44298fc1c14");
    EXPECT_EQ(digest("abc"), "3 ba7816bf8f01cfea");
    EXPECT_EQ(digest("long"), "1000000 cdc76e5c9914fb92");
    EXPECT_EQ(digest("pipe"), "-1 "); // opened, it would wait for a writer
    EXPECT_EQ(digest("none"), "-1 ");
    std::filesystem::remove_all(folder);
}

// The words of a call as it is split, or why it is refused.
std::string split(const std::string &call)
{
    std::istringstream stream(call);
    std::vector<std::string> words;
    for (std::string word; stream >> word;) {
        words.push_back(word);
    }
    const auto joined = [](const std::vector<std::string> &list) {
        std::string text;
        for (const std::string &word : list) {
            text += word + " ";
        }
        return text;
    };
    try {
        const TreskArguments split =
            split_arguments(words, [](const std::string &option) { return option == "--out"; });
        return joined(split.own) + "| " + joined(split.options) + "| " + split.golden + " " +
               split.regression;
    } catch (const WrongCall &wrong) {
        return wrong.what();
    }
}

TEST(Arguments, AreSplitAsTreskReadsThem)
{
    for (const TableRow &row : rows_of("tests/report/call_cases.md")) {
        EXPECT_EQ(split(row["call"]), replaced(row["result"], "/", "|")) << row.place;
    }
}

} // namespace
