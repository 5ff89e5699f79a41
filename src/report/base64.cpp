// SPDX-License-Identifier: MIT
#include "report/base64.h"

#include <cstddef>
#include <cstdint>

namespace report
{

std::string base64(std::string_view bytes)
{
    constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        std::uint32_t group = 0;
        for (std::size_t j = 0; j < 3; ++j) {
            group = group << 8U | (i + j < bytes.size() ? static_cast<unsigned char>(bytes[i + j]) : 0U);
        }
        for (std::size_t j = 0; j < 4; ++j) {
            const bool is_padding = i + j > bytes.size();
            text += is_padding ? '=' : kDigits[group >> (18U - 6U * static_cast<unsigned>(j)) & 63U];
        }
    }
    return text;
}

} // namespace report
