// SPDX-License-Identifier: MIT
#include "compare/result_lines.h"

#include "compare/analysis_table.h"
#include "read/name_length.h"
#include "read/point_blocks.h"
#include "support/exit_bits.h"
#include "support/real.h"
#include "support/settings.h"
#include "support/transcript.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace
{

// A number of points in the 32 bits that it has always been printed in.
int printed(std::int64_t count)
{
    return static_cast<int>(count);
}

// A name, left-aligned in a column extra characters wider than the longest name, but at least minimum
// wide.
void print_name_column(const char *name, std::size_t extra, std::size_t minimum = 0)
{
    transcript_put_padded(name, std::max(glMaxSigLen + extra, minimum));
}

// What separates the last columns of a result line: one or two blanks, and the brackets.
struct ErrorGaps {
    std::string_view before_relative;
    std::string_view before_product;
};

constexpr ErrorGaps kOneBlank = {" (", ") ["};
constexpr ErrorGaps kTwoBlanks = {"  (", ")  ["};

// The last columns of a result line: "%9.3e (%9.3e) [%9.3e] %s\n" of the errors, their product and the
// marker.
void print_error_columns(const ErrorGaps &gaps, double abserr, double relerr, const char *marker)
{
    transcript_put_error(abserr);
    transcript_puts(gaps.before_relative);
    transcript_put_error(relerr);
    transcript_puts(gaps.before_product);
    transcript_put_error(static_cast<double>(Real(relerr) * Real(abserr)));
    transcript_puts("] ");
    transcript_puts(marker);
    transcript_puts("\n");
}

const char *type_mark(int type)
{
    switch (type) {
    case NODE:
        return " ";
    case INTERNAL:
        return "~";
    case IND:
        return "*";
    default:
        return "+";
    }
}

bool passes(const Judged &judged)
{
    return judged.verdict == PASSES;
}

// Passes a judged pair on, if there is a listener, once complete(finding) has added what its kind has of
// its own. Returns the bits.
template <typename Complete>
unsigned pass_on_pair(FindingKind kind, int code, const char *name, const Judged &judged, bool fails,
                      Complete complete)
{
    const unsigned bits = fails ? EXIT_TOLERANCE : 0U;
    if (listening()) {
        Finding finding = finding_here(kind, code, name, bits);
        finding.judged = judged;
        finding.marker = fails ? marker_of(judged) : "";
        finding.fails = fails ? 1 : 0;
        finding.compared = 1;
        finding.met_nan = judged.verdict == NOT_A_NUMBER;
        complete(finding);
        pass_on(finding);
    }
    return bits;
}

void print_time_line(const Wform &ref, int code, const Judged &judged, const char *marker)
{
    print_tk_header(code);
    print_name_column(ref.name, 3);
    transcript_puts(" ");
    print_error_columns(kOneBlank, judged.abserr, judged.relerr, marker);
}

// Ranks the errors of failing points: what is no number first, then by the product of the errors.
class WorstSearch
{
  public:
    void look_at(const PT &ref, const PT &cmp, const Judged &judged)
    {
        ++index_;
        if (passes(judged) || met_nan) {
            return;
        }
        met_nan = judged.verdict == NOT_A_NUMBER;
        const double product = judged.abserr * judged.relerr;
        if (met_nan || place.index < 0 || product > product_) {
            place = {index_, ref.x};
            ref_value = ref.val;
            cmp_value = cmp.val;
            product_ = product;
        }
    }

    WorstPlace place;
    double ref_value = 0.0;
    double cmp_value = 0.0;
    bool met_nan = false;

  private:
    int index_ = -1;
    double product_ = 0.0;
};

// The marker of a line, from a test of the maxima alone.
// Kept: a line of failing points may so get the marker of a passing test (docs/verdict.md, "Sweeps").
const char *line_marker(const SweepResult &found)
{
    const char *marker = nullptr;
    test_error_thresholds(glAbstol, found.max_abs, found.max_rel, &marker);
    return marker;
}

unsigned pass_on_sweep(const Wform &ref, const Wform &cmp, int code, const SweepResult &found)
{
    const unsigned bits = found.fails > 0 ? EXIT_TOLERANCE : 0U;
    if (!listening()) {
        return bits;
    }
    WorstSearch search;
    if (bits != 0) {
        analysis_row(code).walk(ref, cmp, [&search](const PT &point, const PT &other, const Judged &judged) {
            search.look_at(point, other, judged);
        });
    }
    Finding finding = finding_here(FindingKind::SWEEP, code, ref.name, bits);
    finding.signals = {&ref, &cmp};
    finding.judged = {glAbstol, found.max_abs, found.max_rel, search.met_nan ? NOT_A_NUMBER : FAILS};
    if (bits == 0) {
        finding.judged.verdict = PASSES;
    } else {
        finding.marker = line_marker(found);
    }
    finding.fails = found.fails;
    finding.compared = found.compared;
    finding.met_nan = search.met_nan;
    finding.worst = search.place;
    finding.ref_value = search.ref_value;
    finding.cmp_value = search.cmp_value;
    pass_on(finding);
    return bits;
}

WorstPlace worst_interval(const Areas &areas)
{
    WorstPlace worst;
    double largest = 0.0;
    for (int i = 0; i < areas.count; ++i) {
        const double difference = std::fabs(areas.cmp[i] - areas.ref[i]);
        const bool is_nan = difference != difference;
        if (is_nan || difference > largest) {
            worst = {i, (i - 1) * areas.dx};
            largest = difference;
        }
        if (is_nan) {
            break;
        }
    }
    return worst;
}

const char *half_plane(const TRI &root)
{
    return root.mag < 0.0 ? "LHP" : "RHP";
}

} // namespace

