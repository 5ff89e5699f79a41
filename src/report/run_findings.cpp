// SPDX-License-Identifier: MIT
#include "report/run_findings.h"

#include <limits>
#include <nlohmann/json.hpp>

namespace report
{

namespace
{

using nlohmann::json;

constexpr std::size_t kMostFindings = 1000; // no more of a pair stay in a history
constexpr int kMostNesting = 16;            // of a result it is 5

// A text of an object; empty when it has none of that name.
std::string text_of(const json &object, const char *name)
{
    const auto found = object.find(name);
    return found != object.end() && found->is_string() ? found->get<std::string>() : std::string();
}

std::optional<double> error_of(const json &finding, const char *name)
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const auto found = finding.find(name);
    if (found == finding.end() || (!found->is_number() && !found->is_string())) {
        return std::nullopt;
    }
    if (found->is_number()) {
        return found->get<double>();
    }
    const std::string text = found->get<std::string>();
    return text == "inf" ? kInfinity : text == "-inf" ? -kInfinity : std::numeric_limits<double>::quiet_NaN();
}

// Takes each finding as soon as it is read, and keeps no other part of the file but numbers and texts.
class FindingsReader
{
  public:
    bool take(int depth, json::parse_event_t event, const json &parsed)
    {
        if (depth > kMostNesting) {
            is_too_deep_ = true;
            return false;
        }
        if (depth == 1 && event == json::parse_event_t::key) {
            is_in_findings_ = parsed == "findings";
        }
        if (depth != 2 || event != json::parse_event_t::object_end || !is_in_findings_) {
            return true;
        }
        const std::string key = text_of(parsed, "key");
        if (parsed.value("judged", json()) == json(true) && !key.empty()) {
            ++count_;
            if (findings_.size() < kMostFindings) {
                findings_.push_back({key, text_of(parsed, "analysis"), text_of(parsed, "name"),
                                     error_of(parsed, "abs"), error_of(parsed, "rel")});
            }
        }
        return false;
    }

    bool give(const json &whole, RunPair &pair)
    {
        const bool is_result =
            !is_too_deep_ && whole.is_object() && text_of(whole, "schema") == "tresk-result/1";
        if (!is_result) {
            return false;
        }
        const auto truncated = whole.find("truncated");
        const bool is_cut = truncated != whole.end() && *truncated != json(0);
        pair.has_findings = true;
        pair.finding_count = count_ + (is_cut ? 1 : 0);
        pair.findings = std::move(findings_);
        return true;
    }

  private:
    std::vector<RunFinding> findings_;
    std::int64_t count_ = 0;
    bool is_in_findings_ = false;
    bool is_too_deep_ = false;
};

} // namespace

bool read_run_findings(std::istream &json_text, RunPair &pair)
{
    FindingsReader reader;
    const auto callback = [&reader](int depth, json::parse_event_t event, const json &parsed) {
        return reader.take(depth, event, parsed);
    };
    const json whole = json::parse(json_text, callback, false);
    return !whole.is_discarded() && reader.give(whole, pair);
}

} // namespace report
