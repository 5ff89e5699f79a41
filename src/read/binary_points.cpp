// SPDX-License-Identifier: MIT
#include "read/binary_points.h"

#include "read/binary_data.h"
#include "read/codes.h"
#include "read/point_vector.h"
#include "read/tk_alloc.h"
#include "read/value_range.h"
#include "support/settings.h"
#include "support/slab.h"
#include "support/wide_vectors.h"

#include <algorithm>
#include <cstdint>

namespace
{

constexpr std::size_t kUnknownCount = SIZE_MAX; // of points: as many as there are
constexpr std::size_t kStoredPoints =
    250; // at most, of a waveform that is decoded at once: saves a read each

template <typename Value> constexpr std::size_t kPointBytes = 2 * sizeof(Value);
template <typename Value> constexpr std::size_t kGroupBytes = kGroupPoints *kPointBytes<Value> + 1;

// Ranges of both coordinates, and the number of points.
struct Survey {
    ValueRange x;
    ValueRange y;
    std::uint64_t points = 0;
};

// Widens the ranges by the lowest and highest of points that came later.
void widen(Survey &survey, const DoubleVector &low, const DoubleVector &high)
{
    survey.x.lowest = lesser(survey.x.lowest, low[0]);
    survey.y.lowest = lesser(survey.y.lowest, low[1]);
    survey.x.highest = greater(survey.x.highest, high[0]);
    survey.y.highest = greater(survey.y.highest, high[1]);
}

void widen(Survey &survey, const FloatVector &low, const FloatVector &high)
{
    for (const int point : {0, 2}) {
        widen(survey, DoubleVector{low[point], low[point + 1]}, DoubleVector{high[point], high[point + 1]});
    }
}

using Words = std::int32_t __attribute__((vector_size(kVectorBytes)));
using LongWords = std::int64_t __attribute__((vector_size(kVectorBytes)));

bool any(const LongWords &found)
{
    return (found[0] | found[1]) != 0;
}

// What a group may hold that needs the exact rules. A NaN, as the end mark is, makes the sum a NaN.
template <typename Vector> struct Oddities;

template <> struct Oddities<DoubleVector> {
    DoubleVector sum{};
    void note(const DoubleVector &point)
    {
        sum += point;
    }
    bool found() const
    {
        return any(sum != sum);
    }
};

// Which of two zeros came first is lost where two points share a register, and matters only for -0.
template <> struct Oddities<FloatVector> {
    FloatVector sum{};
    Words negative_zero{};
    void note(const FloatVector &points)
    {
        sum += points;
        negative_zero |= reinterpret_cast<Words>(points) == INT32_MIN;
    }
    bool found() const
    {
        return any(reinterpret_cast<LongWords>(negative_zero | (sum != sum)));
    }
};

// Looks over whole groups, up to one that needs the exact rules: with a NaN in it, or a zero whose sign
// might be lost. Returns the number of groups before it.
template <typename Value, typename Order>
std::size_t survey_groups(const char *bytes, std::size_t groups, Survey &survey)
{
    constexpr std::size_t kVectors = kGroupPoints * kPointBytes<Value> / kVectorBytes;
    PointVector<Value> lowest{};
    PointVector<Value> highest{};
    std::size_t done = 0;
    for (; done < groups; ++done, bytes += kGroupBytes<Value>) {
        PointVector<Value> low = load_points<Value, Order>(bytes);
        PointVector<Value> high = low;
        Oddities<PointVector<Value>> oddities;
        oddities.note(low);
        for (std::size_t i = 1; i < kVectors; ++i) {
            const PointVector<Value> points = load_points<Value, Order>(bytes + i * kVectorBytes);
            oddities.note(points);
            low = lesser(low, points);
            high = greater(high, points);
        }
        if (oddities.found()) {
            break;
        }
        lowest = done == 0 ? low : lesser(lowest, low);
        highest = done == 0 ? high : greater(highest, high);
    }
    if (done != 0) {
        widen(survey, lowest, highest);
        survey.points += done * kGroupPoints;
    }
    return done;
}

// Looks over one group point by point, in which the end mark may be. In place of a y it ends the points too,
// but its point counts. Sets used to the bytes of the group, the one to be dropped behind a full one
// included.
template <typename Value, bool kSwap> bool survey_group(const char *bytes, Survey &survey, std::size_t &used)
{
    used = 0;
    for (std::size_t i = 1; i <= kGroupPoints; ++i) {
        double x = 0.0;
        if (decode_binary<Value, kSwap>(bytes + used, x)) {
            used += sizeof(Value);
            return true;
        }
        used += sizeof(Value);
        double y = 0.0;
        const bool ended = decode_binary<Value, kSwap>(bytes + used, y);
        used += i == kGroupPoints ? sizeof(Value) + 1 : sizeof(Value);
        survey.x.widen(x);
        survey.y.widen(y);
        ++survey.points;
        if (ended) {
            return true;
        }
    }
    return false;
}

// Looks over all points up to the end mark. Returns whether the end of the file cut them off.
template <typename Value, typename Order> bool survey_points(PunchStream &stream, Survey &survey)
{
    for (;;) {
        const std::size_t held = stream_require(stream, kGroupBytes<Value>);
        const char *bytes = stream.window + stream.position;
        std::size_t groups = 0;
        do_fast(kUnknownCount,
                [&] { groups = survey_groups<Value, Order>(bytes, held / kGroupBytes<Value>, survey); });
        if (groups != 0) {
            stream.position += groups * kGroupBytes<Value>;
            continue;
        }
        char padded[kGroupBytes<Value>];
        if (held < sizeof padded) { // cut off by the end of the file
            std::memset(padded, 0xFF, sizeof padded);
            std::memcpy(padded, bytes, held);
            bytes = padded;
        }
        std::size_t used = 0;
        const bool ended = survey_group<Value, Order::kSwaps>(bytes, survey, used);
        stream.position += std::min(used, held);
        if (ended) {
            return used > held;
        }
    }
}

template <typename Value, typename Order>
void decode_columns(const char *bytes, double *x, double *val, std::size_t count)
{
    std::size_t i = 0;
    for (; i + kGroupPoints <= count; i += kGroupPoints) {
        decode_four<Order>(bytes, x + i, val + i, Value{});
        decode_four<Order>(bytes + 4 * kPointBytes<Value>, x + i + 4, val + i + 4, Value{});
        decode_two<Order>(bytes + 8 * kPointBytes<Value>, x + i + 8, val + i + 8, Value{});
        static_assert(kGroupPoints == 4 + 4 + 2);
        bytes += kGroupBytes<Value>;
    }
    for (; i < count; ++i) {
        decode_binary<Value, Order::kSwaps>(bytes, x[i]);
        decode_binary<Value, Order::kSwaps>(bytes + sizeof(Value), val[i]);
        bytes += kPointBytes<Value>;
    }
}

template <typename Use> void with_order([[maybe_unused]] std::size_t count, Use use)
{
    if (!binary_needs_swap()) {
        use(NativeOrder{});
        return;
    }
#ifdef __x86_64__
    if (goes_wide(count)) {
        use(WideSwappedOrder{});
        return;
    }
#endif
    use(SwappedOrder{});
}

// Calls use with a value of the type that a DataFormat stores, and with the byte order of the run for work on
// count points.
template <typename Use> void with_format(int format, std::size_t count, Use use)
{
    with_order(count, [&](auto order) { format == BINARY_DBL ? use(double{}, order) : use(float{}, order); });
}

// Decodes a short waveform whose bytes are still at hand.
void store_points(Wform &wform, const char *bytes)
{
    static Slab<double> columns;
    const auto count = static_cast<std::size_t>(wform.count);
    double *x = columns.reserve(2 * count);
    columns.commit(2 * count);
    decode_points(wform.format, bytes, x, x + count, count);
    wform.x = x;
    wform.val = x + count;
}

} // namespace

