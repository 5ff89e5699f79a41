// SPDX-License-Identifier: MIT
// What all drawings are made of. Layout, classes and rules: report/svg.h.
#ifndef TRESK_REPORT_SVG_PARTS_H
#define TRESK_REPORT_SVG_PARTS_H

#include "report/axis.h"
#include "report/figure.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace report
{

namespace layout
{
constexpr double kWidth = 960.0;
constexpr double kLeft = 88.0;
constexpr double kRight = 944.0;
constexpr double kTop = 26.0;
constexpr double kHead = 22.0;
constexpr double kGap = 20.0;
constexpr double kStrip = 48.0;
constexpr double kBelow = 12.0;
constexpr double kFoot = 32.0;
} // namespace layout

// Looks of the parts, as attributes.
namespace look
{
constexpr const char *kGoldenColor = "#6aa9e4";
constexpr const char *kRegressionColor = "#b3261e";
constexpr const char *kErrorColor = "#8a4b00";
constexpr const char *kGolden =
    R"(fill="none" stroke="#6aa9e4" stroke-width="5" stroke-linejoin="round" stroke-linecap="round")";
constexpr const char *kRegression =
    R"(fill="none" stroke="#b3261e" stroke-width="1.5" stroke-linejoin="round" stroke-linecap="round")";
constexpr const char *kGrid = R"(fill="none" stroke="currentColor" stroke-opacity=".13")";
constexpr const char *kFrame = R"(fill="none" stroke="currentColor" stroke-opacity=".35")";
constexpr const char *kGaps = R"(fill="none" stroke="#b3261e" stroke-width="3")";
constexpr const char *kWorst =
    R"(fill="none" stroke="currentColor" stroke-opacity=".7" stroke-dasharray="4 3")";
constexpr const char *kError = R"(fill="#8a4b00")";
constexpr const char *kErrorPass = R"(fill="#8a4b00" fill-opacity=".35")";
constexpr const char *kErrorNan =
    R"(fill="#8a4b00" fill-opacity=".2" stroke="#8a4b00" stroke-dasharray="2 2")";
} // namespace look

// A coordinate with one decimal at most, within -99999 to 99999; 0 of NaN.
std::string coordinate(double value);

// The first characters of a name that may be of any length.
std::string shortened(const std::string &text, std::size_t most);

// About how wide a text of clean UTF-8 is drawn.
double text_width(const std::string &text, double size = 12.0);

// SVG text that grows by elements. Texts are any bytes; classes and attributes are constants of the program.
class Drawing
{
  public:
    void raw(std::string_view text)
    {
        svg_ += text;
    }
    void open(const char *name, const char *cls, const std::string &attributes = "");
    void close(const char *name);
    void path(const char *cls, const std::string &d, const std::string &attributes);
    void rect(const char *cls, double x, double y, double width, double height,
              const std::string &attributes);
    // anchor: "start", "middle" or "end".
    void text(const char *cls, double x, double y, const char *anchor, const std::string &content,
              const std::string &attributes = "");
    void title(const std::string &content);

    std::string take()
    {
        return std::move(svg_);
    }

  private:
    std::string svg_;
};

// The <svg> element with its title and the hatch pattern, up to what follows them.
void open_figure(Drawing &drawing, const Figure &figure, double height);

enum class Sample {
    GOLDEN,
    REGRESSION,
    GOLDEN_BAR,
    REGRESSION_BAR,
    ERROR,
    ERROR_PASS,
    ERROR_NAN,
    UNJUDGED,
    WORST,
    GAP
};

struct LegendItem {
    Sample sample;
    const char *word;
};

void draw_legend(Drawing &drawing, const Figure &figure, const std::vector<LegendItem> &items);

// The frame of a plot from kLeft to kRight, with grid lines and labels of its y axis, its name and unit
// above.
void draw_y_axis(Drawing &drawing, const Axis &axis, const Panel &panel, double panel_top, int want);

// Labels of the x axis below `bottom`, and what they mean.
void draw_x_axis(Drawing &drawing, const Axis &axis, const Figure &figure, double bottom);

// The frame of an error strip and its labels; largest is the error at its top.
void draw_strip_frame(Drawing &drawing, const ErrorStrip &errors, double largest, double top);

// The line through points, as the drawing's path data: "M x y L x y x y ...".
class LinePath
{
  public:
    void add(double x, double y);
    void break_line();
    std::string take();

  private:
    void end_dot();

    std::string d_;
    int points_ = 0; // since the last break
};

// A curve, reduced to pixel columns; gaps gets the marks of non-finite points, 7 long from `top` on.
std::string curve_path(const Curve &curve, const Axis &x, const Axis &y, double top, std::string &gaps);

// The finite values of both curves, with room.
Range value_range(const Panel &panel);

} // namespace report

#endif
