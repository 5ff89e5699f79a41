// SPDX-License-Identifier: MIT
// The order of a whole run.
#ifndef TRESK_DRIVER_TK_MAIN_H
#define TRESK_DRIVER_TK_MAIN_H

// "3.94"
extern const char kTreskVersion[];

// What a process has to do first, so that the grade gets out whatever becomes of its streams and files.
void prepare_process();

// Runs the program on its command line. Returns the exit code: the grade, or 0 after an
// information-only option or a good index run. A data format that does not exist, an index that cannot
// be written and exhausted memory end the process instead.
int run_tresk(int argc, char **argv);

// The same, and ends the process with that code.
[[noreturn]] void tk_main(int argc, char **argv);

#endif
