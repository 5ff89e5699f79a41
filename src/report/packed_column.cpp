// SPDX-License-Identifier: MIT
#include "report/packed_column.h"

#include "report/base64.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace report
{

namespace
{

// False of what a float cannot hold, too.
bool survives(double value, double tolerance)
{
    if (!std::isfinite(value)) {
        return true;
    }
    return std::fabs(value) <= std::numeric_limits<float>::max() &&
           std::fabs(value - static_cast<double>(static_cast<float>(value))) <= tolerance;
}

template <typename Bits, typename Value> std::string little_endian(const std::vector<double> &values)
{
    std::string bytes(values.size() * sizeof(Bits), '\0');
    char *out = bytes.data();
    for (const double value : values) {
        const auto narrow = static_cast<Value>(value);
        Bits bits = 0;
        std::memcpy(&bits, &narrow, sizeof bits);
        for (unsigned shift = 0; shift < 8 * sizeof bits; shift += 8) {
            *out++ = static_cast<char>(bits >> shift & 0xFFU);
        }
    }
    return base64(bytes);
}

} // namespace

PackedColumn packed(const std::vector<double> &values, double tolerance)
{
    const bool exact_enough = std::all_of(values.begin(), values.end(),
                                          [tolerance](double value) { return survives(value, tolerance); });
    return exact_enough ? PackedColumn{"f4", little_endian<std::uint32_t, float>(values)}
                        : PackedColumn{"f8", little_endian<std::uint64_t, double>(values)};
}

PackedColumn packed(const std::vector<std::uint8_t> &values)
{
    return {"u1", base64(std::string(values.begin(), values.end()))};
}

} // namespace report
