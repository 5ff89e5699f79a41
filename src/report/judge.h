// SPDX-License-Identifier: MIT
// The tolerance test of tresk, asked about tolerances other than those of the run. What it says is all that
// tuning knows of the rules.
#ifndef TRESK_REPORT_JUDGE_H
#define TRESK_REPORT_JUDGE_H

#include "report/fail_set.h"

#include <cstddef>

namespace report
{

// What can be tuned.
enum class Knob {
    ABSOLUTE,      // -a, with -r and the mode as they are
    RELATIVE,      // -r, with -a and the mode as they are
    RELATIVE_ONLY, // -r in the mode -Ronly
};
constexpr Knob kKnobs[] = {Knob::ABSOLUTE, Knob::RELATIVE, Knob::RELATIVE_ONLY};
constexpr std::size_t kKnobCount = 3;

// The errors of a pair of values.
struct Errors {
    double level;
    double abserr;
    double relerr;
    bool level_is_abstol; // areas, coefficients and roots: the level is -a itself, whatever it is
};

// Why no value of a knob makes a pair pass.
enum class WhyNot {
    NONE,
    NAN_VALUE,
    POINTS_MISSING,
    HALF_PLANE,
    INFINITE,   // the error
    NOT_USED,   // the mode does not look at this tolerance
    ABSOLUTELY, // areas, coefficients and roots
    NEGATIVE,   // values: judged absolutely in the default mode
    SMALL,      // so are those up to -a
};

// "a value is not a number" ...
const char *reason_text(WhyNot why);

// Saves all that the tolerance test reads and writes, and puts it back at the end: a judgement in the middle
// of a comparison leaves no trace.
class Judge
{
  public:
    Judge();
    Judge(const Judge &) = delete;
    Judge &operator=(const Judge &) = delete;
    ~Judge();

    // Adds the values at which a pair fails. Returns whether these are all there are.
    bool add_failures(Knob knob, const Errors &errors, FailSet &to) const;

    // For a pair that no value helps.
    WhyNot why_not(Knob knob, const Errors &errors) const;

  private:
    bool passes(Knob knob, double value, const Errors &errors) const;

    struct Settings {
        double abstol;
        double reltol;
        int only_absolute;
        int only_relative;
        int either;
        int both;
        int default_checking;
        int nan_flag;
    };
    static void set(const Settings &settings);

    Settings run_;
};

} // namespace report

#endif
