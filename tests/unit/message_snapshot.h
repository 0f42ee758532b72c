// A copy of what a message holds, to show that a failed call has changed nothing.
#pragma once

#include <string>

#include "message/sepa.h"

inline std::string text_of(const char* text) { return text ? text : "(none)"; }

// All of a message but its last error.
struct snapshot_t {
    explicit snapshot_t(const sepa_t* m)
        : iban(text_of(m->iban)),
          bic(text_of(m->bic)),
          name(text_of(m->name)),
          creditor_id(text_of(m->creditor_id)),
          date(text_of(m->date)),
          msgid(text_of(m->msgid)),
          tx_count(m->tx_count),
          ctrl_sum(m->ctrl_sum),
          head(m->tx_head),
          tail(m->tx_tail),
          dd_type(m->dd_type),
          batch_booking(m->batch_booking) {}

    bool operator==(const snapshot_t& other) const {
        return iban == other.iban && bic == other.bic && name == other.name && creditor_id == other.creditor_id &&
               date == other.date && msgid == other.msgid && tx_count == other.tx_count &&
               !(ctrl_sum < other.ctrl_sum) && !(ctrl_sum > other.ctrl_sum) && head == other.head &&
               tail == other.tail && dd_type == other.dd_type && batch_booking == other.batch_booking;
    }

    std::string iban, bic, name, creditor_id, date, msgid;
    uint32_t tx_count;
    double ctrl_sum;
    void *head, *tail;
    int32_t dd_type;
    uint8_t batch_booking;
};
