// SPDX-License-Identifier: MIT
#include "report/tree_findings.h"

#include "report/file_text.h"
#include "report/page_words.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>

namespace report
{

namespace
{

using Json = nlohmann::json;

constexpr std::size_t kMostSignals = 200000; // more of them nobody looks through

std::string text_of(const Json &object, const char *name)
{
    const auto found = object.find(name);
    return found != object.end() && found->is_string() ? found->get<std::string>() : "";
}

// NaN and infinities stand there as texts.
std::optional<double> number_of(const Json &object, const char *name)
{
    const auto found = object.find(name);
    if (found == object.end()) {
        return std::nullopt;
    }
    return found->is_number() ? std::optional<double>(found->get<double>())
                              : read_number(text_of(object, name));
}

TreeFinding finding_of(const Json &object)
{
    TreeFinding finding;
    finding.key = text_of(object, "key");
    finding.analysis = text_of(object, "analysis");
    finding.name = text_of(object, "name");
    finding.abs = number_of(object, "abs");
    finding.rel = number_of(object, "rel");
    finding.is_judged = object.value("judged", Json(true)) != Json(false);
    const std::string lacks = text_of(object, "lacks");
    const std::string differs = text_of(object, "differs");
    if (!lacks.empty()) {
        finding.what = lacks + " missing in " + text_of(object, "in");
    } else if (!differs.empty()) {
        finding.what = differs + " differ";
    } else {
        finding.fails = true;
        finding.what = "fails";
    }
    return finding;
}

// An object, with a comma or the end of the whole behind it.
bool add_finding(std::string_view line, std::vector<TreeFinding> &findings)
{
    constexpr std::string_view kEnd = "]}";
    if (line.size() > kEnd.size() && line.substr(line.size() - kEnd.size()) == kEnd) {
        line.remove_suffix(kEnd.size());
    } else if (!line.empty() && line.back() == ',') {
        line.remove_suffix(1);
    }
    const Json object = Json::parse(line, nullptr, false);
    if (!object.is_object()) {
        return false;
    }
    findings.push_back(finding_of(object));
    return true;
}

// What stands before the findings; null where that is another kind of file.
Json head_of(std::string_view line)
{
    Json head = Json::parse(std::string(line.substr(0, line.rfind(','))) + '}', nullptr, false);
    return head.is_object() && text_of(head, "schema") == "tresk-result/1" ? head : Json();
}

bool hides_something(const Json &head)
{
    const auto result = head.find("result");
    return result != head.end() && result->is_object() && !result->value("hidden", Json::array()).empty();
}

// Of a finding or a signal.
template <typename Erring> double product_of(const Erring &erring)
{
    const double product = erring.abs.value_or(0.0) * erring.rel.value_or(0.0);
    return std::isnan(product) ? std::numeric_limits<double>::infinity() : product;
}

} // namespace

TreeFindings read_findings(const std::string &path, std::size_t most_bytes)
{
    TreeFindings found;
    const std::string text = read_text(path, most_bytes).value_or("");
    std::string_view rest = text;
    const Json head = head_of(take_field(rest, '\n'));
    if (head.is_null()) {
        found.is_cut = true;
        return found;
    }
    found.hides = hides_something(head);
    take_field(rest, '\n'); // "findings":[
    for (const std::string_view line : lines_of(rest)) {
        found.is_cut = !add_finding(line, found.findings); // of the last line
    }
    return found;
}

std::string finding_line(const TreeFinding &finding)
{
    std::string line = finding.name.empty() ? "(no signal)" : finding.name;
    line += finding.analysis.empty() ? "" : ' ' + finding.analysis;
    line += ' ' + finding.what;
    if (finding.fails && finding.abs && finding.rel) {
        line += ": abs " + four_digits(*finding.abs) + ", rel " + four_digits(*finding.rel);
    }
    return line;
}

void TreeSignals::add(std::size_t pair, const std::vector<TreeFinding> &findings)
{
    for (const TreeFinding &finding : findings) {
        const std::string key = finding.analysis + '\t' + finding.name + '\t' + finding.what;
        const auto known = numbers_.find(key);
        if (known == numbers_.end() && signals_.size() >= kMostSignals) {
            ++left_out_;
            continue;
        }
        const std::size_t number = known != numbers_.end() ? known->second : signals_.size();
        if (number == signals_.size()) {
            numbers_.emplace(key, number);
            signals_.push_back({finding.analysis, finding.name, finding.what, false, {}, pair, {}, {}});
        }
        TreeSignal &signal = signals_[number];
        signal.is_judged = signal.is_judged || finding.is_judged;
        if (signal.pairs.empty() || signal.pairs.back() != pair) {
            signal.pairs.push_back(pair);
        }
        if (!signal.abs || product_of(finding) > product_of(signal)) {
            signal.worst = pair;
            signal.abs = finding.abs;
            signal.rel = finding.rel;
        }
    }
}

std::vector<TreeSignal> TreeSignals::sorted() const
{
    std::vector<TreeSignal> signals = signals_;
    std::stable_sort(signals.begin(), signals.end(), [](const TreeSignal &a, const TreeSignal &b) {
        if (a.is_judged != b.is_judged) {
            return a.is_judged;
        }
        return a.pairs.size() != b.pairs.size() ? a.pairs.size() > b.pairs.size()
                                                : product_of(a) > product_of(b);
    });
    return signals;
}

} // namespace report
