// SPDX-License-Identifier: MIT
// The command line.
#ifndef TRESK_DRIVER_OPTIONS_H
#define TRESK_DRIVER_OPTIONS_H

#include "driver/exit_grade.h"
#include "read/records.h"

#include <vector>

struct RunOptions {
    ExitMasks masks;
    bool indexscript = false;      // index mode without the banner
    bool information_only = false; // an option has printed its text, and that is all
};

// The files that the arguments name, null where there is none; made by scan_arguments.
extern PF *ref_file; // golden
extern PF *com_file; // regression

// Takes over TRESK_DEBUG and KORSIM3_REVERSE_BYTES.
void read_environment();

// Scans the arguments: writes the settings, makes ref_file and com_file of the file names, reports
// what it does not know. An information-only option prints its text and ends the scan.
RunOptions scan_arguments(int argc, char **argv);

// What the scan makes of an argument that it does not take as the value of the one before.
enum class ArgumentKind {
    FILE_NAME,
    OPTION,           // alone, also one that is unknown
    OPTION_AND_VALUE, // takes the next argument, whatever that is
    NEEDS_VALUE,      // the same, and without a next argument prints a text instead of comparing
    ENDS_COMPARING,   // asks for a text or an index instead of a comparison
};

ArgumentKind kind_of_argument(const char *argument);

// Whether an argument is one of the tolerance modes, of which there may be one.
bool sets_mode(const char *argument);

// An option by its full name. The manual, the usage text and the completions are held to these by a test.
struct OptionName {
    const char *word;
    bool takes_value;
};

std::vector<OptionName> option_names();

#endif
