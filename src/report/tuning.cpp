// SPDX-License-Identifier: MIT
#include "report/tuning.h"

#include "report/knob_options.h"
#include "report/tresk_run.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <nlohmann/json.hpp>

namespace report
{

namespace
{

using nlohmann::json;

// An end that is infinite, and a share that is no number, are null.
double real_of(const json &value, double otherwise)
{
    return value.is_number() ? value.get<double>() : otherwise;
}

json packed(const TunedKnobs &knobs)
{
    json all = json::array();
    for (const Tuned &tuned : knobs) {
        json ranges = json::array();
        for (const FailRange &range : tuned.fails.ranges()) {
            ranges.push_back({range.from, range.to, range.share});
        }
        all.push_back({{"why", static_cast<int>(tuned.why)}, {"ranges", ranges}});
    }
    return all;
}

TunedKnobs unpacked_knobs(const json &all)
{
    TunedKnobs knobs;
    for (std::size_t i = 0; i < kKnobCount; ++i) {
        knobs[i].why = static_cast<WhyNot>(all.at(i).at("why").get<int>());
        for (const json &range : all.at(i).at("ranges")) {
            knobs[i].fails.add({real_of(range.at(0), 0.0), real_of(range.at(1), FailSet::kNever),
                                real_of(range.at(2), FailSet::kNever)});
        }
    }
    return knobs;
}

} // namespace

std::string packed(const TuneResult &result)
{
    json signals = json::array();
    for (const TunedSignal &signal : result.signals) {
        signals.push_back({{"key", signal.key}, {"knobs", packed(signal.knobs)}});
    }
    const json all = {{"abstol", result.abstol},     {"reltol", result.reltol},
                      {"mode", result.mode},         {"grade", result.grade},
                      {"status", result.status},     {"failing", result.failing},
                      {"left_out", result.left_out}, {"hopeless", result.hopeless},
                      {"signals", signals},          {"all", packed(result.all)}};
    return all.dump();
}

TuneResult unpacked(const std::string &text)
{
    const json all = json::parse(text);
    TuneResult result;
    result.abstol = real_of(all.at("abstol"), FailSet::kNever);
    result.reltol = real_of(all.at("reltol"), FailSet::kNever);
    result.mode = all.at("mode").get<std::string>();
    result.grade = all.at("grade").get<int>();
    result.status = all.at("status").get<unsigned>();
    result.failing = all.at("failing").get<std::int64_t>();
    result.left_out = all.at("left_out").get<std::int64_t>();
    result.hopeless = all.at("hopeless").get<std::int64_t>();
    for (const json &signal : all.at("signals")) {
        result.signals.push_back({signal.at("key").get<std::string>(), unpacked_knobs(signal.at("knobs"))});
    }
    result.all = unpacked_knobs(all.at("all"));
    return result;
}

TuneResult tune_comparison(const std::vector<std::string> &arguments)
{
    Tuner tuner;
    return unpacked(run_apart(arguments, tuner, [&tuner] { return packed(tuner.result()); }));
}

Confirmation confirm(const std::vector<std::string> &arguments)
{
    FailureCounter counter;
    const auto answer = [&counter] {
        return json({counter.grade(), counter.failing()}).dump();
    };
    const json told = json::parse(run_apart(arguments, counter, answer));
    return {told.at(0).get<int>(), told.at(1).get<std::int64_t>()};
}

bool hardly_judges(Knob knob, double tolerance, const FailSet &fails)
{
    if (knob != Knob::ABSOLUTE) {
        return tolerance >= kLargeShare;
    }
    const std::optional<double> smallest = fails.smallest_passing();
    return smallest && *smallest > 0.0 && tolerance / *smallest * fails.share_at(*smallest) >= kLargeShare;
}

std::vector<Step> staircase(Knob knob, const std::vector<const FailSet *> &failing,
                            const std::vector<const FailSet *> &passing, int digits, std::size_t most)
{
    std::map<double, std::string> numbers;
    for (const FailSet *set : failing) {
        const std::string number = proposal(*set, digits);
        if (!number.empty()) {
            numbers.emplace(std::strtod(number.c_str(), nullptr), number);
        }
    }
    std::vector<Step> steps;
    std::size_t place = 0;
    for (const auto &[value, number] : numbers) {
        ++place; // every so many, counted from the last one
        if (place * most / numbers.size() == (place - 1) * most / numbers.size()) {
            continue;
        }
        const double at = value;
        const auto count = [at](const std::vector<const FailSet *> &sets) {
            return static_cast<std::size_t>(std::count_if(
                sets.begin(), sets.end(), [at](const FailSet *set) { return !set->contains(at); }));
        };
        const auto unjudged = std::count_if(failing.begin(), failing.end(), [knob, at](const FailSet *set) {
            return hardly_judges(knob, at, *set);
        });
        steps.push_back({number, count(failing) + count(passing), static_cast<std::size_t>(unjudged)});
    }
    return steps;
}

} // namespace report
