// SPDX-License-Identifier: MIT
// Reading a decimal number as digits and a power of ten, without knowing its form in advance.
#ifndef TRESK_SUPPORT_PLAIN_DECIMAL_H
#define TRESK_SUPPORT_PLAIN_DECIMAL_H

#include "support/digit_words.h"

#include <cstdint>

// The number of digits of each part of a number.
struct NumberShape {
    unsigned integers = 0; // in front of the point
    unsigned decimals = 0; // behind it
    unsigned exponent = 0; // behind the sign of the exponent; 0 for no exponent
    bool has_sign = false; // in front of the exponent
};

// The value is digits * 10^power, the sign apart.
struct PlainDecimal {
    std::uint64_t digits = 0;
    int power = 0;
    bool negative = false;
    NumberShape shape;
};

// What any number of so many digits fits into: 64 bits.
constexpr unsigned kMostDigits = 19;

// Appends a run of digits to a number. Returns their count; from 20 on both count and number mean nothing
// but "too many".
inline unsigned append_digits(const char *text, std::uint64_t &number)
{
    unsigned total = 0;
    for (;;) {
        const std::uint64_t digits = load_digits(text + total);
        const std::uint64_t others = mark_others(digits);
        const unsigned count = others == 0 ? kWordDigits : static_cast<unsigned>(__builtin_ctzll(others)) / 8;
        if (count == 0) {
            return total;
        }
        number = number * room_for_digits(count) + weigh_digits(keep_first(digits, count));
        total += count;
        if (count < kWordDigits || total > kMostDigits) {
            return total;
        }
    }
}

// Reads the exponent behind "E", of up to four digits. Returns its end, or null for any other.
inline const char *scan_exponent(const char *text, PlainDecimal &number)
{
    const bool negative = *text == '-';
    number.shape.has_sign = negative || *text == '+';
    text += number.shape.has_sign ? 1 : 0;
    const char *begin = text;
    int exponent = 0;
    while (is_decimal_digit(*text) && text - begin < 4) {
        exponent = exponent * 10 + (*text++ - '0');
    }
    number.shape.exponent = static_cast<unsigned>(text - begin);
    number.power += negative ? -exponent : exponent;
    return text == begin || is_decimal_digit(*text) ? nullptr : text;
}

// Reads perhaps "-", digits, perhaps a point with or without digits behind it and perhaps an exponent.
// Returns the end of the number, or null for any other form and for more than 19 digits. Text is read in
// large steps: kReadAhead bytes must be readable behind the number.
inline const char *scan_plain_decimal(const char *text, PlainDecimal &number)
{
    number.negative = *text == '-';
    text += number.negative ? 1 : 0;
    unsigned integers = 1;
    if (is_decimal_digit(text[0]) && text[1] == '.') {
        number.digits = static_cast<unsigned>(text[0] - '0');
    } else {
        number.digits = 0;
        integers = append_digits(text, number.digits);
        if (integers == 0 || integers > kMostDigits) {
            return nullptr;
        }
    }
    text += integers;
    unsigned decimals = 0;
    if (*text == '.') {
        decimals = append_digits(++text, number.digits);
        text += decimals;
    }
    if (integers + decimals > kMostDigits) {
        return nullptr;
    }
    number.power = -static_cast<int>(decimals);
    number.shape = {integers, decimals, 0, false};
    return *text == 'E' || *text == 'e' ? scan_exponent(text + 1, number) : text;
}

#endif
