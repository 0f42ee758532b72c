#include "message/payment_blocks.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "message/wipe.h"

namespace sepa_internal {

// What a block needs to know of a transaction.
struct transaction_t {
    const char* date;
    uint8_t sequence;
    double amount;
    const void* record;
};

static transaction_t of_record(const sepa_t* handle, const cti_tx_t* tx) {
    return {tx->date ? tx->date : handle->date, 0, tx->amount, tx};
}
static transaction_t of_record(const sepa_t* handle, const ddi_tx_t* tx) {
    return {tx->date ? tx->date : handle->date, static_cast<uint8_t>(tx->seq), tx->amount, tx};
}

template <typename Record, typename Visit>
static bool each_of(const sepa_t* handle, Visit visit) {
    for (auto tx = static_cast<const Record*>(handle->tx_head); tx; tx = tx->next)
        if (!visit(of_record(handle, tx))) return false;
    return true;
}

// Visits the transactions in the order of adding, until `visit` gives false.
template <typename Visit>
static bool each_transaction(const sepa_t* handle, Visit visit) {
    return handle->msgtype == SEPA_MSGTYPE_DDI ? each_of<ddi_tx_t>(handle, visit) : each_of<cti_tx_t>(handle, visit);
}

static bool is_of(const transaction_t& tx, const payment_block_t& block) {
    return memcmp(block.date, tx.date, date_length) == 0 && block.sequence == tx.sequence;
}

static int compare(const payment_block_t& block, const transaction_t& tx) {
    int by_date = memcmp(block.date, tx.date, date_length);
    return by_date ? by_date : block.sequence - tx.sequence;
}

static payment_block_t* add_block(payment_blocks_t* blocks, payment_block_t* at, const transaction_t& tx) {
    std::move_backward(at, blocks->blocks + blocks->count, blocks->blocks + blocks->count + 1);
    *at = {};
    memcpy(at->date, tx.date, date_length);
    at->sequence = tx.sequence;
    blocks->count += 1;
    return at;
}

static void count_in(payment_block_t* block, const transaction_t& tx) {
    block->count += 1;
    block->sum += tx.amount;
}

// Nearly all messages have a handful of dates. So many blocks are searched one
// after another, and their transactions are counted and placed; for more of them
// sorting is the cheaper way.
static constexpr uint32_t few = 32;

// The block of `tx`; a new one at its place where there is none, or null where
// that would be one too many.
static payment_block_t* find_block(payment_blocks_t* blocks, const transaction_t& tx) {
    payment_block_t *at = blocks->blocks, *const end = at + blocks->count;
    for (payment_block_t* block = at; block < end; ++block)
        if (is_of(tx, *block)) return block;
    if (blocks->count == few) return nullptr;
    while (at < end && compare(*at, tx) < 0) ++at;
    return add_block(blocks, at, tx);
}

static void share_out(payment_blocks_t* blocks) {
    const void** next = blocks->records;
    for (uint32_t i = 0; i < blocks->count; ++i) {
        blocks->blocks[i].records = next;
        next += blocks->blocks[i].count;
    }
}

// False if the dates are too many.
static bool count_and_place(payment_blocks_t* blocks, const sepa_t* handle) {
    if (!each_transaction(handle, [&](const transaction_t& tx) {
            payment_block_t* block = find_block(blocks, tx);
            if (block) count_in(block, tx);
            return block != nullptr;
        }))
        return false;
    share_out(blocks);
    uint32_t filled[few] = {};
    return each_transaction(handle, [&](const transaction_t& tx) {
        payment_block_t* block = find_block(blocks, tx);
        block->records[filled[block - blocks->blocks]++] = tx.record;
        return true;
    });
}

// A transaction in the order of adding.
struct item_t {
    transaction_t tx;
    uint32_t index;
};

static int compare_blocks(const item_t& a, const item_t& b) {
    int by_date = memcmp(a.tx.date, b.tx.date, date_length);
    return by_date ? by_date : a.tx.sequence - b.tx.sequence;
}

static bool comes_before(const item_t& a, const item_t& b) {
    int by_block = compare_blocks(a, b);
    return by_block ? by_block < 0 : a.index < b.index;
}

static uint32_t count_runs(const item_t* items, uint32_t count) {
    uint32_t runs = count ? 1 : 0;
    for (uint32_t i = 1; i < count; ++i) runs += compare_blocks(items[i - 1], items[i]) != 0;
    return runs;
}

static bool sort_and_cut(payment_blocks_t* blocks, item_t* items) {
    uint32_t count = blocks->record_count;
    if (!std::is_sorted(items, items + count, comes_before)) std::sort(items, items + count, comes_before);
    uint32_t runs = count_runs(items, count);
    auto wanted = static_cast<payment_block_t*>(realloc(blocks->blocks, runs * sizeof(payment_block_t)));
    if (!wanted) return false;
    blocks->blocks = wanted;
    blocks->count = 0;
    for (uint32_t i = 0; i < count; ++i) {
        if (!i || compare_blocks(items[i - 1], items[i]))
            add_block(blocks, blocks->blocks + blocks->count, items[i].tx);
        count_in(blocks->blocks + blocks->count - 1, items[i].tx);
        blocks->records[i] = items[i].tx.record;
    }
    share_out(blocks);
    return true;
}

static bool sort_all(payment_blocks_t* blocks, const sepa_t* handle) {
    auto items = static_cast<item_t*>(malloc(blocks->record_count * sizeof(item_t)));
    if (!items) return false;
    uint32_t index = 0;
    each_transaction(handle, [&](const transaction_t& tx) {
        items[index] = {tx, index};
        ++index;
        return true;
    });
    bool done = sort_and_cut(blocks, items);
    wipe_block(items, blocks->record_count * sizeof(item_t));
    return done;
}

bool payment_blocks_make(payment_blocks_t* blocks, const sepa_t* handle) {
    *blocks = {};
    if (!handle->tx_count) return true;
    blocks->record_count = handle->tx_count;
    blocks->records = static_cast<const void**>(malloc(handle->tx_count * sizeof(void*)));
    blocks->blocks = static_cast<payment_block_t*>(malloc(few * sizeof(payment_block_t)));
    if (blocks->records && blocks->blocks && (count_and_place(blocks, handle) || sort_all(blocks, handle))) return true;
    payment_blocks_free(blocks);
    return false;
}

void payment_blocks_free(payment_blocks_t* blocks) {
    wipe_block(blocks->blocks, blocks->count * sizeof(payment_block_t));
    free(blocks->records);
    *blocks = {};
}

}  // namespace sepa_internal
