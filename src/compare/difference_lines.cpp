// SPDX-License-Identifier: MIT
#include "compare/difference_lines.h"

#include "compare/analysis_table.h"
#include "compare/table_headers.h"
#include "support/exit_bits.h"
#include "support/transcript.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

const UnitTexts kValueYUnits = {FindingKind::Y_UNITS,
                                "YUNITS for signal %s in comparison file is missing.\n",
                                "YUNITS for signal %s in reference file is missing.\n",
                                "\nYUNITS for signal %s is different.\n",
                                false,
                                false,
                                "\n\n"};

const UnitTexts kSweepXUnits = {FindingKind::X_UNITS,
                                "XUNITS for signal %s is missing in comparison file.\n",
                                "XUNITS for signal %s not present in reference file.\n",
                                "XUNITS for %s signal %s is different.\n",
                                true,
                                true,
                                "\n"};

const UnitTexts kFourierXUnits = {FindingKind::X_UNITS,
                                  "XUNITS for signal %s is missing in comparison file.\n",
                                  "XUNITS for signal %s not present in reference file.\n",
                                  "XUNITS for signal %s is different.\n",
                                  false,
                                  true,
                                  "\n\n"};

const UnitTexts kWaveformYUnits = {FindingKind::Y_UNITS,
                                   "YUNITS for signal %s is missing in comparison file.\n",
                                   "YUNITS for signal %s not present in reference file.\n",
                                   "YUNITS for signal %s is different.\n",
                                   false,
                                   true,
                                   "\n\n"};

