// SPDX-License-Identifier: MIT
// Allocators of the punch data records. Each returns a new zero-filled record, but for the defaults
// named here; memory that runs out ends the run.
#ifndef TRESK_READ_TK_ALLOC_H
#define TRESK_READ_TK_ALLOC_H

#include "read/records.h"

PF *tk_PF_alloc();
RERUNform *tk_RERUNform_alloc();
MODIFYform *tk_MODIFYform_alloc(); // temperature = kUnknownTemperature
INDCform *tk_INDCform_alloc();
PZform *tk_PZform_alloc();
Wform *tk_Wform_alloc();   // format = TEXT
TPsoln *tk_TPsoln_alloc(); // time = kUnknownTime, analysis = -1
Isoln *tk_Isoln_alloc();   // type = NODE, analysis = -1
TRI *tk_TRI_alloc();
FilePoints *tk_FilePoints_alloc();

#endif
