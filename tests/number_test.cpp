// SPDX-License-Identifier: MIT
// Numbers converted without the C library, and taken many at a time, against one by one with it.
#include "support/number.h"
#include "support/number_form.h"
#include "support/tk_buffer.h"

#include "test_support.h"

#include <cstring>
#include <gtest/gtest.h>
#include <random>

using namespace std::string_literals;

static std::uint64_t bits_of(double value)
{
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

// Each power of the table, with digits that make the product run from few bits to all of them, or end
// half way between two doubles or next to it. Only the latter may be left to others.
TEST(Number, ProductsRoundAsTheCLibrary)
{
    const std::uint64_t ties = std::uint64_t{1} << 53;
    int open = 0;
    for (int power = -130; power <= 130; ++power) {
        for (std::uint64_t digits : {std::uint64_t{0}, std::uint64_t{1}, std::uint64_t{3}, ties - 1, ties + 1,
                                     ties + 3, 1024 * ties + 1, 1025 * ties - 1, ~std::uint64_t{0}}) {
            for (int i = 0; i < 20; ++i, digits *= 5) {
                const std::string text = std::to_string(digits) + "e" + std::to_string(power);
                double value = 0.0;
                if (nearest_by_product(digits, power, value)) {
                    ASSERT_EQ(bits_of(value), bits_of(std::strtod(text.c_str(), nullptr))) << text;
                } else {
                    open += std::abs(power) <= 128 ? 1 : 0;
                }
            }
        }
    }
    EXPECT_LT(open, 60);
}

// A number of a form, with spare characters behind it.
static std::string number_of(const NumberShape &shape, std::mt19937 &random)
{
    std::string text = random() % 2 == 0 ? "-" : "";
    for (unsigned i = 0; i < shape.integers + 1 + shape.decimals; ++i) {
        text += i == shape.integers ? '.' : static_cast<char>('0' + random() % 10);
    }
    if (shape.exponent != 0) {
        text += random() % 2 == 0 ? "E+" : "e-";
        text += std::to_string(10 + random() % 90);
    }
    return text;
}

// Every form, with each of its characters replaced by every other: what is taken for a number of the form
// has the value of the C library, and what has not the form is not taken.
TEST(NumberForm, TakesItsOwnOnly)
{
    std::mt19937 random(7);
    for (unsigned i = 0; i < 8 * 16 * 2; ++i) {
        const NumberShape shape{i % 8 + 1, i / 8 % 16 + 1, i < 128 ? 0U : 2U, i >= 128};
        if (shape.integers + shape.decimals > kMostDigits) {
            continue;
        }
        NumberForm form;
        form.was_wrong(shape);
        form.was_wrong(shape);
        const std::string number = number_of(shape, random);
        for (std::size_t place = 0; place < number.size(); ++place) {
            for (int c = 0; c < 256; ++c) {
                std::string text = number;
                text[place] = static_cast<char>(c);
                char *end = nullptr;
                const double expected = std::strtod(text.c_str(), &end);
                const bool whole = *end == '\0';
                const std::size_t length = text.size();
                double value = 0.0;
                int error = 0;
                ASSERT_EQ(bits_of(convert_number(text.c_str(), error)), bits_of(expected)) << text;
                const char *behind = form.convert(text.append(64, ' ').c_str(), value);
                ASSERT_TRUE(text != number + std::string(64, ' ') || behind != nullptr) << text;
                if (behind != nullptr && behind == text.c_str() + length) {
                    ASSERT_TRUE(whole) << text;
                    ASSERT_EQ(bits_of(value), bits_of(expected)) << text;
                }
            }
        }
    }
}

TEST(NumberForm, GivesUpAfterSeveralWrongGuesses)
{
    NumberForm form;
    double value = 0.0;
    const std::string text = "12.5" + std::string(64, ' ');
    form.was_wrong({2, 1, 0, false});
    EXPECT_EQ(form.convert(text.c_str(), value), nullptr); // one alone changes nothing
    form.was_wrong({2, 1, 0, false});
    EXPECT_EQ(form.convert(text.c_str(), value), text.c_str() + 4);
    form.was_right();
    for (int i = 0; i < 4; ++i) {
        EXPECT_TRUE(form.is_promising());
        form.was_wrong({1, 1, 3, true});
    }
    EXPECT_FALSE(form.is_promising());
    form.begin_column();
    EXPECT_TRUE(form.is_promising());
}

enum Way { ONE_BY_ONE, MANY_NUMBERS, MANY_FIELDS };

// What is left of a text after each stop on a way through its fields, with the number of fields up to there
// and the bits of the value in front.
static std::vector<std::string> walk(const std::string &text, std::size_t pad, Way way)
{
    PunchSource source(comment_line(pad) + text);
    tk_skipcomments = 0;
    tk_BUFinit(source.stream);
    tk_BUFreadLine(source.stream);
    NumberColumns columns;
    std::vector<std::string> seen;
    for (int limit = 2000; limit > 0 && !(tk_eofflag && tk_nxchar() == '\0'); --limit) {
        double values[5] = {};
        const std::size_t fields = tk_eofflag || way == ONE_BY_ONE ? 0
                                   : way == MANY_FIELDS            ? tk_skipPlainFields(source.stream)
                                                        : tk_nxnumbers(source.stream, columns, values, 0, 5);
        seen.resize(seen.size() + (way == MANY_FIELDS ? fields : 0));
        for (std::size_t i = 0; way == MANY_NUMBERS && i < fields; ++i) {
            seen.push_back(std::to_string(bits_of(values[i])));
        }
        if (way == MANY_FIELDS) {
            tk_skipfield(source.stream);
            seen.emplace_back();
        } else {
            int error = 0;
            seen.push_back(std::to_string(bits_of(convert_number(tk_nxfield(source.stream).c_str(), error))));
        }
        seen.back() += "; " + std::to_string(tk_BUFoffset - static_cast<std::int64_t>(pad)) + "+" +
                       std::to_string(tk_BUFindex) + (tk_eolnflag ? "|" : "") + (tk_eofflag ? "." : "");
    }
    return seen;
}

// Many at a time or one by one, wherever the window ends.
TEST(Scanner, ManyFieldsEndWhereSingleOnesDo)
{
    std::istringstream source(
        "1.25E-07;-1.25E+07;1.5;12.5;1.2345678901234567E-30;0; ;  ;\n+ ;\n+ ;\n+;\n+  \n+ ;, ;\t;"
        "\n;\n* ;,;=;\r\n+ ;&;x;nan;\xff;\0;1e999;(;+;\n +;*;5e-324"s);
    std::vector<std::string> pieces;
    for (std::string piece; std::getline(source, piece, ';');) {
        pieces.push_back(piece);
    }
    constexpr std::size_t kPlain = 14; // the pieces of lines of numbers
    const std::size_t block = PunchSource("").stream.capacity;
    std::mt19937 random(14);
    for (int round = 0; round < 2000; ++round) {
        std::string text = "1.0";
        const int length = static_cast<int>(random() % 60);
        for (int i = 0; i < length; ++i) {
            text += pieces[random() % (random() % 10 == 0 ? pieces.size() : kPlain)];
            text += random() % 3 == 0 ? "" : " ";
        }
        text += random() % 2 == 0 ? "\n" : "";
        const std::vector<std::string> single = walk(text, 2, ONE_BY_ONE);
        for (const Way way : {MANY_NUMBERS, MANY_FIELDS}) {
            const std::size_t pad = round % 4 == 0 ? block - random() % (text.size() + 1) : 2;
            const std::vector<std::string> many = walk(text, pad, way);
            ASSERT_EQ(many.size(), single.size()) << text;
            for (std::size_t i = 0; i < many.size(); ++i) {
                const std::size_t at = single[i].find(many[i]);
                ASSERT_TRUE(way == MANY_FIELDS ? at != std::string::npos : at == 0) << text << "\n" << i;
                // What is passed over sets no flag.
                ASSERT_TRUE(many[i].find_first_of("|.") < many[i].size() ||
                            single[i].find_first_of("|.") > single[i].size())
                    << text << "\n"
                    << i;
            }
        }
    }
}
