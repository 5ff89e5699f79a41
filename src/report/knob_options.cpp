// SPDX-License-Identifier: MIT
#include "report/knob_options.h"

#include "driver/options.h"
#include "report/text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <optional>

namespace report
{

namespace
{

constexpr int kMostDigits = 17; // which are enough for every number

// Calls visit(option, its value, null where it takes none). A value that is missing counts as 0.
template <typename Visit> void for_each_option(const std::vector<std::string> &options, Visit visit)
{
    static const std::string kZero = "0";
    for (std::size_t i = 0; i < options.size(); ++i) {
        if (kind_of_argument(options[i].c_str()) == ArgumentKind::OPTION) {
            visit(options[i], nullptr);
        } else {
            visit(options[i], i + 1 < options.size() ? &options[i + 1] : &kZero);
            ++i;
        }
    }
}

std::string decimal(double value, int digits)
{
    std::array<char, 40> text = {};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value,
                                   std::chars_format::scientific, digits - 1);
    return {text.data(), end.ptr};
}

// The next larger decimal number of as many digits: "8.7e-09" to "8.8e-09", "9.9e-09" to "1.0e-08".
std::string next_decimal(std::string text)
{
    const std::size_t exponent = text.find('e');
    for (std::size_t i = exponent; i-- > 0;) {
        if (text[i] == '.') {
            continue;
        }
        if (text[i] != '9') {
            ++text[i];
            return text;
        }
        text[i] = '0';
    }
    text[0] = '1';
    const int power = std::atoi(text.c_str() + exponent + 1) + 1;
    return text.substr(0, exponent + 1) + std::to_string(power);
}

} // namespace

std::string rounded_up(double value, int digits)
{
    std::string text = decimal(value, digits);
    if (std::strtod(text.c_str(), nullptr) < value) {
        text = next_decimal(text);
    }
    return number_text(std::strtod(text.c_str(), nullptr));
}

const char *knob_text(Knob knob)
{
    switch (knob) {
    case Knob::ABSOLUTE:
        return "-a";
    case Knob::RELATIVE:
        return "-r";
    default:
        return "-Ronly -r";
    }
}

std::vector<std::string> with_knob(const std::vector<std::string> &options, Knob knob,
                                   const std::string &number)
{
    std::vector<std::string> all;
    for_each_option(options, [&](const std::string &option, const std::string *value) {
        if (knob == Knob::RELATIVE_ONLY && sets_mode(option.c_str())) {
            return; // there may be one mode
        }
        all.push_back(option);
        if (value != nullptr) {
            all.push_back(*value);
        }
    });
    if (knob == Knob::RELATIVE_ONLY) {
        all.emplace_back("-Ronly");
    }
    all.emplace_back(knob == Knob::ABSOLUTE ? "-a" : "-r");
    all.push_back(number);
    return all;
}

bool turn_knob(const std::vector<std::string> &options, Knob knob)
{
    bool turned = false;
    for_each_option(options, [&](const std::string &option, const std::string *) {
        const bool is_mode = sets_mode(option.c_str());
        const char letter = option.size() > 1 ? option[1] : ' ';
        const bool is_absolute = letter == 'a' || letter == 'A';
        const bool is_relative = letter == 'r' || letter == 'R';
        turned = turned || (is_mode                  ? knob == Knob::RELATIVE_ONLY
                            : knob == Knob::ABSOLUTE ? is_absolute
                                                     : is_relative);
    });
    return turned;
}

std::string proposal(const FailSet &fails, int digits)
{
    const std::optional<double> smallest = fails.smallest_passing();
    if (!smallest) {
        return {};
    }
    for (; digits < kMostDigits; ++digits) {
        std::string text = rounded_up(*smallest, digits);
        const double number = std::strtod(text.c_str(), nullptr);
        if (std::isfinite(number) && !fails.contains(number)) {
            return text;
        }
    }
    return number_text(*smallest);
}

} // namespace report
