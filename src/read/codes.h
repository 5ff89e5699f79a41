// SPDX-License-Identifier: MIT
// The one numbering of analyses and of data formats that readers, comparators, index table and
// dump share.
#ifndef TRESK_READ_CODES_H
#define TRESK_READ_CODES_H

enum AnalysisCode : int {
    INOP = 0,      // .IN OP statement
    INTR = 1,      // .IN TR statement
    INPSS = 2,     // .IN PSS statement
    INDC1 = 3,     // first list of .IN DC
    INDC2 = 4,     // second list of .IN DC
    TR_FORCE = 5,  // .FORCE inside a TR analysis
    PSS_FORCE = 6, // .FORCE inside a PSS analysis
    AC = 7,
    DISTO = 8, // a signal whose YUNITS are those of distortion
    NOISE = 9,
    PZ = 10,
    DC = 11,
    TR = 12,
    FOUR = 13, // a TR analysis over frequency
    OP = 14,
    MR = 15, // measure results
    PSS = 16,
    PAC = 17,
    PXF = 18,
    PNOISE = 19,
    XF = 20,
    STB = 21
};

constexpr int kAnalysisCount = 22;
constexpr int kNoAnalysis = -1;

enum DataFormat : int {
    NO_DATA = 0,
    TEXT = 1,
    BINARY = 2,       // 4-byte floats
    BINARY_DBL = 3,   // 8-byte doubles
    MIXED_BINARY = -4 // a file with both binary formats
};

// Kind of quantity of a single value.
enum QuantityType : int { NODE = 1, INTERNAL = 2, IND = 3, CAP = 4 };

constexpr bool is_analysis(int code)
{
    return code >= 0 && code < kAnalysisCount;
}

// "TEXT", "BINARY", "BINARY_DBL" or "UNKNOWN".
const char *format_name(int format);

// BINARY or BINARY_DBL for the format word behind DATA, NO_DATA for any other text.
int format_of_word(const char *word);

#endif