namespace
{

void print_both_files(const char *reference, const char *comparison, const char *end = "\n\n")
{
    transcript_printf("  Reference file : %s,  Comparison file: %s%s", reference, comparison, end);
}

std::string formatted(const char *format, double value)
{
    char text[64];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

void print_units(const UnitTexts &texts, int code, const char *name, const char *reference,
                 const char *comparison)
{
    if (texts.below_header) {
        print_tk_header(code);
    }
    if (comparison == nullptr) {
        transcript_printf(texts.missing_in_comparison, name);
    } else if (reference == nullptr) {
        transcript_printf(texts.missing_in_reference, name);
    } else {
        if (texts.names_analysis) {
            transcript_printf(texts.different, into_string(static_cast<unsigned>(code)), name);
        } else {
            transcript_printf(texts.different, name);
        }
        print_both_files(reference, comparison, texts.end);
    }
}

// Prints a finding of two texts below its line.
unsigned print_difference(const char *line, const Finding &finding)
{
    transcript_puts(line);
    print_both_files(finding.ref_text.c_str(), finding.cmp_text.c_str());
    pass_on(finding);
    return finding.bits;
}

unsigned print_force_difference(FindingKind kind, const char *line, const TPsoln &ref, const TPsoln &cmp,
                                const std::string &ref_text, const std::string &cmp_text)
{
    Finding finding = finding_here(kind, ref.analysis, "", EXIT_ANALYSES);
    finding.statements = {&ref, &cmp};
    finding.ref_text = ref_text;
    finding.cmp_text = cmp_text;
    return print_difference(line, finding);
}

unsigned print_block_difference(FindingKind kind, const char *line, const PZform &ref, const PZform &cmp,
                                const std::string &ref_text, const std::string &cmp_text)
{
    Finding finding = finding_here(kind, PZ, "", EXIT_UNITS);
    finding.blocks = {&ref, &cmp};
    finding.ref_text = ref_text;
    finding.cmp_text = cmp_text;
    return print_difference(line, finding);
}

// Kept: the code is compared with that of a transient analysis, not of its .FORCE statements, so that
// both kinds are "PSS" (docs/verdict.md, "What is not a value").
const char *force_analysis_name(const TPsoln &statement)
{
    return statement.analysis == TR ? "TR" : "PSS";
}

const char *type_name(const PZform &block)
{
    return block.pztype == 1 ? "VOL" : "CUR";
}

} // namespace

unsigned report_units(const UnitTexts &texts, int code, const char *name, const char *reference,
                      const char *comparison)
{
    print_units(texts, code, name, reference, comparison);
    if (listening()) {
        Finding finding = finding_here(texts.kind, code, name, EXIT_UNITS);
        finding.ref_text = reference != nullptr ? reference : "";
        finding.cmp_text = comparison != nullptr ? comparison : "";
        finding.side = reference == nullptr    ? Side::REFERENCE
                       : comparison == nullptr ? Side::COMPARISON
                                               : Side::NEITHER;
        pass_on(finding);
    }
    return EXIT_UNITS;
}

unsigned report_coefficient_count(const Wform &ref, const Wform &cmp)
{
    if (ref.numpts == cmp.numpts) { // which is what would be printed
        return ref.count == cmp.count ? 0U : EXIT_ANALYSES;
    }
    print_tk_header(FOUR);
    transcript_printf("Wrong number of coefficients for signal %s.\n", ref.name);
    // Kept: the bit is that of missing analyses (docs/verdict.md, "Fourier results, poles and zeros").
    Finding finding = finding_here(FindingKind::COEFFICIENT_COUNT, FOUR, ref.name, EXIT_ANALYSES);
    finding.signals = {&ref, &cmp};
    finding.ref_text = std::to_string(ref.numpts);
    finding.cmp_text = std::to_string(cmp.numpts);
    return print_difference("", finding);
}

unsigned report_force_difference(const TPsoln &ref, const TPsoln &cmp)
{
    unsigned bits = 0;
    if (ref.tshift != cmp.tshift) {
        bits |= print_force_difference(FindingKind::FORCE_TSHIFT,
                                       "\nTSHIFT for .FORCE statement is different.\n", ref, cmp,
                                       formatted("%11.6E", ref.tshift), formatted("%11.6E", cmp.tshift));
    }
    if (ref.analysis != cmp.analysis) {
        bits |= print_force_difference(FindingKind::FORCE_ANALYSIS,
                                       "\nAnalysis type for .FORCE statement is different.\n", ref, cmp,
                                       force_analysis_name(ref), force_analysis_name(cmp));
    }
    return bits;
}

unsigned report_block_difference(const PZform &ref, const PZform &cmp)
{
    unsigned bits = 0;
    if (std::strcmp(ref.iport, cmp.iport) != 0) {
        bits |= print_block_difference(FindingKind::INPUT_PORT, "Pole-Zero input port names are different.\n",
                                       ref, cmp, ref.iport, cmp.iport);
    }
    if (std::strcmp(ref.oport, cmp.oport) != 0) {
        bits |=
            print_block_difference(FindingKind::OUTPUT_PORT, "Pole-Zero output port names are different.\n",
                                   ref, cmp, ref.oport, cmp.oport);
    }
    if (ref.pztype != cmp.pztype) {
        bits |= print_block_difference(FindingKind::TRANSFER_TYPE,
                                       "Pole-Zero transfer function types are different.\n", ref, cmp,
                                       type_name(ref), type_name(cmp));
    }
    if (ref.tpunch_time != cmp.tpunch_time) {
        bits |= print_block_difference(FindingKind::PUNCH_TIME,
                                       "Pole-Zero transient tpunch times are different.\n", ref, cmp,
                                       formatted("%g", ref.tpunch_time), formatted("%g", cmp.tpunch_time));
    }
    return bits;
}

unsigned report_point_count(const Wform &ref, const Wform &cmp, int code, Side lacking)
{
    // Kept: printed, not judged, and without the signal's name (docs/verdict.md, "Sweeps").
    transcript_puts(lacking == Side::REFERENCE ? " ERROR1.\n" : " ERROR2.\n");
    Finding finding = finding_here(FindingKind::POINT_COUNT, code, ref.name, 0);
    finding.is_judged = false;
    finding.side = lacking;
    finding.signals = {&ref, &cmp};
    finding.missing_points = std::abs(ref.numpts - cmp.numpts);
    pass_on(finding);
    return finding.bits;
}

unsigned report_negative_error(const Wform &ref, const Wform &cmp, int code, double abserr)
{
    transcript_puts(" problem with ABS macro.\n");
    Finding finding = finding_here(FindingKind::NEGATIVE_ERROR, code, ref.name, 0);
    finding.is_judged = false;
    finding.signals = {&ref, &cmp};
    finding.judged.abserr = abserr;
    pass_on(finding);
    return finding.bits;
}

unsigned report_empty_indc()
{
    transcript_puts("No INDC signals in either file.\n");
    Finding finding = finding_here(FindingKind::EMPTY_INDC, INDC1, "INDC", 0);
    finding.is_judged = false;
    pass_on(finding);
    return finding.bits;
}
