// A check, a conversion, a document and a statement:
//   tour STATEMENT
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include "sepa/directory/bank_directory.h"
#include "sepa/iban/iban.h"
#include "sepa/message/sepa.h"
#include "sepa/statement/mt940.h"

// What the library hands out has one owner, who gives it back.
struct give_back {
    void operator()(sepa_t* message) const { sepa_free(message); }
    void operator()(sepa_stmt_parser_t* parser) const { sepa_stmt_parser_free(parser); }
    void operator()(bank_info_t* bank) const { free(bank); }
    void operator()(char* text) const { free(text); }
};
template <typename T>
using owned = std::unique_ptr<T, give_back>;

static bool check(const char* iban) {
    const char* reason = nullptr;
    if (!IBAN_check(iban, &reason)) {
        printf("%s: %s\n", iban, reason);
        return false;
    }
    char bic[BIC_BUFFER_SIZE];
    bank_info_t* found = nullptr;
    if (IBAN_getBIC(iban, bic) != 1 || bank_info_get(bic, &found) != 1) {
        printf("%s: right, of a bank that the directory does not have\n", iban);
        return true;
    }
    owned<bank_info_t> bank(found);
    printf("%s: right, %s, %s\n", iban, bic, bank->name);
    return true;
}

static bool convert(const char* account, const char* bank_id) {
    char iban[IBAN_BUFFER_SIZE];
    int8_t status = 0;
    int result = IBAN_convert("DE", account, bank_id, iban, &status);
    printf("account %s at bank %s: %s, status %d\n", account, bank_id, result == 1 ? iban : "no IBAN", status);
    return result == 1;
}

// A bank wants <Dt> inside the date of a transfer under DE-3.7 (docs/messages.md).
// No value can hold these tags.
static void put_around(std::string* document, const std::string& tag, const std::string& with) {
    for (size_t at = document->find(tag); at != std::string::npos; at = document->find(tag, at + with.size()))
        document->replace(at, tag.size(), with);
}

static bool pay() {
    sepa_init(SEPA_INIT_RULEBOOK, "DE-3.7");
    owned<sepa_t> message(sepa_new(SEPA_MSGTYPE_CTI));
    if (!message) return false;
    const kv_pair_t payment[] = {
        {"name", "Müller & Söhne GmbH"},
        {"iban", "DE62701500000020228888"},
        {"amount", "1190.00"},
        {"ref", "Rechnung 2026-1187"},
        {nullptr, nullptr},
    };
    owned<char> document;
    if (sepa_setName(message.get(), "Zimmerei Sander GmbH") && sepa_setIBAN(message.get(), "DE89370400440532013000") &&
        sepa_setBIC(message.get(), "COBADEFFXXX") && cti_add(message.get(), payment)) {
        document.reset(sepa_toXML(message.get()));
    }
    if (!document) {
        printf("no document: %s\n", message->last_error);
        return false;
    }
    std::string for_the_bank = document.get();
    put_around(&for_the_bank, "<ReqdExctnDt>", "<ReqdExctnDt><Dt>");
    put_around(&for_the_bank, "</ReqdExctnDt>", "</Dt></ReqdExctnDt>");
    printf("%s", for_the_bank.c_str());
    return true;
}

static bool read(const char* file) {
    owned<sepa_stmt_parser_t> parser(sepa_stmt_parser_new());
    if (!parser) return false;
    if (!sepa_stmt_parser_load(parser.get(), SEPA_STMT_FORMAT_MT940, file)) {
        printf("%s: %s\n", file, parser->error);
        return false;
    }
    for (const sepa_statement_t* statement = parser->first; statement; statement = statement->next) {
        printf("account %s\n", statement->account ? statement->account : "(none)");
        for (const sepa_stmt_tx_t* tx = statement->tx_first; tx; tx = tx->next) {
            printf("  %10.2f  %s\n", tx->amount, tx->name);
        }
        printf("  %10.2f  closing balance, %s\n", statement->close_saldo, statement->close_currency);
    }
    return true;
}

int main(int count, char** arguments) {
    if (count != 2) {
        fprintf(stderr, "usage: tour STATEMENT, a file in MT940 form\n");
        return 2;
    }
    bool good = check("DE89370400440532013000");
    good = convert("532013000", "37040044") && good;
    good = pay() && good;
    good = read(arguments[1]) && good;
    return good ? 0 : 1;
}
