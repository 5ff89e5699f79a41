// SPDX-License-Identifier: MIT
// The double nearest to a whole number times a power of ten.
#ifndef TRESK_SUPPORT_EXACT_DECIMAL_H
#define TRESK_SUPPORT_EXACT_DECIMAL_H

#include <cstdint>

// For any number and power: by a product of 128 bits that is certain in all but the rarest cases. False
// where it is not certain, and for powers beyond 128.
bool nearest_by_product(std::uint64_t digits, int power, double &value);

// Powers of ten that are doubles without rounding.
constexpr double kExactPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                   1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int kExactPower = 22;
constexpr unsigned kExactDigits = 15; // any number of so many digits is a double without rounding

// The double nearest to digits * 10^power, ties to even: what strtod gives without setting errno. False
// where something else must decide.
inline bool nearest_double(std::uint64_t digits, int power, double &value)
{
    constexpr std::uint64_t kLargestExact = std::uint64_t{1} << 53;

    // The number and the power are both exact doubles: one operation rounds as it must.
    if (digits <= kLargestExact && power >= -kExactPower && power <= kExactPower) {
        const auto whole = static_cast<double>(static_cast<std::int64_t>(digits));
        value = power < 0 ? whole / kExactPowers[-power] : whole * kExactPowers[power];
        return true;
    }
    return nearest_by_product(digits, power, value);
}

// A number with "-" in front of it or not, 0 as well. Without a branch, as signs are hard to predict.
inline double with_sign(double magnitude, bool negative)
{
    static constexpr double kSigns[] = {1.0, -1.0};
    return magnitude * kSigns[negative ? 1 : 0];
}

#endif
