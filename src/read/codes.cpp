// SPDX-License-Identifier: MIT
#include "read/codes.h"

#include <cstring>

const char *format_name(int format)
{
    switch (format) {
    case TEXT:
        return "TEXT";
    case BINARY:
        return "BINARY";
    case BINARY_DBL:
        return "BINARY_DBL";
    default:
        return "UNKNOWN";
    }
}

int format_of_word(const char *word)
{
    if (std::strcmp(word, format_name(BINARY)) == 0) {
        return BINARY;
    }
    return std::strcmp(word, format_name(BINARY_DBL)) == 0 ? BINARY_DBL : NO_DATA;
}
