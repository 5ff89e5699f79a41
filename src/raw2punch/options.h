// SPDX-License-Identifier: MIT
// The command line.
#ifndef RAW2PUNCH_OPTIONS_H
#define RAW2PUNCH_OPTIONS_H

#include "raw2punch/converter.h"

struct CommandLine {
    Options options;
    bool allow_left_out = false;
    int exit_code = -1; // that of the program when there is nothing more to do
};

// Reads the command line. Prints the help text, the version or what is wrong.
CommandLine read_command_line(int argc, char **argv);

#endif
