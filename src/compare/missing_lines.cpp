// SPDX-License-Identifier: MIT
#include "compare/missing_lines.h"

#include "compare/result_lines.h"
#include "compare/table_headers.h"
#include "support/transcript.h"

#include <cstdlib>

namespace
{

const char *file_name(Side side)
{
    return side == Side::REFERENCE ? "reference" : "comparison";
}

template <typename Record> Both<Record> only_in(const Record &record, Side lacking)
{
    return lacking == Side::COMPARISON ? Both<Record>{&record, nullptr} : Both<Record>{nullptr, &record};
}

Finding missing_finding(FindingKind kind, int code, const char *name, unsigned bits, Side lacking)
{
    Finding finding = finding_here(kind, code, name, bits);
    finding.side = lacking;
    return finding;
}

unsigned print_missing_signal(const char *name, int code, Side lacking)
{
    print_tk_header(code);
    transcript_printf("Warning : signal %s  is not present in the %s file.\n", name, file_name(lacking));
    return EXIT_SIGNALS;
}

unsigned print_missing_variant(const char *what, int number, const Finding &finding)
{
    transcript_printf("Warning : %s number %d is not present in %s file.\n", what, number,
                      file_name(finding.side));
    pass_on(finding);
    return finding.bits;
}

} // namespace

unsigned report_missing_signal(const Wform &signal, int code, Side lacking)
{
    const unsigned bits = print_missing_signal(signal.name, code, lacking);
    if (listening()) {
        Finding finding = missing_finding(FindingKind::MISSING_SIGNAL, code, signal.name, bits, lacking);
        finding.signals = only_in(signal, lacking);
        pass_on(finding);
    }
    return bits;
}

unsigned report_missing_signal(const Isoln &value, int code, Side lacking)
{
    const unsigned bits = print_missing_signal(value.name, code, lacking);
    if (listening()) {
        Finding finding = missing_finding(FindingKind::MISSING_SIGNAL, code, value.name, bits, lacking);
        finding.values = only_in(value, lacking);
        pass_on(finding);
    }
    return bits;
}

unsigned report_missing_points(const Wform &ref, const Wform &cmp, int code)
{
    if (ref.count == cmp.count) {
        return 0;
    }
    const Side lacking = ref.count > cmp.count ? Side::COMPARISON : Side::REFERENCE;
    Finding finding = missing_finding(FindingKind::MISSING_POINTS, code, ref.name, EXIT_TOLERANCE, lacking);
    finding.signals = {&ref, &cmp};
    finding.missing_points = static_cast<int>(std::abs(ref.count - cmp.count));
    transcript_printf("%d points missing for signal %s in %s file.\n", finding.missing_points, ref.name,
                      file_name(lacking));
    pass_on(finding);
    return finding.bits;
}

unsigned report_missing_solution(int code, const char *name, Side lacking)
{
    transcript_printf("Missing %s solution from %s file.\n", name, file_name(lacking));
    pass_on(missing_finding(FindingKind::MISSING_SOLUTION, code, name, EXIT_ANALYSES, lacking));
    return EXIT_ANALYSES;
}

unsigned report_missing_indc_point(int code, const char *place, Side lacking)
{
    transcript_printf("Missing INDC solution [%s] in %s file.\n", place, file_name(lacking));
    pass_on(missing_finding(FindingKind::MISSING_SOLUTION, code, place, EXIT_ANALYSES, lacking));
    return EXIT_ANALYSES;
}

unsigned report_missing_statement(const TPsoln &statement, Side lacking)
{
    print_tk_header(statement.analysis);
    transcript_printf("Warning : %s .FORCE statement at time %11.6E is not present in the %s file.\n",
                      statement.analysis == TR_FORCE ? "TR" : "PSS", statement.time, file_name(lacking));
    Finding finding =
        missing_finding(FindingKind::MISSING_STATEMENT, statement.analysis, ".FORCE", EXIT_SIGNALS, lacking);
    finding.statements = only_in(statement, lacking);
    finding.place.force_time = statement.time;
    pass_on(finding);
    return finding.bits;
}

unsigned report_missing_pole_zeros(const PZform &block, Side lacking)
{
    transcript_puts(lacking == Side::REFERENCE ? "Reference file missing pole-zero results\n"
                                               : "Comparison file missing pole-zero results\n");
    Finding finding = missing_finding(FindingKind::MISSING_POLE_ZEROS, PZ, "", EXIT_ANALYSES, lacking);
    finding.blocks = only_in(block, lacking);
    pass_on(finding);
    return finding.bits;
}

unsigned report_missing_root(const TRI &root, int kind, int position, Side lacking)
{
    const std::string name = root_name(kind, position);
    transcript_printf("%-19s missing in %s file\n", name.c_str(), file_name(lacking));
    Finding finding = missing_finding(FindingKind::MISSING_ROOT, PZ, name.c_str(), EXIT_SIGNALS, lacking);
    finding.roots = only_in(root, lacking);
    finding.root_kind = kind;
    finding.position = position;
    pass_on(finding);
    return finding.bits;
}

unsigned report_missing_modify(const MODIFYform &modify, Side lacking)
{
    Finding finding = missing_finding(FindingKind::MISSING_MODIFY, kNoAnalysis, "", EXIT_VARIANTS, lacking);
    finding.place.modify = modify.number;
    return print_missing_variant("modify", modify.number, finding);
}

unsigned report_missing_rerun(const RERUNform &rerun, Side lacking)
{
    Finding finding = missing_finding(FindingKind::MISSING_RERUN, kNoAnalysis, "", EXIT_VARIANTS, lacking);
    finding.place.rerun = rerun.number;
    return print_missing_variant("rerun", rerun.number, finding);
}
