// SPDX-License-Identifier: MIT
#include "report/page_numbers.h"

#include "compare/result_lines.h"
#include "report/axis.h"
#include "report/page_cells.h"
#include "report/page_words.h"
#include "report/text.h"
#include "report/units.h"

#include <algorithm>
#include <cmath>

namespace report
{

namespace
{

constexpr std::size_t kWorstErrors = 10;

void begin_row(std::ostream &out, const std::string &head)
{
    out << "<tr><th scope=\"row\">" << name_text(head) << "</th>";
}

void end_row(std::ostream &out)
{
    out << "</tr>\n";
}

void range_cells(std::ostream &out, const std::vector<double> &values, const Unit &unit)
{
    Range range;
    for (const double value : values) {
        range.add(value);
    }
    right_cell(out, range.is_empty() ? "" : with_unit(range.low, unit));
    right_cell(out, range.is_empty() ? "" : with_unit(range.high, unit));
}

void write_extents(std::ostream &out, const Figure &figure)
{
    begin_table(out, "", "Extent of the curves",
                {{"curve"},
                 {"points", true},
                 {"first x", true},
                 {"last x", true},
                 {"lowest value", true},
                 {"highest value", true}});
    for (const Panel &panel : figure.panels) {
        for (const Curve *curve : {&panel.golden, &panel.regression}) {
            begin_row(out, panel.name + (curve == &panel.golden ? ", golden" : ", regression"));
            right_cell(out, std::to_string(curve->points));
            range_cells(out, curve->x, figure.x_unit);
            range_cells(out, curve->y, panel.unit);
            end_row(out);
        }
    }
    end_table(out);
}

// Places of the worst errors above 0, what is no number first.
std::vector<std::size_t> worst_errors(const std::vector<double> &errors)
{
    std::vector<std::size_t> order;
    for (std::size_t i = 0; i < errors.size(); ++i) {
        if (errors[i] != 0.0) {
            order.push_back(i);
        }
    }
    const auto rank = [&errors](std::size_t i) {
        return std::isnan(errors[i]) ? HUGE_VAL : errors[i];
    };
    const auto most = order.begin() + static_cast<std::ptrdiff_t>(std::min(order.size(), kWorstErrors));
    std::partial_sort(order.begin(), most, order.end(), [&rank](std::size_t a, std::size_t b) {
        return rank(a) != rank(b) ? rank(a) > rank(b) : a < b;
    });
    order.erase(most, order.end());
    return order;
}

void write_errors(std::ostream &out, const Figure &figure)
{
    for (const Panel &panel : figure.panels) {
        const ErrorStrip &strip = panel.errors;
        const bool are_points = strip.from == strip.to;
        std::vector<Column> columns = {{"from"}, {"to", true}, {"error", true}};
        if (are_points) {
            columns = {{"at"}, {"error", true}};
        }
        begin_table(out, "", "Largest errors of " + panel.name + ": " + strip.label, columns);
        for (const std::size_t i : worst_errors(strip.error)) {
            begin_row(out, with_unit(strip.from[i], figure.x_unit, 6));
            if (!are_points) {
                right_cell(out, with_unit(strip.to[i], figure.x_unit, 6));
            }
            right_cell(out, with_unit(strip.error[i], strip.unit));
            end_row(out);
        }
        end_table(out);
    }
}

void write_bars(std::ostream &out, const Figure &figure)
{
    const Unit unit = figure.panels.empty() ? Unit{} : figure.panels.front().unit;
    begin_table(out, "", "Coefficients",
                {{"#"},
                 {"frequency", true},
                 {"golden", true},
                 {"regression", true},
                 {"error", true},
                 {"verdict", true}});
    for (const Bar &bar : figure.bars) {
        begin_row(out, std::to_string(bar.position));
        right_cell(out, with_unit(bar.x, figure.x_unit));
        for (const double value : {bar.golden, bar.regression, bar.error}) {
            right_cell(out, with_unit(value, unit, 6));
        }
        right_cell(out, bar.fails ? "fails" : "passes");
        end_row(out);
    }
    end_table(out);
}

std::string root_text(bool is_there, double real, double imaginary)
{
    if (!is_there) {
        return "missing";
    }
    const std::string half_plane = real < 0.0 ? ", left" : ", right";
    return number_text(real) + (imaginary < 0.0 ? " - " : " + ") + number_text(std::fabs(imaginary)) + "j" +
           half_plane;
}

void write_roots(std::ostream &out, const Figure &figure)
{
    begin_table(out, "", "Poles and zeros, with their half-planes",
                {{"root"}, {"golden", true}, {"regression", true}, {"error", true}, {"verdict", true}});
    for (const PlaneRoot &root : figure.roots) {
        begin_row(out, root_name(root.kind, root.position));
        right_cell(out, root_text(root.in_golden, root.golden_real, root.golden_imaginary));
        right_cell(out, root_text(root.in_regression, root.regression_real, root.regression_imaginary));
        right_cell(out, std::isnan(root.error) ? "" : four_digits(root.error));
        right_cell(out, root.half_planes_differ ? "other half-plane" : root.fails ? "fails" : "passes");
        end_row(out);
    }
    end_table(out);
}

} // namespace

void write_figure_numbers(std::ostream &out, const Figure &figure)
{
    out << "<details class=\"numbers\"><summary>Numbers</summary>\n";
    begin_scroll(out, "numbers of " + figure.title);
    switch (figure.kind) {
    case FigureKind::WAVES:
        write_extents(out, figure);
        write_errors(out, figure);
        break;
    case FigureKind::BARS:
        write_bars(out, figure);
        break;
    case FigureKind::PLANE:
        write_roots(out, figure);
        break;
    }
    if (figure.left_out != 0) {
        out << "<p>" << figure.left_out << " more are not drawn.</p>\n";
    }
    end_scroll(out);
    out << "</details>\n";
}

} // namespace report
