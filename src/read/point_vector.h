// SPDX-License-Identifier: MIT
// Binary points in the registers of the processor, sixteen bytes at a time: one point of doubles or two of
// floats. Plain vector types of the compiler: a processor without such registers takes more steps.
#ifndef TRESK_READ_POINT_VECTOR_H
#define TRESK_READ_POINT_VECTOR_H

#include <cstddef>
#include <cstdint>
#include <cstring>

constexpr std::size_t kVectorBytes = 16;
using DoubleVector = double __attribute__((vector_size(kVectorBytes))); // x, y
using FloatVector = float __attribute__((vector_size(kVectorBytes)));   // x, y, x, y
using FloatPair = float __attribute__((vector_size(kVectorBytes / 2)));

template <typename Value> struct PointVectorOf;
template <> struct PointVectorOf<double> {
    using Type = DoubleVector;
};
template <> struct PointVectorOf<float> {
    using Type = FloatVector;
};
template <typename Value> using PointVector = typename PointVectorOf<Value>::Type;

using HalfWords = std::uint16_t __attribute__((vector_size(kVectorBytes)));

// Byte orders of stored values: what makes of sixteen bytes of them those of this machine.
struct NativeOrder {
    static constexpr bool kSwaps = false;
    template <typename Value> static HalfWords settle(HalfWords words)
    {
        return words;
    }
};

struct SwappedOrder {
    static constexpr bool kSwaps = true;
    template <typename Value> static HalfWords settle(HalfWords words)
    {
        words = words << 8 | words >> 8;
        if constexpr (sizeof(Value) == sizeof(double)) {
            return __builtin_shufflevector(words, words, 3, 2, 1, 0, 7, 6, 5, 4);
        } else {
            return __builtin_shufflevector(words, words, 1, 0, 3, 2, 5, 4, 7, 6);
        }
    }
};

#ifdef __x86_64__
// In one step. For work that do_fast does on a processor with wide vectors.
struct WideSwappedOrder {
    using Bytes = char __attribute__((vector_size(kVectorBytes)));
    static constexpr bool kSwaps = true;
    template <typename Value> __attribute__((target("avx2"))) static HalfWords settle(HalfWords words)
    {
        constexpr Bytes kDoubles = {7, 6, 5, 4, 3, 2, 1, 0, 15, 14, 13, 12, 11, 10, 9, 8};
        constexpr Bytes kFloats = {3, 2, 1, 0, 7, 6, 5, 4, 11, 10, 9, 8, 15, 14, 13, 12};
        return reinterpret_cast<HalfWords>(__builtin_ia32_pshufb128(
            reinterpret_cast<Bytes>(words), sizeof(Value) == sizeof(double) ? kDoubles : kFloats));
    }
};
#endif

template <typename Value, typename Order> PointVector<Value> load_points(const char *bytes)
{
    HalfWords words;
    std::memcpy(&words, bytes, sizeof words);
    return reinterpret_cast<PointVector<Value>>(Order::template settle<Value>(words));
}

// Decodes two points into columns.
template <typename Order> void decode_two(const char *bytes, double *x, double *val, double)
{
    const DoubleVector first = load_points<double, Order>(bytes);
    const DoubleVector second = load_points<double, Order>(bytes + kVectorBytes);
    const DoubleVector xs = __builtin_shufflevector(first, second, 0, 2);
    const DoubleVector vals = __builtin_shufflevector(first, second, 1, 3);
    std::memcpy(x, &xs, sizeof xs);
    std::memcpy(val, &vals, sizeof vals);
}

template <typename Order> void decode_two(const char *bytes, double *x, double *val, float)
{
    const FloatVector points = load_points<float, Order>(bytes);
    const FloatPair x_floats = __builtin_shufflevector(points, points, 0, 2);
    const FloatPair val_floats = __builtin_shufflevector(points, points, 1, 3);
    const auto xs = __builtin_convertvector(x_floats, DoubleVector);
    const auto vals = __builtin_convertvector(val_floats, DoubleVector);
    std::memcpy(x, &xs, sizeof xs);
    std::memcpy(val, &vals, sizeof vals);
}

// The same for four.
template <typename Order> void decode_four(const char *bytes, double *x, double *val, double)
{
    decode_two<Order>(bytes, x, val, double{});
    decode_two<Order>(bytes + 2 * kVectorBytes, x + 2, val + 2, double{});
}

template <typename Order> void decode_four(const char *bytes, double *x, double *val, float)
{
    using FourDoubles = double __attribute__((vector_size(2 * kVectorBytes)));
    const FloatVector first = load_points<float, Order>(bytes);
    const FloatVector second = load_points<float, Order>(bytes + kVectorBytes);
    const auto xs = __builtin_convertvector(__builtin_shufflevector(first, second, 0, 2, 4, 6), FourDoubles);
    const auto vals =
        __builtin_convertvector(__builtin_shufflevector(first, second, 1, 3, 5, 7), FourDoubles);
    std::memcpy(x, &xs, sizeof xs);
    std::memcpy(val, &vals, sizeof vals);
}

#endif
