// SPDX-License-Identifier: MIT
// The signals that a plot becomes, and their values.
#ifndef RAW2PUNCH_SIGNALS_H
#define RAW2PUNCH_SIGNALS_H

#include "raw2punch/plot_kind.h"
#include "raw2punch/raw_data.h"
#include "raw2punch/report.h"

#include <string>
#include <vector>

// What is made of a complex value.
enum class Function {
    REAL, // also of a value that is not complex
    IMAGINARY,
    MAGNITUDE,
    DECIBELS, // of the magnitude
    DEGREES   // the phase, above -180 up to 180
};

// A magnitude below this is rounding: it counts as this in decibels (-400), and its phase is 0. Without that
// two runs of the same circuit would differ wherever the result is nothing, and nothing has no logarithm.
constexpr double kLeastMagnitude = 1e-20;

struct Signal {
    std::string name;
    std::string unit;         // none if empty
    std::size_t variable = 0; // of the plot
    Function function = Function::REAL;
    bool single = false; // a result for the whole plot, as those of measurements
};

// Whether the variable of a plot without a sweep is its first one once more. A simulator that is asked for
// some values puts one in front as if it were a sweep; and where there is but one, it adds that as "all".
bool repeats_first(const RawPlot &plot, std::size_t variable);

// The signals of a plot by rising variable. The sweep variable is none. Complex values of AC-like analyses
// become a signal for each of functions.
std::vector<Signal> make_signals(const RawPlot &plot, const PlotKind &kind,
                                 const std::vector<Function> &functions, Report &report);

// Computes values of a signal from the column of its variable.
class Evaluator
{
  public:
    // The result stays valid up to the next call.
    const double *evaluate(const ColumnView &column, Function function, std::size_t points);

  private:
    std::vector<double> real_;
    std::vector<double> imaginary_;
};

#endif
