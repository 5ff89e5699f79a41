// SPDX-License-Identifier: MIT
// Random results, spelled at random in two files, one of them with changes. What a listener hears of
// their comparison must be what a plain judgement of the same results finds. Fourier results, poles and
// zeros and binary operating points are left to the golden cases, and so is the transcript.
#include "model_rounds.h"

namespace
{

// Writes what it hears to a file, in any order, and how the run ended.
class Recorder : public Listener
{
  public:
    explicit Recorder(const std::string &path) : file_(path)
    {
    }
    void file_read(const FileRead &) override
    {
    }
    void rerun_pair(const RERUNform &, const RERUNform &) override
    {
    }
    void modify_pair(int, const MODIFYform &, const MODIFYform &) override
    {
    }
    void finding(const Finding &finding) override
    {
        findings_.insert(text_of(finding));
    }
    void passed(const Finding &finding) override
    {
        findings_.insert(text_of(finding));
    }
    void ended(const RunEnd &end) override
    {
        file_ << text_of(findings_, end.status, end.grade) << std::flush;
    }

  private:
    std::ofstream file_;
    std::multiset<std::string> findings_;
};

TEST(Model, RandomResultsAreJudgedPlainly)
{
    run_rounds<Recorder>(
        [](const Judge &judge) { return text_of(judge.findings, judge.status, judge.grade()); });
}

} // namespace
