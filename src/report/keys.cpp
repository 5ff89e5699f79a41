// SPDX-License-Identifier: MIT
#include "report/keys.h"

#include "read/codes.h"
#include "report/text.h"

namespace report
{

namespace
{

struct KindWords {
    FindingKind kind; // for the reader: the order is that of FindingKind
    std::string_view kind_word;
    std::string_view subject;
};

constexpr std::string_view kMissing = "missing";
constexpr std::string_view kDifference = "difference";

constexpr KindWords kKinds[] = {
    {FindingKind::VALUE, "value", ""},
    {FindingKind::SWEEP, "sweep", ""},
    {FindingKind::AREA, "area", ""},
    {FindingKind::SINGLE_VALUE, "single value", ""},
    {FindingKind::SINGLE_TIME, "single time", ""},
    {FindingKind::FEW_POINTS, "few points", ""},
    {FindingKind::COEFFICIENT, "coefficient", ""},
    {FindingKind::ROOT, "root", ""},
    {FindingKind::MISSING_SIGNAL, kMissing, "signal"},
    {FindingKind::MISSING_POINTS, kMissing, "points"},
    {FindingKind::MISSING_SOLUTION, kMissing, "solution"},
    {FindingKind::MISSING_STATEMENT, kMissing, "statement"},
    {FindingKind::MISSING_POLE_ZEROS, kMissing, "poles and zeros"},
    {FindingKind::MISSING_ROOT, kMissing, "root"},
    {FindingKind::MISSING_MODIFY, kMissing, "modify"},
    {FindingKind::MISSING_RERUN, kMissing, "rerun"},
    {FindingKind::X_UNITS, kDifference, "x units"},
    {FindingKind::Y_UNITS, kDifference, "y units"},
    {FindingKind::COEFFICIENT_COUNT, kDifference, "number of coefficients"},
    {FindingKind::FORCE_TSHIFT, kDifference, "time shift"},
    {FindingKind::FORCE_ANALYSIS, kDifference, "analysis of .FORCE"},
    {FindingKind::INPUT_PORT, kDifference, "input port"},
    {FindingKind::OUTPUT_PORT, kDifference, "output port"},
    {FindingKind::TRANSFER_TYPE, kDifference, "transfer type"},
    {FindingKind::PUNCH_TIME, kDifference, "time of poles and zeros"},
    {FindingKind::TEMPERATURE, kDifference, "temperature"},
    {FindingKind::DATA_FORMAT, kDifference, "data format"},
    {FindingKind::MIXED_FORMAT, kDifference, "mixed data formats"},
    {FindingKind::POINT_COUNT, kDifference, "number of points"},
    {FindingKind::TITLE, kDifference, "title"},
    {FindingKind::NEGATIVE_ERROR, kDifference, "negative error"},
    {FindingKind::EMPTY_INDC, kDifference, "empty .IN DC"},
};

constexpr bool are_in_order()
{
    int number = 0;
    for (const KindWords &words : kKinds) {
        if (static_cast<int>(words.kind) != number++) {
            return false;
        }
    }
    return number == static_cast<int>(FindingKind::EMPTY_INDC) + 1;
}
static_assert(are_in_order(), "a row for each FindingKind");

constexpr std::string_view kAnalyses[kAnalysisCount] = {
    "INOP", "INTR", "INPSS", "INDC1", "INDC2", "TR FORCE", "PSS FORCE", "AC",  "DISTO",  "NOISE", "PZ",
    "DC",   "TR",   "FOUR",  "OP",    "MR",    "PSS",      "PAC",       "PXF", "PNOISE", "XF",    "STB"};

std::string number_or(const char *letter, const std::optional<int> &number)
{
    return number ? letter + std::to_string(*number) : std::string();
}

} // namespace

std::string_view kind_word(FindingKind kind)
{
    return kKinds[static_cast<std::size_t>(kind)].kind_word;
}

std::string_view subject_word(FindingKind kind)
{
    return kKinds[static_cast<std::size_t>(kind)].subject;
}

std::string_view analysis_word(int code)
{
    return is_analysis(code) ? kAnalyses[code] : std::string_view();
}

std::string_view side_word(Side side)
{
    return side == Side::REFERENCE ? "golden" : side == Side::COMPARISON ? "regression" : "";
}

std::string key_of(const Finding &finding)
{
    const std::string place = number_or("r", finding.place.rerun) + number_or("m", finding.place.modify);
    const std::string_view analysis = analysis_word(finding.analysis);
    std::string key = place.empty() ? "-" : place;
    key += '/';
    key += analysis.empty() ? "-" : analysis;
    key += '/';
    key += kind_word(finding.kind);
    const std::string_view subject = subject_word(finding.kind);
    if (!subject.empty()) {
        key += ' ';
        key += subject;
        if (finding.side != Side::NEITHER) {
            key += " in ";
            key += side_word(finding.side);
        }
    }
    key += '/';
    if (finding.kind != FindingKind::MIXED_FORMAT) { // its name is a path, which may be another tomorrow
        key += clean_text(finding.name);
    }
    if (finding.place.force_time) {
        key += '@' + number_text(*finding.place.force_time);
    }
    if (finding.kind == FindingKind::COEFFICIENT) {
        key += '#' + std::to_string(finding.position);
    }
    return key;
}

} // namespace report
