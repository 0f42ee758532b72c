// The rulebooks, and a copy of what a message holds, to show that a failed call
// has changed nothing.
#pragma once

#include <array>
#include <iterator>
#include <string>
#include <tuple>

#include "sepa/message/sepa.h"

inline constexpr const char* rulebook_names[] = {"DE-2.6", "DE-2.7", "AT-6",   "NL-6",   "DE-2.8",
                                                 "DE-2.9", "DE-3.0", "DE-3.1", "DE-3.5", "DE-3.7"};
static_assert(std::size(rulebook_names) == RULEBOOK_COUNT);

inline std::string text_of(const char* text) { return text ? text : "(none)"; }

// All of a message but its last error.
struct snapshot_t {
    explicit snapshot_t(const sepa_t* m)
        : date(text_of(m->date)),
          msgid(text_of(m->msgid)),
          party{text_of(m->iban), text_of(m->bic), text_of(m->name), text_of(m->creditor_id)},
          rest(m->tx_count, m->ctrl_sum, m->tx_head, m->tx_tail, m->dd_type, m->batch_booking) {}

    bool operator==(const snapshot_t& other) const {
        return date == other.date && msgid == other.msgid && party == other.party && rest == other.rest;
    }

    std::string date, msgid;
    std::array<std::string, 4> party;
    std::tuple<uint32_t, double, void*, void*, int32_t, uint8_t> rest;
};
