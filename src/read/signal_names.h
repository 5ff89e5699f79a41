// SPDX-License-Identifier: MIT
// Normalisation of names and units for the relaxed comparison of two simulator generations.
#ifndef TRESK_READ_SIGNAL_NAMES_H
#define TRESK_READ_SIGNAL_NAMES_H

#include "read/records.h"

// Upper-cases text in place; then an ending ".P" becomes "_P". Null is left alone.
void convert_toupper(char *text);

// Normalises every signal name, unit and port of the file.
void convert_signal_names(PF *file);

#endif
