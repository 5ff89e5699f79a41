// SPDX-License-Identifier: MIT
#include "report/text.h"
#include "report/tree_view.h"

namespace report
{

namespace
{

constexpr std::string_view kHeading =
    "grade,path,status,remark,failing,missing,differences,hides,analysis,signal,"
    "abs,rel,seconds,options,change,before,report,transcript,golden_sha256,"
    "regression_sha256\r\n";

std::string number_or_nothing(const std::optional<double> &number)
{
    return number ? number_text(*number) : "";
}

std::string text_or_nothing(std::string_view bytes)
{
    return bytes.empty() ? "" : csv_field(bytes);
}

// Fields of the report; empty where there is none.
void write_found(std::ostream &out, const TreePair &pair)
{
    const auto count = [&pair](std::int64_t number) {
        return pair.has_report ? std::to_string(number) : "";
    };
    out << ',' << count(pair.failing) << ',' << count(pair.missing) << ',' << count(pair.differences) << ','
        << (pair.hides ? "yes" : "") << ',' << pair.analysis << ',' << text_or_nothing(pair.signal) << ','
        << number_or_nothing(pair.abs) << ',' << number_or_nothing(pair.rel) << ','
        << number_or_nothing(pair.seconds);
}

} // namespace

void write_tree_csv(std::ostream &out, const TreeView &view)
{
    out << kHeading;
    for (std::size_t i = 0; i < view.run.pairs.size(); ++i) {
        const TreePair &pair = view.run.pairs[i];
        const PairChange change = i < view.changes.pairs.size() ? view.changes.pairs[i] : PairChange();
        out << tree_grade_word(pair.grade) << ',' << csv_field(pair.path) << ','
            << text_or_nothing(pair.status == "-" ? "" : pair.status) << ',' << text_or_nothing(pair.remark);
        write_found(out, pair);
        out << ',' << text_or_nothing(pair.options) << ',' << change_word(change.change) << ','
            << (change.grade >= 0 ? tree_grade_word(change.grade) : "") << ','
            << (pair.has_report ? csv_field(view.run.report_folder(pair)) : "") << ','
            << (pair.has_transcript ? csv_field(view.run.transcript(pair)) : "") << ',' << pair.golden_sha256
            << ',' << pair.regression_sha256 << "\r\n";
    }
}

} // namespace report
