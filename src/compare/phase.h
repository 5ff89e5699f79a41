// SPDX-License-Identifier: MIT
// Differences of phases in degrees.
#ifndef TRESK_COMPARE_PHASE_H
#define TRESK_COMPARE_PHASE_H

// The phase in the range -180 to 180, by whole turns: what adding or subtracting 360 until it is there would
// give, each turn exactly. Infinities and NaN are left as they are.
double wrap_phase(double degrees);

// |a - b| of the wrapped phases, between 0 and 360 for finite phases; the shorter way round is this
// or what is left of the full turn.
double wrapped_distance(double a, double b);

#endif
