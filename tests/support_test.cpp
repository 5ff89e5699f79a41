// SPDX-License-Identifier: MIT
#include "support/memory.h"
#include "support/number.h"
#include "support/signal_scanner.h"

#include "test_support.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>
#include <gtest/gtest.h>
#include <random>

static const std::size_t kBlock = PunchSource("").stream.capacity;

// Makes a call to the scanner by its name in the table.
static std::string make_call(const std::string &call, PunchStream &stream)
{
    double number = 0.0;
    return call == "fields"              ? tk_nxfield(stream)
           : call == "signals"           ? tk_nxsignal(stream)
           : call == "strings"           ? tk_nxString(stream)
           : call == "line"              ? tk_nxLine(stream)
           : call == "rest-of-line"      ? tk_takeRestOfLine()
           : call == "text-behind"       ? std::string(tk_textAfterField(2))
           : call == "mark"              ? (tk_BUFmark(stream), "")
           : call == "restore"           ? (tk_BUFrestore(stream), "")
           : call == "skip-comments"     ? (tk_skipcomments = 1, "")
           : tk_nxnumber(stream, number) ? std::to_string(static_cast<int>(number))
                                         : "<none>";
}

// Makes the calls of one step, "name result result ...", as many as it has results: words for "fields",
// a text for "line". Returns the step with the results that come out.
static std::string make_calls(const std::string &step, PunchStream &stream)
{
    const std::string call = step.substr(0, step.find(' '));
    const std::string results = replaced(replaced(step, " <eol>", ""), " <eof>", "").substr(call.size());
    if (results.empty()) {
        return make_call(call, stream), call;
    }
    std::string made = call;
    for (auto left = call.back() == 's' ? std::count(results.begin(), results.end(), ' ') : 1; left > 0;
         --left) {
        const std::string result = make_call(call, stream);
        made += " " + (result.empty() ? "<empty>" : result) + (tk_argflag ? "=" : "") +
                (tk_eolnflag ? " <eol>" : "") + (tk_eofflag ? " <eof>" : "");
    }
    return made;
}

// Makes the calls of a case over its text behind a comment line of pad bytes, "w...w" being length
// letters. Returns the calls with what comes out.
static std::string scan(const TableRow &row, std::size_t pad, bool as_pipe = false, std::size_t length = 3)
{
    const std::string word(length, 'w');
    PunchSource source(comment_line(pad) + replaced(unescaped(row["text"]), "w...w", word), as_pipe);
    tk_skipcomments = 0;
    tk_BUFinit(source.stream);
    tk_BUFreadLine(source.stream);
    std::string made;
    const std::string &steps = row["calls and results"];
    for (std::size_t begin = 0, end = 0; begin < steps.size(); begin = end + 2) {
        end = std::min(steps.find("; ", begin), steps.size());
        const std::string step = steps.substr(begin, end - begin);
        made += step == "..." ? "" : (begin > 0 ? "; " : "") + make_calls(step, source.stream);
    }
    const bool at_end = tk_eofflag && tk_nxchar() == '\0' && !tk_splitting_bus;
    made += at_end ? "" : "; ...";
    return replaced(replaced(made, word, "w...w"), std::string(length, 'W'), "W...W");
}

// Wherever the text lies to the end of the window, in a file and in a pipe, and however long its words
// are, it reads the same.
static void expect_case(const TableRow &row)
{
    SCOPED_TRACE(row.place);
    const std::string wanted = unescaped(row["calls and results"]);
    ASSERT_EQ(scan(row, 2), wanted);
    for (std::size_t before = 0; before <= row["text"].size() + 1; ++before) {
        ASSERT_EQ(scan(row, kBlock - before), wanted) << before << " bytes before the end of the window";
        ASSERT_EQ(scan(row, kBlock - before, true), wanted) << before << " bytes before it in a pipe";
    }
    if (row["text"].find("w...w") != std::string::npos) {
        for (const std::size_t length : {kBlock / 3, kBlock - 2, kBlock - 1, kBlock, 3 * kBlock}) {
            ASSERT_TRUE(scan(row, 2, false, length) == wanted) << "words of " << length << " letters";
        }
    }
}

