// SPDX-License-Identifier: MIT
// Allocators of the punch data records. Each returns a new zero-filled record, but for the defaults
// named here; memory that runs out ends the run.
#ifndef TRESK_READ_TK_ALLOC_H
#define TRESK_READ_TK_ALLOC_H

#include "read/records.h"
#include "support/slab.h"

PF *tk_PF_alloc();
RERUNform *tk_RERUNform_alloc();
MODIFYform *tk_MODIFYform_alloc(); // temperature = kUnknownTemperature
INDCform *tk_INDCform_alloc();
PZform *tk_PZform_alloc();
Wform *tk_Wform_alloc();   // format = TEXT
TPsoln *tk_TPsoln_alloc(); // time = kUnknownTime, analysis = -1
Isoln *tk_Isoln_alloc();   // type = NODE, analysis = -1
TRI *tk_TRI_alloc();

// Points come one by one from tk_PT_alloc, or, from the reader of binary points, as a block of
// neighbours that is reserved here.
extern Slab<PT> point_slab;

// Inline, since it is called once per point of text data.
inline PT *tk_PT_alloc()
{
    return point_slab.take();
}

#endif
