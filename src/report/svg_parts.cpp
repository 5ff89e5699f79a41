// SPDX-License-Identifier: MIT
#include "report/svg_parts.h"

#include "report/reduce.h"
#include "report/text.h"
#include "report/units.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace report
{

namespace
{

constexpr double kCharacter = 0.56; // of a text's size, on average of sans-serif fonts
constexpr double kSampleWidth = 26.0;
constexpr double kLegendLine = 14.0;
constexpr std::size_t kLongestName = 60;
constexpr std::size_t kLongestUnit = 8;
constexpr std::size_t kShortUnit = 3;

bool starts_character(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

std::size_t count_characters(const std::string &text)
{
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), starts_character));
}

std::string number(const char *name, double value)
{
    return std::string(" ") + name + "=\"" + coordinate(value) + "\"";
}

// Hundreds of thousands of them make a page.
void append_coordinate(std::string &to, double value)
{
    constexpr double kFarthest = 99999.0;
    const double inside = std::isnan(value) ? 0.0 : std::clamp(value, -kFarthest, kFarthest);
    const long tenths = std::lround(inside * 10.0);
    const long magnitude = std::labs(tenths);
    char text[16];
    char *end = text;
    if (tenths < 0) {
        *end++ = '-';
    }
    end = std::to_chars(end, text + sizeof text, magnitude / 10).ptr;
    if (magnitude % 10 != 0) {
        *end++ = '.';
        *end++ = static_cast<char>('0' + magnitude % 10);
    }
    to.append(text, end);
}

void draw_sample(Drawing &drawing, Sample sample, double x, const std::string &hatch)
{
    const double y = kLegendLine - 4.0;
    const std::string line = "M" + coordinate(x) + " " + coordinate(y) + "h" + coordinate(kSampleWidth);
    switch (sample) {
    case Sample::GOLDEN:
        drawing.path("golden", line, look::kGolden);
        break;
    case Sample::REGRESSION:
        drawing.path("regression", line, look::kRegression);
        break;
    case Sample::GOLDEN_BAR:
        drawing.rect("golden", x + 6.0, 3.0, 14.0, 12.0, std::string("fill=\"") + look::kGoldenColor + "\"");
        break;
    case Sample::REGRESSION_BAR:
        drawing.rect("regression", x + 10.0, 3.0, 6.0, 12.0,
                     std::string("fill=\"") + look::kRegressionColor + "\"");
        break;
    case Sample::ERROR:
        drawing.rect("error", x + 6.0, 3.0, 14.0, 12.0, look::kError);
        break;
    case Sample::ERROR_PASS:
        drawing.rect("error-pass", x + 6.0, 3.0, 14.0, 12.0, look::kErrorPass);
        break;
    case Sample::ERROR_NAN:
        drawing.rect("error-nan", x + 6.0, 3.0, 14.0, 12.0, look::kErrorNan);
        break;
    case Sample::UNJUDGED:
        drawing.rect("unjudged", x, 2.0, kSampleWidth, 14.0, hatch);
        break;
    case Sample::WORST:
        drawing.path("worst", "M" + coordinate(x + 13.0) + " 1v16", look::kWorst);
        break;
    case Sample::GAP:
        drawing.path("gaps", "M" + coordinate(x + 13.0) + " 5v7", look::kGaps);
        break;
    }
}

} // namespace

std::string coordinate(double value)
{
    std::string text;
    append_coordinate(text, value);
    return text;
}

std::string shortened(const std::string &text, std::size_t most)
{
    std::string clean = clean_text(text);
    if (count_characters(clean) <= most) {
        return clean;
    }
    std::size_t end = 0;
    for (std::size_t characters = 0; end < clean.size(); ++end) {
        if (starts_character(clean[end]) && characters++ == most - 1) {
            break;
        }
    }
    return clean.substr(0, end) + "…";
}

double text_width(const std::string &text, double size)
{
    return kCharacter * size * static_cast<double>(count_characters(text));
}

