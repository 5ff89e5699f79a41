// SPDX-License-Identifier: MIT
// Checked conversion of the numbers in a punch file. A bad number is reported on the transcript.
// Kept: its converted value is used all the same (docs/verdict.md, "What is not a value").
#ifndef TRESK_READ_CHECKED_NUMBER_H
#define TRESK_READ_CHECKED_NUMBER_H

#include "support/punch_stream.h"

#include <string>

// The value of strtod on text, with one of three "*ERROR*" lines where errno reports trouble.
double tk_atof(const std::string &text);

// The next field as a number.
double next_number(PunchStream &stream);

#endif
