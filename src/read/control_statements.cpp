// SPDX-License-Identifier: MIT
#include "read/control_statements.h"

#include "read/analysis_traits.h"
#include "read/record_dump.h"
#include "read/signal_totals.h"
#include "read/solution_reader.h"
#include "read/tk_alloc.h"
#include "support/settings.h"
#include "support/tk_buffer.h"
#include "support/transcript.h"

namespace
{

// Reads one list of an .IN statement.
Isoln *read_list(PunchStream &stream, const TreePlace &place, AnalysisCode kind)
{
    Isoln *list = tk_read_isoln(stream, kind);
    ++traits_of(kind).totals.counter;
    if (debugging(DEBUG_READ)) {
        print_isoln(place.rerun, place.modify, list, kind);
    }
    return list;
}

// A .IN DC statement has two lists; comment lines may stand between them.
INDCform *read_dc_lists(PunchStream &stream, const TreePlace &place)
{
    INDCform *indc = tk_INDCform_alloc();
    indc->first = read_list(stream, place, INDC1);
    while (tk_nxchar() == '*' && !tk_eofflag) {
        tk_BUFreadLine(stream);
    }
    if (!tk_eofflag) {
        tk_dropfields(stream, 2);
        indc->second = read_list(stream, place, INDC2);
    }
    return indc;
}

void read_in_statement(PunchStream &stream, const TreePlace &place)
{
    MODIFYform &modify = *place.modify;
    const std::string &kind = tk_nxfield(stream);
    if (kind == "TR") {
        modify.intr = read_list(stream, place, INTR);
    } else if (kind == "PSS") {
        modify.inpss = read_list(stream, place, INPSS);
    } else if (kind == "OP") {
        modify.inop = read_list(stream, place, INOP);
    } else if (kind == "DC") {
        modify.indc = read_dc_lists(stream, place);
    }
}

void read_force_statement(PunchStream &stream, TreePlace &place)
{
    TPsoln *force = tk_read_TPsoln(stream, place.analysis);
    if (force == nullptr) {
        return;
    }
    if (place.analysis == TR) {
        force->analysis = TR_FORCE;
        place.trforces.append(force);
        ++TRFORCEcnt;
    } else {
        force->analysis = place.analysis == PSS ? PSS_FORCE : place.analysis;
        place.pssforces.append(force);
        ++PSSFORCEcnt;
    }
    if (debugging(DEBUG_READ)) {
        print_tpsoln(place.rerun, place.modify, force);
    }
}

} // namespace

void read_control_statement(PunchStream &stream, TreePlace &place)
{
    require_modify(place);
    const std::string &statement = tk_nxfield(stream);
    if (statement == ".IN") {
        read_in_statement(stream, place);
    } else if (statement == ".FORCE") {
        read_force_statement(stream, place);
    } else {
        transcript_printf(" WARNING : Unknown control statement in punch file (%s), ignored\n",
                          place.file->name);
        while (!tk_eolnflag) {
            tk_nxfield(stream);
        }
    }
}
