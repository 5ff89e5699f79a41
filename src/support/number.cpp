// SPDX-License-Identifier: MIT
#include "support/number.h"

#include "support/char_class.h"

#include <cerrno>
#include <cfenv>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <string_view>

const char *library_number(const char *first, const char *last, double &value)
{
    const auto [end, error] = std::from_chars(first, last, value);
    if (error != std::errc{}) {
        return nullptr;
    }
    const double magnitude = std::fabs(value);
    if (magnitude > std::numeric_limits<double>::min() && magnitude <= std::numeric_limits<double>::max()) {
        return end;
    }
    // Zero: plain only when the digits say so; otherwise the number was too small.
    for (const char *c = first; c != end && *c != 'e' && *c != 'E'; ++c) {
        if (*c != '0' && *c != '.' && *c != '-') {
            return nullptr;
        }
    }
    return end;
}

double convert_number(const char *text, int &error)
{
    double value = 0.0;
    char padded[2 * kReadAhead] = {};
    const std::string_view all(text);
    const std::size_t length = all.size();
    if (length < kReadAhead) {
        all.copy(padded, length);
        const char *end = fast_number(padded, padded + length, value);
        // Only a number that uses the whole text is beyond doubt: "0X1P3" starts with a decimal zero. A
        // carriage return, which stays at the end of the lines of some files, goes on with no number.
        if (end != nullptr && (*end == '\0' || *end == '\r')) {
            error = 0;
            return value;
        }
    }
    errno = 0;
    value = std::strtod(text, nullptr);
    error = errno;
    return value;
}

// The library's number conversion makes sure that results are rounded to nearest, which they always are
// in this program. These two are all that it needs of the mathematical library, whose loading would
// make every start a tenth longer.
extern "C" int(fegetround)() noexcept
{
    return FE_TONEAREST;
}

// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): the other one is the library's
extern "C" int(fesetround)(int mode) noexcept
{
    return mode == FE_TONEAREST ? 0 : 1;
}
