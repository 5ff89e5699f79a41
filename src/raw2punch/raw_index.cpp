// SPDX-License-Identifier: MIT
#include "raw2punch/raw_index.h"

#include "raw2punch/fault.h"
#include "raw2punch/text_tools.h"

#include <algorithm>

namespace
{

// What the sweep variable makes of a plot whose name does not decide it: a sensitivity over the frequency,
// and one run of several, whose name may be that of the step alone.
PlotKind kind_by_sweep(const RawPlot &plot, const PlotKind &kind)
{
    const std::string &type = plot.variables[0].type;
    const bool is_step =
        kind.analysis == Analysis::NONE && starts_with(lower_case(plot.name), "step analysis");
    if (plot.complex && type == "frequency" && (is_step || kind.analysis == Analysis::MR)) {
        return {Analysis::AC, kind.sort};
    }
    return is_step && type == "time" ? PlotKind{Analysis::TR, ""} : kind;
}

PlotKind kind_by_rules(const RawPlot &plot, const Options &options)
{
    const std::string name = lower_case(plot.name);
    for (const PlotRule &rule : options.rules) {
        if (name.find(rule.name) != std::string_view::npos) {
            return {rule.analysis, rule.name};
        }
    }
    return kind_by_sweep(plot, kind_of_plot(plot.name));
}

// Whether the plot has a place; if not, and that is not by intent, it is reported.
bool has_place(const RawPlot &plot, const PlotKind &kind, Report &report)
{
    if (kind.analysis == Analysis::SKIPPED) {
        return false;
    }
    if (kind.analysis == Analysis::NONE) {
        report.left_out("plot '" + plot.name + "': no kind of result of a punch file");
    } else if (kind.analysis == Analysis::MR && plot.complex) {
        report.left_out("plot '" + plot.name + "': complex values without a sweep");
    } else if (is_swept(kind.analysis) && plot.variables.size() == 1) {
        report.left_out("plot '" + plot.name + "': nothing but a sweep variable");
    } else {
        return true;
    }
    return false;
}

// A simulator prints the temperature for each analysis, or once for all of them.
void take_log_temperatures(std::vector<IndexedPlot> &plots, const std::vector<std::size_t> &numbers,
                           std::size_t plot_count, const std::vector<double> &temperatures, Report &report)
{
    if (temperatures.empty()) {
        return;
    }
    const bool all_equal = std::count(temperatures.begin(), temperatures.end(), temperatures[0]) ==
                           static_cast<std::ptrdiff_t>(temperatures.size());
    if (!all_equal && temperatures.size() != plot_count) {
        report.left_out("temperatures: the log has " + std::to_string(temperatures.size()) + " for " +
                        std::to_string(plot_count) + " plots; give them with --temperature");
        return;
    }
    for (std::size_t i = 0; i < plots.size(); ++i) {
        if (!plots[i].temperature) {
            plots[i].temperature = temperatures[all_equal ? 0 : numbers[i]];
        }
    }
}

// Finds out where plots go on in another rerun, which is known already, or in another modify.
void find_modifies(std::vector<IndexedPlot> &plots)
{
    std::vector<PlotKind> kinds; // in the modify
    const IndexedPlot *last = nullptr;
    for (IndexedPlot &plot : plots) {
        const bool repeated = std::find(kinds.begin(), kinds.end(), plot.kind) != kinds.end();
        plot.opens_modify = repeated || (last != nullptr && last->temperature != plot.temperature);
        if (plot.opens_rerun || plot.opens_modify) {
            kinds.clear();
        }
        kinds.push_back(plot.kind);
        last = &plot;
    }
}

} // namespace

std::vector<IndexedPlot> index_plots(const InputFile &file, const Options &options,
                                     const std::vector<double> &log_temperatures, Report &report)
{
    std::vector<IndexedPlot> plots;
    std::vector<std::size_t> numbers; // of the plots among all of the file
    std::size_t plot_count = 0;
    std::string title;
    for (std::int64_t offset = 0; offset < file.size(); ++plot_count) {
        const RawPlot plot = read_raw_header(file, offset);
        IndexedPlot indexed;
        indexed.header_offset = offset;
        indexed.place = place_data(file, plot, options.hints);
        indexed.kind = kind_by_rules(plot, options);
        indexed.temperature = plot.temperature;
        offset = skip_white_space(file, indexed.place.end, plot.utf16);
        if (has_place(plot, indexed.kind, report)) {
            indexed.opens_rerun = !plots.empty() && plot.title != title;
            title = plot.title;
            plots.push_back(indexed);
            numbers.push_back(plot_count);
        }
    }
    if (plot_count == 0) {
        throw Fault(file.path() + " is empty");
    }
    if (options.temperatures.empty()) {
        take_log_temperatures(plots, numbers, plot_count, log_temperatures, report);
    }
    find_modifies(plots);
    return plots;
}
