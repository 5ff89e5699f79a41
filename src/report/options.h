// SPDX-License-Identifier: MIT
// The command line of tresk-report.
#ifndef TRESK_REPORT_OPTIONS_H
#define TRESK_REPORT_OPTIONS_H

#include "report/bless.h"
#include "report/pair.h"
#include "report/tree.h"
#include "report/tune.h"

namespace report
{

enum class Command { NONE, PAIR, TREE, HISTORY, TUNE, BLESS, SCHEMA };

struct CommandLine {
    Command command = Command::NONE; // NONE: nothing more to do
    PairOptions pair;
    TreeOptions tree;
    std::string history; // path, of HISTORY
    TuneOptions tune;
    BlessOptions bless;
    int exit_code = 0; // of NONE
};

// Reads the command line. Prints the help text, the version or what is wrong.
CommandLine read_command_line(int argc, char **argv);

} // namespace report

#endif
