// SPDX-License-Identifier: MIT
#include "report/facts.h"
#include "report/keys.h"
#include "report/text.h"
#include "report/writers.h"

namespace report
{

namespace
{

constexpr std::string_view kHeading =
    "kind,analysis,rerun,modify,time,signal,units,golden,regression,abs,rel,"
    "product,marker,failing,compared,worst_at,note\r\n";

template <typename Number> std::string number_or_nothing(const std::optional<Number> &number)
{
    if constexpr (std::is_integral_v<Number>) {
        return number ? std::to_string(*number) : "";
    } else {
        return number ? number_text(*number) : "";
    }
}

// A row, field by field.
class Row
{
  public:
    Row &text(std::string_view bytes)
    {
        return field(bytes.empty() ? "" : csv_field(bytes));
    }
    Row &field(const std::string &plain)
    {
        text_ += text_.empty() ? "" : ",";
        text_ += plain;
        return *this;
    }
    std::string line() const
    {
        return text_ + "\r\n";
    }

  private:
    std::string text_;
};

std::string row_of(const Finding &finding)
{
    const bool is_pair = finding.kind <= FindingKind::ROOT;
    const auto of_pair = [is_pair](const std::string &field) {
        return is_pair ? field : "";
    };
    const auto value = [&finding](double side) {
        return has_values(finding) ? number_text(side) : "";
    };
    const Judged &judged = finding.judged;
    return Row()
        .text(kind_word(finding.kind))
        .text(analysis_word(finding.analysis))
        .field(number_or_nothing(finding.place.rerun))
        .field(number_or_nothing(finding.place.modify))
        .field(number_or_nothing(finding.place.force_time))
        .text(finding.name)
        .text(units_of(finding))
        .field(value(finding.ref_value))
        .field(value(finding.cmp_value))
        .field(of_pair(number_text(judged.abserr)))
        .field(of_pair(number_text(judged.relerr)))
        .field(of_pair(number_text(judged.abserr * judged.relerr)))
        .text(finding.marker)
        .field(of_pair(std::to_string(finding.fails)))
        .field(of_pair(std::to_string(finding.compared)))
        .field(number_or_nothing(worst_at(finding)))
        .text(note_of(finding))
        .line();
}

} // namespace

void write_findings_csv(std::ostream &out, const Result &result)
{
    out << kHeading;
    for (const Entry &entry : result.findings) {
        out << row_of(entry.finding);
    }
}

} // namespace report
