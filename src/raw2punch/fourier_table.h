// SPDX-License-Identifier: MIT
// Results of Fourier analyses that are kept as a table beside the waveforms they were made from.
#ifndef RAW2PUNCH_FOURIER_TABLE_H
#define RAW2PUNCH_FOURIER_TABLE_H

#include "raw2punch/raw_data.h"

#include <string>
#include <vector>

struct Harmonic {
    double frequency = 0.0;
    double magnitude = 0.0;
    double degrees = 0.0;
};

struct Spectrum {
    std::string name; // of the signal
    std::vector<Harmonic> harmonics;
};

// Whether a variable is no waveform but has rows and columns of its own.
bool is_table(const RawPlot &plot, std::size_t variable);

// Whether it is called "fourier11" or so and has the frequencies, magnitudes and phases of a few harmonics as
// its rows.
bool is_fourier_table(const RawPlot &plot, std::size_t variable);

// All such tables of a plot, under the names of the variables.
std::vector<Spectrum> read_fourier_tables(const InputFile &file, const RawPlot &plot, const DataPlace &place);

#endif
