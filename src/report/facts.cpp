// SPDX-License-Identifier: MIT
#include "report/facts.h"

#include "report/keys.h"
#include "report/order.h"
#include "report/text.h"

namespace report
{

namespace
{

std::string text_or_none(const std::string &text)
{
    return text.empty() ? "(none)" : text;
}

std::string pair_note(const Finding &finding)
{
    switch (finding.kind) {
    case FindingKind::SWEEP:
        return std::to_string(finding.fails) + " of " + std::to_string(finding.compared) + " points";
    case FindingKind::AREA:
        return "area over " + std::to_string(finding.areas.count) + " intervals";
    case FindingKind::FEW_POINTS:
        return "no area to compare";
    case FindingKind::COEFFICIENT:
        return "coefficient " + std::to_string(finding.position);
    case FindingKind::ROOT:
        return finding.half_planes_differ ? "other half-plane" : "";
    default:
        return "";
    }
}

// What a signal lacks is counted.
std::string missing_points_note(const Finding &finding)
{
    return std::to_string(finding.missing_points) + " points missing in " +
           std::string(side_word(finding.side));
}

} // namespace

std::string units_of(const Finding &finding)
{
    const char *units = finding.values.ref != nullptr    ? finding.values.ref->yunits
                        : finding.signals.ref != nullptr ? finding.signals.ref->yunits
                                                         : nullptr;
    return units != nullptr ? units : "";
}

std::optional<double> worst_at(const Finding &finding)
{
    if (finding.worst.index < 0) {
        return std::nullopt;
    }
    return finding.kind == FindingKind::AREA ? finding.worst.index * finding.areas.dx : finding.worst.x;
}

bool has_values(const Finding &finding)
{
    switch (finding.kind) {
    case FindingKind::SWEEP:
        return finding.worst.index >= 0;
    case FindingKind::VALUE:
    case FindingKind::SINGLE_VALUE:
    case FindingKind::SINGLE_TIME:
    case FindingKind::COEFFICIENT:
    case FindingKind::TEMPERATURE:
        return true;
    default:
        return false;
    }
}

bool has_texts(const Finding &finding)
{
    return !finding.ref_text.empty() || !finding.cmp_text.empty();
}

std::string note_of(const Finding &finding)
{
    if (finding.kind <= FindingKind::ROOT) {
        return pair_note(finding);
    }
    if (finding.missing_points != 0) {
        return missing_points_note(finding);
    }
    std::string note(subject_word(finding.kind));
    if (group_of(finding) == FindingGroup::MISSING) {
        return note + " missing in " + std::string(side_word(finding.side));
    }
    if (has_values(finding)) {
        return note + ": " + number_text(finding.ref_value) + ", " + number_text(finding.cmp_value);
    }
    if (has_texts(finding)) {
        return note + ": " + text_or_none(finding.ref_text) + ", " + text_or_none(finding.cmp_text);
    }
    return finding.side == Side::NEITHER ? note : note + " in " + std::string(side_word(finding.side));
}

} // namespace report
