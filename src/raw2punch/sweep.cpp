// SPDX-License-Identifier: MIT
#include "raw2punch/sweep.h"

#include "raw2punch/fault.h"

#include <cmath>

namespace
{

constexpr std::size_t kMostRuns = 1'000'000;

} // namespace

SweepWatch::SweepWatch(Analysis analysis)
    : is_swept_(is_swept(analysis)), rises_always_(analysis == Analysis::TR || analysis == Analysis::PSS),
      repeats_(analysis == Analysis::DC), direction_(rises_always_ ? 1 : 0)
{
}

bool SweepWatch::starts_run(double x)
{
    const double last = last_;
    last_ = x;
    if (first_) {
        first_ = false;
        return false;
    }
    if (!is_swept_) {
        return true;
    }
    if (direction_ == 0) {
        direction_ = x > last ? 1 : x < last ? -1 : 0;
        return repeats_ && x == last;
    }
    const bool turns_back = direction_ > 0 ? x < last : x > last;
    if (turns_back && !rises_always_) {
        direction_ = 0; // the runs of a sweep over two sources may alternate
    }
    return turns_back;
}

void load_sweep(const Block &block, bool absolute, std::vector<double> &xs)
{
    xs.resize(block.points);
    load_column(block.columns[0], false, block.points, xs.data());
    if (absolute) {
        for (double &x : xs) {
            x = std::fabs(x);
        }
    }
}

bool has_marked_times(const RawPlot &plot, const DataPlace &place, Analysis analysis)
{
    return analysis == Analysis::TR && (plot.utf16 || place.bits == ValueBits::MIXED);
}

std::vector<PointRange> find_runs(const InputFile &file, const RawPlot &plot, const DataPlace &place,
                                  Analysis analysis)
{
    const PointRange all = all_points(plot);
    std::vector<PointRange> runs = {{all.first, 0, all.offset}};
    const std::unique_ptr<DataSource> source = open_data(file, plot, place, all);
    const bool absolute = has_marked_times(plot, place, analysis);
    SweepWatch watch(analysis);
    std::vector<double> xs;
    for (Block block; source->next(block);) {
        load_sweep(block, absolute, xs);
        for (std::size_t i = 0; i < block.points; ++i) {
            if (watch.starts_run(xs[i])) {
                runs.push_back({block.first + static_cast<std::int64_t>(i), 0, block.offset_of(i)});
            }
            ++runs.back().count;
        }
        // Where points lack variables, few bytes could make many runs of many signals.
        if (runs.size() > kMostRuns ||
            runs.size() > static_cast<std::size_t>(file.size()) / plot.variables.size()) {
            throw Fault("the sweep variable of plot '" + plot.name + "' turns back too often");
        }
    }
    return runs;
}
