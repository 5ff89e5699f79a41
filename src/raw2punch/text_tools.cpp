// SPDX-License-Identifier: MIT
#include "raw2punch/text_tools.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>

bool is_blank(char c)
{
    return c == ' ' || c == '\t' || c == '\r';
}

bool is_digit(char c)
{
    return c >= '0' && c <= '9';
}

std::string lower_case(std::string_view text)
{
    std::string result(text);
    for (char &c : result) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return result;
}

std::string upper_case(std::string_view text)
{
    std::string result(text);
    for (char &c : result) {
        c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    }
    return result;
}

std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && is_blank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && is_blank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

std::vector<std::string_view> words_of(std::string_view text, char separator)
{
    std::vector<std::string_view> words;
    const auto separates = [separator](char c) {
        return is_blank(c) || c == separator;
    };
    for (std::size_t i = 0; i < text.size();) {
        std::size_t end = i;
        while (end < text.size() && !separates(text[end])) {
            ++end;
        }
        if (end > i) {
            words.push_back(text.substr(i, end - i));
        }
        i = end + 1;
    }
    return words;
}

bool starts_with(std::string_view text, std::string_view start)
{
    return text.substr(0, start.size()) == start;
}

bool to_count(std::string_view text, std::int64_t &count)
{
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || value < 0 ||
        value > (std::int64_t{1} << 62)) {
        return false;
    }
    count = value;
    return true;
}

bool to_number(std::string_view text, double &value)
{
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);
    }
    const char *last = text.data() + text.size();
    double number = 0.0;
    const auto [end, error] = std::from_chars(text.data(), last, number);
    if (error == std::errc::invalid_argument) {
        return false;
    }
    if (error == std::errc::result_out_of_range) {
        number = std::strtod(std::string(text.data(), end).c_str(), nullptr);
    }
    if (end != last) {
        const std::string_view rest(end, static_cast<std::size_t>(last - end));
        if (starts_with(rest, "#INF")) {
            number = std::copysign(std::numeric_limits<double>::infinity(), number);
        } else if (starts_with(rest, "#QNAN") || starts_with(rest, "#SNAN") || starts_with(rest, "#IND")) {
            number = std::numeric_limits<double>::quiet_NaN();
        } else {
            return false;
        }
    }
    value = number;
    return true;
}
