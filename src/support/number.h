// SPDX-License-Identifier: MIT
// Conversion of text to double: the value and the errno of strtod, at a fraction of its cost for
// the ordinary decimal number.
#ifndef TRESK_SUPPORT_NUMBER_H
#define TRESK_SUPPORT_NUMBER_H

#include "support/exact_decimal.h"
#include "support/plain_decimal.h"

// Leaves the number at first to the standard library. Returns as fast_number does.
const char *library_number(const char *first, const char *last, double &value);

// Tries the fast path on the text at first, which goes no further than last; kReadAhead bytes must be
// readable behind it. On success returns the end of the number, sets value to exactly what strtod would
// give without setting errno, and shape to that of a plain decimal number. Returns null where strtod must
// decide: a leading "+" or blank, hexadecimal, NAN(...), infinities, results that are subnormal, at the
// edge of the range or rounded to zero.
inline const char *fast_number(const char *first, const char *last, double &value, NumberShape &shape)
{
    PlainDecimal number;
    const char *end = scan_plain_decimal(first, number);
    if (end == nullptr || !nearest_double(number.digits, number.power, value)) {
        return library_number(first, last, value);
    }
    value = with_sign(value, number.negative);
    shape = number.shape;
    return end;
}

inline const char *fast_number(const char *first, const char *last, double &value)
{
    NumberShape shape;
    return fast_number(first, last, value, shape);
}

// The value of strtod on text (zero-terminated), error being the errno it leaves, cleared before.
double convert_number(const char *text, int &error);

#endif
