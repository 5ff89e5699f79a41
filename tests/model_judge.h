// SPDX-License-Identifier: MIT
#ifndef TRESK_TESTS_MODEL_JUDGE_H
#define TRESK_TESTS_MODEL_JUDGE_H

#include "compare/finding.h"
#include "read/analysis_traits.h"
#include "support/exit_bits.h"

#include "model_results.h"

#include <cmath>
#include <set>
#include <utility>

// What the model knows of a finding, as text. Findings of whole lists have labels for names, which are
// left to the golden cases.
inline std::string text_of(const Finding &finding)
{
    const std::set<FindingKind> labelled = {FindingKind::MISSING_SOLUTION, FindingKind::MISSING_STATEMENT,
                                            FindingKind::EMPTY_INDC};
    std::ostringstream text;
    text << "FindingKind " << static_cast<int>(finding.kind) << " " << analysis_name(finding.analysis)
         << " of rerun " << finding.place.rerun.value_or(-1) << " modify "
         << finding.place.modify.value_or(-1) << " time " << finding.place.force_time.value_or(-1) << ": '"
         << (labelled.count(finding.kind) > 0 ? "" : finding.name) << "' side "
         << static_cast<int>(finding.side) << " bits " << finding.bits << " error " << finding.judged.abserr
         << " fails " << finding.fails << "/" << finding.compared << " nan " << finding.met_nan << " missing "
         << finding.missing_points;
    if (finding.kind == FindingKind::SWEEP) {
        text << " worst " << finding.worst.index;
    }
    return text.str();
}

// All findings of a run in any order, and how it ended.
inline std::string text_of(const std::multiset<std::string> &findings, unsigned status, int grade)
{
    std::ostringstream text;
    for (const std::string &finding : findings) {
        text << finding << "\n";
    }
    text << "status " << status << " grade " << grade << "\n";
    return text.str();
}

// Judges pairs of results by plain searches.
class Judge
{
  public:
    explicit Judge(const Tolerances &tolerances)
        : mode_(tolerances.mode), abstol_(std::stod(tolerances.absolute)),
          reltol_(std::stod(tolerances.relative))
    {
    }

    void compare(const Results &ref, const Results &cmp)
    {
        for (const Modify &modify : ref) {
            const auto partner = std::find_if(cmp.begin(), cmp.end(), [&modify](const Modify &one) {
                return one.rerun == modify.rerun && one.number == modify.number;
            });
            if (partner != cmp.end()) {
                place_ = {modify.rerun, modify.number, {}};
                compare_modifies(modify, *partner);
            }
        }
        tell_missing_variants(ref, cmp, Side::COMPARISON);
        tell_missing_variants(cmp, ref, Side::REFERENCE);
    }

    // The format of the reference file holds for the other one too, so only a higher one differs.
    void compare_formats(int ref, int cmp)
    {
        if (cmp > ref) {
            expect(FindingKind::DATA_FORMAT, kNoAnalysis, "", EXIT_FORMAT);
        }
    }

    int grade() const
    {
        return status == 0 ? 0 : status & 256 ? 5 : status & 96 ? 1 : status & 4 ? 2 : status & 1 ? 3 : 4;
    }

    unsigned status = 0;
    std::multiset<std::string> findings;

  private:
    using Signals = std::vector<std::pair<const Section *, const Signal *>>;

    void expect(const Finding &finding)
    {
        status |= finding.bits;
        findings.insert(text_of(finding));
    }

    Finding finding_here(FindingKind kind, int code, const std::string &name) const
    {
        Finding finding;
        finding.kind = kind;
        finding.analysis = code;
        finding.name = name;
        finding.place = place_;
        return finding;
    }

    void expect(FindingKind kind, int code, const std::string &name, unsigned bits,
                Side lacking = Side::NEITHER, std::size_t missing_points = 0)
    {
        Finding finding = finding_here(kind, code, name);
        finding.bits = bits;
        finding.side = lacking;
        finding.missing_points = static_cast<int>(missing_points);
        expect(finding);
    }

