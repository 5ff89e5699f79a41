// SPDX-License-Identifier: MIT
#include "read/tree_place.h"

#include "read/tk_alloc.h"

void open_modify(TreePlace &place, int modify_number, double temperature)
{
    MODIFYform *modify = tk_MODIFYform_alloc();
    modify->number = modify_number;
    modify->temperature = temperature;
    place.modifies.append(modify);
    place.modify = modify;
    place.trforces = ListTail<TPsoln>(modify->trforce);
    place.pssforces = ListTail<TPsoln>(modify->pssforce);
    place.signals = ListTail<Wform>(modify->wform);
    place.blocks = ListTail<PZform>(modify->pzform);
}

void open_rerun(TreePlace &place, int rerun_number, int modify_number, double temperature)
{
    RERUNform *rerun = tk_RERUNform_alloc();
    rerun->number = rerun_number;
    place.reruns.append(rerun);
    place.rerun = rerun;
    place.modifies = ListTail<MODIFYform>(rerun->modify);
    open_modify(place, modify_number, temperature);
}

void require_modify(TreePlace &place)
{
    if (place.rerun == nullptr) {
        open_rerun(place, 0, 0, kUnknownTemperature);
    }
}
