// SPDX-License-Identifier: MIT
#include "report/base64.h"

#include <cstddef>
#include <cstdint>

namespace report
{

std::string base64(std::string_view bytes)
{
    constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    const auto byte = [bytes](std::size_t i) -> std::uint32_t {
        return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0U;
    };
    std::string text((bytes.size() + 2) / 3 * 4, '=');
    char *out = text.data();
    for (std::size_t i = 0; i < bytes.size(); i += 3, out += 4) {
        const std::uint32_t group = byte(i) << 16U | byte(i + 1) << 8U | byte(i + 2);
        out[0] = kDigits[group >> 18U & 63U];
        out[1] = kDigits[group >> 12U & 63U];
        if (i + 1 < bytes.size()) {
            out[2] = kDigits[group >> 6U & 63U];
        }
        if (i + 2 < bytes.size()) {
            out[3] = kDigits[group & 63U];
        }
    }
    return text;
}

} // namespace report
