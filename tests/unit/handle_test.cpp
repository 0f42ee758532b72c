// The handle: rulebook, setters and their failure texts.
#include <cstdio>
#include <cstring>
#include <random>

#include "tests/unit/fixed_clock.h"
#include "tests/unit/message_helpers.h"

namespace {

TEST(Rulebook, IsChosenByTheLocalDate) {
    constexpr time_t midnight_utc = 1713312000;  // 2024-04-17 00:00:00
    const struct {
        time_t local;
        int rulebook;
    } rows[] = {{midnight_utc - 1, RULEBOOK_DE_3_5}, {midnight_utc, RULEBOOK_DE_3_7}, {0, RULEBOOK_DE_3_5},
                {1704067199, RULEBOOK_DE_3_5},                                        // 2023-12-31
                {1735689600, RULEBOOK_DE_3_7},       {4102444800, RULEBOOK_DE_3_7}};  // 2025-01-01, 2100-01-01
    for (long offset : {7200L, -36000L, 0L})
        for (const auto& row : rows) {
            fixed_local_offset = offset;
            fixed_now = row.local - offset;
            current_rulebook = RULEBOOK_NONE;
            EXPECT_EQ(sepa_new(0), nullptr) << "a failure chooses too";
            EXPECT_EQ(current_rulebook, row.rulebook) << row.local << " " << offset;
        }
    fixed_now = 0;
    EXPECT_TRUE(new_message(SEPA_MSGTYPE_CTI));
    EXPECT_EQ(current_rulebook, RULEBOOK_DE_3_7) << "the clock is not read again";
    use_rulebook("AT-6");
    EXPECT_TRUE(new_message(SEPA_MSGTYPE_DDI));
    EXPECT_EQ(current_rulebook, RULEBOOK_AT_6);
}

TEST(Rulebook, Init) {
    for (int id = 0; id < RULEBOOK_COUNT; ++id) {
        current_rulebook = RULEBOOK_NONE;
        EXPECT_EQ(sepa_init(3, rulebook_names[id]), 1);
        EXPECT_EQ(current_rulebook, id) << rulebook_names[id];
        for (long option : {0L, 1L, 2L, 4L, -3L, (1L << 32) + 3}) EXPECT_EQ(sepa_init(option, "DE-2.6"), 0) << option;
        for (const char* unknown : {"", "de-3.7", "DE-3.7 ", " DE-3.7", "DE-3", "DE-3.70", "DE-3.6", "9"})
            EXPECT_EQ(sepa_init(3, unknown), 0) << unknown;
        EXPECT_EQ(sepa_init(3, nullptr), 0);
        EXPECT_EQ(current_rulebook, id);
    }
}

TEST(Handle, New) {
    use_rulebook("DE-3.7");
    for (long unknown : {0L, 3L, -1L, (1L << 32) + 1, (1L << 32) + 2}) EXPECT_EQ(sepa_new(unknown), nullptr) << unknown;
    for (long kind : {SEPA_MSGTYPE_DDI, SEPA_MSGTYPE_CTI}) {
        message_t message = new_message(kind);
        sepa_t expected;
        memset(&expected, 0, sizeof expected);
        expected.msgtype = static_cast<int32_t>(kind);
        expected.batch_booking = 1;
        EXPECT_EQ(memcmp(message.get(), &expected, sizeof expected), 0);
    }
    sepa_free(nullptr);
}

struct Setters : testing::Test {
    message_t message;

    void SetUp() override {
        use_rulebook("DE-3.7");
        message = new_message(SEPA_MSGTYPE_CTI);
    }

    using setter_t = int (*)(sepa_t*, const char*);

    void takes(setter_t set, char* sepa_t::*field, const std::string& value, const std::string& stored) {
        EXPECT_EQ(set(message.get(), value.c_str()), 1) << value << ": " << message->last_error;
        EXPECT_EQ(message.get()->*field, stored);
    }

