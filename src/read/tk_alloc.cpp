// SPDX-License-Identifier: MIT
#include "read/tk_alloc.h"

#include "read/codes.h"
#include "support/slab.h"

namespace
{

template <typename Record> Record *new_record()
{
    static Slab<Record> slab;
    return slab.take();
}

} // namespace

PF *tk_PF_alloc()
{
    return new_record<PF>();
}

RERUNform *tk_RERUNform_alloc()
{
    return new_record<RERUNform>();
}

MODIFYform *tk_MODIFYform_alloc()
{
    auto *modify = new_record<MODIFYform>();
    modify->temperature = kUnknownTemperature;
    return modify;
}

INDCform *tk_INDCform_alloc()
{
    return new_record<INDCform>();
}

PZform *tk_PZform_alloc()
{
    return new_record<PZform>();
}

Wform *tk_Wform_alloc()
{
    auto *wform = new_record<Wform>();
    wform->format = TEXT;
    return wform;
}

TPsoln *tk_TPsoln_alloc()
{
    auto *solution = new_record<TPsoln>();
    solution->time = kUnknownTime;
    solution->analysis = kNoAnalysis;
    return solution;
}

Isoln *tk_Isoln_alloc()
{
    auto *value = new_record<Isoln>();
    value->type = NODE;
    value->analysis = kNoAnalysis;
    return value;
}

TRI *tk_TRI_alloc()
{
    return new_record<TRI>();
}

FilePoints *tk_FilePoints_alloc()
{
    return new_record<FilePoints>();
}
