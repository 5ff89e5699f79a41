// SPDX-License-Identifier: MIT
#include "compare/result_lines.h"
#include "report/plane_places.h"
#include "report/svg_kinds.h"
#include "report/svg_parts.h"
#include "report/units.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace report
{

namespace
{

constexpr double kTop = 46.0;
constexpr double kSide = 480.0;
constexpr double kEnd = kTop + kSide;
constexpr double kRight = layout::kLeft + kSide;
constexpr double kListLeft = 600.0;
constexpr double kListLine = 15.0;
constexpr std::size_t kMostListed = 14;
constexpr const char *kDashes = R"( stroke-dasharray="3 2" stroke-opacity=".75")"; // of what cancels
constexpr double kShortestArrow = 12.0; // below that the two marks lie on each other

void draw_frame(Drawing &drawing, const PlaneAxes &axes)
{
    drawing.rect("right-half", axes.real.place(0.0), kTop, kSide / 2.0, kSide,
                 R"(fill="currentColor" fill-opacity=".06")");
    const std::vector<double> ticks = ticks_of(axes.real, 0);
    const TickLabels labels = label_ticks(ticks, {"", true}, Scale::SIGNED_LOG);
    std::string grid;
    for (const double tick : ticks) {
        grid += "M" + coordinate(axes.real.place(tick)) + " " + coordinate(kTop) + "V" + coordinate(kEnd) +
                "M" + coordinate(layout::kLeft) + " " + coordinate(axes.imaginary.place(tick)) + "H" +
                coordinate(kRight);
    }
    drawing.path("grid", grid, look::kGrid);
    drawing.path("axes",
                 "M" + coordinate(axes.real.place(0.0)) + " " + coordinate(kTop) + "V" + coordinate(kEnd) +
                     "M" + coordinate(layout::kLeft) + " " + coordinate(axes.imaginary.place(0.0)) + "H" +
                     coordinate(kRight),
                 look::kFrame);
    drawing.rect("frame", layout::kLeft, kTop, kSide, kSide, look::kFrame);
    drawing.open("g", "ticks");
    for (std::size_t i = 0; i < ticks.size(); ++i) {
        drawing.text("tick", axes.real.place(ticks[i]), kEnd + 15.0, "middle", labels.texts[i]);
        drawing.text("tick", layout::kLeft - 6.0, axes.imaginary.place(ticks[i]) + 4.0, "end",
                     labels.texts[i]);
    }
    drawing.close("g");
    drawing.text("unit-x", kRight, kEnd + 32.0, "end", "real part, signed-log; right half shaded");
    drawing.text("unit-y", layout::kLeft, kTop - 7.0, "start", "imaginary part, signed-log");
}

bool is_pole(int kind)
{
    return kind == POLE || kind == CANCELLED_POLE;
}

bool is_cancelled(const PlaneRoot &root)
{
    return root.kind == CANCELLED_POLE || root.kind == CANCELLED_ZERO;
}

void draw_mark(Drawing &drawing, const char *cls, const PlaneRoot &root, const Spot &at, double size,
               const char *look)
{
    if (!std::isfinite(at.x) || !std::isfinite(at.y)) {
        return; // listed beside the plane
    }
    const std::string x = coordinate(at.x);
    const std::string y = coordinate(at.y);
    const std::string d = coordinate(size);
    const std::string twice = coordinate(2.0 * size);
    const std::string cross = "M" + coordinate(at.x - size) + " " + coordinate(at.y - size) + "l" + twice +
                              " " + twice + "m0 -" + twice + "l-" + twice + " " + twice;
    const std::string circle = "M" + coordinate(at.x - size) + " " + y + "a" + d + " " + d + " 0 1 0 " +
                               twice + " 0a" + d + " " + d + " 0 1 0 -" + twice + " 0z";
    drawing.path(cls, is_pole(root.kind) ? cross : circle,
                 std::string(look) + (is_cancelled(root) ? kDashes : ""));
}

void draw_arrow(Drawing &drawing, const Spot &from, const Spot &to)
{
    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    const double length = std::hypot(dx, dy);
    if (!(length > kShortestArrow)) {
        return;
    }
    const double ux = dx / length;
    const double uy = dy / length;
    const Spot tip = {to.x - 6.0 * ux, to.y - 6.0 * uy};
    const auto point = [](double x, double y) {
        return coordinate(x) + " " + coordinate(y);
    };
    drawing.path("arrow",
                 "M" + point(from.x, from.y) + "L" + point(tip.x, tip.y) + "M" +
                     point(tip.x - 7.0 * ux - 4.0 * uy, tip.y - 7.0 * uy + 4.0 * ux) + "L" +
                     point(tip.x, tip.y) + "L" +
                     point(tip.x - 7.0 * ux + 4.0 * uy, tip.y - 7.0 * uy - 4.0 * ux),
                 R"(fill="none" stroke="currentColor" stroke-opacity=".7")");
}

void draw_roots(Drawing &drawing, const Figure &figure, const PlaneAxes &axes)
{
    constexpr const char *kWide = R"(fill="none" stroke="#6aa9e4" stroke-width="4.5")";
    constexpr const char *kThin = R"(fill="none" stroke="#b3261e" stroke-width="1.6")";
    drawing.open("g", "roots");
    for (const PlaneRoot &root : figure.roots) {
        if (root.in_golden) {
            draw_mark(drawing, "golden", root, axes.golden(root), 6.5, kWide);
        }
    }
    for (const PlaneRoot &root : figure.roots) {
        if (root.in_regression) {
            draw_mark(drawing, "regression", root, axes.regression(root), 5.0, kThin);
        }
        if (root.in_golden && root.in_regression) {
            draw_arrow(drawing, axes.golden(root), axes.regression(root));
        }
    }
    drawing.close("g");
}

// Places numbers beside marks so that none covers another one.
class Callouts
{
  public:
    void draw(Drawing &drawing, const Spot &mark, const std::string &number)
    {
        constexpr double kAway = 15.0;
        constexpr Spot kWays[] = {{1, -1},   {1, 1},   {-1, -1}, {-1, 1},
                                  {0, -1.4}, {0, 1.4}, {1.5, 0}, {-1.5, 0}};
        if (!std::isfinite(mark.x) || !std::isfinite(mark.y)) {
            return;
        }
        Spot place = {mark.x + kAway, mark.y - kAway};
        for (int step = 1; step <= 3; ++step) {
            const double away = step * kAway;
            const auto *const way =
                std::find_if(std::begin(kWays), std::end(kWays), [&](const Spot &candidate) {
                    return is_free({mark.x + away * candidate.x, mark.y + away * candidate.y});
                });
            if (way != std::end(kWays)) {
                place = {mark.x + away * way->x, mark.y + away * way->y};
                break;
            }
        }
        taken_.push_back(place);
        drawing.text("callout", place.x, place.y + 4.0, "middle", number, "font-weight=\"600\"");
    }

    void take(const Spot &mark)
    {
        taken_.push_back(mark);
    }

  private:
    bool is_free(const Spot &spot) const
    {
        const bool inside = spot.x > layout::kLeft + 6.0 && spot.x < kRight - 6.0 && spot.y > kTop + 6.0 &&
                            spot.y < kEnd - 6.0;
        return inside && std::none_of(taken_.begin(), taken_.end(), [&spot](const Spot &other) {
                   return std::fabs(other.x - spot.x) < 18.0 && std::fabs(other.y - spot.y) < 13.0;
               });
    }

    std::vector<Spot> taken_;
};

std::string point_text(double real, double imaginary)
{
    const Unit plain = {"", true};
    const std::string sign = std::signbit(imaginary) ? " - j " : " + j ";
    return with_unit(real, plain) + sign + with_unit(std::fabs(imaginary), plain);
}

std::string change_of(const PlaneRoot &root)
{
    if (!root.in_regression) {
        return "in golden alone";
    }
    if (!root.in_golden) {
        return "in regression alone";
    }
    return "moved by " + with_unit(root.error, {"", true}) +
           (root.half_planes_differ ? ", into the other half" : "");
}

double list_root(Drawing &drawing, const PlaneRoot &root, const std::string &number, double y)
{
    drawing.text("callout", kListLeft, y, "start", number + "  " + root_name(root.kind, root.position),
                 "font-weight=\"600\"");
    drawing.text("change", layout::kRight, y, "end", change_of(root));
    const std::string golden = root.in_golden ? point_text(root.golden_real, root.golden_imaginary) : "";
    const std::string regression =
        root.in_regression ? point_text(root.regression_real, root.regression_imaginary) : "";
    const std::string arrow = root.in_golden && root.in_regression ? " → " : "";
    drawing.text("coordinates", kListLeft + 18.0, y + kListLine, "start", golden + arrow + regression,
                 R"(font-size="11" fill-opacity=".8")");
    return y + 2.2 * kListLine;
}

// The roots that do not pass, the one that is furthest off first.
std::vector<const PlaneRoot *> failing_roots(const Figure &figure)
{
    std::vector<const PlaneRoot *> failing;
    for (const PlaneRoot &root : figure.roots) {
        if (root.fails) {
            failing.push_back(&root);
        }
    }
    const auto weight = [](const PlaneRoot *root) {
        return std::isnan(root->error) ? std::numeric_limits<double>::infinity() : root->error;
    };
    std::stable_sort(failing.begin(), failing.end(),
                     [&weight](const PlaneRoot *a, const PlaneRoot *b) { return weight(a) > weight(b); });
    return failing;
}

bool is_finite(const Spot &spot)
{
    return std::isfinite(spot.x) && std::isfinite(spot.y);
}

// Numbers the roots that do not pass, beside their marks and in a list.
void draw_callouts(Drawing &drawing, const Figure &figure, const PlaneAxes &axes)
{
    const auto mark_of = [&axes](const PlaneRoot &root) {
        const bool moved = root.in_regression && is_finite(axes.regression(root));
        return moved || !root.in_golden ? axes.regression(root) : axes.golden(root);
    };
    const std::vector<const PlaneRoot *> failing = failing_roots(figure);
    Callouts callouts;
    for (const PlaneRoot &root : figure.roots) {
        callouts.take(mark_of(root));
    }
    double y = kTop + 10.0;
    drawing.open("g", "callouts");
    for (std::size_t i = 0; i < failing.size() && i < kMostListed; ++i) {
        const std::string number = std::to_string(i + 1);
        callouts.draw(drawing, mark_of(*failing[i]), number);
        y = list_root(drawing, *failing[i], number, y);
    }
    if (failing.size() > kMostListed) {
        const std::string more = std::to_string(failing.size() - kMostListed);
        drawing.text("change", kListLeft, y, "start", "and " + more + " more");
    }
    drawing.close("g");
}

void draw_plane_legend(Drawing &drawing, const Figure &figure)
{
    draw_legend(drawing, figure, {{Sample::GOLDEN, "golden"}, {Sample::REGRESSION, "regression"}});
    const bool cancelled = std::any_of(figure.roots.begin(), figure.roots.end(), is_cancelled);
    double x = 300.0;
    for (const char *word :
         {"× pole", "○ zero", "→ golden to regression", cancelled ? "dashed: cancel each other" : ""}) {
        drawing.text("word", x, 14.0, "start", word);
        x += text_width(word) + 24.0;
    }
}

} // namespace

std::string plane_svg(const Figure &figure)
{
    const PlaneAxes axes = plane_axes(figure, layout::kLeft, kTop, kSide);
    Drawing drawing;
    open_figure(drawing, figure, kEnd + 44.0);
    draw_plane_legend(drawing, figure);
    draw_frame(drawing, axes);
    draw_roots(drawing, figure, axes);
    draw_callouts(drawing, figure, axes);
    drawing.raw("</svg>");
    return drawing.take();
}

} // namespace report
