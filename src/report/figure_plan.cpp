// SPDX-License-Identifier: MIT
#include "report/figure_plan.h"

#include "report/companions.h"

#include <algorithm>
#include <map>
#include <string>
#include <tuple>
#include <utility>

namespace report
{

namespace
{

// Bytes on the page, at most: of a point, two numbers of 8 bytes in base64, and two coordinates of the drawn
// line; of an error of a swept signal; of the errors of a waveform over time, drawn too.
constexpr double kPointBytes = 16.0 * 4 / 3;
constexpr double kDrawnBytes = 11.0;
constexpr double kErrorBytes = 17.0 * 4 / 3;
constexpr double kStripBytes = 12.0 * 4 / 3 * 1000 + 11.0 * 856;
constexpr double kDrawnPoints = 4000; // of a line on the page, and of its small figure
constexpr std::size_t kMostPanels = 3;

// One of these is a figure of its own: a block, or a pair of signals, or a family in two modifies.
using FigureKey = std::tuple<const void *, const void *, std::string>;

bool is_drawn(const Finding &finding)
{
    const Both<Wform> &signals = finding.signals;
    switch (finding.kind) {
    case FindingKind::AREA:
    case FindingKind::COEFFICIENT:
        return signals.ref != nullptr && signals.cmp != nullptr;
    case FindingKind::SWEEP:
    case FindingKind::MISSING_POINTS:
        return signals.ref != nullptr && signals.cmp != nullptr && finding.analysis != FOUR &&
               std::max(signals.ref->count, signals.cmp->count) > 1;
    case FindingKind::ROOT:
    case FindingKind::MISSING_ROOT:
        return true;
    default:
        return false;
    }
}

FigureKind figure_kind(const Finding &finding)
{
    if (finding.kind == FindingKind::ROOT || finding.kind == FindingKind::MISSING_ROOT) {
        return FigureKind::PLANE;
    }
    return finding.kind == FindingKind::COEFFICIENT ? FigureKind::BARS : FigureKind::WAVES;
}

class Planner
{
  public:
    Planner(const Result &result, std::size_t most) : result_(result), most_(most)
    {
    }

    std::vector<FigurePlan> plan()
    {
        for (std::size_t i = 0; i < result_.findings.size(); ++i) {
            if (is_drawn(result_.findings[i].finding)) {
                add(i);
            }
        }
        for (FigurePlan &plan : plans_) {
            complete(plan);
        }
        return std::move(plans_);
    }

  private:
    // Roots of one place, and members of one family, share a figure.
    static FigureKey key_of(const Finding &finding)
    {
        if (figure_kind(finding) == FigureKind::PLANE) {
            return {nullptr, nullptr,
                    std::to_string(finding.place.rerun.value_or(0)) + "/" +
                        std::to_string(finding.place.modify.value_or(0))};
        }
        const FamilyName family = family_of(*finding.signals.ref);
        if (family.role == FamilyName::NONE) {
            return {finding.signals.ref, finding.signals.cmp, ""};
        }
        return {nullptr, nullptr,
                std::to_string(finding.analysis) + "/" + std::to_string(finding.place.rerun.value_or(0)) +
                    "/" + std::to_string(finding.place.modify.value_or(0)) + "/" + family.family};
    }

    void add(std::size_t index)
    {
        const Entry &entry = result_.findings[index];
        const Finding &finding = entry.finding;
        const auto known = by_key_.find(key_of(finding));
        FigurePlan *plan = known != by_key_.end() ? &plans_[known->second] : nullptr;
        if (plan != nullptr && plan->kind == FigureKind::WAVES && !has_signals(*plan, finding.signals)) {
            if (plan->panels.size() == kMostPanels) {
                plan = nullptr;
            } else {
                plan->panels.push_back({finding.signals, &entry});
            }
        }
        if (plan == nullptr) {
            plan = begin(entry);
        }
        if (plan != nullptr) {
            plan->findings.push_back(index);
        }
    }

    // Null when there are enough.
    FigurePlan *begin(const Entry &entry)
    {
        const Finding &finding = entry.finding;
        if (plans_.size() == most_) {
            return nullptr;
        }
        FigurePlan plan;
        plan.kind = figure_kind(finding);
        plan.analysis = finding.analysis;
        plan.place = finding.place;
        if (plan.kind == FigureKind::PLANE) {
            plan.blocks = find_blocks(result_, finding);
        } else {
            plan.panels.push_back({finding.signals, &entry});
        }
        by_key_[key_of(finding)] = plans_.size();
        plans_.push_back(std::move(plan));
        return &plans_.back();
    }

