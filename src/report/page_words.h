// SPDX-License-Identifier: MIT
// The words of the page: plain English for codes, and numbers as it shows them. None but name_text is
// escaped.
#ifndef TRESK_REPORT_PAGE_WORDS_H
#define TRESK_REPORT_PAGE_WORDS_H

#include "report/result.h"

#include <string>
#include <vector>

namespace report
{

// Whether a failing pair is of single values, or of waveforms of one point: a row of a table, nothing to be
// drawn.
bool is_tabled(const Finding &finding);

const char *grade_meaning(int grade);

// An ExitBit and what it stands for.
struct BitMeaning {
    unsigned bit;
    const char *meaning;
};

const std::vector<BitMeaning> &bit_meanings();

// What is judged, missing or different: "area", "3 of 41 points", "signal", "x units".
std::string subject_of(const Finding &finding);

// "rerun 1, modify 0, time 5e-09"; empty where the finding stands outside all of them.
std::string place_of(const Finding &finding);

// What stands in the table for the finding's name; never empty.
std::string title_of(const Finding &finding);

// Four digits as on the transcript: "1.009e-11", "nan", "inf".
std::string four_digits(double value);

// "abs 1.009e-11, rel 7.037e-04" of what was judged, "missing in golden" of what is not there.
std::string extent_of(const Finding &finding);

// A name, a unit or a title as HTML text; cut at 200 characters, since the data has all of it.
std::string name_text(const std::string &name);

// The words as one line for a POSIX shell; of bytes that are no clean text in the $'...' form of bash.
std::string shell_line(const std::vector<std::string> &words);

} // namespace report

#endif
