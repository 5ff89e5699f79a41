// SPDX-License-Identifier: MIT
// A figure as plain values: what is drawn by report/svg, and drawn again by the script of the page when a
// reader zooms. Everything in it was judged before; nothing here judges.
#ifndef TRESK_REPORT_FIGURE_H
#define TRESK_REPORT_FIGURE_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace report
{

enum class FigureKind {
    WAVES, // panels of two curves over one x axis, an error strip below each
    BARS,  // Fourier coefficients in pairs, an error strip below
    PLANE, // poles and zeros
};

// What stands behind a number. The text of unknown units is that of the file and is escaped like it.
struct Unit {
    std::string text;
    bool takes_prefix = false; // whether "m", "k" ... may stand before it
};

// A waveform, whole or cut to what draws the same picture.
struct Curve {
    std::vector<double> x;
    std::vector<double> y;
    std::int64_t points = 0; // before it was cut
};

// Errors as judged, over x: of areas one for each interval, of points from == to.
struct ErrorStrip {
    std::vector<double> from;
    std::vector<double> to;
    std::vector<double> error;
    std::vector<std::uint8_t> fails; // 1 where the point fails; empty for areas, which fail together
    std::string label;               // what the error is
    Unit unit;
};

// A stretch of x that was not judged, and why.
struct Unjudged {
    double from;
    double to;
    std::string reason;
};

// Of BARS and PLANE the one panel has a name, a unit, a key and no curves.
struct Panel {
    std::string name; // of the signal
    Unit unit;
    Curve golden;
    Curve regression;
    ErrorStrip errors;
    std::vector<Unjudged> unjudged;
    double worst_x = 0.0; // where the finding is worst; NaN where it has no place
    std::string key;      // of the finding; empty for a signal that passes and stands here as a companion
};

struct Bar {
    int position; // from 1
    double x;     // frequency of the golden coefficient
    double golden;
    double regression;
    double error; // as judged
    bool fails;
};

struct PlaneRoot {
    int kind;     // RootKind
    int position; // from 1
    bool in_golden;
    bool in_regression;
    double golden_real, golden_imaginary; // as printed; 0 where the file lacks the root
    double regression_real, regression_imaginary;
    double error; // as judged; NaN of a root that passes or that one file lacks
    bool fails;
    bool half_planes_differ;
};

struct Figure {
    FigureKind kind = FigureKind::WAVES;
    std::string id;     // "f1", "f2" ...: never made of a name
    std::string title;  // signal, analysis, rerun and modify
    std::string group;  // figures of one group share their x zoom: analysis, rerun and modify
    std::string x_name; // "time", "frequency" ...
    Unit x_unit;
    double x_low = 0.0; // the whole view; of log_x both are above 0
    double x_high = 1.0;
    bool log_x = false;
    bool log_y = false; // of BARS: all coefficients are above 0 and far apart
    bool cut = false;   // whether some curve has fewer points than its waveform
    std::vector<Panel> panels;
    std::vector<Bar> bars;
    std::vector<PlaneRoot> roots;
    std::int64_t left_out = 0;         // bars or roots beyond the most that are drawn
    std::vector<std::size_t> findings; // indices into Result::findings that it shows, worst first
};

} // namespace report

#endif
