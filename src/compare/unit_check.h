// SPDX-License-Identifier: MIT
// The check of X and Y units of a pair of signals.
#ifndef TRESK_COMPARE_UNIT_CHECK_H
#define TRESK_COMPARE_UNIT_CHECK_H

#include "read/records.h"

// What differs between the unit messages of the comparators.
struct UnitTexts {
    const char *missing_in_comparison; // printf formats of the signal name
    const char *missing_in_reference;
    const char *different; // of the analysis name with its blank, where told, and the signal name
    bool tells_analysis;
    bool below_header; // whether the table header comes first
    const char *end;   // line feeds behind the two units
};

extern const UnitTexts kValueYUnits;    // single values
extern const UnitTexts kSweepXUnits;    // DC sweeps and measure results
extern const UnitTexts kFourierXUnits;  // Fourier results
extern const UnitTexts kWaveformYUnits; // all waveforms

// Reports units that differ or are present on one side only. Returns EXIT_UNITS then, else 0.
unsigned check_units(const UnitTexts &texts, int code, const char *name, const char *reference,
                     const char *comparison);

#endif