    void tell_missing_variants(const Results &here, const Results &there, Side lacking)
    {
        std::map<int, std::set<int>> numbers; // of the modifies of each rerun
        for (const Modify &modify : there) {
            numbers[modify.rerun].insert(modify.number);
        }
        std::set<int> missing_reruns;
        for (const Modify &modify : here) {
            place_ = {modify.rerun, {}, {}};
            if (numbers.count(modify.rerun) == 0 && missing_reruns.insert(modify.rerun).second) {
                expect(FindingKind::MISSING_RERUN, kNoAnalysis, "", EXIT_VARIANTS, lacking);
            } else if (numbers.count(modify.rerun) > 0 && numbers[modify.rerun].count(modify.number) == 0) {
                place_.modify = modify.number;
                expect(FindingKind::MISSING_MODIFY, kNoAnalysis, "", EXIT_VARIANTS, lacking);
            }
        }
        place_ = {};
    }

    static Signals signals_of(const Modify &modify, int code)
    {
        Signals found;
        for (const Section &section : modify.sections) {
            const int header = analysis_of_header_word(section.analysis.c_str());
            const bool by_units =
                header != OP && header != DC && header != MR && !is_over_time(section.analysis);
            for (const Signal &signal : section.signals) {
                const bool distortion = by_units && signal.units == "HD2";
                const bool noise = header == AC && signal.units == "V/SQRT(HZ)";
                if (code == (distortion ? static_cast<int>(DISTO)
                             : noise    ? static_cast<int>(NOISE)
                                        : header)) {
                    found.emplace_back(&section, &signal);
                }
            }
        }
        if (code == OP) { // kept in reverse, as ever
            std::reverse(found.begin(), found.end());
        }
        return found;
    }

    void compare_modifies(const Modify &ref, const Modify &cmp)
    {
        if (ref.temperature != cmp.temperature) {
            expect(FindingKind::TEMPERATURE, kNoAnalysis, "", EXIT_UNITS);
        }
        for (const int code : {INOP, INTR, INPSS}) {
            compare_initial_list(ref, cmp, code);
        }
        compare_first_and_last(ref, cmp);
        compare_forces(TR_FORCE, forces_of(ref, "TR"), forces_of(cmp, "TR"));
        compare_forces(PSS_FORCE, forces_of(ref, "PSS"), forces_of(cmp, "PSS"));
        for (int code = 0; code < kAnalysisCount; ++code) {
            const Signals ours = signals_of(ref, code);
            const Signals theirs = signals_of(cmp, code);
            if (code == OP && ours.empty() != theirs.empty()) {
                expect(FindingKind::MISSING_SOLUTION, OP, "", EXIT_ANALYSES, lacking_side(ours.empty()));
            } else {
                compare_signals(code, ours, theirs);
            }
        }
    }

    static Side lacking_side(bool is_reference)
    {
        return is_reference ? Side::REFERENCE : Side::COMPARISON;
    }

    void compare_initial_list(const Modify &ref, const Modify &cmp, int code)
    {
        const bool in_ref = ref.initial.count(analysis_name(code)) > 0;
        const bool in_cmp = cmp.initial.count(analysis_name(code)) > 0;
        if (in_ref != in_cmp) {
            expect(FindingKind::MISSING_SOLUTION, code, "", EXIT_ANALYSES, lacking_side(!in_ref));
        } else if (in_ref) {
            MetValues ours{ref.initial.at(analysis_name(code))};
            MetValues theirs{cmp.initial.at(analysis_name(code))};
            compare_solutions(code, ours, theirs);
        }
    }

    void compare_first_and_last(const Modify &ref, const Modify &cmp)
    {
        const bool in_ref = ref.initial.count("INDC1") + ref.initial.count("INDC2") > 0;
        const bool in_cmp = cmp.initial.count("INDC1") + cmp.initial.count("INDC2") > 0;
        if (in_ref != in_cmp) {
            expect(FindingKind::MISSING_SOLUTION, INDC1, "", EXIT_ANALYSES, lacking_side(!in_ref));
        } else if (in_ref && ref.initial.count("INDC1") + cmp.initial.count("INDC1") == 0) {
            expect(FindingKind::EMPTY_INDC, INDC1, "", 0); // whatever the last points hold
        } else {
            compare_initial_list(ref, cmp, INDC1);
            compare_initial_list(ref, cmp, INDC2);
        }
    }