void Drawing::open(const char *name, const char *cls, const std::string &attributes)
{
    svg_ += std::string("<") + name + " class=\"" + cls + "\"" + (attributes.empty() ? "" : " ") +
            attributes + ">";
}

void Drawing::close(const char *name)
{
    svg_ += std::string("</") + name + ">";
}

void Drawing::path(const char *cls, const std::string &d, const std::string &attributes)
{
    svg_ += std::string("<path class=\"") + cls + "\" d=\"" + d + "\" " + attributes + "/>";
}

void Drawing::rect(const char *cls, double x, double y, double width, double height,
                   const std::string &attributes)
{
    svg_ += std::string("<rect class=\"") + cls + "\"" + number("x", x) + number("y", y) +
            number("width", width) + number("height", height) + " " + attributes + "/>";
}

void Drawing::text(const char *cls, double x, double y, const char *anchor, const std::string &content,
                   const std::string &attributes)
{
    svg_ += std::string("<text class=\"") + cls + "\"" + number("x", x) + number("y", y) + " text-anchor=\"" +
            anchor + "\"" + (attributes.empty() ? "" : " ") + attributes + ">" + html_text(content) +
            "</text>";
}

void Drawing::title(const std::string &content)
{
    svg_ += "<title>" + html_text(content) + "</title>";
}

void open_figure(Drawing &drawing, const Figure &figure, double height)
{
    static constexpr const char *kKinds[] = {"waves", "bars", "plane"};
    const std::string cls = std::string("figure ") + kKinds[static_cast<std::size_t>(figure.kind)];
    const std::string title = html_attribute(figure.title);
    drawing.open("svg", cls.c_str(),
                 R"(viewBox="0 0 960 )" + coordinate(height) + R"(" width="960" height=")" +
                     coordinate(height) + R"(" data-figure=")" + figure.id + R"(" role="img" aria-label=")" +
                     title + R"(" font-family="system-ui, sans-serif" font-size="12" fill="currentColor")");
    drawing.title(figure.title);
    drawing.raw(
        R"(<defs><pattern id=")" + figure.id +
        R"_(-hatch" width="7" height="7" patternUnits="userSpaceOnUse" patternTransform="rotate(45)">)_"
        R"(<rect width="7" height="7" fill-opacity=".06"/>)"
        R"(<path d="M0 0V7" stroke="currentColor" stroke-opacity=".35" stroke-width="2"/>)"
        "</pattern></defs>");
}

void draw_legend(Drawing &drawing, const Figure &figure, const std::vector<LegendItem> &items)
{
    drawing.open("g", "legend");
    double x = layout::kLeft;
    for (const LegendItem &item : items) {
        draw_sample(drawing, item.sample, x, "fill=\"url(#" + figure.id + "-hatch)\"");
        drawing.text("word", x + kSampleWidth + 6.0, kLegendLine, "start", item.word);
        x += kSampleWidth + 24.0 + text_width(item.word);
    }
    drawing.close("g");
}

void draw_y_axis(Drawing &drawing, const Axis &axis, const Panel &panel, double panel_top, int want)
{
    const std::vector<double> ticks = ticks_of(axis, want);
    const Unit unit = {shortened(panel.unit.text, kLongestUnit), panel.unit.takes_prefix};
    const TickLabels labels = label_ticks(ticks, unit, axis.scale);
    const double head = panel_top + 15.0;
    drawing.text("name", layout::kLeft, head, "start", shortened(panel.name, kLongestName),
                 "font-weight=\"600\"");
    drawing.text("unit-y", layout::kLeft - 6.0, head, "end", labels.unit);
    drawing.text("offset-y", layout::kRight - 6.0, axis.at_high + 14.0, "end",
                 labels.offset.empty() ? "" : "y from " + labels.offset);
    drawing.rect("frame", layout::kLeft, axis.at_high, layout::kRight - layout::kLeft,
                 axis.at_low - axis.at_high, look::kFrame);
    std::string grid;
    for (const double tick : ticks) {
        grid += "M" + coordinate(layout::kLeft) + " " + coordinate(axis.place(tick)) + "H" +
                coordinate(layout::kRight);
    }
    drawing.path("grid-y", grid, look::kGrid);
    drawing.open("g", "ticks-y");
    for (std::size_t i = 0; i < ticks.size(); ++i) {
        drawing.text("tick", layout::kLeft - 6.0, axis.place(ticks[i]) + 4.0, "end", labels.texts[i]);
    }
    drawing.close("g");
}

