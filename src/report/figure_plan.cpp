// SPDX-License-Identifier: MIT
#include "report/figure_plan.h"

#include "report/companions.h"
#include "report/curve.h"

#include <algorithm>
#include <map>
#include <string>
#include <tuple>
#include <utility>

namespace report
{

namespace
{

// Bytes on the page: of a point, two numbers of 8 bytes in base64; of a point of a drawn line, two
// coordinates; of an entry of the error strip, up to three numbers.
constexpr double kPointBytes = 16.0 * 4 / 3;
constexpr double kDrawnBytes = 11.0;
constexpr double kErrorBytes = 17.0 * 4 / 3;
constexpr std::int64_t kDrawnPoints = 4 * 1000; // of a line on the page, and of its small figure
constexpr std::int64_t kMostColumns = 4000;
constexpr std::int64_t kFewestColumns = 200;
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
    FigureKey key_of(const Finding &finding) const
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

// Bytes of the waveforms of a figure and, where points are judged, of their errors.
double data_bytes(const FigurePlan &plan, std::int64_t columns)
{
    double bytes = 0.0;
    for (const PanelPlan &panel : plan.panels) {
        const Both<Wform> &signals = panel.signals;
        const std::int64_t points =
            expected_points(signals.ref->count, columns) + expected_points(signals.cmp->count, columns);
        const std::int64_t judged = std::min(signals.ref->count, signals.cmp->count);
        const std::int64_t errors = columns == 0 ? judged : std::min(judged, columns);
        bytes += kPointBytes * static_cast<double>(points) + kErrorBytes * static_cast<double>(errors);
    }
    return bytes;
}

double drawn_bytes(const FigurePlan &plan)
{
    double bytes = 0.0;
    for (const PanelPlan &panel : plan.panels) {
        const std::int64_t points = std::min(panel.signals.ref->count, kDrawnPoints) +
                                    std::min(panel.signals.cmp->count, kDrawnPoints);
        bytes += kDrawnBytes * static_cast<double>(points);
    }
    return bytes;
}

// The most columns that fit into so many bytes.
std::int64_t fitting_columns(const FigurePlan &plan, double bytes)
{
    std::int64_t columns = kMostColumns;
    while (columns > kFewestColumns && data_bytes(plan, columns) > bytes) {
        columns = std::max(kFewestColumns, columns * 9 / 10);
    }
    return columns;
}

} // namespace

std::vector<FigurePlan> plan_figures(const Result &result, std::size_t most)
{
    return Planner(result, most).plan();
}

void share_budget(std::vector<FigurePlan> &plans, std::int64_t bytes)
{
    std::vector<std::pair<double, FigurePlan *>> by_size;
    auto left = static_cast<double>(bytes);
    for (FigurePlan &plan : plans) {
        if (plan.kind == FigureKind::WAVES) {
            by_size.emplace_back(data_bytes(plan, 0), &plan);
            left -= drawn_bytes(plan);
        }
    }
    left = std::max(left, static_cast<double>(bytes) / 4.0);
    std::stable_sort(by_size.begin(), by_size.end(),
                     [](const auto &a, const auto &b) { return a.first < b.first; });
    for (std::size_t i = 0; i < by_size.size(); ++i) {
        const double share = left / static_cast<double>(by_size.size() - i);
        const auto &[whole, plan] = by_size[i];
        plan->columns = whole <= share ? 0 : fitting_columns(*plan, share);
        left -= data_bytes(*plan, plan->columns);
    }
}

} // namespace report