    // A refused value leaves the very text that was there.
    void refuses(setter_t set, char* sepa_t::*field, const char* value, const std::string& error) {
        std::string before = message.get()->*field ? message.get()->*field : "";
        EXPECT_EQ(set(message.get(), value), 0) << testing::PrintToString(value);
        EXPECT_EQ(message->last_error, error) << testing::PrintToString(value);
        EXPECT_EQ(message.get()->*field ? message.get()->*field : "", before);
    }
};

TEST_F(Setters, Iban) {
    auto bad = [&](const char* value, const std::string& error) { refuses(sepa_setIBAN, &sepa_t::iban, value, error); };
    takes(sepa_setIBAN, &sepa_t::iban, german_iban, german_iban);
    takes(sepa_setIBAN, &sepa_t::iban, austrian_iban, austrian_iban);
    bad("", "Invalid or unknown IBAN country code ()");
    bad("de89370400440532013000", "Invalid IBAN format (de89370400440532013000)");
    bad("DE89 3704", "Wrong IBAN length (DE89 3704)");
    bad("DE98370400440532013000", "Invalid IBAN checksum (DE98370400440532013000)");
    std::string huge = "XX" + letters(100000), text = "Invalid or unknown IBAN country code (" + huge;
    bad(huge.c_str(), text.substr(0, 255));
    EXPECT_EQ(sepa_setIBAN(message.get(), nullptr), 0);
    EXPECT_EQ(std::string(message->last_error).rfind("Invalid IBAN (NULL) (", 0), 0u);
}

TEST_F(Setters, Bic) {
    auto bad = [&](const char* value, const char* error) { refuses(sepa_setBIC, &sepa_t::bic, value, error); };
    takes(sepa_setBIC, &sepa_t::bic, "DEUTDEFF", "DEUTDEFF");
    takes(sepa_setBIC, &sepa_t::bic, "cobadeffxxx", "COBADEFFXXX");
    for (const char* invalid : {(const char*)nullptr, "DEUTDEFF5000", "DEUTDEFF500 "})
        bad(invalid, "sepa_setBIC: invalid BIC");
    for (const char* format : {"", "DEUTDEF", "DEUTDEFF50", "DEUTDE1F", "DEUTDEFO", "d\xE9utdeff", "{EUTDEFF"})
        bad(format, "sepa_setBIC: invalid BIC format");
}

TEST_F(Setters, Name) {
    auto bad = [&](const char* value, const char* error) { refuses(sepa_setName, &sepa_t::name, value, error); };
    takes(sepa_setName, &sepa_t::name, "x", "x");
    takes(sepa_setName, &sepa_t::name, letters(70), letters(70));
    bad(nullptr, "sepa_setAccount: Name too short");
    bad("", "sepa_setAccount: Name too short");
    bad(("\\" + letters(70)).c_str(), "sepa_setAccount: Name too long");
    bad("a_b", "sepa_setName: invalid character '_' in name");
    bad("ä€", "sepa_setName: invalid character '\xE2' in name");
    use_rulebook("DE-2.6");
    bad("a & ä", "sepa_setName: invalid character '&' in name");
    use_rulebook("AT-6");
    takes(sepa_setName, &sepa_t::name, "ä€&_", "ä€&_");
}

TEST_F(Setters, CreditorIdentifier) {
    auto good = [&](const std::string& value) {
        takes(sepa_setCreditorIdentifier, &sepa_t::creditor_id, value, value);
    };
    auto bad = [&](const char* value, const char* error) {
        refuses(sepa_setCreditorIdentifier, &sepa_t::creditor_id, value, error);
    };
    for (const char* id : {"DE98ZZZ09999999999", "DE98\xFF<\n09999999999", "AT88a-!00000000001", "ES97000B12345678",
                           "DE36ZZZ", "AZ91ZZZAZ09ZA", "NL81ZZZXXXXXXXXXXXXXXXXXXXXXXXXXXXX"})
        good(id);
    bad(nullptr, "Creditor Identifier too short");
    bad("DE36ZZ", "Creditor Identifier too short");
    bad("NL81ZZZXXXXXXXXXXXXXXXXXXXXXXXXXXXXX", "Creditor Identifier too long");
    for (const char* id : {"de98ZZZ09999999999", "DE98ZZZ0999999999x", "DE98ZZZ09999-99999", "D 98ZZZ09999999999",
                           "DE9\xC3ZZZ09999999999"})
        bad(id, "Invalid character in Creditor Identifier");
    for (const char* id : {"DE97ZZZ09999999999", "DE98ZZZ09999999998", "DE98ZZZ", "ED98ZZZ09999999999"})
        bad(id, "Invalid Creditor Identifier checksum");
}

TEST_F(Setters, Date) {
    for (const char* odd : {"2024-02-30", "0000-13-99", " 2024-12-1", "-202-+1-+2", "2024-1-1xy", "1-1-1 text"})
        takes(sepa_setDate, &sepa_t::date, odd, odd);
    for (const char* length : {(const char*)nullptr, "", "24-01-01", "2024-01-010", "2024-1-01"})
        refuses(sepa_setDate, &sepa_t::date, length, "Invalid date");
    for (const char* format :
         {"2024/01/01", "20240-1-01", "2024 -1-01", "xxxxxxxxxx", "2024-01-xx", "01-02-", "2024-01- -"})
        refuses(sepa_setDate, &sepa_t::date, format, strlen(format) == 10 ? "Invalid date format" : "Invalid date");
}

// The scan agrees with the system's on 300,000 texts made of what matters.
TEST_F(Setters, DateScansAsTheSystemDoes) {
    std::mt19937 random(20240417);
    const std::string bytes = "0123456789----+ \tx";
    size_t good = 0;
    for (int i = 0; i < 300000; ++i) {
        std::string text = "2024-05-06";
        for (auto changes = random() % 6 + 1; changes; --changes) text[random() % 10] = bytes[random() % bytes.size()];
        unsigned year, month, day;
        bool expected = sscanf(text.c_str(), "%04u-%02u-%02u", &year, &month, &day) == 3;
        ASSERT_EQ(sepa_setDate(message.get(), text.c_str()), expected) << text;
        good += expected;
    }
    EXPECT_GT(good, 1000u);
}

}  // namespace
