// SPDX-License-Identifier: MIT
#include "report/text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>

namespace report
{

namespace
{

constexpr std::string_view kReplacement = "\xEF\xBF\xBD"; // U+FFFD

// A character at the start of a text: its code, and how many bytes it takes; 0 if no character starts there.
struct Character {
    std::uint32_t code;
    std::size_t size;
};

constexpr Character kNoCharacter = {0, 0};

unsigned byte_at(std::string_view text, std::size_t at)
{
    return static_cast<unsigned char>(text[at]);
}

// How many bytes a first byte announces; 0 for one that is none.
std::size_t announced_size(unsigned first)
{
    if (first < 0x80) {
        return 1;
    }
    if (first < 0xC2 || first > 0xF4) { // 0xC0 and 0xC1 could only begin what one byte can hold
        return 0;
    }
    return first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
}

Character first_character(std::string_view text)
{
    constexpr std::uint32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const unsigned first = byte_at(text, 0);
    const std::size_t size = announced_size(first);
    if (size <= 1) {
        return {first, size};
    }
    std::uint32_t code = first & (0xFFU >> (size + 1));
    for (std::size_t i = 1; i < size; ++i) {
        if (i >= text.size() || (byte_at(text, i) & 0xC0U) != 0x80) {
            return kNoCharacter;
        }
        code = code << 6 | (byte_at(text, i) & 0x3FU);
    }
    const bool is_surrogate = code >= 0xD800 && code < 0xE000;
    return code < kSmallest[size] || code > 0x10FFFF || is_surrogate ? kNoCharacter : Character{code, size};
}

// Whether a character is drawn, and leaves the others where they are.
bool is_harmless(std::uint32_t code)
{
    const bool is_control = code < 0x20 || (code >= 0x7F && code < 0xA0);
    const bool is_separator = code == 0x2028 || code == 0x2029;
    const bool turns_text = code == 0x061C || code == 0x200E || code == 0x200F ||
                            (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
    const bool is_noncharacter = (code & 0xFFFEU) == 0xFFFE || (code >= 0xFDD0 && code <= 0xFDEF);
    return !is_control && !is_separator && !turns_text && !is_noncharacter;
}

std::string cleaned(std::string_view bytes, bool keeps_lines)
{
    std::string text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        const Character character = first_character(bytes);
        const bool is_kept = keeps_lines && (bytes[0] == '\n' || bytes[0] == '\t');
        if (character.size != 0 && (is_kept || is_harmless(character.code))) {
            text += bytes.substr(0, character.size);
        } else {
            text += kReplacement;
        }
        bytes.remove_prefix(character.size != 0 ? character.size : 1);
    }
    return text;
}

std::string with_entities(const std::string &text)
{
    std::string html;
    html.reserve(text.size());
    for (const char c : text) {
        switch (c) {
        case '&':
            html += "&amp;";
            break;
        case '<':
            html += "&lt;";
            break;
        case '>':
            html += "&gt;";
            break;
        case '"':
            html += "&quot;";
            break;
        case '\'':
            html += "&#39;";
            break;
        default:
            html += c;
        }
    }
    return html;
}

char digit(unsigned value)
{
    return "0123456789abcdef"[value & 0xFU];
}

bool is_plain_in_json(char c)
{
    return c >= ' ' && c <= '~' && c != '"' && c != '\\';
}

bool is_plain_in_url(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
           c == '.' || c == '_' || c == '~';
}

} // namespace

std::string clean_text(std::string_view bytes)
{
    return cleaned(bytes, false);
}

std::string html_text(std::string_view bytes)
{
    return with_entities(clean_text(bytes));
}

std::string html_attribute(std::string_view bytes)
{
    return html_text(bytes);
}

std::string html_lines(std::string_view bytes)
{
    return with_entities(cleaned(bytes, true));
}

std::string json_text(std::string_view bytes)
{
    if (std::all_of(bytes.begin(), bytes.end(), is_plain_in_json)) { // nearly all there is
        std::string text = "\"";
        text += bytes;
        return text + '"';
    }
    return nlohmann::json(clean_text(bytes)).dump();
}

std::string script_json(std::string_view json)
{
    std::string text;
    text.reserve(json.size());
    for (const char c : json) {
        if (c == '<' || c == '>' || c == '&') {
            text += "\\u00";
            text += digit(static_cast<unsigned char>(c) >> 4U);
            text += digit(static_cast<unsigned char>(c));
        } else {
            text += c;
        }
    }
    return text;
}

std::string csv_field(std::string_view bytes)
{
    // Tabs and carriage returns, which some spreadsheets skip or take for a formula, are gone by now.
    const std::string text = clean_text(bytes);
    const std::size_t first = text.find_first_not_of(' ');
    std::string field = "\"";
    if (first != std::string::npos && std::string_view("=+-@").find(text[first]) != std::string_view::npos) {
        field += '\'';
    }
    for (const char c : text) {
        field.append(c == '"' ? 2 : 1, c);
    }
    return field + '"';
}

std::string terminal_line(std::string_view bytes)
{
    return clean_text(bytes);
}

std::string url_bytes(std::string_view bytes)
{
    std::string url;
    for (const char c : bytes) {
        if (is_plain_in_url(c)) {
            url += c;
        } else {
            url += '%';
            url += hexadecimal({&c, 1});
        }
    }
    return url;
}

std::string hexadecimal(std::string_view bytes)
{
    std::string digits;
    digits.reserve(bytes.size() * 2);
    for (const char c : bytes) {
        digits += digit(static_cast<unsigned char>(c) >> 4U);
        digits += digit(static_cast<unsigned char>(c));
    }
    return digits;
}

std::string number_text(double value)
{
    if (value != value) {
        return "nan"; // of either sign
    }
    char text[32];
    return {text, std::to_chars(text, text + sizeof text, value).ptr};
}

std::string json_number(double value)
{
    return std::isfinite(value) ? number_text(value) : '"' + number_text(value) + '"';
}

} // namespace report
