// SPDX-License-Identifier: MIT
// Simulation results as plain values: random ones, and random changes to them.
#ifndef TRESK_TESTS_MODEL_RESULTS_H
#define TRESK_TESTS_MODEL_RESULTS_H

#include "test_support.h"

#include <algorithm>
#include <map>
#include <random>

using Texts = std::vector<std::string>;

// Values are small multiples of 1/4, which every spelling holds exactly. The x of a point is its index.
struct Signal {
    std::string name;
    std::string units; // none if empty, as for x units
    std::vector<double> values;
};

// A value of a solution. The two names of an INTERNAL one have a comma between them.
struct Value {
    std::string kind; // NODE, INTERNAL, IND or CAP
    std::string name;
    double value;
};

using Values = std::vector<Value>;

// A .FORCE statement, in TR and PSS only.
struct Force {
    double time;
    double tshift;
    Values values;
};

struct Section {
    std::string analysis;
    std::string xunits;
    std::vector<Signal> signals;
    std::vector<Force> forces;
};

struct Modify {
    int rerun = 0;
    int number = 0;
    double temperature = 0.0;
    std::map<std::string, Values> initial; // by INOP, INTR, INPSS, INDC1 and INDC2; none is empty
    std::vector<Section> sections;
};

using Results = std::vector<Modify>;

// The tolerance options of a run, as they are written; the mode may be empty.
struct Tolerances {
    std::string mode;
    std::string absolute;
    std::string relative;
};

class Dice
{
  public:
    explicit Dice(unsigned seed) : random_(seed)
    {
    }
    int below(std::size_t count)
    {
        return static_cast<int>(random_() % count);
    }
    bool one_in(std::size_t count)
    {
        return below(count) == 0;
    }
    template <typename List> auto &pick(List &&list)
    {
        return list[static_cast<std::size_t>(below(std::size(list)))];
    }
    double value()
    {
        return one_in(4) ? 0.0 : below(128) * 0.25 - 16.0;
    }

  private:
    std::mt19937 random_;
};

inline const Texts kAnalyses = {"OP", "OP", "DC",  "DC",  "AC",     "AC", "NOISE", "MR",
                                "TR", "TR", "PSS", "PAC", "PNOISE", "XF", "STB",   "PXF"};
inline const Texts kNames = {"V(OUT)", "V(out)", "I(V1)", "x1.q7", "NODE", "DATA", "A[3]", "ZZ"};
inline const Texts kUnits = {"", "VOLTS", "AMPS", "DEGREES", "V/SQRT(HZ)", "HD2"};
inline const Texts kXUnits = {"", "SECONDS", "VOLTS"};

// Waveforms over time are constant here, so that their areas are known.
inline bool is_over_time(const std::string &analysis)
{
    return analysis == "TR" || analysis == "PSS";
}

inline Signal random_signal(Dice &dice, const std::string &analysis)
{
    Signal signal{dice.pick(kNames), dice.pick(kUnits), {}};
    if (is_over_time(analysis)) {
        signal.values.assign(6, dice.value());
        return signal;
    }
    for (int count = analysis == "OP" ? 1 : 1 + dice.below(24); count > 0; --count) {
        signal.values.push_back(dice.value());
    }
    return signal;
}

inline Values random_values(Dice &dice, const Texts &kinds, int count)
{
    Values values;
    for (; count > 0; --count) {
        const std::string kind = dice.pick(kinds);
        const std::string name = dice.pick(Texts{"A", "B", "V(C)"});
        values.push_back({kind, kind == "INTERNAL" ? "Q1," + name : name, dice.value()});
    }
    return values;
}

// Few times, names and kinds, and many statements without values, so that most meet several others.
inline Force random_force(Dice &dice)
{
    return {dice.one_in(12) ? kNan : dice.below(3) * 1e-9, dice.below(2) * 0.5,
            random_values(dice, {"NODE", "NODE", "INTERNAL", "IND", "CAP"}, dice.below(4))};
}

