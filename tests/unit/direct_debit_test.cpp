// What only direct debits have. Keys shared with credit transfers are tested
// in transaction_test.cpp, documents in golden_test.cpp.
#include <cstring>

#include "tests/unit/message_helpers.h"

namespace {

struct DirectDebit : testing::Test {
    message_t message;

    void SetUp() override { start("DE-3.5"); }

    void start(const char* rulebook) {
        use_rulebook(rulebook);
        message = new_message(SEPA_MSGTYPE_DDI);
    }

    // The error of an add of `keys` and of what is always needed behind them.
    std::string error_of(keys_t keys) {
        keys.insert(keys.end(), {{"iban", german_iban}, {"amount", "1"}, {"seq", "rcur"}});
        return add(message, keys) ? "" : message->last_error;
    }

    const ddi_tx_t* last() { return static_cast<ddi_tx_t*>(message->tx_tail); }
};

TEST_F(DirectDebit, SequenceTypes) {
    const struct {
        const char* text;
        sepa_seq seq;
    } rows[] = {{"frst", SEQ_FRST}, {"RCUR", SEQ_RCUR}, {"OoFf", SEQ_OOFF}, {"FNAL", SEQ_FNAL}};
    for (const auto& row : rows) {
        EXPECT_EQ(add(message, {{"iban", german_iban}, {"amount", "1"}, {"SEQ", row.text}}), 1);
        EXPECT_EQ(last()->seq, row.seq);
    }
    for (const char* bad : {(const char*)nullptr, "", "frst ", "frs", "1", "first"})
        EXPECT_EQ(error_of({{"seq", bad}}), "Invalid/unknown sequence type");
}

TEST_F(DirectDebit, MandateReferences) {
    const char *mref = "Invalid mandate reference (must be 1-35 characters)",
               *old_mref = "Invalid old mandate reference (must be 1-35 characters)";
    for (const char* bad : {(const char*)nullptr, "", "123456789012345678901234567890123456"}) {
        EXPECT_EQ(error_of({{"mref", bad}}), mref);
        EXPECT_EQ(error_of({{"old_mref", bad}}), old_mref);
    }
    EXPECT_EQ(error_of({{"mref", letters(35).c_str()}, {"old_mref", letters(35).c_str()}}), "");
    for (const char* rulebook : rulebook_names) {
        start(rulebook);
        keys_t bic = {{"bic", "DEUTDEFF"}};
        auto with = [&](const char* key, const char* value) { return error_of({bic[0], {key, value}}); };
        bool blank = !strncmp(rulebook, "DE-3", 4), austrian = !strcmp(rulebook, "AT-6");
        EXPECT_EQ(with("mref", "a b"), blank ? "" : "Invalid character ' ' in mandate reference") << rulebook;
        EXPECT_EQ(with("old_mref", "a b"), "Invalid character ' ' in old mandate reference") << rulebook;
        for (const char* key : {"mref", "old_mref"}) {
            std::string noun = key[0] == 'm' ? "mandate reference" : "old mandate reference";
            EXPECT_EQ(with(key, "a&"), "Invalid character '&' in " + noun) << rulebook;
            EXPECT_EQ(with(key, "ä"), "Invalid character '\xC3' in " + noun) << rulebook;
            EXPECT_EQ(with(key, "a_"), austrian ? "" : "Invalid character '_' in " + noun) << rulebook;
            EXPECT_EQ(with(key, "AZaz09'()+,-./:?"), "") << rulebook;
        }
    }
}

TEST_F(DirectDebit, MandateDateAndOldIban) {
    const char* error = "Invalid mandate signature date (format: yyyy-mm-dd)";
    for (const char* bad : {(const char*)nullptr, "", "2024-1-01", "2024-01-011"})
        EXPECT_EQ(error_of({{"mdate", bad}}), error);
    ASSERT_EQ(error_of({{"mdate", "any\xFF\nbytes"}, {"OLD_iban", austrian_iban}}), "");
    EXPECT_STREQ(last()->mdate, "any\xFF\nbytes");
    EXPECT_STREQ(last()->old_iban, austrian_iban);
    EXPECT_EQ(error_of({{"old_iban", nullptr}}), "Invalid IBAN (NULL)");
    EXPECT_EQ(error_of({{"old_iban", "XX"}}), "Invalid or unknown IBAN country code");
}

TEST_F(DirectDebit, AmendedAccountFlag) {
    EXPECT_EQ(error_of({{"smnda", "1"}, {"SMNDA", "1"}}), "");
    EXPECT_EQ(last()->smnda, 1);
    for (const char* bad : {"", "0", "2", "1 ", "true", "01"})
        EXPECT_EQ(error_of({{"smnda", "1"}, {"Smnda", bad}}),
                  "Invalid value '" + std::string(bad) + "' for SMNDA flag");
    EXPECT_EQ(error_of({{"smnda", letters(1000).c_str()}}), "Invalid value '" + letters(240));
    EXPECT_EQ(error_of({{"smnda", nullptr}}).rfind("Invalid value '", 0), 0u);
    EXPECT_EQ(error_of({}), "");
    EXPECT_EQ(last()->smnda, 0);
}

TEST_F(DirectDebit, PurposeIsUnknown) {
    EXPECT_EQ(error_of({{"Purp", "SALA"}}), "Invalid transaction property 'Purp'");
}

TEST_F(DirectDebit, FinalTestsInOrder) {
    auto error = [&](const keys_t& keys) { return std::string(add(message, keys) ? "" : message->last_error); };
    start("DE-2.6");
    EXPECT_EQ(error({{"amount", "1"}, {"seq", "frst"}}), "IBAN missing");
    EXPECT_EQ(error({{"iban", german_iban}}), "BIC missing");
    EXPECT_EQ(error({{"iban", german_iban}, {"bic", "POFICHBE"}}), "Sequence type missing");
    EXPECT_EQ(error({{"iban", german_iban}, {"bic", "POFICHBE"}, {"seq", "frst"}}), "Amount missing");
    start("DE-3.5");
    EXPECT_EQ(error({{"iban", german_iban}, {"bic", "POFICHBE"}}), "Address required for BICs outside EEA");
    EXPECT_EQ(error({{"bic", "POFICHBE"}}), "IBAN missing");
    start("DE-3.7");
    EXPECT_EQ(error({{"iban", german_iban}, {"bic", "POFICHBE"}}),
              "Structured address required for BICs outside EEA (at least town and country)");
}

TEST_F(DirectDebit, AddressOfADebtorOutsideTheEea) {
    const char *any = "Address required for BICs outside EEA",
               *structured = "Structured address required for BICs outside EEA (at least town and country)";
    for (const char* rulebook : rulebook_names) {
        start(rulebook);
        bool newest = !strcmp(rulebook, "DE-3.7");
        std::string error = newest ? structured : !strcmp(rulebook, "DE-3.1") || !strcmp(rulebook, "DE-3.5") ? any : "";
        kv_pair_t swiss = {"bic", "pofichbexxx"}, country = {"addrCC", "CH"};
        EXPECT_EQ(error_of({swiss}), error) << rulebook;
        EXPECT_EQ(error_of({swiss, country}), error) << rulebook;
        EXPECT_EQ(error_of({{"bic", "DEUTDEFF"}}), "") << rulebook;
        if (newest) {
            EXPECT_EQ(error_of({swiss, {"addrStreet", "Weg"}, {"addrTown", "Bern"}}), structured);
            EXPECT_EQ(error_of({swiss, {"addrStreet", "Weg"}, country}), structured);
            EXPECT_EQ(error_of({swiss, {"addrTown", "Bern"}, country}), "");
        } else {
            EXPECT_EQ(error_of({swiss, {"addrLine1", "Weg"}}), "") << rulebook;
            EXPECT_EQ(error_of({swiss, {"addrLine2", "Bern"}}), "") << rulebook;
        }
        if (strcmp(rulebook, "DE-2.6")) {
            EXPECT_EQ(error_of({}), "") << "no BIC, no address";
        }
    }
}

TEST(NonEeaBic, Countries) {
    const std::string listed = "AD BL CH GB GG GI IM JE MC NC PF PM SM TF VA WF ";
    for (char first = 'A'; first <= 'Z'; ++first)
        for (char second = 'A'; second <= 'Z'; ++second) {
            std::string country = {first, second, ' '}, bic = "ABCD" + country.substr(0, 2) + "22";
            int expected = listed.find(country) != std::string::npos;
            EXPECT_EQ(is_non_eea_bic(bic.c_str()), expected) << bic;
            for (char& c : bic) c = static_cast<char>(c | 0x20);
            EXPECT_EQ(is_non_eea_bic((bic + "xxx").c_str()), expected) << bic;
        }
    for (const char* other : {"CHCHDE22",
                              "ABCDC\xC8"
                              "22",
                              "ABCD\x03\x08"
                              "22",
                              "ABCD   CH"})
        EXPECT_EQ(is_non_eea_bic(other), 0);
    for (const char* brief : {"", "ABCDCH2"}) EXPECT_EQ(is_non_eea_bic(brief), -1);
}

}  // namespace
