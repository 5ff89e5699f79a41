// SPDX-License-Identifier: MIT
#include "raw2punch/plot_kind.h"

#include "raw2punch/text_tools.h"

namespace
{

struct NamedKind {
    std::string_view name; // in lower case, what the name of the plot holds
    Analysis analysis;
    const char *sort = "";
};

// The first that fits counts.
constexpr NamedKind kNamedKinds[] = {
    {"distortion - 2nd harmonic", Analysis::DISTO, "HD2"},
    {"distortion - 3rd harmonic", Analysis::DISTO, "HD3"},
    {"distortion - im: f1+f2", Analysis::DISTO, "SIM2"},
    {"distortion - im: f1-f2", Analysis::DISTO, "DIM2"},
    {"distortion - im: 2f1-f2", Analysis::DISTO, "DIM3"},
    {"frequency domain periodic steady state", Analysis::FOUR},
    {"periodic steady state", Analysis::PSS},
    {"integrated noise", Analysis::MR, "integrated noise"},
    {"transfer function", Analysis::MR, "transfer function"},
    {"sensitivity", Analysis::MR, "sensitivity"},
    {"noise", Analysis::NOISE},
    {"pole-zero", Analysis::PZ},
    {"operating point", Analysis::OP},
    {"dc transfer", Analysis::DC},
    {"dc analysis", Analysis::DC},
    {"ac analysis", Analysis::AC},
    {"sp analysis", Analysis::AC},
    {"s-parameter", Analysis::AC},
    {"transient", Analysis::TR},
    {"spectrum", Analysis::FOUR},
    {"spectral density", Analysis::FOUR},
    {"psd", Analysis::FOUR},
    {"fourier", Analysis::FOUR},
    {"fft", Analysis::FOUR},
};

struct AnalysisWord {
    std::string_view word;
    Analysis analysis;
};

constexpr AnalysisWord kWords[] = {
    {"op", Analysis::OP},       {"dc", Analysis::DC},        {"ac", Analysis::AC}, {"tr", Analysis::TR},
    {"noise", Analysis::NOISE}, {"four", Analysis::FOUR},    {"pz", Analysis::PZ}, {"pss", Analysis::PSS},
    {"mr", Analysis::MR},       {"none", Analysis::SKIPPED},
};

} // namespace

PlotKind kind_of_plot(std::string_view name)
{
    const std::string lower = lower_case(name);
    for (const NamedKind &kind : kNamedKinds) {
        if (lower.find(kind.name) != std::string_view::npos) {
            return {kind.analysis, kind.sort};
        }
    }
    return {};
}

bool analysis_of_word(std::string_view word, Analysis &analysis)
{
    const std::string lower = lower_case(word);
    for (const AnalysisWord &known : kWords) {
        if (known.word == lower) {
            analysis = known.analysis;
            return true;
        }
    }
    return false;
}

const char *header_word(Analysis analysis)
{
    switch (analysis) {
    case Analysis::OP:
        return "OP";
    case Analysis::DC:
        return "DC";
    case Analysis::TR:
    case Analysis::FOUR:
        return "TR";
    case Analysis::NOISE:
        return "NOISE";
    case Analysis::PZ:
        return "PZ";
    case Analysis::PSS:
        return "PSS";
    case Analysis::MR:
        return "MR";
    default:
        return "AC";
    }
}

bool is_swept(Analysis analysis)
{
    return analysis != Analysis::OP && analysis != Analysis::PZ && analysis != Analysis::MR;
}
