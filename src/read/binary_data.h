// SPDX-License-Identifier: MIT
// Binary values of a punch file: IEEE-754 floats or doubles, most significant byte first unless
// reverse_bytes is 0. A value whose bytes are all 0xFF is the end mark. Bytes that the end of the
// file cuts off read as 0xFF, so that cut data ends by the same rule.
#ifndef TRESK_READ_BINARY_DATA_H
#define TRESK_READ_BINARY_DATA_H

#include "support/punch_stream.h"

#include <cstdint>
#include <cstring>

// Bit pattern and value of a Value (float or double) as it is stored.
template <typename Value> struct BinaryLayout;
template <> struct BinaryLayout<float> {
    using Word = std::uint32_t;
    static Word swapped(Word word)
    {
        return __builtin_bswap32(word);
    }
};
template <> struct BinaryLayout<double> {
    using Word = std::uint64_t;
    static Word swapped(Word word)
    {
        return __builtin_bswap64(word);
    }
};

// Decodes the value at bytes, its bytes swapped or not. Returns true when it is the end mark.
template <typename Value, bool kSwap> bool decode_binary(const char *bytes, double &value)
{
    using Layout = BinaryLayout<Value>;
    typename Layout::Word word;
    std::memcpy(&word, bytes, sizeof word);
    const bool end_mark = word == static_cast<typename Layout::Word>(-1);
    if constexpr (kSwap) {
        word = Layout::swapped(word);
    }
    Value decoded;
    std::memcpy(&decoded, &word, sizeof decoded);
    value = static_cast<double>(decoded);
    return end_mark;
}

// The DataFormat that the rest of the scanner's line names behind DATA; an unknown word ends the run
// with status 1. Leaves the stream at the first byte of the data.
int take_data_format();

// Whether stored values must be swapped to the byte order of this machine.
bool binary_needs_swap();

// Reads one double, or one value of a DataFormat. tk_endMarkMet returns whether it was the end mark.
double BINrdDBL(PunchStream &stream);
double BINrdFLT(PunchStream &stream, int format);

#endif
