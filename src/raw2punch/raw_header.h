// SPDX-License-Identifier: MIT
// The header of one plot of a SPICE rawfile: what a simulator writes in front of its values.
#ifndef RAW2PUNCH_RAW_HEADER_H
#define RAW2PUNCH_RAW_HEADER_H

#include "raw2punch/input_file.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

struct RawVariable {
    std::string name;
    std::string type;        // in lower case: "voltage"; "notype" where there is none
    std::int64_t rows = 0;   // of a table with several dimensions, 0 of what is none
    std::int64_t points = 0; // fewer than the plot has for one with dimensions of its own
};

struct RawPlot {
    std::string title;
    std::string date;
    std::string name;                  // "Transient Analysis"
    std::optional<double> temperature; // degrees Celsius
    std::int64_t points = 0;
    std::vector<RawVariable> variables; // at least one

    bool complex = false;     // two numbers for each value
    bool text = false;        // values as text, otherwise binary
    bool utf16 = false;       // text in two-byte characters
    bool fast_access = false; // binary values variable after variable, instead of point after point
    bool unpadded = false;    // points lack the variables that have fewer points
    bool doubles = false;     // values of 64 bits where 32 would be usual
    bool log_sweep = false;   // the sweep is logarithmic

    std::int64_t data_offset = 0; // in the file, of the first byte behind the header
};

// Reads the header at offset. Throws Fault for anything that is none. What it promises is not held against
// the values here; but the variables are those that are listed.
RawPlot read_raw_header(const InputFile &file, std::int64_t offset);

// Offset of the first character that is no white space, at or behind offset; the file's size if there is
// none.
std::int64_t skip_white_space(const InputFile &file, std::int64_t offset, bool utf16);

// Whether a header begins at offset.
bool is_header_at(const InputFile &file, std::int64_t offset);

// Offset of the next line at or behind offset that begins a header; the file's size if there is none.
std::int64_t find_header(const InputFile &file, std::int64_t offset, bool utf16);

#endif
