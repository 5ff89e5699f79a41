// SPDX-License-Identifier: MIT
#include "support/memory.h"
#include "support/number.h"
#include "support/signal_scanner.h"

#include "test_support.h"

#include <cerrno>
#include <climits>
#include <cstring>
#include <gtest/gtest.h>
#include <random>

using namespace std::string_literals;

static const std::size_t kBlock = PunchSource("").stream.capacity;

// Makes a call of the scanner; "-" for those that hand out nothing.
static std::string make_call(char call, PunchStream &stream)
{
    double number = 0.0;
    return call == 'f'                   ? tk_nxfield(stream)
           : call == 's'                 ? tk_nxsignal(stream)
           : call == 'S'                 ? tk_nxString(stream)
           : call == 'L'                 ? tk_nxLine(stream)
           : call == 'R'                 ? tk_takeRestOfLine()
           : call == 't'                 ? std::string(tk_textAfterField(2))
           : call == 'm'                 ? (tk_BUFmark(stream), "-")
           : call == 'r'                 ? (tk_BUFrestore(stream), "-")
           : call == 'C'                 ? (tk_skipcomments = 1, "-")
           : tk_nxnumber(stream, number) ? std::to_string(static_cast<int>(number))
                                         : "?";
}

static std::string replaced(std::string text, const std::string &from, const std::string &to)
{
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
        text.replace(at, from.size(), to);
    }
    return text;
}

// Makes the calls over a text behind a comment line of pad bytes and tells what they return, with "="
// for a set tk_argflag, "|" for tk_eolnflag, "." for tk_eofflag and "_" for an empty text. The last
// call is repeated up to the end of the file, unless "." follows. A "%" stands for n letters.
static std::string scan(const std::vector<std::string> &c, std::size_t pad, bool as_pipe = false,
                        std::size_t n = 3)
{
    PunchSource source(comment_line(pad) + replaced(c[1], "%", std::string(n, 'w')), as_pipe);
    tk_skipcomments = 0;
    tk_BUFinit(source.stream);
    tk_BUFreadLine(source.stream);
    std::string told;
    for (std::size_t made = 0, call = 0; made < 40 && c[0][call] != '.'; ++made) {
        const std::string out = make_call(c[0][call], source.stream);
        if (out != "-") {
            told += (told.empty() ? "" : " ") + (out.empty() ? "_" : out) + (tk_argflag ? "=" : "") +
                    (tk_eolnflag ? "|" : "") + (tk_eofflag ? "." : "");
        }
        if (call + 1 < c[0].size()) {
            ++call;
        } else if (tk_eofflag && tk_nxchar() == '\0' && !tk_splitting_bus) {
            break;
        }
    }
    return replaced(replaced(told, std::string(n, 'w'), "%"), std::string(n, 'W'), "%");
}

// Wherever the text lies to the end of the window, in a file and in a pipe, and however long its pieces
// are, it reads the same.
TEST(Scanner, Cases)
{
    for (const auto &c : cases_of("scan")) {
        EXPECT_EQ(scan(c, 2), c[2]) << c[1];
        for (std::size_t before = 0; before <= c[1].size() + 1; ++before) {
            EXPECT_EQ(scan(c, kBlock - before), c[2]) << c[1] << before;
            EXPECT_EQ(scan(c, kBlock - before, true), c[2]) << c[1] << before << " in a pipe";
        }
        for (const std::size_t n : {kBlock / 3, kBlock - 2, kBlock - 1, kBlock, 3 * kBlock}) {
            EXPECT_TRUE(c[1].find('%') == std::string::npos || scan(c, 2, false, n) == c[2]) << c[1] << n;
        }
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
    std::vector<std::string> told;
    for (int limit = 200; limit > 0 && !(tk_eofflag && tk_nxchar() == '\0'); --limit) {
        double value = 0.0;
        int error = 0;
        if (fast && !values) {
            told.resize(told.size() + tk_skipPlainFields());
            tk_skipfield(source.stream);
        } else if (!fast || !tk_nxnumber(source.stream, value)) {
            value = convert_number(tk_nxfield(source.stream).c_str(), error);
        }
        std::ostringstream place;
        place << std::hexfloat << tk_BUFoffset - static_cast<std::int64_t>(pad) << "+" << tk_BUFindex << " "
              << tk_argflag << tk_eolnflag << tk_eofflag << " " << (values ? value : 0.0) << " "
              << (values ? error : 0);
        told.push_back(place.str());
    }
    return told;
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
    for (const auto &texts : cases_of("number")) {
        for (const std::string &text : texts) {
            EXPECT_TRUE(converts_like_strtod(text.c_str())) << text;
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
    for (const auto &c : cases_of("path")) {
        EXPECT_EQ(f_remove_trailing_components(c[0].c_str(), std::stoi(c[1])), c[2]) << c[0];
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
