// SPDX-License-Identifier: MIT
// What a plot becomes in a punch file.
#ifndef RAW2PUNCH_PLOT_KIND_H
#define RAW2PUNCH_PLOT_KIND_H

#include <string>
#include <string_view>

enum class Analysis {
    NONE, // no place in a punch file
    OP,
    DC,
    AC,
    TR,
    NOISE,
    FOUR, // a transient analysis over the frequency
    PZ,
    PSS,
    MR,    // values without a sweep: measure results and their like
    DISTO, // an AC analysis whose signals have distortion units
    SKIPPED
};

struct PlotKind {
    Analysis analysis = Analysis::NONE;
    std::string sort; // of DISTO the unit of the signals ("HD2"), of MR where the values come from

    bool operator==(const PlotKind &other) const
    {
        return analysis == other.analysis && sort == other.sort;
    }
};

// The kind of a plot of that name.
PlotKind kind_of_plot(std::string_view name);

// The analysis of that word ("TR", "none"), in any case. False if there is none.
bool analysis_of_word(std::string_view word, Analysis &analysis);

// The word of a header ("TR" for FOUR, "AC" for DISTO).
const char *header_word(Analysis analysis);

// Whether a plot of the kind has points in the order of a sweep variable, its first one.
bool is_swept(Analysis analysis);

#endif
