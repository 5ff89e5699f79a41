// SPDX-License-Identifier: MIT
#include "report/units.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <strings.h>

namespace report
{

namespace
{

struct KnownUnit {
    const char *word; // in the files
    const char *symbol;
    bool takes_prefix;
};

constexpr std::array<KnownUnit, 23> kUnits = {{
    {"VOLTS", "V", true},
    {"VOLT", "V", true},
    {"V", "V", true},
    {"AMPS", "A", true},
    {"AMPERES", "A", true},
    {"A", "A", true},
    {"SECONDS", "s", true},
    {"HERTZ", "Hz", true},
    {"HZ", "Hz", true},
    {"FREQ", "Hz", true},
    {"FREQUENCY(HZ)", "Hz", true},
    {"DEGREES", "°", false},
    {"DB", "dB", false},
    {"WATTS", "W", true},
    {"FARADS", "F", true},
    {"HENRIES", "H", true},
    {"OHMS", "Ω", true},
    {"COLOUMBS", "C", true}, // spelled so in the files
    {"COULOMBS", "C", true},
    {"V/SQRT(HZ)", "V/√Hz", true},
    {"A/SQRT(HZ)", "A/√Hz", true},
    {"AMP/M^2", "A/m²", true},
    {"NULL", "", true},
}};

constexpr int kLowestPower = -18;
constexpr int kHighestPower = 12;
constexpr std::array<const char *, 11> kPrefixes = {"a", "f", "p", "n", "µ", "m", "", "k", "M", "G", "T"};

template <typename... Form> std::string digits_of(double value, Form... form)
{
    std::array<char, 400> text = {}; // the longest double without an exponent, and more than its decimals
    const std::to_chars_result end = std::to_chars(text.data(), text.data() + text.size(), value, form...);
    return end.ec == std::errc() ? std::string(text.data(), end.ptr) : std::string();
}

std::string general(double value, int digits)
{
    return digits_of(value, std::chars_format::general, digits);
}

std::string joined(const std::string &number, const std::string &unit)
{
    const bool is_sign = unit == "°";
    return unit.empty() || is_sign ? number + unit : number + " " + unit;
}

// "1.02 n" of 1.02e-9, or nothing where there is no prefix for it.
std::string with_prefix(double value, const std::string &unit, int digits)
{
    const double magnitude = std::fabs(value);
    int power = 3 * static_cast<int>(std::floor(std::log10(magnitude) / 3.0));
    // What rounds up to 1000 belongs to the next prefix.
    power += std::round(magnitude / std::pow(10.0, power - digits + 3)) >= std::pow(10.0, digits) ? 3 : 0;
    if (!has_prefix(power)) {
        return {};
    }
    const double scaled = power < 0 ? value * std::pow(10.0, -power) : value / std::pow(10.0, power);
    return joined(general(scaled, digits), si_prefix(power) + unit);
}

} // namespace

Unit unit_of(const char *text)
{
    if (text == nullptr) {
        return {"", true};
    }
    const auto *const known = std::find_if(kUnits.begin(), kUnits.end(), [text](const KnownUnit &unit) {
        return strcasecmp(unit.word, text) == 0;
    });
    return known != kUnits.end() ? Unit{known->symbol, known->takes_prefix} : Unit{text, false};
}

Unit times_seconds(const Unit &unit)
{
    return {unit.text.empty() ? "s" : unit.text + "·s", unit.takes_prefix};
}

std::string si_prefix(int exponent)
{
    const int place = (std::clamp(exponent, kLowestPower, kHighestPower) - kLowestPower) / 3;
    return kPrefixes[static_cast<std::size_t>(place)];
}

bool has_prefix(int exponent)
{
    return exponent >= kLowestPower && exponent <= kHighestPower;
}

std::string with_unit(double value, const Unit &unit, int digits)
{
    if (std::isnan(value)) {
        return "NaN";
    }
    if (std::isinf(value)) {
        return joined(value > 0.0 ? "∞" : "-∞", unit.text);
    }
    if (unit.takes_prefix && value != 0.0) {
        std::string text = with_prefix(value, unit.text, digits);
        if (!text.empty()) {
            return text;
        }
    }
    return joined(value == 0.0 ? "0" : general(value, digits), unit.text);
}

std::string fixed(double value, int decimals)
{
    const std::string text = digits_of(value, std::chars_format::fixed, decimals);
    return text.find_first_of("123456789") == std::string::npos && text[0] == '-' ? text.substr(1) : text;
}

} // namespace report
