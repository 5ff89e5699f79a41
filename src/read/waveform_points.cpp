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

// Appends points to a waveform and keeps their range; local, so that it can live in registers.
class PointAppender
{
  public:
    explicit PointAppender(Wform &wform) : wform_(wform), tail_(&wform.pts)
    {
        xmin_ = ymin_ = wform.xmin;
        xmax_ = ymax_ = wform.xmax;
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

  private:
    // A NaN replaces the minimum and then stays, since nothing is smaller.
    static void widen(double value, double &lowest, double &highest)
    {
        if (value < lowest || value != value) {
            lowest = value;
        }
        if (value > highest) {
            highest = value;
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
    std::uint64_t count = 0;
    while (!tk_eolnflag && !tk_eofflag) {
        if (count > 0) {
            tk_skipfield(stream);
            if (tk_eolnflag) {
                break;
            }
        }
        tk_skipfield(stream);
        ++count;
    }
    set_point_count(wform, count);
}

constexpr std::size_t kGroupPoints = 10; // a byte to be dropped follows

struct GroupResult {
    std::size_t points; // complete points found
    std::size_t bytes;  // bytes used
    bool ended;         // the end mark was met
};

// Reads one group of points: 10 of them and the byte to be dropped. An end mark in place of a y ends
// the data too, but its point counts.
template <typename Value, typename Keep> GroupResult read_group(const char *bytes, bool swap, Keep keep)
{
    const char *next = bytes;
    const auto used = [bytes, &next] {
        return static_cast<std::size_t>(next - bytes);
    };
    for (std::size_t i = 0; i < kGroupPoints; ++i) {
        double x = 0.0;
        double y = 0.0;
        const bool ended = decode_binary<Value>(next, swap, x);
        next += sizeof(Value);
        if (ended) {
            return {i, used(), true};
        }
        const bool last = decode_binary<Value>(next, swap, y);
        next += sizeof(Value);
        keep(x, y);
        if (last) {
            next += i + 1 == kGroupPoints ? 1 : 0;
            return {i + 1, used(), true};
        }
    }
    return {kGroupPoints, used() + 1, false};
}

// Reads groups until the end mark, handing every point to keep. Returns the number of points.
template <typename Value, typename Keep> std::uint64_t read_groups(PunchStream &stream, Keep keep)
{
    constexpr std::size_t kGroupBytes = kGroupPoints * 2 * sizeof(Value) + 1;
    const bool swap = binary_needs_swap();
    std::uint64_t count = 0;
    GroupResult group{};
    do {
        const std::size_t held = stream_require(stream, kGroupBytes);
        const char *bytes = stream.window + stream.position;
        char padded[kGroupBytes];
        if (held < kGroupBytes) { // cut off by the end of the file
            std::memset(padded, 0xFF, sizeof padded);
            std::memcpy(padded, bytes, held);
            bytes = padded;
        }
        group = read_group<Value>(bytes, swap, keep);
        stream.position += std::min(group.bytes, held);
        count += group.points;
    } while (!group.ended);
    return count;
}

template <typename Value> std::uint64_t read_values(PunchStream &stream, Wform &wform)
{
    if (pun_index) {
        return read_groups<Value>(stream, [](double, double) {});
    }
    PointAppender points(wform);
    return read_groups<Value>(stream, [&points](double x, double y) { points.append(x, y); });
}

} // namespace

void read_text_points(PunchStream &stream, Wform &wform, const std::string &first_x)
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
            x = tk_atof(first_x);
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
