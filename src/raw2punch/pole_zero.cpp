// SPDX-License-Identifier: MIT
#include "raw2punch/pole_zero.h"

#include "raw2punch/point_format.h"
#include "raw2punch/signals.h"
#include "raw2punch/text_tools.h"

#include <cmath>

namespace
{

std::string root_line(double real, double imaginary)
{
    const double quality = std::hypot(real, imaginary) / (2.0 * std::fabs(real));
    return "  " + number_text(real) + "  " + number_text(imaginary) + "  " +
           number_text(real == 0.0 && imaginary == 0.0 ? 0.5 : quality) + "\n";
}

std::string section(const char *kind, const std::string &roots)
{
    return roots.empty() ? std::string("* NO SIGNIFICANT ") + kind + "\n"
                         : std::string("* SIGNIFICANT ") + kind + "\n" + roots;
}

} // namespace

std::string pole_zero_block(const RawPlot &plot, const Block &block, Report &report)
{
    std::string poles;
    std::string zeros;
    for (const ColumnView &column : block.columns) {
        if (repeats_first(plot, column.variable)) {
            continue;
        }
        const std::string &name = plot.variables[column.variable].name;
        const std::string lower = lower_case(name);
        const bool is_pole = lower.find("pole(") != std::string_view::npos;
        if (!is_pole && lower.find("zero(") == std::string_view::npos) {
            report.left_out("plot '" + plot.name + "': " + name + " is neither a pole nor a zero");
            continue;
        }
        double real = 0.0;
        double imaginary = 0.0;
        load_column(column, false, 1, &real);
        if (plot.complex) {
            load_column(column, true, 1, &imaginary);
        }
        (is_pole ? poles : zeros) += root_line(real, imaginary);
    }
    return "INPUT\nOUTPUT\nV 0\n" + section("POLES", poles) + section("ZEROS", zeros) +
           "* NO CANCELLED POLES\n* NO CANCELLED ZEROS\n* END OF POLE-ZERO RESULTS\n";
}