std::size_t binary_length(int format, std::size_t count)
{
    const std::size_t point = format == BINARY_DBL ? kPointBytes<double> : kPointBytes<float>;
    return count * point + count / kGroupPoints;
}

void decode_points(int format, const char *bytes, double *x, double *val, std::size_t count)
{
    with_format(format, count, [=](auto value, auto order) {
        do_fast(count, [=] { decode_columns<decltype(value), decltype(order)>(bytes, x, val, count); });
    });
}

void read_binary_points(PunchStream &stream, Wform &wform)
{
    stream_require(stream, binary_length(wform.format, kStoredPoints + 1)); // so that a short one is at hand
    const std::int64_t begin = stream_tell(stream);
    Survey survey;
    bool cut_off = false;
    with_format(wform.format, kUnknownCount, [&](auto value, auto order) {
        cut_off = survey_points<decltype(value), decltype(order)>(stream, survey);
    });
    set_count(wform, survey.points);
    if (pun_index || survey.points == 0) {
        return;
    }
    set_range(wform, survey.x, survey.y);
    if (survey.points <= kStoredPoints && begin >= stream.base && !cut_off) {
        store_points(wform, stream.window + (begin - stream.base));
        return;
    }
    FilePoints *points = tk_FilePoints_alloc();
    points->file = stream_keep(stream);
    points->offset = begin;
    wform.in_file = points;
}
