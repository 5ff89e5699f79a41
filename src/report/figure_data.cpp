// SPDX-License-Identifier: MIT
#include "report/figure_data.h"

#include "report/packed_column.h"
#include "report/text.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>

namespace report
{

namespace
{

using Json = nlohmann::ordered_json;

constexpr double kPart = 1000.0; // of an error or a step, that rounding may move a value by

Json number(double value)
{
    if (std::isfinite(value)) {
        return value;
    }
    return std::isnan(value) ? "nan" : value > 0.0 ? "inf" : "-inf";
}

Json unit(const Unit &unit)
{
    return {{"text", clean_text(unit.text)}, {"prefix", unit.takes_prefix}};
}

Json column(const PackedColumn &column)
{
    return {{"t", column.type}, {"d", column.data}};
}

// 0, for exact columns, where there is no step.
double smallest_step(const std::vector<double> &x)
{
    double step = std::numeric_limits<double>::infinity();
    for (std::size_t i = 1; i < x.size(); ++i) {
        const double width = std::fabs(x[i] - x[i - 1]);
        step = width > 0.0 ? std::min(step, width) : step;
    }
    return std::isfinite(step) ? step : 0.0;
}

double largest_finite(const std::vector<double> &values)
{
    double largest = 0.0;
    for (const double value : values) {
        largest = std::isfinite(value) ? std::max(largest, std::fabs(value)) : largest;
    }
    return largest;
}

Json x_column(const std::vector<double> &x)
{
    return column(packed(x, smallest_step(x) / kPart));
}

// What is off by the largest error, in units of y.
double difference_of(const ErrorStrip &errors)
{
    const double largest = largest_finite(errors.error);
    const bool is_area = errors.fails.empty() && !errors.from.empty();
    const double width = is_area ? errors.to.front() - errors.from.front() : 1.0;
    return width > 0.0 ? largest / width : 0.0;
}

// Bit by bit, so that a NaN equals itself.
bool same(const std::vector<double> &a, const std::vector<double> &b)
{
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](double left, double right) {
               return left == right || (std::isnan(left) && std::isnan(right));
           });
}

Json strip(const ErrorStrip &errors)
{
    const double tolerance = largest_finite(errors.error) / kPart;
    const bool points = same(errors.from, errors.to);
    return {{"label", errors.label},
            {"unit", unit(errors.unit)},
            {"from", x_column(errors.from)},
            {"to", points ? Json() : x_column(errors.to)},
            {"error", column(packed(errors.error, tolerance))},
            {"fails", errors.fails.empty() ? Json() : column(packed(errors.fails))}};
}

Json panel(const Panel &panel)
{
    const double tolerance = difference_of(panel.errors) / kPart;
    const bool one_x = same(panel.golden.x, panel.regression.x);
    Json unjudged = Json::array();
    for (const Unjudged &stretch : panel.unjudged) {
        unjudged.push_back({{"from", stretch.from}, {"to", stretch.to}, {"reason", stretch.reason}});
    }
    return {{"name", clean_text(panel.name)},
            {"unit", unit(panel.unit)},
            {"key", clean_text(panel.key)},
            {"worst", std::isfinite(panel.worst_x) ? Json(panel.worst_x) : Json()},
            {"points", {panel.golden.points, panel.regression.points}},
            {"golden", {{"x", x_column(panel.golden.x)}, {"y", column(packed(panel.golden.y, tolerance))}}},
            {"regression",
             {{"x", one_x ? Json() : x_column(panel.regression.x)},
              {"y", column(packed(panel.regression.y, tolerance))}}},
            {"errors", strip(panel.errors)},
            {"unjudged", unjudged}};
}

Json bar(const Bar &bar)
{
    return {{"position", bar.position},     {"x", number(bar.x)},
            {"golden", number(bar.golden)}, {"regression", number(bar.regression)},
            {"error", number(bar.error)},   {"fails", bar.fails}};
}

Json root(const PlaneRoot &root)
{
    const auto point = [](bool there, double real, double imaginary) {
        return there ? Json::array({number(real), number(imaginary)}) : Json();
    };
    return {{"kind", root.kind},
            {"position", root.position},
            {"golden", point(root.in_golden, root.golden_real, root.golden_imaginary)},
            {"regression", point(root.in_regression, root.regression_real, root.regression_imaginary)},
            {"error", number(root.error)},
            {"fails", root.fails},
            {"halfPlanes", root.half_planes_differ}};
}

template <typename Item, typename Make> Json list(const std::vector<Item> &items, Make make)
{
    Json json = Json::array();
    for (const Item &item : items) {
        json.push_back(make(item));
    }
    return json;
}

Json figure_json(const Figure &figure)
{
    static constexpr const char *kKinds[] = {"waves", "bars", "plane"};
    return {{"id", figure.id},
            {"kind", kKinds[static_cast<std::size_t>(figure.kind)]},
            {"title", clean_text(figure.title)},
            {"group", clean_text(figure.group)},
            {"findings", figure.findings},
            {"cut", figure.cut},
            {"leftOut", figure.left_out},
            {"x",
             {{"name", figure.x_name},
              {"unit", unit(figure.x_unit)},
              {"low", figure.x_low},
              {"high", figure.x_high},
              {"log", figure.log_x}}},
            {"logY", figure.log_y},
            {"panels", list(figure.panels, panel)},
            {"bars", list(figure.bars, bar)},
            {"roots", list(figure.roots, root)}};
}

} // namespace

void write_figure_data(std::ostream &out, const std::vector<Figure> &figures)
{
    out << "{\"figures\":[";
    const char *before = "\n";
    for (const Figure &figure : figures) { // one at a time: the whole text would be in memory twice
        out << before << script_json(figure_json(figure).dump());
        before = ",\n";
    }
    out << "\n]}";
}

} // namespace report
