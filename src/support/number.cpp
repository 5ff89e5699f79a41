// SPDX-License-Identifier: MIT
#include "support/number.h"

#include <cerrno>
#include <cfenv>
#include <cstdlib>
#include <cstring>

double convert_number(const char *text, int &error)
{
    double value = 0.0;
    const char *end = fast_number(text, text + std::strlen(text), value);
    // Only a number that uses the whole text is beyond doubt: "0X1P3" starts with a decimal zero.
    if (end != nullptr && *end == '\0') {
        error = 0;
        return value;
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
