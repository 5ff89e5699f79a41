// SPDX-License-Identifier: MIT
#include "report/tune_print.h"

#include "report/knob_options.h"
#include "report/text.h"

#include <cmath>
#include <cstdio>

namespace report
{

std::string settings_text(const TuneResult &result)
{
    const std::string mode = result.mode == "default" ? "default mode" : "-" + result.mode;
    return mode + ", -a " + number_text(result.abstol) + ", -r " + number_text(result.reltol);
}

std::string share_text(const Tuned &tuned)
{
    const std::optional<double> value = tuned.fails.smallest_passing();
    const double share = value ? tuned.fails.share_at(*value) : 0.0;
    if (!(share >= kLargeShare)) {
        return {};
    }
    char text[64];
    if (!std::isfinite(share) || share > 1e6) {
        return "far more than the value";
    }
    std::snprintf(text, sizeof text, "%.0f %% of the value", share * 100.0);
    return text;
}

void print_steps(Knob knob, const std::vector<Step> &steps, std::size_t all, const char *what)
{
    for (const Step &step : steps) {
        std::printf("  %9s %-12s %zu of %zu %s", knob_text(knob), step.number.c_str(), step.passing, all,
                    what);
        if (step.unjudged > 0) {
            std::printf("; half of the value or more in %zu", step.unjudged);
        }
        std::printf("\n");
    }
}

} // namespace report
