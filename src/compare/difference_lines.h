// SPDX-License-Identifier: MIT
// The lines about what differs besides values, and those that are printed without being judged. Each
// function prints its lines where the two sides differ, passes the finding on to the listener if there
// is one, and returns the ExitBit set that it raises.
#ifndef TRESK_COMPARE_DIFFERENCE_LINES_H
#define TRESK_COMPARE_DIFFERENCE_LINES_H

#include "compare/events.h"

#include <cstring>

// What differs between the unit lines of the comparators.
struct UnitTexts {
    FindingKind kind;
    const char *missing_in_comparison; // printf formats of the signal name
    const char *missing_in_reference;
    const char *different; // of the analysis name, where it is named, and the signal name
    bool names_analysis;
    bool below_header; // whether the table header comes first
    const char *end;   // line feeds behind the two units
};

extern const UnitTexts kValueYUnits;    // single values
extern const UnitTexts kSweepXUnits;    // DC sweeps and measure results
extern const UnitTexts kFourierXUnits;  // Fourier results
extern const UnitTexts kWaveformYUnits; // all waveforms

// Units of a pair of which one side has none, which is null, or which differ.
unsigned report_units(const UnitTexts &texts, int code, const char *name, const char *reference,
                      const char *comparison);

// The check of all pairs. Most have no units, or share their text.
inline unsigned check_units(const UnitTexts &texts, int code, const char *name, const char *reference,
                            const char *comparison)
{
    const bool on_both = reference != nullptr && comparison != nullptr;
    const bool equal = reference == comparison || (on_both && std::strcmp(reference, comparison) == 0);
    return equal ? 0 : report_units(texts, code, name, reference, comparison);
}

// Fourier signals with different numbers of coefficients.
unsigned report_coefficient_count(const Wform &ref, const Wform &cmp);

// Time shift and analysis of two .FORCE statements of the same time.
unsigned report_force_difference(const TPsoln &ref, const TPsoln &cmp);

// Ports, type and time of two blocks of pole-zero results.
unsigned report_block_difference(const PZform &ref, const PZform &cmp);

// Swept signals of which the one that is lacking points ends first.
unsigned report_point_count(const Wform &ref, const Wform &cmp, int code, Side lacking);

// An absolute error below 0, which only infinite phases can lead to.
unsigned report_negative_error(const Wform &ref, const Wform &cmp, int code, double abserr);

// .IN DC statements without a first point on either side.
unsigned report_empty_indc();

#endif
