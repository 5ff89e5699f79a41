// SPDX-License-Identifier: MIT
// What a character means to the scanner, and the search for the ends of words.
#ifndef TRESK_SUPPORT_CHAR_CLASS_H
#define TRESK_SUPPORT_CHAR_CLASS_H

#include <array>
#include <cstddef>
#include <cstdint>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

enum CharClass : unsigned char { ORDINARY, BLANK, SEPARATOR, CONTINUATION, LINE_END };

constexpr unsigned char kEndOfFileByte = 255; // taken as the end of the file, as old writers used it

// Bytes that must be readable behind the end of any line, since text is searched in large steps.
constexpr std::size_t kReadAhead = 64;

constexpr std::array<CharClass, 256> make_char_classes()
{
    std::array<CharClass, 256> classes{};
    classes[' '] = classes['\t'] = BLANK;
    classes[','] = classes['='] = SEPARATOR;
    classes['&'] = CONTINUATION;
    classes['\0'] = classes['\n'] = classes[kEndOfFileByte] = LINE_END;
    return classes;
}

constexpr std::array<CharClass, 256> kCharClasses = make_char_classes();

inline CharClass class_of(char c)
{
    return kCharClasses[static_cast<unsigned char>(c)];
}

// Ordinary characters without those that mean something in the sections of a signal name.
constexpr std::array<bool, 256> make_plain_in_names()
{
    std::array<bool, 256> plain{};
    for (std::size_t c = 0; c < plain.size(); ++c) {
        plain[c] = kCharClasses[c] == ORDINARY;
    }
    plain['('] = plain[')'] = plain['['] = plain[']'] = plain[':'] = plain['\r'] = false;
    return plain;
}

constexpr std::array<bool, 256> kPlainInNames = make_plain_in_names();

inline bool is_plain_in_names(char c)
{
    return kPlainInNames[static_cast<unsigned char>(c)];
}

inline const char *skip_ordinary(const char *text)
{
    while (class_of(*text) == ORDINARY) {
        ++text;
    }
    return text;
}

#ifdef __SSE2__
// Marks the bytes that are not ORDINARY, and some that are. All that are not are "=", below "-" or
// negative as signed bytes. Of the others there, only "+" is frequent and left out: it stands in
// exponents.
inline __m128i maybe_special(__m128i bytes)
{
    const __m128i low = _mm_cmplt_epi8(bytes, _mm_set1_epi8('-'));
    const __m128i plus = _mm_cmpeq_epi8(bytes, _mm_set1_epi8('+'));
    const __m128i equals = _mm_cmpeq_epi8(bytes, _mm_set1_epi8('='));
    return _mm_or_si128(_mm_andnot_si128(plus, low), equals);
}
#endif

// The first character at or behind text that is not ORDINARY.
inline const char *word_end(const char *text)
{
#ifdef __SSE2__
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i *>(text));
    const int found = _mm_movemask_epi8(maybe_special(bytes));
    return skip_ordinary(found == 0 ? text + sizeof bytes
                                    : text + __builtin_ctz(static_cast<unsigned>(found)));
#else
    return skip_ordinary(text);
#endif
}

// Fields with only spaces between them.
struct PlainFields {
    std::size_t count;
    const char *last; // the last one
};

// Finds the fields that begin in [text, end) in front of the first character that may mean something
// else: a tab, a separator, a bracket ... Only the last of them may have such a character in it. Finds
// none without the instructions for it. Reads beyond the end, as word_end does.
inline PlainFields plain_fields(const char *text, const char *end)
{
    PlainFields fields{0, nullptr};
#ifdef __SSE2__
    static_assert(kReadAhead == 64, "a bit for each of the characters");
    std::uint64_t in_field = 0; // 1 if the character in front is part of a field
    for (bool goes_on = true; goes_on && text < end; text += kReadAhead) {
        std::uint64_t specials = 0;
        std::uint64_t spaces = 0;
        for (std::size_t i = 0; i < kReadAhead; i += sizeof(__m128i)) {
            const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i *>(text + i));
            const __m128i space = _mm_cmpeq_epi8(bytes, _mm_set1_epi8(' '));
            const int special = _mm_movemask_epi8(_mm_andnot_si128(space, maybe_special(bytes)));
            specials |= std::uint64_t{static_cast<unsigned>(special)} << i;
            spaces |= std::uint64_t{static_cast<unsigned>(_mm_movemask_epi8(space))} << i;
        }
        const std::ptrdiff_t left = end - text;
        std::uint64_t inside = left < 64 ? (std::uint64_t{1} << left) - 1 : ~std::uint64_t{0};
        specials &= inside;
        if (specials != 0) {
            inside = (specials & -specials) - 1; // the characters in front of the first
            goes_on = false;
        }
        const std::uint64_t ordinary = ~spaces & inside;
        const std::uint64_t starts = ordinary & ~(ordinary << 1 | in_field);
        if (starts != 0) {
            fields.count += static_cast<std::size_t>(__builtin_popcountll(starts));
            fields.last = text + (63 - __builtin_clzll(starts));
        }
        in_field = ordinary >> 63;
    }
#else
    static_cast<void>(text);
    static_cast<void>(end);
#endif
    return fields;
}

#endif
