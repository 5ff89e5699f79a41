// SPDX-License-Identifier: MIT
// Listens to a comparison and leaves the tolerances at which its pairs fail.
#ifndef TRESK_REPORT_TUNER_H
#define TRESK_REPORT_TUNER_H

#include "compare/listener.h"
#include "report/judge.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace report
{

// One knob of one signal, or of all of them.
struct Tuned {
    FailSet fails;
    WhyNot why = WhyNot::NONE; // of what no value helps, the first reason met; NAN_VALUE before all others
};

using TunedKnobs = std::array<Tuned, kKnobCount>; // in the order of kKnobs

// A signal that fails, with all its points, coefficients and times; or one value or root.
struct TunedSignal {
    std::string key; // as keys.h has it, of the first finding about it
    TunedKnobs knobs;
};

struct TuneResult {
    double abstol = 0.0; // of the run, as all up to failing
    double reltol = 0.0;
    std::string mode;
    int grade = 0;
    unsigned status = 0;
    std::int64_t failing = 0;         // findings that raise the bits of tolerances or of no numbers
    std::vector<TunedSignal> signals; // those that fail, in the order of the transcript
    std::int64_t left_out = 0;        // signals that fail beyond the most that are kept
    std::int64_t hopeless = 0;        // signals that no knob helps
    TunedKnobs all;                   // of all signals, also those that pass
};

// Counts the findings that raise the bits of tolerances or of no numbers.
class FailureCounter : public Listener
{
  public:
    void file_read(const FileRead &read) override;
    void rerun_pair(const RERUNform &ref, const RERUNform &cmp) override;
    void modify_pair(int rerun, const MODIFYform &ref, const MODIFYform &cmp) override;
    void finding(const Finding &finding) override;
    void passed(const Finding &finding) override;
    void ended(const RunEnd &end) override;

    std::int64_t failing() const
    {
        return failing_;
    }
    int grade() const
    {
        return grade_;
    }

  private:
    std::int64_t failing_ = 0;
    int grade_ = 0;
};

class Tuner : public FailureCounter
{
  public:
    void started(const RunStart &start) override;
    void modify_pair(int rerun, const MODIFYform &ref, const MODIFYform &cmp) override;
    void finding(const Finding &finding) override;
    void passed(const Finding &finding) override;
    void ended(const RunEnd &end) override;

    // Of the run that has ended.
    const TuneResult &result() const
    {
        return result_;
    }

  private:
    void take(const Finding &finding);
    void take_errors(const Judge &judge, const Errors &errors);
    void block(WhyNot why);
    void open(const Finding &finding);
    void close();

    TuneResult result_;
    TunedSignal signal_; // the one that the comparison is at
    const Wform *wform_ = nullptr;
    bool is_open_ = false;
    bool fails_ = false;
};

} // namespace report

#endif
