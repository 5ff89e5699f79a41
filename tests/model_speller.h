// SPDX-License-Identifier: MIT
#ifndef TRESK_TESTS_MODEL_SPELLER_H
#define TRESK_TESTS_MODEL_SPELLER_H

#include "model_results.h"

#include <cctype>
#include <cstdio>
#include <cstring>

// Writes results in one of the many ways that a file may hold them.
class Speller
{
  public:
    // Binary signals are of the given format word; with none all signals are text.
    Speller(Dice &dice, std::string binary, bool big_endian)
        : dice_(dice), binary_(std::move(binary)), big_endian_(big_endian)
    {
    }

    std::string spelled(const Results &results)
    {
        for (const Modify &modify : results) {
            bool first = true;
            for (const Section &section : modify.sections) {
                write_header(modify, section);
                if (first) {
                    write_initial_solutions(modify);
                }
                first = false;
                for (const Signal &signal : section.signals) {
                    write_signal(section.analysis, signal);
                }
                for (const Force &force : section.forces) {
                    write_force(force);
                }
            }
        }
        return text_ + dice_.pick(Texts{"", "*$$ end\nZZ 1 2\n", "\xffZZ 1 2\n", "*\n* --- x\nZZ 1 2\n"});
    }

    // The data format of the file: nothing, text or binary.
    int format() const
    {
        return format_;
    }

  private:
    void gap()
    {
        text_ += dice_.pick(Texts{" ", "  ", "\t", ", ", "=", " = "});
        if (dice_.one_in(8)) {
            text_ += dice_.pick(Texts{"\n+", " \n + ", "\n*$ x\n+ ", "\n+\n+ ", "\n+ \n*$\n+\t"});
        }
    }

    void end_line()
    {
        text_ += dice_.pick(Texts{"\n", "\n", " \n", "\t\n", "\n*$ANALYSIS\n", "\n+ \n"});
    }

    void note()
    {
        text_ += dice_.pick(Texts{"", "", "", "* \n", "* a\n", "* TITLES = 1 2\n", "\n", " \n"});
    }

    // A word that is read in any case and that "&" may break.
    void word(const std::string &letters)
    {
        const bool lower = dice_.one_in(2);
        const int broken = dice_.one_in(30) ? dice_.below(letters.size()) : 0;
        for (int i = 0; i < static_cast<int>(letters.size()); ++i) {
            const char c = letters[static_cast<std::size_t>(i)];
            text_ += i > 1 && i == broken ? "&x\n" : "";
            text_ += lower ? static_cast<char>(std::tolower(c)) : c;
        }
    }

    void words(const Texts &list)
    {
        for (const std::string &item : list) {
            gap();
            word(item);
        }
    }

    void number(double value)
    {
        char digits[64];
        const char *format = dice_.pick(std::vector{"%.17g", "%.6e", "%+.2f", "%.4fE0", "%a", "%.3fx"});
        std::snprintf(digits, sizeof digits, format, value);
        word(digits);
    }

    void write_header(const Modify &modify, const Section &section)
    {
        text_ += "*";
        words({"ANALYSIS", section.analysis, "PROGRAM", "X"});
        if (dice_.one_in(2)) {
            words({"DATE", "1", "TIME", "2"});
        }
        end_line();
        text_ += "*";
        words({"RERUN_NUMBER", std::to_string(modify.rerun), "TEMPERATURE",
               std::to_string(modify.temperature), "MODIFY", std::to_string(modify.number)});
        end_line();
        note();
        if (!section.xunits.empty()) {
            text_ += "*";
            words({"XUNITS", section.xunits});
            end_line();
        }
    }

