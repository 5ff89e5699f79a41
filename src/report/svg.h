// SPDX-License-Identifier: MIT
// Figures as SVG text. Attributes alone make them legible: no style sheet, no script, and nothing that a
// content policy blocks; text and grid take the colour of the page around them. A style sheet may colour by
// class. The script of the page draws the same from report/figure_data when a reader zooms, in the same
// places: what follows is the layout that both keep to.
//
// All figures
//   <svg class="figure waves|bars|plane" viewBox="0 0 960 HEIGHT" data-figure="f1" role="img"
//        aria-label="TITLE"> <title>TITLE</title> <defs> the pattern "f1-hatch" </defs>
//   g.legend: one row at y 14, samples and words: golden, regression, error, not judged, worst, no number.
//   The plots reach from x 88 to 944. A coordinate has one decimal.
//
// WAVES, n panels. PLOT = 240, 180, 150 for n = 1, 2, 3 or more. STRIP = 48. A panel begins at TOP = 26 for
// the first one and is HEAD 22 + PLOT + GAP 20 + STRIP + BELOW 12 high. HEIGHT = 26 + n panels + 32.
//   g.panel data-panel="0"
//     text.name      x 88,  y TOP + 15: the signal
//     text.unit-y    x 82,  y TOP + 15, end: unit of the labels
//     text.offset-y  x 938, y PT + 14, end: "y from 0.7500001 V" where labels are counted from there; always
//                    there, else empty
//     text.worst-label   y TOP + 15, middle: "worst at 1.02 ns"; panels with a worst place only
//     rect.frame     x 88, y PT = TOP + 22, 856 x PLOT; behind everything
//     path.grid-x    "M x PT V PT+PLOT M x ST V ST+STRIP" for each tick of x
//     path.grid-y    "M 88 y H 944" for each tick of y
//     g.ticks-y      text.tick, x 82, y + 4, end
//     g.unjudged     filled with the hatch: a g.stretch for each, with a <title> and two rect.hatch, in plot
//                    and strip, at least 3 wide
//     path.golden    wide, clipped to the frame
//     path.regression    thin, above it, clipped to the frame
//     path.gaps      "M x PT v 7" for each non-finite point
//     path.worst     "M x PT V PT+PLOT M x ST V ST+STRIP", dashed; panels with a worst place only
//     g.strip        ST = PT + PLOT + 20
//       rect.frame   x 88, y ST, 856 x STRIP
//       text.strip-name  x 88, y ST - 5: what the error is
//       text.strip-top   x 82, y ST + 9, end: the largest finite error in view; its unit follows where that
//                    takes a prefix or has at most 3 bytes, else strip-name ends with " (UNIT)"; empty if all
//                    are 0
//       text.strip-zero  x 82, y ST + STRIP, end: "0"
//       path.error-pass, path.error, path.error-nan: errors of points that pass, that fail (or of areas), and
//                    that are no finite number, which fill the strip
//   g.ticks-x        text.tick, middle, y = end of the last strip + 15
//   text.unit-x      x 944, end, y = end of the last strip + 30: "time (ns)"; an offset follows: "time (ns)
//                    from 1.5 µs"
//
//   The y axis of a panel shows widened() (report/axis.h) the finite values of both curves, of those points
//   in view and the one before and behind it. Ticks: 8 wanted for x; for y 5 with one panel, else 4.
//
//   A curve is drawn through, of each run of points in one pixel column floor(x), the first, lowest, highest
//   and last finite point (of equal ones the first) and the first non-finite one, in their order:
//   "M x y L x y x y ...". A non-finite point ends the line; the next finite one begins another. A finite
//   point between two breaks is "M x y h 0", a dot for the round ends of the line.
//
//   Errors: an entry covers the pixel columns floor(place(from)) to ceil(place(to)) - 1, at least one; a
//   point (from == to) the three from clamp(floor(place) - 1, 88, 941) on; of these, those within 88 to 943.
//   A column shows its largest error that fails, and behind it its largest that passes. Height = error /
//   largest finite error * STRIP, at least 1 when above 0. Neighbouring columns with an error make one shape,
//   "M x bottom V y H x V y H x ... V bottom z", a step where the height changes.
//
// BARS, one panel, PLOT = 240 at TOP = 26 like WAVES. Coefficient i of n has its centre at
// 88 + (i + 0.5) * 856 / n. rect.golden is min(0.7 * 856 / n, 56) wide, rect.regression 0.4 times that, above
// it, rect.error as wide as the golden bar, in the strip. Bars begin at 0, of a log axis at its low end. The
// y axis shows 0 and all values, widened at the ends that are not 0; of log_y whole decades around all
// values. text.tick below, of each mth where labels would be closer than 60 to each other: the frequency.
// text.note x 944, y TOP + 15, end: what is not drawn.
//
// PLANE, HEIGHT = 570. Square plot from x 88 to 568 and y 46 to 526, both axes from -m to m, signed-log.
//   rect.right-half: the shaded half. g.roots: path.golden and path.regression of crosses (poles) and
//   circles (zeros), dashed where they cancel; path.arrow from golden to regression where they are further
//   apart than 12; g.callouts: text.callout, the number of a root that does not pass, which the list at x 600
//   explains.
#ifndef TRESK_REPORT_SVG_H
#define TRESK_REPORT_SVG_H

#include "report/figure.h"

#include <string>

namespace report
{

std::string figure_svg(const Figure &figure);

// The same without any text, 168 x 60, for a column of many: <svg class="thumbnail" viewBox="0 0 168 60"
// aria-hidden="true">.
std::string thumbnail_svg(const Figure &figure);

} // namespace report

#endif
