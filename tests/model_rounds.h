// SPDX-License-Identifier: MIT
// Rounds of random results: what a listener writes of them to the file that it is made with, against a plain
// judgement of the same results.
#ifndef TRESK_TESTS_MODEL_ROUNDS_H
#define TRESK_TESTS_MODEL_ROUNDS_H

#include "listening.h"
#include "model_judge.h"
#include "model_results.h"
#include "model_speller.h"

#include <filesystem>
#include <functional>
#include <gtest/gtest.h>

// What a recorder should have written, by the plain judgement.
using Expectation = std::function<std::string(const Judge &)>;

// Compares a pair of random files and what is heard of it with the plain judgement.
template <typename Recorder>
void run_round(unsigned seed, const std::string &folder, const Expectation &expected)
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
    EXPECT_EQ(read_file(folder + "/heard"), expected(judge));
    if (testing::Test::HasFailure()) {
        FAIL() << "Seed " << seed << "; kept in " << folder << ":\nKORSIM3_REVERSE_BYTES=" << big_endian
               << " tresk " << testing::PrintToString(arguments);
    }
}

template <typename Recorder> void run_rounds(const Expectation &expected)
{
    const std::string folder = make_folder();
    for (unsigned seed = 0; seed < 300; ++seed) {
        ASSERT_NO_FATAL_FAILURE(run_round<Recorder>(seed, folder, expected));
    }
    std::filesystem::remove_all(folder);
}

#endif
