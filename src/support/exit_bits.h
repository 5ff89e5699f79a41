// SPDX-License-Identifier: MIT
// The categories of an exit status: a set of nine bits. Every comparator returns those of its findings,
// the driver adds its own and reduces all to a grade.
#ifndef TRESK_SUPPORT_EXIT_BITS_H
#define TRESK_SUPPORT_EXIT_BITS_H

enum ExitBit : unsigned {
    EXIT_TOLERANCE = 1,   // a signal violated the tolerances
    EXIT_FILE = 2,        // a punch file could not be opened or read
    EXIT_SIGNALS = 4,     // missing or additional signals
    EXIT_VARIANTS = 8,    // missing or additional reruns or modifies
    EXIT_ANALYSES = 16,   // missing or additional analysis types
    EXIT_UNITS = 32,      // X-unit, Y-unit or temperature differences
    EXIT_FORMAT = 64,     // different file formats
    EXIT_ARGUMENTS = 128, // bad command line
    EXIT_NAN = 256        // values that are no numbers
};

#endif
