// SPDX-License-Identifier: MIT
#include "report/svg_kinds.h"
#include "report/svg_parts.h"
#include "report/units.h"

#include <algorithm>
#include <cmath>

namespace report
{

namespace
{

constexpr double kPlotTop = layout::kTop + layout::kHead;
constexpr double kPlotEnd = kPlotTop + 240.0;
constexpr double kStripTop = kPlotEnd + layout::kGap;
constexpr double kStripEnd = kStripTop + layout::kStrip;
constexpr double kWidest = 56.0;
constexpr double kLabelRoom = 60.0;

// Where bar i of n stands.
struct Slot {
    double center;
    double width; // of the wide bars
};

Slot slot_of(std::size_t i, std::size_t n)
{
    const double step = (layout::kRight - layout::kLeft) / static_cast<double>(n);
    return {layout::kLeft + (static_cast<double>(i) + 0.5) * step, std::min(0.7 * step, kWidest)};
}

Axis y_axis(const Figure &figure)
{
    Range values;
    for (const Bar &bar : figure.bars) {
        values.add(bar.golden);
        values.add(bar.regression);
    }
    if (figure.log_y) {
        return {std::pow(10.0, std::floor(std::log10(values.low))),
                std::pow(10.0, std::ceil(std::log10(values.high))),
                kPlotEnd,
                kPlotTop,
                Scale::LOG,
                1.0};
    }
    values.add(0.0);
    const Range wide = widened(values);
    return {values.low < 0.0 ? wide.low : 0.0,
            values.high > 0.0 || values.low == 0.0 ? wide.high : 0.0,
            kPlotEnd,
            kPlotTop,
            Scale::LINEAR,
            1.0};
}

void draw_bar(Drawing &drawing, const char *cls, double value, const Axis &axis, double center, double width,
              const char *color)
{
    const double x = center - width / 2.0;
    if (!std::isfinite(value)) {
        drawing.path("gaps", "M" + coordinate(center) + " " + coordinate(axis.at_high) + "v7", look::kGaps);
        return;
    }
    const double base = axis.place(axis.scale == Scale::LOG ? axis.low : 0.0);
    const double tip = axis.place(value);
    drawing.rect(cls, x, std::min(base, tip), width, std::max(std::fabs(base - tip), 0.8),
                 std::string("fill=\"") + color + "\"");
}

void draw_values(Drawing &drawing, const Figure &figure, const Axis &axis)
{
    for (std::size_t i = 0; i < figure.bars.size(); ++i) {
        const Bar &bar = figure.bars[i];
        const Slot slot = slot_of(i, figure.bars.size());
        draw_bar(drawing, "golden", bar.golden, axis, slot.center, slot.width, look::kGoldenColor);
        draw_bar(drawing, "regression", bar.regression, axis, slot.center, 0.4 * slot.width,
                 look::kRegressionColor);
    }
}

double largest_error(const Figure &figure)
{
    double largest = 0.0;
    for (const Bar &bar : figure.bars) {
        largest = std::isfinite(bar.error) ? std::max(largest, bar.error) : largest;
    }
    return largest;
}

void draw_errors(Drawing &drawing, const Figure &figure)
{
    const double largest = largest_error(figure);
    drawing.open("g", "strip");
    draw_strip_frame(drawing, figure.panels.front().errors, largest, kStripTop);
    for (std::size_t i = 0; i < figure.bars.size(); ++i) {
        const Bar &bar = figure.bars[i];
        const Slot slot = slot_of(i, figure.bars.size());
        const bool finite = std::isfinite(bar.error);
        if (finite && bar.error <= 0.0) {
            continue;
        }
        const double height = finite ? std::max(1.0, bar.error / largest * layout::kStrip) : layout::kStrip;
        const char *const cls = !finite ? "error-nan" : bar.fails ? "error" : "error-pass";
        drawing.rect(cls, slot.center - slot.width / 2.0, kStripEnd - height, slot.width, height,
                     !finite     ? look::kErrorNan
                     : bar.fails ? look::kError
                                 : look::kErrorPass);
    }
    drawing.close("g");
}

void draw_frequencies(Drawing &drawing, const Figure &figure)
{
    const std::size_t n = figure.bars.size();
    const double step = (layout::kRight - layout::kLeft) / static_cast<double>(n);
    const auto every = static_cast<std::size_t>(std::ceil(kLabelRoom / step));
    const Unit unit = {shortened(figure.x_unit.text, 12), figure.x_unit.takes_prefix};
    drawing.open("g", "ticks-x");
    for (std::size_t i = 0; i < n; i += every) {
        drawing.text("tick", slot_of(i, n).center, kStripEnd + 15.0, "middle",
                     with_unit(figure.bars[i].x, unit, 3));
    }
    drawing.close("g");
    drawing.text("unit-x", layout::kRight, kStripEnd + 30.0, "end", figure.x_name);
}

// What is not drawn.
std::string note_of(const Figure &figure)
{
    std::string note;
    if (figure.left_out > 0) {
        const std::int64_t all = figure.left_out + static_cast<std::int64_t>(figure.bars.size());
        note = "the worst " + std::to_string(figure.bars.size()) + " of " + std::to_string(all);
    }
    for (const Unjudged &stretch : figure.panels.front().unjudged) {
        note += (note.empty() ? "" : "; ") + stretch.reason;
    }
    return note;
}

void draw_bars_legend(Drawing &drawing, const Figure &figure)
{
    std::vector<LegendItem> items = {
        {Sample::GOLDEN_BAR, "golden"}, {Sample::REGRESSION_BAR, "regression"}, {Sample::ERROR, "error"}};
    const auto add_if = [&](bool (*holds)(const Bar &bar), const LegendItem &item) {
        if (std::any_of(figure.bars.begin(), figure.bars.end(), holds)) {
            items.push_back(item);
        }
    };
    add_if([](const Bar &bar) { return !bar.fails && bar.error > 0.0; },
           {Sample::ERROR_PASS, "error within tolerance"});
    add_if([](const Bar &bar) { return !std::isfinite(bar.error); },
           {Sample::ERROR_NAN, "error is no number"});
    add_if([](const Bar &bar) { return !std::isfinite(bar.golden) || !std::isfinite(bar.regression); },
           {Sample::GAP, "NaN or infinite"});
    draw_legend(drawing, figure, items);
}

} // namespace

std::string bars_svg(const Figure &figure)
{
    const Axis axis = y_axis(figure);
    Drawing drawing;
    open_figure(drawing, figure, kStripEnd + layout::kBelow + layout::kFoot);
    draw_bars_legend(drawing, figure);
    drawing.open("g", "panel", "data-panel=\"0\"");
    draw_y_axis(drawing, axis, figure.panels.front(), layout::kTop, 5);
    draw_values(drawing, figure, axis);
    draw_errors(drawing, figure);
    drawing.text("note", layout::kRight, layout::kTop + 15.0, "end", note_of(figure));
    drawing.close("g");
    draw_frequencies(drawing, figure);
    drawing.raw("</svg>");
    return drawing.take();
}

} // namespace report