TEST(Scanner, Cases)
{
    for (const TableRow &row : cases_of("Scanner")) {
        expect_case(row);
    }
}

// Nothing of a file shows in the next one: no bus range, no flags, no place of a NUL or byte 255.
TEST(Scanner, NextFileStartsAfresh)
{
    PunchSource source("");
    for (const auto &[text, length] : {std::pair("A[0:9]= x\nabc\n\xff"s, 9U),
                                       {"A[0] b\xff"s, 6U},
                                       {"A[0]\0 b\n"s, 4U},
                                       {"A[0] a long line\n"s, 16U}}) {
        source.open(text);
        tk_BUFinit(source.stream);
        EXPECT_EQ(tk_BUFlength, length) << text;
        EXPECT_EQ(tk_eofflag + tk_eolnflag, 0) << text;
        EXPECT_EQ(tk_nxsignal(source.stream), "A[0]") << text;
    }
}

// The place and the flags of the scanner after each field of a text, with the field's value. The fast
// way steps over numbers by tk_nxnumber or, without values, over all fields by tk_skipfield and, many
// at a time, tk_skipPlainFields, which leaves their entries empty.
static std::vector<std::string> walk(PunchSource &source, const std::string &text, std::size_t pad, bool fast,
                                     bool values)
{
    source.open(comment_line(pad) + text);
    tk_BUFinit(source.stream);
    tk_BUFreadLine(source.stream);
    std::vector<std::string> seen;
    for (int limit = 200; limit > 0 && !(tk_eofflag && tk_nxchar() == '\0'); --limit) {
        double value = 0.0;
        int error = 0;
        if (fast && !values) {
            seen.resize(seen.size() + (tk_eofflag ? 0 : tk_skipPlainFields(source.stream)));
            tk_skipfield(source.stream);
        } else if (!fast || !tk_nxnumber(source.stream, value)) {
            value = convert_number(tk_nxfield(source.stream).c_str(), error);
        }
        std::ostringstream place;
        place << std::hexfloat << tk_BUFoffset - static_cast<std::int64_t>(pad) << "+" << tk_BUFindex << " "
              << tk_argflag << tk_eolnflag << tk_eofflag << " " << (values ? value : 0.0) << " "
              << (values ? error : 0);
        seen.push_back(place.str());
    }
    return seen;
}

TEST(Scanner, FastWaysEndWhereTheFieldCallDoes)
{
    const std::string pieces = "0123456789012345678900112.+-eE  \n\n++\n\t,=&&**$()#[]:aXxnINF\r\0\xff"s;
    constexpr std::size_t kPlain = 36; // pieces of lines of numbers
    std::mt19937 random(20240607);
    PunchSource source("");
    for (int round = 0; round < 6000; ++round) {
        std::string soup(random() % 120, ' ');
        for (char &c : soup) {
            c = pieces[random() % (round % 3 == 0 ? kPlain : pieces.size())];
        }
        const std::size_t pad = round % 20 == 0 ? kBlock - random() % (soup.size() + 1) : 2;
        tk_skipcomments = round % 2;
        for (const bool values : {false, true}) {
            const std::vector<std::string> fast = walk(source, soup, pad, true, values);
            const std::vector<std::string> plain = walk(source, soup, 2, false, values);
            ASSERT_EQ(fast.size(), plain.size()) << soup;
            for (std::size_t i = 0; i < fast.size(); ++i) {
                ASSERT_TRUE(fast[i].empty() || fast[i] == plain[i]) << soup << "\n" << i;
            }
        }
    }
}

// Whether the conversion gives the value and the errno of strtod.
static bool converts_like_strtod(const char *text)
{
    errno = 0;
    const double expected = std::strtod(text, nullptr);
    const int expected_error = errno;
    int error = -1;
    const double value = convert_number(text, error);
    return std::memcmp(&value, &expected, sizeof value) == 0 && error == expected_error;
}

