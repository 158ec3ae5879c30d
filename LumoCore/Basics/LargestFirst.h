#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

namespace lumo {

/// Sorts by the bytes of each item, largest first; equal ones keep their order. The order is worked out on
/// numbers, so that each item moves once.
template <class Item, class BytesOf>
void sortLargestFirst(std::vector<Item>& items, BytesOf bytesOf) {
    std::vector<std::pair<std::int64_t, std::size_t>> order;
    order.reserve(items.size());
    for (std::size_t index = 0; index < items.size(); ++index) {
        order.emplace_back(std::invoke(bytesOf, items[index]), index);
    }
    std::ranges::sort(order, [](const auto& left, const auto& right) {
        return left.first != right.first ? left.first > right.first : left.second < right.second;
    });
    std::vector<Item> sorted;
    sorted.reserve(items.size());
    for (const auto& [bytes, index] : order) {
        sorted.push_back(std::move(items[index]));
    }
    items = std::move(sorted);
}

/// The same by what the items take on disk.
template <class Item>
void sortLargestFirst(std::vector<Item>& items) {
    sortLargestFirst(items, [](const Item& item) { return item.usage.allocatedBytes; });
}

} // namespace lumo
