// SPDX-License-Identifier: MIT
// What a recorder keeps of random results must be what a plain judgement of them finds, in the order and with
// the keys of a report.
#include "../model_rounds.h"
#include "report/recorder.h"
#include "report/text.h"

namespace
{

using report::Entry;
using report::Result;

// Contradictions within a result.
std::string contradictions(const Result &result)
{
    std::set<std::string> keys;
    std::string found;
    const Entry *before = nullptr;
    for (const Entry &entry : result.findings) {
        found += keys.insert(entry.key).second ? "" : "key twice: " + entry.key + "\n";
        const auto rank = [](const Entry &one) {
            return report::rank_of(one.finding, one.sequence);
        };
        if (before != nullptr && !report::worse(rank(*before), rank(entry))) {
            found += "order: " + before->key + ", " + entry.key + "\n";
        }
        before = &entry;
    }
    const report::Counts &counts = result.counts;
    const std::int64_t all = counts.failing + counts.missing + counts.differences + counts.unjudged;
    found += static_cast<std::size_t>(all) == result.findings.size() ? "" : "counts\n";
    return found + (result.truncated == 0 ? "" : "truncated\n");
}

// Writes what the result holds when the run ends.
class ResultWriter : public report::Recorder
{
  public:
    explicit ResultWriter(const std::string &path) : Recorder({100000, 50}), path_(path)
    {
    }
    void ended(const RunEnd &end) override
    {
        Recorder::ended(end);
        const Result result = take_result();
        std::multiset<std::string> findings;
        for (const Entry &entry : result.findings) {
            findings.insert(text_of(entry.finding));
        }
        std::ofstream(path_) << text_of(findings, result.status, result.grade) << contradictions(result);
    }

  private:
    std::string path_;
};

// Of judged pairs a report has only those that fail.
bool is_reported(const std::string &finding)
{
    const int kind = std::stoi(finding.substr(finding.find(' ')));
    return kind > static_cast<int>(FindingKind::ROOT) || finding.find(" bits 0 ") == std::string::npos;
}

TEST(Recorder, KeepsWhatAPlainJudgementFinds)
{
    run_rounds<ResultWriter>([](const Judge &judge) {
        std::multiset<std::string> reported;
        for (const std::string &finding : judge.findings) {
            if (is_reported(finding)) {
                reported.insert(finding);
            }
        }
        return text_of(reported, judge.status, judge.grade());
    });
}

// A failing transient pair with an area of its own.
Finding failing_pair(double product, const double *areas)
{
    Finding finding;
    finding.kind = FindingKind::AREA;
    finding.analysis = TR;
    finding.name = "V(1)";
    finding.judged = {0.0, product, 1.0, FAILS};
    finding.bits = 1;
    finding.areas = {areas, areas, 1, 1e-9};
    return finding;
}

TEST(Recorder, KeepsTheWorstFindingsAndAreasOnly)
{
    report::Recorder recorder({3, 2});
    const std::vector<double> products = {5, 1, 9, kNan, 7, 2};
    for (const double &product : products) {
        recorder.finding(failing_pair(product, &product));
    }
    recorder.ended({33, 33, 1}); // units that hide a violation
    const Result result = recorder.take_result();
    std::string kept;
    for (const Entry &entry : result.findings) {
        kept +=
            report::number_text(entry.finding.judged.abserr) + " of " + entry.key +
            (entry.golden_areas.empty() ? "" : " with area " + report::number_text(entry.golden_areas[0])) +
            "\n";
    }
    EXPECT_EQ(kept, "nan of -/TR/area/V(1)~2 with area nan\n"
                    "9 of -/TR/area/V(1) with area 9\n"
                    "7 of -/TR/area/V(1)~3\n");
    EXPECT_EQ(result.truncated, 3);
    EXPECT_EQ(result.hidden, 1U);
}

} // namespace
