// SPDX-License-Identifier: MIT
// The tree of plain records that holds a punch file. Records come from the allocators of
// read/tk_alloc.h, zero-filled, are linked through next, and live until the process exits; so do
// the strings they point to. A string that was not met is null.
#ifndef TRESK_READ_RECORDS_H
#define TRESK_READ_RECORDS_H

#include <cstdint>

constexpr double kUnknownTemperature = -999.0;
constexpr double kUnknownTime = -1.0;

// One point of a waveform.
struct PT {
    double x;   // sweep value: time, frequency, swept source value ...
    double val; // signal value
    PT *next;
};

// One signal of a swept analysis.
struct Wform {
    char *name;
    char *xunits; // XUNITS in force when the signal was read
    char *xfunc;  // X_FUNCTION in force when the signal was read
    char *yunits; // the signal's own YUNITS
    int format;   // DataFormat of its data
    int matched;  // 1 once paired with a signal of the other file
    double xmin;  // range of the points read; 1e30 and -1e30 without points
    double xmax;
    double ymin;
    double ymax;
    double tshift; // time shift of a PWL source, in seconds; 0 otherwise
    PT *pts;       // the points in file order; null in index mode, where they are only counted
    int numpts;
    std::int64_t offset; // file offset of the first character of the line that holds the name
    int analysis;        // AnalysisCode
    Wform *next;
};

// One named value of a solution.
struct Isoln {
    char *name;   // of an INTERNAL quantity: both names, joined by ","
    char *yunits; // OP values only
    double value;
    int type;     // QuantityType
    int matched;  // 1 once paired with a value of the other file
    int analysis; // INOP to INDC2 in .IN lists, -1 otherwise
    Isoln *next;
};

// The initial solutions of an .IN DC statement.
struct INDCform {
    Isoln *first;
    Isoln *second; // null when the file ended first
};

// One .FORCE statement.
struct TPsoln {
    double time;   // in seconds; kUnknownTime when not given
    double tshift; // in seconds
    int analysis;  // TR_FORCE, PSS_FORCE, or the code of any other analysis it stands in
    int matched;   // 1 once paired with a statement of the other file
    Isoln *isoln;  // the forced values in file order
    TPsoln *next;
};

// One pole or zero.
struct TRI {
    double mag;
    double phase;
    double Q; // quality factor
    TRI *next;
};

// One block of pole-zero results.
struct PZform {
    char *iport; // input port of the transfer function
    char *oport; // output port
    int pztype;  // 1 voltage transfer, otherwise current transfer
    double pzval;
    double tpunch_time; // time in a transient at which it was taken, in seconds; 0 when not given
    TRI *poles;
    TRI *zeros;
    TRI *cpoles; // cancelled poles
    TRI *czeros; // cancelled zeros
    PZform *next;
};

// One parameter variant of a rerun, with all its results.
struct MODIFYform {
    int number;
    int matched;        // 1 once paired with a modify of the other file
    double temperature; // in degrees Celsius; kUnknownTemperature when not given
    Isoln *op;          // newest first
    Isoln *inop;
    Isoln *intr;
    Isoln *inpss;
    INDCform *indc;
    TPsoln *trforce;  // .FORCE statements met in a TR analysis
    TPsoln *pssforce; // .FORCE statements met in any other analysis
    Wform *wform;
    PZform *pzform;
    MODIFYform *next;
};

// One simulation run of a file.
struct RERUNform {
    char *title;
    int number;
    int matched; // 1 once paired with a rerun of the other file
    MODIFYform *modify;
    RERUNform *next;
};

// One punch file.
struct PF {
    char *name; // path as given on the command line
    int format; // DataFormat after reading
    RERUNform *rerun;
};

#endif
