// SPDX-License-Identifier: MIT
// Conversion of text to double: the value and the errno of strtod, at a fraction of its cost for
// the ordinary decimal number.
#ifndef TRESK_SUPPORT_NUMBER_H
#define TRESK_SUPPORT_NUMBER_H

#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

// Tries the form in which simulators print nearly all numbers: perhaps "-", one digit, a point, one to
// eight digits and perhaps an exponent with sign and two digits. The digits make a whole number and the
// exponent a power of ten that are both exact doubles, so one operation rounds as it must. Returns the
// end of the number, or null: for any other form, for powers that are not exact, and for less text than
// it reads at a time.
inline const char *plain_decimal(const char *first, const char *last, double &value)
{
    static constexpr double kPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                         1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                         1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    constexpr int kLargestExact = 22;
    constexpr std::ptrdiff_t kDecimals = 8;
    const auto is_digit = [](char c) {
        return c >= '0' && c <= '9';
    };

    if (__BYTE_ORDER__ != __ORDER_LITTLE_ENDIAN__ || last - first < 3 + kDecimals) {
        return nullptr;
    }
    const bool negative = *first == '-';
    const char *c = first + (negative ? 1 : 0);
    if (!is_digit(c[0]) || c[1] != '.') {
        return nullptr;
    }
    // Eight characters at a time, each as the value of its digit; the first is the lowest byte.
    std::uint64_t digits = 0;
    std::memcpy(&digits, c + 2, sizeof digits);
    digits ^= 0x3030303030303030;
    const std::uint64_t others = (digits | (digits + 0x0606060606060606)) & 0xF0F0F0F0F0F0F0F0;
    const int decimals = others == 0 ? int{kDecimals} : __builtin_ctzll(others) / 8;
    if (decimals == 0) {
        return nullptr;
    }
    digits <<= 8 * (kDecimals - decimals); // zeros in front
    digits = digits * 10 + (digits >> 8);  // pairs of digits, in every other byte
    digits = ((digits & 0x000000FF000000FF) * 0x000F424000000064 +
              (digits >> 16 & 0x000000FF000000FF) * 0x0000271000000001) >>
             32; // the hundreds of both halves weighed and added
    const double whole = (c[0] - '0') * kPowers[decimals] + static_cast<double>(digits);
    c += 2 + decimals;

    int power = -decimals;
    if (c != last && (*c == 'E' || *c == 'e')) {
        if (last - c < 4 || (c[1] != '-' && c[1] != '+') || !is_digit(c[2]) || !is_digit(c[3])) {
            return nullptr;
        }
        const int exponent = (c[2] - '0') * 10 + (c[3] - '0');
        power += c[1] == '-' ? -exponent : exponent;
        c += 4;
    }
    if ((c != last && is_digit(*c)) || power < -kLargestExact || power > kLargestExact) {
        return nullptr;
    }
    const double magnitude = power < 0 ? whole / kPowers[-power] : whole * kPowers[power];
    value = negative ? -magnitude : magnitude;
    return c;
}

// Tries the fast path on the text at first, not looking past last. On success returns the end of
// the number and sets value to exactly what strtod would give without setting errno. Returns null
// where strtod must decide: a leading "+" or blank, hexadecimal, NAN(...), infinities, results that
// are subnormal, at the edge of the range or rounded to zero.
inline const char *fast_number(const char *first, const char *last, double &value)
{
    if (const char *plain_end = plain_decimal(first, last, value)) {
        return plain_end;
    }
    const auto [end, error] = std::from_chars(first, last, value);
    if (error != std::errc{}) {
        return nullptr;
    }
    const double magnitude = std::fabs(value);
    if (magnitude > std::numeric_limits<double>::min() && magnitude <= std::numeric_limits<double>::max()) {
        return end;
    }
    // Zero: plain only when the digits say so; otherwise the number was too small.
    for (const char *c = first; c != end && *c != 'e' && *c != 'E'; ++c) {
        if (*c != '0' && *c != '.' && *c != '-') {
            return nullptr;
        }
    }
    return end;
}

// The value of strtod on text (zero-terminated), error being the errno it leaves, cleared before.
double convert_number(const char *text, int &error);

#endif
