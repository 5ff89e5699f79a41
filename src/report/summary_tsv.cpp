// SPDX-License-Identifier: MIT
#include "report/keys.h"
#include "report/text.h"
#include "report/words.h"
#include "report/writers.h"

namespace report
{

void write_summary_tsv(std::ostream &out, const Result &result)
{
    const bool has_worst =
        !result.findings.empty() && result.findings.front().finding.kind <= FindingKind::ROOT;
    const Finding worst = has_worst ? result.findings.front().finding : Finding();
    const auto of_worst = [has_worst](double value) {
        return has_worst ? number_text(value) : "";
    };
    out << grade_word(result.grade) << '\t' << result.masked << '\t' << result.counts.failing << '\t'
        << result.counts.missing << '\t' << result.counts.differences << '\t' << analysis_word(worst.analysis)
        << '\t' << terminal_line(worst.name) << '\t' << of_worst(worst.judged.abserr) << '\t'
        << of_worst(worst.judged.relerr) << '\t' << number_text(result.seconds) << '\t'
        << result.golden.sha256 << '\t' << result.regression.sha256 << '\n';
}

} // namespace report
