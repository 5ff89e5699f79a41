// SPDX-License-Identifier: MIT
// A finding as a plain value: what one line of the transcript says, and more. Made only for a listener.
#ifndef TRESK_COMPARE_FINDING_H
#define TRESK_COMPARE_FINDING_H

#include "compare/tolerance.h"
#include "read/codes.h"
#include "read/records.h"

#include <cstdint>
#include <optional>
#include <string>

enum class FindingKind {
    // Pairs that were judged.
    VALUE,        // single values
    SWEEP,        // swept signals, point by point
    AREA,         // waveforms over time, by the areas below them
    SINGLE_VALUE, // waveforms over time of one point each: their values
    SINGLE_TIME,  // and, where these pass, their times
    FEW_POINTS,   // waveforms over time that have no area to be compared
    COEFFICIENT,  // one coefficient of Fourier results
    ROOT,         // one pole or zero

    // What one file lacks.
    MISSING_SIGNAL,     // a waveform or a single value
    MISSING_POINTS,     // the last points of a swept signal
    MISSING_SOLUTION,   // all values of an operating point or .IN statement, or one list of .IN DC
    MISSING_STATEMENT,  // a .FORCE statement
    MISSING_POLE_ZEROS, // a block of pole-zero results
    MISSING_ROOT,
    MISSING_MODIFY,
    MISSING_RERUN,

    // What differs.
    X_UNITS,
    Y_UNITS,
    COEFFICIENT_COUNT,
    FORCE_TSHIFT,
    FORCE_ANALYSIS,
    INPUT_PORT,
    OUTPUT_PORT,
    TRANSFER_TYPE,
    PUNCH_TIME, // time in a transient at which pole-zero results were taken
    TEMPERATURE,
    DATA_FORMAT,
    MIXED_FORMAT, // one file has both binary formats

    // What is printed but not judged.
    POINT_COUNT, // swept signals of which one has fewer points (ERROR1, ERROR2)
    TITLE,
    NEGATIVE_ERROR, // an absolute error below 0
    EMPTY_INDC,     // .IN DC statements without a first point on either side
};

enum class Side { NEITHER, REFERENCE, COMPARISON };

// Where in the files a finding stands; the numbers are those of the reference file where both have it.
struct Place {
    std::optional<int> rerun;
    std::optional<int> modify;
    std::optional<double> force_time; // of the .FORCE statement, in seconds
};

// The same thing in both files; null where a file lacks it.
template <typename Record> struct Both {
    const Record *ref = nullptr;
    const Record *cmp = nullptr;
};

// The point or interval of a pair that is furthest off: the first that is no number, else the one with
// the largest product of absolute and relative error, of areas the one with the largest difference.
struct WorstPlace {
    int index = -1; // from 0, in the order of the files; of areas the entry; -1 when nothing fails
    double x = 0.0; // of the reference point; of areas where the interval begins
};

// The areas that a verdict was reached by. Entry j is the area from (j - 1) * dx to j * dx.
struct Areas {
    const double *ref = nullptr; // valid during the call only
    const double *cmp = nullptr;
    int count = 0; // entries 0 to count - 1 were compared
    double dx = 0.0;
};

struct Finding {
    FindingKind kind = FindingKind::VALUE;
    int analysis = kNoAnalysis; // AnalysisCode of the table it stands in, kNoAnalysis outside all
    Place place;
    std::string name;          // of the signal, root or solution; empty where there is none
    Side side = Side::NEITHER; // the file that lacks something, or has mixed formats

    // The records that it is about, as far as they exist.
    Both<Isoln> values;
    Both<Wform> signals;
    Both<TPsoln> statements;
    Both<PZform> blocks;
    Both<TRI> roots;

    // Judged pairs: the errors (of a sweep the maxima of its failing points, of which the level is
    // that of the line's marker), the verdict, and the marker as printed.
    Judged judged = {};
    std::string marker;
    std::int64_t fails = 0;    // points; 1 for all but sweeps
    std::int64_t compared = 0; // points; 1 for all but sweeps
    bool met_nan = false;      // whether any point or area is no number
    WorstPlace worst;
    Areas areas;
    int position = 0;                // of a coefficient or root, from 1
    int root_kind = 0;               // RootKind
    bool half_planes_differ = false; // of a root, which then fails whatever its errors are

    // Both sides as printed, or as they would be; of judged single values, and of the worst point of a sweep
    // that fails, in full precision instead.
    std::string ref_text;
    std::string cmp_text;
    double ref_value = 0.0;
    double cmp_value = 0.0;
    int missing_points = 0;

    unsigned bits = 0;     // ExitBit set that it raises; 0 for a pair that passes
    bool is_judged = true; // false for what is printed without any bearing on the grade
};

#endif
