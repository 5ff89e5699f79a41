// SPDX-License-Identifier: MIT
#include "report/judge.h"

#include "compare/tolerance.h"

#include <cmath>
#include <cstddef>
#include <utility>

namespace report
{

const char *reason_text(WhyNot why)
{
    switch (why) {
    case WhyNot::NONE:
        return "";
    case WhyNot::NAN_VALUE:
        return "a value is not a number";
    case WhyNot::POINTS_MISSING:
        return "points are missing";
    case WhyNot::HALF_PLANE:
        return "a root is in the other half-plane";
    case WhyNot::INFINITE:
        return "an error is infinite";
    case WhyNot::NOT_USED:
        return "the mode does not look at it";
    case WhyNot::ABSOLUTELY:
        return "areas, coefficients and roots are judged absolutely";
    case WhyNot::NEGATIVE:
        return "negative values are judged absolutely";
    case WhyNot::SMALL:
        return "values up to -a are judged absolutely";
    }
    return "";
}

Judge::Judge() : run_{glAbstol, glReltol, glAonly, glRonly, glAorR, glAandR, glDefaultChecking, glNANflag}
{
}

Judge::~Judge()
{
    set(run_);
}

void Judge::set(const Settings &settings)
{
    glAbstol = settings.abstol;
    glReltol = settings.reltol;
    glAonly = settings.only_absolute;
    glRonly = settings.only_relative;
    glAorR = settings.either;
    glAandR = settings.both;
    glDefaultChecking = settings.default_checking;
    glNANflag = settings.nan_flag;
}

bool Judge::passes(Knob knob, double value, const Errors &errors) const
{
    Settings settings = run_;
    if (knob == Knob::RELATIVE_ONLY) {
        settings.only_absolute = settings.either = settings.both = settings.default_checking = 0;
        settings.only_relative = 1;
    }
    (knob == Knob::ABSOLUTE ? settings.abstol : settings.reltol) = value;
    set(settings);
    const double level = errors.level_is_abstol ? settings.abstol : errors.level;
    return judge_errors(level, errors.abserr, errors.relerr) == PASSES;
}

// The verdict on a pair changes at its errors and its level only, and what it is there holds up to the next
// of them.
bool Judge::add_failures(Knob knob, const Errors &errors, FailSet &to) const
{
    double places[3] = {0.0};
    std::size_t count = 1;
    const auto add_place = [&](double value) {
        if (value > 0.0 && std::isfinite(value)) { // an infinite tolerance would judge nothing
            places[count++] = value;               // at most twice
        }
    };
    if (knob == Knob::ABSOLUTE) {
        add_place(errors.abserr);
        add_place(errors.level_is_abstol ? 0.0 : errors.level);
    } else {
        add_place(errors.relerr);
    }
    if (places[2] != 0.0 && places[2] < places[1]) {
        std::swap(places[1], places[2]);
    }
    bool fails_always = true;
    for (std::size_t i = 0; i < count; ++i) {
        double end = FailSet::kNever;
        if (i + 1 < count) {
            end = places[i + 1];
        }
        if (end == places[i]) {
            continue;
        }
        if (passes(knob, places[i], errors)) {
            fails_always = false;
        } else {
            const bool ends_at_error = knob != Knob::ABSOLUTE || end == errors.abserr;
            to.add({places[i], end, ends_at_error ? errors.relerr : 1.0}); // 1: it ends at the value itself
        }
    }
    return fails_always;
}

WhyNot Judge::why_not(Knob knob, const Errors &errors) const
{
    if (errors.level != errors.level || errors.abserr != errors.abserr || errors.relerr != errors.relerr) {
        return WhyNot::NAN_VALUE;
    }
    // Pairs that would pass at 2 and fail at 0.5.
    constexpr double kFar = FailSet::kNever;
    constexpr Errors kAbsolute = {1.0, 1.0, kFar, true};
    constexpr Errors kRelative = {kFar, kFar, 1.0, false};
    const Errors &probe = knob == Knob::ABSOLUTE ? kAbsolute : kRelative;
    if (!passes(knob, 2.0, probe) || passes(knob, 0.5, probe)) {
        return WhyNot::NOT_USED;
    }
    const double error = knob == Knob::ABSOLUTE ? errors.abserr : errors.relerr;
    if (knob == Knob::RELATIVE && run_.default_checking != 0) {
        if (errors.level_is_abstol) {
            return WhyNot::ABSOLUTELY;
        }
        if (!(errors.level > run_.abstol)) {
            return errors.level < 0.0 ? WhyNot::NEGATIVE : WhyNot::SMALL;
        }
    }
    return std::isfinite(error) ? WhyNot::NOT_USED : WhyNot::INFINITE;
}

} // namespace report
