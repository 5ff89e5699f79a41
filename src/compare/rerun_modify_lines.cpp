// SPDX-License-Identifier: MIT
#include "compare/rerun_modify_lines.h"

#include "support/exit_bits.h"
#include "support/transcript.h"

namespace
{

// A NaN counts as unknown here, since it is neither below nor above the mark.
bool is_unknown(double temperature)
{
    return !(temperature < kUnknownTemperature) && !(temperature > kUnknownTemperature);
}

void print_temperature(const char *label, double temperature)
{
    transcript_puts(label);
    if (is_unknown(temperature)) {
        transcript_puts("UNKNOWN\n");
    } else {
        transcript_printf("%g\n", temperature);
    }
}

} // namespace

unsigned report_titles(const RERUNform &ref, const RERUNform &cmp)
{
    if (ref.title == nullptr && cmp.title == nullptr) {
        return 0;
    }
    // Kept: titles are printed, not judged (docs/verdict.md, "What is not a value").
    Finding finding = finding_here(FindingKind::TITLE, kNoAnalysis, "", 0);
    finding.is_judged = false;
    if (ref.title == nullptr) {
        finding.side = Side::REFERENCE;
        transcript_printf("Reference file has missing title for rerun %d\n", ref.number);
    } else if (cmp.title == nullptr) {
        finding.side = Side::COMPARISON;
        transcript_printf("Comparison file has missing title for rerun %d\n", ref.number);
    }
    finding.ref_text = ref.title != nullptr ? ref.title : "";
    finding.cmp_text = cmp.title != nullptr ? cmp.title : "";
    const bool differ = finding.ref_text != finding.cmp_text;
    if (differ) {
        transcript_printf("Run titles for rerun %d are different\n", ref.number);
        transcript_printf("Reference file title:\n%s\n", finding.ref_text.c_str());
        transcript_printf("Comparison file title:\n%s\n", finding.cmp_text.c_str());
    }
    if (differ || finding.side != Side::NEITHER) {
        pass_on(finding);
    }
    return finding.bits;
}

void begin_modify_pair(int rerun, const MODIFYform &ref, const MODIFYform &cmp)
{
    transcript_puts("\n*************************************\n");
    transcript_printf("** COMPARING RERUN %d MODIFY %d DATA **", rerun, ref.number);
    transcript_puts("\n*************************************\n\n");
    note_modify_pair(rerun, ref, cmp);
}

unsigned report_temperatures(const MODIFYform &ref, const MODIFYform &cmp)
{
    // Kept: a temperature that is no number equals every other (docs/verdict.md, "What is not a value").
    if (!(ref.temperature < cmp.temperature) && !(ref.temperature > cmp.temperature)) {
        print_temperature("Temperature: ", ref.temperature);
        return 0;
    }
    transcript_puts("Run temperature is different\n");
    print_temperature("Reference file temperature : ", ref.temperature);
    print_temperature("Comparison file temperature: ", cmp.temperature);
    Finding finding = finding_here(FindingKind::TEMPERATURE, kNoAnalysis, "", EXIT_UNITS);
    finding.ref_value = ref.temperature;
    finding.cmp_value = cmp.temperature;
    pass_on(finding);
    return finding.bits;
}

unsigned report_mixed_format(const PF &file, Side side)
{
    transcript_puts(side == Side::REFERENCE
                        ? "\nThe reference file DOES NOT use a consistent data format\n\n"
                        : "\nThe comparison file DOES NOT use a consistent data format\n\n");
    Finding finding = finding_here(FindingKind::MIXED_FORMAT, kNoAnalysis, file.name, EXIT_FILE);
    finding.side = side;
    pass_on(finding);
    return finding.bits;
}

unsigned report_formats(const PF &ref, const PF &cmp)
{
    transcript_puts("\nThese punch files DO NOT have the same data format\n\n");
    Finding finding = finding_here(FindingKind::DATA_FORMAT, kNoAnalysis, "", EXIT_FORMAT);
    finding.ref_text = format_name(ref.format);
    finding.cmp_text = format_name(cmp.format);
    pass_on(finding);
    return finding.bits;
}