    void write_signal(const std::string &analysis, const Signal &signal)
    {
        note();
        text_ += signal.name + dice_.pick(Texts{" ", "   ", " \n+ "});
        if (is_over_time(analysis) && dice_.one_in(4)) {
            text_ += "PWL DELAY";
            gap();
            number(3.0);
            gap();
        }
        if (!signal.units.empty()) {
            text_ += "YUNITS";
            words({signal.units});
            gap();
        }
        if (analysis != "OP" && !binary_.empty() && dice_.one_in(2)) {
            write_binary(signal);
            return;
        }
        format_ = std::max(format_, analysis == "OP" ? 0 : 1);
        for (std::size_t i = 0; i < signal.values.size(); ++i) {
            if (i > 0) {
                gap();
            }
            number(static_cast<double>(i));
            gap();
            number(signal.values[i]);
        }
        end_line();
    }

    void write_force(const Force &force)
    {
        note();
        text_ += dice_.pick(Texts{".FORCE\n*", ".force \n *"});
        words({"SOLUTION", "SAVED", "FOR", "TPUNCH", "TIME", std::to_string(force.time * 1e9) + "E-9"});
        if (dice_.one_in(2)) {
            words({"FOR", "RERUN", "1", "DATA"});
        }
        end_line();
        text_ += "*";
        words({"TSHIFT", std::to_string(force.tshift), "IN", "SECONDS"});
        write_values(force.values);
    }

    void write_values(const Values &values)
    {
        std::string kind = "NODE";
        for (const Value &value : values) {
            if (value.kind != kind) {
                gap();
                text_ += value.kind;
            }
            kind = value.kind;
            gap();
            const std::size_t comma = std::min(value.name.find(','), value.name.size());
            text_ += value.name.substr(0, comma);
            if (comma < value.name.size()) {
                gap();
                text_ += value.name.substr(comma + 1);
            }
            gap();
            number(value.value);
        }
        end_line();
    }

    void write_initial_list(const std::string &analysis, const Values &values)
    {
        text_ += dice_.one_in(2) ? ".IN" : " .in";
        words({analysis, "SOLUTION"});
        if (values.empty() || dice_.one_in(2)) {
            end_line();
            text_ += "*";
            words({"VALUES", "SAVED", "BY", "X", "FOR", "THE", "RUN"});
        }
        write_values(values);
    }

    void write_initial_solutions(const Modify &modify)
    {
        const auto list = [&modify](const char *kind) {
            const auto found = modify.initial.find(kind);
            return found != modify.initial.end() ? found->second : Values{};
        };
        for (const auto &[kind, analysis] : {std::pair("INTR", "TR"), {"INOP", "OP"}, {"INPSS", "PSS"}}) {
            if (modify.initial.count(kind) > 0) {
                write_initial_list(analysis, list(kind));
            }
        }
        if (modify.initial.count("INDC1") + modify.initial.count("INDC2") > 0) {
            write_initial_list("DC", list("INDC1"));
            text_ += dice_.pick(Texts{"", "* and\n*$ \n* more\n"});
            write_initial_list("DC", list("INDC2"));
        }
    }

    void write_binary(const Signal &signal)
    {
        format_ = 2;
        text_ += "DATA = " + binary_ + "\n";
        for (std::size_t i = 0; i < signal.values.size(); ++i) {
            text_ += stored(static_cast<double>(i)) + stored(signal.values[i]);
            text_ += i % 10 == 9 ? dice_.pick(Texts{"\n", "\xff", "*"}) : "";
        }
        text_.append(binary_ == "BINARY" ? 4 : 8, '\xff');
        text_ += dice_.pick(Texts{"\n\n", "   x\n", std::string(5, '\0') + "\xff\n"});
    }

    std::string stored(double value) const
    {
        const auto narrow = static_cast<float>(value);
        std::string bytes(binary_ == "BINARY" ? sizeof narrow : sizeof value, '\0');
        std::memcpy(bytes.data(), binary_ == "BINARY" ? static_cast<const void *>(&narrow) : &value,
                    bytes.size());
        if (big_endian_) {
            std::reverse(bytes.begin(), bytes.end());
        }
        return bytes;
    }

    Dice &dice_;
    std::string binary_;
    bool big_endian_;
    int format_ = 0;
    std::string text_;
};

#endif
