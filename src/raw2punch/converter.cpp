// SPDX-License-Identifier: MIT
#include "raw2punch/converter.h"

#include "raw2punch/fault.h"
#include "raw2punch/log_results.h"
#include "raw2punch/pole_zero.h"
#include "raw2punch/punch_names.h"
#include "raw2punch/raw_index.h"
#include "raw2punch/wave_writer.h"

#include <algorithm>
#include <iterator>
#include <unordered_set>

namespace
{

// A plot of the modify that is being written.
struct OpenPlot {
    RawPlot raw;
    DataPlace place;
    PlotKind kind;
    std::optional<double> temperature;
    std::vector<Signal> signals;
    std::vector<PointRange> runs; // known so far: one until its sweep is seen to start anew
    std::string date;
};

bool has_waveforms(const OpenPlot &plot)
{
    return std::any_of(plot.signals.begin(), plot.signals.end(), [](const Signal &s) { return !s.single; });
}

const std::string &checked_input(const Options &options)
{
    if (is_same_file(options.input, options.output)) {
        throw Fault("input and output are the same file");
    }
    if (options.log && is_same_file(*options.log, options.output)) {
        throw Fault("log and output are the same file");
    }
    return options.input;
}

bool opens_group(const IndexedPlot &plot)
{
    return plot.opens_rerun || plot.opens_modify;
}

// A group is what shares its first modify. The log counts simulations: where the rawfile holds several
// groups, each is one, with all the runs of its stepped plots; otherwise each of these runs is.
class Converter
{
  public:
    Converter(const Options &options, Report &report)
        : options_(options), report_(report), file_(checked_input(options)),
          log_(options.log ? read_log(*options.log, report) : LogResults{}),
          plots_(index_plots(file_, options, log_.temperatures, report)), output_(options.output),
          writer_(output_, options.format)
    {
        variant_.rerun = options.first_rerun;
        variant_.modify = options.first_modify;
    }

    void convert()
    {
        const auto second = std::next(plots_.begin(), plots_.empty() ? 0 : 1);
        several_groups_ = std::any_of(second, plots_.end(), opens_group);
        for (auto first = plots_.begin(); first != plots_.end();) {
            const auto end = std::find_if(std::next(first), plots_.end(), opens_group);
            if (first->opens_rerun) {
                ++variant_.rerun;
                variant_.modify = options_.first_modify;
            }
            write_group(first, end);
            first = end;
        }
        while (simulations_ < log_.runs.size()) {
            begin_simulation();
            write_log_results();
            ++variant_.modify;
        }
        check_temperatures();
        if (writer_.position() == 0) {
            throw Fault("nothing in " + options_.input + " has a place in a punch file");
        }
        output_.commit(writer_.position());
    }

  private:
    using PlotIterator = std::vector<IndexedPlot>::iterator;

    OpenPlot open(const IndexedPlot &indexed)
    {
        OpenPlot plot;
        plot.raw = read_raw_header(file_, indexed.header_offset);
        plot.place = indexed.place;
        plot.kind = indexed.kind;
        plot.temperature = indexed.temperature;
        plot.signals = make_signals(plot.raw, plot.kind, options_.functions, report_);
        plot.date = date_words(plot.raw.date);
        if (is_swept(plot.kind.analysis) || plot.raw.points == 1) {
            plot.runs = {all_points(plot.raw)};
        } else {
            find_runs_of(plot);
        }
        return plot;
    }

    void find_runs_of(OpenPlot &plot)
    {
        plot.runs = find_runs(file_, plot.raw, plot.place, plot.kind.analysis);
    }

    // Writes plots that share a modify. Where one of them has several runs, the further ones are modifies of
    // their own, together with those of the other plots.
    void write_group(PlotIterator first, PlotIterator end)
    {
        std::vector<OpenPlot> plots;
        std::transform(first, end, std::back_inserter(plots),
                       [this](const IndexedPlot &p) { return open(p); });
        bool more = true;
        for (std::size_t run = 0; more; ++run) {
            const bool is_new = run == 0 || !several_groups_;
            if (is_new) {
                begin_simulation();
            }
            more = false;
            for (OpenPlot &plot : plots) {
                if (run < plot.runs.size()) {
                    write_run(plot, run);
                }
                more = more || run + 1 < plot.runs.size();
            }
            if (is_new) {
                write_log_results();
            }
            ++variant_.modify;
        }
    }

    void begin_simulation()
    {
        if (!options_.temperatures.empty()) {
            temperature_ = options_.temperatures[std::min(simulations_, options_.temperatures.size() - 1)];
        }
        ++simulations_;
        measures_.clear();
    }

    void write_run(OpenPlot &plot, std::size_t run)
    {
        if (options_.temperatures.empty()) {
            temperature_ = plot.temperature.value_or(kUsualTemperature);
        }
        variant_.temperature = temperature_;
        variant_.title = title_text(options_.title.value_or(plot.raw.title));
        date_ = plot.date;
        switch (plot.kind.analysis) {
        case Analysis::OP:
            write_solution(plot, run);
            break;
        case Analysis::PZ:
            write_roots(plot, run);
            break;
        case Analysis::MR:
            write_values(plot, run);
            break;
        default:
            write_sweep(plot, run);
            break;
        }
    }

