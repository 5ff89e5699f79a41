// SPDX-License-Identifier: MIT
#include "raw2punch/wave_text.h"

#include <algorithm>
#include <cstring>

namespace
{

constexpr std::int64_t kPointsAtATime = 2000;           // full groups
constexpr std::size_t kMostKept = std::size_t{1} << 19; // x values
constexpr std::int64_t kPointsInLine = 4;
constexpr std::size_t kPointLength = 2 * kNumberLength + 5; // with what stands between

} // namespace

char *PointTexts::put_x(std::size_t number, double x, char *to)
{
    if (number >= kMostKept) {
        return put_number(x, to);
    }
    if (number == xs_.size()) {
        Number kept;
        kept.length = static_cast<unsigned char>(put_number(x, kept.text) - kept.text);
        xs_.push_back(kept);
    }
    std::memcpy(to, xs_[number].text, kNumberLength);
    return to + xs_[number].length;
}

void PointTexts::write(std::int64_t offset, std::int64_t count)
{
    constexpr PunchFormat kFormat = PunchFormat::BINARY_DBL;
    bytes_.resize(static_cast<std::size_t>(point_offset(kFormat, kPointsAtATime)));
    text_.resize(static_cast<std::size_t>(kPointsAtATime) * kPointLength);
    for (std::int64_t first = 0; first < count; first += kPointsAtATime) {
        const std::int64_t points = std::min(count - first, kPointsAtATime);
        points_.read_at(offset + point_offset(kFormat, first), bytes_.data(),
                        static_cast<std::size_t>(point_offset(kFormat, points)));
        char *to = text_.data();
        for (std::int64_t i = 0; i < points; ++i) {
            const char *point = bytes_.data() + point_offset(kFormat, i);
            *to++ = i % kPointsInLine == 0 ? '+' : ' ';
            *to++ = ' ';
            to = put_x(static_cast<std::size_t>(first + i), value_at(point), to);
            *to++ = ' ';
            to = put_number(value_at(point + sizeof(double)), to);
            if ((i + 1) % kPointsInLine == 0 || i + 1 == points) {
                *to++ = '\n';
            }
        }
        writer_.write({text_.data(), static_cast<std::size_t>(to - text_.data())});
    }
}
