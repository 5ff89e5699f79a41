// SPDX-License-Identifier: MIT
#include "read/checked_number.h"

#include "support/number.h"
#include "support/tk_buffer.h"
#include "support/transcript.h"

#include <cerrno>

double tk_atof(const std::string &text)
{
    int error = 0;
    const double value = convert_number(text.c_str(), error);
    if (error == EINVAL) {
        transcript_printf("*ERROR* Invalid number (%s)\n", text.c_str());
    } else if (error == ERANGE) {
        transcript_printf("*ERROR* Number (%s) out of range: too big or too small\n", text.c_str());
    } else if (error != 0) {
        transcript_printf("*ERROR* Cannot read number (%s)\n", text.c_str());
    }
    return value;
}

double next_number(PunchStream &stream)
{
    double value = 0.0;
    return tk_nxnumber(stream, value) ? value : tk_atof(tk_nxfield(stream));
}
