// SPDX-License-Identifier: MIT
#include "raw2punch/options.h"

#include "raw2punch/exit_codes.h"
#include "raw2punch/text_tools.h"

#include <CLI/CLI.hpp>

#include <climits>
#include <map>

namespace
{

const std::map<std::string, PunchFormat> kFormats = {
    {"text", PunchFormat::TEXT}, {"binary", PunchFormat::BINARY}, {"binary_dbl", PunchFormat::BINARY_DBL}};

const std::map<std::string, Function> kFunctions = {{"db", Function::DECIBELS},
                                                    {"phase", Function::DEGREES},
                                                    {"magnitude", Function::MAGNITUDE},
                                                    {"real", Function::REAL},
                                                    {"imaginary", Function::IMAGINARY}};

const std::map<std::string, ValueBits> kBits = {
    {"64", ValueBits::DOUBLES}, {"32", ValueBits::FLOATS}, {"mixed", ValueBits::MIXED}};

PlotRule rule_of_text(const std::string &text)
{
    const std::size_t equals = text.rfind('=');
    PlotRule rule;
    if (equals == std::string_view::npos || equals == 0 ||
        !analysis_of_word(text.substr(equals + 1), rule.analysis)) {
        throw CLI::ValidationError("--plot",
                                   "NAME=KIND with KIND op, dc, ac, tr, noise, four, pz, pss, mr or none");
    }
    rule.name = lower_case(std::string_view(text).substr(0, equals));
    return rule;
}

// What options are read into that need more than a conversion.
struct Texts {
    std::vector<std::string> rules;
    ValueBits bits = ValueBits::DOUBLES;
    std::string log;
    std::string title;
};

template <typename Value>
CLI::Option *add_choice(CLI::App &app, const char *name, Value &value,
                        const std::map<std::string, Value> &choices, const char *help)
{
    return app.add_option(name, value, help)->transform(CLI::CheckedTransformer(choices, CLI::ignore_case));
}

void add_options(CLI::App &app, CommandLine &line, Texts &texts)
{
    Options &options = line.options;
    app.add_option("INPUT", options.input, "Rawfile to read")->required();
    app.add_option("OUTPUT", options.output, "Punch file to write")->required();
    add_choice(app, "-f,--format", options.format, kFormats, "Format of waveforms: text, binary, binary_dbl");
    app.add_option("-c,--complex", options.functions,
                   "Signals made of complex values: db, phase, magnitude, real, imaginary (db,phase)")
        ->delimiter(',')
        ->transform(CLI::CheckedTransformer(kFunctions, CLI::ignore_case));
    app.add_option("-l,--log", texts.log,
                   "Log of the run, for measurements, Fourier tables and temperatures");
    app.add_option("-t,--temperature", options.temperatures,
                   "Temperature of all runs, or of each in turn (27)")
        ->delimiter(',');
    app.add_option("--title", texts.title, "Title, instead of that of the rawfile");
    app.add_option("--rerun", options.first_rerun, "Number of the first rerun (1)")
        ->check(CLI::Range(0, INT_MAX / 2));
    app.add_option("--modify", options.first_modify, "Number of the first modify (0)")
        ->check(CLI::Range(0, INT_MAX / 2));
    app.add_option("--plot", texts.rules,
                   "NAME=KIND: what plots become whose name holds NAME; none leaves them out");
    add_choice(app, "--bits", texts.bits, kBits, "Bits of binary values: 64, 32, mixed (found out)");
    app.add_flag("--big-endian", options.hints.big_endian,
                 "Binary values have their most significant byte first");
    app.add_flag("--allow-left-out", line.allow_left_out, "End with 0 also when something has no place");
}

} // namespace

CommandLine read_command_line(int argc, char **argv)
{
    CommandLine line;
    Texts texts;
    CLI::App app("Makes a punch file from a SPICE rawfile.", "raw2punch");
    app.set_version_flag("--version", "raw2punch " RAW2PUNCH_VERSION);
    add_options(app, line, texts);
    try {
        app.parse(argc, argv);
        for (const std::string &rule : texts.rules) {
            line.options.rules.push_back(rule_of_text(rule));
        }
    } catch (const CLI::ParseError &error) {
        line.exit_code = app.exit(error) == 0 ? EXIT_CONVERTED : EXIT_FAILED;
        return line;
    }
    if (app.count("--log") > 0) {
        line.options.log = texts.log;
    }
    if (app.count("--title") > 0) {
        line.options.title = texts.title;
    }
    if (app.count("--bits") > 0) {
        line.options.hints.bits = texts.bits;
    }
    return line;
}
