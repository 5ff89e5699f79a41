// SPDX-License-Identifier: MIT
#include "compare/tk_compare.h"

#include "compare/analysis_table.h"
#include "compare/force_compare.h"
#include "compare/pole_zero_compare.h"
#include "compare/solution_compare.h"
#include "compare/tolerance.h"
#include "support/exit_bits.h"

unsigned tk_compare_all(MODIFYform *ref, MODIFYform *cmp)
{
    begin_tables();
    unsigned bits = 0;
    if (ref->inop != nullptr || cmp->inop != nullptr) {
        bits |= inop_compare(ref->inop, cmp->inop);
    }
    if (ref->intr != nullptr || cmp->intr != nullptr) {
        bits |= intr_compare(ref->intr, cmp->intr, INTR);
    }
    if (ref->inpss != nullptr || cmp->inpss != nullptr) {
        bits |= intr_compare(ref->inpss, cmp->inpss, INPSS);
    }
    if (ref->indc != nullptr || cmp->indc != nullptr) {
        bits |= indc_compare(ref->indc, cmp->indc);
    }
    if (ref->trforce != nullptr || cmp->trforce != nullptr) {
        bits |= force_compare(ref->trforce, cmp->trforce);
    }
    if (ref->pssforce != nullptr || cmp->pssforce != nullptr) {
        bits |= force_compare(ref->pssforce, cmp->pssforce);
    }
    if (ref->op != nullptr || cmp->op != nullptr) {
        bits |= op_compare(ref->op, cmp->op);
    }
    if (ref->wform != nullptr || cmp->wform != nullptr) {
        bits |= wform_compare(ref->wform, cmp->wform);
    }
    if (ref->pzform != nullptr || cmp->pzform != nullptr) {
        bits |= pzform_compare(ref->pzform, cmp->pzform);
    }
    return glNANflag ? bits | EXIT_NAN : bits;
}

unsigned wform_compare(Wform *ref, Wform *cmp)
{
    bool present[kAnalysisCount] = {};
    for (const Wform *list : {ref, cmp}) {
        for (; list != nullptr; list = list->next) {
            present[list->analysis] = true;
        }
    }
    unsigned bits = 0;
    for (const AnalysisRow &row : analysis_table()) {
        if (row.comparator != nullptr && present[row.code]) {
            bits |= row.comparator(ref, cmp, static_cast<unsigned>(row.code));
        }
    }
    return bits;
}
