// SPDX-License-Identifier: MIT
// Small functions on text, for ASCII whatever the locale.
#ifndef RAW2PUNCH_TEXT_TOOLS_H
#define RAW2PUNCH_TEXT_TOOLS_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

bool is_blank(char c); // space, tab, carriage return
bool is_digit(char c);

std::string lower_case(std::string_view text);
std::string upper_case(std::string_view text);

// Without the blanks on both sides.
std::string_view trimmed(std::string_view text);

// The words between blanks and, if there are any, separators.
std::vector<std::string_view> words_of(std::string_view text, char separator = ' ');

bool starts_with(std::string_view text, std::string_view start);

// The whole text as a number of digits. False for anything else, also for one beyond 2^62.
bool to_count(std::string_view text, std::int64_t &count);

// The whole text as a number, exactly rounded. Takes what simulators write for infinite values and for values
// that are no number ("inf", "-nan", "1.#QNAN"). One out of range becomes infinity or zero. False for
// anything else; value is unchanged then.
bool to_number(std::string_view text, double &value);

#endif
