// SPDX-License-Identifier: MIT
// Results that a simulator writes to its log only.
#ifndef RAW2PUNCH_LOG_RESULTS_H
#define RAW2PUNCH_LOG_RESULTS_H

#include "raw2punch/fourier_table.h"
#include "raw2punch/report.h"

#include <string>
#include <vector>

struct LogMeasure {
    std::string name;
    double value = 0.0;
};

// The results of one run.
struct LogRun {
    std::vector<LogMeasure> measures;
    std::vector<Spectrum> spectra;
};

struct LogResults {
    std::vector<LogRun> runs;         // the n-th result of a name belongs to the n-th run
    std::vector<double> temperatures; // of the analyses in turn, in degrees Celsius
};

// Reads a log: lines such as "tpd = 1.2e-09 targ= ..." or "tpd: max(v(out))=1.2 FROM ...", tables of the
// values of stepped measurements, Fourier tables, and the temperatures that analyses were done at. All else
// is passed over. Measurements that failed, or have a value that is no number, are reported. Throws Fault
// when the log cannot be read.
LogResults read_log(const std::string &path, Report &report);

#endif
