// Puts a message's transactions in the order of output and cuts them into
// payment blocks.
#pragma once

#include <cstdint>

#include "message/sepa.h"
#include "message/value.h"

namespace sepa_internal {

// One transaction in a payment_order_t.
struct payment_item_t {
    char date[date_length];  // effective date, compared as bytes
    uint8_t sequence;        // second criterion, a sepa_seq; 0 in credit transfers
    uint32_t index;          // order of adding
    double amount;
    const void* record;
};

// All transactions by date, sequence type and order of adding.
struct payment_order_t {
    payment_item_t* items;
    uint32_t count;
};

// Transactions of one date and sequence type, which make one PmtInf.
struct payment_block_t {
    const payment_item_t* items;
    uint32_t count;
    double sum;  // added up in the order of adding
};

// Room for all transactions of `handle`. False if memory ran out. Release
// with payment_order_free, which wipes it.
bool payment_order_new(payment_order_t* order, const sepa_t* handle);
void payment_order_free(payment_order_t* order);

// Adds the next transaction in the order of adding. A null `date` stands for
// the message's.
void payment_order_add(payment_order_t* order, const sepa_t* handle, const char* date, uint8_t sequence, double amount,
                       const void* record);

void payment_order_sort(payment_order_t* order);

// The block that begins at item `first` of a sorted order.
payment_block_t payment_block_at(const payment_order_t* order, uint32_t first);

}  // namespace sepa_internal
