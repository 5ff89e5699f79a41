// SPDX-License-Identifier: MIT
// The runs of a stepped plot: its points stand behind each other without a mark, but the sweep starts anew.
#ifndef RAW2PUNCH_SWEEP_H
#define RAW2PUNCH_SWEEP_H

#include "raw2punch/plot_kind.h"
#include "raw2punch/raw_data.h"

#include <vector>

// Watches the values of a sweep variable; of plots without one each point is a run.
class SweepWatch
{
  public:
    explicit SweepWatch(Analysis analysis);

    // Takes the next value. True when a run begins with it that is not the first. That is where the values
    // turn back; and in a DC sweep of single points, where one comes twice.
    bool starts_run(double x);

  private:
    bool is_swept_;
    bool rises_always_; // time
    bool repeats_;      // a run may be a single point
    int direction_;
    double last_ = 0.0;
    bool first_ = true;
};

// Takes the values of the sweep variable from a block. Simulators that leave out points mark those that must
// stay by a negative time: such marks are dropped when absolute is set.
void load_sweep(const Block &block, bool absolute, std::vector<double> &xs);

// Whether the plot is of the form in which times may be marked by their sign.
bool has_marked_times(const RawPlot &plot, const DataPlace &place, Analysis analysis);

// Reads the whole plot for its runs. Throws Fault where there are more than a million, or more than the
// length of the file allows for: then the sweep variable is none.
std::vector<PointRange> find_runs(const InputFile &file, const RawPlot &plot, const DataPlace &place,
                                  Analysis analysis);

#endif
