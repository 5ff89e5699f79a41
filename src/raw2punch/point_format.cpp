// SPDX-License-Identifier: MIT
#include "raw2punch/point_format.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

namespace
{

template <typename Value> struct Coding;

template <> struct Coding<double> {
    using Bits = std::uint64_t;

    static Bits big_endian(Bits bits)
    {
        return __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ ? __builtin_bswap64(bits) : bits;
    }
};

template <> struct Coding<float> {
    using Bits = std::uint32_t;

    static Bits big_endian(Bits bits)
    {
        return __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ ? __builtin_bswap32(bits) : bits;
    }
};

template <typename Value> char *put(double value, char *to)
{
    using Bits = typename Coding<Value>::Bits;
    const auto narrowed = static_cast<Value>(value);
    Bits bits;
    std::memcpy(&bits, &narrowed, sizeof bits);
    bits -= bits == static_cast<Bits>(~Bits{0}) ? 1 : 0;
    bits = Coding<Value>::big_endian(bits);
    std::memcpy(to, &bits, sizeof bits);
    return to + sizeof bits;
}

template <typename Value>
char *put_all(const double *xs, const double *ys, std::size_t count, std::int64_t number, char *to)
{
    auto left = static_cast<std::size_t>(kGroupPoints - number % kGroupPoints); // in the group
    while (count > 0) {
        const std::size_t run = std::min(left, count);
        for (std::size_t i = 0; i < run; ++i) {
            to = put<Value>(ys[i], put<Value>(xs[i], to));
        }
        xs += run;
        ys += run;
        count -= run;
        if (run == left) {
            *to++ = '\n';
        }
        left = kGroupPoints;
    }
    return to;
}

} // namespace

std::string_view end_of_points(PunchFormat format)
{
    constexpr std::string_view kEnd = "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\n\n";
    return kEnd.substr(8 - value_size(format));
}

char *put_value(PunchFormat format, double value, char *to)
{
    return format == PunchFormat::BINARY ? put<float>(value, to) : put<double>(value, to);
}

double value_at(const char *bytes)
{
    std::uint64_t bits = 0;
    std::memcpy(&bits, bytes, sizeof bits);
    bits = Coding<double>::big_endian(bits);
    double value = 0.0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

char *put_points(PunchFormat format, const double *xs, const double *ys, std::size_t count,
                 std::int64_t number, char *to)
{
    return format == PunchFormat::BINARY ? put_all<float>(xs, ys, count, number, to)
                                         : put_all<double>(xs, ys, count, number, to);
}

char *put_number(double value, char *to)
{
    char *end = to + kNumberLength;
    if (std::isnan(value)) {
        return std::copy_n("NAN", 3, to);
    }
    if (std::fpclassify(value) != FP_SUBNORMAL) {
        return std::to_chars(to, end, value).ptr;
    }
    if (std::signbit(value)) {
        *to++ = '-';
    }
    to = std::copy_n("0x", 2, to);
    return std::to_chars(to, end, std::fabs(value), std::chars_format::hex).ptr;
}

std::string number_text(double value)
{
    char text[kNumberLength + 1];
    return {text, put_number(value, text)};
}
