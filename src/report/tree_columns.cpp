// SPDX-License-Identifier: MIT
#include "report/tree_columns.h"

#include "report/text.h"

#include <array>
#include <charconv>
#include <cmath>

namespace report
{

JsonColumn &JsonColumn::text(std::string_view bytes)
{
    return json(script_json(json_text(bytes)));
}

JsonColumn &JsonColumn::count(std::int64_t value)
{
    return json(std::to_string(value));
}

JsonColumn &JsonColumn::json(std::string_view value)
{
    text_ += text_.empty() ? '[' : ',';
    text_ += value;
    return *this;
}

JsonColumn &JsonColumn::real(std::optional<double> value)
{
    if (!value) {
        return json("null");
    }
    if (!std::isfinite(*value)) {
        return json(json_number(*value));
    }
    constexpr int kDigits = 4;
    std::array<char, 32> room;
    const auto end =
        std::to_chars(room.data(), room.data() + room.size(), *value, std::chars_format::general, kDigits);
    return json({room.data(), static_cast<std::size_t>(end.ptr - room.data())});
}

std::int64_t JsonWords::number_of(std::string_view bytes)
{
    const auto [found, is_new] = numbers_.emplace(bytes, static_cast<std::int64_t>(numbers_.size()));
    if (is_new) {
        words_.text(bytes);
    }
    return found->second;
}

} // namespace report
