// SPDX-License-Identifier: MIT
#include "report/words.h"

#include "driver/exit_grade.h"
#include "read/codes.h"
#include "read/tk_read.h"
#include "support/exit_bits.h"

namespace report
{

namespace
{

struct BitWord {
    ExitBit bit;
    std::string_view word;
};

constexpr BitWord kBits[] = {
    {EXIT_TOLERANCE, "tolerance"}, {EXIT_FILE, "file"},           {EXIT_SIGNALS, "signals"},
    {EXIT_VARIANTS, "variants"},   {EXIT_ANALYSES, "analyses"},   {EXIT_UNITS, "units"},
    {EXIT_FORMAT, "format"},       {EXIT_ARGUMENTS, "arguments"}, {EXIT_NAN, "nan"},
};

} // namespace

std::string_view grade_word(int grade)
{
    return grade >= GRADE_PASS && grade <= GRADE_FAIL_SV ? grade_name(static_cast<ExitGrade>(grade))
                                                         : "NO_GRADE";
}

std::vector<std::string_view> status_words(unsigned status)
{
    std::vector<std::string_view> words;
    for (const BitWord &known : kBits) {
        if ((status & known.bit) != 0) {
            words.push_back(known.word);
        }
    }
    return words;
}

std::string_view format_word(int format)
{
    switch (format) {
    case TEXT:
        return "text";
    case BINARY:
        return "binary";
    case BINARY_DBL:
        return "binary_dbl";
    case MIXED_BINARY:
        return "mixed";
    default:
        return "none";
    }
}

std::string_view read_result_word(int read_result)
{
    switch (read_result) {
    case READ_GOOD:
        return "read";
    case READ_SYNTAX:
        return "damaged";
    case READ_MISSING:
        return "missing";
    default:
        return "unreadable";
    }
}

} // namespace report