inline void set_initial_solution(Dice &dice, Modify &modify)
{
    modify.initial[dice.pick(Texts{"INOP", "INTR", "INPSS", "INDC1", "INDC2"})] =
        random_values(dice, {"NODE", "INTERNAL"}, 1 + dice.below(3));
}

inline Results random_results(Dice &dice)
{
    Results results;
    for (int variant = 0; variant < 4; ++variant) {
        if (variant > 0 && dice.one_in(2)) {
            continue;
        }
        results.push_back({1 + variant / 2, variant % 2, 27.0 + variant, {}, {}});
        for (int solutions = dice.below(4); solutions > 0; --solutions) {
            set_initial_solution(dice, results.back());
        }
        for (int sections = 1 + dice.below(4); sections > 0; --sections) {
            Section section{dice.pick(kAnalyses), dice.pick(kXUnits), {}, {}};
            for (int signals = 1 + dice.below(5); signals > 0; --signals) {
                section.signals.push_back(random_signal(dice, section.analysis));
            }
            for (int forces = is_over_time(section.analysis) ? dice.below(6) : 0; forces > 0; --forces) {
                section.forces.push_back(random_force(dice));
            }
            results.back().sections.push_back(section);
        }
    }
    return results;
}

inline void change_values(Dice &dice, const std::string &analysis, std::vector<double> &values)
{
    if (is_over_time(analysis)) {
        values.assign(values.size(), dice.value());
        return;
    }
    double &value = dice.pick(values);
    switch (dice.below(analysis == "OP" ? 3 : 5)) {
    case 0:
        value = kNan;
        break;
    case 1:
        value += 0.25;
        break;
    case 2:
        value = dice.pick(std::vector{0.0, -value, 358.75, -540.0});
        break;
    case 3:
        values.push_back(dice.value());
        break;
    default:
        values.resize((values.size() + 1) / 2);
    }
}

inline void change_forces(Dice &dice, std::vector<Force> &forces)
{
    Force &force = dice.pick(forces);
    const Force other = random_force(dice);
    switch (dice.below(4)) {
    case 0:
        forces.push_back(other);
        break;
    case 1:
        force.time = other.time;
        break;
    case 2:
        force.tshift = other.tshift;
        break;
    default:
        force.values = other.values;
    }
}

inline void change_signals(Dice &dice, const std::string &analysis, std::vector<Signal> &signals)
{
    Signal &signal = dice.pick(signals);
    switch (dice.below(8)) {
    case 0:
        signals.erase(signals.begin() + dice.below(signals.size()));
        break;
    case 1:
        signals.insert(signals.begin(), Signal(signal));
        break;
    case 2:
        signal.name = dice.pick(kNames);
        break;
    case 3:
        signal.units = dice.pick(kUnits);
        break;
    case 4:
        std::reverse(signals.begin(), signals.end());
        break;
    default:
        change_values(dice, analysis, signal.values);
    }
}

inline void change(Dice &dice, Results &results)
{
    Modify &modify = dice.pick(results);
    Section &section = dice.pick(modify.sections);
    if (dice.one_in(16)) {
        modify.temperature += 1.0;
    } else if (dice.one_in(16)) {
        section.xunits = dice.pick(kXUnits);
    } else if (dice.one_in(16) && results.size() > 1) {
        results.erase(results.begin() + dice.below(results.size()));
    } else if (dice.one_in(16) && modify.sections.size() > 1) {
        modify.sections.erase(modify.sections.begin());
    } else if (dice.one_in(8)) {
        set_initial_solution(dice, modify);
    } else if (dice.one_in(8) && !modify.initial.empty()) {
        modify.initial.erase(modify.initial.begin());
    } else if (!section.forces.empty() && dice.one_in(2)) {
        change_forces(dice, section.forces);
    } else if (!section.signals.empty()) {
        change_signals(dice, section.analysis, section.signals);
    }
}

#endif
