// SPDX-License-Identifier: MIT
#include "report/error_columns.h"
#include "report/svg_kinds.h"
#include "report/svg_parts.h"
#include "report/units.h"

#include <algorithm>
#include <cmath>

namespace report
{

namespace
{

double plot_height(std::size_t panels)
{
    return panels <= 1 ? 240.0 : panels == 2 ? 180.0 : 150.0;
}

// Where the parts of a panel stand.
struct Places {
    double top;
    double plot_top;
    double plot_end;
    double strip_top;
    double strip_end;
};

Places places_of(std::size_t panel, std::size_t panels)
{
    using namespace layout;
    const double plot = plot_height(panels);
    const double top = kTop + static_cast<double>(panel) * (kHead + plot + kGap + kStrip + kBelow);
    const double plot_end = top + kHead + plot;
    return {top, top + kHead, plot_end, plot_end + kGap, plot_end + kGap + kStrip};
}

void draw_clip(Drawing &drawing, const Figure &figure, std::size_t panel, const Places &at)
{
    drawing.raw("<clipPath id=\"" + figure.id + "-clip" + std::to_string(panel) + "\">");
    drawing.rect("clip", layout::kLeft, at.plot_top, layout::kRight - layout::kLeft,
                 at.plot_end - at.plot_top, "");
    drawing.raw("</clipPath>");
}

void draw_x_grid(Drawing &drawing, const Axis &x, const Places &at)
{
    std::string grid;
    for (const double tick : ticks_of(x, 8)) {
        grid += "M" + coordinate(x.place(tick)) + " " + coordinate(at.plot_top) + "V" +
                coordinate(at.plot_end) + "M" + coordinate(x.place(tick)) + " " + coordinate(at.strip_top) +
                "V" + coordinate(at.strip_end);
    }
    drawing.path("grid-x", grid, look::kGrid);
}

void draw_unjudged(Drawing &drawing, const Figure &figure, const Panel &panel, const Axis &x,
                   const Places &at)
{
    constexpr double kNarrowest = 3.0;
    drawing.open("g", "unjudged", "fill=\"url(#" + figure.id + "-hatch)\"");
    for (const Unjudged &stretch : panel.unjudged) {
        const double end = std::clamp(x.place(stretch.to), layout::kLeft, layout::kRight);
        const double begin =
            std::min(std::clamp(x.place(stretch.from), layout::kLeft, layout::kRight), end - kNarrowest);
        drawing.open("g", "stretch");
        drawing.title("not judged: " + stretch.reason);
        drawing.rect("hatch", begin, at.plot_top, end - begin, at.plot_end - at.plot_top, "");
        drawing.rect("hatch", begin, at.strip_top, end - begin, at.strip_end - at.strip_top, "");
        drawing.close("g");
    }
    drawing.close("g");
}

// The word stands above the line where the panel's name leaves room for it.
void draw_worst(Drawing &drawing, const Figure &figure, const Panel &panel, const Axis &x, const Places &at)
{
    if (std::isnan(panel.worst_x)) {
        return;
    }
    const double place = x.place(panel.worst_x);
    drawing.path("worst",
                 "M" + coordinate(place) + " " + coordinate(at.plot_top) + "V" + coordinate(at.plot_end) +
                     "M" + coordinate(place) + " " + coordinate(at.strip_top) + "V" +
                     coordinate(at.strip_end),
                 look::kWorst);
    const std::string word = "worst at " + with_unit(panel.worst_x, figure.x_unit);
    const double half = text_width(word) / 2.0;
    const double first = layout::kLeft + text_width(shortened(panel.name, 60), 13.0) + 16.0 + half;
    drawing.text("worst-label", std::max(first, std::min(place, layout::kRight - half)), at.top + 15.0,
                 "middle", word);
}

void draw_strip(Drawing &drawing, const Panel &panel, const ErrorPaths &errors, const Places &at)
{
    drawing.open("g", "strip");
    draw_strip_frame(drawing, panel.errors, errors.largest, at.strip_top);
    drawing.path("error-nan", errors.no_number, look::kErrorNan);
    drawing.path("error-pass", errors.passes, look::kErrorPass);
    drawing.path("error", errors.fails, look::kError);
    drawing.close("g");
}

struct Seen {
    bool gaps = false;
    bool passes = false;
    bool no_number = false;
    bool unjudged = false;
    bool worst = false;
};

void draw_panel(Drawing &drawing, const Figure &figure, std::size_t index, const Axis &x, Seen &seen)
{
    const Panel &panel = figure.panels[index];
    const Places at = places_of(index, figure.panels.size());
    const Range values = value_range(panel);
    const Axis y = {values.low, values.high, at.plot_end, at.plot_top, Scale::LINEAR, 1.0};
    const std::string clip = " clip-path=\"url(#" + figure.id + "-clip" + std::to_string(index) + ")\"";
    drawing.open("g", "panel", "data-panel=\"" + std::to_string(index) + "\"");
    draw_clip(drawing, figure, index, at);
    draw_x_grid(drawing, x, at);
    draw_y_axis(drawing, y, panel, at.top, figure.panels.size() == 1 ? 5 : 4);
    draw_unjudged(drawing, figure, panel, x, at);
    std::string gaps;
    drawing.path("golden", curve_path(panel.golden, x, y, at.plot_top, gaps), look::kGolden + clip);
    drawing.path("regression", curve_path(panel.regression, x, y, at.plot_top, gaps),
                 look::kRegression + clip);
    drawing.path("gaps", gaps, look::kGaps);
    draw_worst(drawing, figure, panel, x, at);
    const ErrorPaths errors = error_paths(panel.errors, x, at.strip_top);
    draw_strip(drawing, panel, errors, at);
    drawing.close("g");
    seen.gaps = seen.gaps || !gaps.empty();
    seen.passes = seen.passes || !errors.passes.empty();
    seen.no_number = seen.no_number || !errors.no_number.empty();
    seen.unjudged = seen.unjudged || !panel.unjudged.empty();
    seen.worst = seen.worst || !std::isnan(panel.worst_x);
}

std::vector<LegendItem> legend_of(const Seen &seen)
{
    std::vector<LegendItem> items = {
        {Sample::GOLDEN, "golden"}, {Sample::REGRESSION, "regression"}, {Sample::ERROR, "error"}};
    const auto add = [&items](bool wanted, const LegendItem &item) {
        if (wanted) {
            items.push_back(item);
        }
    };
    add(seen.passes, {Sample::ERROR_PASS, "error within tolerance"});
    add(seen.no_number, {Sample::ERROR_NAN, "error is no number"});
    add(seen.worst, {Sample::WORST, "worst place"});
    add(seen.unjudged, {Sample::UNJUDGED, "not judged"});
    add(seen.gaps, {Sample::GAP, "NaN or infinite"});
    return items;
}

} // namespace

std::string waves_svg(const Figure &figure)
{
    const Axis x = {
        figure.x_low, figure.x_high, layout::kLeft, layout::kRight, figure.log_x ? Scale::LOG : Scale::LINEAR,
        1.0};
    const double end = places_of(figure.panels.size() - 1, figure.panels.size()).strip_end;
    Seen seen;
    Drawing panels;
    for (std::size_t i = 0; i < figure.panels.size(); ++i) {
        draw_panel(panels, figure, i, x, seen);
    }
    Drawing drawing;
    open_figure(drawing, figure, end + layout::kBelow + layout::kFoot);
    draw_legend(drawing, figure, legend_of(seen));
    drawing.raw(panels.take());
    draw_x_axis(drawing, x, figure, end);
    drawing.raw("</svg>");
    return drawing.take();
}

} // namespace report