TEST(Number, OddForms)
{
    EXPECT_TRUE(converts_like_strtod(""));
    for (const TableRow &row : cases_of("Number")) {
        std::istringstream texts(row["texts"]);
        for (std::string text; texts >> text;) {
            EXPECT_TRUE(converts_like_strtod(unescaped(text).c_str())) << row.place << ": " << text;
        }
    }
}

TEST(Number, AMillionRandomTexts)
{
    constexpr const char *kFormats[] = {"%llu", "-.%llu%llu", "%llu.%lluE%d", "-0.00%llu%lluE%d",
                                        "+%llu%lluE%+03d"};
    constexpr int kExponents[] = {0, 0, 0, -308, -324, 308, 400}; // ordinary, and the edges of the range
    std::mt19937_64 random(19937);
    for (int i = 0; i < 1000000; ++i) {
        const unsigned long long bits = random();
        const unsigned long long first = random() >> bits % 64;
        const unsigned long long second = random() >> bits / 64 % 64;
        char text[80];
        std::snprintf(text, sizeof text, kFormats[bits / 4096 % 5], first, second,
                      kExponents[(bits >> 32) % 7] + static_cast<int>(bits >> 48 & 63) - 40);
        ASSERT_TRUE(converts_like_strtod(text)) << text;
        // As simulators print, with up to a digit and an exponent too many.
        const int decimals = static_cast<int>(bits >> 54 & 15) % 11;
        std::snprintf(text, sizeof text, "%s%llu.%0*lluE%+0*d", bits & 1 ? "-" : "", first % 10, decimals,
                      second % 10000000000 >> (bits >> 58), bits & 2 ? 3 : 1,
                      static_cast<int>(bits >> 48 & 63) - 32);
        ASSERT_TRUE(converts_like_strtod(text)) << text;
    }
}

TEST(Memory, Results)
{
    EXPECT_STREQ(f_strcat("a", "", "b", nullptr), "ab");
    EXPECT_STREQ(f_strcat(static_cast<char *>(nullptr), nullptr), "");
    EXPECT_STREQ(f_strappend(f_strdup("a"), "b", "cd", nullptr), "abcd");
    EXPECT_STREQ(f_strndup("abc", 2), "ab");
    EXPECT_STREQ(f_strndup("abc", 9), "abc");
    EXPECT_STREQ(f_itoa(INT_MIN), "-2147483648");
    for (const TableRow &row : cases_of("Path")) {
        const int dropped = std::stoi(row["components dropped"]);
        EXPECT_EQ(f_remove_trailing_components(row["path"].c_str(), dropped), row["path left"]) << row.place;
    }
    EXPECT_TRUE(f_calloc(0, 8) == nullptr && f_malloc(0, 8) == nullptr && f_strdup(nullptr) == nullptr);
    EXPECT_TRUE(f_strndup(nullptr, 3) == nullptr && f_strndup("abc", 0) == nullptr);
}

TEST(MemoryDeathTest, EndsTheRun)
{
    const auto exits = testing::ExitedWithCode(1);
    EXPECT_EXIT(f_calloc(-1, 4), exits,
                "^Error: Illegal num/size <-1/4> in call to calloc; program exiting\\.\\.\\.\n$");
    EXPECT_EXIT(f_calloc(0, 0), exits, "^Error: Illegal num/size <0/0> in call to calloc; p");
    EXPECT_EXIT(f_malloc(5, 0), exits, "^Error: Illegal num/size <5/0> in call to malloc; p");
    EXPECT_EXIT(f_realloc(nullptr, 0), exits, "^Error: Illegal size \\(0\\) in call to realloc; p");
#ifndef __SANITIZE_ADDRESS__ // which ends the run itself
    EXPECT_EXIT(f_calloc(INT_MAX, INT_MAX), exits, "^Could not f_calloc 4.61169e\\+12 MBytes of memoryError");
#endif
}
