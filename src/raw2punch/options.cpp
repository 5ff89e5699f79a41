// SPDX-License-Identifier: MIT
#include "raw2punch/options.h"

#include "raw2punch/exit_codes.h"
#include "raw2punch/text_tools.h"

#include <CLI/CLI.hpp>

#include <climits>
#include <map>

namespace
{

constexpr const char *kVersion = "3.94"; // that of tresk

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

// What options are read into that are no values yet.
struct Texts {
    std::string format = "text";
    std::vector<std::string> functions;
    std::string bits;
    std::vector<std::string> rules;
    std::string log;
    std::string title;
};

template <typename Value> CLI::Validator one_of(const std::map<std::string, Value> &choices, const char *type)
{
    return CLI::IsMember(&choices, CLI::ignore_case).description(type);
}

CLI::Option *add_list(CLI::App &app, const char *name, std::vector<std::string> &values, const char *help)
{
    return app.add_option(name, values, help)->allow_extra_args(false); // one word for each time it is given
}

void add_options(CLI::App &app, CommandLine &line, Texts &texts)
{
    Options &options = line.options;
    const CLI::Validator numbers = CLI::Range(0, INT_MAX / 2).description("");
    app.add_option("INPUT", options.input, "Rawfile to read")->required()->type_name("");
    app.add_option("OUTPUT", options.output, "Punch file to write")->required()->type_name("");
    app.add_option("-f,--format", texts.format, "Format of waveforms: text (usual), binary or binary_dbl")
        ->check(one_of(kFormats, ""))
        ->type_name("FORMAT");
    add_list(app, "-c,--complex", texts.functions,
             "Signals made of complex values, out of db, phase, magnitude, real, imaginary (usual: db,phase)")
        ->delimiter(',')
        ->check(one_of(kFunctions, ""))
        ->type_name("KIND,...");
    app.add_option("-l,--log", texts.log, "Log of the run: measurements, Fourier tables, temperatures")
        ->type_name("FILE");
    app.add_option("-t,--temperature", options.temperatures,
                   "Temperature of all runs, or of each in turn (usual: 27)")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->type_name("DEGREES,...");
    app.add_option("--title", texts.title, "Title instead of that of the rawfile")->type_name("TEXT");
    app.add_option("--rerun", options.first_rerun, "Number of the first rerun (usual: 1)")
        ->check(numbers)
        ->type_name("N");
    app.add_option("--modify", options.first_modify, "Number of the first modify of a rerun (usual: 0)")
        ->check(numbers)
        ->type_name("N");
    add_list(app, "--plot", texts.rules,
             "What becomes of plots whose name holds NAME: op, dc, ac, tr, noise, four, pz, pss, mr or none")
        ->type_name("NAME=KIND");
    app.add_option("--bits", texts.bits, "Bits of binary values: 64, 32 or mixed (usually found out)")
        ->check(one_of(kBits, ""))
        ->type_name("BITS");
    app.add_flag("--big-endian", options.hints.big_endian,
                 "Binary values have their most significant byte first");
    app.add_flag("--allow-left-out", line.allow_left_out, "Exit code 0 also when something has no place");
}

void take_texts(const Texts &texts, const CLI::App &app, Options &options)
{
    options.format = kFormats.at(lower_case(texts.format));
    if (!texts.functions.empty()) {
        options.functions.clear();
        for (const std::string &word : texts.functions) {
            options.functions.push_back(kFunctions.at(lower_case(word)));
        }
    }
    for (const std::string &rule : texts.rules) {
        options.rules.push_back(rule_of_text(rule));
    }
    if (!texts.bits.empty()) {
        options.hints.bits = kBits.at(lower_case(texts.bits));
    }
    if (app.count("--log") > 0) {
        options.log = texts.log;
    }
    if (app.count("--title") > 0) {
        options.title = texts.title;
    }
}

} // namespace

CommandLine read_command_line(int argc, char **argv)
{
    CommandLine line;
    Texts texts;
    CLI::App app("Makes a punch file from a SPICE rawfile.", "raw2punch");
    app.failure_message([](const CLI::App *, const CLI::Error &error) {
        return "raw2punch: error: " + std::string(error.what()) + "\nRun with --help for more information.\n";
    });
    app.set_version_flag("--version", std::string("raw2punch ") + kVersion);
    add_options(app, line, texts);
    try {
        app.parse(argc, argv);
        take_texts(texts, app, line.options);
    } catch (const CLI::ParseError &error) {
        line.exit_code = app.exit(error) == 0 ? EXIT_CONVERTED : EXIT_FAILED;
    }
    return line;
}
