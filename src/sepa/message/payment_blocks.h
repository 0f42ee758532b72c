// Puts a message's transactions into payment blocks, one for each date and
// second criterion, in the order of output.
#pragma once

#include <cstdint>

#include "sepa/message/sepa.h"
#include "sepa/message/value.h"
#include "sepa/text/number_text.h"

namespace sepa_internal {

// What a block needs to know of a transaction.
struct transaction_t {
    const char* date;  // the effective one
    uint8_t sequence;  // second criterion; the sequence type of direct debits, else 0
    uint64_t cents;
    const void* record;  // cti_tx_t or ddi_tx_t
};

// The cents that a line shows of an amount, which is positive.
inline uint64_t cents_shown(double amount) { return static_cast<uint64_t>(cents_of(amount)); }

inline transaction_t transaction_of(const sepa_t* handle, const cti_tx_t& tx) {
    return {tx.date ? tx.date : handle->date, 0, cents_shown(tx.amount), &tx};
}
inline transaction_t transaction_of(const sepa_t* handle, const ddi_tx_t& tx) {
    return {tx.date ? tx.date : handle->date, static_cast<uint8_t>(tx.seq), cents_shown(tx.amount), &tx};
}

// A transaction in its block.
struct block_entry_t {
    const void* record;
    block_entry_t* next;  // null: the block's last
};

// Transactions of one PmtInf.
struct payment_block_t {
    char date[date_length];  // effective date, compared as bytes; no NUL
    uint8_t sequence;
    uint32_t count;
    uint64_t sum;                 // cents, as the lines of the transactions show them
    block_entry_t *first, *last;  // in the order of adding
};

// All blocks, by date and second criterion.
struct payment_blocks_t {
    payment_block_t* blocks;
    uint32_t count;
    bool too_many;   // to be searched: they will be sorted
    bool no_memory;  // for all of them; what is there then is only to be freed
    block_entry_t* entries;
    uint32_t entry_count;
};

// The blocks of a message are made by taking its transactions in the order of
// adding. Release with payment_blocks_free, also without memory.
void payment_blocks_start(payment_blocks_t* blocks, const sepa_t* handle);
void payment_blocks_take(payment_blocks_t* blocks, const transaction_t& transaction);
void payment_blocks_end(payment_blocks_t* blocks, const sepa_t* handle);
void payment_blocks_free(payment_blocks_t* blocks);

// The cents of all blocks. A sum of euro in a double would be a cent off after
// some ten thousand large amounts.
uint64_t sum_of_blocks(const payment_blocks_t& blocks);

}  // namespace sepa_internal
