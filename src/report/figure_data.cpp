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

template <typename Item, typename Make> Json list(const std::vector<Item> &items, Make make)
{
    Json json = Json::array();
    for (const Item &item : items) {
        json.push_back(make(item));
    }
    return json;
}

Json unit(const Unit &unit)
{
    return {{"text", clean_text(unit.text)}, {"prefix", unit.takes_prefix}};
}

// Columns are nearly all of a page: straight to the file they go, with nothing in them to be escaped.
void write_column(std::ostream &out, const PackedColumn &column)
{
    out << R"({"t":")" << column.type << R"(","d":")" << column.data << R"("})";
}

void write_json(std::ostream &out, const Json &json)
{
    out << script_json(json.dump());
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

void write_x(std::ostream &out, const std::vector<double> &x)
{
    write_column(out, packed(x, smallest_step(x) / kPart));
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

void write_strip(std::ostream &out, const ErrorStrip &errors)
{
    out << R"({"label":)";
    write_json(out, errors.label);
    out << R"(,"unit":)";
    write_json(out, unit(errors.unit));
    out << R"(,"from":)";
    write_x(out, errors.from);
    out << R"(,"to":)";
    if (same(errors.from, errors.to)) { // points
        out << "null";
    } else {
        write_x(out, errors.to);
    }
    out << R"(,"error":)";
    write_column(out, packed(errors.error, largest_finite(errors.error) / kPart));
    out << R"(,"fails":)";
    if (errors.fails.empty()) {
        out << "null";
    } else {
        write_column(out, packed(errors.fails));
    }
    out << '}';
}

Json unjudged(const Unjudged &stretch)
{
    return {{"from", stretch.from}, {"to", stretch.to}, {"reason", stretch.reason}};
}

// Without the brace at its end.
std::string open_object(const Json &object)
{
    std::string text = script_json(object.dump());
    text.pop_back();
    return text;
}

void write_panel(std::ostream &out, const Panel &panel)
{
    const double tolerance = difference_of(panel.errors) / kPart;
    out << open_object({{"name", clean_text(panel.name)},
                        {"unit", unit(panel.unit)},
                        {"key", clean_text(panel.key)},
                        {"worst", std::isfinite(panel.worst_x) ? Json(panel.worst_x) : Json()},
                        {"points", {panel.golden.points, panel.regression.points}}});
    out << R"(,"golden":{"x":)";
    write_x(out, panel.golden.x);
    out << R"(,"y":)";
    write_column(out, packed(panel.golden.y, tolerance));
    out << R"(},"regression":{"x":)";
    if (same(panel.golden.x, panel.regression.x)) {
        out << "null";
    } else {
        write_x(out, panel.regression.x);
    }
    out << R"(,"y":)";
    write_column(out, packed(panel.regression.y, tolerance));
    out << R"(},"errors":)";
    write_strip(out, panel.errors);
    out << R"(,"unjudged":)";
    write_json(out, list(panel.unjudged, unjudged));
    out << '}';
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

void write_figure(std::ostream &out, const Figure &figure)
{
    static constexpr const char *kKinds[] = {"waves", "bars", "plane"};
    out << open_object({{"id", figure.id},
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
                        {"logY", figure.log_y}});
    out << R"(,"panels":[)";
    const char *before = "";
    for (const Panel &panel : figure.panels) {
        out << before;
        write_panel(out, panel);
        before = ",";
    }
    out << R"(],"bars":)";
    write_json(out, list(figure.bars, bar));
    out << R"(,"roots":)";
    write_json(out, list(figure.roots, root));
    out << '}';
}

} // namespace

void write_figure_data(std::ostream &out, const std::vector<Figure> &figures)
{
    out << R"({"figures":[)";
    const char *before = "\n";
    for (const Figure &figure : figures) {
        out << before;
        write_figure(out, figure);
        before = ",\n";
    }
    out << "\n]}";
}

} // namespace report
