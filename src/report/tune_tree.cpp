// SPDX-License-Identifier: MIT
#include "report/kit_tree.h"
#include "report/knob_options.h"
#include "report/plain_file.h"
#include "report/result.h"
#include "report/text.h"
#include "report/tune.h"
#include "report/tune_print.h"
#include "report/words.h"
#include "report/workers.h"

#include <algorithm>
#include <cstdio>

namespace report
{

namespace
{

// What is known of one pair of the tree.
struct TreeTuning {
    bool has_grade = false;
    TuneResult result;
    // Grade with the proposal for each knob; kNoGrade where there is none.
    std::array<int, kKnobCount> confirmed = {kNoGrade, kNoGrade, kNoGrade};
};

// Compares a pair, and once more with each proposal. Runs in a process that is shared by many pairs.
TreeTuning tune_one(const KitPair &pair, int digits)
{
    const PlainFile golden(pair.golden);
    const PlainFile regression(pair.regression);
    const auto with_files = [&](std::vector<std::string> options) {
        options.insert(options.begin(), {golden.path(), regression.path()});
        return options;
    };
    TreeTuning tuning;
    tuning.result = tune_comparison(with_files(pair.options));
    tuning.has_grade = true;
    for (std::size_t i = 0; i < kKnobCount && tuning.result.failing > 0; ++i) {
        const std::string number = proposal(tuning.result.all[i].fails, digits);
        if (!number.empty() && !turn_knob(pair.own, kKnobs[i])) {
            tuning.confirmed[i] = confirm(with_files(with_knob(pair.options, kKnobs[i], number))).grade;
        }
    }
    tuning.result.signals.clear(); // the hopeless ones are counted
    return tuning;
}

class Tree
{
  public:
    Tree(const KitTree &tree, int digits) : tree_(tree), digits_(digits)
    {
    }

    int run()
    {
        compare();
        print_head();
        std::printf("\nHow many pairs pass with these options for all, those that are given to single ones "
                    "kept:\n");
        for (std::size_t i = 0; i < kKnobCount; ++i) {
            print_knob(i);
        }
        print_others();
        return no_grade_ > 0 ? kNoGrade : hopeless_ > 0 ? 1 : 0;
    }

  private:
    void compare();
    void print_head() const;
    void print_knob(std::size_t knob) const;
    void print_others() const;

    const KitTree &tree_;
    int digits_;
    std::vector<TreeTuning> pairs_;
    std::size_t passing_ = 0;
    std::size_t failing_ = 0; // by a tolerance
    std::size_t no_grade_ = 0;
    std::size_t hopeless_ = 0; // pairs with a signal that no tolerance helps
};

void Tree::compare()
{
    Progress progress("pairs", tree_.pairs.size());
    const auto work = [this](std::size_t number) {
        const TreeTuning tuning = tune_one(tree_.pairs[number], digits_);
        std::string text;
        for (const int grade : tuning.confirmed) {
            text += static_cast<char>('0' + grade);
        }
        return text + packed(tuning.result);
    };
    for (const std::string &answer : share_out(tree_.pairs.size(), work, progress)) {
        TreeTuning tuning;
        tuning.has_grade = answer.size() > kKnobCount;
        if (tuning.has_grade) {
            for (std::size_t i = 0; i < kKnobCount; ++i) {
                tuning.confirmed[i] = answer[i] - '0';
            }
            tuning.result = unpacked(answer.substr(kKnobCount));
        }
        no_grade_ += tuning.has_grade ? 0U : 1U;
        passing_ += tuning.has_grade && tuning.result.grade == 0 ? 1U : 0U;
        failing_ += tuning.result.failing > 0 ? 1U : 0U;
        hopeless_ += tuning.result.hopeless > 0 ? 1U : 0U;
        pairs_.push_back(std::move(tuning));
    }
}

void Tree::print_head() const
{
    std::printf("%s: %zu pairs, %zu pass, %zu have signals that fail, %zu came to no grade\n",
                terminal_line(tree_.out).c_str(), pairs_.size(), passing_, failing_, no_grade_);
    for (std::size_t i = 0; i < pairs_.size(); ++i) {
        if (!pairs_[i].has_grade) {
            std::printf("  no grade: %s\n", terminal_line(tree_.pairs[i].path).c_str());
        }
    }
}

// A pair counts where it passes now and the judge finds no value of it that would fail; or where a whole
// comparison has passed with its own proposal.
void Tree::print_knob(std::size_t knob) const
{
    static const FailSet kNone;
    std::vector<const FailSet *> passing;
    std::vector<const FailSet *> failing;
    for (std::size_t i = 0; i < pairs_.size(); ++i) {
        const TreeTuning &pair = pairs_[i];
        if (!pair.has_grade) {
            continue;
        }
        const bool keeps_own = turn_knob(tree_.pairs[i].own, kKnobs[knob]);
        if (pair.result.grade == 0) {
            passing.push_back(keeps_own ? &kNone : &pair.result.all[knob].fails);
        } else if (!keeps_own && pair.confirmed[knob] == 0) {
            failing.push_back(&pair.result.all[knob].fails);
        }
    }
    print_steps(kKnobs[knob], staircase(kKnobs[knob], failing, passing, digits_, kMostSteps), pairs_.size(),
                "pairs");
}

// Pairs that no tolerance makes pass.
void Tree::print_others() const
{
    constexpr std::size_t kMost = 100;
    std::size_t count = 0;
    for (std::size_t i = 0; i < pairs_.size(); ++i) {
        const TreeTuning &pair = pairs_[i];
        const auto &confirmed = pair.confirmed;
        if (!pair.has_grade || pair.result.grade == 0 ||
            std::find(confirmed.begin(), confirmed.end(), 0) != confirmed.end()) {
            continue;
        }
        if (count++ == 0) {
            std::printf("\nNot to be had by a tolerance for all:\n");
        }
        if (count > kMost) {
            continue;
        }
        const WhyNot why = pair.result.all[0].why;
        const char *reason =
            pair.result.hopeless > 0 ? reason_text(why) : "something else differs or is missing";
        std::printf("  %-8s %s: %s\n", std::string(grade_word(pair.result.grade)).c_str(),
                    terminal_line(tree_.pairs[i].path).c_str(), reason);
    }
    if (count > kMost) {
        std::printf("  and %zu more\n", count - kMost);
    }
}

} // namespace

int tune_tree(const TuneOptions &options)
{
    if (!options.arguments.options.empty()) {
        throw WrongCall("the second punch file is missing; a folder of the kit has its own options");
    }
    const KitTree tree = read_kit_tree(options.arguments.golden);
    return Tree(tree, options.digits).run();
}

} // namespace report
