// SPDX-License-Identifier: MIT
#include "read/pole_zero_reader.h"

#include "read/checked_number.h"
#include "read/list_tail.h"
#include "read/tk_alloc.h"
#include "support/tk_buffer.h"
#include "support/transcript.h"

namespace
{

constexpr int kVoltageTransfer = 1;
constexpr int kCurrentTransfer = 2;

// One of the four root lists of a block: "* SIGNIFICANT POLES" or "* FOLLOWING POLES CANCEL EACH
// OTHER AND VANISH", or "* NO ..." where the list is empty.
struct Section {
    const char *word;
    const char *kind;
    bool cancelled;
    TRI *PZform::*list;
};

constexpr Section kSections[] = {
    {"SIGNIFICANT", "POLES", false, &PZform::poles},
    {"SIGNIFICANT", "ZEROS", false, &PZform::zeros},
    {"FOLLOWING", "POLES", true, &PZform::cpoles},
    {"FOLLOWING", "ZEROS", true, &PZform::czeros},
};

// Skips what is left of the line of the field just taken; nothing when that field ended it.
void skip_line(PunchStream &stream)
{
    if (!tk_eolnflag) {
        tk_BUFreadLine(stream);
    }
}

// Cancelled roots are headed by the rest of a sentence and perhaps by a "#" line.
void skip_cancelled_heading(PunchStream &stream)
{
    tk_dropfields(stream, 5);
    tk_BUFmark(stream);
    if (tk_nxfield(stream)[0] == '#') {
        skip_line(stream);
    } else {
        tk_BUFrestore(stream);
    }
}

// The following functions return false where the block does not follow the layout.

bool read_section(PunchStream &stream, const Section &section, PZform &block)
{
    tk_nxfield(stream);
    const std::string &word = tk_nxfield(stream);
    if (word == "NO") {
        tk_dropfields(stream, 2);
        return true;
    }
    if (word != section.word || tk_nxfield(stream) != section.kind) {
        return false;
    }
    if (section.cancelled) {
        skip_cancelled_heading(stream);
    }
    block.*section.list = tk_read_TRI_list(stream);
    return true;
}

bool read_block(PunchStream &stream, PZform &block)
{
    block.iport = tk_nxLine(stream);
    block.oport = tk_nxLine(stream);
    const std::string &type = tk_nxfield(stream);
    if (type != "V" && type != "I") {
        return false;
    }
    block.pztype = type == "V" ? kVoltageTransfer : kCurrentTransfer;
    block.pzval = next_number(stream);
    for (const Section &section : kSections) {
        if (!read_section(stream, section, block)) {
            return false;
        }
    }
    tk_nxfield(stream);
    if (tk_nxfield(stream) != "END") {
        return false;
    }
    skip_line(stream);
    return true;
}

// Whether the field just taken, which may be the faulty one, ended a line in front of a "*" line.
// Kept: not if that field begins with "V" (docs/punch-format.md, "Poles and zeros").
bool before_comment_line()
{
    return tk_eolnflag && tk_nxchar() == '*' && tk_field[0] != 'V';
}

void skip_to_header(PunchStream &stream)
{
    while (!tk_eofflag) {
        if (!before_comment_line()) {
            tk_nxfield(stream);
            continue;
        }
        tk_BUFmark(stream);
        tk_nxfield(stream);
        if (tk_nxfield(stream) == "ANALYSIS") {
            tk_BUFrestore(stream);
            return;
        }
    }
}

} // namespace

PZform *tk_read_pzform(PunchStream &stream)
{
    PZform *block = tk_PZform_alloc();
    if (!read_block(stream, *block)) {
        transcript_puts("WARNING : nonstandard punch file syntax in pole-zero results - skipping\n");
        skip_to_header(stream);
        return nullptr;
    }
    return block;
}

TRI *tk_read_TRI_list(PunchStream &stream)
{
    TRI *head = nullptr;
    ListTail<TRI> tail(head);
    while (tk_nxchar() != '*' && !tk_eofflag) {
        TRI *root = tk_TRI_alloc();
        root->mag = next_number(stream);
        root->phase = next_number(stream);
        root->Q = next_number(stream);
        tail.append(root);
    }
    return head;
}
