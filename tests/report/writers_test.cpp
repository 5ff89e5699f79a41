// SPDX-License-Identifier: MIT
#include "../test_support.h"
#include "report/writers.h"

#include <gtest/gtest.h>

namespace
{

// What no number and no text is must come out as data.
TEST(Writers, SpellWhatIsNoNumberAndNoText)
{
    report::Entry entry;
    entry.key = "k";
    Finding &finding = entry.finding;
    finding.kind = FindingKind::VALUE;
    finding.analysis = OP;
    finding.place = {1, 2, kInf};
    finding.name = "=\xFF\"\t<";
    finding.judged = {kNan, kNan, kInf, NOT_A_NUMBER};
    finding.met_nan = true;
    finding.marker = " <=nan= !";
    finding.fails = 1;
    finding.compared = 1;
    finding.ref_value = -kInf;
    finding.cmp_value = 1e22;
    finding.bits = 257;
    report::Result result;
    result.findings = {entry};
    result.grade = 5;
    result.masked = 257;
    std::ostringstream json;
    std::ostringstream csv;
    std::ostringstream summary;
    write_result_json(json, result);
    write_findings_csv(csv, result);
    write_summary_tsv(summary, result);
    const std::string name = "=\xEF\xBF\xBD\"\xEF\xBF\xBD<";
    EXPECT_EQ(
        json.str().substr(json.str().find('\n')),
        "\n\"findings\":[\n"s +
            R"({"kind":"value","key":"k","place":{"rerun":1,"modify":2,"time":"inf"},"analysis":"OP",)" +
            R"("name":")" + replaced(name, "\"", "\\\"") +
            R"(","name_hex":"3dff22093c","verdict":"nan","marker":" <=nan= !","abs":"nan","rel":"inf",)" +
            R"("golden":"-inf","regression":1e+22,"judged":true}]})" + "\n");
    EXPECT_EQ(csv.str().substr(csv.str().find('\n') + 1),
              R"("value","OP",1,2,inf,"')" + replaced(name, "\"", "\"\"") +
                  "\",,-inf,1e+22,nan,inf,nan,\" <=nan= !\",1,1,,\r\n");
    EXPECT_EQ(summary.str(), "FAIL_SV\t257\t0\t0\t0\tOP\t" + name + "\tnan\tinf\t0\t\t\n");
}

} // namespace
