// SPDX-License-Identifier: MIT
#include "read/text_points.h"

#include "read/checked_number.h"
#include "read/point_columns.h"
#include "support/settings.h"
#include "support/tk_buffer.h"

namespace
{

// The next x. False when it ends the logical line: then it has no y and is dropped unconverted.
bool next_x(PunchStream &stream, double &x)
{
    if (tk_nxnumber(stream, x)) {
        return !tk_eolnflag;
    }
    tk_nxfield(stream);
    if (tk_eolnflag) {
        return false;
    }
    x = tk_atof(tk_field);
    return true;
}

void count_text_points(PunchStream &stream, Wform &wform)
{
    std::uint64_t fields = 0; // without the first x
    for (;;) {
        const bool between_points = fields == 0 || fields % 2 != 0;
        if (tk_eolnflag || (tk_eofflag && between_points)) {
            break;
        }
        if (!tk_eofflag) {
            fields += tk_skipPlainFields();
        }
        tk_skipfield(stream);
        ++fields;
    }
    set_count(wform, (fields + 1) / 2);
}

} // namespace

void read_text_points(PunchStream &stream, Wform &wform, const std::function<double()> &first_x)
{
    if (pun_index) {
        count_text_points(stream, wform);
        return;
    }
    static PointColumns columns;
    columns.clear();
    double x = 0.0;
    bool first = true;
    while (!tk_eolnflag && !tk_eofflag) {
        if (first) {
            x = first_x();
        } else if (!next_x(stream, x)) {
            break;
        }
        first = false;
        columns.append(x, next_number(stream));
    }
    columns.give_to(wform);
}
