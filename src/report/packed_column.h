// SPDX-License-Identifier: MIT
// Columns of numbers as the page carries them.
#ifndef TRESK_REPORT_PACKED_COLUMN_H
#define TRESK_REPORT_PACKED_COLUMN_H

#include <cstdint>
#include <string>
#include <vector>

namespace report
{

struct PackedColumn {
    const char *type; // "f4", "f8" or "u1"
    std::string data; // little-endian values in base64
};

// As 4-byte floats where no value is moved by more than `tolerance`, else as doubles. NaN and infinities are
// the same in both.
PackedColumn packed(const std::vector<double> &values, double tolerance);

PackedColumn packed(const std::vector<std::uint8_t> &values);

} // namespace report

#endif
