// SPDX-License-Identifier: MIT
#include "report/options.h"

#include "driver/tk_main.h"
#include "report/file_text.h"
#include "report/text.h"
#include "report/tree_run.h"

#include <algorithm>
#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace report
{

namespace
{

constexpr int kMostFigures = 10000;
constexpr int kMostData = 1024; // MiB
constexpr int kMostDigits = 17;
constexpr int kMostFindings = 100000000;

// A bit for each of the grades in a list such as "1,FAIL_PV". That there is no grade can never be accepted.
unsigned read_accepted(std::string_view grades)
{
    unsigned accepted = 0;
    while (!grades.empty()) {
        const std::string_view word = take_field(grades, ',');
        const int grade = read_tree_grade(word);
        if (grade < 0 || grade == kNoGrade) {
            throw CLI::ValidationError("--accept", "no grade that can be accepted: " + terminal_line(word));
        }
        accepted |= 1U << static_cast<unsigned>(grade);
    }
    return accepted;
}

// The program, as far as it is CLI11's: commands and options with two dashes.
class Program
{
  public:
    explicit Program(CommandLine &line)
        : line_(line), options_(line.pair), tune_options_(line.tune), bless_options_(line.bless)
    {
        app_.set_version_flag("--version", std::string("tresk-report ") + kTreskVersion);
        app_.set_help_flag("--help", "Print this text and exit");
        app_.require_subcommand(1);
        app_.fallthrough(false);
        add_pair();
        add_tune();
        add_bless();
        schema_ = app_.add_subcommand("schema", "Print the JSON schema of result.json");
        schema_->set_help_flag("--help", "Print this text and exit");
        add_tree();
        history_ = app_.add_subcommand("history", "Print since when what fails, from the history of a tree");
        history_->set_help_flag("--help", "Print this text and exit");
        history_->add_option("FILE", line_.history, "The history")->required()->option_text(" ");
    }

    bool takes_value(const std::string &option) const
    {
        const CLI::Option *found = pair_->get_option_no_throw(option);
        if (found == nullptr) {
            found = tune_->get_option_no_throw(option);
        }
        return found != nullptr && found->get_items_expected_max() > 0;
    }

    // Takes the words from the command on.
    void parse(std::vector<std::string> words)
    {
        std::reverse(words.begin(), words.end()); // as CLI11 wants them
        app_.parse(std::move(words));
        options_.data_bytes = static_cast<std::int64_t>(data_) << 20;
    }

    int exit(const CLI::ParseError &error)
    {
        return app_.exit(error) == 0 ? 0 : kWrongCall;
    }

    Command command() const
    {
        return schema_->parsed()    ? Command::SCHEMA
               : tree_->parsed()    ? Command::TREE
               : history_->parsed() ? Command::HISTORY
               : tune_->parsed()    ? Command::TUNE
               : bless_->parsed()   ? Command::BLESS
                                    : Command::PAIR;
    }

  private:
    void add_pair()
    {
        pair_ =
            app_.add_subcommand("pair", "Compare GOLDEN and REGRESSION with tresk and report what differs");
        pair_->set_help_flag("--help", "Print this text and exit");
        pair_->footer(
            "Everything else is for tresk, which is called with [OPTION...] GOLDEN REGRESSION: see "
            "tresk -help.\nTranscript and exit code are those of tresk; 6: no grade, 64: wrong call, "
            "73: no report.");
        pair_->add_option("--out", options_.out, "Folder of the report (usual: REGRESSION.report here)")
            ->type_name("DIR")
            ->check([](const std::string &path) { return path.empty() ? "needs a name" : ""; });
        pair_->add_option("--figures", options_.figures, "Figures in the page, worst first (usual: 50)")
            ->type_name("N")
            ->check(CLI::Range(0, kMostFigures).description(""));
        pair_->add_option("--data", data_, "MiB of waveforms in the page (usual: 8)")
            ->type_name("MiB")
            ->check(CLI::Range(0, kMostData).description(""));
        pair_
            ->add_option("--findings", options_.findings,
                         "Findings in the report, worst first (usual: 100000)")
            ->type_name("N")
            ->check(CLI::Range(0, kMostFindings).description(""));
        pair_->add_flag("--always", options_.always, "Write a page even when all passes");
        pair_->add_flag("--quiet", options_.quiet, "Print neither the transcript nor the path of the page");
    }

    void add_tree()
    {
        tree_ = app_.add_subcommand("tree", "Report what the kit's comparisons of two trees found");
        tree_->set_help_flag("--help", "Print this text and exit");
        tree_->footer("Writes index.html, tree.csv and junit.xml to OUT/report. Exit code: the worst grade, "
                      "0 to 7 as of "
                      "tresk-collect;\n64: wrong call or no run in OUT, 73: something could not be written.");
        TreeOptions &tree = line_.tree;
        tree_->add_option("OUT", tree.out, "Folder that tresk-parallel or tresk-submit has filled")
            ->required()
            ->option_text(" ");
        tree_
            ->add_option_function<std::string>(
                "--accept", [&tree](const std::string &grades) { tree.accepted = read_accepted(grades); },
                "Grades that count as passed, with commas between")
            ->type_name("GRADES");
        tree_->add_option("--before", tree.before, "Folder of an earlier run: say what changed since then")
            ->type_name("OUT");
        tree_
            ->add_option("--history", tree.history,
                         "Add the run to this history, and show since when what fails")
            ->type_name("FILE");
        tree_->add_flag("--quiet", tree.quiet, "Do not print the path of the page");
    }

    void add_tune()
    {
        tune_ = app_.add_subcommand("tune", "Find the smallest tolerances that let pass what fails");
        tune_->set_help_flag("--help", "Print this text and exit");
        tune_->footer(
            "Everything else is for tresk: [OPTION...] GOLDEN REGRESSION; or one folder that the kit "
            "has made, for all pairs in it.\nExit code 0: everything can be made to pass, 1: "
            "something cannot, 6: no grade, 64: wrong call.");
        tune_->add_option("--digits", tune_options_.digits, "Digits of what is proposed (usual: 2)")
            ->type_name("N")
            ->check(CLI::Range(1, kMostDigits).description(""));
    }

    void add_bless()
    {
        bless_ = app_.add_subcommand("bless", "Make regression files of a tree the new golden ones");
        bless_->set_help_flag("--help", "Print this text and exit");
        bless_->footer(
            "Without --yes nothing is written. Exit code 0: all is done, or could be, 1: something is "
            "refused, 64: wrong call.");
        bless_->add_option("--reason", bless_options_.reason, "Why, in one line of 10 characters at least")
            ->type_name("TEXT")
            ->required();
        bless_->add_option("--list", bless_options_.list, "File of paths, one in a line; -: standard input")
            ->type_name("FILE");
        bless_->add_option("--keep", bless_options_.keep, "Keep the old golden files below this folder")
            ->type_name("DIR");
        bless_->add_flag("--yes", bless_options_.yes, "Write");
        bless_->add_flag("--even-nan", bless_options_.even_nan, "Also files with values that are no numbers");
        bless_->add_option("OUT", bless_options_.out, "Folder that the kit has made")->required();
        bless_->add_option("PATH", bless_options_.paths, "Paths as the list of pairs has them");
    }

    CLI::App app_{"Shows what a comparison by tresk found.", "tresk-report"};
    CLI::App *pair_ = nullptr;
    CLI::App *tune_ = nullptr;
    CLI::App *bless_ = nullptr;
    CLI::App *schema_ = nullptr;
    CLI::App *tree_ = nullptr;
    CLI::App *history_ = nullptr;
    CommandLine &line_;
    PairOptions &options_;
    TuneOptions &tune_options_;
    BlessOptions &bless_options_;
    int data_ = 8;
};

// Words for CLI11: of a comparison without those for tresk. A call for help needs no files.
std::vector<std::string> own_words(const std::vector<std::string> &words, const Program &program,
                                   CommandLine &line)
{
    const bool asks_for_help = std::find(words.begin(), words.end(), "--help") != words.end();
    if (words.empty() || (words[0] != "pair" && words[0] != "tune")) {
        return words;
    }
    if (asks_for_help) {
        return {words[0], "--help"};
    }
    const auto takes_value = [&program](const std::string &option) {
        return program.takes_value(option);
    };
    const bool is_tune = words[0] == "tune";
    TreskArguments &arguments = is_tune ? line.tune.arguments : line.pair.arguments;
    arguments = split_arguments({words.begin() + 1, words.end()}, takes_value, is_tune);
    std::vector<std::string> own = arguments.own;
    own.insert(own.begin(), words[0]);
    return own;
}

} // namespace

CommandLine read_command_line(int argc, char **argv)
{
    CommandLine line;
    Program program(line);
    try {
        program.parse(own_words({argv + std::min(argc, 1), argv + argc}, program, line));
        line.command = program.command();
    } catch (const CLI::ParseError &error) {
        line.exit_code = program.exit(error);
    } catch (const WrongCall &wrong) {
        std::fprintf(stderr, "tresk-report: %s\nRun with --help for more information.\n", wrong.what());
        line.exit_code = kWrongCall;
    }
    return line;
}

} // namespace report