    void compare_signals(int code, const Signals &ref, Signals cmp)
    {
        for (const auto &[section, signal] : ref) {
            const auto partner = std::find_if(cmp.begin(), cmp.end(), [name = signal->name](const auto &one) {
                return one.second != nullptr && one.second->name == name;
            });
            if (partner == cmp.end()) {
                expect(FindingKind::MISSING_SIGNAL, code, signal->name, EXIT_SIGNALS, Side::COMPARISON);
            } else {
                compare_pair(code, *section, *signal, *partner->first, *partner->second);
                partner->second = nullptr;
            }
        }
        for (const auto &[section, signal] : cmp) {
            if (signal != nullptr) {
                expect(FindingKind::MISSING_SIGNAL, code, signal->name, EXIT_SIGNALS, Side::REFERENCE);
            }
        }
    }

    // Values, and which of them have met a partner.
    struct MetValues {
        Values values;
        std::vector<bool> met = std::vector<bool>(values.size());
    };

    struct MetForce {
        Force force;
        MetValues values{force.values};
        bool met = false;
    };

    static std::vector<MetForce> forces_of(const Modify &modify, const std::string &analysis)
    {
        std::vector<MetForce> found;
        for (const Section &section : modify.sections) {
            for (const Force &force : section.forces) {
                if (section.analysis == analysis) {
                    found.push_back({force});
                }
            }
        }
        return found;
    }

    // Every statement meets all of its time, a NaN all there are; values once paired stay paired, but
    // those of the reference file look for partners again.
    void compare_forces(int code, std::vector<MetForce> ref, std::vector<MetForce> cmp)
    {
        for (MetForce &ours : ref) {
            place_.force_time = ours.force.time;
            for (MetForce &theirs : cmp) {
                if (ours.force.time < theirs.force.time || ours.force.time > theirs.force.time) {
                    continue;
                }
                ours.met = theirs.met = true;
                if (ours.force.tshift != theirs.force.tshift) {
                    expect(FindingKind::FORCE_TSHIFT, code, "", EXIT_ANALYSES);
                }
                compare_solutions(code, ours.values, theirs.values);
            }
        }
        for (const auto &[list, lacking] : {std::pair(&ref, Side::COMPARISON), {&cmp, Side::REFERENCE}}) {
            for (const MetForce &statement : *list) {
                if (!statement.met) {
                    place_.force_time = statement.force.time;
                    expect(FindingKind::MISSING_STATEMENT, code, "", EXIT_SIGNALS, lacking);
                }
            }
        }
        place_.force_time.reset();
    }

    void compare_solutions(int code, MetValues &ref, MetValues &cmp)
    {
        for (std::size_t i = 0; i < ref.values.size(); ++i) {
            const Value &ours = ref.values[i];
            for (std::size_t k = 0; k < cmp.values.size(); ++k) {
                const Value &theirs = cmp.values[k];
                if (!cmp.met[k] && ours.kind == theirs.kind && ours.name == theirs.name) {
                    ref.met[i] = cmp.met[k] = true;
                    compare_values(code, ours.name, ours.value, theirs.value);
                    break;
                }
            }
        }
        for (const auto &[list, lacking] : {std::pair(&ref, Side::COMPARISON), {&cmp, Side::REFERENCE}}) {
            for (std::size_t i = 0; i < list->values.size(); ++i) {
                if (!list->met[i]) {
                    expect(FindingKind::MISSING_SIGNAL, code, list->values[i].name, EXIT_SIGNALS, lacking);
                }
            }
        }
    }

    void compare_values(int code, const std::string &name, double ref, double cmp)
    {
        tell_judged(finding_here(FindingKind::VALUE, code, name), std::min(ref, cmp), std::fabs(ref - cmp),
                    ref);
    }

    // Tells of a pair that is judged by one error.
    void tell_judged(Finding finding, double level, double abserr, double ref)
    {
        const Verdict verdict = judged(level, abserr, relative(abserr, ref));
        finding.met_nan = verdict == NOT_A_NUMBER;
        finding.judged.abserr = abserr;
        finding.fails = verdict != PASSES ? 1 : 0;
        finding.compared = 1;
        finding.bits = verdict != PASSES ? EXIT_TOLERANCE : 0U;
        expect(finding);
    }

