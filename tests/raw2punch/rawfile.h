// SPDX-License-Identifier: MIT
// Rawfiles in all the forms in which simulators write them, from plain values.
#ifndef TRESK_TESTS_RAWFILE_H
#define TRESK_TESTS_RAWFILE_H

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

enum class RawForm { DOUBLES, MIXED, FLOATS, SWAPPED, COLUMNS, MIXED_COLUMNS, TEXT, UTF16_TEXT };

struct RawSignal {
    std::string name;
    std::string type;
    std::vector<double> values; // two for each point of a complex plot
};

struct RawContents {
    std::string plot = "Transient Analysis";
    std::string title = "a circuit";
    RawForm form = RawForm::DOUBLES;
    bool complex = false;
    bool unpadded = false;
    std::size_t run_length = SIZE_MAX; // points after which the sweep starts anew
    std::vector<RawSignal> signals;    // the first one is the sweep

    std::size_t width() const // numbers of a value
    {
        return complex ? 2 : 1;
    }
    bool text() const
    {
        return form == RawForm::TEXT || form == RawForm::UTF16_TEXT;
    }
    bool is_float(std::size_t signal) const
    {
        return form == RawForm::FLOATS ||
               ((form == RawForm::MIXED || form == RawForm::MIXED_COLUMNS) && signal > 0);
    }
};

inline std::string number_in_text(double value)
{
    char text[40];
    return std::isnan(value) ? "nan" : std::string(text, std::to_chars(text, text + sizeof text, value).ptr);
}

inline std::string bytes_of(double value, bool as_float, bool big_endian)
{
    char bytes[8];
    const auto narrow = static_cast<float>(value);
    as_float ? std::memcpy(bytes, &narrow, 4) : std::memcpy(bytes, &value, 8);
    std::string result(bytes, as_float ? 4 : 8);
    if (big_endian) {
        std::reverse(result.begin(), result.end());
    }
    return result;
}

// A signal that has run out is padded with its first value.
inline std::string value_of(const RawContents &raw, std::size_t signal, std::size_t point)
{
    std::string value;
    point = point < raw.signals[signal].values.size() / raw.width() ? point : 0;
    for (std::size_t i = 0; i < raw.width(); ++i) {
        const double number = raw.signals[signal].values[point * raw.width() + i];
        value += raw.text() ? (i > 0 ? "," : "") + number_in_text(number)
                            : bytes_of(number, raw.is_float(signal), raw.form == RawForm::SWAPPED);
    }
    return value;
}

inline std::string header_of(const RawContents &raw)
{
    const std::size_t points = raw.signals[0].values.size() / raw.width();
    const bool columns = raw.form == RawForm::COLUMNS || raw.form == RawForm::MIXED_COLUMNS;
    std::string header = "Title: " + raw.title + "\nDate: Tue Mar 12 10:11:12 2024\nPlotname: " + raw.plot +
                         "\nFlags: " + (raw.complex ? "complex" : "real") + (columns ? " fastaccess" : "") +
                         (raw.unpadded ? " unpadded" : "") +
                         "\nNo. Variables: " + std::to_string(raw.signals.size()) +
                         "\nNo. Points: " + std::to_string(points) + "\nCommand: version 1\nVariables:\n";
    for (std::size_t i = 0; i < raw.signals.size(); ++i) {
        const std::size_t own = raw.signals[i].values.size() / raw.width();
        header += "\t" + std::to_string(i) + "\t" + raw.signals[i].name + "\t" + raw.signals[i].type +
                  (own < points ? " dims=" + std::to_string(own) : "") + "\n";
    }
    return header + (raw.text() ? "Values:\n" : "Binary:\n");
}

inline std::string values_of(const RawContents &raw)
{
    std::string bytes;
    const std::size_t points = raw.signals[0].values.size() / raw.width();
    if (raw.form == RawForm::COLUMNS || raw.form == RawForm::MIXED_COLUMNS) {
        for (std::size_t i = 0; i < raw.signals.size(); ++i) {
            for (std::size_t point = 0; point < points; ++point) {
                bytes += value_of(raw, i, point);
            }
        }
        return bytes;
    }
    for (std::size_t point = 0; point < points; ++point) {
        bytes += raw.text() ? std::to_string(point) : "";
        for (std::size_t i = 0; i < raw.signals.size(); ++i) {
            const bool held = point < raw.signals[i].values.size() / raw.width();
            if (held || !raw.unpadded) {
                bytes += raw.text() ? "\t" : "";
                bytes += value_of(raw, i, point);
                bytes += raw.text() ? "\n" : "";
            }
        }
    }
    return bytes + (raw.text() ? "\n" : "");
}

inline std::string rawfile(const RawContents &raw)
{
    const std::string bytes = header_of(raw) + values_of(raw);
    if (raw.form != RawForm::UTF16_TEXT) {
        return bytes;
    }
    std::string wide;
    for (const char c : bytes) {
        wide += {c, '\0'};
    }
    return wide;
}

#endif
