#include "sepa/message/payment_blocks.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "sepa/message/wipe.h"
#include "sepa/platform/pages.h"

namespace sepa_internal {

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

static void append(payment_block_t* block, const transaction_t& tx, block_entry_t* entry) {
    *entry = {tx.record, nullptr};
    (block->count ? block->last->next : block->first) = entry;
    block->last = entry;
    block->count += 1;
    block->sum += tx.cents;
}

// Nearly all messages have a handful of dates. So many blocks are searched one
// after another; for more of them sorting is the cheaper way.
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

void payment_blocks_start(payment_blocks_t* blocks, const sepa_t* handle) {
    *blocks = {};
    if (!handle->tx_count) return;
    blocks->entries = static_cast<block_entry_t*>(allocate_large(handle->tx_count * sizeof(block_entry_t)));
    blocks->blocks = static_cast<payment_block_t*>(malloc(few * sizeof(payment_block_t)));
    blocks->no_memory = !blocks->entries || !blocks->blocks;
}

void payment_blocks_take(payment_blocks_t* blocks, const transaction_t& tx) {
    if (blocks->no_memory || blocks->too_many) return;
    payment_block_t* block = find_block(blocks, tx);
    if (block) {
        append(block, tx, &blocks->entries[blocks->entry_count++]);
    } else {
        blocks->too_many = true;
    }
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

static bool sort_and_cut(payment_blocks_t* blocks, item_t* items, uint32_t count) {
    if (!std::is_sorted(items, items + count, comes_before)) std::sort(items, items + count, comes_before);
    uint32_t runs = count_runs(items, count);
    auto wanted = static_cast<payment_block_t*>(malloc(runs * sizeof(payment_block_t)));
    if (!wanted) return false;
    wipe_block(blocks->blocks, blocks->count * sizeof(payment_block_t));
    blocks->blocks = wanted;
    blocks->count = 0;
    for (uint32_t i = 0; i < count; ++i) {
        if (!i || compare_blocks(items[i - 1], items[i]))
            add_block(blocks, blocks->blocks + blocks->count, items[i].tx);
        append(blocks->blocks + blocks->count - 1, items[i].tx, &blocks->entries[i]);
    }
    return true;
}

template <typename Record>
static void list_all(item_t* items, const sepa_t* handle) {
    uint32_t index = 0;
    for (auto tx = static_cast<const Record*>(handle->tx_head); tx; tx = tx->next, ++index)
        items[index] = {transaction_of(handle, *tx), index};
}

void payment_blocks_end(payment_blocks_t* blocks, const sepa_t* handle) {
    if (!blocks->too_many) return;
    size_t size = handle->tx_count * sizeof(item_t);
    auto items = static_cast<item_t*>(malloc(size));
    blocks->no_memory = !items;
    if (!items) return;
    if (handle->msgtype == SEPA_MSGTYPE_DDI) {
        list_all<ddi_tx_t>(items, handle);
    } else {
        list_all<cti_tx_t>(items, handle);
    }
    blocks->no_memory = !sort_and_cut(blocks, items, handle->tx_count);
    wipe_block(items, size);
}

uint64_t sum_of_blocks(const payment_blocks_t& blocks) {
    uint64_t sum = 0;
    for (uint32_t i = 0; i < blocks.count; ++i) sum += blocks.blocks[i].sum;
    return sum;
}

void payment_blocks_free(payment_blocks_t* blocks) {
    wipe_block(blocks->blocks, blocks->count * sizeof(payment_block_t));
    free(blocks->entries);
    *blocks = {};
}

}  // namespace sepa_internal
