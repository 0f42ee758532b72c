// The handle and its rulebook, and what message files (script_test.cpp) cannot
// ask for.
#include <cstdio>
#include <cstring>
#include <random>

#include "tests/unit/fixed_clock.h"
#include "tests/unit/message_helpers.h"

namespace {

TEST(Rulebook, IsChosenByTheLocalDate) {
    constexpr time_t day = 1713312000;  // 2024-04-17 00:00:00, as 2023-12-31, 2025-01-01 and 2100-01-01 below
    const std::pair<time_t, int> rows[] = {{day - 1, RULEBOOK_DE_3_5},    {day, RULEBOOK_DE_3_7},
                                           {0, RULEBOOK_DE_3_5},          {1704067199, RULEBOOK_DE_3_5},
                                           {1735689600, RULEBOOK_DE_3_7}, {4102444800, RULEBOOK_DE_3_7}};
    for (long offset : {7200L, -36000L, 0L})
        for (auto [local, rulebook] : rows) {
            fixed_local_offset = offset;
            fixed_now = local - offset;
            current_rulebook = RULEBOOK_NONE;
            EXPECT_EQ(sepa_new(0), nullptr) << "a failure chooses too";
            EXPECT_EQ(current_rulebook, rulebook) << local << " " << offset;
        }
    use_rulebook("AT-6");
    EXPECT_TRUE(new_message(SEPA_MSGTYPE_DDI));
    EXPECT_EQ(current_rulebook, RULEBOOK_AT_6) << "the clock is not read again";
}

TEST(Rulebook, Init) {
    for (int id = 0; id < RULEBOOK_COUNT; ++id) {
        use_rulebook(rulebook_names[id]);
        EXPECT_EQ(current_rulebook, id) << rulebook_names[id];
    }
    for (long option : {0L, 1L, 2L, 4L, -3L, (1L << 32) + 3}) EXPECT_EQ(sepa_init(option, "DE-2.6"), 0) << option;
    for (const char* unknown : {"", "de-2.7", "DE-2.7 ", " DE-2.7", "DE-3", "DE-3.50", "DE-3.6", "9"})
        EXPECT_EQ(sepa_init(3, unknown), 0) << unknown;
    EXPECT_EQ(sepa_init(3, nullptr), 0);
    EXPECT_EQ(current_rulebook, RULEBOOK_DE_3_7);
}

TEST(Handle, NewAndAddByKind) {
    for (long unknown : {0L, 3L, -1L, (1L << 32) + 1, (1L << 32) + 2}) EXPECT_EQ(sepa_new(unknown), nullptr) << unknown;
    for (long kind : {SEPA_MSGTYPE_DDI, SEPA_MSGTYPE_CTI}) {
        message_t message = new_message(kind);
        sepa_t expected;
        memset(&expected, 0, sizeof expected);
        expected.msgtype = static_cast<int32_t>(kind);
        expected.batch_booking = 1;
        EXPECT_EQ(memcmp(message.get(), &expected, sizeof expected), 0);

        bool debit = kind == SEPA_MSGTYPE_DDI;
        EXPECT_EQ((debit ? ddi_add : cti_add)(message.get(), nullptr), 0);
        EXPECT_STREQ(message->last_error, "No key-value list submitted");
        EXPECT_EQ((debit ? cti_add : ddi_add)(message.get(), nullptr), 0);
        EXPECT_STREQ(message->last_error, debit ? "No CTI message" : "No DDI message");
    }
    sepa_free(nullptr);
}

// The scan agrees with the system's on 300,000 texts made of what matters.
TEST(Handle, DateScansAsTheSystemDoes) {
    message_t message = new_message(SEPA_MSGTYPE_CTI);
    std::mt19937 random(20240417);
    const std::string bytes = "0123456789----+ \tx";
    for (int i = 0; i < 300000; ++i) {
        std::string text = "2024-05-06";
        for (auto changes = random() % 6 + 1; changes; --changes) text[random() % 10] = bytes[random() % bytes.size()];
        unsigned year, month, day;
        bool expected = sscanf(text.c_str(), "%04u-%02u-%02u", &year, &month, &day) == 3;
        ASSERT_EQ(sepa_setDate(message.get(), text.c_str()), expected) << text;
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
    for (const char* other : {"CHCHDE22", "ABCDC\xC8xxx", "ABCD\x03\x08xx", "ABCD   CH"})
        EXPECT_EQ(is_non_eea_bic(other), 0);
    for (const char* brief : {"", "ABCDCH2"}) EXPECT_EQ(is_non_eea_bic(brief), -1);
}

}  // namespace
