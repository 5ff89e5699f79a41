// SPDX-License-Identifier: MIT
#include "report/plane_places.h"
#include "report/svg.h"
#include "report/svg_parts.h"

#include <algorithm>
#include <cmath>

namespace report
{

namespace
{

constexpr double kWidth = 168.0;
constexpr double kHeight = 60.0;
constexpr double kEdge = 3.0;

constexpr const char *kGolden = R"(fill="none" stroke="#6aa9e4" stroke-width="3.5" stroke-linejoin="round")";
constexpr const char *kRegression = R"(fill="none" stroke="#b3261e" stroke-linejoin="round")";

// The first panel that has a finding.
const Panel &failing_panel(const Figure &figure)
{
    const auto found = std::find_if(figure.panels.begin(), figure.panels.end(),
                                    [](const Panel &panel) { return !panel.key.empty(); });
    return found != figure.panels.end() ? *found : figure.panels.front();
}

void draw_waves(Drawing &drawing, const Figure &figure)
{
    const Panel &panel = failing_panel(figure);
    const Range values = value_range(panel);
    const Axis x = {
        figure.x_low, figure.x_high, kEdge, kWidth - kEdge, figure.log_x ? Scale::LOG : Scale::LINEAR, 1.0};
    const Axis y = {values.low, values.high, kHeight - kEdge, kEdge, Scale::LINEAR, 1.0};
    std::string gaps;
    drawing.path("golden", curve_path(panel.golden, x, y, kEdge, gaps), kGolden);
    drawing.path("regression", curve_path(panel.regression, x, y, kEdge, gaps), kRegression);
    drawing.path("gaps", gaps, look::kGaps);
    if (!std::isnan(panel.worst_x)) {
        drawing.path("worst", "M" + coordinate(x.place(panel.worst_x)) + " 1v58", look::kWorst);
    }
}

// Dots at the tips of the bars, which are legible where bars would be too narrow.
void draw_bars(Drawing &drawing, const Figure &figure)
{
    Range values;
    for (const Bar &bar : figure.bars) {
        values.add(bar.golden);
        values.add(bar.regression);
    }
    const Range wide = widened(values);
    const Axis y = {figure.log_y ? values.low : wide.low,      wide.high, kHeight - kEdge, kEdge,
                    figure.log_y ? Scale::LOG : Scale::LINEAR, 1.0};
    const double step = (kWidth - 2.0 * kEdge) / static_cast<double>(figure.bars.size());
    std::string golden;
    std::string regression;
    for (std::size_t i = 0; i < figure.bars.size(); ++i) {
        const std::string x = "M" + coordinate(kEdge + (static_cast<double>(i) + 0.5) * step) + " " +
                              coordinate(kHeight - kEdge) + "V";
        const Bar &bar = figure.bars[i];
        golden += std::isfinite(bar.golden) ? x + coordinate(y.place(bar.golden)) : "";
        regression += std::isfinite(bar.regression) ? x + coordinate(y.place(bar.regression)) : "";
    }
    drawing.path("golden", golden, kGolden);
    drawing.path("regression", regression, kRegression);
}

void draw_plane(Drawing &drawing, const Figure &figure)
{
    constexpr double kSide = kHeight - 2.0 * kEdge;
    const PlaneAxes axes = plane_axes(figure, (kWidth - kSide) / 2.0, kEdge, kSide);
    std::string golden;
    std::string regression;
    const auto dot = [](const Spot &spot) {
        return "M" + coordinate(spot.x) + " " + coordinate(spot.y) + "h0";
    };
    for (const PlaneRoot &root : figure.roots) {
        golden += root.in_golden ? dot(axes.golden(root)) : "";
        regression += root.in_regression ? dot(axes.regression(root)) : "";
    }
    drawing.path("grid", "M" + coordinate(kWidth / 2.0) + " 3v54M" + coordinate(axes.real.at_low) + " 30h54",
                 look::kFrame);
    drawing.path("golden", golden, R"(fill="none" stroke="#6aa9e4" stroke-width="7" stroke-linecap="round")");
    drawing.path("regression", regression,
                 R"(fill="none" stroke="#b3261e" stroke-width="3" stroke-linecap="round")");
}

} // namespace

std::string thumbnail_svg(const Figure &figure)
{
    Drawing drawing;
    drawing.raw("<svg class=\"thumbnail\" viewBox=\"0 0 168 60\" width=\"168\" height=\"60\" "
                "aria-hidden=\"true\" fill=\"currentColor\">");
    switch (figure.kind) {
    case FigureKind::WAVES:
        draw_waves(drawing, figure);
        break;
    case FigureKind::BARS:
        draw_bars(drawing, figure);
        break;
    case FigureKind::PLANE:
        draw_plane(drawing, figure);
        break;
    }
    drawing.raw("</svg>");
    return drawing.take();
}

} // namespace report
