// SPDX-License-Identifier: MIT
// The plots of a rawfile and what each becomes.
#ifndef RAW2PUNCH_RAW_INDEX_H
#define RAW2PUNCH_RAW_INDEX_H

#include "raw2punch/converter.h"

// A plot that has a place in the punch file. Little is kept of each: a file can have many.
struct IndexedPlot {
    std::int64_t header_offset = 0; // in the file
    DataPlace place;
    PlotKind kind;
    std::optional<double> temperature; // from the header or the log, in degrees Celsius
    bool opens_rerun = false;          // has another title than the one before
    bool opens_modify = false; // its kind has been there in the modify, or its temperature is another one
};

// Walks over the whole file. Plots without a place are reported and left out. log_temperatures are those of
// the analyses in the log, in turn. Throws Fault for a file that is damaged anywhere, or has no plots.
std::vector<IndexedPlot> index_plots(const InputFile &file, const Options &options,
                                     const std::vector<double> &log_temperatures, Report &report);

#endif
