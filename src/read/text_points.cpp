// SPDX-License-Identifier: MIT
#include "read/text_points.h"

#include "read/checked_number.h"
#include "read/point_columns.h"
#include "support/settings.h"
#include "support/tk_buffer.h"

namespace
{

// The next field as a number. An x that ends the logical line has no y and is dropped unconverted.
double next_value(PunchStream &stream, bool is_x)
{
    double value = 0.0;
    if (tk_nxnumber(stream, value)) {
        return value;
    }
    tk_nxfield(stream);
    return is_x && tk_eolnflag ? 0.0 : tk_atof(tk_field);
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
            fields += tk_skipPlainFields(stream);
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
    if (tk_eolnflag || tk_eofflag) {
        return;
    }
    constexpr std::size_t kRoom = 256;
    static NumberColumns forms; // the signals of a file are alike
    for (NumberForm &form : forms) {
        form.begin_column();
    }
    static PointColumns points;
    points.clear();
    double values[kRoom] = {first_x()}; // x, y, x, y ...
    std::size_t held = 1;
    for (bool ended = false; !ended;) {
        if (!tk_eofflag) {
            held = tk_nxnumbers(stream, forms, values, held, kRoom);
        }
        if (held < kRoom) {
            values[held] = next_value(stream, held % 2 == 0);
            ++held;
            ended = tk_eolnflag || (tk_eofflag && held % 2 == 0);
        }
        if (ended || held == kRoom) {
            points.append(values, held / 2);
            held = 0;
        }
    }
    points.give_to(wform);
}
