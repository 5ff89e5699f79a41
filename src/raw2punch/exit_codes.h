// SPDX-License-Identifier: MIT
#ifndef RAW2PUNCH_EXIT_CODES_H
#define RAW2PUNCH_EXIT_CODES_H

enum ExitCode : int {
    EXIT_CONVERTED = 0,
    EXIT_LEFT_OUT = 1, // the punch file is there; what has no place in it was reported
    EXIT_FAILED = 2    // no punch file was written
};

#endif
