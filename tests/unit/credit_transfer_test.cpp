// What only credit transfers have. Keys shared with direct debits are tested
// in transaction_test.cpp, documents in golden_test.cpp.
#include "tests/unit/message_helpers.h"

namespace {

struct CreditTransfer : testing::Test {
    message_t message;

    void SetUp() override {
        use_rulebook("DE-3.7");
        message = new_message(SEPA_MSGTYPE_CTI);
    }

    std::string error_of(keys_t keys) { return add(message, keys) ? "" : message->last_error; }
};

TEST_F(CreditTransfer, NotForADirectDebitMessage) {
    message_t debit = new_message(SEPA_MSGTYPE_DDI);
    const kv_pair_t list[] = {{"iban", german_iban}, {"amount", "1"}, {nullptr, nullptr}};
    for (const kv_pair_t* any : {list, static_cast<const kv_pair_t*>(nullptr)}) {
        EXPECT_EQ(cti_add(debit.get(), any), 0);
        EXPECT_STREQ(debit->last_error, "No CTI message");
    }
    EXPECT_EQ(debit->tx_head, nullptr);
}

TEST_F(CreditTransfer, Purpose) {
    const char* error = "Invalid purpose (must be 4 characters)";
    for (const char* bad : {(const char*)nullptr, "", "SAL", "SALAR"}) EXPECT_EQ(error_of({{"purp", bad}}), error);
    EXPECT_EQ(error_of({{"PURP", "\xFF<\n "}, {"iban", german_iban}, {"amount", "1"}}), "");
    EXPECT_STREQ(static_cast<cti_tx_t*>(message->tx_tail)->purp, "\xFF<\n ");
}

TEST_F(CreditTransfer, FinalTestsInOrder) {
    use_rulebook("DE-2.6");
    EXPECT_EQ(error_of({{"name", "x"}}), "IBAN missing");
    EXPECT_EQ(error_of({{"iban", german_iban}}), "BIC missing");
    EXPECT_EQ(error_of({{"iban", german_iban}, {"bic", "DEUTDEFF"}}), "Amount missing");
    use_rulebook("DE-3.7");
    EXPECT_EQ(error_of({{"amount", "0.001"}}), "IBAN missing");
    EXPECT_EQ(error_of({{"iban", german_iban}}), "Amount missing");
    // No name, and no address for a bank outside the EEA.
    EXPECT_EQ(error_of({{"iban", german_iban}, {"amount", "1"}, {"bic", "POFICHBE"}}), "");
}

// Keys of a direct debit are as unknown as any other, and pass unread.
TEST_F(CreditTransfer, KeysOfADirectDebit) {
    EXPECT_EQ(error_of({{"seq", "?"},
                        {"mref", ""},
                        {"mdate", "?"},
                        {"old_mref", ""},
                        {"old_iban", "?"},
                        {"smnda", "2"},
                        {"iban", german_iban},
                        {"amount", "1"}}),
              "");
}

}  // namespace
