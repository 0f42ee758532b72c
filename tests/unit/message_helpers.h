// What the tests of messages share: owned handles, short ways to add and write.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "sepa/message/sepa.h"
#include "tests/unit/message_snapshot.h"

struct message_deleter {
    void operator()(sepa_t* message) const { sepa_free(message); }
};
using message_t = std::unique_ptr<sepa_t, message_deleter>;

inline message_t new_message(long kind) { return message_t(sepa_new(kind)); }

inline void use_rulebook(const char* name) { ASSERT_EQ(sepa_init(SEPA_INIT_RULEBOOK, name), 1) << name; }

inline constexpr const char* german_iban = "DE89370400440532013000";
inline constexpr const char* austrian_iban = "AT168064680654652158";

// A message with all that an output needs but transactions.
inline message_t ready_message(long kind) {
    message_t message = new_message(kind);
    sepa_t* m = message.get();
    EXPECT_TRUE(sepa_setIBAN(m, german_iban) && sepa_setBIC(m, "COBADEFFXXX") && sepa_setName(m, "Name") &&
                sepa_setCreditorIdentifier(m, "DE98ZZZ09999999999"));
    return message;
}

using keys_t = std::vector<kv_pair_t>;

inline int add(const message_t& message, keys_t keys) {
    keys.push_back({nullptr, nullptr});
    return (message->msgtype == SEPA_MSGTYPE_DDI ? ddi_add : cti_add)(message.get(), keys.data());
}

// The document, or "" if there is none.
inline std::string document_of(const message_t& message) {
    char* text = sepa_toXML(message.get());
    std::string document = text ? text : "";
    free(text);
    return document;
}
