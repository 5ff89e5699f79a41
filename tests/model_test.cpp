// SPDX-License-Identifier: MIT
// Random results, spelled at random in two files, one of them with changes. What the program tells of
// them must be what a plain judgement of the same results tells. Fourier results, poles and zeros and
// binary operating points are left to the golden cases.
#include "model_judge.h"
#include "model_results.h"
#include "model_speller.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace
{

// The lines of a transcript that tell a finding; of a result line the name, the count and the absolute
// error.
Texts findings_of(const std::string &transcript)
{
    Texts found;
    std::istringstream lines(transcript.substr(std::min(transcript.size(), transcript.find("Done reading"))));
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        std::string first;
        std::string second;
        std::string third;
        words >> first >> second >> third;
        if (first != "Missing" && line.find(" [") != std::string::npos) {
            found.push_back(first + " " + second);
            found.back() += second.find('/') != std::string::npos ? " " + third : "";
        } else if (first == "**" || first == "Warning" || first == "Missing" || first == "Found" ||
                   first == "These" || first == "No" || first == "Run" || second == "for" ||
                   second == "points") {
            found.push_back(line);
        } else if (first.substr(0, 5) == "ERROR") {
            found.push_back(line.substr(line.find_first_not_of(' ')));
        }
    }
    return found;
}

// Runs the program on a pair of random files and compares what it tells with the plain judgement.
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
    const std::string byte_order = std::string("KORSIM3_REVERSE_BYTES=") + (big_endian ? "1" : "0");
    const std::string arguments =
        "ref.pun cmp.pun " + tolerances.mode + " -a " + tolerances.absolute + " -r " + tolerances.relative;
    const int code = run_program(folder, byte_order, arguments);
    const std::string told = read_file(folder + "/transcript");
    Judge judge(tolerances);
    judge.compare(ref, cmp);
    judge.compare_formats(ref_speller.format(), cmp_speller.format());
    EXPECT_EQ(findings_of(told), judge.findings);
    EXPECT_EQ(code, judge.grade());
    EXPECT_EQ(told.substr(std::min(told.size(), told.find("\n Comparison result:"))), judge.result());
    if (testing::Test::HasFailure()) {
        FAIL() << "Seed " << seed << "; kept in " << folder << ":\n" << byte_order << " tresk " << arguments;
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
