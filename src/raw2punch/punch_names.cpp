// SPDX-License-Identifier: MIT
#include "raw2punch/punch_names.h"

#include "raw2punch/text_tools.h"

#include <algorithm>
#include <vector>

namespace
{

constexpr char kEndOfFileByte = '\xFF'; // the reader's

bool is_printable(char c)
{
    return static_cast<unsigned char>(c) > ' ' && c != '\x7F' && c != kEndOfFileByte;
}

bool opens(char c)
{
    return c == '(' || c == '[';
}

bool closes(char c)
{
    return c == ')' || c == ']';
}

char as_brace(char c)
{
    return opens(c) ? '{' : closes(c) ? '}' : c;
}

constexpr std::size_t kNone = std::string_view::npos;

// For each bracket the index of its partner, both kinds counted as one; kNone for all else.
std::vector<std::size_t> partners_in(std::string_view name)
{
    std::vector<std::size_t> partners(name.size(), kNone);
    std::vector<std::size_t> open;
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (opens(name[i])) {
            open.push_back(i);
        } else if (closes(name[i]) && !open.empty()) {
            partners[open.back()] = i;
            partners[i] = open.back();
            open.pop_back();
        }
    }
    return partners;
}

// Leaves the outermost pairs of brackets, those that can stand, and makes braces of all others.
std::string plain_brackets(std::string_view name)
{
    const std::vector<std::size_t> partners = partners_in(name);
    std::string result;
    std::size_t close = 0; // of the pair that stays and has been entered, 0 outside
    for (std::size_t i = 0; i < name.size(); ++i) {
        const bool behind_another = i > 0 && closes(result.back()) && name[i] == '(';
        if (close == 0 && opens(name[i]) && partners[i] != kNone && !behind_another) {
            close = partners[i];
            result += name[i];
        } else if (i == close && close != 0) {
            close = 0;
            result += name[i];
        } else {
            result += as_brace(name[i]);
        }
    }
    return result;
}

// Takes the colon out of what would be a range: the only one within brackets, between digits.
void defuse_range(std::string &name)
{
    bool inside = false;
    std::size_t count = 0;
    std::size_t colon = 0;
    for (std::size_t i = 0; i < name.size(); ++i) {
        inside = inside ? !closes(name[i]) : opens(name[i]);
        if (inside && name[i] == ':') {
            ++count;
            colon = i;
        }
    }
    if (count == 1 && is_digit(name[colon - 1]) && is_digit(name[colon + 1])) {
        name[colon] = '.';
    }
}

bool is_letter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

struct TypeUnit {
    std::string_view type;
    std::string_view unit;
};

constexpr TypeUnit kUnits[] = {
    {"notype", ""},
    {"unknown", ""},
    {"time", "SECONDS"},
    {"frequency", "HERTZ"},
    {"voltage", "VOLTS"},
    {"current", "AMPS"},
    {"device_current", "AMPS"},
    {"subckt_current", "AMPS"},
    {"voltage-density", "V/SQRT(HZ)"},
    {"current-density", "A/SQRT(HZ)"},
    {"temp-sweep", "CELSIUS"},
    {"temperature", "CELSIUS"},
    {"res-sweep", "OHMS"},
    {"resistance", "OHMS"},
    {"impedance", "OHMS"},
    {"admittance", "SIEMENS"},
    {"power", "WATTS"},
    {"decibel", "DB"},
    {"capacitance", "FARADS"},
    {"charge", "COULOMBS"},
};

} // namespace

std::string waveform_name(std::string_view name)
{
    std::string result(name);
    for (char &c : result) {
        c = is_printable(c) ? c : '_';
    }
    if (result.empty() || result[0] == '*' || result[0] == '+' || result[0] == '.') {
        result.insert(0, "_");
    }
    return result;
}

std::string solution_name(std::string_view name)
{
    std::string result = plain_brackets(waveform_name(name));
    for (char &c : result) {
        c = c == '=' || c == ',' || c == '&' ? '_' : c;
    }
    defuse_range(result);
    return result;
}

std::string derived_name(std::string_view name, std::string_view function)
{
    std::size_t letters = 0;
    while (letters < name.size() && (is_letter(name[letters]) || is_digit(name[letters]))) {
        ++letters;
    }
    const bool has_brackets = letters > 0 && is_letter(name[0]) && letters < name.size() &&
                              name[letters] == '(' && partners_in(name)[letters] == name.size() - 1;
    const std::string front(name.substr(0, has_brackets ? letters : 0));
    const std::string back(name.substr(front.size()));
    if (!has_brackets) {
        return std::string(function) + "(" + back + ")";
    }
    const bool lower = front.back() >= 'a' && front.back() <= 'z';
    return front + (lower ? lower_case(function) : std::string(function)) + back;
}

std::string unit_of_type(std::string_view type)
{
    for (const TypeUnit &known : kUnits) {
        if (known.type == type) {
            return std::string(known.unit);
        }
    }
    std::string unit = upper_case(type);
    for (char &c : unit) {
        c = is_printable(c) && c != '=' && c != ',' && c != '&' && c != '#' && c != '(' ? c : '_';
    }
    return unit;
}

std::string noise_unit_of_type(std::string_view type)
{
    return unit_of_type(type == "voltage" ? "voltage-density" : type == "current" ? "current-density" : type);
}

std::string title_text(std::string_view title)
{
    std::string result;
    for (const char c : title) {
        result += is_printable(c) || c == ' ' ? c : '_';
    }
    return std::string(trimmed(result));
}

std::string date_words(std::string_view date)
{
    constexpr std::string_view kMonths = "JANFEBMARAPRMAYJUNJULAUGSEPOCTNOVDEC";
    std::string day;
    std::string month;
    std::string year;
    std::string time;
    for (const std::string_view word : words_of(date, ',')) {
        const bool number = std::all_of(word.begin(), word.end(), is_digit);
        const std::string upper = upper_case(word);
        const std::size_t place = kMonths.find(upper);
        if (number && word.size() <= 2) {
            day = word;
        } else if (number && word.size() == 4) {
            year = word.substr(2);
        } else if (word.size() == 8 && word[2] == ':' && word[5] == ':') {
            time = word;
        } else if (word.size() == 3 && place != std::string_view::npos && place % 3 == 0) {
            month = upper;
        }
    }
    const bool plain_time = time.find_first_not_of("0123456789:") == std::string_view::npos;
    if (day.empty() || month.empty() || year.empty() || time.empty() || !plain_time) {
        return "";
    }
    return "DATE = " + day + "-" + month + "-" + year + "   TIME = " + time;
}

std::string UniqueNames::make(const std::string &name)
{
    std::size_t &count = used_[name];
    std::string unique = name;
    if (count == 0) {
        count = 1;
        return unique;
    }
    do {
        unique = name + "#" + std::to_string(++count);
    } while (used_.count(unique) > 0);
    used_.emplace(unique, 1);
    return unique;
}
