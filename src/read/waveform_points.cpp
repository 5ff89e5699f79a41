// SPDX-License-Identifier: MIT
#include "read/waveform_points.h"

#include "read/binary_data.h"
#include "read/checked_number.h"
#include "read/codes.h"
#include "read/tk_alloc.h"
#include "support/settings.h"
#include "support/tk_buffer.h"

#include <algorithm>
#include <climits>

namespace
{

// The coordinates of a point in one register, where the processor has such registers.
using PointVector = double __attribute__((vector_size(16)));

// Appends points to a waveform and keeps the range of their coordinates.
class PointAppender
{
  public:
    explicit PointAppender(Wform &wform)
        : wform_(wform), tail_(&wform.pts), xmin_(wform.xmin), xmax_(wform.xmax), ymin_(wform.ymin),
          ymax_(wform.ymax)
    {
    }
    PointAppender(const PointAppender &) = delete;
    PointAppender &operator=(const PointAppender &) = delete;
    ~PointAppender()
    {
        wform_.xmin = xmin_;
        wform_.xmax = xmax_;
        wform_.ymin = ymin_;
        wform_.ymax = ymax_;
    }

    void append(double x, double y)
    {
        PT *point = tk_PT_alloc();
        point->x = x;
        point->val = y;
        *tail_ = point;
        tail_ = &point->next;
        widen(x, xmin_, xmax_);
        widen(y, ymin_, ymax_);
    }

    // Room for count points side by side, to be filled and handed to append_filled.
    static PT *room(std::size_t count)
    {
        return point_slab.reserve(count);
    }

    // Appends the first count points of the room, each linked to the one behind it.
    void append_filled(PT *points, std::size_t count)
    {
        if (count == 0) {
            return;
        }
        points[count - 1].next = nullptr;
        *tail_ = points;
        tail_ = &points[count - 1].next;
        point_slab.commit(count);
        widen(points, count);
    }

  private:
    // Kept: a NaN replaces the minimum and then stays, since nothing is smaller (docs/punch-format.md,
    // "What the transcript shows").
    static void widen(double value, double &lowest, double &highest)
    {
        if (value < lowest || value != value) {
            lowest = value;
        }
        if (value > highest) {
            highest = value;
        }
    }

    // The same for many points, without a branch for each; a sum shows whether there was a NaN.
    void widen(const PT *points, std::size_t count)
    {
        PointVector lowest{xmin_, ymin_};
        PointVector highest{xmax_, ymax_};
        PointVector sum{0.0, 0.0};
        for (std::size_t i = 0; i < count; ++i) {
            const PointVector point{points[i].x, points[i].val};
            lowest = point < lowest ? point : lowest;
            highest = point > highest ? point : highest;
            sum += point;
        }
        if (sum[0] == sum[0] && sum[1] == sum[1]) {
            xmin_ = lowest[0];
            ymin_ = lowest[1];
            xmax_ = highest[0];
            ymax_ = highest[1];
            return;
        }
        for (std::size_t i = 0; i < count; ++i) {
            widen(points[i].x, xmin_, xmax_);
            widen(points[i].val, ymin_, ymax_);
        }
    }

    Wform &wform_;
    PT **tail_;
    double xmin_;
    double xmax_;
    double ymin_;
    double ymax_;
};

void set_point_count(Wform &wform, std::uint64_t count)
{
    wform.numpts = static_cast<int>(std::min<std::uint64_t>(count, INT_MAX));
}

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
    set_point_count(wform, (fields + 1) / 2);
}

constexpr std::size_t kGroupPoints = 10; // points between two bytes to be dropped

struct Group {
    std::size_t points; // complete points
    std::size_t bytes;  // bytes used, the one to be dropped behind a full group included
    bool ended;         // the end mark was met; in place of a y its point counts all the same
};

// Decodes one group of points at bytes, and links each to the place behind it.
template <typename Value, bool kSwap> Group decode_group(const char *bytes, PT *points)
{
    std::size_t used = 0;
    for (std::size_t i = 0; i < kGroupPoints; ++i) {
        if (decode_binary<Value, kSwap>(bytes + used, points[i].x)) {
            return {i, used + sizeof(Value), true};
        }
        used += sizeof(Value);
        const bool ended = decode_binary<Value, kSwap>(bytes + used, points[i].val);
        used += sizeof(Value);
        points[i].next = points + i + 1;
        if (ended) {
            return {i + 1, i + 1 == kGroupPoints ? used + 1 : used, true};
        }
    }
    return {kGroupPoints, used + 1, false};
}

// Decodes groups until the end mark: into the room that make_room() gives, handing each to
// keep(points, count). Returns the number of points.
template <typename Value, bool kSwap, typename MakeRoom, typename Keep>
std::uint64_t read_groups(PunchStream &stream, MakeRoom make_room, Keep keep)
{
    constexpr std::size_t kGroupBytes = kGroupPoints * 2 * sizeof(Value) + 1;
    std::uint64_t count = 0;
    for (;;) {
        const std::size_t held = stream_require(stream, kGroupBytes);
        const char *bytes = stream.window + stream.position;
        char padded[kGroupBytes];
        if (held < kGroupBytes) { // cut off by the end of the file
            std::memset(padded, 0xFF, sizeof padded);
            std::memcpy(padded, bytes, held);
            bytes = padded;
        }
        PT *points = make_room();
        const Group group = decode_group<Value, kSwap>(bytes, points);
        stream.position += std::min(group.bytes, held);
        count += group.points;
        keep(points, group.points);
        if (group.ended) {
            return count;
        }
    }
}

template <typename Value, bool kSwap> std::uint64_t read_values(PunchStream &stream, Wform &wform)
{
    if (pun_index) {
        PT dropped[kGroupPoints];
        return read_groups<Value, kSwap>(
            stream, [&dropped] { return dropped; }, [](PT *, std::size_t) {});
    }
    PointAppender appender(wform);
    return read_groups<Value, kSwap>(
        stream, [] { return PointAppender::room(kGroupPoints); },
        [&appender](PT *points, std::size_t count) { appender.append_filled(points, count); });
}

template <typename Value> std::uint64_t read_values(PunchStream &stream, Wform &wform)
{
    return binary_needs_swap() ? read_values<Value, true>(stream, wform)
                               : read_values<Value, false>(stream, wform);
}

} // namespace

void read_text_points(PunchStream &stream, Wform &wform, const std::function<double()> &first_x)
{
    if (pun_index) {
        count_text_points(stream, wform);
        return;
    }
    PointAppender points(wform);
    std::uint64_t count = 0;
    double x = 0.0;
    while (!tk_eolnflag && !tk_eofflag) {
        if (count == 0) {
            x = first_x();
        } else if (!next_x(stream, x)) {
            break;
        }
        points.append(x, next_number(stream));
        ++count;
    }
    set_point_count(wform, count);
}

void read_binary_points(PunchStream &stream, Wform &wform)
{
    set_point_count(wform, wform.format == BINARY_DBL ? read_values<double>(stream, wform)
                                                      : read_values<float>(stream, wform));
}
