// SPDX-License-Identifier: MIT
#include "report/report_files.h"

#include "driver/exit_grade.h"
#include "driver/tk_main.h"
#include "report/figures.h"
#include "report/page.h"
#include "report/writers.h"

#include <utility>

namespace report
{

namespace
{

bool has_page(const Result &result, const PairOptions &options)
{
    return result.grade != GRADE_PASS || options.always;
}

void write_page_file(const OutputFolder &folder, const Result &result, std::vector<Figure> figures,
                     const PairOptions &options)
{
    PageInput input;
    input.transcript_path = folder.new_path_of(kTranscriptFile);
    input.figures = std::move(figures);
    input.command = options.arguments.tresk;
    input.command.insert(input.command.begin(), "tresk");
    input.versions = {{"tresk-report", kTreskVersion}, {"tresk", kTreskVersion}};
    folder.write(kPageFile, [&](std::ostream &out) { write_page(out, result, input); });
}

} // namespace

std::vector<Figure> page_figures(const Result &result, const PairOptions &options)
{
    return has_page(result, options) ? make_figures(result, options.figures, options.data_bytes)
                                     : std::vector<Figure>();
}

void write_report_files(const OutputFolder &folder, const Result &result, std::vector<Figure> figures,
                        const PairOptions &options)
{
    folder.write(kJsonFile, [&result](std::ostream &out) { write_result_json(out, result); });
    folder.write(kCsvFile, [&result](std::ostream &out) { write_findings_csv(out, result); });
    if (has_page(result, options)) {
        write_page_file(folder, result, std::move(figures), options);
    }
    folder.write(kSummaryFile, [&result](std::ostream &out) { write_summary_tsv(out, result); });
}

} // namespace report
