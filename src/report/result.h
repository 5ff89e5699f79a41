// SPDX-License-Identifier: MIT
// The result of one comparison as plain values, as the recorder leaves it when the comparison has ended.
// Whatever is written, JSON, tables or the page, is written from this. Paths, names, titles and units are
// bytes of the files and go through report/text.h on their way out.
#ifndef TRESK_REPORT_RESULT_H
#define TRESK_REPORT_RESULT_H

#include "compare/finding.h"
#include "compare/listener.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace report
{

constexpr int kNoGrade = 6; // the comparison died before it came to a grade

struct InputFile {
    std::string path;         // as given on the command line
    const PF *file = nullptr; // its records; null where there are none
    int read_result = 0;      // ReadResult
    bool was_read = false;    // false: the comparison died before it had read this file
    int format = 0;           // DataFormat
    std::int64_t bytes = -1;  // size; -1 where it is not known
    std::string sha256;       // in lower-case hexadecimal; empty where the file cannot be read
    std::array<std::size_t, kAnalysisCount> results = {}; // as FileRead
};

// A finding as it is reported. Its records live until the process ends.
struct Entry {
    Finding finding;           // its areas are only counted: see below
    std::string key;           // the same from run to run, and no other finding of the run has it
    std::int64_t sequence = 0; // place in the transcript among all findings, from 0
    // Of a transient pair that fails: golden and regression area of each interval that was compared, of the
    // first max_figures pairs, worst first; empty for the others.
    std::vector<double> golden_areas;
    std::vector<double> regression_areas;
    double interval = 0.0; // width of an interval in seconds; area j ends at j * interval
};

struct Counts {
    std::int64_t pairs = 0;       // judged, passing ones too
    std::int64_t failing = 0;     // of these
    std::int64_t missing = 0;     // findings about what one file lacks
    std::int64_t differences = 0; // units, formats, titles ...
    std::int64_t unjudged = 0;    // of all findings, those without bearing on the grade
};

// What the comparison went by; unknown where it died before it began.
struct Options {
    std::vector<std::string> arguments; // for tresk, without the files
    double abstol = 0.0;
    double reltol = 0.0;
    std::string mode; // default, Aonly, Ronly, AorR, AandR
    bool desert = false;
    int pem = 0;
    int nem = 0;
};

struct Result {
    InputFile golden;
    InputFile regression;
    Options options;
    int grade = kNoGrade; // 0 to 5, or kNoGrade
    unsigned status = 0;  // ExitBit set of all findings
    unsigned masked = 0;  // what the masks left of it
    unsigned hidden = 0;  // bits of masked whose own grade would be worse than the grade that was given
    std::string died;     // why there is no grade; empty otherwise
    Counts counts;
    std::vector<Entry> findings; // worst first: see worse()
    // Coefficients and roots that pass, beside others of the same signal or block that fail; in their order.
    std::vector<Finding> passing_beside;
    std::int64_t truncated = 0; // findings beyond the most that are kept
    double seconds = 0.0;       // of the comparison, wall clock
};

} // namespace report

#endif
