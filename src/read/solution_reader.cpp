// SPDX-License-Identifier: MIT
#include "read/solution_reader.h"

#include "read/analysis_traits.h"
#include "read/binary_data.h"
#include "read/checked_number.h"
#include "read/list_tail.h"
#include "read/name_length.h"
#include "read/signal_totals.h"
#include "read/tk_alloc.h"
#include "support/signal_scanner.h"
#include "support/transcript.h"

#include <string>

namespace
{

// The values of one statement, under construction, and the counter of such values.
struct ValueList {
    explicit ValueList(AnalysisCode statement) : counter(*traits_of(statement).totals.values)
    {
        counter = 0;
    }

    int &counter;
    Isoln *head = nullptr;
    ListTail<Isoln> tail{head};
};

// Reads the value named by token, which for an internal quantity is the first half of its name.
void read_value(PunchStream &stream, std::string name, int type, int analysis, ValueList &list)
{
    if (type == INTERNAL) {
        name += "," + tk_nxsignal(stream);
    }
    Isoln *value = tk_Isoln_alloc();
    value->name = slab_text(name);
    value->value = next_number(stream);
    value->type = type;
    value->analysis = analysis;
    list.tail.append(value);
    note_name_length(name.size());
    ++list.counter;
}

// The kind that a word of a .FORCE list switches to, 0 for any other name.
int force_kind(const std::string &word)
{
    return word == "NODE"       ? NODE
           : word == "INTERNAL" ? INTERNAL
           : word == "IND"      ? IND
           : word == "CAP"      ? CAP
                                : 0;
}

// Reads the time line of a .FORCE statement. False, with the line skipped, when it is malformed.
bool read_time_line(PunchStream &stream, TPsoln &solution)
{
    tk_dropfields(stream, 5);
    if (tk_nxfield(stream) != "TIME") {
        transcript_puts("WARNING : nonstandard punch file syntax in .force results - skipping\n");
        while (!tk_eolnflag) {
            tk_nxfield(stream);
        }
        return false;
    }
    solution.time = next_number(stream);
    if (!tk_eolnflag) {
        tk_BUFmark(stream);
        tk_nxfield(stream);
        if (tk_nxfield(stream) == "RERUN") {
            tk_dropfields(stream, 2);
        } else {
            tk_BUFrestore(stream);
        }
    }
    return true;
}

// Reads the forced values up to the end of the logical line.
void read_forced_values(PunchStream &stream, ValueList &list)
{
    int type = NODE;
    do {
        const std::string token = tk_nxsignal(stream);
        // Kept: the word of the kind in force is no kind word (docs/punch-format.md, "Forced
        // solutions").
        const int kind = force_kind(token);
        if (kind != 0 && kind != type) {
            type = kind;
        } else if (!tk_eolnflag) {
            read_value(stream, token, type, kNoAnalysis, list);
        }
    } while (!tk_eolnflag);
}

// Skips to the line behind a binary OP value.
void leave_binary_line(PunchStream &stream)
{
    int byte = 0;
    do {
        byte = stream_byte(stream);
    } while (byte >= 0 && byte != '\n');
    if (byte >= 0) {
        tk_BUFreadLine(stream);
    } else {
        tk_stopReading();
    }
}

// Reads the two values behind a binary OP line: the sweep value, which is dropped, and the value.
// Kept: an end mark in place of the first stands for a value of 0 and for the end of the run
// (docs/punch-format.md, "Operating point").
double read_binary_op_value(PunchStream &stream, int format)
{
    double value = 0.0;
    BINrdFLT(stream, format);
    if (!tk_endMarkMet()) {
        value = BINrdFLT(stream, format);
    }
    leave_binary_line(stream);
    return value;
}

} // namespace

Isoln *tk_read_isoln(PunchStream &stream, AnalysisCode kind)
{
    ValueList list(kind);
    tk_nxfield(stream);
    if (tk_nxchar() == '*') {
        tk_dropfields(stream, 8); // a comment line that heads the values
    }
    int type = NODE;
    while (!tk_eolnflag) {
        const std::string token = tk_nxsignal(stream);
        const int word = force_kind(token);
        if (word == NODE || word == INTERNAL) {
            type = word;
        } else if (!tk_eolnflag) {
            read_value(stream, token, type, kind, list);
        }
    }
    return list.head;
}

Isoln *tk_read_op(PunchStream &stream, Isoln *list)
{
    int format = NO_DATA;
    bool ended = false;
    do {
        Isoln *value = tk_Isoln_alloc();
        value->next = list;
        list = value;
        const std::string &name = tk_nxsignal(stream);
        value->name = slab_text(name);
        note_name_length(name.size());
        if (tk_nxfield(stream) == "YUNITS") {
            value->yunits = slab_text(tk_nxfield(stream));
            tk_nxfield(stream);
        }
        if (tk_field == "DATA") {
            format = take_data_format();
        }
        // Kept: a format once met holds for the rest of the run of lines (docs/punch-format.md,
        // "Operating point").
        if (format == NO_DATA) {
            value->value = next_number(stream); // the field before it is the sweep value
            ended = tk_eolnflag != 0;
        } else {
            tk_takeRestOfLine();
            value->value = read_binary_op_value(stream, format);
            ended = tk_endMarkMet();
        }
        ++OPcnt;
    } while (!ended && !tk_eofflag && tk_nxchar() != '*');
    if (format != NO_DATA) {
        tk_forgetEndMark();
    }
    return list;
}

TPsoln *tk_read_TPsoln(PunchStream &stream, int analysis)
{
    ValueList list(analysis == TR ? TR_FORCE : PSS_FORCE);
    TPsoln *solution = tk_TPsoln_alloc();
    if (tk_nxchar() == '*' && !read_time_line(stream, *solution)) {
        return nullptr;
    }
    if (tk_nxchar() == '*') {
        tk_nxfield(stream);
        if (!tk_eolnflag) {
            tk_nxfield(stream);
            solution->tshift = next_number(stream);
            tk_dropfields(stream, 2);
        }
    }
    if (!tk_eolnflag) {
        read_forced_values(stream, list);
    }
    solution->isoln = list.head;
    return solution;
}
