// The stage of validation that only German IBANs have.
#pragma once

namespace sepa_internal {

// Judges bank code and account number of a German IBAN that has passed all
// other tests. Returns null if they are good, else the reason.
const char* iban_german_fault(const char* iban);

}  // namespace sepa_internal
