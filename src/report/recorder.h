// SPDX-License-Identifier: MIT
// Listens to a comparison and leaves its result. Memory is bounded whatever the files hold: by the findings
// that are kept, and by the areas of those that get a figure.
#ifndef TRESK_REPORT_RECORDER_H
#define TRESK_REPORT_RECORDER_H

#include "report/order.h"
#include "report/result.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace report
{

struct RecorderLimits {
    std::size_t findings = 100000; // kept, the worst ones
    std::size_t figures = 50;      // transient pairs whose areas are kept, the worst ones
};

class Recorder : public Listener
{
  public:
    explicit Recorder(const RecorderLimits &limits);

    // Called with the result so far when the settings of the run are known, when a file has been read, and
    // with the grade: what is left of a comparison that dies later.
    std::function<void(const Result &)> on_progress;

    void started(const RunStart &start) override;
    void file_read(const FileRead &read) override;
    void rerun_pair(const RERUNform &ref, const RERUNform &cmp) override;
    void modify_pair(int rerun, const MODIFYform &ref, const MODIFYform &cmp) override;
    void finding(const Finding &finding) override;
    void passed(const Finding &finding) override;
    void ended(const RunEnd &end) override;

    // The result with findings in their order and keys that differ. Once, after the run.
    Result take_result();

  private:
    // A finding of result_.findings, which are in no order until the end.
    struct Kept {
        Rank rank;
        std::size_t slot;
    };
    struct KeptAreas {
        Rank rank;
        std::vector<double> golden;
        std::vector<double> regression;
        double interval;
    };

    void count(const Finding &finding);
    void keep(const Finding &finding, const Rank &rank);
    void keep_areas(const Areas &areas, const Rank &rank);
    void keep_beside(const Finding &finding, bool fails);
    void close_beside();
    void number_keys();
    void sort_entries();
    void fill_areas();
    void report_progress();

    RecorderLimits limits_;
    Result result_;
    std::int64_t sequence_ = 0;
    std::vector<Kept> kept_;       // a heap, the least bad one first
    std::vector<KeptAreas> areas_; // the same
    // Coefficients of the signal, or roots of the modify, that the comparison is at.
    std::vector<Finding> beside_;
    bool beside_fails_ = false;
};

} // namespace report

#endif
