// The search for what is special in the texts of payments. Letters, digits,
// blanks and the ten marks of the base set are nearly all of their bytes, and
// with SSE2 16 of them are passed at once. What a step has found is all used before
// the next one: a seventh of the time of a message.
#pragma once

#include <cstddef>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace sepa_internal {

#ifdef __SSE2__
constexpr size_t special_step = 16;

// A bit for each byte of a step, set for those that are not plain.
inline unsigned special_bits(__m128i block) {
    auto within = [](__m128i b, char from, char to) {  // unsigned comparisons are what SSE2 lacks
        __m128i moved = _mm_sub_epi8(b, _mm_set1_epi8(static_cast<char>(from - 128)));
        return _mm_cmplt_epi8(moved, _mm_set1_epi8(static_cast<char>(to - from + 1 - 128)));
    };
    auto equal = [block](char c) { return _mm_cmpeq_epi8(block, _mm_set1_epi8(c)); };
    __m128i letter = within(_mm_or_si128(block, _mm_set1_epi8(0x20)), 'a', 'z');
    __m128i mark = _mm_andnot_si128(equal('*'), within(block, '\'', ':'));  // ' ( ) + , - . / 0 to 9 :
    __m128i other = _mm_or_si128(equal(' '), equal('?'));
    return static_cast<unsigned>(_mm_movemask_epi8(_mm_or_si128(_mm_or_si128(letter, mark), other))) ^ 0xFFFF;
}

inline unsigned special_bits(const char* p) {
    return special_bits(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)));
}

// The same for the last bytes of a text, fewer than a step, which begin at `at`.
// Nothing outside the text is read.
inline unsigned special_bits_of_rest(const char* text, size_t length, size_t at) {
    if (length >= special_step) return special_bits(text + length - special_step) >> (special_step - (length - at));
    constexpr size_t half = special_step / 2;
    if (length < half) return (1U << length) - 1;  // all of them might be
    __int64_t first, last;                         // halves that overlap
    memcpy(&first, text, half);
    memcpy(&last, text + length - half, half);
    unsigned bits = special_bits(_mm_set_epi64x(last, first));
    return (bits & 0xFF) | bits >> half << (length - half);
}
#endif

// Calls `visit` with the position of each byte that is special, and perhaps of
// others, from the first one on, until it gives false.
template <typename Visit>
bool each_special([[maybe_unused]] const char* text, size_t length, Visit visit) {
    size_t at = 0;
#ifdef __SSE2__
    for (; at < length; at += special_step) {
        bool whole = length - at >= special_step;
        for (unsigned bits = whole ? special_bits(text + at) : special_bits_of_rest(text, length, at); bits;
             bits &= bits - 1)
            if (!visit(at + static_cast<size_t>(__builtin_ctz(bits)))) return false;
    }
#else
    for (; at < length; ++at)
        if (!visit(at)) return false;
#endif
    return true;
}

}  // namespace sepa_internal
