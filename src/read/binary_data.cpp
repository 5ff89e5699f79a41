// SPDX-License-Identifier: MIT
#include "read/binary_data.h"

#include "read/codes.h"
#include "support/settings.h"
#include "support/tk_buffer.h"
#include "support/transcript.h"

#include <algorithm>

namespace
{

template <typename Value> double read_value(PunchStream &stream)
{
    char bytes[sizeof(Value)];
    std::memset(bytes, 0xFF, sizeof bytes);
    const std::size_t held = std::min(stream_require(stream, sizeof bytes), sizeof bytes);
    std::memcpy(bytes, stream.window + stream.position, held);
    stream.position += held;
    double value = 0.0;
    tk_noteEndMark(binary_needs_swap() ? decode_binary<Value, true>(bytes, value)
                                       : decode_binary<Value, false>(bytes, value));
    return value;
}

} // namespace

int take_data_format()
{
    const std::string word = tk_takeRestOfLine();
    const int format = format_of_word(word.c_str());
    if (format == NO_DATA) {
        transcript_printf("ERROR : nonstandard punch file syntax - unknown data format (%s)\n", word.c_str());
        end_run(1);
    }
    return format;
}

bool binary_needs_swap()
{
    constexpr bool little_endian = __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__;
    return (reverse_bytes != 0) == little_endian;
}

double BINrdDBL(PunchStream &stream)
{
    return read_value<double>(stream);
}

double BINrdFLT(PunchStream &stream, int format)
{
    return format == BINARY_DBL ? BINrdDBL(stream) : read_value<float>(stream);
}
