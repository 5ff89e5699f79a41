// SPDX-License-Identifier: MIT
#include "read/codes.h"

#include <cstring>

namespace
{

constexpr const char *kAnalysisNames[kAnalysisCount] = {
    "INOP", "INTR", "INPSS", "INDC1", "INDC2", "TR FORCE", "PSS FORCE", "AC",  "DISTO",  "NOISE", "PZ",
    "DC",   "TR",   "FOUR",  "OP",    "MR",    "PSS",      "PAC",       "PXF", "PNOISE", "XF",    "STB"};

// DISTO, FOUR and the solution kinds have no header word of their own.
constexpr AnalysisCode kHeaderAnalyses[] = {TR, DC, AC, XF, NOISE, PZ, OP, MR, PSS, PAC, PXF, PNOISE, STB};

} // namespace

const char *analysis_name(int code)
{
    return is_analysis(code) ? kAnalysisNames[code] : "UNKNOWN";
}

int analysis_of_header_word(const char *word)
{
    for (const int code : kHeaderAnalyses) {
        if (std::strcmp(word, kAnalysisNames[code]) == 0) {
            return code;
        }
    }
    return kNoAnalysis;
}

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