    Verdict judged(double level, double abserr, double relerr)
    {
        if (std::isnan(abserr) || std::isnan(relerr)) {
            status |= EXIT_NAN;
            return NOT_A_NUMBER;
        }
        const bool absolute = abserr > abstol_;
        const bool relative = relerr > reltol_;
        const bool near_zero = level == 0 || level <= abstol_; // where default checking judges absolutely
        const bool fails = mode_ == "-Ronly"             ? relative
                           : mode_ == "-AandR"           ? absolute && relative
                           : !mode_.empty() || near_zero ? absolute
                                                         : relative;
        return fails ? FAILS : PASSES;
    }

    void check_units(FindingKind kind, int code, const std::string &name, const std::string &ref,
                     const std::string &cmp)
    {
        if (ref != cmp) {
            expect(kind, code, name, EXIT_UNITS,
                   ref.empty()   ? Side::REFERENCE
                   : cmp.empty() ? Side::COMPARISON
                                 : Side::NEITHER);
        }
    }

    static double relative(double abserr, double ref)
    {
        return ref != 0.0 ? std::fabs(abserr / ref) : abserr != 0.0 ? 1.0 : 0.0;
    }

    void compare_pair(int code, const Section &ref_section, const Signal &ref, const Section &cmp_section,
                      const Signal &cmp)
    {
        const bool lengths_count = code == DC || code == MR;
        if (lengths_count) {
            check_units(FindingKind::X_UNITS, code, ref.name, ref_section.xunits, cmp_section.xunits);
        }
        if (lengths_count || code == TR || code == PSS || code == OP) {
            check_units(FindingKind::Y_UNITS, code, ref.name, ref.units, cmp.units);
        }
        if (code == TR || code == PSS) { // of the five intervals the last is not compared
            const double area = 4 * ref.values[0];
            tell_judged(finding_here(FindingKind::AREA, code, ref.name), abstol_,
                        std::fabs(area - 4 * cmp.values[0]), area);
        } else if (code == OP) {
            compare_values(code, ref.name, ref.values[0], cmp.values[0]);
        } else {
            compare_points(code, lengths_count, ref, cmp);
        }
    }

    void compare_points(int code, bool lengths_count, const Signal &ref, const Signal &cmp)
    {
        const std::size_t common = std::min(ref.values.size(), cmp.values.size());
        const std::size_t rest = std::max(ref.values.size(), cmp.values.size()) - common;
        if (rest > 0) {
            expect(lengths_count ? FindingKind::MISSING_POINTS : FindingKind::POINT_COUNT, code, ref.name,
                   lengths_count ? EXIT_TOLERANCE : 0U, lacking_side(ref.values.size() == common), rest);
        }
        Finding finding = finding_here(FindingKind::SWEEP, code, ref.name);
        finding.compared = static_cast<int>(common);
        double worst = 0.0;
        for (std::size_t i = 0; i < common; ++i) {
            const double a = ref.values[i];
            const double b = cmp.values[i];
            const bool phase = !lengths_count && ref.units == "DEGREES";
            const double abserr = std::fabs(phase ? std::remainder(a - b, 360.0) : a - b);
            const double relerr = relative(abserr, a);
            const Verdict verdict = judged(std::min(a, b), abserr, relerr);
            if (verdict == PASSES) {
                continue;
            }
            const bool first_nan = verdict == NOT_A_NUMBER && !finding.met_nan;
            if (first_nan || (!finding.met_nan && (finding.fails == 0 || abserr * relerr > worst))) {
                finding.worst.index = static_cast<int>(i);
                worst = abserr * relerr;
            }
            finding.met_nan = finding.met_nan || first_nan;
            finding.bits = EXIT_TOLERANCE;
            ++finding.fails;
            finding.judged.abserr = std::max(finding.judged.abserr, abserr);
        }
        expect(finding);
    }

    std::string mode_;
    double abstol_;
    double reltol_;
    Place place_;
};

#endif
