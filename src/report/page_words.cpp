// SPDX-License-Identifier: MIT
#include "report/page_words.h"

#include "report/keys.h"
#include "report/order.h"
#include "report/text.h"

#include <array>
#include <charconv>
#include <cmath>

namespace report
{

namespace
{

bool is_plain_word(const std::string &word)
{
    static const std::string kPlain =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_@%+=:,./-";
    return !word.empty() && word.find_first_not_of(kPlain) == std::string::npos;
}

std::string shell_word(const std::string &word)
{
    static constexpr char kDigits[] = "0123456789abcdef";
    if (is_plain_word(word)) {
        return word;
    }
    const bool is_clean = clean_text(word) == word;
    std::string quoted = is_clean ? "'" : "$'";
    for (const char c : word) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '\'') {
            quoted += is_clean ? "'\\''" : "\\'";
        } else if (is_clean || (byte >= ' ' && byte < 0x7f && c != '\\')) {
            quoted += c;
        } else {
            quoted += {'\\', 'x', kDigits[byte >> 4], kDigits[byte & 15]};
        }
    }
    return quoted + "'";
}

} // namespace

bool is_tabled(const Finding &finding)
{
    switch (finding.kind) {
    case FindingKind::VALUE:
    case FindingKind::SINGLE_VALUE:
    case FindingKind::SINGLE_TIME:
    case FindingKind::FEW_POINTS:
        return true;
    case FindingKind::SWEEP:
        return finding.signals.ref->count == 1 && finding.signals.cmp->count == 1;
    default:
        return false;
    }
}

const char *grade_meaning(int grade)
{
    static constexpr const char *kMeanings[] = {
        "no difference that counts",
        "differences of units, temperature or format",
        "possible violation: missing or additional signals",
        "violation of the tolerances",
        "possible severe violation: missing or additional reruns, modifies or analyses",
        "severe violation: values that are no numbers, or files that could not be compared",
    };
    return grade >= 0 && grade < kNoGrade ? kMeanings[grade] : "the comparison did not come to its end";
}

const std::vector<BitMeaning> &bit_meanings()
{
    static const std::vector<BitMeaning> kBits = {
        {1, "a signal violates the tolerances"}, {2, "a punch file could not be opened or read"},
        {4, "missing or additional signals"},    {8, "missing or additional reruns or modifies"},
        {16, "missing or additional analyses"},  {32, "units or temperature differ"},
        {64, "the file formats differ"},         {128, "bad command line"},
        {256, "values that are no numbers"},
    };
    return kBits;
}

std::string subject_of(const Finding &finding)
{
    switch (finding.kind) {
    case FindingKind::SWEEP:
        return std::to_string(finding.fails) + " of " + std::to_string(finding.compared) + " points";
    case FindingKind::COEFFICIENT:
        return "coefficient " + std::to_string(finding.position);
    case FindingKind::ROOT:
        return finding.half_planes_differ ? "root in the other half-plane" : "root";
    case FindingKind::SINGLE_VALUE:
        return "value of its only point";
    case FindingKind::SINGLE_TIME:
        return "time of its only point";
    case FindingKind::FEW_POINTS:
        return "too few points for an area";
    case FindingKind::AREA:
        return "area";
    case FindingKind::VALUE:
        return "value";
    default:
        return std::string(subject_word(finding.kind));
    }
}

std::string place_of(const Finding &finding)
{
    std::string place;
    const auto add = [&place](const std::string &word) {
        place += (place.empty() ? "" : ", ") + word;
    };
    if (finding.place.rerun) {
        add("rerun " + std::to_string(*finding.place.rerun));
    }
    if (finding.place.modify) {
        add("modify " + std::to_string(*finding.place.modify));
    }
    if (finding.place.force_time) {
        add("time " + number_text(*finding.place.force_time));
    }
    return place;
}

std::string title_of(const Finding &finding)
{
    if (!finding.name.empty()) {
        return finding.name;
    }
    const std::string analysis = std::string(analysis_word(finding.analysis));
    const std::string whole = analysis.empty() ? place_of(finding) : analysis;
    return whole.empty() ? "(the whole file)" : "(all of " + whole + ")";
}

std::string four_digits(double value)
{
    if (!std::isfinite(value)) {
        return number_text(value);
    }
    std::array<char, 32> room;
    const auto end =
        std::to_chars(room.data(), room.data() + room.size(), value, std::chars_format::scientific, 3);
    return {room.data(), end.ptr};
}

std::string extent_of(const Finding &finding)
{
    if (group_of(finding) == FindingGroup::FAILING) {
        return "abs " + four_digits(finding.judged.abserr) + ", rel " + four_digits(finding.judged.relerr);
    }
    return "missing in " + std::string(side_word(finding.side));
}

std::string name_text(const std::string &name)
{
    constexpr std::size_t kLongest = 200;
    std::size_t characters = 0;
    std::string clean = clean_text(name);
    for (std::size_t i = 0; i < clean.size(); ++i) {
        const bool begins = (static_cast<unsigned char>(clean[i]) & 0xc0) != 0x80;
        if (begins && characters++ == kLongest) {
            clean.replace(i, std::string::npos, "\u2026");
            break;
        }
    }
    return html_text(clean);
}

std::string shell_line(const std::vector<std::string> &words)
{
    std::string line;
    for (const std::string &word : words) {
        line += (line.empty() ? "" : " ") + shell_word(word);
    }
    return line;
}

} // namespace report
