// SPDX-License-Identifier: MIT
#include "read/reader_state.h"

#include "read/tk_alloc.h"

void open_modify(ReaderState &state, int modify_number, double temperature)
{
    MODIFYform *modify = tk_MODIFYform_alloc();
    modify->number = modify_number;
    modify->temperature = temperature;
    if (state.rerun->modify == nullptr) {
        state.rerun->modify = modify;
    } else {
        state.modify->next = modify;
    }
    state.modify = modify;
    state.new_modify = true;
    state.last_trforce = nullptr;
    state.last_pssforce = nullptr;
}

void open_rerun(ReaderState &state, int rerun_number, int modify_number, double temperature)
{
    RERUNform *rerun = tk_RERUNform_alloc();
    rerun->number = rerun_number;
    if (state.rerun == nullptr) {
        state.file->rerun = rerun;
    } else {
        state.rerun->next = rerun;
    }
    state.rerun = rerun;
    open_modify(state, modify_number, temperature);
}

void require_modify(ReaderState &state)
{
    if (state.rerun == nullptr) {
        open_rerun(state, 0, 0, kUnknownTemperature);
    }
}
