// SPDX-License-Identifier: MIT
// Counting the fields of lines of numbers, 64 characters at a time.
#ifndef TRESK_SUPPORT_PLAIN_FIELDS_H
#define TRESK_SUPPORT_PLAIN_FIELDS_H

#include "support/char_class.h"

#include <cstddef>
#include <cstdint>

// Fields with only spaces between them, and beginnings of continuation lines.
struct PlainFields {
    std::size_t count;
    const char *last; // the last one
};

// A bit for each of 64 characters.
struct CharMasks {
    std::uint64_t blanks = 0; // spaces and line feeds
    std::uint64_t feeds = 0;
    std::uint64_t pluses = 0;
    std::uint64_t specials = 0; // what may mean anything else
};

inline unsigned count_bits(std::uint64_t bits)
{
    bits -= bits >> 1 & 0x5555555555555555;
    bits = (bits & 0x3333333333333333) + (bits >> 2 & 0x3333333333333333);
    bits = (bits + (bits >> 4)) & 0x0F0F0F0F0F0F0F0F;
    return static_cast<unsigned>(bits * 0x0101010101010101 >> 56);
}

#ifdef __SSE2__
inline CharMasks char_masks(const char *text)
{
    static_assert(kReadAhead == 64, "a bit for each of the characters");
    CharMasks masks;
    __m128i special[4];
#pragma GCC unroll 4 // the shifts become constants
    for (unsigned i = 0; i < 4; ++i) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i *>(text) + i);
        const __m128i feed = _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\n'));
        const __m128i blank = _mm_or_si128(feed, _mm_cmpeq_epi8(bytes, _mm_set1_epi8(' ')));
        const __m128i plus = _mm_cmpeq_epi8(bytes, _mm_set1_epi8('+'));
        const auto mask = [i](__m128i found) {
            return std::uint64_t{static_cast<unsigned>(_mm_movemask_epi8(found))} << 16 * i;
        };
        masks.blanks |= mask(blank);
        masks.feeds |= mask(feed);
        masks.pluses |= mask(plus);
        special[i] = _mm_andnot_si128(blank, maybe_special(bytes));
    }
    const __m128i any =
        _mm_or_si128(_mm_or_si128(special[0], special[1]), _mm_or_si128(special[2], special[3]));
    if (_mm_movemask_epi8(any) != 0) {
        for (unsigned i = 0; i < 4; ++i) {
            masks.specials |= std::uint64_t{static_cast<unsigned>(_mm_movemask_epi8(special[i]))} << 16 * i;
        }
    }
    return masks;
}
#endif

// Finds the fields that begin in [text, end) in front of the first character that may mean something
// else: a tab, a separator, a bracket, the end of a line that is not continued by a "+" right behind it
// and in front of end ... Only the last field may have such a character in it. Finds none without the
// instructions for it. Reads up to kReadAhead bytes behind the end.
inline PlainFields plain_fields(const char *text, const char *end)
{
    PlainFields fields{0, nullptr};
#ifdef __SSE2__
    std::uint64_t in_field = 0;   // 1 if the character in front is part of a field
    std::uint64_t after_feed = 0; // 1 if it is a line feed
    std::uint64_t last_starts = 0;
    const char *last_text = nullptr;
    for (bool goes_on = true; goes_on && text < end; text += kReadAhead) {
        const CharMasks masks = char_masks(text);
        const std::ptrdiff_t left = end - text;
        std::uint64_t inside = left < 64 ? (std::uint64_t{1} << left) - 1 : ~std::uint64_t{0};
        const std::uint64_t next_plus = left > 64 && text[64] == '+' ? 1 : 0;
        const std::uint64_t followed = ((masks.pluses & inside) >> 1) | next_plus << 63;
        const std::uint64_t stops = (masks.specials | (masks.feeds & ~followed)) & inside;
        if (stops != 0) {
            inside = (stops & -stops) - 1; // the characters in front of the first
            goes_on = false;
        }
        const std::uint64_t continuations = (masks.feeds << 1 | after_feed) & masks.pluses;
        const std::uint64_t ordinary = ~(masks.blanks | continuations) & inside;
        const std::uint64_t starts = ordinary & ~(ordinary << 1 | in_field);
        fields.count += count_bits(starts);
        last_text = starts != 0 ? text : last_text;
        last_starts = starts != 0 ? starts : last_starts;
        in_field = ordinary >> 63;
        after_feed = masks.feeds >> 63;
    }
    if (last_starts != 0) {
        fields.last = last_text + (63 - __builtin_clzll(last_starts));
    }
#else
    static_cast<void>(text);
    static_cast<void>(end);
#endif
    return fields;
}

#endif
