// SPDX-License-Identifier: MIT
#include "raw2punch/punch_writer.h"

#include <cmath>
#include <cstdio>

namespace
{

std::string unit_words(const std::string &unit)
{
    return unit.empty() ? "" : " YUNITS = " + unit;
}

std::string data_words(PunchFormat format)
{
    return format == PunchFormat::TEXT     ? ""
           : format == PunchFormat::BINARY ? " DATA = BINARY"
                                           : " DATA = BINARY_DBL";
}

} // namespace

std::string waveform_line(const std::string &name, const std::string &unit, PunchFormat format)
{
    std::string line = name + unit_words(unit) + data_words(format);
    if (line.size() == name.size()) {
        line += ' '; // which ends the name
    }
    return line + "\n";
}

void PunchWriter::write_header(Analysis analysis, const Variant &variant, const std::string &date)
{
    char temperature[kNumberLength + 1] = {};
    if (std::fabs(variant.temperature) < 1e9) {
        std::snprintf(temperature, sizeof temperature, "%.3f", variant.temperature);
    } else {
        put_number(variant.temperature, temperature);
    }
    write(std::string("* ANALYSIS = ") + header_word(analysis) + "   PROGRAM = RAW2PUNCH" +
          (date.empty() ? "" : "   " + date) + "\n* RERUN_NUMBER = " + std::to_string(variant.rerun) +
          ", TEMPERATURE = " + temperature + ", MODIFY = " + std::to_string(variant.modify) + "\n");
    if (variant.rerun != titled_rerun_ && !variant.title.empty()) {
        write("* TITLE  " + variant.title + "\n");
    }
    titled_rerun_ = variant.rerun;
}

void PunchWriter::write_sweep(const std::string &units, bool logarithmic)
{
    if (!units.empty()) {
        write("* XUNITS = " + units + "\n");
    }
    write(std::string("* X_FUNCTION = ") + (logarithmic ? "LOG" : "LINEAR") + "\n");
}

void PunchWriter::write_solution(const std::string &name, const std::string &unit, double value)
{
    if (format_ == PunchFormat::TEXT) {
        write(name + unit_words(unit) + "  0  " + number_text(value) + "\n");
        return;
    }
    write(waveform_line(name, unit, format_));
    char bytes[2 * sizeof(double)];
    const char *end = put_value(format_, value, put_value(format_, 0.0, bytes));
    write({bytes, static_cast<std::size_t>(end - bytes)});
    write(end_of_points(format_).substr(0, value_size(format_)));
    write("\n");
}

void PunchWriter::write_measure(const std::string &name, int run, double value)
{
    write(waveform_line(name, "", PunchFormat::TEXT) + "+ " + std::to_string(run) + " " + number_text(value) +
          "\n");
}
