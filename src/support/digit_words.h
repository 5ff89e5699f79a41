// SPDX-License-Identifier: MIT
// Digits of text taken several at a time: a machine word holds the value of one digit in each byte, the
// first in the lowest byte whatever the byte order of the processor.
#ifndef TRESK_SUPPORT_DIGIT_WORDS_H
#define TRESK_SUPPORT_DIGIT_WORDS_H

#include <cstdint>
#include <cstring>

constexpr unsigned kWordDigits = 8;
constexpr bool kBigEndian = __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__;

inline bool is_decimal_digit(char c)
{
    return c >= '0' && c <= '9';
}

// Two, four or eight characters at text.
inline unsigned load_two(const char *text)
{
    std::uint16_t word = 0;
    std::memcpy(&word, text, sizeof word);
    return kBigEndian ? __builtin_bswap16(word) : word;
}

inline std::uint32_t load_four(const char *text)
{
    std::uint32_t word = 0;
    std::memcpy(&word, text, sizeof word);
    return kBigEndian ? __builtin_bswap32(word) : word;
}

inline std::uint64_t load_eight(const char *text)
{
    std::uint64_t word = 0;
    std::memcpy(&word, text, sizeof word);
    return kBigEndian ? __builtin_bswap64(word) : word;
}

// The eight characters at text, each less '0'. Those that are no digits give bytes above 9.
inline std::uint64_t load_digits(const char *text)
{
    return load_eight(text) ^ 0x3030303030303030;
}

// Keeps the first count digits (1 to 8) with zeros in front of them, so that what stands behind is gone.
inline std::uint64_t keep_first(std::uint64_t digits, unsigned count)
{
    return digits << 8 * (kWordDigits - count);
}

// Not 0 if a byte is above 9. Up to the first such byte every mark is right; a carry may set some behind.
inline std::uint64_t mark_others(std::uint64_t digits)
{
    return (digits | (digits + 0x0606060606060606)) & 0xF0F0F0F0F0F0F0F0;
}

// The number that eight digits make.
inline std::uint64_t weigh_digits(std::uint64_t digits)
{
    digits = digits * 10 + (digits >> 8); // pairs of digits, in every other byte
    return ((digits & 0x000000FF000000FF) * 0x000F424000000064 +
            (digits >> 16 & 0x000000FF000000FF) * 0x0000271000000001) >>
           32; // the hundreds of both halves weighed and added
}

// What a number is multiplied with to make room for so many digits (0 to 8).
inline std::uint64_t room_for_digits(unsigned count)
{
    static constexpr std::uint32_t kPowers[] = {1,      10,      100,      1000,     10000,
                                                100000, 1000000, 10000000, 100000000};
    return kPowers[count];
}

#endif
