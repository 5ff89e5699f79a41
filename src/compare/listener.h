// SPDX-License-Identifier: MIT
// The events of a comparison, for a program that wants more than the transcript. The transcript is
// written by the same functions whether or not somebody listens, and nobody else judges. tresk itself
// attaches no listener; nothing is collected then.
#ifndef TRESK_COMPARE_LISTENER_H
#define TRESK_COMPARE_LISTENER_H

#include "compare/finding.h"

#include <array>
#include <cstddef>

// What a comparison goes by, from the command line.
struct RunStart {
    double abstol = 0.0;
    double reltol = 0.0;
    const char *mode = ""; // "default", "Aonly", "Ronly", "AorR" or "AandR"
    bool desert = false;
    int pem = 0;
    int nem = 0;
};

struct FileRead {
    const PF *file = nullptr; // its name, data format and all records
    Side side = Side::NEITHER;
    int result = 0; // ReadResult
    // Waveforms, values, .FORCE statements and pole-zero blocks of the whole file, by AnalysisCode.
    std::array<std::size_t, kAnalysisCount> results = {};
};

struct RunEnd {
    unsigned status = 0; // ExitBit set of all findings
    int masked = 0;      // what the masks left of it
    int grade = 0;       // ExitGrade
};

// All records live until the process ends. A finding itself may be copied, but for its areas.
class Listener
{
  public:
    virtual ~Listener() = default;

    // Before anything is read.
    virtual void started(const RunStart &)
    {
    }

    virtual void file_read(const FileRead &read) = 0;

    // Reruns and modifies that are compared with each other, before what is found in them.
    virtual void rerun_pair(const RERUNform &ref, const RERUNform &cmp) = 0;
    virtual void modify_pair(int rerun, const MODIFYform &ref, const MODIFYform &cmp) = 0;

    // Everything that the transcript reports, in its order.
    virtual void finding(const Finding &finding) = 0;

    // A pair that was judged and passes, which the transcript does not mention.
    virtual void passed(const Finding &finding) = 0;

    virtual void ended(const RunEnd &end) = 0;
};

// Null unless a program attaches one before the run.
extern Listener *listener;

#endif
