// SPDX-License-Identifier: MIT
// Run-wide settings. All of them are written once, by the option scan of the driver, before any
// file is read; the two exceptions are named where they stand. Every other room only reads them.
#ifndef TRESK_SUPPORT_SETTINGS_H
#define TRESK_SUPPORT_SETTINGS_H

// Switches of the internal debug flag (TRESK_DEBUG, -d).
enum DebugBit : int {
    DEBUG_READ = 1,            // dump every record right after it was read
    DEBUG_DUMP = 2,            // dump both trees after reading
    DEBUG_MASKS = 4,           // show the exit-mask arithmetic
    DEBUG_TRANSIENT = 8,       // trace the transient comparison
    DEBUG_INTEGRATION = 16,    // trace every piece of the integration
    DEBUG_ALT_INTEGRATION = 32 // integrate with the diagnostic variant
};

extern int debug;         // set of DebugBit
extern int reverse_bytes; // non-zero: binary data is most significant byte first

extern double glAbstol; // absolute error threshold, in the units of the compared values
extern double glReltol; // relative error threshold, a plain ratio

// Tolerance control. Exactly one of the first four is 1 when the user chose a mode; otherwise
// glDefaultChecking is 1 and the tolerance test itself rewrites the four for every value pair.
extern int glAonly;
extern int glRonly;
extern int glAorR;
extern int glAandR;
extern int glDefaultChecking;

extern int desert; // relaxed comparison of the files of two simulator generations

// Index modes. The index table writer adds 1 to pun_index for every signal it enters, so that a
// value of 1 at the end of a run means that the file held no signal.
extern int pun_index;
extern int indexmirel;
extern int indexrdinp;

inline bool debugging(DebugBit bit)
{
    return (debug & bit) != 0;
}

#endif
