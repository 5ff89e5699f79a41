// SPDX-License-Identifier: MIT
#include "report/error_columns.h"

#include "report/reduce.h"
#include "report/svg_parts.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace report
{

namespace
{

constexpr auto kColumns = static_cast<std::size_t>(layout::kRight - layout::kLeft);
constexpr double kPointColumns = 3.0;         // that the bar of a point covers
using Columns = std::array<double, kColumns>; // heights

struct Span {
    std::size_t begin = 0;
    std::size_t end = 0; // behind the last one
};

Span span_of(double from, double to, const Axis &x)
{
    const bool is_point = from == to;
    double first = std::floor(x.place(from) + kColumnEdge);
    double last = std::max(first, std::ceil(x.place(to) - kColumnEdge) - 1.0);
    if (is_point && first >= layout::kLeft && first <= layout::kRight) {
        first = std::clamp(first - 1.0, layout::kLeft, layout::kRight - kPointColumns);
        last = first + kPointColumns - 1.0;
    }
    if (!std::isfinite(first) || !std::isfinite(last) || last < layout::kLeft || first >= layout::kRight) {
        return {};
    }
    return {static_cast<std::size_t>(std::max(first - layout::kLeft, 0.0)),
            static_cast<std::size_t>(std::min(last - layout::kLeft + 1.0, static_cast<double>(kColumns)))};
}

// One shape for each run of columns that have an error.
std::string path_of(const Columns &heights, double bottom)
{
    std::string d;
    double height = 0.0; // of the column before
    for (std::size_t i = 0; i <= kColumns; ++i) {
        const double next = i < kColumns ? heights[i] : 0.0;
        if (next == height) {
            continue;
        }
        const std::string x = coordinate(layout::kLeft + static_cast<double>(i));
        d += height == 0.0 ? "M" + x + " " + coordinate(bottom) : "H" + x;
        d += "V" + coordinate(bottom - next);
        d += next == 0.0 ? "z" : "";
        height = next;
    }
    return d;
}

} // namespace

ErrorPaths error_paths(const ErrorStrip &errors, const Axis &x, double top)
{
    ErrorPaths paths;
    for (const double error : errors.error) {
        paths.largest = std::isfinite(error) ? std::max(paths.largest, error) : paths.largest;
    }
    Columns fails = {};
    Columns passes = {};
    Columns no_number = {};
    for (std::size_t i = 0; i < errors.error.size(); ++i) {
        const double error = errors.error[i];
        const bool passing = !errors.fails.empty() && errors.fails[i] == 0;
        Columns &heights = !std::isfinite(error) ? no_number : passing ? passes : fails;
        double height = layout::kStrip;
        if (std::isfinite(error)) {
            height = error > 0.0 ? std::max(1.0, error / paths.largest * layout::kStrip) : 0.0;
        }
        const Span span = span_of(errors.from[i], errors.to[i], x);
        for (std::size_t column = span.begin; column < span.end; ++column) {
            heights[column] = std::max(heights[column], height);
        }
    }
    const double bottom = top + layout::kStrip;
    paths.fails = path_of(fails, bottom);
    paths.passes = path_of(passes, bottom);
    paths.no_number = path_of(no_number, bottom);
    return paths;
}

} // namespace report
