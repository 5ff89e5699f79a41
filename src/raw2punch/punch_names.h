// SPDX-License-Identifier: MIT
// Names, units and titles in the form in which the reader of punch files takes them.
#ifndef RAW2PUNCH_PUNCH_NAMES_H
#define RAW2PUNCH_PUNCH_NAMES_H

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>

// The name of a waveform: blanks, and what would make the line another one, become "_".
std::string waveform_name(std::string_view name);

// The name of an operating point value. Such names may stand in a list and make ranges, so that "=", ",",
// "&", brackets within brackets, those without a partner and the colon of a range are replaced, too.
std::string solution_name(std::string_view name);

// "VDB(OUT)" from "V(OUT)" and "DB", "vdb(out)" from "v(out)"; "DB(gain)" where nothing stands in brackets.
std::string derived_name(std::string_view name, std::string_view function);

// Y or x unit of values of that type ("VOLTS" for "voltage"); empty where the type has none.
std::string unit_of_type(std::string_view type);

// The same in a noise spectrum, where old simulators call densities just voltages.
std::string noise_unit_of_type(std::string_view type);

// The text of one line. Empty if it has no printable character.
std::string title_text(std::string_view title);

// "DATE = 12-MAR-24   TIME = 10:11:12" from "Tue Mar 12 10:11:12 2024"; empty for any other text.
std::string date_words(std::string_view date);

// Makes names differ that are equal.
class UniqueNames
{
  public:
    // The name, or with "#2", "#3" ... behind it when it has come before.
    std::string make(const std::string &name);

  private:
    std::unordered_map<std::string, std::size_t> used_; // how often each has been asked for, at least
};

#endif