    void write_sweep(OpenPlot &plot, std::size_t run)
    {
        const PunchWriter before = writer_;
        if (has_waveforms(plot) && !write_waves(plot, run)) {
            writer_.go_back(before);
            find_runs_of(plot);
            write_waves(plot, run);
        }
        if (run == 0) {
            write_values(plot, run);
            write_spectra(read_fourier_tables(file_, plot.raw, plot.place));
        }
    }

    // False when the sweep starts anew within the run.
    bool write_waves(const OpenPlot &plot, std::size_t run)
    {
        write_header(plot.kind.analysis);
        const bool is_spectrum = plot.kind.analysis == Analysis::FOUR;
        writer_.write_sweep(is_spectrum ? "HERTZ" : unit_of_type(plot.raw.variables[0].type),
                            plot.raw.log_sweep);
        const Run waves = {file_, plot.raw, plot.place, plot.kind.analysis, plot.runs[run], plot.signals};
        return write_waveforms(writer_, waves, report_);
    }

    void write_header(Analysis analysis)
    {
        writer_.write_header(analysis, variant_, date_);
    }

    // Calls take(signal, value) for each signal that has a value at the first point of a run.
    template <typename Take> void walk_values(const OpenPlot &plot, std::size_t run, Take take) const
    {
        PointRange range = plot.runs[run];
        range.count = 1;
        const std::unique_ptr<DataSource> source = open_data(file_, plot.raw, plot.place, range);
        Block block;
        source->next(block);
        Evaluator evaluator;
        auto column = block.columns.begin();
        for (const Signal &signal : plot.signals) {
            while (column != block.columns.end() && column->variable < signal.variable) {
                ++column;
            }
            if (column != block.columns.end() && column->variable == signal.variable) {
                take(signal, *evaluator.evaluate(*column, signal.function, 1));
            }
        }
    }

    void write_solution(const OpenPlot &plot, std::size_t run)
    {
        write_header(Analysis::OP);
        walk_values(plot, run, [this](const Signal &signal, double value) {
            writer_.write_solution(signal.name, signal.unit, value);
        });
    }

    void write_values(const OpenPlot &plot, std::size_t run)
    {
        const bool all = plot.kind.analysis == Analysis::MR;
        const auto is_single = [](const Signal &signal) {
            return signal.single;
        };
        if (!all && std::none_of(plot.signals.begin(), plot.signals.end(), is_single)) {
            return;
        }
        write_header(Analysis::MR);
        walk_values(plot, run, [this, all](const Signal &signal, double value) {
            if (all || signal.single) {
                write_measure(signal.name, value);
            }
        });
    }

    void write_measure(const std::string &name, double value)
    {
        measures_.insert(name);
        writer_.write_measure(name, static_cast<int>(simulations_), value);
    }

    void write_roots(const OpenPlot &plot, std::size_t run)
    {
        Block block;
        const std::unique_ptr<DataSource> source = open_data(file_, plot.raw, plot.place, plot.runs[run]);
        source->next(block);
        write_header(Analysis::PZ);
        writer_.write(pole_zero_block(plot.raw, block, report_));
    }

    // What the log holds of this simulation. A measurement that the rawfile holds, too, is there with all its
    // digits.
    void write_log_results()
    {
        if (simulations_ > log_.runs.size()) {
            return;
        }
        const LogRun &run = log_.runs[simulations_ - 1];
        bool headed = false;
        for (const LogMeasure &measure : run.measures) {
            const std::string name = waveform_name(measure.name);
            if (measures_.count(name) == 0) {
                if (!headed) {
                    write_header(Analysis::MR);
                }
                headed = true;
                write_measure(name, measure.value);
            }
        }
        write_spectra(run.spectra);
    }

    void write_spectra(const std::vector<Spectrum> &spectra)
    {
        if (!spectra.empty()) {
            write_header(Analysis::FOUR);
            writer_.write_sweep("HERTZ", false);
        }
        for (const Spectrum &spectrum : spectra) {
            write_spectrum(spectrum);
        }
    }

    void write_spectrum(const Spectrum &spectrum)
    {
        const std::string name = waveform_name(spectrum.name);
        std::string magnitudes = waveform_line(name + ".MAG.FOURIER", "", PunchFormat::TEXT);
        std::string phases = waveform_line(name + ".PHASE.FOURIER", "DEGREES", PunchFormat::TEXT);
        for (const Harmonic &harmonic : spectrum.harmonics) {
            const std::string start = "+ " + number_text(harmonic.frequency) + " ";
            magnitudes += start + number_text(harmonic.magnitude) + "\n";
            phases += start + number_text(harmonic.degrees) + "\n";
        }
        writer_.write(magnitudes);
        writer_.write(phases);
    }

    void check_temperatures() const
    {
        const std::size_t given = options_.temperatures.size();
        if (given > 1 && given != simulations_) {
            throw Fault(std::to_string(given) + " temperatures for " + std::to_string(simulations_) +
                        " runs");
        }
    }

    static constexpr double kUsualTemperature = 27.0; // degrees Celsius

    const Options &options_;
    Report &report_;
    InputFile file_;
    LogResults log_;
    std::vector<IndexedPlot> plots_;
    OutputFile output_;
    PunchWriter writer_;
    Variant variant_;
    std::string date_;
    bool several_groups_ = false;
    std::size_t simulations_ = 0; // begun so far, over all reruns
    double temperature_ = kUsualTemperature;
    std::unordered_set<std::string> measures_; // written for this simulation
};

} // namespace

void convert(const Options &options, Report &report)
{
    Converter(options, report).convert();
}
