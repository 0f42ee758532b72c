// Amounts as text: read, and written. Both know one decimal separator, the
// point, in every locale.
#pragma once

// Converts decimal text to a double. White space and one sign may lead, an
// exponent may follow. At most 18 digits count. `end`, if not null, receives
// the first byte not consumed, or `text` itself if there was no digit, with
// the result 0.0. An exponent beyond 511 is clipped and sets errno to ERANGE.
double parse_amount(const char* text, const char** end);

// Writes `value`, euro, with a point and two decimals into `out`, a buffer of
// 128 bytes; halves of a cent round away from zero. Meaningless beyond
// 64 bits of cents.
void sepa_format_amount(char* out, double value);
