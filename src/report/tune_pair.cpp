// SPDX-License-Identifier: MIT
#include "report/knob_options.h"
#include "report/progress.h"
#include "report/text.h"
#include "report/tresk_run.h"
#include "report/tune.h"
#include "report/tune_print.h"
#include "report/words.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace report
{

namespace
{

// Marks what would hardly be judged any more.
std::string shares_text(const TunedKnobs &knobs)
{
    std::string text;
    for (std::size_t i = 0; i < kKnobCount; ++i) {
        const std::string share = share_text(knobs[i]);
        if (!share.empty()) {
            text += std::string("; ") + knob_text(kKnobs[i]) + " is " + share;
        }
    }
    return text;
}

// A pair of files and what was found out about it.
class PairTuning
{
  public:
    explicit PairTuning(const TuneOptions &options)
        : options_(options), progress_("comparisons", kKnobCount + 1),
          result_(tune_comparison(with_files(options.arguments.options)))
    {
    }

    int run()
    {
        print_head();
        if (result_.failing == 0) {
            return 0;
        }
        print_signals();
        for (std::size_t i = 0; i < kKnobCount; ++i) {
            propose(i);
        }
        print_all_steps();
        return result_.hopeless > 0 ? 1 : 0;
    }

  private:
    std::vector<std::string> with_files(std::vector<std::string> options) const
    {
        options.insert(options.begin(), {options_.arguments.golden, options_.arguments.regression});
        return options;
    }
    void print_head() const;
    std::string cell(const Tuned &tuned);
    void print_signals();
    void propose(std::size_t knob);
    void print_all_steps() const;

    const TuneOptions &options_;
    Progress progress_;
    TuneResult result_;
    std::vector<WhyNot> reasons_; // that the table refers to
    std::size_t compared_ = 1;
};

void PairTuning::print_head() const
{
    std::printf("%s against %s: %s with %s\n", terminal_line(options_.arguments.regression).c_str(),
                terminal_line(options_.arguments.golden).c_str(),
                std::string(grade_word(result_.grade)).c_str(), settings_text(result_).c_str());
    const std::size_t all = result_.signals.size() + static_cast<std::size_t>(result_.left_out);
    std::printf(all == 1 ? "%zu signal fails.\n" : "%zu signals fail.\n", all);
}

// The smallest value, or the number of the reason why there is none.
std::string PairTuning::cell(const Tuned &tuned)
{
    const std::optional<double> value = tuned.fails.smallest_passing();
    if (value) {
        return number_text(*value);
    }
    auto found = std::find(reasons_.begin(), reasons_.end(), tuned.why);
    if (found == reasons_.end()) {
        found = reasons_.insert(reasons_.end(), tuned.why);
    }
    return "none (" + std::to_string(found - reasons_.begin() + 1) + ")";
}

void PairTuning::print_signals()
{
    std::printf("\nThe smallest tolerance that passes, all else as it is:\n");
    std::printf("  %-24s%-24s%-24s%s\n", "-a", "-r", "-Ronly -r", "signal");
    for (const TunedSignal &signal : result_.signals) {
        std::string line = "  ";
        for (const Tuned &tuned : signal.knobs) {
            std::string text = cell(tuned);
            text.resize(std::max<std::size_t>(24, text.size() + 1), ' ');
            line += text;
        }
        std::printf("%s%s%s\n", line.c_str(), terminal_line(signal.key).c_str(),
                    shares_text(signal.knobs).c_str());
    }
    if (result_.left_out > 0) {
        std::printf("  and %lld more\n", static_cast<long long>(result_.left_out));
    }
    for (std::size_t i = 0; i < reasons_.size(); ++i) {
        std::printf("  (%zu) %s\n", i + 1, reason_text(reasons_[i]));
    }
    std::printf("\nFor all of them, rounded up and compared once more:\n");
}

// Prints what tresk says to the proposal for a knob.
void PairTuning::propose(std::size_t knob)
{
    const Tuned &tuned = result_.all[knob];
    const std::string number = proposal(tuned.fails, options_.digits);
    if (number.empty()) {
        std::printf("  %9s none: %s\n", knob_text(kKnobs[knob]), reason_text(tuned.why));
        return;
    }
    progress_.show(compared_++);
    const Confirmation told =
        confirm(with_files(with_knob(options_.arguments.options, kKnobs[knob], number)));
    progress_.wipe();
    if (told.failing > 0) {
        throw NoGrade("a file has changed: compare again");
    }
    std::printf("  %9s %-12s %s", knob_text(kKnobs[knob]), number.c_str(),
                std::string(grade_word(told.grade)).c_str());
    const double tolerance = std::strtod(number.c_str(), nullptr);
    const auto unjudged =
        std::count_if(result_.signals.begin(), result_.signals.end(), [&](const TunedSignal &signal) {
            return hardly_judges(kKnobs[knob], tolerance, signal.knobs[knob].fails);
        });
    if (unjudged > 0) {
        std::printf("; this is half of the value or more of %ld of the %zu signals",
                    static_cast<long>(unjudged), result_.signals.size());
    }
    std::printf("\n");
}

void PairTuning::print_all_steps() const
{
    if (result_.signals.size() < 2) {
        return;
    }
    std::printf("\nHow many pass:\n");
    for (std::size_t i = 0; i < kKnobCount; ++i) {
        std::vector<const FailSet *> sets;
        for (const TunedSignal &signal : result_.signals) {
            sets.push_back(&signal.knobs[i].fails);
        }
        print_steps(kKnobs[i], staircase(kKnobs[i], sets, {}, options_.digits, kMostSteps), sets.size(),
                    "signals");
    }
}

} // namespace

int tune_pair(const TuneOptions &options)
{
    return PairTuning(options).run();
}

} // namespace report