unsigned report_value(const Isoln &ref, const Isoln &cmp, int code, const Judged &judged)
{
    if (!passes(judged)) {
        print_tk_header(code);
        transcript_puts(type_mark(ref.type));
        print_name_column(ref.name, 3);
        transcript_puts(" ");
        print_error_columns(kOneBlank, judged.abserr, judged.relerr, marker_of(judged));
    }
    return pass_on_pair(FindingKind::VALUE, code, ref.name, judged, !passes(judged), [&](Finding &finding) {
        finding.values = {&ref, &cmp};
        finding.ref_value = ref.value;
        finding.cmp_value = cmp.value;
    });
}

unsigned report_ac_sweep(const Wform &ref, const Wform &cmp, int code, const SweepResult &found)
{
    if (found.fails > 0) {
        print_tk_header(code);
        print_name_column(ref.name, 3, 15);
        // Kept: the width of the counts follows the last digit of the number of points, not how many
        // digits it has (docs/verdict.md, "Sweeps").
        const int width = static_cast<int>(found.compared % 10) + 1;
        transcript_printf("%*d/%-*d    ", width, printed(found.fails), width, printed(found.compared));
        print_error_columns(kTwoBlanks, found.max_abs, found.max_rel, line_marker(found));
    }
    return pass_on_sweep(ref, cmp, code, found);
}

unsigned report_dc_sweep(const Wform &ref, const Wform &cmp, int code, const SweepResult &found)
{
    if (found.fails > 0) {
        print_tk_header(code);
        print_name_column(ref.name, 8);
        transcript_printf("%d/%d     ", printed(found.fails), printed(found.compared));
        print_error_columns(kTwoBlanks, found.max_abs, found.max_rel, line_marker(found));
    }
    return pass_on_sweep(ref, cmp, code, found);
}

unsigned report_area(const Wform &ref, const Wform &cmp, int code, const Judged &judged, const Areas &areas)
{
    if (!passes(judged)) {
        print_time_line(ref, code, judged, marker_of(judged));
    }
    return pass_on_pair(FindingKind::AREA, code, ref.name, judged, !passes(judged), [&](Finding &finding) {
        finding.signals = {&ref, &cmp};
        finding.areas = areas;
        finding.worst = worst_interval(areas);
    });
}

unsigned report_single_point(FindingKind kind, const Wform &ref, const Wform &cmp, int code,
                             const Judged &judged)
{
    if (!passes(judged)) {
        print_time_line(ref, code, judged, marker_of(judged));
    }
    return pass_on_pair(kind, code, ref.name, judged, !passes(judged), [&](Finding &finding) {
        const bool is_value = kind == FindingKind::SINGLE_VALUE;
        finding.signals = {&ref, &cmp};
        finding.ref_value = is_value ? first_point(ref).val : first_point(ref).x;
        finding.cmp_value = is_value ? first_point(cmp).val : first_point(cmp).x;
    });
}

unsigned report_few_points(const Wform &ref, const Wform &cmp, int code)
{
    static const Judged kWorst = {0.0, 1.0, 1.0, FAILS};
    static const char kMarker[] = " <=A=R= ! ! ! ! ! ! !";
    print_time_line(ref, code, kWorst, kMarker);
    return pass_on_pair(FindingKind::FEW_POINTS, code, ref.name, kWorst, true, [&](Finding &finding) {
        finding.signals = {&ref, &cmp};
        finding.marker = kMarker;
    });
}

unsigned report_coefficient(const Wform &ref, const Wform &cmp, const PT &ref_point, const PT &cmp_point,
                            int position, const Judged &judged)
{
    if (!passes(judged)) {
        print_tk_header(FOUR);
        print_name_column(ref.name, 3);
        transcript_printf(" %2d   %9.3e  ", position, ref_point.x);
        print_error_columns(kOneBlank, judged.abserr, judged.relerr, marker_of(judged));
    }
    const auto complete = [&](Finding &finding) {
        finding.signals = {&ref, &cmp};
        finding.position = position;
        finding.ref_value = ref_point.val;
        finding.cmp_value = cmp_point.val;
        finding.worst = {position - 1, ref_point.x};
    };
    return pass_on_pair(FindingKind::COEFFICIENT, FOUR, ref.name, judged, !passes(judged), complete);
}

unsigned report_root(const TRI &ref, const TRI &cmp, int kind, int position, const Judged &judged,
                     bool sides_differ)
{
    const bool fails = !passes(judged) || sides_differ;
    const std::string name = root_name(kind, position);
    if (fails) {
        print_tk_header(PZ);
        print_name_column(name.c_str(), 3);
        transcript_printf(" %-7s %-7s ", half_plane(ref), half_plane(cmp));
        print_error_columns(kTwoBlanks, judged.abserr, judged.relerr, marker_of(judged));
    }
    return pass_on_pair(FindingKind::ROOT, PZ, name.c_str(), judged, fails, [&](Finding &finding) {
        finding.roots = {&ref, &cmp};
        finding.root_kind = kind;
        finding.position = position;
        finding.half_planes_differ = sides_differ;
    });
}

std::string root_name(int kind, int position)
{
    static constexpr const char *kRootLabels[] = {"", "pole", "zero", "cancelled pole", "cancelled zero"};
    return std::string(kRootLabels[kind]) + " " + std::to_string(position);
}
