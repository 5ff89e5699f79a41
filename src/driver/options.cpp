// SPDX-License-Identifier: MIT
#include "driver/options.h"

#include "driver/info_texts.h"
#include "read/tk_alloc.h"
#include "support/settings.h"
#include "support/slab.h"
#include "support/transcript.h"

#include <cstdlib>
#include <cstring>
#include <strings.h>

PF *ref_file = nullptr;
PF *com_file = nullptr;

namespace
{

enum class Match { EXACT, ANY_CASE, ANY_WORD };
enum class Action { FLAG, REAL, DECIMAL, MASK, INDEX, EXPLAIN_CODE, LIST_CODES, HELP };

// An option is found by its second character alone; of the rules for that character the first that
// matches holds.
// Kept: "-abstol", "-a" and "-axyz" are one option, and "-ronly" is a relative tolerance
// (docs/verdict.md, "Odd tolerances").
struct OptionRule {
    const char *letters;
    const char *word;
    Match match;
    Action action;
    int *number;
    double *real;
};

ExitMasks masks;
int indexscript = 0;

const OptionRule kRules[] = {
    {"Aa", "-Aonly", Match::ANY_CASE, Action::FLAG, &glAonly, nullptr},
    {"Aa", "-AorR", Match::ANY_CASE, Action::FLAG, &glAorR, nullptr},
    {"Aa", "-AandR", Match::ANY_CASE, Action::FLAG, &glAandR, nullptr},
    {"Aa", "-abstol", Match::ANY_WORD, Action::REAL, nullptr, &glAbstol},
    {"Rr", "-Ronly", Match::EXACT, Action::FLAG, &glRonly, nullptr},
    {"Rr", "-reltol", Match::ANY_WORD, Action::REAL, nullptr, &glReltol},
    {"d", "-desert", Match::EXACT, Action::FLAG, &desert, nullptr},
    {"d", "-d", Match::ANY_WORD, Action::DECIMAL, &debug, nullptr},
    {"e", "-exitcode", Match::EXACT, Action::EXPLAIN_CODE, nullptr, nullptr},
    {"e", "-exitcodes", Match::EXACT, Action::LIST_CODES, nullptr, nullptr},
    {"h", "-help", Match::ANY_WORD, Action::HELP, nullptr, nullptr},
    {"i", "-indexscript", Match::EXACT, Action::INDEX, &indexscript, nullptr},
    {"i", "-indexmirel", Match::EXACT, Action::INDEX, &indexmirel, nullptr},
    {"i", "-indexrdinp", Match::EXACT, Action::INDEX, &indexrdinp, nullptr},
    {"i", "-index", Match::ANY_WORD, Action::INDEX, &pun_index, nullptr},
    {"n", "-nem", Match::EXACT, Action::MASK, &masks.negative, nullptr},
    {"p", "-pem", Match::EXACT, Action::MASK, &masks.positive, nullptr},
};

bool matches(const OptionRule &rule, const char *argument)
{
    if (argument[1] == '\0' || std::strchr(rule.letters, argument[1]) == nullptr) {
        return false;
    }
    switch (rule.match) {
    case Match::EXACT:
        return std::strcmp(argument, rule.word) == 0;
    case Match::ANY_CASE:
        return strcasecmp(argument, rule.word) == 0;
    default:
        return true;
    }
}

const OptionRule *find_rule(const char *argument)
{
    for (const OptionRule &rule : kRules) {
        if (matches(rule, argument)) {
            return &rule;
        }
    }
    return nullptr;
}

// The arguments during the scan.
struct Arguments {
    int count;
    char **values;
    int next = 1;

    bool more() const
    {
        return next < count;
    }
    // The next argument; behind the last one an empty text, which counts as 0.
    const char *take()
    {
        return more() ? values[next++] : "";
    }
};

// Runs the action of a rule, which may take the next argument. Returns whether the scan goes on.
bool apply(const OptionRule &rule, Arguments &arguments)
{
    switch (rule.action) {
    case Action::FLAG:
        *rule.number = 1;
        return true;
    case Action::REAL:
        *rule.real = std::atof(arguments.take());
        return true;
    case Action::DECIMAL:
        *rule.number = std::atoi(arguments.take());
        return true;
    case Action::INDEX:
        pun_index = 1;
        *rule.number = 1;
        return true;
    case Action::MASK:
        if (arguments.more()) {
            *rule.number = std::atoi(arguments.take());
            return true;
        }
        printExitMaskUsage();
        break;
    case Action::EXPLAIN_CODE:
        if (arguments.count == 2) { // the option stands alone
            printExitCodes();
        } else {
            printExitCode(std::atoi(arguments.take()));
        }
        break;
    case Action::LIST_CODES:
        printExitCodes();
        break;
    case Action::HELP:
        printHelp(arguments.values[0]);
        break;
    }
    return false;
}

void ignore_argument(const char *argument)
{
    transcript_printf("Unknown option: \"%s\" - ignored.\n", argument);
}

void take_file_name(const char *argument)
{
    PF *&file = ref_file == nullptr ? ref_file : com_file;
    if (file != nullptr) {
        ignore_argument(argument);
        return;
    }
    file = tk_PF_alloc();
    file->name = slab_text(argument);
}

void set_from_environment(const char *name, int &setting)
{
    if (const char *value = std::getenv(name)) {
        setting = std::atoi(value);
    }
}

} // namespace

void read_environment()
{
    set_from_environment("TRESK_DEBUG", debug);
    set_from_environment("KORSIM3_REVERSE_BYTES", reverse_bytes);
}

RunOptions scan_arguments(int argc, char **argv)
{
    Arguments arguments{argc, argv};
    bool goes_on = true;
    while (goes_on && arguments.more()) {
        const char *argument = arguments.take();
        if (argument[0] != '-') {
            take_file_name(argument);
        } else if (const OptionRule *rule = find_rule(argument)) {
            goes_on = apply(*rule, arguments);
        } else {
            ignore_argument(argument);
        }
    }
    return RunOptions{masks, indexscript != 0, !goes_on};
}

ArgumentKind kind_of_argument(const char *argument)
{
    if (argument[0] != '-') {
        return ArgumentKind::FILE_NAME;
    }
    const OptionRule *rule = find_rule(argument);
    if (rule == nullptr || rule->action == Action::FLAG) {
        return ArgumentKind::OPTION;
    }
    switch (rule->action) {
    case Action::REAL:
    case Action::DECIMAL:
        return ArgumentKind::OPTION_AND_VALUE;
    case Action::MASK:
        return ArgumentKind::NEEDS_VALUE;
    default:
        return ArgumentKind::ENDS_COMPARING;
    }
}

bool sets_mode(const char *argument)
{
    const OptionRule *rule = argument[0] == '-' ? find_rule(argument) : nullptr;
    return rule != nullptr && rule->action == Action::FLAG && rule->number != &desert;
}

std::vector<OptionName> option_names()
{
    std::vector<OptionName> names;
    for (const OptionRule &rule : kRules) {
        names.push_back({rule.word, rule.action == Action::REAL || rule.action == Action::DECIMAL ||
                                        rule.action == Action::MASK || rule.action == Action::EXPLAIN_CODE});
    }
    return names;
}