void draw_x_axis(Drawing &drawing, const Axis &axis, const Figure &figure, double bottom)
{
    const std::vector<double> ticks = ticks_of(axis, 8);
    const Unit unit = {shortened(figure.x_unit.text, kLongestUnit), figure.x_unit.takes_prefix};
    const TickLabels labels = label_ticks(ticks, unit, axis.scale);
    drawing.open("g", "ticks-x");
    for (std::size_t i = 0; i < ticks.size(); ++i) {
        const double farthest = layout::kWidth - text_width(labels.texts[i]) / 2.0;
        drawing.text("tick", std::min(axis.place(ticks[i]), farthest), bottom + 15.0, "middle",
                     labels.texts[i]);
    }
    drawing.close("g");
    const std::string meaning = figure.x_name + (labels.unit.empty() ? "" : " (" + labels.unit + ")") +
                                (labels.offset.empty() ? "" : " from " + labels.offset);
    drawing.text("unit-x", layout::kRight, bottom + 30.0, "end", meaning);
}

void draw_strip_frame(Drawing &drawing, const ErrorStrip &errors, double largest, double top)
{
    // There is no room for a long unit beside a number.
    const bool is_short = errors.unit.takes_prefix || errors.unit.text.size() <= kShortUnit;
    const Unit unit = is_short ? errors.unit : Unit{};
    const std::string label =
        errors.label + (is_short ? "" : " (" + shortened(errors.unit.text, kLongestName) + ")");
    drawing.rect("frame", layout::kLeft, top, layout::kRight - layout::kLeft, layout::kStrip, look::kFrame);
    drawing.text("strip-name", layout::kLeft, top - 5.0, "start", label, "fill-opacity=\".8\"");
    drawing.text("strip-top", layout::kLeft - 6.0, top + 9.0, "end",
                 largest > 0.0 ? with_unit(largest, unit, 3) : "");
    drawing.text("strip-zero", layout::kLeft - 6.0, top + layout::kStrip, "end", "0");
}

void LinePath::add(double x, double y)
{
    d_ += points_ == 0 ? 'M' : points_ == 1 ? 'L' : ' ';
    append_coordinate(d_, x);
    d_ += ' ';
    append_coordinate(d_, y);
    ++points_;
}

void LinePath::break_line()
{
    end_dot();
    points_ = 0;
}

std::string LinePath::take()
{
    end_dot();
    return std::move(d_);
}

void LinePath::end_dot()
{
    if (points_ == 1) {
        d_ += "h0";
    }
}

std::string curve_path(const Curve &curve, const Axis &x, const Axis &y, double top, std::string &gaps)
{
    LinePath line;
    ColumnReducer reducer([&](double px, double value) {
        if (std::isfinite(value) && std::isfinite(px)) {
            line.add(px, y.place(value));
            return;
        }
        line.break_line();
        if (std::isfinite(px)) {
            gaps += "M" + coordinate(px) + " " + coordinate(top) + "v7";
        }
    });
    for (std::size_t i = 0; i < curve.x.size(); ++i) {
        const double px = x.place(curve.x[i]);
        reducer.add(column_at(px), px, curve.y[i]);
    }
    reducer.flush();
    return line.take();
}

Range value_range(const Panel &panel)
{
    Range range;
    for (const Curve *curve : {&panel.golden, &panel.regression}) {
        for (const double value : curve->y) {
            range.add(value);
        }
    }
    return widened(range);
}

} // namespace report
