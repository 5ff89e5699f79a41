// SPDX-License-Identifier: MIT
#include "compare/tk_compare.h"

#include "compare/compare_state.h"
#include "compare/exit_bits.h"
#include "compare/force_compare.h"
#include "compare/pole_zero_compare.h"
#include "compare/solution_compare.h"
#include "compare/sweep_compare.h"
#include "support/transcript.h"

#include <algorithm>

unsigned tk_compare_all(MODIFYform *ref, MODIFYform *cmp)
{
    std::fill_n(headerPrinted, kAnalysisCount, 0);
    transcript_puts("\n");
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
