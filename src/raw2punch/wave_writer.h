// SPDX-License-Identifier: MIT
// Writes the waveforms of one run of a plot: reads its values once, point after point, and writes them signal
// after signal.
#ifndef RAW2PUNCH_WAVE_WRITER_H
#define RAW2PUNCH_WAVE_WRITER_H

#include "raw2punch/punch_writer.h"
#include "raw2punch/report.h"
#include "raw2punch/signals.h"
#include "raw2punch/sweep.h"

#include <vector>

// What a run is made from. All of it must outlive the call it is passed to.
struct Run {
    const InputFile &file;
    const RawPlot &plot;
    const DataPlace &place;
    Analysis analysis;
    PointRange range;
    const std::vector<Signal> &signals;
};

// Writes the signals that are not single. False, with nothing written, when the sweep turned out to start
// anew within the run.
bool write_waveforms(PunchWriter &writer, const Run &run, Report &report);

#endif
