// SPDX-License-Identifier: MIT
// Units and numbers as the figures show them.
#ifndef TRESK_REPORT_UNITS_H
#define TRESK_REPORT_UNITS_H

#include "report/figure.h"

#include <string>

namespace report
{

// "V" of VOLTS, "s" of SECONDS and so on, in any case; the file's own text, without prefixes, of others.
// text may be null.
Unit unit_of(const char *text);

// The unit of an area: "V·s". A unit that takes no prefix leaves that to the whole: "dB·s" has none either.
Unit times_seconds(const Unit &unit);

// Prefix of a power of ten, a multiple of 3 from -18 to 12: "n" of -9.
std::string si_prefix(int exponent);
bool has_prefix(int exponent);

// A number of up to `digits` digits without trailing zeros, with prefix and unit: "1.02 ns", "-3 dB",
// "2.5e-07 FOO", "NaN", "∞ V". Numbers that no prefix is made for have an exponent.
std::string with_unit(double value, const Unit &unit, int digits = 4);

// With so many decimals, point as decimal point whatever the locale is.
std::string fixed(double value, int decimals);

} // namespace report

#endif
