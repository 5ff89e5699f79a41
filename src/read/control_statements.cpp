// SPDX-License-Identifier: MIT
#include "read/control_statements.h"

#include "read/read_state.h"
#include "read/record_dump.h"
#include "read/solution_reader.h"
#include "read/tk_alloc.h"
#include "support/settings.h"
#include "support/tk_buffer.h"
#include "support/transcript.h"

namespace
{

// Reads one list of an .IN statement.
Isoln *read_list(ReaderState &state, int kind, int &statement_counter)
{
    Isoln *list = tk_read_isoln(*state.stream, kind);
    ++statement_counter;
    if (debugging(DEBUG_READ)) {
        print_isoln(state.rerun, state.modify, list, kind);
    }
    return list;
}

// A .IN DC statement has two lists; comment lines may stand between them.
void read_dc_lists(ReaderState &state)
{
    PunchStream &stream = *state.stream;
    INDCform *indc = tk_INDCform_alloc();
    state.modify->indc = indc;
    indc->first = read_list(state, INDC1, INDCcnt);
    while (tk_nxchar() == '*' && !tk_eofflag) {
        tk_BUFreadLine(stream);
    }
    if (!tk_eofflag) {
        tk_dropfields(stream, 2);
        indc->second = read_list(state, INDC2, INDCcnt);
    }
}

void read_in_statement(ReaderState &state)
{
    MODIFYform &modify = *state.modify;
    const std::string &kind = tk_nxfield(*state.stream);
    if (kind == "TR") {
        modify.intr = read_list(state, INTR, INTRcnt);
    } else if (kind == "PSS") {
        modify.inpss = read_list(state, INPSS, INPSScnt);
    } else if (kind == "OP") {
        modify.inop = read_list(state, INOP, INOPcnt);
    } else if (kind == "DC") {
        read_dc_lists(state);
    }
}

void append_force(TPsoln *&head, TPsoln *&last, TPsoln *force)
{
    (head == nullptr ? head : last->next) = force;
    last = force;
}

void read_force_statement(ReaderState &state)
{
    TPsoln *force = tk_read_TPsoln(*state.stream, state.analysis);
    if (force == nullptr) {
        return;
    }
    if (state.analysis == TR) {
        force->analysis = TR_FORCE;
        append_force(state.modify->trforce, state.last_trforce, force);
        ++TRFORCEcnt;
    } else {
        force->analysis = state.analysis == PSS ? PSS_FORCE : state.analysis;
        append_force(state.modify->pssforce, state.last_pssforce, force);
        ++PSSFORCEcnt;
    }
    if (debugging(DEBUG_READ)) {
        print_tpsoln(state.rerun, state.modify, force);
    }
}

} // namespace

void read_control_statement(ReaderState &state)
{
    require_modify(state);
    const std::string &statement = tk_nxfield(*state.stream);
    if (statement == ".IN") {
        read_in_statement(state);
    } else if (statement == ".FORCE") {
        read_force_statement(state);
    } else {
        transcript_printf(" WARNING : Unknown control statement in punch file (%s), ignored\n",
                          state.file->name);
        while (!tk_eolnflag) {
            tk_nxfield(*state.stream);
        }
    }
}
