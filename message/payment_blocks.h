// Puts a message's transactions into payment blocks, one for each date and
// second criterion, in the order of output.
#pragma once

#include <cstdint>

#include "message/sepa.h"
#include "message/value.h"

namespace sepa_internal {

// Transactions of one PmtInf.
struct payment_block_t {
    char date[date_length];  // effective date, compared as bytes; no NUL
    uint8_t sequence;        // second criterion; the sequence type of direct debits, else 0
    uint32_t count;
    double sum;            // added up in the order of adding
    const void** records;  // in the order of adding; cti_tx_t or ddi_tx_t
};

// All blocks, by date and second criterion.
struct payment_blocks_t {
    payment_block_t* blocks;
    uint32_t count;
    const void** records;
    uint32_t record_count;
};

// Makes the blocks of a message. False if memory ran out. Release with
// payment_blocks_free.
bool payment_blocks_make(payment_blocks_t* blocks, const sepa_t* handle);
void payment_blocks_free(payment_blocks_t* blocks);

}  // namespace sepa_internal
