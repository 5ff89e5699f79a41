// SPDX-License-Identifier: MIT
// The command line.
#ifndef TRESK_DRIVER_OPTIONS_H
#define TRESK_DRIVER_OPTIONS_H

#include "driver/exit_grade.h"

struct RunOptions {
    ExitMasks masks;
    bool indexscript = false; // index mode without the banner
};

// Takes over TRESK_DEBUG and KORSIM3_REVERSE_BYTES.
void read_environment();

// Scans the arguments: writes the settings, makes ref_file and com_file of the file names, reports
// what it does not know. An information-only option prints its text and ends the run with status 0.
RunOptions scan_arguments(int argc, char **argv);

#endif
