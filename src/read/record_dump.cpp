// SPDX-License-Identifier: MIT
#include "read/record_dump.h"

#include "read/analysis_traits.h"
#include "support/transcript.h"

namespace
{

void print_analysis(const RERUNform *rerun, const MODIFYform *modify, int analysis)
{
    transcript_printf("      analysis = %s,  rerun = %d,  modify = %d,  temp = %g\n", analysis_name(analysis),
                      rerun->number, modify->number, modify->temperature);
}

void print_title(const RERUNform *rerun)
{
    if (rerun->title != nullptr) {
        transcript_printf("      TITLE = %s\n", rerun->title);
    }
}

void print_roots(const char *heading, const TRI *roots)
{
    transcript_printf("        %s:\n", heading);
    for (const TRI *root = roots; root != nullptr; root = root->next) {
        transcript_printf("          mag = %19.12E,  phase = %19.12E,  Q = %19.12E \n", root->mag,
                          root->phase, root->Q);
    }
}

// Kept: an internal quantity is shown as "CAP" (docs/punch-format.md, "What the transcript shows").
const char *force_type_name(int type)
{
    return type == NODE ? "NODE" : type == IND ? "IND" : "CAP";
}

void print_solution(const RERUNform *rerun, const MODIFYform *modify, const Isoln *values, int analysis)
{
    if (values != nullptr) {
        print_isoln(rerun, modify, values, analysis);
    }
}

void print_modify(const RERUNform *rerun, const MODIFYform *modify)
{
    // Kept: .IN solutions go under the names of the analyses they start (docs/punch-format.md, "What the
    // transcript shows").
    print_solution(rerun, modify, modify->inop, OP);
    print_solution(rerun, modify, modify->intr, TR);
    print_solution(rerun, modify, modify->inpss, PSS);
    if (modify->indc != nullptr) {
        print_solution(rerun, modify, modify->indc->first, DC);
        print_solution(rerun, modify, modify->indc->second, DC);
    }
    for (const TPsoln *force = modify->trforce; force != nullptr; force = force->next) {
        print_tpsoln(rerun, modify, force);
    }
    for (const TPsoln *force = modify->pssforce; force != nullptr; force = force->next) {
        print_tpsoln(rerun, modify, force);
    }
    print_solution(rerun, modify, modify->op, OP);
    for (const Wform *wform = modify->wform; wform != nullptr; wform = wform->next) {
        print_wform(rerun, modify, wform);
    }
    // Kept: the first block stands for each of them (docs/punch-format.md, "What the transcript shows").
    for (const PZform *block = modify->pzform; block != nullptr; block = block->next) {
        print_pzform(rerun, modify, modify->pzform);
    }
}

} // namespace

void print_isoln(const RERUNform *rerun, const MODIFYform *modify, const Isoln *values, int analysis)
{
    print_analysis(rerun, modify, analysis);
    for (const Isoln *value = values; value != nullptr; value = value->next) {
        transcript_printf("      Name = %s   val = %19.12E", value->name, value->value);
        if (value->yunits != nullptr) {
            transcript_printf(", yunits = %s", value->yunits);
        }
        transcript_puts("\n");
    }
    transcript_puts("\n");
}

void print_tpsoln(const RERUNform *rerun, const MODIFYform *modify, const TPsoln *solution)
{
    print_analysis(rerun, modify, solution->analysis);
    if (solution->time == kUnknownTime) {
        transcript_puts("  time point solution at time = UNKNOWN\n");
    } else {
        transcript_printf("  time point solution at time = %g\n", solution->time);
    }
    for (const Isoln *value = solution->isoln; value != nullptr; value = value->next) {
        transcript_printf("      Name = %s   val = %19.12E   type=%s\n", value->name, value->value,
                          force_type_name(value->type));
    }
    transcript_puts("\n");
}

void print_wform(const RERUNform *rerun, const MODIFYform *modify, const Wform *wform)
{
    print_analysis(rerun, modify, wform->analysis);
    print_title(rerun);
    transcript_printf("        waveform = %s\n", wform->name);
    transcript_printf("        xmin=%19.12E,  xmax=%19.12E\n", wform->xmin, wform->xmax);
    transcript_printf("        ymin=%19.12E,  ymax=%19.12E\n", wform->ymin, wform->ymax);
    transcript_printf("        tshift=%19.12E,  numpts=%d,  format=%d\n", wform->tshift, wform->numpts,
                      wform->format);
    if (wform->xunits != nullptr) {
        transcript_printf("        xunits=%s\n", wform->xunits);
    }
    if (wform->yunits != nullptr) {
        transcript_printf("        yunits=%s\n", wform->yunits);
    }
    for (const PT *point = wform->pts; point != nullptr; point = point->next) {
        transcript_printf("          x = %19.12E   val = %19.12E \n", point->x, point->val);
    }
    transcript_puts("\n");
}

void print_pzform(const RERUNform *rerun, const MODIFYform *modify, const PZform *block)
{
    transcript_puts("        pole-zero results\n");
    print_analysis(rerun, modify, PZ);
    if (block->tpunch_time != 0.0) {
        transcript_printf("      Transient Force time = %19.12E\n", block->tpunch_time);
    }
    print_title(rerun);
    transcript_printf("        iport=%s,  oport=%s\n", block->iport, block->oport);
    transcript_printf("        pztype=%s,  pzval=%19.12E\n", block->pztype == 1 ? "VOL" : "CUR",
                      block->pzval);
    print_roots("significant poles", block->poles);
    print_roots("significant zeros", block->zeros);
    print_roots("cancelled poles", block->cpoles);
    print_roots("cancelled zeros", block->czeros);
    transcript_puts("\n");
}

void print_all(const PF *file)
{
    for (const RERUNform *rerun = file->rerun; rerun != nullptr; rerun = rerun->next) {
        transcript_printf("  rerun %d\n", rerun->number);
        for (const MODIFYform *modify = rerun->modify; modify != nullptr; modify = modify->next) {
            transcript_printf("    modify %d  (rerun %d)\n", modify->number, rerun->number);
            print_modify(rerun, modify);
        }
    }
}
