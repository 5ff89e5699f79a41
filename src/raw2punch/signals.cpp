// SPDX-License-Identifier: MIT
#include "raw2punch/signals.h"

#include "raw2punch/fourier_table.h"
#include "raw2punch/punch_names.h"

#include <algorithm>
#include <cmath>

namespace
{

constexpr double kPi = 3.14159265358979323846;

const char *function_letters(Function function)
{
    switch (function) {
    case Function::REAL:
        return "R";
    case Function::IMAGINARY:
        return "I";
    case Function::MAGNITUDE:
        return "M";
    case Function::DECIBELS:
        return "DB";
    default:
        return "P";
    }
}

class SignalMaker
{
  public:
    SignalMaker(const RawPlot &plot, const PlotKind &kind, Report &report)
        : plot_(plot), kind_(kind), report_(report)
    {
    }

    std::vector<Signal> make(const std::vector<Function> &functions)
    {
        for (std::size_t i = is_swept(kind_.analysis) ? 1 : 0; i < plot_.variables.size(); ++i) {
            add_variable(i, functions);
        }
        return std::move(signals_);
    }

  private:
    void add_variable(std::size_t index, const std::vector<Function> &functions)
    {
        const RawVariable &variable = plot_.variables[index];
        if (!is_swept(kind_.analysis) && repeats_first(plot_, index)) {
            return;
        }
        if (variable.points == 0) {
            report_.left_out("plot '" + plot_.name + "': " + variable.name + " has no values");
        } else if (is_table(plot_, index)) {
            if (!is_fourier_table(plot_, index)) {
                report_.left_out("plot '" + plot_.name + "': " + variable.name + " is a table");
            }
        } else if (is_swept(kind_.analysis) && variable.points == 1 && plot_.points > 1) {
            add(index, variable.name, "", Function::REAL);
            signals_.back().single = true;
        } else if (kind_.analysis == Analysis::FOUR) {
            add_spectrum(index);
        } else if (!plot_.complex || variable.type == "decibel" || variable.type == "phase") {
            add(index, variable.name, unit_of(variable), Function::REAL);
        } else {
            add_complex(index, functions);
        }
    }

    std::string unit_of(const RawVariable &variable) const
    {
        if (kind_.analysis == Analysis::DISTO) {
            return kind_.sort;
        }
        return kind_.analysis == Analysis::NOISE ? noise_unit_of_type(variable.type)
                                                 : unit_of_type(variable.type);
    }

    void add_spectrum(std::size_t index)
    {
        const RawVariable &variable = plot_.variables[index];
        const Function magnitude = plot_.complex ? Function::MAGNITUDE : Function::REAL;
        add(index, variable.name + ".MAG.FOURIER", unit_of(variable), magnitude);
        if (plot_.complex) {
            add(index, variable.name + ".PHASE.FOURIER", "DEGREES", Function::DEGREES);
        }
    }

    // A distortion unit makes a signal a distortion, which a phase is not.
    void add_complex(std::size_t index, const std::vector<Function> &functions)
    {
        const RawVariable &variable = plot_.variables[index];
        for (const Function function : functions) {
            std::string unit = unit_of(variable);
            std::string name = derived_name(variable.name, function_letters(function));
            if (kind_.analysis == Analysis::DISTO) {
                if (function == Function::DEGREES) {
                    continue;
                }
                name += "." + kind_.sort;
            } else if (function == Function::DECIBELS || function == Function::DEGREES) {
                unit = function == Function::DECIBELS ? "DB" : "DEGREES";
            }
            add(index, name, unit, function);
        }
    }

    void add(std::size_t index, const std::string &raw_name, std::string unit, Function function)
    {
        const std::string possible =
            kind_.analysis == Analysis::OP ? solution_name(raw_name) : waveform_name(raw_name);
        Signal signal;
        signal.name = names_.make(possible);
        if (signal.name != raw_name) {
            report_.note("plot '" + plot_.name + "': " + raw_name + " is called " + signal.name);
        }
        signal.unit = std::move(unit);
        signal.variable = index;
        signal.function = function;
        signals_.push_back(std::move(signal));
    }

    const RawPlot &plot_;
    const PlotKind &kind_;
    Report &report_;
    UniqueNames names_;
    std::vector<Signal> signals_;
};

} // namespace

bool repeats_first(const RawPlot &plot, std::size_t variable)
{
    const std::string &name = plot.variables[variable].name;
    const bool is_all = plot.variables.size() == 2 && (name == "v(all)" || name == "all");
    return variable > 0 && (is_all || name == plot.variables[0].name);
}

std::vector<Signal> make_signals(const RawPlot &plot, const PlotKind &kind,
                                 const std::vector<Function> &functions, Report &report)
{
    return SignalMaker(plot, kind, report).make(functions);
}

const double *Evaluator::evaluate(const ColumnView &column, Function function, std::size_t points)
{
    real_.resize(points);
    load_column(column, function == Function::IMAGINARY, points, real_.data());
    if (function == Function::REAL || function == Function::IMAGINARY) {
        return real_.data();
    }
    imaginary_.resize(points);
    load_column(column, true, points, imaginary_.data());
    for (std::size_t i = 0; i < points; ++i) {
        double &result = real_[i];
        const double magnitude = std::hypot(result, imaginary_[i]);
        if (function == Function::DEGREES) {
            result = magnitude < kLeastMagnitude ? 0.0 : std::atan2(imaginary_[i], result) * (180.0 / kPi);
        } else if (function == Function::DECIBELS) {
            result = 20.0 * std::log10(magnitude < kLeastMagnitude ? kLeastMagnitude : magnitude);
        } else {
            result = magnitude;
        }
    }
    return real_.data();
}
