// SPDX-License-Identifier: MIT
// The order of a whole run.
#ifndef TRESK_DRIVER_TK_MAIN_H
#define TRESK_DRIVER_TK_MAIN_H

// Runs the program on its command line. Ends the process with the exit grade, or with 0 after an
// information-only option or a good index run.
[[noreturn]] void tk_main(int argc, char **argv);

#endif
