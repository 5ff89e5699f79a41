// SPDX-License-Identifier: MIT
// What a character means to the scanner, and the search for the ends of words.
#ifndef TRESK_SUPPORT_CHAR_CLASS_H
#define TRESK_SUPPORT_CHAR_CLASS_H

#include <array>
#include <cstddef>

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

#endif
