// SPDX-License-Identifier: MIT
// Random results, spelled at random in two files, one of them with changes. What a listener hears of
// their comparison must be what a plain judgement of the same results finds. Fourier results, poles and
// zeros and binary operating points are left to the golden cases, and so is the transcript.
#include "listening.h"
#include "model_judge.h"
#include "model_results.h"
#include "model_speller.h"

#include <filesystem>
#include <gtest/gtest.h>

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

// Compares a pair of random files and what is heard of it with the plain judgement.
void run_round(unsigned seed, const std::string &folder)
{
    Dice dice(seed);
    const Results ref = random_results(dice);
    Results cmp = ref;
    for (int changes = dice.below(6); changes > 0; --changes) {
        change(dice, cmp);
    }
    const Tolerances tolerances{dice.pick(Texts{"", "", "-Aonly", "-Ronly", "-AorR", "-AandR"}),
                                dice.pick(Texts{"0", "1e-12", "0.5"}), dice.pick(Texts{"0", "0.01", "0.25"})};
    const std::string binary = dice.pick(Texts{"", "BINARY", "BINARY_DBL"});
    const bool big_endian = dice.one_in(2);
    Speller ref_speller(dice, binary, big_endian);
    Speller cmp_speller(dice, binary, big_endian);
    std::ofstream(folder + "/ref.pun", std::ios::binary) << ref_speller.spelled(ref);
    std::ofstream(folder + "/cmp.pun", std::ios::binary) << cmp_speller.spelled(cmp);
    setenv("KORSIM3_REVERSE_BYTES", big_endian ? "1" : "0", 1);
    Recorder recorder(folder + "/heard");
    Texts arguments = {"ref.pun", "cmp.pun", "-a", tolerances.absolute, "-r", tolerances.relative};
    if (!tolerances.mode.empty()) {
        arguments.push_back(tolerances.mode);
    }
    const int code = run_listening(recorder, folder, arguments);
    Judge judge(tolerances);
    judge.compare(ref, cmp);
    judge.compare_formats(ref_speller.format(), cmp_speller.format());
    EXPECT_EQ(code, judge.grade());
    EXPECT_EQ(read_file(folder + "/heard"), text_of(judge.findings, judge.status, judge.grade()));
    if (testing::Test::HasFailure()) {
        FAIL() << "Seed " << seed << "; kept in " << folder << ":\nKORSIM3_REVERSE_BYTES=" << big_endian
               << " tresk " << testing::PrintToString(arguments);
    }
}

TEST(Model, RandomResultsAreJudgedPlainly)
{
    const std::string folder = make_folder();
    for (unsigned seed = 0; seed < 300; ++seed) {
        ASSERT_NO_FATAL_FAILURE(run_round(seed, folder));
    }
    std::filesystem::remove_all(folder);
}

} // namespace