    static bool has_signals(const FigurePlan &plan, const Both<Wform> &signals)
    {
        return std::any_of(plan.panels.begin(), plan.panels.end(), [&signals](const PanelPlan &panel) {
            return panel.signals.ref == signals.ref && panel.signals.cmp == signals.cmp;
        });
    }

    // Puts the phase to a magnitude that stands alone, or the magnitude to a phase.
    void complete(FigurePlan &plan) const
    {
        if (plan.kind != FigureKind::WAVES) {
            return;
        }
        const auto is_phase = [](const PanelPlan &panel) {
            return family_of(*panel.signals.ref).role == FamilyName::PHASE;
        };
        const auto phases = std::count_if(plan.panels.begin(), plan.panels.end(), is_phase);
        if (phases == 0 || phases == static_cast<std::ptrdiff_t>(plan.panels.size())) {
            const Both<Wform> companion = find_companion(result_, plan.panels.front().signals);
            if (companion.ref != nullptr && plan.panels.size() < kMostPanels) {
                plan.panels.push_back({companion, nullptr});
            }
        }
        std::stable_sort(plan.panels.begin(), plan.panels.end(), [](const PanelPlan &a, const PanelPlan &b) {
            return family_of(*a.signals.ref).role < family_of(*b.signals.ref).role;
        });
    }

    const Result &result_;
    std::size_t most_;
    std::vector<FigurePlan> plans_;
    std::map<FigureKey, std::size_t> by_key_;
};

// Bytes of a waveform of so many points.
double curve_bytes(std::int64_t points)
{
    const auto count = static_cast<double>(points);
    return count * kPointBytes + std::min(count, kDrawnPoints) * kDrawnBytes;
}

double whole_bytes(const FigurePlan &plan)
{
    double bytes = 0.0;
    for (const PanelPlan &panel : plan.panels) {
        const Both<Wform> &signals = panel.signals;
        const auto judged = static_cast<double>(std::min(signals.ref->count, signals.cmp->count));
        bytes += curve_bytes(signals.ref->count) + curve_bytes(signals.cmp->count) + judged * kErrorBytes +
                 kStripBytes;
    }
    return bytes;
}

} // namespace

std::vector<FigurePlan> plan_figures(const Result &result, std::size_t most)
{
    return Planner(result, most).plan();
}

std::int64_t most_points(const FigurePlan &plan)
{
    // Both curves of a panel, and errors that take about as much as one.
    const double curve = (plan.bytes / static_cast<double>(plan.panels.size()) - kStripBytes) / 3.0;
    const double drawn = kDrawnPoints * kDrawnBytes;
    const double points = curve_bytes(static_cast<std::int64_t>(kDrawnPoints)) > curve
                              ? curve / (kPointBytes + kDrawnBytes)
                              : (curve - drawn) / kPointBytes;
    return static_cast<std::int64_t>(std::max(points, 0.0));
}

double used_bytes(const Figure &figure)
{
    double bytes = 0.0;
    for (const Panel &panel : figure.panels) {
        bytes += curve_bytes(static_cast<std::int64_t>(panel.golden.x.size())) +
                 curve_bytes(static_cast<std::int64_t>(panel.regression.x.size())) +
                 static_cast<double>(panel.errors.fails.size()) * kErrorBytes + kStripBytes;
    }
    return bytes;
}

void share_budget(std::vector<FigurePlan> &plans, double bytes)
{
    std::vector<std::pair<double, FigurePlan *>> by_size;
    for (FigurePlan &plan : plans) {
        if (plan.kind == FigureKind::WAVES) {
            by_size.emplace_back(whole_bytes(plan), &plan);
        }
    }
    std::stable_sort(by_size.begin(), by_size.end(),
                     [](const auto &a, const auto &b) { return a.first < b.first; });
    for (std::size_t i = 0; i < by_size.size(); ++i) {
        const auto &[whole, plan] = by_size[i];
        plan->is_whole = whole <= bytes / static_cast<double>(by_size.size() - i);
        plan->bytes = plan->is_whole ? whole : bytes / static_cast<double>(by_size.size() - i);
        bytes -= plan->bytes;
    }
}

} // namespace report
