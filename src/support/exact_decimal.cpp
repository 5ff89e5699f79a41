// SPDX-License-Identifier: MIT
#include "support/exact_decimal.h"

#include <cstddef>
#include <cstring>

#ifdef __SIZEOF_INT128__

namespace
{

using Wide = unsigned __int128;

// With these powers no number of 64 bits leaves the range of doubles, nor comes near its ends.
constexpr int kLargestPower = 128;

// The first 128 bits of a power of five: 5^n = (high * 2^64 + low + f) * 2^e, high having its highest
// bit set and 0 <= f < 1.
struct PowerOfFive {
    std::uint64_t high;
    std::uint64_t low;
};

// A whole number below 2^512, the lowest word first: has room for 5^128, and for 2^511 / 5^128 with more
// than 128 bits.
class LongNumber
{
  public:
    constexpr LongNumber(std::size_t word, std::uint32_t value)
    {
        words_[word] = value;
    }

    constexpr void multiply_by_five()
    {
        std::uint64_t carry = 0;
        for (std::uint32_t &word : words_) {
            carry += std::uint64_t{word} * 5;
            word = static_cast<std::uint32_t>(carry);
            carry >>= 32;
        }
    }

    // Rounds down; so dividing twice rounds as dividing once by 25.
    constexpr void divide_by_five()
    {
        std::uint64_t rest = 0;
        for (std::size_t i = kWords; i-- != 0;) {
            rest = rest << 32 | words_[i];
            words_[i] = static_cast<std::uint32_t>(rest / 5);
            rest %= 5;
        }
    }

    constexpr PowerOfFive first_bits() const
    {
        std::size_t highest = 32 * kWords - 1;
        while (!bit(highest)) {
            --highest;
        }
        PowerOfFive bits{0, 0};
        for (std::size_t i = 0; i < 128; ++i) {
            bits.high = bits.high << 1 | bits.low >> 63;
            bits.low = bits.low << 1 | (i <= highest && bit(highest - i) ? 1 : 0);
        }
        return bits;
    }

  private:
    constexpr bool bit(std::size_t i) const
    {
        return (words_[i / 32] >> i % 32 & 1) != 0;
    }

    static constexpr std::size_t kWords = 16;
    std::uint32_t words_[kWords] = {};
};

struct PowerTable {
    PowerOfFive powers[2 * kLargestPower + 1];
};

constexpr PowerTable make_powers_of_five()
{
    PowerTable table{};
    LongNumber power(0, 1);
    LongNumber reciprocal(15, 0x80000000);
    for (int n = 0; n <= kLargestPower; ++n) {
        table.powers[kLargestPower + n] = power.first_bits();
        table.powers[kLargestPower - n] = reciprocal.first_bits();
        power.multiply_by_five();
        reciprocal.divide_by_five();
    }
    return table;
}

constexpr PowerTable kPowersOfFive = make_powers_of_five();

// The largest whole number not above log2(10^power).
constexpr int binary_logarithm(int power)
{
    return (power * 217706) >> 16;
}

} // namespace

bool nearest_by_product(std::uint64_t digits, int power, double &value)
{
    if (digits == 0) {
        value = 0.0;
        return true;
    }
    if (power < -kLargestPower || power > kLargestPower) {
        return false;
    }
    const int zeros = __builtin_clzll(digits);
    const PowerOfFive &five = kPowersOfFive.powers[power + kLargestPower];
    const std::uint64_t factor = digits << zeros;
    // The first 128 of the 192 bits of factor * five. As five is less than 1 too small, and what is cut
    // off here is less than 1, the product is at least this and less than this + 2.
    const Wide lower = Wide{factor} * five.low;
    Wide product = Wide{factor} * five.high + (lower >> 64);
    const int top = static_cast<int>(product >> 127);
    product <<= 1 - top; // so it is less than this + 4
    const auto high = static_cast<std::uint64_t>(product >> 64);

    // Behind the 53 bits of a double, the first always 1, are 11 bits and all those of the low half. They
    // decide the rounding, unless they are so near to half that the product may be there.
    constexpr std::uint64_t kHalf = 0x400;
    const std::uint64_t rest = high & (2 * kHalf - 1);
    if (rest - (kHalf - 1) <= 1) {
        const auto low = static_cast<std::uint64_t>(product);
        if (rest == kHalf ? low == 0 : low > ~std::uint64_t{4}) {
            return false;
        }
    }
    const std::uint64_t significand = (high >> 11) + (high >> 10 & 1); // may become 2^53
    const int exponent = 63 + top - zeros + binary_logarithm(power);
    // The first bit of the significand adds 1 to the exponent.
    const std::uint64_t bits = (static_cast<std::uint64_t>(exponent + 1022) << 52) + significand;
    std::memcpy(&value, &bits, sizeof value);
    return true;
}

#else

bool nearest_by_product(std::uint64_t digits, int, double &value)
{
    value = 0.0;
    return digits == 0;
}

#endif
