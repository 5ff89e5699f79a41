// SPDX-License-Identifier: MIT
#ifndef TRESK_TESTS_MODEL_JUDGE_H
#define TRESK_TESTS_MODEL_JUDGE_H

#include "model_results.h"

#include <cmath>
#include <cstdio>
#include <map>
#include <set>
#include <utility>

// The file that lacks what the one told has.
inline const char *lacking_file(bool in_reference)
{
    return in_reference ? "comparison" : "reference";
}

inline std::string missing_signal(const std::string &name, bool in_reference)
{
    return "Warning : signal " + name + "  is not present in the " + lacking_file(in_reference) + " file.";
}

// The kinds of signals, in the order of the transcript, and what it calls them.
inline const std::pair<std::string, std::string> kKinds[] = {
    {"OP", "OP"},   {"TR", "TR Waveform"}, {"PSS", "PSS Waveform"}, {"PAC", "PAC"},
    {"PXF", "PXF"}, {"PNOISE", "PNOISE"},  {"MR", "MEASURE"},       {"DC", "DC"},
    {"AC", "AC"},   {"NOISE", "AC NOISE"}, {"DISTO", "AC DISTO"},   {"XF", "XF"},
    {"STB", "STB"}};

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
        std::set<int> ref_reruns;
        std::set<int> cmp_reruns;
        for (const Modify &modify : ref) {
            ref_reruns.insert(modify.rerun);
        }
        for (const Modify &modify : cmp) {
            cmp_reruns.insert(modify.rerun);
        }
        for (const int rerun : ref_reruns) {
            if (cmp_reruns.count(rerun) > 0) {
                compare_rerun(ref, cmp, rerun);
            }
        }
        tell_missing("rerun", ref_reruns, cmp_reruns, true);
        tell_missing("rerun", cmp_reruns, ref_reruns, false);
    }

    // The format of the reference file holds for the other one too, so only a higher one differs.
    void compare_formats(int ref, int cmp)
    {
        if (cmp > ref) {
            tell(64, "These punch files DO NOT have the same data format");
        }
    }

    int grade() const
    {
        return bits == 0 ? 0 : bits & 256 ? 5 : bits & 96 ? 1 : bits & 4 ? 2 : bits & 1 ? 3 : 4;
    }

    // The end of the transcript.
    std::string result() const
    {
        static const Texts kGrades = {"PASS", "FAIL_I", "FAIL_PV", "FAIL_V", "FAIL_PSV", "FAIL_SV"};
        return "\n Comparison result:  " + kGrades[static_cast<std::size_t>(grade())] +
               (bits == 0 ? "" : "  (exit status = " + std::to_string(bits) + ")") + "\n\n";
    }

    unsigned bits = 0; // of the exit status, in numbers as users see them
    Texts findings;    // lines of the transcript, in order, in the form that the test reduces them to

  private:
    using Signals = std::vector<std::pair<const Section *, const Signal *>>;

    void tell(unsigned bit, const std::string &text)
    {
        bits |= bit;
        findings.push_back(text);
    }

    void tell_missing(const std::string &what, const std::set<int> &here, const std::set<int> &there,
                      bool in_reference)
    {
        for (const int number : here) {
            if (there.count(number) == 0) {
                tell(8, "Warning : " + what + " number " + std::to_string(number) + " is not present in " +
                            lacking_file(in_reference) + " file.");
            }
        }
    }

    void compare_rerun(const Results &ref, const Results &cmp, int rerun)
    {
        std::set<int> ours;
        std::set<int> theirs;
        for (const Modify &modify : cmp) {
            if (modify.rerun == rerun) {
                theirs.insert(modify.number);
            }
        }
        for (const Modify &modify : ref) {
            if (modify.rerun == rerun) {
                ours.insert(modify.number);
                const auto partner = std::find_if(cmp.begin(), cmp.end(), [&modify](const Modify &one) {
                    return one.rerun == modify.rerun && one.number == modify.number;
                });
                if (partner != cmp.end()) {
                    compare_modifies(modify, *partner);
                }
            }
        }
        tell_missing("modify", ours, theirs, true);
        tell_missing("modify", theirs, ours, false);
    }

    static Signals of_kind(const Modify &modify, const std::string &kind)
    {
        static const std::set<std::string> kPlain = {"OP", "DC", "MR", "TR", "PSS"};
        Signals found;
        for (const Section &section : modify.sections) {
            for (const Signal &signal : section.signals) {
                std::string is = section.analysis;
                if (kPlain.count(is) == 0) {
                    is = signal.units == "HD2"                        ? "DISTO"
                         : is == "AC" && signal.units == "V/SQRT(HZ)" ? "NOISE"
                                                                      : is;
                }
                if (is == kind) {
                    found.emplace_back(&section, &signal);
                }
            }
        }
        if (kind == "OP") { // kept in reverse, as ever
            std::reverse(found.begin(), found.end());
        }
        return found;
    }

    void compare_modifies(const Modify &ref, const Modify &cmp)
    {
        findings.push_back("** COMPARING RERUN " + std::to_string(ref.rerun) + " MODIFY " +
                           std::to_string(ref.number) + " DATA **");
        if (ref.temperature != cmp.temperature) {
            tell(32, "Run temperature is different");
        }
        compare_initial_solutions(ref, cmp);
        for (const auto &[analysis, label] : {std::pair("TR", ".FORCE TR"), {"PSS", ".FORCE PSS"}}) {
            compare_forces(label, forces_of(ref, analysis), forces_of(cmp, analysis));
        }
        for (const auto &[kind, label] : kKinds) {
            const Signals ours = of_kind(ref, kind);
            const Signals theirs = of_kind(cmp, kind);
            if (kind == "OP" && ours.empty() != theirs.empty()) {
                tell(16, std::string("Missing OP solution from ") + lacking_file(theirs.empty()) + " file.");
            } else {
                compare_kind(kind, label, ours, theirs);
            }
        }
    }

    // Compares the lists that both have. False if only one has them.
    bool compare_initial_list(const Modify &ref, const Modify &cmp, const std::string &kind,
                              const std::string &label)
    {
        if (ref.initial.count(kind) != cmp.initial.count(kind)) {
            return false;
        }
        if (ref.initial.count(kind) > 0) {
            MetValues ours{ref.initial.at(kind)};
            MetValues theirs{cmp.initial.at(kind)};
            const int fails = compare_solutions(ours, theirs);
            std::size_t missing = tell_missing_values(ours, true);
            missing += tell_missing_values(theirs, false);
            summarize(fails, missing, label);
        }
        return true;
    }

    void compare_initial_solutions(const Modify &ref, const Modify &cmp)
    {
        for (const std::string kind : {"INOP", "INTR", "INPSS"}) {
            if (!compare_initial_list(ref, cmp, kind, kind)) {
                tell(16, "Missing " + kind + " solution from " + lacking_file(ref.initial.count(kind) > 0) +
                             " file.");
            }
        }
        const bool in_ref = ref.initial.count("INDC1") + ref.initial.count("INDC2") > 0;
        const bool in_cmp = cmp.initial.count("INDC1") + cmp.initial.count("INDC2") > 0;
        if (in_ref != in_cmp) {
            tell(16, std::string("Missing INDC solution from ") + lacking_file(in_ref) + " file.");
        } else if (in_ref && ref.initial.count("INDC1") + cmp.initial.count("INDC1") == 0) {
            findings.emplace_back("No INDC signals in either file."); // whatever the last points hold
        } else {
            compare_indc_point(ref, cmp, "INDC1", "FIRST", "first");
            compare_indc_point(ref, cmp, "INDC2", "LAST", "last");
        }
    }

    void compare_indc_point(const Modify &ref, const Modify &cmp, const std::string &kind,
                            const std::string &place, const std::string &which)
    {
        if (!compare_initial_list(ref, cmp, kind, which + " INDC point")) {
            tell(16, "Missing INDC solution [" + place + " POINT] in " +
                         lacking_file(ref.initial.count(kind) > 0) + " file.");
        }
    }

    void compare_kind(const std::string &kind, const std::string &label, const Signals &ref, Signals cmp)
    {
        int fails = 0;
        Texts missing;
        for (const auto &[section, signal] : ref) {
            const auto partner = std::find_if(cmp.begin(), cmp.end(), [name = signal->name](const auto &one) {
                return one.second != nullptr && one.second->name == name;
            });
            if (partner == cmp.end()) {
                missing.push_back(missing_signal(signal->name, true));
                continue;
            }
            fails += compare_pair(kind, label, *section, *signal, *partner->first, *partner->second) ? 1 : 0;
            partner->second = nullptr;
        }
        for (const auto &[section, signal] : cmp) {
            if (signal != nullptr) {
                missing.push_back(missing_signal(signal->name, false));
            }
        }
        findings.insert(findings.end(), missing.begin(), missing.end());
        summarize(fails, missing.size(), label);
    }

    void summarize(int fails, std::size_t missing, const std::string &label)
    {
        if (fails > 0) {
            tell(1, "Found " + std::to_string(fails) + " " + label +
                        " signal(s) with absolute and relative errors over the thresholds.");
        }
        if (missing > 0) {
            tell(4, "Found " + std::to_string(missing) + " " + label +
                        " signal(s) without counterpart(s) in the compared files.");
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
    void compare_forces(const std::string &label, std::vector<MetForce> ref, std::vector<MetForce> cmp)
    {
        int fails = 0;
        std::size_t missing = 0;
        for (MetForce &ours : ref) {
            for (MetForce &theirs : cmp) {
                if (ours.force.time < theirs.force.time || ours.force.time > theirs.force.time) {
                    continue;
                }
                ours.met = theirs.met = true;
                if (ours.force.tshift != theirs.force.tshift) {
                    tell(16, "TSHIFT for .FORCE statement is different.");
                }
                fails += compare_solutions(ours.values, theirs.values);
                missing += tell_missing_values(ours.values, true);
                missing += tell_missing_values(theirs.values, false);
            }
        }
        missing += tell_missing_forces(label, ref, true);
        missing += tell_missing_forces(label, cmp, false);
        summarize(fails, missing, label);
    }

    int compare_solutions(MetValues &ref, MetValues &cmp)
    {
        static const std::map<std::string, std::string> kMarks = {
            {"NODE", ""}, {"INTERNAL", "~"}, {"IND", "*"}, {"CAP", "+"}};
        int fails = 0;
        for (std::size_t i = 0; i < ref.values.size(); ++i) {
            const Value &ours = ref.values[i];
            for (std::size_t k = 0; k < cmp.values.size(); ++k) {
                const Value &theirs = cmp.values[k];
                if (!cmp.met[k] && ours.kind == theirs.kind && ours.name == theirs.name) {
                    ref.met[i] = cmp.met[k] = true;
                    const std::string name = kMarks.at(ours.kind) + ours.name;
                    fails += compare_values(name, ours.value, theirs.value) ? 1 : 0;
                    break;
                }
            }
        }
        return fails;
    }

    std::size_t tell_missing_values(const MetValues &list, bool in_reference)
    {
        std::size_t count = 0;
        for (std::size_t i = 0; i < list.values.size(); ++i) {
            if (!list.met[i]) {
                findings.push_back(missing_signal(list.values[i].name, in_reference));
                ++count;
            }
        }
        return count;
    }

    std::size_t tell_missing_forces(const std::string &label, const std::vector<MetForce> &list,
                                    bool in_reference)
    {
        std::size_t count = 0;
        for (const MetForce &statement : list) {
            if (!statement.met) {
                char time[32];
                std::snprintf(time, sizeof time, "%11.6E", statement.force.time);
                findings.push_back("Warning : " + label.substr(7) + " .FORCE statement at time " + time +
                                   " is not present in the " + lacking_file(in_reference) + " file.");
                ++count;
            }
        }
        return count;
    }

    bool compare_values(const std::string &name, double ref, double cmp)
    {
        const double abserr = std::fabs(ref - cmp);
        const bool bad = fails(std::min(ref, cmp), abserr, relative(abserr, ref));
        if (bad) {
            tell(1, name + " " + short_form(abserr));
        }
        return bad;
    }

    bool fails(double level, double abserr, double relerr)
    {
        if (std::isnan(abserr) || std::isnan(relerr)) {
            bits |= 256;
            return true;
        }
        const bool absolute = abserr > abstol_;
        const bool relative = relerr > reltol_;
        const bool near_zero = level == 0 || level <= abstol_; // where default checking judges absolutely
        return mode_ == "-Ronly"             ? relative
               : mode_ == "-AandR"           ? absolute && relative
               : !mode_.empty() || near_zero ? absolute
                                             : relative;
    }

    void check_units(const std::string &what, const std::string &which, const std::string &ref,
                     const std::string &cmp, bool solution)
    {
        const std::string who = what + " for " + which;
        if (ref == cmp) {
            return;
        }
        if (cmp.empty()) {
            tell(32,
                 who + (solution ? " in comparison file is missing." : " is missing in comparison file."));
        } else if (ref.empty()) {
            tell(32, who + (solution ? " in reference file is missing." : " not present in reference file."));
        } else {
            tell(32, who + " is different.");
        }
    }

    static double relative(double abserr, double ref)
    {
        return ref != 0.0 ? std::fabs(abserr / ref) : abserr != 0.0 ? 1.0 : 0.0;
    }

    static std::string short_form(double error)
    {
        char text[32];
        std::snprintf(text, sizeof text, "%.3e", error);
        return text;
    }

    bool compare_pair(const std::string &kind, const std::string &label, const Section &ref_section,
                      const Signal &ref, const Section &cmp_section, const Signal &cmp)
    {
        const std::string who = "signal " + ref.name;
        if (kind == "DC" || kind == "MR") {
            const bool differ = !ref_section.xunits.empty() && !cmp_section.xunits.empty();
            check_units("XUNITS", differ ? label + " " + who : who, ref_section.xunits, cmp_section.xunits,
                        false);
        }
        if (kind == "DC" || kind == "MR" || is_over_time(kind)) {
            check_units("YUNITS", who, ref.units, cmp.units, false);
        }
        if (is_over_time(kind)) {
            // Of the five intervals the last is not compared.
            const double abserr = 4 * std::fabs(ref.values[0] - cmp.values[0]);
            if (!fails(abstol_, abserr, relative(abserr, 4 * ref.values[0]))) {
                return false;
            }
            findings.push_back(ref.name + " " + short_form(abserr));
            return true;
        }
        if (kind == "OP") {
            const bool bad = compare_values(ref.name, ref.values[0], cmp.values[0]);
            check_units("YUNITS", who, ref.units, cmp.units, true);
            return bad;
        }
        return compare_points(kind == "DC" || kind == "MR", ref, cmp);
    }

    bool compare_points(bool lengths_count, const Signal &ref, const Signal &cmp)
    {
        const std::size_t common = std::min(ref.values.size(), cmp.values.size());
        const std::size_t rest = std::max(ref.values.size(), cmp.values.size()) - common;
        const bool shorter = cmp.values.size() == common;
        int failing = 0;
        double worst = 0.0;
        for (std::size_t i = 0; i < common; ++i) {
            const double a = ref.values[i];
            const double b = cmp.values[i];
            const bool phase = !lengths_count && ref.units == "DEGREES";
            const double abserr = std::fabs(phase ? std::remainder(a - b, 360.0) : a - b);
            if (fails(std::min(a, b), abserr, relative(abserr, a))) {
                ++failing;
                worst = std::max(worst, abserr);
            }
        }
        if (!lengths_count && rest > 0) {
            findings.emplace_back(shorter ? "ERROR2." : "ERROR1.");
        }
        if (failing > 0) {
            findings.push_back(ref.name + " " + std::to_string(failing) + "/" + std::to_string(common) + " " +
                               short_form(worst));
        }
        if (lengths_count && rest > 0) {
            findings.push_back(std::to_string(rest) + " points missing for signal " + ref.name + " in " +
                               lacking_file(shorter) + " file.");
        }
        return failing > 0 || (lengths_count && rest > 0);
    }

    std::string mode_;
    double abstol_;
    double reltol_;
};

#endif
