#include "message/payment_blocks.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "message/wipe.h"

namespace sepa_internal {

bool payment_order_new(payment_order_t* order, const sepa_t* handle) {
    *order = {};
    if (!handle->tx_count) return true;
    order->items = static_cast<payment_item_t*>(malloc(handle->tx_count * sizeof(payment_item_t)));
    return order->items;
}

void payment_order_free(payment_order_t* order) { wipe_block(order->items, order->count * sizeof(payment_item_t)); }

void payment_order_add(payment_order_t* order, const sepa_t* handle, const char* date, uint8_t sequence, double amount,
                       const void* record) {
    payment_item_t* item = &order->items[order->count];
    memcpy(item->date, date ? date : handle->date, date_length);
    item->sequence = sequence;
    item->index = order->count;
    item->amount = amount;
    item->record = record;
    order->count += 1;
}

static int compare_blocks(const payment_item_t& a, const payment_item_t& b) {
    int by_date = memcmp(a.date, b.date, date_length);
    return by_date ? by_date : a.sequence - b.sequence;
}

static bool comes_before(const payment_item_t& a, const payment_item_t& b) {
    int by_block = compare_blocks(a, b);
    return by_block ? by_block < 0 : a.index < b.index;
}

void payment_order_sort(payment_order_t* order) {
    payment_item_t* end = order->items + order->count;
    // Most messages have one date, or come in the order of their dates.
    if (!std::is_sorted(order->items, end, comes_before)) std::sort(order->items, end, comes_before);
}

payment_block_t payment_block_at(const payment_order_t* order, uint32_t first) {
    payment_block_t block = {order->items + first, 0, 0.0};
    while (first + block.count < order->count && !compare_blocks(*block.items, block.items[block.count])) {
        block.sum += block.items[block.count].amount;
        block.count += 1;
    }
    return block;
}

}  // namespace sepa_internal
