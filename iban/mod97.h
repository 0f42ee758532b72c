// The remainder of ISO 7064 MOD 97-10, shared by validation and conversion.
#pragma once

// Remainder of an IBAN: characters from the fifth to the last, then the first
// four, letters counting 10 to 35 in either case. `iban` has at least four
// characters. Returns 0 to 96, 1 meaning that the check digits are right, or
// -1 for a character that is neither an ASCII digit nor an ASCII letter.
int iban_mod97(const char* iban);
