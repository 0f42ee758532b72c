#include <cstring>

#include "sepa/account/account_form.h"
#include "sepa/directory/bank_codes.h"
#include "sepa/iban/iban.h"
#include "sepa/iban/iban_german.h"

using namespace sepa_internal;

static constexpr int rule_versions = 100;  // the directory's rule word is number x 100 + version

static bool fill_work(iban_work_t* work, const char* account, const char* bank_id) {
    if (!bank_id || !account) return false;
    if (strnlen(bank_id, bank_code_length + 1) != bank_code_length) return false;
    size_t length = strnlen(account, account_length + 1);
    if (!length || length > account_length) return false;
    pad_account(work->account, account, length);
    pad_account(work->account_in, account, length);
    memcpy(work->bank, bank_id, bank_code_length);
    return true;
}

static int check_account(const iban_work_t& work) {
    return is_account_form(work.account) ? check_form(work.account, work.bank, work.method) : -1;
}

// Runs the rule that the directory names for the bank. 0 if there is none.
static int run_rule(char* iban_buf, iban_work_t* work, const bank_code_t& bank) {
    work->method = bank.method;
    work->check = static_cast<int8_t>(check_account(*work));
    int rule = bank.rule / rule_versions;
    return rule < IBAN_RULE_COUNT ? iban_rules[rule](iban_buf, work) : 0;
}

// Runs the bank's rule and goes on to its successor as long as there is one;
// only the last rule's result counts. False if a bank code is not in the
// directory. Ends because the directory has no cycles.
static bool run_rules(char* iban_buf, iban_work_t* work, int* result) {
    for (;;) {
        const bank_code_t* bank = find_bank_code(work->bank);
        if (!bank) return false;
        *result = run_rule(iban_buf, work, *bank);
        if (bank->successor == 0) return true;
        memcpy(work->bank, bank_code_successors[bank->successor], sizeof work->bank);
        work->status = IBAN_STATUS_SUCCESSOR;
    }
}

static int8_t final_status(const iban_work_t& work, const char* bank_id) {
    if (work.status) return work.status;
    if (work.check == -1) return IBAN_STATUS_CHECK_FAILED;
    if (memcmp(work.account, work.account_in, account_length) != 0) return IBAN_STATUS_ACCOUNT_CHANGED;
    if (memcmp(work.bank, bank_id, bank_code_length) != 0) return IBAN_STATUS_BANK_CHANGED;
    return IBAN_STATUS_NONE;
}

// False if the account has other characters than digits, which then has failed
// its check before.
static bool write_check_digits(char* iban_buf) {
    memcpy(iban_buf + 2, "00", 2);
    int remainder = german_remainder(iban_buf);
    if (remainder < 0) return false;
    int number = 98 - remainder;
    iban_buf[2] = static_cast<char>('0' + number / 10);
    iban_buf[3] = static_cast<char>('0' + number % 10);
    return true;
}

// `iban` is all zero, and keeps what a rule wrote in a failure, too.
static int convert(const char* account, const char* bank_id, char* iban, int8_t* status) {
    iban_work_t work = {};
    if (!fill_work(&work, account, bank_id)) return -1;
    int result = 0;
    if (!run_rules(iban, &work, &result)) {
        *status = IBAN_STATUS_UNKNOWN_BANK;
        return -3;
    }
    *status = final_status(work, bank_id);
    if (result != 1) return result;
    if (work.check == -1) return -1;
    return write_check_digits(iban) ? 1 : -3;
}

int IBAN_convert(const char* country, const char* account, const char* bank_id, char* iban, int8_t* status) {
    int8_t unwanted_status;
    char unwanted_iban[IBAN_BUFFER_SIZE];
    if (!status) status = &unwanted_status;
    if (!iban) iban = unwanted_iban;
    *status = IBAN_STATUS_NONE;
    memset(iban, 0, IBAN_BUFFER_SIZE);
    if (!country) return -1;
    if (country[0] != 'D' || country[1] != 'E' || country[2]) return 0;
    int result = convert(account, bank_id, iban, status);
    if (result != 1) memset(iban, 0, IBAN_BUFFER_SIZE);
    return result;
}
