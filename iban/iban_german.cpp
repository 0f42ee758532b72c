#include "iban/iban_german.h"

// SEAM: bank code and account number are judged here once the bank directory
// and the account check methods have landed. Until then every one passes.
const char* iban_german_fault(const char*) { return nullptr; }
