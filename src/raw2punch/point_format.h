// SPDX-License-Identifier: MIT
// Points of punch files: their bytes in the binary formats, their text.
#ifndef RAW2PUNCH_POINT_FORMAT_H
#define RAW2PUNCH_POINT_FORMAT_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

enum class PunchFormat { TEXT, BINARY, BINARY_DBL };

constexpr std::int64_t kGroupPoints = 10; // one more byte follows each

// Bytes of one coordinate.
constexpr std::size_t value_size(PunchFormat format)
{
    return format == PunchFormat::BINARY ? 4 : 8;
}

// Where point number begins, behind the first one; that of a number of points is what all of them take.
constexpr std::int64_t point_offset(PunchFormat format, std::int64_t number)
{
    return number * 2 * static_cast<std::int64_t>(value_size(format)) + number / kGroupPoints;
}

// What follows the points: the end mark and the closing byte with its line feed.
std::string_view end_of_points(PunchFormat format);

// The bytes of a value in a binary format, most significant first. A NaN with the bits of the end mark gets
// another lowest bit.
char *put_value(PunchFormat format, double value, char *to);
double value_at(const char *bytes); // of BINARY_DBL

// Writes points to bytes in a binary format. number is that of the first one. Returns the place behind them.
char *put_points(PunchFormat format, const double *xs, const double *ys, std::size_t count,
                 std::int64_t number, char *to);

// Longest text of a number.
constexpr std::size_t kNumberLength = 24;

// Writes the shortest text that gives back the value. One too small for a normal number is written in
// hexadecimal: the reader complains about decimal ones. Returns the place behind it.
char *put_number(double value, char *to);

std::string number_text(double value);

#endif
