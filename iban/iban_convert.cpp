#include <cstring>

#include "account/account_check.h"
#include "account/account_form.h"
#include "directory/bank_directory.h"
#include "iban/iban.h"
#include "text/mod97.h"

using namespace sepa_internal;

static constexpr int rule_versions = 100;  // the directory's rule word is number x 100 + version

static bool fill_work(iban_work_t* work, const char* account, const char* bank_id) {
    if (!bank_id || !account) return false;
    if (strnlen(bank_id, bank_code_length + 1) != bank_code_length) return false;
    size_t length = strnlen(account, account_length + 1);
    if (!length || length > account_length) return false;
    memset(work->account, '0', account_length);
    memcpy(work->account + account_length - length, account, length);
    memcpy(work->account_in, work->account, sizeof work->account_in);
    memcpy(work->bank, bank_id, bank_code_length);
    return true;
}

// Runs the rule that the directory names for the bank. 0 if there is none.
static int run_rule(char* iban_buf, iban_work_t* work, const bank_record_t& record) {
    work->method = record.method;
    work->check = static_cast<int8_t>(account_check_bank(work->account, work->bank, work->method));
    int rule = record.rule / rule_versions;
    return rule < IBAN_RULE_COUNT ? iban_rules[rule](iban_buf, work) : 0;
}

static bool has_successor(const bank_record_t& record) {
    return record.successor && strnlen(record.successor, bank_code_length + 1) == bank_code_length;
}

// Runs the bank's rule and goes on to its successor as long as there is one;
// only the last rule's result counts. False if a bank code is not in the
// directory. Ends because the directory has no cycles.
static bool run_rules(char* iban_buf, iban_work_t* work, int* result) {
    bank_record_t record;
    for (;;) {
        if (bank_lookup("DE", work->bank, &record) != 1) return false;
        *result = run_rule(iban_buf, work, record);
        if (!has_successor(record)) return true;
        memcpy(work->bank, record.successor, bank_code_length);
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

static bool write_check_digits(char* iban_buf) {
    memcpy(iban_buf + 2, "00", 2);
    int remainder = mod97(iban_buf, 4, strlen(iban_buf), MOD97_EITHER_CASE);
    if (remainder < 0) return false;
    int number = 98 - remainder;
    iban_buf[2] = static_cast<char>('0' + number / 10);
    iban_buf[3] = static_cast<char>('0' + number % 10);
    return true;
}

int IBAN_convert(const char* country, const char* account, const char* bank_id, char* iban, int8_t* status) {
    int8_t unwanted;
    if (!status) status = &unwanted;
    if (iban) iban[0] = 0;
    *status = IBAN_STATUS_NONE;
    if (!country) return -1;
    if (strcmp(country, "DE") != 0) return 0;

    char iban_buf[IBAN_BUFFER_SIZE] = {};
    iban_work_t work = {};
    if (!fill_work(&work, account, bank_id)) return -1;
    int result = 0;
    if (!run_rules(iban_buf, &work, &result)) {
        *status = IBAN_STATUS_UNKNOWN_BANK;
        return -3;
    }
    *status = final_status(work, bank_id);
    if (result != 1) return result;
    if (work.check == -1) return -1;
    if (!write_check_digits(iban_buf)) return -3;
    if (iban) memcpy(iban, iban_buf, sizeof iban_buf);
    return 1;
}
