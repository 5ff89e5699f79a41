// SPDX-License-Identifier: MIT
#include "read/analysis_header.h"

#include "read/analysis_traits.h"
#include "read/checked_number.h"
#include "read/index_table.h"
#include "read/signal_totals.h"
#include "support/settings.h"
#include "support/slab.h"
#include "support/tk_buffer.h"
#include "support/transcript.h"

#include <cstdlib>

namespace
{

struct Variant {
    int rerun = 0;
    int modify = 0;
    double temperature = 0.0;
};

// Whether the file ended before the field just taken.
bool field_is_cut_off()
{
    return tk_field.empty() && tk_eofflag;
}

// Reads program, date and time, and the marker of the header's second line. A header without DATE
// has its marker in that place or behind it.
bool read_origin(PunchStream &stream)
{
    tk_dropfields(stream, 3);
    if (tk_field == "*") {
        return true;
    }
    if (tk_field == "DATE") {
        rundate = slab_text(tk_nxfield(stream));
        tk_dropfields(stream, 2);
        runtime = slab_text(tk_field);
    }
    return tk_nxfield(stream) == "*";
}

bool read_variant(PunchStream &stream, Variant &variant)
{
    if (tk_nxfield(stream) != "RERUN_NUMBER") {
        return false;
    }
    variant.rerun = std::atoi(tk_nxfield(stream).c_str());
    if (tk_nxfield(stream) != "TEMPERATURE") {
        return false;
    }
    variant.temperature = next_number(stream);
    if (tk_nxfield(stream) != "MODIFY") {
        return false;
    }
    variant.modify = std::atoi(tk_nxfield(stream).c_str());
    return !field_is_cut_off();
}

// Prints the totals of the modify just finished, and which one begins.
void report_new_modify(TreePlace &place)
{
    if (!place.first_header) {
        print_signal_totals();
    }
    place.first_header = false;
    if (!pun_index) {
        transcript_printf("  Reading rerun %d modify %d :\n", place.rerun->number, place.modify->number);
    }
}

void enter_variant(TreePlace &place, const Variant &variant)
{
    if (place.rerun == nullptr || place.rerun->number != variant.rerun) {
        open_rerun(place, variant.rerun, variant.modify, variant.temperature);
    } else if (place.modify->number != variant.modify) {
        open_modify(place, variant.modify, variant.temperature);
    } else {
        place.modify->temperature = variant.temperature;
        return;
    }
    report_new_modify(place);
}

} // namespace

bool read_analysis_header(PunchStream &stream, TreePlace &place)
{
    place.xunits = nullptr;
    place.xfunc = nullptr;
    place.analysis = analysis_of_header_word(tk_nxfield(stream).c_str());
    const bool cut_off = field_is_cut_off();
    if (place.analysis == kNoAnalysis && !cut_off) {
        transcript_printf("ERROR : unknown analysis type in punch file (%s)\n", tk_field.c_str());
        return false;
    }
    Variant variant;
    if (cut_off || !read_origin(stream) || !read_variant(stream, variant)) {
        transcript_puts("ERROR : nonstandard punch file syntax\n");
        return false;
    }
    enter_variant(place, variant);
    return true;
}
